#include <cstdio>

extern "C" {
#include <iniparser/iniparser.h>
}

#include "benchmarks/peers/IniPeer.h"

namespace Helmsway::Benchmarks {
namespace {

/// A line that it doesn't understand is written to the standard error unless told otherwise.
int Silent(const char* /*format*/, ...) { return 0; }

class IniparserPeer final : public IIniPeer {
 public:
  IniparserPeer() { iniparser_set_error_callback(Silent); }

  bool Load(const std::string& path) override {
    file_.reset(iniparser_load(path.c_str()));
    return file_ != nullptr;
  }

  bool Find(const std::string& section, const std::string& key, std::string& value) override {
    const char* const found = iniparser_getstring(file_.get(), (section + ":" + key).c_str(), nullptr);
    if (found != nullptr) value = found;
    return found != nullptr;
  }

  bool Save(const std::string& path, const std::string& section, const std::string& key,
            const std::string& value) override {
    if (!Load(path) || iniparser_set(file_.get(), (section + ":" + key).c_str(), value.c_str()) != 0) return false;
    std::FILE* const file = std::fopen(path.c_str(), "w");
    if (file == nullptr) return false;
    iniparser_dump_ini(file_.get(), file);
    return std::fclose(file) == 0;
  }

 private:
  struct Free {
    void operator()(dictionary* file) const { iniparser_freedict(file); }
  };
  std::unique_ptr<dictionary, Free> file_;
};

}  // namespace

std::unique_ptr<IIniPeer> MakeIniparserPeer() { return std::make_unique<IniparserPeer>(); }

}  // namespace Helmsway::Benchmarks
