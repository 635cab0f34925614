#include "bench/desktop/Troubles.h"

#include <utility>

namespace Helmsway {
namespace {

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QString Clock(const QDateTime& time) { return time.toString(QStringLiteral("HH:mm:ss")); }

QString Because(const QString& why) { return why.isEmpty() ? why : QStringLiteral(": ") + why; }

QString Keys(std::size_t count, const char* of) {
  const QString keys = count == 1 ? QStringLiteral("1 key") : QStringLiteral("%1 keys").arg(count);
  return QStringLiteral("%1 of %2").arg(keys, QLatin1String(of));
}

QString Capital(QString text) {
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  return text;
}

}  // namespace

void Troubles::Performing(const Action& action) { number_.Performing(action); }

void Troubles::IniWriteFailed(std::string_view why) {
  now_.active = true;
  if (now_.writes++ == 0) now_.whyNotWritten = Text(why);
}

void Troubles::IniReadFailed(std::string_view why) {
  now_.active = true;
  if (now_.reads++ == 0) now_.whyNotRead = Text(why);
}

void Troubles::LinkNotReached() {
  now_.active = true;
  if (!linkLostSince_) linkLostSince_ = QDateTime::currentDateTime();
}

void Troubles::LineSkipped() {
  now_.active = true;
  ++now_.skipped;
}

void Troubles::LineBegins() {
  now_.active = true;
  linkLostSince_.reset();
}

void Troubles::LineEnded(std::string_view line, const Answer& answer) {
  number_.LineEnded(line, answer);
  if (answer.result == Answer::Result::Ok) return;
  const QString end = answer.result == Answer::Result::Refused ? QStringLiteral("refused") : QStringLiteral("failed");
  now_.lines += QStringLiteral("%1 %2%3").arg(Text(line), end, Because(Text(answer.reason)));
}

void Troubles::FaultStruck(const Fault& fault) {
  number_.FaultStruck(fault);
  if (fault.kind == FaultKind::Link) linkLostSince_ = QDateTime::currentDateTime();
}

void Troubles::Performed(const forms::ISurface* form, std::string_view statusText) {
  number_.Performed(form);
  if (now_.active) last_ = now_;
  now_ = {};
  if (statusText.empty()) {
    statusLeftSince_.reset();
  } else if (!statusLeftSince_ || leftStatus_ != statusText || last_.active) {
    statusLeftSince_ = QDateTime::currentDateTime();
  }
  last_.active = false;
  leftStatus_ = statusText;
}

QStringList Troubles::InWords() const {
  QStringList words;
  if (linkLostSince_) words += QStringLiteral("Link lost since %1").arg(Clock(*linkLostSince_));
  const QString doubt = Capital(QString::fromStdString(number_.InWords()));
  if (!doubt.isEmpty()) words += doubt;
  for (const QString& line : last_.lines) words += QStringLiteral("Not done: ") + line;
  if (last_.skipped > 0) words += QStringLiteral("Lines not sent, since a stop was requested: %1").arg(last_.skipped);
  if (last_.writes > 0) {
    words += QStringLiteral("Not written: ") + Keys(last_.writes, "Marivane.ini") + Because(last_.whyNotWritten);
  }
  if (last_.reads > 0) {
    words += QStringLiteral("Not read: ") + Keys(last_.reads, "the configuration") + Because(last_.whyNotRead);
  }
  return words;
}

}  // namespace Helmsway
