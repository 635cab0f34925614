#include "addin/shell/InProcessServer.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>

#include "addin/base/Boundary.h"
#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/base/Steps.h"
#include "addin/shell/Platform.h"

namespace OrvelCalibrateS::InProcessServer {
namespace {

using HelmswayCmds::Id;
using HelmswayCmds::Result;

std::uint32_t usesOfLibrary = 0;

class ClassFactory final : public Implements<HelmswayCmds::IClassFactory> {
 public:
  explicit ClassFactory(const ServedClass& served) : served_(served) {}

  Result CreateInstance(const Id& interfaceId, void** object) noexcept override {
    if (object == nullptr) return Result::InvalidPointer;
    const InUse running;
    return served_.create(interfaceId, object);
  }

 private:
  InUse inUse_;
  const ServedClass& served_;
};

/// "{d95b74c4-2136-49ae-9fd9-69b691484557}"
std::string Braced(const Id& id) {
  std::array<char, 40> text{};
  const auto& rest = id.data4;
  std::snprintf(text.data(), text.size(), "{%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x}", id.data1,
                unsigned{id.data2}, unsigned{id.data3}, unsigned{rest[0]}, unsigned{rest[1]}, unsigned{rest[2]},
                unsigned{rest[3]}, unsigned{rest[4]}, unsigned{rest[5]}, unsigned{rest[6]}, unsigned{rest[7]});
  return text.data();
}

std::filesystem::path RegistrationFile(const ServedClass& served) {
  return Platform::RegistrationFolder() / (std::string(served.programId) + ".addin");
}

/// A file that is removed again unless it has been renamed to its final name.
class Draft {
 public:
  explicit Draft(std::filesystem::path path) : path_(std::move(path)), out_(path_, std::ios::binary | std::ios::trunc) {
    Require(out_.is_open());
  }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;
  ~Draft() {
    std::error_code ignored;  // a file that can't be removed stays: nothing else can be done
    if (!placed_) std::filesystem::remove(path_, ignored);
  }

  std::ostream& Out() { return out_; }

  void PlaceAs(const std::filesystem::path& file) {
    out_.close();
    Require(out_.good());
    std::filesystem::rename(path_, file);
    placed_ = true;
  }

 private:
  std::filesystem::path path_;
  std::ofstream out_;
  bool placed_ = false;
};

/// Goes through a temporary file beside it, so that a host never reads half a registration.
void WriteRegistration(const ServedClass& served, const std::filesystem::path& library) {
  const std::filesystem::path file = RegistrationFile(served);
  std::filesystem::create_directories(file.parent_path());
  Draft draft(file.string() + ".new");
  draft.Out() << "[Add-in]\n"
              << "ProgramId=" << served.programId << "\n"
              << "ClassId=" << Braced(served.classId) << "\n"
              << "Version=" << HELMSWAY_VERSION << "\n"
              << "Library=" << library.string() << "\n";
  draft.PlaceAs(file);
}

}  // namespace

InUse::InUse() noexcept { ++usesOfLibrary; }
InUse::~InUse() { --usesOfLibrary; }

Result GetClassObject(std::span<const ServedClass> classes, const Id* classId, const Id* interfaceId,
                      void** object) noexcept {
  if (classId == nullptr || interfaceId == nullptr || object == nullptr) return Result::InvalidPointer;
  for (const ServedClass& served : classes) {
    if (served.classId != *classId) continue;
    Result result = Result::Failed;
    const Result made = AtBoundary([&] {
      Ref<ClassFactory> factory;
      *factory.Out() = new ClassFactory(served);
      result = factory->QueryInterface(*interfaceId, object);
    });
    return made == Result::Ok ? result : made;
  }
  return Result::ClassNotAvailable;
}

Result CanUnloadNow() noexcept { return usesOfLibrary == 0 ? Result::Ok : Result::Failed; }

Result Register(std::span<const ServedClass> classes, const std::filesystem::path& library) noexcept {
  return AtBoundary([&] {
    Require(std::filesystem::is_regular_file(library));
    // A line end in the path would end the path's line in the file.
    Require(library.string().find_first_of("\r\n") == std::string::npos);
    for (const ServedClass& served : classes) WriteRegistration(served, library);
  });
}

Result Unregister(std::span<const ServedClass> classes) noexcept {
  return AtBoundary([&] {
    for (const ServedClass& served : classes) std::filesystem::remove(RegistrationFile(served));
  });
}

}  // namespace OrvelCalibrateS::InProcessServer
