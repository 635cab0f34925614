#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <thread>

#include "addin/config/IniFiles.h"
#include "addin/wizard/frmAddIn.h"
#include "bench/host/ConfigurationService.h"
#include "tests/crash/campaign/HeadCatalogue.h"
#include "tests/host/TemporaryFolder.h"
#include "tests/support/WizardFixture.h"

/// The add-in's Save, over the real configuration service, killed at random moments.
namespace Helmsway {
namespace {

using namespace OrvelCalibrateS;
using OrvelCalibrateS::Testing::Adopt;
using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

constexpr const char* FileName = "Marivane.ini";

#if defined(__SANITIZE_ADDRESS__)
constexpr bool IsSlowBuild = true;
#elif defined(__has_feature)
constexpr bool IsSlowBuild = __has_feature(address_sanitizer);
#else
constexpr bool IsSlowBuild = false;
#endif

/// The wizard on the files of a folder, about to save that S value.
class Saver {
 public:
  Saver(const std::string& folder, int sValue) : files_([this] { return service_; }, folder) {
    records_.AxisS.MmPerStep = 0.05F;
    records_.AxisS.MoveSign = 1;
    wizard_ = frmAddIn::Make(files_, records_, sending_);
    wizard_->Form_Load();
    wizard_->Form().SetMessageBoxes(&boxes_);
    wizard_->Form().Get<forms::TextBox>("txtCurrentCollect").SetText(std::to_string(sValue));
    boxes_.Answers = {forms::MessageAnswer::Ok};
  }

  void Save() { wizard_->SaveChanges(); }

 private:
  Ref<HelmswayCmds::IIniService> service_ = Adopt<HelmswayCmds::IIniService>(new ConfigurationService);
  IniFiles files_;
  SharedRecords records_;
  SendState sending_;
  Testing::FakeHost host_;
  Testing::QueuedMessageBoxes boxes_{host_};
  std::shared_ptr<frmAddIn> wizard_;
};

/// A process that saves once. It is under way when the constructor returns.
class SavingProcess {
 public:
  SavingProcess(const std::string& folder, int sValue) {
    std::array<int, 2> pipeEnds{};
    if (pipe(pipeEnds.data()) != 0) return;
    process_ = fork();
    if (process_ == 0) {
      Saver saver(folder, sValue);
      const bool told = write(pipeEnds[1], "!", 1) == 1;
      saver.Save();
      _exit(told ? 0 : 1);
    }
    close(pipeEnds[1]);
    char begun = 0;
    isUnderWay_ = read(pipeEnds[0], &begun, 1) == 1;
    close(pipeEnds[0]);
  }

  bool IsUnderWay() const { return isUnderWay_; }

  /// True when the kill came before its end.
  bool Kill() const {
    kill(process_, SIGKILL);
    const int status = Wait();
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  }

  int Wait() const {
    int status = -1;
    EXPECT_EQ(waitpid(process_, &status, 0), process_);
    return status;
  }

 private:
  pid_t process_ = -1;
  bool isUnderWay_ = false;
};

class KillCampaignTest : public testing::Test {
 protected:
  std::string Folder() const {
    const std::string path = folder_.PathOf(FileName);
    return path.substr(0, path.rfind('/'));
  }

  void StartAnew() {
    catalogue_ = HeadCatalogue();
    folder_.Write(FileName, catalogue_.Bytes());
  }

  /// A save that nobody disturbs, and how long it takes.
  Microseconds SaveToTheEnd(int sValue) {
    const SavingProcess process(Folder(), sValue);
    const auto start = Clock::now();
    EXPECT_TRUE(process.IsUnderWay());
    EXPECT_EQ(process.Wait(), 0);
    const auto duration = Clock::now() - start;
    ExpectSteps(HeadCatalogue::StepCount, sValue);
    EXPECT_EQ(folder_.Names(), std::set<std::string>{FileName});
    return duration;
  }

  void ExpectSteps(int steps, int sValue) {
    catalogue_.Advance(steps, sValue);
    EXPECT_EQ(folder_.Read(FileName), catalogue_.Bytes());
  }

  TemporaryFolder folder_;
  HeadCatalogue catalogue_;  ///< as the file must be
};

TEST_F(KillCampaignTest, NoKillDamagesTheFile) {
  constexpr int wantedKills = 500;
  constexpr auto longestSlowRun = std::chrono::seconds(45);
  constexpr std::size_t parts = 10;

  const char* const givenSeed = std::getenv("HELMSWAY_CAMPAIGN_SEED");
  const unsigned seed = givenSeed != nullptr ? static_cast<unsigned>(std::stoul(givenSeed)) : std::random_device()();
  std::printf("seed %u (HELMSWAY_CAMPAIGN_SEED repeats it)\n", seed);
  std::mt19937 random(seed);

  const auto start = Clock::now();
  int sValue = 1000;
  StartAnew();
  Microseconds duration = SaveToTheEnd(sValue);
  std::printf("a save takes %.1f ms\n", duration.count() / 1000);

  int kills = 0;
  int leftovers = 0;
  std::array<int, parts> killsByPart{};
  for (int round = 0; kills < wantedKills; ++round) {
    if (IsSlowBuild && Clock::now() - start > longestSlowRun) {
      std::printf("stopped early: this build is too slow for all %d kills\n", wantedKills);
      break;
    }
    if (round % 2 == 1) StartAnew();
    ++sValue;
    const SavingProcess process(Folder(), sValue);
    ASSERT_TRUE(process.IsUnderWay());
    const Microseconds moment = duration * std::uniform_real_distribution(0.0, 1.0)(random);
    std::this_thread::sleep_for(moment);
    const bool killed = process.Kill();

    const std::string bytes = folder_.Read(FileName);
    const std::optional<int> steps = catalogue_.StepsIn(bytes, sValue);
    ASSERT_TRUE(steps) << "round " << round << ", S value " << sValue << ": damaged:\n" << bytes;
    catalogue_.Advance(*steps, sValue);
    const std::size_t names = folder_.Names().size();
    ASSERT_LE(names, 2U) << "leftovers of earlier kills have not been removed";
    leftovers += static_cast<int>(names) - 1;

    if (!killed) {
      ASSERT_EQ(*steps, HeadCatalogue::StepCount);
      duration *= 0.97;  // it was quicker than thought
      continue;
    }
    ++kills;
    ++killsByPart.at(std::min(static_cast<std::size_t>(*steps) * parts / HeadCatalogue::StepCount, parts - 1));
    // What else runs on the machine makes the saves slower and faster.
    if (*steps > HeadCatalogue::StepCount / 3) {
      duration = duration * 0.9 + moment * 0.1 * HeadCatalogue::StepCount / *steps;
    }
  }
  SaveToTheEnd(++sValue);

  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  std::printf("%d kills in %.1f s, %d of them with a temporary file left; by tenths of the save:", kills, seconds,
              leftovers);
  for (const int count : killsByPart) std::printf(" %d", count);
  std::printf("\n");
  for (const int count : killsByPart) EXPECT_GT(count, 0) << "the kills aren't spread over the save";
}

}  // namespace
}  // namespace Helmsway
