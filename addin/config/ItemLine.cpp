#include "addin/config/ItemLine.h"

#include "addin/base/Steps.h"

namespace OrvelCalibrateS {

void WriteItemLine(const IniFiles& files, std::string_view section, std::string_view key,
                   const std::vector<std::string>& texts, std::string_view file) {
  std::string line;
  for (const std::string& text : texts) line.append(text).push_back(',');
  while (line.ends_with(',')) line.pop_back();
  Skip([&] { files.WriteIni(section, key, file, line); });
}

}  // namespace OrvelCalibrateS
