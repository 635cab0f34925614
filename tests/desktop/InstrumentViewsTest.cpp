#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QProgressBar>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "bench/desktop/instrument/InstrumentPane.h"
#include "bench/desktop/instrument/LoupeView.h"
#include "bench/desktop/instrument/SideView.h"
#include "bench/desktop/instrument/StageMap.h"
#include "bench/desktop/instrument/StageView.h"
#include "bench/instrument/DescribeMachine.h"
#include "tests/host/TemporaryFolder.h"

namespace Helmsway {
namespace {

const std::filesystem::path Example = HELMSWAY_EXAMPLES "/installation/Marivane.ini";

/// The rows in which two pictures differ, both ends included.
struct Rows {
  int first = -1;
  int last = -1;

  int Count() const { return first < 0 ? 0 : last - first + 1; }
};

Rows Differing(const QImage& one, const QImage& other) {
  Rows rows;
  for (int y = 0; y < one.height(); ++y) {
    const auto differs = [&](int x) { return one.pixel(x, y) != other.pixel(x, y); };
    bool any = false;
    for (int x = 0; x < one.width() && !any; ++x) any = differs(x);
    if (!any) continue;
    if (rows.first < 0) rows.first = y;
    rows.last = y;
  }
  return rows;
}

QImage Drawn(QWidget& widget) { return widget.grab().toImage(); }

QImage Loupe(LoupeView& view, std::optional<double> edge) {
  view.Show(edge);
  return Drawn(view);
}

InstrumentPicture AtRest(const MachineDescription& machine) {
  InstrumentPicture picture;
  for (const char* const name : {"X", "Y", "Z", "S", "SD_X", "SD_Y"}) picture.axes.push_back({name, 0, true, false});
  picture.slider = machine.hasSlider ? "open" : "none";
  for (const auto& slot : machine.slots) picture.places.push_back({slot.name, "empty"});
  for (const auto& place : machine.places) picture.places.push_back({place.caption, "empty"});
  return picture;
}

/// The example as it was before its rebuild: a model without X axis and slider.
MachineDescription DescribeWithoutX() {
  std::ifstream in(Example);
  std::stringstream text;
  text << in.rdbuf();
  std::string whole = text.str();
  const std::string installed = "Installed=2";
  whole.replace(whole.find(installed), installed.size(), "Installed=1");
  const TemporaryFolder folder;
  return DescribeMachine(folder.Write("Marivane.ini", whole));
}

TEST(InstrumentViews, EveryTenthOfAMillimetreCanBeSeenInTheLoupe) {
  LoupeView view;
  for (const QSize& size : {view.minimumSizeHint(), QSize(300, 700)}) {
    view.resize(size);
    const double scale = view.PixelsPerMillimetre();
    ASSERT_GE(scale * 0.1, 5);
    EXPECT_GE(view.RowOf(3), 0);
    EXPECT_LE(view.RowOf(-3), size.height());
    const QImage covered = Loupe(view, 0);
    for (const double edge : {0.1, -0.1, 0.8, 1.0, -1.0, 3.0}) {
      SCOPED_TRACE(edge);
      const Rows rows = Differing(covered, Loupe(view, edge));
      // Both ends may lie within a row.
      EXPECT_NEAR(rows.Count(), std::abs(edge) * scale, 2);
      // The edge at 0 ends the difference below, or begins it: above 0 the upper part moves up.
      EXPECT_NEAR(edge > 0 ? rows.last + 1 : rows.first, view.RowOf(0), 1);
    }
  }
}

TEST(InstrumentViews, OnlyAboveFullCoverTheRingShowsItsSilver) {
  LoupeView view;
  view.resize(200, 500);
  const auto isSilver = [&](double edge, double height) {
    const QColor color =
        Loupe(view, edge).pixelColor(view.width() / 2, static_cast<int>(std::lround(view.RowOf(height))));
    return color.lightness() > 180 && color.saturation() < 40;
  };
  EXPECT_TRUE(isSilver(0.3, 0.15));
  EXPECT_FALSE(isSilver(0.3, 0.45)) << "still covered";
  EXPECT_FALSE(isSilver(0, 0.15));
  EXPECT_FALSE(isSilver(-0.3, -0.15)) << "the ring doesn't reach so low";
  EXPECT_FALSE(isSilver(2, 1)) << "the shaft over the ring";
  EXPECT_TRUE(isSilver(2, 0.7));
}

TEST(InstrumentViews, TheLoupeTellsScreenReadersWhatEyesSee) {
  LoupeView view;
  view.resize(view.minimumSizeHint());
  const QString nothing = view.accessibleDescription();
  EXPECT_TRUE(nothing.contains(QStringLiteral("No teach tool")));
  struct Case {
    double edge;
    QString words;
  };
  for (const Case& each :
       {Case{0.32, QStringLiteral("the ring shows about 0.3 mm")}, Case{0.04, QStringLiteral("the ring is covered")},
        Case{-0.04, QStringLiteral("the ring is covered")},
        Case{-0.17, QStringLiteral("the edge reaches about 0.2 mm below the ring")}}) {
    view.Show(each.edge);
    EXPECT_EQ(view.accessibleDescription(), each.words);
  }
  const QImage far = Loupe(view, 5);
  EXPECT_EQ(Differing(far, Loupe(view, 6)).Count(), 0) << "beyond the picture only the arrow is left";
  EXPECT_GT(Differing(far, Loupe(view, 3)).Count(), 0);
  EXPECT_GT(Differing(far, Loupe(view, -5)).Count(), 0);
  view.Show(std::nullopt);
  EXPECT_EQ(view.accessibleDescription(), nothing);
}

TEST(InstrumentViews, NoPlaceOfTheStageLiesOnAnother) {
  struct Case {
    const char* name;
    MachineDescription machine;
    std::size_t spots;  // positions, slots and names of nests
  };
  for (const Case& each :
       {Case{"with X", DescribeMachine(Example), 7 + 10 + 4}, Case{"without X", DescribeWithoutX(), 4 + 10 + 4}}) {
    for (const int points : {9, 18}) {
      SCOPED_TRACE(testing::Message() << each.name << ", " << points << " points");
      QFont font;
      font.setPointSize(points);
      const QFontMetrics metrics(font);
      StageMap map(each.machine, metrics);
      map.FitInto(QRectF(QPointF(0, 0), map.Least()));
      const auto spots = map.Spots();
      EXPECT_EQ(spots.size(), each.spots);
      for (std::size_t i = 0; i < spots.size(); ++i) {
        EXPECT_FALSE(spots[i].caption.isEmpty());
        EXPECT_GE(spots[i].area.height(), metrics.height()) << "a line of words";
        for (std::size_t j = 0; j < i; ++j) {
          EXPECT_FALSE(spots[i].area.intersects(spots[j].area))
              << spots[i].caption.toStdString() << " and " << spots[j].caption.toStdString();
        }
      }
    }
  }
}

TEST(InstrumentViews, TheStageTellsWhatStandsBelowTheMouse) {
  const MachineDescription machine = DescribeMachine(Example);
  StageView view(machine);
  view.resize(400, 500);
  InstrumentPicture picture = AtRest(machine);
  picture.slider = "closed";
  for (auto& place : picture.places) {
    if (place.name == "Stage 4 (lower)") place.contents = "Tip rack 300";
  }
  view.Show(picture);
  Drawn(view);
  QStringList words;
  for (int y = 0; y < view.height(); y += 4) {
    for (int x = 0; x < view.width(); x += 4) words << view.WordsAt({x, y});
  }
  for (const auto& place : picture.places) {
    const QString told = QString::fromStdString(place.name + ": " + place.contents);
    EXPECT_TRUE(std::any_of(words.begin(), words.end(), [&](const QString& each) { return each.startsWith(told); }))
        << place.name;
  }
  EXPECT_TRUE(words.contains(QStringLiteral("Stage 4 (lower): Tip rack 300 (under the closed slider)")));
  EXPECT_TRUE(words.contains(QStringLiteral("Stage 6: empty")));
}

TEST(InstrumentViews, WhatMovesMovesInThePictures) {
  const MachineDescription machine = DescribeMachine(Example);
  StageView stage(machine);
  SideView side(machine);
  stage.resize(400, 500);
  side.resize(400, 200);
  struct Case {
    std::size_t axis;
    double to;
    bool onStage;
  };
  InstrumentPicture picture = AtRest(machine);
  picture.head = "8 Channel 300";
  for (const Case& each : {Case{0, 20000, true}, Case{1, 20000, true}, Case{2, -9000, false}, Case{3, -3000, false}}) {
    SCOPED_TRACE(picture.axes[each.axis].name);
    stage.Show(picture);
    side.Show(picture);
    const QImage stageBefore = Drawn(stage);
    const QImage sideBefore = Drawn(side);
    picture.axes[each.axis].at = each.to;
    stage.Show(picture);
    side.Show(picture);
    EXPECT_EQ(Differing(stageBefore, Drawn(stage)).Count() > 0, each.onStage);
    EXPECT_GT(Differing(sideBefore, Drawn(side)).Count(), 0) << "the table, at least";
  }
  // The pipette module over Stage 1: X 5120 steps, and the head of one channel 12.4 mm further by SD_X.
  StageMap map(machine, stage.fontMetrics());
  map.FitInto({0, 0, 300, 400});
  const auto spots = map.Spots();
  const QPointF over = map.At({5120 * 0.0213 + 12.4, 4310 * 0.0213 - 3.04});
  const auto below =
      std::find_if(spots.begin(), spots.end(), [&](const auto& spot) { return spot.area.contains(over); });
  ASSERT_NE(below, spots.end());
  EXPECT_EQ(below->place, "Stage 1");
}

TEST(InstrumentViews, ThePaneSaysInWordsWhatIsWrong) {
  InstrumentPane pane(DescribeMachine(Example));
  pane.resize(520, 640);
  pane.show();
  const auto label = [&](const char* name) { return pane.findChild<QLabel*>(QString::fromUtf8(name)); };
  const auto shows = [&](const char* name, const char* words) {
    return label(name)->isVisible() && label(name)->text().contains(QString::fromUtf8(words));
  };
  EXPECT_TRUE(shows("simulationBanner", "SIMULATED INSTRUMENT"));
  EXPECT_FALSE(label("refusal")->isVisible());

  pane.ShowRefusal("MOVE Z -9000", "it would run 3.2 mm into <Stage 1>");
  EXPECT_TRUE(shows("refusal", "\u2716 Refused: MOVE Z -9000: it would run 3.2 mm into <Stage 1>"));
  InstrumentPicture picture;
  pane.Show(picture);
  EXPECT_TRUE(label("refusal")->isVisible());
  EXPECT_FALSE(label("localMode")->isVisible());
  EXPECT_FALSE(label("collisionDetection")->isVisible());
  pane.ClearRefusal();
  EXPECT_FALSE(label("refusal")->isVisible());

  picture.remote = false;
  picture.zCollisionDetection = false;
  picture.damage = {"first", "second", "third"};
  pane.Show(picture);
  EXPECT_TRUE(shows("localMode", "\u26A0 Local mode"));
  EXPECT_TRUE(shows("collisionDetection", "\u26A0 Z collision detection is off"));
  EXPECT_TRUE(shows("damage", "\u2716 Damage: second; third; and 1 more before"));

  const auto* const progress = pane.findChild<QProgressBar*>();
  pane.ShowLineUnderWay("MOVE S -3097", 0.25);
  EXPECT_TRUE(shows("lineUnderWay", "Under way: MOVE S -3097"));
  EXPECT_TRUE(progress->isVisible());
  EXPECT_EQ(progress->value() * 4, progress->maximum());
  pane.ShowLineEnded();
  EXPECT_FALSE(progress->isVisible());
  EXPECT_FALSE(shows("lineUnderWay", "MOVE"));
}

}  // namespace
}  // namespace Helmsway
