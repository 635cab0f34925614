#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "bench/replay/Script.h"

namespace Helmsway {
namespace {

TEST(Script, WordsOfALineAreTakenOutOfTheirQuotesAndKeptAsWritten) {
  using enum ActionKind;
  // The line, then the action's kind, words, number and text.
  // clang-format off
  const std::tuple<const char*, ActionKind, std::vector<std::string>, std::int32_t, const char*> rows[] = {
      {" \t click \t 16 \t", ClickButton, {}, 16, "click 16"},
      {"pick cboTipType 99999999999", Pick, {"cboTipType"}, 2147483647, "pick cboTipType 99999999999"},
      {"instrument refuse MOVE", Refuse, {"MOVE"}, 1, "instrument refuse MOVE"},
      {"instrument fail \"MOVE X\" 3", Fail, {"MOVE X"}, 3, "instrument fail \"MOVE X\" 3"},
      {R"(file remove  "" "\"b\" \\ \n")", FileRemove, {"", R"("b" \ \n)"}, 0, R"(file remove "" "\"b\" \\ \n")"},
      {R"(file set A I3 "\"1 Ch\",X")", FileSet, {"A", "I3", "\"1 Ch\",X"}, 0, R"(file set A I3 "\"1 Ch\",X")"},
      {"file remove A#1 b\"c", FileRemove, {"A#1", "b\"c"}, 0, "file remove A#1 b\"c"},
      {"during \"M X\"   pick  cboTipType 2", During, {"M X"}, 0, "during \"M X\" pick cboTipType 2"},
  };
  // clang-format on
  for (const auto& [line, kind, arguments, number, text] : rows) {
    SCOPED_TRACE(line);
    const Script script = ParseScript(line);
    ASSERT_EQ(script.actions.size(), 4U);  // the last is its own
    const Action& action = script.actions.back();
    EXPECT_EQ(action.kind, kind);
    EXPECT_EQ(action.arguments, arguments);
    EXPECT_EQ(action.number, number);
    EXPECT_EQ(action.text, text);
    if (kind != During) continue;
    EXPECT_EQ(action.waiting.at(0).text + std::to_string(action.waiting[0].number), "pick cboTipType 22");
  }
}

TEST(Script, BlankLinesAndCommentsSayNothingAndTheAddInIsCreatedInFront) {
  const std::pair<const char*, const char*> rows[] = {
      {"\xEF\xBB\xBF# first\r\n\r\n \t # indented\r\n  \t\nclick 0\r\n\nshow",
       "0 host create; 0 host ObjectParent given; 0 host FormParent given; 5 click 0; 7 show; "},
      {"answer ok\nhost create",
       "0 host create; 0 host ObjectParent given; 0 host FormParent given; 1 answer ok; 2 host create; "},
      {"# none\nhost create\nshow", "2 host create; 3 show; "},
      {"", "0 host create; 0 host ObjectParent given; 0 host FormParent given; "},
  };
  for (const auto& [text, expected] : rows) {
    std::string actions;
    for (const Action& action : ParseScript(text).actions) {
      actions += std::to_string(action.line) + " " + action.text + "; ";
    }
    EXPECT_EQ(actions, expected);
  }
}

TEST(Script, EveryLineThatSaysNoActionIsAnError) {
  // clang-format off
  const char* const lines[] = {
      "press 1", "Click 1", "host", "host Create", "host ObjectParent", "host ObjectParent maybe", "host read caption",
      "host SaveChanges 1", "click", "click 15", "click 17", "click -1", "click 1x", "click frame 1", "click \"\"",
      "check", "check chkNone", "uncheck cboTipType", "pick cboHeadType 1.5", "pick chkStageEmpty 1", "answer maybe",
      "instrument refuse MOVE 0", "instrument refuse MOVE two", "instrument refuse MOVE 1 2",
      "instrument reply STATUS SLIDER OPEN", "during MOVE", "during MOVE answer ok", "during MOVE host create",
      "during MOVE host release", "during MOVE host read Caption", "during MOVE during MOVE show",
      "during MOVE click 15", "link sideways", "file writes sometimes", "file set HeadType Item1 a b",
      "file remove HeadType", "show # with a comment", "instrument reply MOVE \"ends in a backslash\\\"",
      "instrument reply \"MOVE\"X text",
  };
  // clang-format on
  for (const char* line : lines) {
    const Script script = ParseScript(std::string("show\n") + line + "\nshow\n");
    EXPECT_TRUE(script.errors.size() == 1 && script.errors[0].line == 2) << line;
  }
}

TEST(Script, AllErrorsAreFoundAndSayWhatIsWrong) {
  std::string errors;
  const char* text = "click 15\nshow\nhost read Name\npick cboHeadType\nduring MOVE answer ok\n\"click\n";
  for (const ScriptError& error : ParseScript(text).errors) {
    errors += std::to_string(error.line) + ": " + error.what + "\n";
  }
  EXPECT_EQ(errors,
            "1: there is no button 15; there are 0 to 14 and 16\n"
            "3: there is no member Name; there are Caption, Frame, HelpContextID, ShowStatusBar, ShowButtons\n"
            "4: wrong number of words; the action is written: pick LIST INDEX\n"
            "5: this action can't take place during a line: answer ok\n"
            "6: a quoted word has no closing quote: \"click\n");
}

}  // namespace
}  // namespace Helmsway
