#include "bench/desktop/CalibrationView.h"

#include <algorithm>
#include <set>
#include <utility>

#include "bench/desktop/LowerDock.h"
#include "bench/desktop/panes/ValuesPane.h"
#include "bench/instrument/InstallationCheck.h"
#include "bench/instrument/MemoryComparison.h"
#include "bench/replay/LineDifference.h"
#include "bench/replay/NumberWatch.h"

namespace Helmsway {
namespace {

QString TextOf(const std::string& text) { return QString::fromStdString(text); }

/// Heads whose position in the file isn't the one that was foretold; heads that have come or gone among them.
std::size_t CountOff(const HeadPositions& foretold, const HeadPositions& now) {
  std::size_t off = 0;
  for (std::size_t i = 0; i < foretold.heads.size(); ++i) {
    const bool isThere = i < now.heads.size() && now.heads[i].item == foretold.heads[i].item;
    if (!isThere || foretold.heads[i].screen != now.heads[i].file) ++off;
  }
  return off;
}

/// Lines to the instrument, of which each head of a class has two, that aren't among those that were foretold.
std::size_t CountLeftOut(const HeadPositions& positions, const std::vector<std::string>& lines) {
  // Without any line, no values are sent at all.
  if (lines.empty()) return 0;
  const auto heads = std::count_if(positions.heads.begin(), positions.heads.end(),
                                   [](const HeadPosition& head) { return !head.memoryName.empty(); });
  const std::size_t wanted = 2 * static_cast<std::size_t>(heads) + 1;
  return wanted > lines.size() ? wanted - lines.size() : 0;
}

std::size_t CountClasses(const HeadPositions& positions) {
  std::set<std::string> classes;
  for (const HeadPosition& head : positions.heads) {
    if (!head.memoryName.empty()) classes.insert(head.memoryName);
  }
  return classes.size();
}

}  // namespace

CalibrationView::CalibrationView(LowerDock& dock, QObject* parent) : QObject(parent), dock_(dock) {
  connect(&watch_, &FileWatch::Touched, this, &CalibrationView::FileTouched);
}

void CalibrationView::Follow(BenchSession* session) {
  session_ = session;
  verdictTime_.reset();
  dock_.Values().ClearPreview();
  if (session == nullptr) return;
  watch_.Watch(session->Options().installation / "Marivane.ini");
  writes_ = 0;
  connect(session, &BenchSession::Rested, this, &CalibrationView::Rested);
  connect(session, &BenchSession::SaveAsked, this, &CalibrationView::Preview);
  connect(&session->Report(), &BenchReport::SaveAnswered, this, &CalibrationView::Answered);
}

void CalibrationView::Show() {
  if (session_ == nullptr || !session_->IsAtRest()) return;
  const CalibrationValues& memory = session_->CalibrationMemory();
  const std::filesystem::path file = session_->MarivaneIni();
  dock_.Values().Show(ReadHeadPositions(file, NumberOn(session_->Surface()), memory), CompareMemory(memory, file),
                      TextOf(session_->Report().SilentTroubles().DoubtOfNumber()));
}

void CalibrationView::Rested() {
  const bool changed = watch_.Look();
  const std::size_t writes = session_->Report().Writes();
  // What was written in the same action can't be told apart from an edit of another program; a save is compared below.
  if (changed && writes == std::exchange(writes_, writes)) Withdraw();
  Show();
  if (std::optional<SaveResult> result = session_->Report().Save().Take()) Judge(std::move(*result));
}

void CalibrationView::FileTouched() {
  if (session_ == nullptr || !session_->IsAtRest() || !watch_.Look()) return;
  Withdraw();
  Show();
  Q_EMIT FileChanged();
}

void CalibrationView::Withdraw() {
  session_->Report().Note(tr("Marivane.ini was changed by another program"));
  if (!verdictTime_) return;
  dock_.Values().Withdraw(tr("Saved at %1; Marivane.ini was changed by another program since")
                              .arg(verdictTime_->toString(QStringLiteral("HH:mm:ss"))));
  verdictTime_.reset();
}

void CalibrationView::Preview(const SaveRehearsal& rehearsal) {
  verdictTime_.reset();
  // The number is 0 to the add-in where there is none.
  const std::string number = NumberOn(session_->Surface());
  foretold_ = ReadHeadPositions(session_->MarivaneIni(), number.empty() ? "0" : number, session_->CalibrationMemory());
  const std::string why = rehearsal.problem.empty() ? WhyNoHeads(session_->MarivaneIni()) : rehearsal.problem;
  dock_.TakeRoom();
  dock_.Values().ShowPreview(LineDifference(rehearsal.before, rehearsal.after), rehearsal.lines, TextOf(why));
}

void CalibrationView::Answered(forms::MessageAnswer answer) {
  if (answer == forms::MessageAnswer::Ok) return;
  dock_.Values().ClearPreview();
  dock_.GiveRoomBack();
}

void CalibrationView::Judge(SaveResult result) {
  const CalibrationValues& memory = session_->CalibrationMemory();
  const std::filesystem::path file = session_->MarivaneIni();
  const HeadPositions now = ReadHeadPositions(file, {}, memory);
  const SaveRehearsal& rehearsal = session_->Report().Save().Foretold();
  result.headsPlanned = foretold_.heads.size();
  result.linesLeftOut = CountLeftOut(foretold_, rehearsal.lines);
  result.headsOff = CountOff(foretold_, now);
  result.whyNoHeads = WhyNoHeads(file);
  result.fileDiffers = rehearsal.problem.empty() && watch_.Bytes() != rehearsal.after;
  result.valuesCompared = CountClasses(now);
  result.differences = CompareMemory(memory, file);
  const Troubles& troubles = session_->Report().SilentTroubles();
  result.doubt = troubles.DoubtOfNumber();
  if (result.doubt.empty() && !troubles.NumberReached()) {
    result.doubt = "S has not been moved to the number on the form, " + NumberOn(session_->Surface());
  }
  result.inCopy = session_->Options().copyOf.has_value();
  const Verdict verdict = VerdictOf(result);
  dock_.Values().ShowReadBack(result.differences, verdict);
  dock_.GiveRoomBack();
  verdictTime_ = QTime::currentTime();
  session_->Report().Note(verdict.text);
}

}  // namespace Helmsway
