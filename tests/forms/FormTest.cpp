#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "forms/Form.h"

namespace forms {
namespace {

constexpr ControlDesign Row(ControlKind kind, std::string_view name, std::string_view container, Rectangle bounds,
                            std::string_view entries = "") {
  return {.kind = kind, .name = name, .container = container, .bounds = bounds, .entries = entries};
}

/// Two panels over the same area, the first on top, a button under both of them and a button beside them.
const std::array design{
    Row(ControlKind::PictureBox, "picFrame", "", {0, 0, 1000, 1000}),
    Row(ControlKind::Frame, "fraTop", "picFrame", {0, 100, 500, 500}),
    Row(ControlKind::Frame, "fraLow", "picFrame", {0, 100, 500, 500}),
    Row(ControlKind::CommandButton, "cmdUnder", "picFrame", {449, 450, 100, 100}),
    Row(ControlKind::CommandButton, "cmdBeside", "picFrame", {450, 330, 100, 100}),
    Row(ControlKind::CommandButton, "cmdTop", "fraTop", {0, 0, 50, 50}),
    Row(ControlKind::ComboBox, "cboLow", "fraLow", {0, 0, 50, 50}, "0.1 mm\n1 mm"),
    Row(ControlKind::CheckBox, "chkLow", "fraLow", {0, 60, 50, 50}),
    Row(ControlKind::TextBox, "txtLow", "fraLow", {0, 120, 50, 50}),
};

using Log = std::vector<std::string>;

/// A live form that records the notifications of its observer and the calls of its handlers.
struct WatchedForm final : IObserver, IMessageBoxes {
  Form Live{"caption", design};
  Log Heard;
  ComboBox& List = Live.Get<ComboBox>("cboLow");
  CheckBox& Check = Live.Get<CheckBox>("chkLow");

  WatchedForm() {
    Live.SetObserver(this);
    List.OnClick = [this] { Heard.push_back("pick " + std::string(List.Text())); };
    Check.OnClick = [this] { Heard.push_back("check " + std::to_string(Check.Value())); };
    for (const char* name : {"picFrame", "cmdUnder", "cmdBeside", "cmdTop", "txtLow"}) {
      Live.Get(name).OnClick = [this, name] { Heard.push_back(std::string("click ") + name); };
    }
  }
  void Changed(ControlId control, Aspect aspect) noexcept override {
    constexpr std::array names{"caption", "visible", "enabled", "color", "entries", "selection", "checked", "text"};
    Heard.push_back(std::string(Live.State(control).name) + " " + names.at(static_cast<std::size_t>(aspect)));
  }
  void Closed() noexcept override { Heard.emplace_back("closed"); }
  MessageAnswer Show(std::string_view title, std::string_view text, MessageButtons, MessageIcon) noexcept override {
    Heard.push_back(std::string(title) + ": " + std::string(text));
    return MessageAnswer::Yes;
  }

