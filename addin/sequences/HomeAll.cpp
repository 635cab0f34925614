#include "addin/sequences/HomeAll.h"

#include "addin/config/ConfigurationLoad.h"

namespace OrvelCalibrateS {

void HomeAll(SequenceContext& context) {
  HostChannel& host = context.Host;
  host.WriteStatus("Home all");
  LoadInstalledRecords(context.Configuration, FailureMode::PassUp);

  CommandText text;
  text += Command::HomeAll();

  host.WriteStatus("Homing all axes");
  if (!host.RunCommandText(text.Text(), FailureMode::PassUp)) return;
  host.WriteStatus("");
}

}  // namespace OrvelCalibrateS
