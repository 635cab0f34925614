#include <fcntl.h>
#include <sys/stat.h>

#include <QSettings>
#include <QStringList>
#include <ctime>

#include "benchmarks/peers/IniPeer.h"

namespace Helmsway::Benchmarks {
namespace {

QString KeyOf(const std::string& section, const std::string& key) {
  return QString::fromStdString(section) + QLatin1Char('/') + QString::fromStdString(key);
}

/// Commas make a value a list here, and quotes are resolved, so that a text comes back as near to the file's as the
/// library lets it.
class SettingsPeer final : public IIniPeer {
 public:
  void Forget(const std::string& path) override {
    settings_.reset();
    // The library keeps what it has parsed, and looks at the file's size and its time in milliseconds.
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    constexpr long second = 1'000'000'000;
    constexpr long step = 3'000'000;
    shift_ = (shift_ + step) % second;
    const timespec times[] = {{now.tv_sec, shift_}, {now.tv_sec, shift_}};
    utimensat(AT_FDCWD, path.c_str(), times, 0);
  }

  bool Load(const std::string& path) override {
    settings_.reset();
    Open(path);
    return settings_->status() == QSettings::NoError;
  }

  bool Find(const std::string& section, const std::string& key, std::string& value) override {
    const QVariant found = settings_->value(KeyOf(section, key));
    if (!found.isValid()) return false;
    value = found.toStringList().join(QLatin1Char(',')).toStdString();
    return true;
  }

  bool Save(const std::string& path, const std::string& section, const std::string& key,
            const std::string& value) override {
    if (settings_ == nullptr || settings_->fileName().toStdString() != path) Open(path);
    // Reads another program's edit, then writes.
    settings_->setValue(KeyOf(section, key), QString::fromStdString(value));
    settings_->sync();
    return settings_->status() == QSettings::NoError;
  }

 private:
  void Open(const std::string& path) {
    settings_ = std::make_unique<QSettings>(QString::fromStdString(path), QSettings::IniFormat);
  }

  std::unique_ptr<QSettings> settings_;
  inline static long shift_ = 0;  ///< ns; goes on from one object to the next, so that no time comes twice in a row
};

}  // namespace

std::unique_ptr<IIniPeer> MakeSettingsPeer() { return std::make_unique<SettingsPeer>(); }

}  // namespace Helmsway::Benchmarks
