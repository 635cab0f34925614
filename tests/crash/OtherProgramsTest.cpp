#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "bench/host/ConfigurationFile.h"
#include "tests/crash/FaultLayer.h"
#include "tests/crash/SaveUnderTest.h"

namespace Helmsway {
namespace {

using Faults::What;
using HelmswayCmds::Result;

const Save save{"with a neighbour", "S", "k", "[S]\nk=1\nj=0\n", "[S]\nk=7\nj=0\n"};
constexpr const char* Both = "[S]\nk=7\nj=2\n";

std::string Edited(const SaveFolder& folder) {
  std::string bytes = folder.Bytes();
  const std::size_t place = bytes.find("j=0");
  if (place != std::string::npos) bytes.replace(place, 3, "j=2");
  return bytes;
}

void EditInPlace(const SaveFolder& folder) {
  const std::string bytes = Edited(folder);
  std::ofstream(folder.Path(), std::ios::binary | std::ios::trunc) << bytes;
}

void PutAnotherFileThere(const SaveFolder& folder) {
  const std::string draft = folder.Path() + "~";
  const std::string bytes = Edited(folder);
  std::ofstream(draft, std::ios::binary) << bytes;
  std::filesystem::rename(draft, folder.Path());
}

void SaveAnotherKey(const SaveFolder& folder) { EXPECT_FALSE(SetIniValue(folder.Path(), "S", "j", "2")); }

void Remove(const SaveFolder& folder) { std::filesystem::remove(folder.Path()); }

struct Row {
  const char* name;
  std::function<void(const SaveFolder&)> edit;
  std::chrono::milliseconds age;  ///< of the file; after some the save trusts its stamp
};

constexpr std::chrono::milliseconds fresh{0};
constexpr std::chrono::milliseconds old{30};

TEST(OtherProgramsTest, AnEditAheadOfAnyCallOfASaveIsKept) {
  const std::vector<Row> rows = {{"in place", EditInPlace, fresh},
                                 {"in place, of an old file", EditInPlace, old},
                                 {"another file of that name", PutAnotherFileThere, fresh},
                                 {"another file of that name, in place of an old one", PutAnotherFileThere, old},
                                 {"by this program", SaveAnotherKey, fresh}};
  for (const auto& [name, edit, age] : rows) {
    std::size_t call = 1;
    for (bool came = true; came; ++call) {
      SCOPED_TRACE(std::string(name) + ", ahead of call " + std::to_string(call));
      const SaveFolder folder(save);
      std::this_thread::sleep_for(age);
      came = false;
      Result result = Result::Failed;
      const auto meanwhile = [&, &change = edit] { came = true, change(folder); };
      Faults::Observe({What::Meanwhile, call, 0, "", meanwhile}, [&] { result = folder.Write(); });
      EXPECT_EQ(result, Result::Ok);
      EXPECT_EQ(folder.Bytes(), came ? Both : save.after);
      EXPECT_TRUE(folder.HoldsTheFileAlone());
      ASSERT_FALSE(HasFailure());
    }
    EXPECT_GT(call, 10U) << name;
  }
}

TEST(OtherProgramsTest, WhereFilesCannotBeExchangedAnEditUpToTheLastLookIsKept) {
  // The gap that is left there: behind the last look, which reads a file whose stamp isn't trusted yet.
  const std::vector<std::pair<Row, const char*>> rows = {
      {{"in place", EditInPlace, fresh}, "close renameat "},
      {{"another file of that name", PutAnotherFileThere, old}, "renameat "}};
  for (const auto& [row, gap] : rows) {
    SCOPED_TRACE(row.name);
    std::string lost;
    bool came = true;
    for (std::size_t call = 1; came;) {
      const SaveFolder folder(save);
      const auto made = std::chrono::steady_clock::now();
      std::this_thread::sleep_for(row.age);
      came = false;
      Result result = Result::Failed;
      const auto meanwhile = [&, &change = row.edit] { came = true, change(folder); };
      const Faults::Calls calls =
          Faults::Observe({What::Meanwhile, call, 0, "renameat2", meanwhile}, [&] { result = folder.Write(); });
      EXPECT_EQ(result, Result::Ok);
      EXPECT_TRUE(folder.HoldsTheFileAlone());
      // On a busy machine a fresh file may have got old meanwhile: once more.
      const bool stayedFresh = std::chrono::steady_clock::now() - made < std::chrono::milliseconds(10);
      if (row.age == fresh && !stayedFresh) {
        came = true;
        continue;
      }
      if (came && folder.Bytes() != Both) lost += calls.at(call - 1).name + " ";
      ++call;
    }
    EXPECT_EQ(lost, gap);
  }
}

TEST(OtherProgramsTest, AFileThatIsRemovedOrMadeMeanwhileIsNoFailure) {
  bool came = true;
  for (std::size_t call = 1; came; ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    came = false;
    // Removed: made anew with that key alone, unless the save had been made.
    const SaveFolder folder(save);
    Result result = Result::Failed;
    Faults::Observe({What::Meanwhile, call, 0, "", [&] { came = true, Remove(folder); }},
                    [&] { result = folder.Write(); });
    EXPECT_EQ(result, Result::Ok);
    const bool isThere = std::filesystem::exists(folder.Path());
    if (isThere) {
      EXPECT_EQ(folder.Bytes(), came ? "[S]\r\nk=7\r\n" : save.after);
    }
    EXPECT_EQ(folder.Names().size(), isThere ? 1U : 0U);
  }
  came = true;
  for (std::size_t call = 1; came; ++call) {
    SCOPED_TRACE("made ahead of call " + std::to_string(call));
    came = false;
    // Made: the other one's keys and this one's.
    const SaveFolder folder(save);
    Remove(folder);
    Result result = Result::Failed;
    const auto make = [&] { came = true, SaveAnotherKey(folder); };
    Faults::Observe({What::Meanwhile, call, 0, "", make}, [&] { result = folder.Write(); });
    EXPECT_EQ(result, Result::Ok);
    const std::string bytes = folder.Bytes();
    EXPECT_NE(bytes.find("k=7\r\n"), std::string::npos) << bytes;
    EXPECT_EQ(bytes.find("j=2\r\n") != std::string::npos, came) << bytes;
    EXPECT_TRUE(folder.HoldsTheFileAlone());
  }
}

}  // namespace
}  // namespace Helmsway
