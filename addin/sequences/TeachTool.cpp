#include "addin/sequences/TeachTool.h"

#include "addin/config/ItemSource.h"
#include "addin/sequences/InstalledKeys.h"

namespace OrvelCalibrateS {

HeadType FindTeachTool(const Configuration& configuration, FailureMode mode) {
  HeadType head;
  WalkItems(mode, [&](const std::string& number) {
    head = ReadHeadType(configuration, number);
    return !head.Name.empty() && !IsTeachTool(head);
  });
  return head;
}

void RegisterTeachTool(const IniFiles& files, const HeadType& head, FailureMode mode) {
  if (!IsTeachTool(head)) return;
  Run(mode, [&] { WriteInstalledHead(files, head.Index); });
  Run(mode, [&] { WriteInstalledTip(files, NothingInstalled); });
}

}  // namespace OrvelCalibrateS
