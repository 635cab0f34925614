#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <cstddef>
#include <optional>
#include <string_view>

#include "bench/replay/NumberWatch.h"

namespace Helmsway {

/// What has gone wrong in a session and the add-in has passed over in silence: what an action has left undone, until a
/// later action uses the link or the files again, and what lasts for as long as it is so.
class Troubles {
 public:
  void Performing(const Action& action);
  void Ignored() { number_.Ignored(); }
  void IniWritten() { now_.active = true; }
  void IniWriteFailed(std::string_view why);
  void IniReadFailed(std::string_view why);
  void LinkNotReached();
  void LineSkipped();
  void LineBegins();
  void LineEnded(std::string_view line, const Answer& answer);
  void FaultStruck(const Fault& fault);
  /// The action that nothing else was under way for is over.
  void Performed(const forms::ISurface* form, std::string_view statusText);

  /// One sentence each, the most lasting first; empty when all is well.
  QStringList InWords() const;
  /// About the number on the form, in words; empty when S is where it says, or was never sent there.
  std::string DoubtOfNumber() const { return number_.InWords(); }
  /// S has been seen to reach the number on the form.
  bool NumberReached() const { return number_.Reached(); }
  /// The status text was left over by a line that was refused or failed: since then. Null otherwise.
  const std::optional<QDateTime>& StatusLeftSince() const { return statusLeftSince_; }

 private:
  /// What an action has left undone.
  struct Undone {
    bool active = false;  ///< the action has used the link or written a file
    std::size_t writes = 0;
    std::size_t reads = 0;
    std::size_t skipped = 0;
    QString whyNotWritten;
    QString whyNotRead;
    QStringList lines;  ///< that were refused or failed
  };

  Undone now_;
  Undone last_;
  NumberWatch number_;
  std::optional<QDateTime> linkLostSince_;
  std::optional<QDateTime> statusLeftSince_;
  std::string leftStatus_;
};

}  // namespace Helmsway
