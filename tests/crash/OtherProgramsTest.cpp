#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
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

std::string Edited(std::string bytes) {
  const std::size_t place = bytes.find("j=0");
  if (place != std::string::npos) bytes.replace(place, 3, "j=2");
  return bytes;
}

/// Truncates the file and writes it, as an editor does.
void EditInPlace(const SaveFolder& folder) {
  const int file = open(folder.Path().c_str(), O_RDWR);
  std::string bytes(1000, '\0');
  bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(0, read(file, bytes.data(), bytes.size()))));
  bytes = Edited(bytes);
  EXPECT_TRUE(ftruncate(file, 0) == 0 && pwrite(file, bytes.data(), bytes.size(), 0) > 0);
  close(file);
}

void PutAnotherFileThere(const SaveFolder& folder) {
  const std::string draft = folder.Path() + "~";
  const std::string bytes = Edited(folder.Bytes());
  std::ofstream(draft, std::ios::binary) << bytes;
  std::filesystem::rename(draft, folder.Path());
}

void SaveAnotherKey(const SaveFolder& folder) { EXPECT_FALSE(SetIniValue(folder.Path(), "S", "j", "2")); }

void Remove(const SaveFolder& folder) { std::filesystem::remove(folder.Path()); }

/// Another program, in a thread of its own. It comes in at one moment of a save, and the save goes on when it is done,
/// or when it has to wait for the save itself.
class OtherProgram {
 public:
  explicit OtherProgram(std::function<void()> work) : work_(std::move(work)) {}
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;
  ~OtherProgram() { End(); }

  void ComeIn() {
    constexpr std::chrono::milliseconds mostOfAnEdit{30};
    done_ = std::async(std::launch::async, work_);
    done_.wait_for(mostOfAnEdit);
  }
  bool HasCome() const { return done_.valid(); }
  void End() const {
    if (HasCome()) done_.wait();
  }

 private:
  std::function<void()> work_;
  std::future<void> done_;
};

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
      Result result = Result::Failed;
      OtherProgram other([&folder, &change = edit] { change(folder); });
      Faults::Observe({What::Meanwhile, call, 0, "", [&] { other.ComeIn(); }}, [&] { result = folder.Write(); });
      other.End();
      came = other.HasCome();
      EXPECT_EQ(result, Result::Ok);
      EXPECT_EQ(folder.Bytes(), came ? Both : save.after);
      EXPECT_TRUE(folder.HoldsTheFileAlone());
      ASSERT_FALSE(HasFailure());
    }
    EXPECT_GT(call, 10U) << name;
  }
}

TEST(OtherProgramsTest, AnExchangeThatIsDelayedKeepsOurOtherSaversWaiting) {
  std::size_t call = 0;
  std::size_t exchange = 0;
  for (const Faults::Call& made : Faults::Observe({}, [] { SaveFolder(save).Write(); })) {
    ++call;
    if (made.name == "renameat2") exchange = call;
  }
  const SaveFolder folder(save);
  std::string atExchange;
  OtherProgram other([&folder] { SaveAnotherKey(folder); });
  const auto delay = [&] {
    other.ComeIn();
    atExchange = folder.Bytes();
  };
  Faults::Observe({What::Meanwhile, exchange, 0, "", delay}, [&] { EXPECT_EQ(folder.Write(), Result::Ok); });
  other.End();
  EXPECT_EQ(atExchange, save.before);
  EXPECT_EQ(folder.Bytes(), Both);
  EXPECT_TRUE(folder.HoldsTheFileAlone());
}

/// A program that opened the file before the save, on a system that doesn't say who has a file open.
class UnseenDescriptor {
 public:
  explicit UnseenDescriptor(const std::string& path, int flags = 0)
      : descriptor_(open(path.c_str(), O_RDWR | O_CLOEXEC | flags)) {}
  UnseenDescriptor(const UnseenDescriptor&) = delete;
  UnseenDescriptor& operator=(const UnseenDescriptor&) = delete;
  ~UnseenDescriptor() { close(descriptor_); }
  void Write(const std::string& bytes, off_t place) const {
    EXPECT_EQ(pwrite(descriptor_, bytes.data(), bytes.size(), place), static_cast<ssize_t>(bytes.size()));
  }

 private:
  int descriptor_;
};

