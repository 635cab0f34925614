#include "addin/sequences/JogSAxis.h"

#include "addin/config/Conversions.h"

namespace OrvelCalibrateS {
namespace {

/// The rounding of each press stays in the working value.
void Step(SequenceContext& context, std::int16_t sign) {
  forms::TextBox& txtCurrentCollect = context.Selections.txtCurrentCollect;
  const AxisRecord& axisS = context.Configuration.Records.AxisS;
  const double current = Number(txtCurrentCollect.Text());
  const double step = Number(context.Selections.cboCollectStep.Text());
  txtCurrentCollect.SetText(WholeNumber(Divide(step, axisS.MmPerStep) * sign + current));
}

}  // namespace

void JogSAxis(SequenceContext& context, Jog jog) {
  HostChannel& host = context.Host;
  const AxisRecord& axisS = context.Configuration.Records.AxisS;

  host.WriteStatus("Moving S Axis");
  if (jog == Jog::Up) Step(context, axisS.MoveSign);
  if (jog == Jog::Down) Step(context, axisS.OffsetSign);

  // A single line without a line end.
  const std::string line =
      Command::Move(Command::Axis::S, std::string_view(context.Selections.txtCurrentCollect.Text()));
  if (!host.RunCommandText(line, FailureMode::PassUp)) return;
  host.WriteStatus("");
}

}  // namespace OrvelCalibrateS
