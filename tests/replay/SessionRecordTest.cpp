#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <optional>
#include <sstream>

#include "bench/host/AddInLibrary.h"
#include "bench/replay/LineDifference.h"
#include "bench/replay/Player.h"
#include "bench/replay/RunFolder.h"
#include "bench/replay/Script.h"
#include "bench/replay/SessionRecord.h"
#include "tests/replay/ReplayRun.h"

namespace Helmsway {
namespace {

const std::filesystem::path Installation = std::filesystem::path(HELMSWAY_EXAMPLES) / "installation";

std::string BytesOf(const std::filesystem::path& file) {
  std::ostringstream bytes;
  bytes << std::ifstream(file, std::ios::binary).rdbuf();
  return bytes.str();
}

Action Only(const std::string& text) {
  Script script = ParseScript("host create\n" + text);
  EXPECT_TRUE(script.errors.empty()) << text;
  return script.actions.at(1);
}

/// Somebody at the screen: answers every box the same way and does what was agreed on while lines are under way.
class Operator final : public IAttendant {
 public:
  void FormLoaded(forms::ISurface& surface) noexcept override { Surface = &surface; }
  void Changed(forms::ControlId /*control*/, forms::Aspect /*aspect*/) noexcept override { ++Changes; }
  void Closed() noexcept override { Surface = nullptr; }

  void LineUnderWay(std::string_view line) noexcept override {
    const auto agreed = Agreed.extract({++Lines, std::string(line)});
    if (agreed.empty()) return;
    EXPECT_TRUE(Run->Perform(Only(agreed.mapped())));
  }

  forms::MessageAnswer Show(std::string_view title, std::string_view /*text*/, forms::MessageButtons buttons,
                            forms::MessageIcon /*icon*/) noexcept override {
    if (title == "Save S Axis Positions") Rehearsals.push_back(Run->RehearseSave());
    if (buttons == forms::MessageButtons::Ok) return forms::MessageAnswer::Ok;
    return buttons == forms::MessageButtons::YesNo ? forms::MessageAnswer::Yes : Choice;
  }

  Player* Run = nullptr;
  forms::ISurface* Surface = nullptr;
  int Changes = 0;
  std::size_t Lines = 0;
  std::map<std::pair<std::size_t, std::string>, std::string> Agreed;  // by the line's number and text
  forms::MessageAnswer Choice = forms::MessageAnswer::Ok;
  std::vector<SaveRehearsal> Rehearsals;
};

class Session : public testing::Test {
 protected:
  void SetUp() override {
    library_.emplace(folder_.Library());
    player_.emplace(*library_, folder_.MarivaneIni().string(), InstrumentKind::Simulated, record_, &operator_);
    operator_.Run = &*player_;
  }
  void TearDown() override {
    player_.reset();
    library_.reset();
  }

  void Perform(std::initializer_list<const char*> actions) {
    for (const char* action : actions) ASSERT_TRUE(player_->Perform(Only(action))) << action;
  }
  void Begin() {
    ASSERT_TRUE(player_->Perform(ParseScript("host create").actions.front()));
    Perform({"host ObjectParent given", "host FormParent given", "instrument seed 7", "click 10",
             "check chkToolInstalled", "click 9", "click 0", "click 7"});
  }

  RunFolder folder_{OptionsFor("").addIn, Installation, WorkOn::Copies};
  std::optional<AddInLibrary> library_;
  SessionRecord record_;
  Operator operator_;
  std::optional<Player> player_;
};

TEST_F(Session, ItsScriptPlaysItAgainLineByLine) {
  // The same line goes out twice, for the jog and behind the homing of S: the number tells them apart.
  operator_.Agreed = {{{10, "MOVE S -3093"}, "click 14"}, {{12, "MOVE S -3093"}, "host stop"}};
  Begin();
  Perform({"click 6", "instrument remote off", "click 7", "show"});
  EXPECT_GT(operator_.Changes, 0);
  EXPECT_TRUE(operator_.Agreed.empty()) << "all of it has been done";

  std::ostringstream script;
  record_.WriteScript(script, "First line\nsecond line");
  EXPECT_TRUE(script.str().starts_with("# First line\n# second line\nhost create\n")) << script.str();
  std::ostringstream trace;
  record_.WriteTrace(trace);
  ReplayOptions options = OptionsFor(Installation);
  options.instrument = InstrumentKind::Simulated;
  TearDown();  // the library stands for one folder at a time
  const ReplayRun replayed = RunScript(options, script.str());
  EXPECT_EQ(replayed.status, ExitStatus::Performed) << replayed.complaints;
  EXPECT_EQ(LineDifference(trace.str(), replayed.output), std::vector<std::string>{});
}

TEST_F(Session, ARehearsedSaveForetellsTheSaveAndLeavesNoMark) {
  Begin();
  for (const auto choice : {forms::MessageAnswer::Cancel, forms::MessageAnswer::Ok}) {
    operator_.Choice = choice;
    const std::string before = BytesOf(folder_.MarivaneIni());
    const std::size_t lines = operator_.Lines;
    Perform({"host stop", "host SaveChanges"});
    const SaveRehearsal rehearsal = operator_.Rehearsals.back();
    EXPECT_EQ(rehearsal.before, before);
    EXPECT_TRUE(rehearsal.lines.empty()) << "a stop has been asked for, so no line would go out";
    EXPECT_NE(rehearsal.after, rehearsal.before);
    EXPECT_EQ(BytesOf(folder_.MarivaneIni()), choice == forms::MessageAnswer::Ok ? rehearsal.after : before);
    EXPECT_EQ(operator_.Lines, lines) << "the flag is still set";
  }

  Perform({"click 7"});
  const std::size_t lines = operator_.Lines;
  Perform({"host SaveChanges"});
  EXPECT_EQ(operator_.Rehearsals.back().lines.size(), operator_.Lines - lines);
  EXPECT_EQ(operator_.Rehearsals.back().lines.back(), "SET_CALIBRATION SAVE");
  EXPECT_EQ(BytesOf(folder_.MarivaneIni()), operator_.Rehearsals.back().after);
  EXPECT_FALSE(std::filesystem::exists(folder_.MarivaneIni().parent_path() / "rehearsal"));
}

}  // namespace
}  // namespace Helmsway
