#include "docs/screenshots/Operator.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDockWidget>
#include <QMessageBox>
#include <QScrollArea>
#include <QTabWidget>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace Helmsway {
namespace {

constexpr int MostSteps = 40;

QString Name(const char* name) { return QString::fromUtf8(name); }

/// For what is called from an event loop, where an exception has no way out.
[[noreturn]] void GiveUp(const QString& why) {
  std::fprintf(stderr, "helmsway-screenshots: %s\n", qPrintable(why));
  std::exit(EXIT_FAILURE);
}

/// Lets layouts settle.
void Settle() {
  for (int i = 0; i < 3; ++i) QApplication::processEvents();
}

}  // namespace

template <typename T>
T& Operator::Find(const QString& name) {
  auto* const found = window_->findChild<T*>(name);
  if (found == nullptr) throw std::runtime_error("there is no " + name.toStdString());
  return *found;
}

Operator::Operator(const Camera& camera, const std::filesystem::path& programs, const QSize& size) : camera_(camera) {
  if (!installation_.isValid()) throw std::runtime_error("no temporary folder");
  SessionOptions options;
  options.addIn = programs / "libOrvelCalibrateS.so";
  options.installation = installation_.path().toStdString();
  options.factor = BenchSession::FastestFactor;
  std::filesystem::copy(programs / "../share/helmsway/examples/installation", options.installation,
                        std::filesystem::copy_options::recursive);

  QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { LookForBox(); });
  watch_.start(1);
  window_ = std::make_unique<MainWindow>(options);
  if (!window_->BeginSession()) throw std::runtime_error("no session");
  QObject::connect(window_->Session(), &BenchSession::Progress, window_.get(), [this] { LineIsUnderWay(); });
  if (!size.isEmpty()) window_->resize(size);
  window_->setAnimated(false);
  window_->show();
  window_->activateWindow();
  Settle();
  GiveSpareRoomToPanes();
}

// As a person would drag it: the form gains nothing by more than its own size.
void Operator::GiveSpareRoomToPanes() {
  auto& frame = Find<QScrollArea>(QStringLiteral("frame"));
  auto& below = Find<QDockWidget>(QStringLiteral("lowerDock"));
  const int spare = frame.viewport()->height() - frame.widget()->sizeHint().height();
  if (spare > 0) window_->resizeDocks({&below}, {below.height() + spare}, Qt::Vertical);
  Settle();
}

Operator::~Operator() {
  if (!boxes_.empty()) GiveUp(QStringLiteral("a box didn't come, for the picture \"%1\"").arg(boxes_.front().picture));
  if (!line_.empty()) GiveUp(QStringLiteral("no line came that begins with ") + QString::fromStdString(line_));
}

void Operator::Take(const char* picture) {
  Settle();
  camera_.Take(Name(picture), *window_);
}

void Operator::TakeDuring(const char* line, const char* picture) {
  line_ = line;
  linePicture_ = Name(picture);
}

// At the line's begin, before any time has passed: later pictures would show how fast the machine is that takes them.
void Operator::LineIsUnderWay() {
  if (line_.empty() || !window_->Session()->Report().LineText().startsWith(QString::fromStdString(line_))) return;
  line_.clear();
  Settle();
  try {
    camera_.Take(linePicture_, *window_);
  } catch (const std::exception& error) {
    GiveUp(Name(error.what()));
  }
}

void Operator::Answer(QMessageBox::StandardButton button, const char* picture) {
  boxes_.push_back({button, Name(picture)});
}

void Operator::LookForBox() {
  auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (box == nullptr) return;
  if (boxes_.empty()) GiveUp(QStringLiteral("a box that isn't planned: ") + box->text());
  const Planned planned = std::exchange(boxes_.front(), {});
  boxes_.pop_front();
  QAbstractButton* const button = box->button(planned.button);
  if (button == nullptr) GiveUp(QStringLiteral("a box without the planned button: ") + box->text());
  if (!planned.picture.isEmpty()) {
    watch_.stop();
    Settle();
    watch_.start();
    try {
      camera_.Take(planned.picture, *window_, box);
    } catch (const std::exception& error) {
      GiveUp(Name(error.what()));
    }
  }
  button->click();
}

void Operator::Press(int button) {
  auto& widget = Find<QAbstractButton>(QStringLiteral("cmdButton_%1").arg(button));
  if (!widget.isEnabled()) throw std::runtime_error("disabled: button " + std::to_string(button));
  widget.setFocus(Qt::MouseFocusReason);
  widget.click();
}

void Operator::Check(const char* box) {
  auto& widget = Find<QAbstractButton>(Name(box));
  widget.setFocus(Qt::MouseFocusReason);
  widget.click();
}

void Operator::Pick(const char* list, int entry) { Perform(std::string("pick ") + list + " " + std::to_string(entry)); }

void Operator::Perform(const std::string& action) {
  if (!window_->Session()->Perform(action)) throw std::runtime_error("not possible: " + action);
}

void Operator::SetTab(const char* pane) {
  auto& tabs = Find<QTabWidget>(QStringLiteral("tabs"));
  tabs.setCurrentWidget(&Find<QWidget>(Name(pane)));
}

void Operator::JogToRing(int entry, double near) {
  constexpr int up = 7;
  constexpr int down = 8;
  Pick("cboCollectStep", entry);
  for (int i = 0; i < MostSteps; ++i) {
    const auto edge = window_->Session()->Picture().edge;
    if (!edge) throw std::runtime_error("the edge can't be seen");
    if (std::abs(*edge) <= near) return;
    Press(*edge < 0 ? up : down);
  }
  throw std::runtime_error("the edge doesn't reach the ring");
}

}  // namespace Helmsway
