#include "bench/instrument/InstallationCheck.h"

#include "bench/host/WriteObstacle.h"
#include "bench/instrument/InstalledFile.h"

namespace Helmsway {

std::string WhyNoHeads(const std::filesystem::path& marivaneIni) {
  const std::string name = marivaneIni.filename().string();
  std::error_code ignored;
  if (FileProblem problem = ReadObstacle(marivaneIni.string())) return std::move(problem.sentence);
  if (!std::filesystem::exists(marivaneIni, ignored)) return name + " is missing";
  const InstalledFile file(marivaneIni);
  if (!file.CalibratedHeads().empty()) return {};
  if (file.Heads().empty()) return name + " has no heads";
  return "no head in " + name + " takes its S position from this calibration";
}

std::vector<std::string> InstallationProblems(const std::filesystem::path& marivaneIni) {
  std::vector<std::string> problems;
  std::string why = WhyNoHeads(marivaneIni);
  if (!why.empty()) problems.push_back(why + "; a save will find nothing to calibrate");
  const FileProblem obstacle = WriteObstacle(marivaneIni.string());
  if (obstacle && obstacle.sentence != why) problems.push_back("nothing can be saved: " + obstacle.sentence);
  return problems;
}

}  // namespace Helmsway
