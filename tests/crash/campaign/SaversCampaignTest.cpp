#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "bench/host/ConfigurationService.h"
#include "bench/host/IniFile.h"
#include "tests/host/TemporaryFolder.h"

/// Several programs that save into one file at once.
namespace Helmsway {
namespace {

using OrvelCalibrateS::AsText;

constexpr const char* FileName = "Marivane.ini";

std::string KeyOf(int saver, int edit) {
  // Half of the edits change one key again and again, and the others make new ones.
  return "k" + std::to_string(saver) + (edit % 2 == 0 ? "" : "n" + std::to_string(edit));
}

/// Makes its edits, and looks after each whether the one before is still there. How many failed or were lost.
int SaveAgainAndAgain(const std::string& path, int saver, int edits) {
  OrvelCalibrateS::Ref<HelmswayCmds::IIniService> service;
  *service.Out() = new ConfigurationService;
  int faults = 0;
  for (int edit = 0; edit < edits; ++edit) {
    const std::string key = KeyOf(saver, edit);
    const std::string value = std::to_string(edit);
    if (service->WriteIni(AsText("S"), AsText(key), AsText(path), AsText(value)) != HelmswayCmds::Result::Ok) ++faults;
    std::string found;
    OrvelCalibrateS::StringTarget target(found);
    if (service->ReadIni(AsText("S"), AsText(key), AsText(path), AsText(""), target) != HelmswayCmds::Result::Ok ||
        found != value) {
      ++faults;
    }
  }
  return faults;
}

/// HELMSWAY_CAMPAIGN_EDITS asks for more edits of each saver.
int EditsOfEach(int few) {
  const char* const given = std::getenv("HELMSWAY_CAMPAIGN_EDITS");
  return given != nullptr ? std::atoi(given) : few;
}

class SaversCampaignTest : public testing::TestWithParam<int> {};

TEST_P(SaversCampaignTest, NoEditIsLost) {
  const int savers = GetParam();
  const int edits = EditsOfEach(2'000 / savers);
  const TemporaryFolder folder;
  const std::string path = folder.Write(FileName, "[S]\n");
  const auto start = std::chrono::steady_clock::now();
  std::vector<pid_t> processes;
  for (int saver = 0; saver < savers; ++saver) {
    const pid_t process = fork();
    if (process == 0) _exit(SaveAgainAndAgain(path, saver, edits) == 0 ? 0 : 1);
    processes.push_back(process);
  }
  for (const pid_t process : processes) {
    int status = -1;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    EXPECT_EQ(status, 0) << "an edit that failed, or was gone right after it";
  }

  const IniFile file(folder.Read(FileName));
  int lost = 0;
  for (int saver = 0; saver < savers; ++saver) {
    const int lastEven = (edits - 1) / 2 * 2;
    for (int edit = 0; edit < edits; ++edit) {
      const std::string expected = std::to_string(edit % 2 == 0 ? lastEven : edit);
      if (file.Find("S", KeyOf(saver, edit)) != expected) ++lost;
    }
  }
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::printf("%d savers, %d edits, %d lost, %.1f s\n", savers, savers * edits, lost, seconds);
  EXPECT_EQ(lost, 0);
  EXPECT_EQ(folder.Names(), std::set<std::string>{FileName});
}

INSTANTIATE_TEST_SUITE_P(Savers, SaversCampaignTest, testing::Values(2, 4, 16));

}  // namespace
}  // namespace Helmsway
