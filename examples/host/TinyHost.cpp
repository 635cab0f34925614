// The smallest host: `tiny-host LIBRARY` loads the add-in, presses Continue on its first panel, and prints each line
// for the instrument. It has no configuration file, and no window with a status bar, which the sequences after that
// need.
#include <dlfcn.h>

#include <cstdlib>
#include <iostream>
#include <string_view>
#include <vector>

#include "addin/base/Boundary.h"
#include "addin/base/Implements.h"
#include "addin/base/Ref.h"
#include "addin/base/Texts.h"
#include "addin/contract/HelmswayCmds.h"
#include "addin/shell/Identities.h"
#include "forms/Surface.h"

using namespace HelmswayCmds;
using namespace OrvelCalibrateS;

// The instrument: prints each line and accepts it, with an empty reply.
struct Link final : Implements<IDeviceLink> {
  Result SendCommand(Text command, ITextTarget& reply, std::int32_t /*third*/, Boolean* ok) noexcept override {
    std::cout << AsView(command) << '\n';
    *ok = True;
    return reply.Assign({});
  }
  Result GetStopRequested(Boolean* value) noexcept override { return *value = stopRequested, Result::Ok; }
  Result PutStopRequested(Boolean value) noexcept override { return stopRequested = value, Result::Ok; }
  Result PutAddInActive(Boolean /*value*/) noexcept override { return Result::Ok; }

  Boolean stopRequested = False;
};

// What the add-in gets as ObjectParent. Each GetDeviceLink hands out a reference of its own.
struct Connection final : Implements<IParentConnection> {
  Result GetDeviceLink(IDeviceLink** given) noexcept override {
    return *given = Ref<IDeviceLink>(&link).Detach(), Result::Ok;
  }

  Link link;
};

// The configuration service, without files. A real one reads and writes `filePath`.
struct IniService final : Implements<IIniService> {
  Result ReadIni(Text, Text, Text /*filePath*/, Text defaultValue, ITextTarget& value) noexcept override {
    return value.Assign(defaultValue);
  }
  Result WriteIni(Text, Text, Text, Text) noexcept override { return Result::Failed; }
  Result SplitText(ITextListTarget& parts, Text separator, Text text, std::int32_t* count) noexcept override {
    Result assigned = Result::Failed;
    const Result split = AtBoundary([&] {
      const std::string_view all = AsView(text);
      std::vector<Text> pieces;
      for (std::size_t begin = 0, end = 0; !all.empty() && end != all.npos; begin = end + separator.size) {
        end = all.find(AsView(separator), begin);
        pieces.push_back(AsText(all.substr(begin, end - begin)));
      }
      assigned = parts.Assign(pieces.data(), pieces.size());
      *count = static_cast<std::int32_t>(pieces.size()) - (all.ends_with(AsView(separator)) ? 1 : 0);
    });
    return split == Result::Ok ? assigned : split;
  }
};

struct IniServiceFactory final : Implements<IClassFactory> {
  Result CreateInstance(const Id& interfaceId, void** object) noexcept override {
    return service.QueryInterface(interfaceId, object);
  }

  IniService service;
};

// The add-in asks the process for this function and makes its configuration service with it.
extern "C" Result HelmswayCmdsGetClassObject(const Id* classId, const Id* interfaceId, void** object) {
  static IniServiceFactory factory;
  if (*classId != IIniService::ClassId) return Result::ClassNotAvailable;
  return factory.QueryInterface(*interfaceId, object);
}

// A call of the add-in that must succeed.
void Demand(bool done, const char* what) {
  if (done) return;
  std::cerr << "tiny-host: " << what << '\n';
  std::exit(EXIT_FAILURE);
}

int main(int argc, char** argv) {
  Demand(argc == 2, "usage: tiny-host LIBRARY");
  void* const library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  Demand(library != nullptr, "the add-in can't be loaded");
  const auto getClassObject = reinterpret_cast<GetClassObjectFunction>(dlsym(library, GetClassObjectName));
  const auto canUnloadNow = reinterpret_cast<EntryPointFunction>(dlsym(library, CanUnloadNowName));
  Demand(getClassObject != nullptr && canUnloadNow != nullptr, "the library is no add-in");

  Connection connection;  // on the stack: it outlives the add-in, and the first reference to it is never released
  {
    void* made = nullptr;
    Ref<IClassFactory> factory;
    Demand(getClassObject(&ConnectClassId, &IClassFactory::InterfaceId, &made) == Result::Ok, "no class Connect");
    *factory.Out() = static_cast<IClassFactory*>(made);
    Ref<IAddIn> addIn;
    Demand(factory->CreateInstance(IAddIn::InterfaceId, &made) == Result::Ok, "no add-in");
    *addIn.Out() = static_cast<IAddIn*>(made);
    Ref<IAddInForm> form;
    Demand(addIn->GetForm(form.Out()) == Result::Ok, "no form");
    Demand(form->PutObjectParent(&connection) == Result::Ok, "the connection isn't taken");

    Ref<IObject> frame;  // keeps the surface, which isn't counted
    Demand(form->GetFrame(frame.Out()) == Result::Ok, "no frame");
    Demand(frame->QueryInterface(SurfaceInterfaceId, &made) == Result::Ok, "no surface");
    forms::ISurface& surface = *static_cast<forms::ISurface*>(made);
    // Continue, on the first panel: the add-in reads the configuration and asks for the instrument's revision.
    Demand(surface.Click(surface.Find("cmdButton", 10)), "the button can't be pressed");

    Demand(form->PutObjectParent(nullptr) == Result::Ok, "the form doesn't end");
  }
  Demand(canUnloadNow() == Result::Ok, "the add-in is still in use");
  return dlclose(library);
}
