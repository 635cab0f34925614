#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#include <glib.h>
#pragma GCC diagnostic pop

#include "benchmarks/peers/IniPeer.h"

namespace Helmsway::Benchmarks {
namespace {

/// The raw values: those with escapes resolved wouldn't be the file's text.
class KeyFilePeer final : public IIniPeer {
 public:
  bool Load(const std::string& path) override {
    file_.reset(g_key_file_new());
    const int flags = int{G_KEY_FILE_KEEP_COMMENTS} | int{G_KEY_FILE_KEEP_TRANSLATIONS};
    return g_key_file_load_from_file(file_.get(), path.c_str(), static_cast<GKeyFileFlags>(flags), nullptr) != 0;
  }

  bool Find(const std::string& section, const std::string& key, std::string& value) override {
    char* const found = g_key_file_get_value(file_.get(), section.c_str(), key.c_str(), nullptr);
    if (found == nullptr) return false;
    value = found;
    g_free(found);
    return true;
  }

  bool Save(const std::string& path, const std::string& section, const std::string& key,
            const std::string& value) override {
    if (!Load(path)) return false;
    g_key_file_set_value(file_.get(), section.c_str(), key.c_str(), value.c_str());
    return g_key_file_save_to_file(file_.get(), path.c_str(), nullptr) != 0;
  }

 private:
  struct Free {
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
  };
  std::unique_ptr<GKeyFile, Free> file_;
};

}  // namespace

std::unique_ptr<IIniPeer> MakeKeyFilePeer() { return std::make_unique<KeyFilePeer>(); }

}  // namespace Helmsway::Benchmarks
