#include <filesystem>
#include <stdexcept>
#include <utility>

#include "addin/base/Texts.h"
#include "bench/host/AtomicFile.h"
#include "bench/host/ConfigurationService.h"
#include "bench/host/OverlaidIniService.h"
#include "bench/replay/Player.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;
using HelmswayCmds::Result;
using OrvelCalibrateS::Ref;

/// What can't be put back is put back with the next write.
void Drop(Result /*result*/) {}

std::string BytesOf(const std::string& file) {
  FileContents contents;
  if (ReadWholeFile(file, contents) == FilePresence::Failed) throw std::runtime_error("can't be read: " + file);
  return contents.bytes;
}

/// A folder for copies, gone with the object.
class CopyFolder {
 public:
  explicit CopyFolder(fs::path folder) : folder_(std::move(folder)) { fs::create_directory(folder_); }
  CopyFolder(const CopyFolder&) = delete;
  CopyFolder& operator=(const CopyFolder&) = delete;
  ~CopyFolder() {
    // What stays behind goes with the folder of the run.
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  const fs::path& Path() const { return folder_; }

 private:
  fs::path folder_;
};

void WriteStatus(HostWindow& window, const std::string& text) {
  Ref<HelmswayCmds::IStatusBar> statusBar;
  Drop(window.GetStatusBar(statusBar.Out()));
  Ref<HelmswayCmds::IStatusPanel> panel;
  Drop(statusBar->GetPanel(OrvelCalibrateS::AsText(StatusBar::PanelKey), panel.Out()));
  Drop(panel->PutText(OrvelCalibrateS::AsText(text)));
}

}  // namespace

SaveRehearsal Player::RehearseSave() {
  if (surface_ == nullptr || lineUnderWay_ || rehearsal_ != nullptr) {
    throw std::logic_error("a save can't be rehearsed now");
  }
  const CopyFolder folder(fs::path(marivaneIni_).parent_path() / "rehearsal");
  SaveRehearsal rehearsal;
  rehearsal.before = BytesOf(marivaneIni_);

  // Everything that the save touches, as it is put back behind it: the add-in itself keeps nothing of a save.
  const HostIniService::Service files = iniService_->Behind();
  const std::string status = window_->StatusText();
  const bool stopRequested = StopRequested();
  // Copies that are gone in a moment needn't reach the disk.
  Ref<ConfigurationService> copies;
  *copies.Out() = new ConfigurationService(Durability::Volatile);
  Ref<OverlaidIniService> overlaid;
  *overlaid.Out() = new OverlaidIniService(HostIniService::Service(copies.Get()), folder.Path());

  rehearsal_ = &rehearsal;
  iniService_->SetBehind(HostIniService::Service(overlaid.Get()));
  iniService_->ExplainFailures(
      [&] { return overlaid->LastObstacle() ? overlaid->LastObstacle().sentence : copies->LastProblem().sentence; });
  Drop(session_->Form().SaveChanges());
  iniService_->SetBehind(files);
  iniService_->ExplainFailures([this] { return files_->LastProblem().sentence; });
  WriteStatus(*window_, status);
  Drop(connection_->Link().PutStopRequested(stopRequested ? HelmswayCmds::True : HelmswayCmds::False));
  rehearsal_ = nullptr;

  const fs::path copy = folder.Path() / fs::path(marivaneIni_).filename();
  rehearsal.after = fs::exists(copy) ? BytesOf(copy.string()) : rehearsal.before;
  return rehearsal;
}

}  // namespace Helmsway
