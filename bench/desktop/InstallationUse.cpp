#include "bench/desktop/InstallationUse.h"

#include <QMessageBox>
#include <QPushButton>
#include <stdexcept>

#include "bench/desktop/MemoryFile.h"
#include "bench/host/StillFile.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

QString TextOf(const fs::path& path) { return QString::fromStdString(path.string()); }

}  // namespace

InstallationUse::InstallationUse(SessionOptions& options, QWidget* parent) : lock_(options.installation) {
  if (lock_.Holder().empty()) return;
  isWanted_ = AskForCopy(options.installation, parent);
  if (isWanted_) MakeCopy(options);
}

bool InstallationUse::AskForCopy(const fs::path& installation, QWidget* parent) const {
  QMessageBox box(parent);
  box.setWindowTitle(QObject::tr("Helmsway Bench"));
  box.setIcon(QMessageBox::Warning);
  box.setTextFormat(Qt::PlainText);
  box.setText(QObject::tr("%1 is open in another window:\n%2.\n\nYou can look at a copy of it. Nothing that you save "
                          "there is written to the installation, and the copy goes with its window.")
                  .arg(TextOf(installation), QString::fromStdString(lock_.Holder())));
  QPushButton* const look = box.addButton(QObject::tr("&Look at a Copy"), QMessageBox::AcceptRole);
  look->setObjectName(QStringLiteral("lookAtCopy"));
  box.addButton(QMessageBox::Close);
  box.setDefaultButton(look);
  box.exec();
  return box.clickedButton() == look;
}

void InstallationUse::MakeCopy(SessionOptions& options) {
  copy_.emplace();
  if (!copy_->isValid()) throw std::runtime_error("no folder for a copy: " + copy_->errorString().toStdString());
  const fs::path folder = copy_->path().toStdString();
  for (const fs::path& name : {fs::path("Marivane.ini"), fs::path("Helmsway.ini"), MemoryFile::PathIn({})}) {
    if (!fs::exists(options.installation / name)) continue;
    fs::copy_file(options.installation / name, folder / name);
    fs::permissions(folder / name, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add);
    MarkAsWhole((folder / name).string());
  }
  options.copyOf = std::exchange(options.installation, folder);
}

QString PlaceOf(const SessionOptions& options) {
  const QString place = TextOf(fs::absolute(options.copyOf.value_or(options.installation)).lexically_normal());
  return options.copyOf ? QObject::tr("%1 (copy, nothing is written)").arg(place) : place;
}

}  // namespace Helmsway
