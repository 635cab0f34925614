#pragma once

#include <string>

/// Which locale this process and the add-in that it loads run under. The add-in takes its decimal separator from the
/// environment, so a run would depend on the user's settings. Both functions change the environment: call them before
/// the add-in is loaded, and while no other thread reads the environment.
namespace Helmsway::Locale {

/// Numbers have the decimal point, whatever the environment says. The rest of the environment's locale stays.
void FixNumbers();

/// The process runs under the locale of that name, as `locale -a` lists them. Throws `std::runtime_error` when it isn't
/// installed; the environment is unchanged then.
void Use(const std::string& name);

}  // namespace Helmsway::Locale
