#include "addin/config/ItemSource.h"

#include "addin/base/Steps.h"

namespace OrvelCalibrateS {

ItemSource FindItem(const IniFiles& files, std::string_view section, std::string_view item, std::string_view file,
                    EmptyItem emptyItem) {
  const std::string_view path = file.empty() ? files.MarivaneIni() : file;
  ItemSource source{std::string(item), {}};
  if (source.item.empty() && emptyItem == EmptyItem::Installed) {
    Put(source.item, [&] { return files.ReadIni(section, "Installed", path, ""); });
  }
  std::string line;
  Put(line, [&] { return files.ReadIni(section, "Item" + source.item, path, ""); });
  Put(source.line, [&] { return files.SplitText(",", line); });
  return source;
}

}  // namespace OrvelCalibrateS
