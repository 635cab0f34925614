#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "bench/replay/Script.h"

namespace Helmsway {
namespace {

/// The actions behind those that every script without a `host create` of its own begins with.
std::vector<Action> OwnActions(const std::string& text) {
  const Script script = ParseScript(text);
  EXPECT_TRUE(script.errors.empty()) << text << ": " << script.errors.front().what;
  std::vector<Action> actions = script.actions;
  EXPECT_GE(actions.size(), 3U);
  actions.erase(actions.begin(), actions.begin() + 3);
  return actions;
}

TEST(Script, WordsOfALineAreTakenOutOfTheirQuotesAndKeptAsWritten) {
  struct Row {
    const char* line;
    ActionKind kind;
    std::vector<std::string> arguments;
    std::int32_t number;
    const char* text;
  };
  const std::vector<Row> rows = {
      {"click 10", ActionKind::ClickButton, {}, 10, "click 10"},
      {" \t click \t 16 \t", ActionKind::ClickButton, {}, 16, "click 16"},
      {"click \"4\"", ActionKind::ClickButton, {}, 4, "click \"4\""},
      {"click frame", ActionKind::ClickBackground, {}, 0, "click frame"},
      {"pick cboHeadType -1", ActionKind::Pick, {"cboHeadType"}, -1, "pick cboHeadType -1"},
      {"pick cboTipType 99999999999", ActionKind::Pick, {"cboTipType"}, 2147483647, "pick cboTipType 99999999999"},
      {"instrument refuse MOVE", ActionKind::Refuse, {"MOVE"}, 1, "instrument refuse MOVE"},
      {"instrument fail \"MOVE X\" 3", ActionKind::Fail, {"MOVE X"}, 3, "instrument fail \"MOVE X\" 3"},
      {"instrument reply \"\"   \"a \\\"b\\\" \\\\ \\n\"",
       ActionKind::Reply,
       {"", "a \"b\" \\ \\n"},
       0,
       "instrument reply \"\" \"a \\\"b\\\" \\\\ \\n\""},
      {"file set HeadType Item3 \"\\\"1 Ch\\\",X\"",
       ActionKind::FileSet,
       {"HeadType", "Item3", "\"1 Ch\",X"},
       0,
       "file set HeadType Item3 \"\\\"1 Ch\\\",X\""},
      {"file remove A#1 b\"c", ActionKind::FileRemove, {"A#1", "b\"c"}, 0, "file remove A#1 b\"c"},
      {"host FormParent none", ActionKind::TakeWindow, {}, 0, "host FormParent none"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const std::vector<Action> actions = OwnActions(row.line);
    ASSERT_EQ(actions.size(), 1U);
    EXPECT_EQ(actions[0].kind, row.kind);
    EXPECT_EQ(actions[0].arguments, row.arguments);
    EXPECT_EQ(actions[0].number, row.number);
    EXPECT_EQ(actions[0].text, row.text);
    EXPECT_EQ(actions[0].line, 1U);
  }
}

TEST(Script, ADuringHoldsOneActionWithItsOwnWords) {
  const std::vector<Action> actions = OwnActions("during \"MOVE X\"   instrument  reply \"STATUS SLIDER\" OPEN");
  ASSERT_EQ(actions.size(), 1U);
  EXPECT_EQ(actions[0].text, "during \"MOVE X\" instrument reply \"STATUS SLIDER\" OPEN");
  EXPECT_EQ(actions[0].arguments, std::vector<std::string>{"MOVE X"});
  ASSERT_EQ(actions[0].waiting.size(), 1U);
  EXPECT_EQ(actions[0].waiting[0].kind, ActionKind::Reply);
  EXPECT_EQ(actions[0].waiting[0].text, "instrument reply \"STATUS SLIDER\" OPEN");
  EXPECT_EQ(actions[0].waiting[0].arguments, (std::vector<std::string>{"STATUS SLIDER", "OPEN"}));
}

TEST(Script, BlankLinesCommentsAndTheShapeOfLinesSayNothing) {
  const std::vector<Action> actions =
      OwnActions("\xEF\xBB\xBF# first\r\n\r\n \t # indented\r\n  \t\nclick 0\r\n\nshow");
  ASSERT_EQ(actions.size(), 2U);
  EXPECT_EQ(actions[0].text, "click 0");
  EXPECT_EQ(actions[0].line, 5U);
  EXPECT_EQ(actions[1].text, "show");
  EXPECT_EQ(actions[1].line, 7U);
}

TEST(Script, TheAddInIsCreatedInFrontUnlessTheScriptBeginsWithThat) {
  const auto texts = [](const char* script) {
    std::string all;
    for (const Action& action : ParseScript(script).actions) all += action.text + "; ";
    return all;
  };
  EXPECT_EQ(texts("show"), "host create; host ObjectParent given; host FormParent given; show; ");
  EXPECT_EQ(texts("answer ok\nhost create"),
            "host create; host ObjectParent given; host FormParent given; answer ok; host create; ");
  EXPECT_EQ(texts("# none\nhost create\nshow"), "host create; show; ");
  EXPECT_EQ(texts(""), "host create; host ObjectParent given; host FormParent given; ");
}

TEST(Script, EveryLineThatSaysNoActionIsAnError) {
  const std::vector<const char*> lines = {
      "press 1",
      "Click 1",
      "host",
      "host Create",
      "host create now",
      "host ObjectParent",
      "host ObjectParent maybe",
      "host read",
      "host read caption",
      "host read hwnd",
      "host SaveChanges 1",
      "click",
      "click 15",
      "click 17",
      "click -1",
      "click 1x",
      "click 1 2",
      "click frame 1",
      "click \"\"",
      "check",
      "check chkNone",
      "uncheck cboTipType",
      "check CHKSTAGEEMPTY",
      "pick cboHeadType",
      "pick cboHeadType first",
      "pick cboHeadType 1.5",
      "pick chkStageEmpty 1",
      "answer maybe",
      "answer",
      "instrument refuse",
      "instrument refuse MOVE 0",
      "instrument refuse MOVE two",
      "instrument refuse MOVE 1 2",
      "instrument reply MOVE",
      "instrument reply STATUS SLIDER OPEN",
      "during MOVE",
      "during MOVE answer ok",
      "during MOVE host create",
      "during MOVE host release",
      "during MOVE host read Caption",
      "during MOVE during MOVE show",
      "during MOVE click 15",
      "during MOVE show all",
      "link",
      "link sideways",
      "file reads",
      "file writes sometimes",
      "file set HeadType Item1",
      "file set HeadType Item1 a b",
      "file remove HeadType",
      "show form",
      "show # with a comment",
      "instrument reply MOVE \"open",
      "instrument reply MOVE \"ends in a backslash\\\"",
      "instrument reply \"MOVE\"X text",
  };
  for (const char* line : lines) {
    SCOPED_TRACE(line);
    const Script script = ParseScript(std::string("show\n") + line + "\nshow\n");
    ASSERT_EQ(script.errors.size(), 1U);
    EXPECT_EQ(script.errors[0].line, 2U);
    EXPECT_FALSE(script.errors[0].what.empty());
  }
}

TEST(Script, AllErrorsAreFoundAndSayWhatIsWrong) {
  const Script script =
      ParseScript("click 15\nshow\nhost read Name\npick cboHeadType\nduring MOVE answer ok\n\"click\n");
  const std::vector<ScriptError> expected = {
      {1, "there is no button 15; there are 0 to 14 and 16"},
      {3, "there is no member Name; there are Caption, Frame, HelpContextID, ShowStatusBar, ShowButtons"},
      {4, "wrong number of words; the action is written: pick LIST INDEX"},
      {5, "this action can't take place during a line: answer ok"},
      {6, "a quoted word has no closing quote: \"click"},
  };
  ASSERT_EQ(script.errors.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(script.errors[i].line, expected[i].line);
    EXPECT_EQ(script.errors[i].what, expected[i].what);
  }
}

}  // namespace
}  // namespace Helmsway
