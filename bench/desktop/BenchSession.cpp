#include "bench/desktop/BenchSession.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <fstream>
#include <stdexcept>

#include "bench/desktop/MemoryFile.h"
#include "bench/host/AtomicFile.h"
#include "bench/host/WriteObstacle.h"
#include "bench/replay/ActionGrammar.h"
#include "bench/replay/FormSnapshot.h"
#include "bench/replay/ScriptWords.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

/// Between two looks at a line under way: short enough for the eye.
constexpr std::chrono::milliseconds Tick{25};

void WriteFile(const fs::path& file, const std::function<void(std::ostream&)>& write) {
  std::ofstream out(file, std::ios::binary);
  if (out) write(out);
  out.close();
  if (!out) throw std::runtime_error("can't be written: " + file.string());
}

fs::path InstallationBeside(const fs::path& script) {
  fs::path folder = script;
  folder.replace_extension(".installation");
  return folder;
}

}  // namespace

BenchSession::BenchSession(const SessionOptions& options, ConsoleModel& console, MessageBoxes& messageBoxes)
    : options_(options),
      messageBoxes_(messageBoxes),
      folder_(options.addIn, options.installation, WorkOn::Files),
      library_(folder_.Library(), options.addIn),
      report_(console, [this] { return player_ ? player_->Training().Now() : Seconds{0}; }) {
  for (const char* name : {"Marivane.ini", "Helmsway.ini"}) {
    FileContents contents;
    const fs::path file = options.installation / name;
    const FilePresence presence = ReadWholeFile(file.string(), contents);
    if (presence == FilePresence::Failed) {
      const FileProblem obstacle = ReadObstacle(file.string());
      throw std::runtime_error(file.string() + " can't be read" + (obstacle ? ": " + obstacle.sentence : ""));
    }
    if (presence == FilePresence::Present) startFiles_.push_back({name, std::move(contents.bytes)});
  }
  player_.emplace(library_, folder_.MarivaneIni().string(), InstrumentKind::Simulated, report_,
                  static_cast<IAttendant*>(this));
  connect(&report_, &BenchReport::SaveLineOver, this, &BenchSession::KeepMemory);
  SetFactor(options.factor);
}

BenchSession::~BenchSession() { player_.reset(); }

void BenchSession::StartAddIn() {
  if (surface_ != nullptr) return;
  for (const char* action : {"host create", "host ObjectParent given", "host FormParent given", "host read Caption",
                             "host read ShowStatusBar", "host read ShowButtons"}) {
    Perform(action);
  }
  // Once, before any line: the truth of a session doesn't change with the add-in's restart.
  if (seeded_) return;
  seeded_ = true;
  const bool losesSteps = options_.seed.lostSteps == LostSteps::Some;
  Perform("instrument seed " + std::to_string(options_.seed.number) + (losesSteps ? " lost-steps" : ""));
  RestoreMemory();
}

void BenchSession::RestoreMemory() {
  const MemoryFile::Contents memory = MemoryFile::Read(MemoryFile::PathIn(options_.installation));
  // As actions, so that the session's script plays it again.
  for (const auto& [name, value] : memory.values)
    Perform(std::string("instrument memory ").append(name).append(" ").append(value));
  if (!memory.values.empty()) {
    report_.Note(tr("the instrument remembers calibration values of an earlier session: %1").arg(memory.values.size()));
  }
  if (!memory.problem.empty()) report_.Note(QString::fromStdString(memory.problem));
}

void BenchSession::KeepMemory(bool accepted) {
  const fs::path file = MemoryFile::PathIn(options_.installation);
  if (!accepted && MemoryFile::Read(file).values == CalibrationMemory()) return;
  const std::string problem = MemoryFile::Write(file, CalibrationMemory());
  if (problem.empty()) return;
  report_.Note(tr("the instrument's memory can't be kept for the next start: %1").arg(QString::fromStdString(problem)));
}

void BenchSession::EndAddIn() {
  Perform("host ObjectParent none");
  Perform("host release");
}

