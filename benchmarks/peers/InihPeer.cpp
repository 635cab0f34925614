#include <INIReader.h>

#include "benchmarks/peers/IniPeer.h"

namespace Helmsway::Benchmarks {
namespace {

/// By the reader class that comes with the library, which itself keeps nothing. It can't write.
class InihPeer final : public IIniPeer {
 public:
  bool Load(const std::string& path) override {
    reader_ = std::make_unique<INIReader>(path);
    return reader_->ParseError() == 0;
  }

  bool Find(const std::string& section, const std::string& key, std::string& value) override {
    value = reader_->Get(section, key, "");
    return !value.empty();
  }

  bool Save(const std::string& /*path*/, const std::string& /*section*/, const std::string& /*key*/,
            const std::string& /*value*/) override {
    return false;
  }

 private:
  std::unique_ptr<INIReader> reader_;
};

}  // namespace

std::unique_ptr<IIniPeer> MakeInihPeer() { return std::make_unique<InihPeer>(); }

}  // namespace Helmsway::Benchmarks
