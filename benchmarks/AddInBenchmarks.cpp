#include <benchmark/benchmark.h>
#include <sys/stat.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "addin/base/Implements.h"
#include "addin/base/Texts.h"
#include "addin/config/IniFiles.h"
#include "addin/wizard/FillSelectionLists.h"
#include "addin/wizard/frmAddInDesign.h"
#include "bench/host/ConfigurationService.h"
#include "bench/replay/Replay.h"
#include "benchmarks/Benchmarks.h"
#include "benchmarks/LargeCatalogue.h"
#include "benchmarks/WorkFolder.h"

/// What the operator waits for: the lists, and a whole calibration.
namespace Helmsway::Benchmarks {
namespace {

namespace fs = std::filesystem;

using benchmark::State;
using HelmswayCmds::IIniService;
using HelmswayCmds::ITextListTarget;
using HelmswayCmds::ITextTarget;
using HelmswayCmds::Result;
using HelmswayCmds::Text;
using OrvelCalibrateS::AsText;
using OrvelCalibrateS::Ref;

/// Writes down what crosses the contract while `Recording`, and then gives the same answers in the same order without
/// looking anything up: what is left is the add-in's own work.
class RecordedService final : public OrvelCalibrateS::Implements<IIniService> {
 public:
  struct Split {
    std::vector<std::string> parts;
    std::int32_t count = 0;
  };
  bool Recording = true;
  std::vector<std::string> Reads;
  std::vector<Split> Splits;

  void Rewind() { nextRead_ = nextSplit_ = 0; }

  Result ReadIni(Text section, Text key, Text filePath, Text defaultValue, ITextTarget& value) noexcept override {
    if (Recording) {
      std::string read;
      OrvelCalibrateS::StringTarget target(read);
      const Result result = service_->ReadIni(section, key, filePath, defaultValue, target);
      if (result != Result::Ok) return result;
      Reads.push_back(read);
    }
    return value.Assign(AsText(Reads[Recording ? Reads.size() - 1 : nextRead_++]));
  }

  Result WriteIni(Text /*section*/, Text /*key*/, Text /*filePath*/, Text /*value*/) noexcept override {
    return Result::Failed;
  }

  Result SplitText(ITextListTarget& parts, Text separator, Text text, std::int32_t* count) noexcept override {
    if (Recording) {
      Split split;
      OrvelCalibrateS::StringListTarget target(split.parts);
      const Result result = service_->SplitText(target, separator, text, &split.count);
      if (result != Result::Ok) return result;
      Splits.push_back(split);
    }
    const Split& split = Splits[Recording ? Splits.size() - 1 : nextSplit_++];
    *count = split.count;
    pieces_.clear();
    for (const std::string& part : split.parts) pieces_.push_back(AsText(part));
    return parts.Assign(pieces_.data(), pieces_.size());
  }

 private:
  static Ref<IIniService> NewService() {
    Ref<IIniService> service;
    *service.Out() = new ConfigurationService;
    return service;
  }