bool BenchSession::Perform(const std::string& text) {
  const Action action = ParseAction(SplitWords(text));
  if (player_->Ended()) return false;
  if (!IsAtRest() && !(LineIsUnderWay() && PossibleDuringLine(action.kind))) return false;
  if (acting_++ == 0) Q_EMIT Began();
  player_->Perform(action);
  if (--acting_ == 0) Q_EMIT Rested();
  return true;
}

void BenchSession::BreakOff() {
  Perform("host stop");
  // Stop alone isn't enough: some lines go out without a look at it.
  player_->BreakOff("it has been broken off");
}

QString BenchSession::WhyOver() const {
  return player_->Ended() ? QString::fromStdString(player_->Ended()->what) : QString();
}

void BenchSession::SetFactor(double factor) { factor_ = std::clamp(factor, SlowestFactor, FastestFactor); }

void BenchSession::Click(forms::ControlId control) {
  if (surface_ == nullptr) return;
  const forms::ControlState state = surface_->State(control);
  Perform(state.container == forms::NoControl ? "click frame" : "click " + std::to_string(state.index));
}

void BenchSession::SetChecked(forms::ControlId checkBox, bool checked) {
  if (surface_ == nullptr) return;
  Perform((checked ? "check " : "uncheck ") + std::string(surface_->State(checkBox).name));
}

void BenchSession::Pick(forms::ControlId list, std::int32_t entry) {
  if (surface_ == nullptr) return;
  Perform("pick " + std::string(surface_->State(list).name) + " " + std::to_string(entry));
}

void BenchSession::FormLoaded(forms::ISurface& surface) noexcept {
  surface_ = &surface;
  Q_EMIT FormLoaded();
}

void BenchSession::Changed(forms::ControlId control, forms::Aspect aspect) noexcept {
  Q_EMIT ControlChanged(control, aspect);
}

void BenchSession::Closed() noexcept {
  surface_ = nullptr;
  Q_EMIT FormClosed();
}

void BenchSession::LineUnderWay(std::string_view /*line*/) noexcept {
  const TrainingInstrument& instrument = player_->Training();
  Seconds passed{0};
  QElapsedTimer watch;
  watch.start();
  // How long the line takes can change while it is under way: by Stop, by a power cycle, by another factor.
  while (true) {
    const Seconds all = instrument.TimeToEnd(player_->StopRequested());
    const Seconds left = (all - passed) / factor_;
    if (left <= Seconds{0}) break;
    share_ = passed / all;
    Q_EMIT Progress(share_);
    const auto wait = std::min<Seconds>(left, Tick);
    QEventLoop loop;
    QTimer::singleShot(std::chrono::ceil<std::chrono::milliseconds>(wait), Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    passed += Seconds(static_cast<double>(watch.nsecsElapsed()) * 1e-9) * factor_;
    watch.restart();
  }
  share_ = 0;
}

forms::MessageAnswer BenchSession::Show(std::string_view title, std::string_view text, forms::MessageButtons buttons,
                                        forms::MessageIcon icon) noexcept {
  if (title == SaveQuestion) {
    SaveRehearsal rehearsal;
    try {
      rehearsal = player_->RehearseSave();
    } catch (const std::exception& error) {
      rehearsal.problem = std::string("the save can't be foretold: ") + error.what();
    }
    report_.Save().Asked(rehearsal);
    Q_EMIT SaveAsked(rehearsal);
  }
  return messageBoxes_.Show(title, text, buttons, icon);
}

void BenchSession::SaveScript(const fs::path& file) const {
  const fs::path installation = InstallationBeside(file);
  fs::create_directories(installation);
  for (const StartFile& start : startFiles_) {
    WriteFile(installation / start.name, [&](std::ostream& out) { out << start.bytes; });
  }
  WriteFile(file, [&](std::ostream& out) {
    report_.Record().WriteScript(out,
                                 "A session on the bench. To play it again, on the configuration that it began with:\n"
                                 "  helmsway-replay --config " +
                                     WrittenWord(installation.filename().string()) + " " +
                                     WrittenWord(file.filename().string()));
  });
}

void BenchSession::SaveTrace(const fs::path& file) const {
  WriteFile(file, [&](std::ostream& out) { report_.Record().WriteTrace(out); });
}

}  // namespace Helmsway
