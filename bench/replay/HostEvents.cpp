#include "bench/replay/Player.h"

namespace Helmsway {

void Player::StatusTextWritten(std::string_view text) noexcept {
  if (!Muted()) report_.StatusTextWritten(text);
}

void Player::StopRequestedWritten(bool value) noexcept {
  if (!Muted()) report_.StopRequestedWritten(value);
}

void Player::AddInActiveWritten(bool value) noexcept {
  if (!Muted()) report_.AddInActiveWritten(value);
}

void Player::ChangedWritten(bool value) noexcept {
  if (!Muted()) report_.ChangedWritten(value);
}

void Player::FocusSet() noexcept {
  if (!Muted()) report_.FocusSet();
}

void Player::IniWriteFailed(std::string_view section, std::string_view key, std::string_view value,
                            std::string_view why) noexcept {
  if (rehearsal_ != nullptr && rehearsal_->problem.empty()) {
    rehearsal_->problem = why.empty() ? "the write would fail" : std::string(why);
  }
  if (!Muted()) report_.IniWriteFailed(section, key, value, why);
}

void Player::IniReadFailed(std::string_view section, std::string_view key, std::string_view why) noexcept {
  if (!Muted()) report_.IniReadFailed(section, key, why);
}

void Player::LinkNotReached() noexcept {
  if (!Muted()) report_.LinkNotReached();
}

void Player::StopFound() noexcept {
  if (!Muted()) report_.LineSkipped();
}

}  // namespace Helmsway
