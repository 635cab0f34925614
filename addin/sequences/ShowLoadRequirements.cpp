#include "addin/sequences/ShowLoadRequirements.h"

#include <string>

namespace OrvelCalibrateS {
namespace {

std::string LoadRequirementsNote(const std::string& head, const std::string& tip, const std::string& position) {
  return "Please ensure that the following has been loaded before you continue:\r\n"
         "\r\n"
         "1. " +
         head +
         " installed into the pipette head nest\r\n"
         "2. " +
         tip + " in a " + position;
}

}  // namespace

void ShowLoadRequirements(SequenceContext& context) {
  const Selections& selections = context.Selections;
  const std::string head(selections.cboHeadType.Text());
  const std::string tip(selections.cboTipType.Text());
  const std::string position(selections.cboPosition.Text());
  context.Form.ShowMessage("", LoadRequirementsNote(head, tip, position), forms::MessageButtons::Ok,
                           forms::MessageIcon::None);
  context.Flags.LoadPromptShown = true;
}

}  // namespace OrvelCalibrateS
