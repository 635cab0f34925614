#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "forms/Form.h"

namespace forms {
namespace {

constexpr ControlDesign Row(ControlKind kind, std::string_view name, std::string_view container, Rectangle bounds) {
  return {.kind = kind, .name = name, .container = container, .bounds = bounds};
}

ControlDesign With(ControlDesign row, std::string_view entries) {
  row.entries = entries;
  return row;
}

/// Two panels over the same area, the first on top, a button under both of them and a button beside.
const std::array design{
    Row(ControlKind::PictureBox, "picFrame", "", {0, 0, 1000, 1000}),
    Row(ControlKind::Frame, "fraTop", "picFrame", {0, 100, 500, 500}),
    Row(ControlKind::Frame, "fraLow", "picFrame", {0, 100, 500, 500}),
    Row(ControlKind::CommandButton, "cmdUnder", "picFrame", {449, 450, 100, 100}),
    Row(ControlKind::CommandButton, "cmdBeside", "picFrame", {450, 330, 100, 100}),
    Row(ControlKind::CommandButton, "cmdTop", "fraTop", {0, 0, 50, 50}),
    With(Row(ControlKind::ComboBox, "cboLow", "fraLow", {0, 0, 50, 50}), "0.1 mm\n1 mm"),
    Row(ControlKind::CheckBox, "chkLow", "fraLow", {0, 60, 50, 50}),
    Row(ControlKind::TextBox, "txtLow", "fraLow", {0, 120, 50, 50}),
};

using Log = std::vector<std::string>;

/// A living form that writes down what its observer hears and what its handlers see.
struct WatchedForm final : IObserver, IMessageBoxes {
  Form Live{"caption", design};
  std::vector<std::string> Heard;
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
  struct Case {
    std::function<void(WatchedForm&)> change;
    Log heard;
  };
  for (const Case& row : {
           Case{[](auto& form) { form.Live.Get("cmdTop").SetCaption("new"); }, {"cmdTop caption"}},
           Case{[](auto& form) { form.Live.Get("cmdTop").SetVisible(false); }, {"cmdTop visible"}},
           Case{[](auto& form) { form.Live.Get("cmdTop").SetEnabled(false); }, {"cmdTop enabled"}},
           Case{[](auto& form) {
                  form.Live.Get("cmdTop").SetBackColor(Rgb{255, 128, 128});
                },
                {"cmdTop color"}},
           Case{[](auto& form) { form.Live.template Get<TextBox>("txtLow").SetText("12"); }, {"txtLow text"}},
           Case{[](auto& form) { form.Check.SetValue(1); }, {"chkLow checked", "check 1"}},
           Case{[](auto& form) { form.Check.SetValue(0); }, {}},
           Case{[](auto& form) { EXPECT_TRUE(form.List.SetListIndex(1)); }, {"cboLow selection", "pick 1 mm"}},
           Case{[](auto& form) { EXPECT_TRUE(form.List.SetListIndex(-1)); }, {}},
           Case{[](auto& form) { EXPECT_FALSE(form.List.SetListIndex(2)); }, {}},
       }) {
    WatchedForm form;
    row.change(form);
    EXPECT_EQ(form.Heard, row.heard);
    row.change(form);
    EXPECT_EQ(form.Heard, row.heard) << "the second time changes nothing";
  }
}

TEST(FormTest, AListKeepsItsEntriesTheirDataAndItsSelection) {
  WatchedForm form;
  EXPECT_EQ(form.List.ListCount(), 2);
  EXPECT_EQ(form.List.Text(), "") << "nothing is selected at first";
  ASSERT_TRUE(form.List.SetListIndex(1));
  form.List.AddItem("2 mm");
  EXPECT_EQ(form.List.NewIndex(), 2);
  EXPECT_TRUE(form.List.SetItemData(2, 7));
  EXPECT_EQ(form.Live.ItemData(form.Id("cboLow"), 2), 7);
  EXPECT_EQ(form.List.Text(), "1 mm") << "an entry at the end leaves the selection";
  for (const std::int32_t entry : {-2, -1, 3}) {
    EXPECT_FALSE(form.List.SetItemData(entry, 1)) << entry;
    EXPECT_EQ(form.List.ItemData(entry), std::nullopt) << entry;
    EXPECT_EQ(form.List.List(entry), std::nullopt) << entry;
  }
  EXPECT_FALSE(form.List.SetListIndex(-2));
  form.Heard.clear();
  EXPECT_TRUE(form.List.SetListIndex(-1));
  EXPECT_EQ(form.Heard, (Log{"cboLow selection", "pick "})) << "a selection that goes is a change";
  ASSERT_TRUE(form.List.SetListIndex(2));
  form.Heard.clear();
  form.List.Clear();
  EXPECT_EQ(form.Heard, (Log{"cboLow entries"})) << "no handler";
  EXPECT_EQ(form.List.ListIndex(), -1);
  EXPECT_EQ(form.List.NewIndex(), -1);
  EXPECT_FALSE(form.List.SetListIndex(0));
}

TEST(FormTest, TheOperatorReachesWhatIsVisibleAndNotCovered) {
  struct Case {
    const char* name;
    std::vector<const char*> hidden;
    Log reachable;
  };
  for (const Case& row :
       {Case{"the top panel covers", {}, {"picFrame", "fraTop", "cmdBeside", "cmdTop"}},
        Case{"the lower panel covers", {"fraTop"}, {"picFrame", "fraLow", "cmdBeside", "cboLow", "chkLow", "txtLow"}},
        Case{"no panel covers", {"fraTop", "fraLow"}, {"picFrame", "cmdUnder", "cmdBeside"}},
        Case{"what contains everything hides everything", {"picFrame"}, {}}}) {
    SCOPED_TRACE(row.name);
    WatchedForm form;
    for (const char* name : row.hidden) form.Live.Get(name).SetVisible(false);
    Log reachable;
    for (const auto& control : form.Live.Controls()) {
      if (form.Live.Reachable(control->Id())) reachable.emplace_back(control->Name());
    }
    EXPECT_EQ(reachable, row.reachable);
  }
}

TEST(FormTest, TheOperatorDoesWhatTheScreenAllows) {
  enum class Panel { Top, Low };
  struct Case {
    const char* name;
    Panel panel;
    std::function<bool(WatchedForm&)> act;
    Log heard;  ///< empty: it can't be done
  };
  for (const Case& row : {
           Case{"click", Panel::Top, [](auto& form) { return form.Click("cmdTop"); }, {"click cmdTop"}},
           Case{"click a covered button", Panel::Top, [](auto& form) { return form.Click("cmdUnder"); }, {}},
           Case{"click the background",
                Panel::Top,
                [](auto& form) { return form.Click("picFrame"); },
                {"click picFrame"}},
           Case{"click what is no button", Panel::Low, [](auto& form) { return form.Click("txtLow"); }, {}},
           Case{"click what isn't there", Panel::Top, [](auto& form) { return form.Click("cmdNone"); }, {}},
           Case{"check", Panel::Low, [](auto& form) { return form.SetChecked(true); }, {"chkLow checked", "check 1"}},
           Case{"uncheck what is unchecked", Panel::Low, [](auto& form) { return form.SetChecked(false); }, {}},
           Case{"check under a panel", Panel::Top, [](auto& form) { return form.SetChecked(true); }, {}},
           Case{"pick", Panel::Low, [](auto& form) { return form.Pick(1); }, {"cboLow selection", "pick 1 mm"}},
           Case{"pick under a panel", Panel::Top, [](auto& form) { return form.Pick(1); }, {}},
           Case{"pick nothing", Panel::Low, [](auto& form) { return form.Pick(-1); }, {}},
           Case{"pick behind the end", Panel::Low, [](auto& form) { return form.Pick(2); }, {}},
       }) {
    SCOPED_TRACE(row.name);
    WatchedForm form;
    if (row.panel == Panel::Low) form.ShowLowPanel();
    EXPECT_EQ(row.act(form), !row.heard.empty());
    EXPECT_EQ(form.Heard, row.heard);
    for (const char* name : {"cmdTop", "cboLow", "chkLow"}) form.Live.Get(name).SetEnabled(false);
    form.Heard.clear();
    EXPECT_EQ(row.act(form), row.heard == Log{"click picFrame"}) << "of disabled controls";
  }
  WatchedForm form;
  form.ShowLowPanel();
  EXPECT_TRUE(form.Pick(0));
  EXPECT_FALSE(form.Pick(0)) << "it is selected already";
}

TEST(FormTest, WhatLeavesAHandlerLeavesTheStatementButNotTheSurface) {
  WatchedForm form;
  form.ShowLowPanel();
  form.Check.OnClick = [] { throw std::runtime_error("any"); };
  EXPECT_THROW(form.Check.SetValue(1), std::runtime_error);
  EXPECT_EQ(form.Check.Value(), 1);
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
  EXPECT_FALSE(form.Click("picFrame"));
  EXPECT_FALSE(form.Click("cmdBeside"));
  EXPECT_FALSE(form.SetChecked(false));
  EXPECT_FALSE(form.Pick(0));
  form.Check.SetValue(0);
  EXPECT_FALSE(form.Live.State(form.Id("chkLow")).checked) << "code still reaches it";
  EXPECT_EQ(form.Heard.size(), 3U);
}

}  // namespace
}  // namespace forms
