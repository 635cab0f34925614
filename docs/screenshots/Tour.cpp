#include "docs/screenshots/Tour.h"

#include <QMessageBox>

#include "docs/screenshots/Operator.h"

namespace Helmsway::Tour {
namespace {

constexpr QSize WindowSize(1460, 860);

enum Button {
  Start = 0,
  Eject = 4,
  Save = 6,
  Up = 7,
  WarningContinue = 9,
  InitialContinue = 10,
  EjectDoneContinue = 11,
  CollectHead = 13,
  EjectTool = 14,
};

// Entries of "Step size".
constexpr int SmallStep = 0;
constexpr int LargeStep = 1;

// As near as steps of 1 mm and of 0.1 mm get, in mm.
constexpr double NearByLargeSteps = 0.5;
constexpr double NearBySmallSteps = 0.05;

void EjectTheHead(Operator& hands) {
  hands.Check("chkToolUninstalled");
  hands.Take("02-warning");
  hands.Press(WarningContinue);
  hands.Check("chkStageEmpty");
  hands.Take("03-eject-prompt");
  hands.TakeDuring("MOVE S ", "04-ejecting");
  hands.Press(Eject);
  hands.Take("05-eject-done");
  hands.Press(EjectDoneContinue);
}

void GoToMainPage(Operator& hands) {
  hands.Check("chkToolInstalled");
  hands.Press(WarningContinue);
}

void GoToCalibrationLocation(Operator& hands) {
  hands.Answer(QMessageBox::Ok);
  hands.Press(Start);
}

void SaveWithPictures(Operator& hands) {
  hands.JogToRing(SmallStep, NearBySmallSteps);
  hands.Answer(QMessageBox::Yes, "08-verify");
  hands.Answer(QMessageBox::Ok, "09-save");
  hands.Press(Save);
  hands.Take("10-saved");
}

void RefuseALine(Operator& hands) {
  hands.Perform("instrument fault refuse \"MOVE S \"");
  hands.Press(Up);
  hands.Take("12-refused-line");
}

void TestMoves(Operator& hands) {
  hands.Pick("cboNestType", 3);
  hands.Answer(QMessageBox::Ok);
  hands.Press(EjectTool);
  hands.Press(WarningContinue);
  hands.Pick("cboNestType", 1);
  hands.Pick("cboHeadType", 8);
  hands.Pick("cboTipRack", 2);
  hands.Pick("cboTipType", 4);
  hands.Answer(QMessageBox::Ok);
  hands.Press(CollectHead);
  hands.Take("13-test-moves");
}

}  // namespace

void TakeAll(const Camera& camera, const std::filesystem::path& programs) {
  Operator hands(camera, programs, WindowSize);
  hands.Take("01-first-panel");
  hands.Press(InitialContinue);
  EjectTheHead(hands);
  GoToMainPage(hands);
  hands.Take("06-main-page");
  GoToCalibrationLocation(hands);
  hands.JogToRing(LargeStep, NearByLargeSteps);
  hands.Take("07-calibration-location");
  SaveWithPictures(hands);
  hands.SetTab("consolePane");
  hands.Take("11-console");
  RefuseALine(hands);
  hands.SetTab("valuesPane");
  TestMoves(hands);
}

void TakeCalibrationLocation(const Camera& camera, const std::filesystem::path& programs, const QSize& size,
                             const char* picture) {
  Operator hands(camera, programs, size);
  hands.Press(InitialContinue);
  GoToMainPage(hands);
  GoToCalibrationLocation(hands);
  hands.JogToRing(LargeStep, NearByLargeSteps);
  hands.Take(picture);
}

}  // namespace Helmsway::Tour
