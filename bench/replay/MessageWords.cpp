#include "bench/replay/MessageWords.h"

namespace Helmsway {

using forms::MessageAnswer;
using forms::MessageButtons;
using forms::MessageIcon;

std::string_view NameOf(MessageAnswer answer) {
  switch (answer) {
    case MessageAnswer::Ok:
      return "ok";
    case MessageAnswer::Cancel:
      return "cancel";
    case MessageAnswer::Yes:
      return "yes";
    case MessageAnswer::No:
      return "no";
  }
  return "";
}

std::string_view NameOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::Ok:
      return "ok";
    case MessageButtons::OkCancel:
      return "ok-cancel";
    case MessageButtons::YesNo:
      return "yes-no";
  }
  return "";
}

std::string_view NameOf(MessageIcon icon) { return icon == MessageIcon::Exclamation ? "exclamation" : "none"; }

std::optional<MessageAnswer> AnswerNamed(std::string_view name) {
  for (const MessageAnswer answer : {MessageAnswer::Ok, MessageAnswer::Cancel, MessageAnswer::Yes, MessageAnswer::No}) {
    if (NameOf(answer) == name) return answer;
  }
  return std::nullopt;
}

bool Offers(MessageButtons buttons, MessageAnswer answer) {
  switch (buttons) {
    case MessageButtons::Ok:
      return answer == MessageAnswer::Ok;
    case MessageButtons::OkCancel:
      return answer == MessageAnswer::Ok || answer == MessageAnswer::Cancel;
    case MessageButtons::YesNo:
      return answer == MessageAnswer::Yes || answer == MessageAnswer::No;
  }
  return false;
}

}  // namespace Helmsway
