#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "bench/host/ConfigurationService.h"
#include "benchmarks/ItemFile.h"
#include "benchmarks/WorkFolder.h"
#include "benchmarks/peers/IniPeer.h"
#include "tests/host/FileKinds.h"

/// What a save is worth, tried out: whether all other bytes of the file stay, what a reader of another program sees
/// meanwhile, and whether the bytes are flushed. Prints JSON.

namespace {

std::atomic<int> flushes = 0;

}  // namespace

// In place of the C library's, so that the flushes of every library are counted.
extern "C" int fsync(int descriptor) {
  ++flushes;
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}
extern "C" int fdatasync(int descriptor) {
  ++flushes;
  return static_cast<int>(syscall(SYS_fdatasync, descriptor));
}

namespace Helmsway::Benchmarks {
namespace {

/// Our own service in the shape of a peer.
class HelmswayPeer final : public IIniPeer {
 public:
  HelmswayPeer() { *service_.Out() = new ConfigurationService; }

  bool Load(const std::string& path) override {
    path_ = path;
    return true;
  }
  bool Find(const std::string& section, const std::string& key, std::string& value) override {
    using OrvelCalibrateS::AsText;
    OrvelCalibrateS::StringTarget target(value);
    const std::string none = "\n";  // no value can hold it
    return service_->ReadIni(AsText(section), AsText(key), AsText(path_), AsText(none), target) ==
               HelmswayCmds::Result::Ok &&
           value != none;
  }
  bool Save(const std::string& path, const std::string& section, const std::string& key,
            const std::string& value) override {
    using OrvelCalibrateS::AsText;
    return service_->WriteIni(AsText(section), AsText(key), AsText(path), AsText(value)) == HelmswayCmds::Result::Ok;
  }

 private:
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service_;
  std::string path_;
};

std::unique_ptr<IIniPeer> MakeHelmswayPeer() { return std::make_unique<HelmswayPeer>(); }

std::string ValueOf(const std::string& text) {
  const std::size_t begin = text.find('<') + 1;
  return text.substr(begin, text.find('>') - begin);
}

/// How many kinds of files are understood, and how many keep all bytes but the value's.
void TryKinds(const PeerKind& peer, nlohmann::json& row) {
  const std::vector<FileKind> kinds = FileKinds();
  std::vector<std::string> misread;
  std::vector<std::string> changed;
  for (const FileKind& kind : kinds) {
    const WorkFolder folder;
    const std::string path = folder.Write("Marivane.ini", Filled(kind.text, std::nullopt));
    const auto reader = peer.make();
    std::string value;
    const bool isFound = reader->Load(path) && reader->Find("S", "k", value);
    // Some can't tell an empty value from none.
    if ((isFound ? value : "") != ValueOf(kind.text)) misread.emplace_back(kind.name);
    if (!peer.writes) continue;
    const bool isSaved = peer.make()->Save(path, "S", "k", "7");
    if (!isSaved || BytesOf(path) != Filled(kind.text, "7")) changed.emplace_back(kind.name);
  }
  row["kinds"] = kinds.size();
  row["misread"] = misread;
  row["changed"] = changed;
}

constexpr std::size_t readFileLines = 1'000;

bool Saved(IIniPeer& peer, const std::string& path, const char* value) {
  return peer.Save(path, std::string(ItemSection), ItemKeys(readFileLines).back(), value);
}

/// A reader opens the file again and again while it is saved with two values in turn. What it sees is one or the other
/// state as a whole, or it is torn, or there is no file.
void TryReader(const PeerKind& peer, std::chrono::milliseconds time, nlohmann::json& row) {
  constexpr const char* first = "Head,SERIALDILUTE,1";
  constexpr const char* second = "Head,SERIALDILUTE,2";
  const WorkFolder folder;
  const std::string path = folder.Write("Marivane.ini", ItemFile(readFileLines));
  const auto writer = peer.make();
  std::vector<std::string> states;
  for (const char* value : {first, second}) {
    flushes = 0;
    if (!Saved(*writer, path, value)) throw std::runtime_error(std::string(peer.name) + " can't save");
    row["flushes"] = flushes.load();
    states.push_back(BytesOf(path));
  }

  std::atomic<bool> isOver = false;
  int reads = 0;
  int torn = 0;
  int missing = 0;
  std::thread reader([&] {
    while (!isOver) {
      ++reads;
      try {
        const std::string seen = BytesOf(path);
        if (std::find(states.begin(), states.end(), seen) == states.end()) ++torn;
      } catch (const std::runtime_error&) {
        ++missing;
      }
    }
  });
  int saves = 0;
  const auto end = std::chrono::steady_clock::now() + time;
  while (std::chrono::steady_clock::now() < end) Saved(*writer, path, saves++ % 2 == 0 ? first : second);
  isOver = true;
  reader.join();
  row["saves"] = saves;
  row["reads"] = reads;
  row["torn"] = torn;
  row["missing"] = missing;
}

}  // namespace
}  // namespace Helmsway::Benchmarks

/// helmsway-save-guarantees [MILLISECONDS for each library's reader]
int main(int argc, char** argv) {
  using namespace Helmsway::Benchmarks;
  try {
    const std::chrono::milliseconds time(argc > 1 ? std::atoi(argv[1]) : 1000);
    std::vector<PeerKind> peers = Peers();
    peers.insert(peers.begin(), {"Helmsway", MakeHelmswayPeer, true});
    nlohmann::json table = nlohmann::json::array();
    for (const PeerKind& peer : peers) {
      nlohmann::json row = {{"name", peer.name}, {"writes", peer.writes}};
      TryKinds(peer, row);
      if (peer.writes) TryReader(peer, time, row);
      table.push_back(row);
    }
    std::cout << table.dump(2) << '\n';
  } catch (const std::exception& error) {
    std::cerr << "helmsway-save-guarantees: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
