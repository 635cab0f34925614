#include "bench/desktop/MemoryFile.h"

#include <QFile>
#include <QSaveFile>
#include <string_view>

#include "bench/instrument/CommandLine.h"

namespace Helmsway::MemoryFile {
namespace {

/// Far more than all classes of heads need.
constexpr qint64 LargestSize = 65536;

QString TextOf(const std::filesystem::path& file) { return QString::fromStdString(file.string()); }

/// False when the line is neither a value nor empty nor a comment.
bool TakeLine(std::string_view line, CalibrationValues& values) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  if (line.empty() || line.starts_with('#')) return true;
  const std::size_t sign = line.find('=');
  if (sign == std::string_view::npos) return false;
  const std::string name(line.substr(0, sign));
  const std::string value(line.substr(sign + 1));
  return IsCalibrationValue(name, value) && values.emplace(name, value).second;
}

}  // namespace

std::filesystem::path PathIn(const std::filesystem::path& installation) { return installation / "Marivane.memory"; }

Contents Read(const std::filesystem::path& path) {
  const std::string name = path.filename().string();
  QFile file(TextOf(path));
  if (!file.exists()) return {};
  if (!file.open(QIODevice::ReadOnly)) return {{}, name + " can't be read: " + file.errorString().toStdString()};
  const QByteArray bytes = file.read(LargestSize + 1);
  Contents contents;
  std::string_view rest(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  bool understood = bytes.size() <= LargestSize;
  while (understood && !rest.empty()) {
    const std::size_t end = rest.find('\n');
    understood = TakeLine(rest.substr(0, end), contents.values);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
  if (understood) return contents;
  return {{}, name + " isn't a calibration memory, so the instrument begins without one"};
}

std::string Write(const std::filesystem::path& path, const CalibrationValues& values) {
  QSaveFile file(TextOf(path));
  if (!file.open(QIODevice::WriteOnly)) return file.errorString().toStdString();
  std::string text = "# The calibration memory of the simulated instrument, for the next start of helmsway-bench.\n";
  for (const auto& [name, value] : values) text.append(name).append("=").append(value).append("\n");
  file.write(text.data(), static_cast<qint64>(text.size()));
  return file.commit() ? std::string() : file.errorString().toStdString();
}

}  // namespace Helmsway::MemoryFile