  ControlId Id(std::string_view name) const { return Live.Find(name, NoIndex); }
  bool Click(std::string_view name) { return Live.Click(Id(name)); }
  bool SetChecked(bool checked) { return Live.SetChecked(Id("chkLow"), checked); }
  bool Pick(std::int32_t entry) { return Live.Pick(Id("cboLow"), entry); }
  void ShowLowPanel() {
    Live.Get("fraTop").SetVisible(false);
    Heard.clear();
  }
};

TEST(FormTest, AChangeIsHeardOfOnceAheadOfItsHandler) {
  using Row = std::pair<std::function<void(WatchedForm&)>, Log>;
  for (const auto& [change, heard] : {
           Row{[](auto& form) { form.Live.Get("cmdTop").SetCaption("new"); }, {"cmdTop caption"}},
           Row{[](auto& form) { form.Live.Get("cmdTop").SetVisible(false); }, {"cmdTop visible"}},
           Row{[](auto& form) { form.Live.Get("cmdTop").SetEnabled(false); }, {"cmdTop enabled"}},
           Row{[](auto& form) { form.Live.Get("cmdTop").SetBackColor(SystemColor::WindowBackground); },
               {"cmdTop color"}},
           Row{[](auto& form) { form.Live.template Get<TextBox>("txtLow").SetText("12"); }, {"txtLow text"}},
           Row{[](auto& form) { form.Check.SetValue(1); }, {"chkLow checked", "check 1"}},
           Row{[](auto& form) { EXPECT_TRUE(form.List.SetListIndex(1)); }, {"cboLow selection", "pick 1 mm"}},
           Row{[](auto& form) { EXPECT_FALSE(form.List.SetListIndex(2)); }, {}},
       }) {
    WatchedForm form;
    change(form);
    EXPECT_EQ(form.Heard, heard);
    change(form);
    EXPECT_EQ(form.Heard, heard) << "the second time changes nothing";
  }
}

TEST(FormTest, AListKeepsItsEntriesTheirDataAndItsSelection) {
  WatchedForm form;
  EXPECT_EQ(form.List.Text(), "") << "nothing is selected at first";
  EXPECT_TRUE(form.List.SetListIndex(1));
  form.List.AddItem("2 mm");
  EXPECT_EQ(form.List.NewIndex(), 2);
  EXPECT_TRUE(form.List.SetItemData(2, 7));
  EXPECT_EQ(form.Live.ItemData(form.Id("cboLow"), 2), 7);
  EXPECT_EQ(form.List.Text(), "1 mm") << "an entry at the end leaves the selection";
  for (const std::int32_t entry : {-2, -1, 3}) {
    EXPECT_FALSE(form.List.SetItemData(entry, 1) || form.List.ItemData(entry) || form.List.List(entry)) << entry;
  }
  form.Heard.clear();
  EXPECT_TRUE(form.List.SetListIndex(-1));
  EXPECT_TRUE(form.List.SetListIndex(2));
  form.List.Clear();
  EXPECT_EQ(form.Heard, (Log{"cboLow selection", "pick ", "cboLow selection", "pick 2 mm", "cboLow entries"}))
      << "a selection that goes is a change, and clearing runs no handler";
  EXPECT_EQ(form.List.ListIndex(), -1);
  EXPECT_EQ(form.List.NewIndex(), -1);
}

TEST(FormTest, TheOperatorReachesWhatIsVisibleAndNotCovered) {
  using Case = std::pair<std::vector<const char*>, Log>;
  for (const auto& [hidden, expected] :
       {Case{{}, {"picFrame", "fraTop", "cmdBeside", "cmdTop"}},
        Case{{"fraTop"}, {"picFrame", "fraLow", "cmdBeside", "cboLow", "chkLow", "txtLow"}},
        Case{{"fraTop", "fraLow"}, {"picFrame", "cmdUnder", "cmdBeside"}}, Case{{"picFrame"}, {}}}) {
    WatchedForm form;
    for (const char* name : hidden) form.Live.Get(name).SetVisible(false);
    Log reachable;
    for (const auto& control : form.Live.Controls()) {
      if (form.Live.Reachable(control->Id())) reachable.emplace_back(control->Name());
    }
    EXPECT_EQ(reachable, expected);
  }
}

TEST(FormTest, TheOperatorDoesWhatTheScreenAllows) {
  const auto click = [](const char* name) { return [=](WatchedForm& form) { return form.Click(name); }; };
  const auto check = [](bool value) { return [=](WatchedForm& form) { return form.SetChecked(value); }; };
  const auto pick = [](std::int32_t entry) { return [=](WatchedForm& form) { return form.Pick(entry); }; };
  enum class Panel { Top, Low };
  // An empty log: the action isn't possible.
  using Case = std::tuple<const char*, Panel, std::function<bool(WatchedForm&)>, Log>;
  for (const auto& [name, panel, act, heard] : {
           Case{"click", Panel::Top, click("cmdTop"), {"click cmdTop"}},
           Case{"click a covered button", Panel::Top, click("cmdUnder"), {}},
           Case{"click the background", Panel::Top, click("picFrame"), {"click picFrame"}},
           Case{"click what is no button", Panel::Low, click("txtLow"), {}},
           Case{"click what isn't there", Panel::Top, click("cmdNone"), {}},
           Case{"check", Panel::Low, check(true), {"chkLow checked", "check 1"}},
           Case{"uncheck what is unchecked", Panel::Low, check(false), {}},
           Case{"check under a panel", Panel::Top, check(true), {}},
           Case{"pick", Panel::Low, pick(1), {"cboLow selection", "pick 1 mm"}},
           Case{"pick under a panel", Panel::Top, pick(1), {}},
           Case{"pick nothing", Panel::Low, pick(-1), {}},
           Case{"pick behind the end", Panel::Low, pick(2), {}},
       }) {
    SCOPED_TRACE(name);
    WatchedForm form;
    if (panel == Panel::Low) form.ShowLowPanel();
    EXPECT_EQ(act(form), !heard.empty());
    EXPECT_EQ(form.Heard, heard);
    for (const char* control : {"cmdTop", "cboLow", "chkLow"}) form.Live.Get(control).SetEnabled(false);
    EXPECT_EQ(act(form), heard == Log{"click picFrame"}) << "of disabled controls";
  }
}

TEST(FormTest, WhatLeavesAHandlerLeavesTheStatementButNotTheSurface) {
  WatchedForm form;
  form.ShowLowPanel();
  EXPECT_TRUE(form.Pick(0));
  EXPECT_FALSE(form.Pick(0)) << "it is selected already";
  form.Check.OnClick = [] { throw std::runtime_error("any"); };
  EXPECT_THROW(form.Check.SetValue(1), std::runtime_error);
  EXPECT_TRUE(form.SetChecked(false));
  EXPECT_EQ(form.Check.Value(), 0);
}

TEST(FormTest, ABoxThatNobodyShowsTakesTheMostCarefulAnswer) {
  WatchedForm form;
  const auto ask = [&](MessageButtons buttons) { return form.Live.ShowMessage("t", "q", buttons, MessageIcon::None); };
  EXPECT_EQ(ask(MessageButtons::YesNo), MessageAnswer::No);
  EXPECT_EQ(ask(MessageButtons::OkCancel), MessageAnswer::Cancel);
  EXPECT_EQ(ask(MessageButtons::Ok), MessageAnswer::Ok);
  form.Live.SetMessageBoxes(&form);
  EXPECT_EQ(ask(MessageButtons::YesNo), MessageAnswer::Yes);
  form.Live.Close();
  EXPECT_EQ(ask(MessageButtons::YesNo), MessageAnswer::No);
  EXPECT_EQ(form.Heard, (Log{"t: q", "closed"}));
}

TEST(FormTest, AFormThatClosesInItsOwnHandlerIsOutOfReach) {
  WatchedForm form;
  form.ShowLowPanel();
  form.Check.OnClick = [&] {
    form.Live.Close();
    form.Heard.emplace_back("handler goes on");
  };
  EXPECT_TRUE(form.SetChecked(true));
  form.Live.Close();
  EXPECT_EQ(form.Heard, (Log{"chkLow checked", "closed", "handler goes on"}));
  EXPECT_FALSE(form.Live.Reachable(form.Id("cmdBeside")));
  EXPECT_FALSE(form.Click("picFrame") || form.Click("cmdBeside") || form.SetChecked(false) || form.Pick(0));
  form.Check.SetValue(0);
  EXPECT_FALSE(form.Live.State(form.Id("chkLow")).checked) << "code still reaches it";
  EXPECT_EQ(form.Heard.size(), 3U);
}

}  // namespace
}  // namespace forms
