#include "bench/desktop/instrument/InstrumentPane.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <utility>

#include "bench/desktop/instrument/LoupeView.h"
#include "bench/desktop/instrument/NoticeLabel.h"
#include "bench/desktop/instrument/SideView.h"
#include "bench/desktop/instrument/SimulationBanner.h"
#include "bench/desktop/instrument/StageView.h"

namespace Helmsway {
namespace {

constexpr int WholeProgress = 1000;
/// More would push the pictures out of the window; the tooltip has all.
constexpr std::size_t DamageShown = 2;

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).trimmed();
}

/// Asks for what its pictures ask for, and makes do with less: with large text they can need more than the screen has.
class PicturesArea final : public QScrollArea {
 public:
  explicit PicturesArea(QWidget* parent) : QScrollArea(parent) {
    setObjectName(QStringLiteral("picturesArea"));
    setAccessibleName(QStringLiteral("Pictures of the instrument"));
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
  }

  QSize sizeHint() const override { return widget() == nullptr ? QSize() : widget()->sizeHint(); }
};

QString Idle() { return QStringLiteral("Nothing under way"); }

}  // namespace

InstrumentPane::InstrumentPane(MachineDescription machine, QWidget* parent)
    : QWidget(parent),
      machine_(std::move(machine)),
      loupe_(new LoupeView(this)),
      side_(new SideView(machine_, this)),
      stage_(new StageView(machine_, this)),
      lineUnderWay_(new QLabel(Idle(), this)),
      progress_(new QProgressBar(this)),
      mode_(new QLabel(this)),
      localMode_(new NoticeLabel(QStringLiteral("localMode"), NoticeLabel::Weight::Warning, this)),
      collisionDetection_(new NoticeLabel(QStringLiteral("collisionDetection"), NoticeLabel::Weight::Warning, this)),
      refusal_(new NoticeLabel(QStringLiteral("refusal"), NoticeLabel::Weight::Trouble, this)),
      damage_(new NoticeLabel(QStringLiteral("damage"), NoticeLabel::Weight::Trouble, this)) {
  setObjectName(QStringLiteral("instrumentPane"));
  setAccessibleName(QStringLiteral("Simulated instrument"));
  lineUnderWay_->setObjectName(QStringLiteral("lineUnderWay"));
  lineUnderWay_->setAccessibleName(Idle());
  lineUnderWay_->setTextFormat(Qt::PlainText);
  lineUnderWay_->setWordWrap(true);
  mode_->setObjectName(QStringLiteral("mode"));
  progress_->setObjectName(QStringLiteral("lineProgress"));
  progress_->setAccessibleName(QStringLiteral("Share of the line under way that is over"));
  progress_->setRange(0, WholeProgress);
  progress_->setTextVisible(false);
  // The room for it stays: the pictures may not jump with each line that begins.
  QSizePolicy keepsRoom = progress_->sizePolicy();
  keepsRoom.setRetainSizeWhenHidden(true);
  progress_->setSizePolicy(keepsRoom);
  progress_->hide();
  LayOut();
}

void InstrumentPane::LayOut() {
  auto* const right = new QVBoxLayout;
  right->addWidget(side_, 1);
  right->addWidget(stage_, 2);
  auto* const pictures = new QWidget;
  auto* const views = new QHBoxLayout(pictures);
  views->setContentsMargins(0, 0, 0, 0);
  views->addWidget(loupe_, 1);
  views->addLayout(right, 2);
  auto* const area = new PicturesArea(this);
  area->setWidget(pictures);
  auto* const busy = new QHBoxLayout;
  busy->setContentsMargins(4, 0, 4, 0);
  busy->addWidget(progress_, 1);
  busy->addWidget(mode_);
  auto* const whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->setSpacing(4);
  whole->addWidget(new SimulationBanner(this));
  whole->addWidget(area, 1);
  // A row of its own, in which every line has room at the usual size: the pictures may not jump with each.
  whole->addWidget(lineUnderWay_);
  whole->addLayout(busy);
  for (NoticeLabel* const notice : {refusal_, localMode_, collisionDetection_, damage_}) whole->addWidget(notice);
}

void InstrumentPane::Show(const InstrumentPicture& picture) {
  loupe_->Show(picture.edge);
  side_->Show(picture);
  stage_->Show(picture);
  mode_->setText(picture.remote ? QStringLiteral("Remote mode") : QStringLiteral("Local mode"));
  mode_->setAccessibleName(mode_->text());
  localMode_->Say(picture.remote ? QString()
                                 : QStringLiteral("Local mode: the instrument takes no moves from the computer"));
  collisionDetection_->Say(picture.zCollisionDetection ? QString() : QStringLiteral("Z collision detection is off"));
  ShowDamage(picture.damage);
}

void InstrumentPane::ShowDamage(const std::vector<std::string>& damage) {
  QStringList all;
  for (const std::string& each : damage) all << Text(each);
  if (all.isEmpty()) {
    damage_->Say({});
    return;
  }
  const qsizetype shown = std::min(all.size(), static_cast<qsizetype>(DamageShown));
  QString words = QStringLiteral("Damage: ") + all.last(shown).join(QStringLiteral("; "));
  if (shown < all.size()) words += QStringLiteral("; and %1 more before").arg(all.size() - shown);
  damage_->Say(words);
  damage_->setToolTip(all.join(QLatin1Char('\n')).toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}

void InstrumentPane::ShowLineUnderWay(std::string_view line, double share) {
  const QString words = QStringLiteral("Under way: ") + Text(line);
  if (words != lineUnderWay_->text()) {
    lineUnderWay_->setText(words);
    lineUnderWay_->setAccessibleName(words);
    lineUnderWay_->setToolTip(words.toHtmlEscaped());
  }
  progress_->setValue(static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * WholeProgress)));
  progress_->show();
}

void InstrumentPane::ShowLineEnded() {
  lineUnderWay_->setText(Idle());
  lineUnderWay_->setAccessibleName(Idle());
  lineUnderWay_->setToolTip({});
  progress_->hide();
}

void InstrumentPane::ShowRefusal(std::string_view line, std::string_view reason) {
  refusal_->Say(QStringLiteral("Refused: ") + Text(line) + QStringLiteral(": ") + Text(reason));
}

void InstrumentPane::ClearRefusal() { refusal_->Say({}); }

}  // namespace Helmsway
