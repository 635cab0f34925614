#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "bench/instrument/CommandLine.h"

namespace Helmsway {
namespace {

constexpr auto Lowest = std::numeric_limits<std::int32_t>::min();
constexpr auto Highest = std::numeric_limits<std::int32_t>::max();

TEST(CommandLine, EveryFormOfTheVocabularyIsUnderstood) {
  struct Row {
    const char* line;
    Command command;
  };
  const std::vector<Row> rows = {
      {"HOME ALL", HomeAll{}},
      {"HOME S", HomeS{}},
      {"MOVE X 1250", MoveAxis{Axis::X, 1250}},
      {"MOVE Y 0", MoveAxis{Axis::Y, 0}},
      {"MOVE Z -16000", MoveAxis{Axis::Z, -16000}},
      {"MOVE S -1", MoveAxis{Axis::S, -1}},
      {"MOVE SD_X 2147483647", MoveAxis{Axis::SdX, Highest}},
      {"MOVE SD_Y -2147483648", MoveAxis{Axis::SdY, Lowest}},
      {"MOVE SLIDER_OPEN", MoveSlider{SliderState::Open}},
      {"MOVE SLIDER_CLOSED", MoveSlider{SliderState::Closed}},
      {"SET_SPEED S 1", SetSpeed{Axis::S, 1}},
      {"SET_SPEED Z 1000", SetSpeed{Axis::Z, 1000}},
      {"HW_Z_COLLISION ON", SetZCollisionDetection{CollisionDetection::On}},
      {"HW_Z_COLLISION OFF", SetZCollisionDetection{CollisionDetection::Off}},
      {"SET_CALIBRATION TipEject_8Ch_125_S -30", SetCalibration{"TipEject_8Ch_125_S", "-30"}},
      {"SET_CALIBRATION TipEject_1Ch_12_S --30", SetCalibration{"TipEject_1Ch_12_S", "--30"}},
      {"SET_CALIBRATION TipEject_12Ch_1250_S -0", SetCalibration{"TipEject_12Ch_1250_S", "-0"}},
      {"SET_CALIBRATION AspirateOrigin_8Ch_30_S 600", SetCalibration{"AspirateOrigin_8Ch_30_S", "600"}},
      {"SET_CALIBRATION AspirateOrigin_96Ch_300_S -7", SetCalibration{"AspirateOrigin_96Ch_300_S", "-7"}},
      {"SET_CALIBRATION SAVE", SaveCalibration{}},
      {"STATUS SLIDER", AskSliderState{}},
      {"REV", AskRevision{}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const auto read = ReadCommandLine(row.line);
    EXPECT_TRUE(read.command == row.command);
    EXPECT_EQ(read.reason, "");
  }
}

TEST(CommandLine, AnyOtherLineIsNoCommandAndTheReasonTellsWhy) {
  struct Row {
    const char* line;
    const char* reason;
  };
  const std::vector<Row> rows = {
      // The line as a whole.
      {"", "the line is empty"},
      {" ", "the line has a blank too many"},
      {" REV", "the line has a blank too many"},
      {"REV ", "the line has a blank too many"},
      {"MOVE  X 5", "the line has a blank too many"},
      {"REV\r\n", "the line holds a character that no command has"},
      {"MOVE\tX 5", "the line holds a character that no command has"},
      {"MOVE X 5\xc2\xb5", "the line holds a character that no command has"},
      {"REV\x7f", "the line holds a character that no command has"},
      // The keyword.
      {"MOVEX 5", "unknown command \"MOVEX\""},
      {"home ALL", "unknown command \"home\""},
      {"HOM", "unknown command \"HOM\""},
      {"SAVE", "unknown command \"SAVE\""},
      // The second word.
      {"HOME", "HOME needs a word behind it: ALL, S"},
      {"HOME Z", "HOME knows ALL, S, but not \"Z\""},
      {"HOME all", "HOME knows ALL, S, but not \"all\""},
      {"MOVE SDX 5", "MOVE knows X, Y, Z, S, SD_X, SD_Y, SLIDER_OPEN, SLIDER_CLOSED, but not \"SDX\""},
      {"MOVE SLIDER_SHUT", "but not \"SLIDER_SHUT\""},
      {"SET_SPEED X 500", "SET_SPEED knows S, Z, but not \"X\""},
      {"HW_Z_COLLISION", "HW_Z_COLLISION needs a word behind it: ON, OFF"},
      {"STATUS Z", "STATUS knows SLIDER, but not \"Z\""},
      // The number of a move or a speed.
      {"MOVE X", "MOVE X needs a whole number"},
      {"MOVE X 12.5", "MOVE X needs a whole number, not \"12.5\""},
      {"MOVE X 5.", "not \"5.\""},
      {"MOVE X +5", "not \"+5\""},
      {"MOVE X --30", "not \"--30\""},
      {"MOVE X -", "not \"-\""},
      {"MOVE X -0", "not \"-0\""},
      {"MOVE X 05", "not \"05\""},
      {"MOVE X -05", "not \"-05\""},
      {"MOVE X 1,250", "not \"1,250\""},
      {"MOVE X 99999999999x", "not \"99999999999x\""},
      {"MOVE X 1e3", "not \"1e3\""},
      {"MOVE X 0x10", "not \"0x10\""},
      {"MOVE X ALL", "not \"ALL\""},
      {"MOVE SD_X 2147483648", "2147483648 is out of range for MOVE SD_X"},
      {"MOVE SD_X -2147483649", "-2147483649 is out of range for MOVE SD_X"},
      {"SET_SPEED S", "SET_SPEED S needs a whole number"},
      {"SET_SPEED S fast", "SET_SPEED S needs a whole number, not \"fast\""},
      {"SET_SPEED S 0", "SET_SPEED S needs a speed of 1 or more, not 0"},
      {"SET_SPEED Z -500", "SET_SPEED Z needs a speed of 1 or more, not -500"},
      // Words too many.
      {"REV 2", "nothing may follow REV, but \"2\" does"},
      {"HOME ALL S", "nothing may follow HOME ALL, but \"S\" does"},
      {"MOVE X 5 6", "nothing may follow MOVE X 5, but \"6\" does"},
      {"MOVE SLIDER_OPEN 5", "nothing may follow MOVE SLIDER_OPEN, but \"5\" does"},
      {"SET_CALIBRATION SAVE ALL", "nothing may follow SET_CALIBRATION SAVE, but \"ALL\" does"},
      // Calibration values.
      {"SET_CALIBRATION", "SET_CALIBRATION needs SAVE, or the name of a value and the value"},
      {"SET_CALIBRATION save", "the instrument keeps no calibration value \"save\""},
      {"SET_CALIBRATION TipEject_8Ch_50_S -3", "the instrument keeps no calibration value \"TipEject_8Ch_50_S\""},
      {"SET_CALIBRATION TipEject_8Ch_12.5_S -3", "no calibration value \"TipEject_8Ch_12.5_S\""},
      {"SET_CALIBRATION TipEject_8Ch_125 -3", "no calibration value \"TipEject_8Ch_125\""},
      {"SET_CALIBRATION TipEject_8Ch_125_Z -3", "no calibration value \"TipEject_8Ch_125_Z\""},
      {"SET_CALIBRATION TipEject_8Ch_125_S_S -3", "no calibration value \"TipEject_8Ch_125_S_S\""},
      {"SET_CALIBRATION TipEject_8ch_125_S -3", "no calibration value \"TipEject_8ch_125_S\""},
      {"SET_CALIBRATION TipEject_8Ch__S -3", "no calibration value \"TipEject_8Ch__S\""},
      {"SET_CALIBRATION TipEject_Ch_125_S -3", "no calibration value \"TipEject_Ch_125_S\""},
      {"SET_CALIBRATION TipEject_0Ch_125_S -3", "no calibration value \"TipEject_0Ch_125_S\""},
      {"SET_CALIBRATION TipEject_-8Ch_125_S -3", "no calibration value \"TipEject_-8Ch_125_S\""},
      {"SET_CALIBRATION TipEject_08Ch_125_S -3", "no calibration value \"TipEject_08Ch_125_S\""},
      {"SET_CALIBRATION TipEject_8 -3", "no calibration value \"TipEject_8\""},
      {"SET_CALIBRATION TipEject_AspirateOrigin_8Ch_125_S -3", "no calibration value"},
      {"SET_CALIBRATION Aspirate_8Ch_125_S 3", "no calibration value \"Aspirate_8Ch_125_S\""},
      {"SET_CALIBRATION TipEject_8Ch_125_S", "TipEject_8Ch_125_S needs a value"},
      {"SET_CALIBRATION TipEject_8Ch_125_S 30",
       "TipEject_8Ch_125_S needs a minus sign with a whole number behind it, not \"30\""},
      {"SET_CALIBRATION TipEject_8Ch_125_S -", "not \"-\""},
      {"SET_CALIBRATION TipEject_8Ch_125_S ---30", "not \"---30\""},
      {"SET_CALIBRATION TipEject_8Ch_125_S --0", "not \"--0\""},
      {"SET_CALIBRATION TipEject_8Ch_125_S -030", "not \"-030\""},
      {"SET_CALIBRATION TipEject_8Ch_125_S - 30", "nothing may follow TipEject_8Ch_125_S -, but \"30\" does"},
      {"SET_CALIBRATION TipEject_8Ch_125_S -9999999999", "-9999999999 is out of range for TipEject_8Ch_125_S"},
      {"SET_CALIBRATION AspirateOrigin_8Ch_125_S -0", "AspirateOrigin_8Ch_125_S needs a whole number, not \"-0\""},
      {"SET_CALIBRATION AspirateOrigin_8Ch_125_S --30", "not \"--30\""},
      {"SET_CALIBRATION AspirateOrigin_8Ch_125_S 6.5", "not \"6.5\""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const auto read = ReadCommandLine(row.line);
    EXPECT_FALSE(read.command.has_value());
    EXPECT_NE(read.reason.find(row.reason), std::string::npos) << read.reason;
  }
}

}  // namespace
}  // namespace Helmsway