  Ref<IIniService> service_ = NewService();
  std::vector<Text> pieces_;
  std::size_t nextRead_ = 0;
  std::size_t nextSplit_ = 0;
};

enum class Catalogue { Example, Large };

/// The add-in's lists over the example installation, or over one like it with far more items.
struct Lists {
  Lists(IIniService& served, Catalogue catalogue) : service(&served) {
    fs::copy(HELMSWAY_EXAMPLES "/installation", fs::path(path).parent_path(),
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    if (catalogue == Catalogue::Large) folder.Write("Marivane.ini", LargeCatalogue(BytesOf(path)));
    LetStampsSettle();
  }
  void Fill() { OrvelCalibrateS::FillSelectionLists(context); }

  template <class ListKind>
  ListKind& Get(std::string_view name) {
    return form.Get<ListKind>(name);
  }

  WorkFolder folder;
  std::string path = folder.Write("Marivane.ini", "");
  Ref<IIniService> service;
  OrvelCalibrateS::IniFiles files{[this] { return service; }, fs::path(path).parent_path().string()};
  OrvelCalibrateS::SharedRecords records;
  forms::Form form{OrvelCalibrateS::FormDesignCaption, OrvelCalibrateS::FormDesign()};
  OrvelCalibrateS::SendState sending;
  OrvelCalibrateS::HostChannel host{files, sending};
  OrvelCalibrateS::ProgressFlags flags;
  OrvelCalibrateS::SequenceContext context{
      {files, records},
      host,
      {Get<forms::ComboBox>("cboCollectStep"), Get<forms::ComboBox>("cboNestType"), Get<forms::ComboBox>("cboHeadType"),
       Get<forms::ComboBox>("cboPosition"), Get<forms::ComboBox>("cboTipRack"), Get<forms::ComboBox>("cboTipType"),
       Get<forms::TextBox>("txtCurrentCollect")},
      flags,
      form};
};

void FillLists(State& state, Catalogue catalogue) {
  Ref<IIniService> service;
  *service.Out() = new ConfigurationService;
  Lists lists(*service, catalogue);
  lists.Fill();
  if (lists.Get<forms::ComboBox>("cboHeadType").ListCount() == 0) state.SkipWithError("the list is empty");
  for (auto turn : state) lists.Fill();
}

void FillListsAddInAlone(State& state, Catalogue catalogue) {
  auto* const recorded = new RecordedService;
  Ref<IIniService> service;
  *service.Out() = recorded;
  Lists lists(*service, catalogue);
  lists.Fill();
  recorded->Recording = false;
  for (auto turn : state) {
    recorded->Rewind();
    lists.Fill();
  }
  state.counters["reads"] = static_cast<double>(recorded->Reads.size());
  state.counters["splits"] = static_cast<double>(recorded->Splits.size());
}

/// As many looks at the file's state as the lists take reads.
void FillListsStatAlone(State& state, Catalogue catalogue) {
  auto* const recorded = new RecordedService;
  Ref<IIniService> service;
  *service.Out() = recorded;
  Lists lists(*service, catalogue);
  lists.Fill();
  for (auto turn : state) {
    for (std::size_t i = 0; i < recorded->Reads.size(); ++i) {
      struct stat status {};
      benchmark::DoNotOptimize(stat(lists.path.c_str(), &status));
    }
  }
}

std::string ScriptOf(const char* name) { return BytesOf(std::string(HELMSWAY_EXAMPLES "/scripts/") + name); }

/// From the run's private folder to its end, with the add-in loaded anew. The accepting instrument takes no time.
void Calibration(State& state, const char* script, InstrumentKind instrument) {
  ReplayOptions options;
  options.configuration = HELMSWAY_EXAMPLES "/installation";
  options.instrument = instrument;
  options.addIn = fs::read_symlink("/proc/self/exe").parent_path() / "libOrvelCalibrateS.so";
  options.script = "-";
  const std::string text = ScriptOf(script);
  for (auto turn : state) {
    std::istringstream in(text);
    std::ostringstream out;
    std::ostringstream err;
    if (Replay(options, in, out, err) != ExitStatus::Performed) state.SkipWithError(err.str().c_str());
  }
}

}  // namespace

void RegisterAddInBenchmarks() {
  const auto add = [](const std::string& name, const auto& function, Catalogue catalogue) {
    benchmark::RegisterBenchmark(name.c_str(), [=](State& state) { function(state, catalogue); })->UseRealTime();
  };
  for (const Catalogue catalogue : {Catalogue::Example, Catalogue::Large}) {
    const std::string group = catalogue == Catalogue::Large ? "FillLargeLists/" : "FillLists/";
    add(group + "StatAlone", FillListsStatAlone, catalogue);
    add(group + "AddInAlone", FillListsAddInAlone, catalogue);
    add(group + "Helmsway", FillLists, catalogue);
  }
  benchmark::RegisterBenchmark("Replay/quick calibration, accepting", [](State& state) {
    Calibration(state, "quick-calibration.replay", InstrumentKind::Accepting);
  })->UseRealTime();
  benchmark::RegisterBenchmark("Replay/whole calibration, accepting", [](State& state) {
    Calibration(state, "calibrate-xy.replay", InstrumentKind::Accepting);
  })->UseRealTime();
}

}  // namespace Helmsway::Benchmarks