TEST(OtherProgramsTest, WhatIsWrittenIntoTheDisplacedFileIsSeenUpToItsRemoval) {
  std::string lost;
  bool came = true;
  for (std::size_t call = 1; came; ++call) {
    const SaveFolder folder(save);
    const UnseenDescriptor program(folder.Path());
    came = false;
    const auto write = [&] {
      came = true;
      program.Write("j=2", static_cast<off_t>(save.before.find("j=0")));
    };
    const Faults::Calls calls =
        Faults::Observe({What::Meanwhile, call, 0, "fcntl", write}, [&] { EXPECT_EQ(folder.Write(), Result::Ok); });
    if (came && folder.Bytes() != Both) lost += calls.at(call - 1).name + " ";
  }
  EXPECT_EQ(lost, "unlinkat close close ") << "what comes after the last look";
}

TEST(OtherProgramsTest, AnEmptyFileIsWrittenInPlaceAlsoWhereTheSystemSaysNothing) {
  const Save ofNothing{"empty", "S", "k", "", "[S]\r\nk=7\r\n"};
  const SaveFolder folder(ofNothing);
  const UnseenDescriptor program(folder.Path(), O_TRUNC);
  Faults::Observe({What::Nothing, 0, 0, "fcntl"}, [&] { EXPECT_EQ(folder.Write(), Result::Ok); });
  EXPECT_EQ(folder.Bytes(), ofNothing.after);
  const std::string full = "[S]\r\nk=1\r\nj=2\r\n";
  program.Write(full, 0);
  EXPECT_EQ(folder.Bytes(), full);
}

TEST(OtherProgramsTest, WhereFilesCannotBeExchangedAnEditUpToTheLastLookIsKept) {
  for (const Row& row :
       {Row{"in place", EditInPlace, old}, Row{"another file of that name", PutAnotherFileThere, old}}) {
    SCOPED_TRACE(row.name);
    std::string lost;
    bool came = true;
    for (std::size_t call = 1; came; ++call) {
      const SaveFolder folder(save);
      std::this_thread::sleep_for(row.age);
      Result result = Result::Failed;
      OtherProgram other([&folder, &change = row.edit] { change(folder); });
      const Faults::Calls calls = Faults::Observe({What::Meanwhile, call, 0, "renameat2", [&] { other.ComeIn(); }},
                                                  [&] { result = folder.Write(); });
      other.End();
      came = other.HasCome();
      EXPECT_EQ(result, Result::Ok);
      EXPECT_TRUE(folder.HoldsTheFileAlone());
      // While the save asks who has the file open, a program that opens it waits, and so writes at no sure moment.
      if (!came || calls.at(call - 1).name == "fcntl") continue;
      if (folder.Bytes() != Both) lost += calls.at(call - 1).name + " ";
    }
    EXPECT_EQ(lost, "renameat ") << "the gap that is left there, after the last look";
  }
}

TEST(OtherProgramsTest, AFileThatIsRemovedOrMadeMeanwhileIsNoFailure) {
  bool came = true;
  for (std::size_t call = 1; came; ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    // Removed: made anew with that key alone, unless the save had been made.
    const SaveFolder folder(save);
    Result result = Result::Failed;
    OtherProgram other([&folder] { Remove(folder); });
    Faults::Observe({What::Meanwhile, call, 0, "", [&] { other.ComeIn(); }}, [&] { result = folder.Write(); });
    other.End();
    came = other.HasCome();
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
    // Made: the other one's keys and this one's.
    const SaveFolder folder(save);
    Remove(folder);
    Result result = Result::Failed;
    OtherProgram other([&folder] { SaveAnotherKey(folder); });
    Faults::Observe({What::Meanwhile, call, 0, "", [&] { other.ComeIn(); }}, [&] { result = folder.Write(); });
    other.End();
    came = other.HasCome();
    EXPECT_EQ(result, Result::Ok);
    const std::string bytes = folder.Bytes();
    EXPECT_NE(bytes.find("k=7\r\n"), std::string::npos) << bytes;
    EXPECT_EQ(bytes.find("j=2\r\n") != std::string::npos, came) << bytes;
    EXPECT_TRUE(folder.HoldsTheFileAlone());
  }
}

}  // namespace
}  // namespace Helmsway
