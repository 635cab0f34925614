#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wshadow"
#define SI_NO_CONVERSION
#include <SimpleIni.h>
#pragma GCC diagnostic pop

#include "benchmarks/peers/IniPeer.h"

namespace Helmsway::Benchmarks {
namespace {

class SimpleIniPeer final : public IIniPeer {
 public:
  bool Load(const std::string& path) override {
    file_ = std::make_unique<CSimpleIniA>();
    file_->SetSpaces(false);   // writes "key=value", as it stands in these files
    file_->SetMultiKey(true);  // of keys of the same name the first is found, as the configuration has it
    return file_->LoadFile(path.c_str()) >= 0;
  }

  bool Find(const std::string& section, const std::string& key, std::string& value) override {
    const char* const found = file_->GetValue(section.c_str(), key.c_str());
    if (found != nullptr) value = found;
    return found != nullptr;
  }

  bool Save(const std::string& path, const std::string& section, const std::string& key,
            const std::string& value) override {
    return Load(path) && file_->SetValue(section.c_str(), key.c_str(), value.c_str(), nullptr, true) >= 0 &&
           file_->SaveFile(path.c_str()) >= 0;
  }

 private:
  std::unique_ptr<CSimpleIniA> file_;
};

}  // namespace

std::unique_ptr<IIniPeer> MakeSimpleIniPeer() { return std::make_unique<SimpleIniPeer>(); }

}  // namespace Helmsway::Benchmarks
