#pragma once

#include <optional>
#include <string_view>

#include "forms/Surface.h"

/// How scripts and traces call what belongs to a message box.
namespace Helmsway {

std::string_view NameOf(forms::MessageAnswer answer);
std::string_view NameOf(forms::MessageButtons buttons);
std::string_view NameOf(forms::MessageIcon icon);

std::optional<forms::MessageAnswer> AnswerNamed(std::string_view name);

/// Whether a box with these buttons can be answered so.
bool Offers(forms::MessageButtons buttons, forms::MessageAnswer answer);

}  // namespace Helmsway
