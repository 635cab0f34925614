#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Helmsway {

enum class ActionKind : std::uint8_t {
  CreateAddIn,
  GiveConnection,
  TakeConnection,
  GiveWindow,
  TakeWindow,
  SaveChanges,
  LoadDefaults,
  ReadMember,
  HostStop,
  ReleaseAddIn,
  ClickButton,
  ClickBackground,
  Check,
  Uncheck,
  Pick,
  QueueAnswer,
  Refuse,
  Fail,
  Reply,
  Seed,
  Remember,
  PlanFault,
  ShowInstrument,
  ShowScore,
  PowerCycle,
  RemoteOn,
  RemoteOff,
  During,
  LinkDown,
  LinkUp,
  FileSet,
  FileRemove,
  FileReadsFail,
  FileReadsWork,
  FileWritesFail,
  FileWritesWork,
  Show,
};

/// One action of a script.
struct Action {
  ActionKind kind = ActionKind::Show;
  /// Line of the script, from 1; 0 for an action that a script has without saying so.
  std::size_t line = 0;
  /// The action as the script has it, with single blanks between its words.
  std::string text;
  /// The words that differ from script to script (names, prefixes, values), without quotes, in their order.
  std::vector<std::string> arguments;
  /// Index of a button or a list's entry, a number of lines, a seed; of a fault the number of its line, 0 where it has
  /// a prefix instead.
  std::int32_t number = 0;
  /// Of a fault: seconds of the instrument's time; 0 where the action doesn't say.
  double seconds = 0;
  /// The action is one of the host or the operator upon the form, and ignored where there is no form.
  bool needsForm = false;
  /// The action is possible on the simulated instrument only.
  bool needsSimulated = false;
  /// Of a `during`: the one action that waits for the line. Empty otherwise.
  std::vector<Action> waiting;
};

}  // namespace Helmsway
