#include "bench/desktop/FaultDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <array>

#include "bench/replay/ScriptWords.h"

namespace Helmsway {
namespace {

enum class Time { None, Needed };

struct FaultRow {
  const char* word;  ///< as scripts write it
  const char* name;
  const char* meaning;
  Time time;
};

constexpr std::array<FaultRow, 8> Rows = {{
    {"refuse", "Refused", "The instrument refuses the line and does nothing.", Time::None},
    {"fail", "Sending fails", "The line doesn't reach the instrument.", Time::None},
    {"late", "Late answer", "The line is carried out; its answer comes this much later.", Time::Needed},
    {"silent", "No answer", "The instrument does nothing; the line fails after this time, or when Stop is pressed.",
     Time::Needed},
    {"link", "Link lost", "The line is carried out, but its answer is lost, and the link for this time.", Time::Needed},
    {"garble", "Unreadable reply", "The line is carried out, but nobody can read the reply.", Time::None},
    {"stall", "Axis stalls", "The move, or the next one, ends half-way, and the axis must be homed.", Time::None},
    {"power-cycle", "Power cycle", "The instrument goes off and on in the middle of the line.", Time::None},
}};

}  // namespace

FaultDialog::FaultDialog(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("faultDialog"));
  setWindowTitle(tr("Plan a Fault (Simulation)"));
  kind_ = new QComboBox(this);
  kind_->setObjectName(QStringLiteral("faultKind"));
  for (const FaultRow& row : Rows) kind_->addItem(tr(row.name));
  meaning_ = new QLabel(this);
  meaning_->setWordWrap(true);
  line_ = new QComboBox(this);
  line_->setObjectName(QStringLiteral("faultLine"));
  line_->setEditable(true);
  line_->setInsertPolicy(QComboBox::NoInsert);
  line_->setCompleter(nullptr);  // it would make one line's beginning of what is meant for several
  line_->addItems({QString(), QStringLiteral("HOME ALL"), QStringLiteral("HOME S"), QStringLiteral("MOVE S "),
                   QStringLiteral("MOVE Z "), QStringLiteral("MOVE SLIDER"), QStringLiteral("STATUS SLIDER"),
                   QStringLiteral("SET_CALIBRATION"), QStringLiteral("SET_CALIBRATION SAVE"), QStringLiteral("REV")});
  line_->setToolTip(tr("Strikes the next line that begins so; the next line whatever it is, when left empty"));
  seconds_ = new QDoubleSpinBox(this);
  seconds_->setObjectName(QStringLiteral("faultSeconds"));
  seconds_->setRange(0.5, 600);
  seconds_->setValue(5);
  seconds_->setSuffix(tr(" s"));

  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(kind_, &QComboBox::currentIndexChanged, this, &FaultDialog::ShowKind);
  auto* const layout = new QFormLayout(this);
  layout->addRow(tr("&Fault:"), kind_);
  layout->addRow(QString(), meaning_);
  layout->addRow(tr("Next &line that begins with:"), line_);
  layout->addRow(tr("&Time (of the instrument):"), seconds_);
  layout->addRow(buttons);
  ShowKind();
}

void FaultDialog::ShowKind() {
  const FaultRow& row = Rows.at(static_cast<std::size_t>(kind_->currentIndex()));
  meaning_->setText(tr(row.meaning));
  seconds_->setEnabled(row.time == Time::Needed);
}

std::string FaultDialog::Action() const {
  const FaultRow& row = Rows.at(static_cast<std::size_t>(kind_->currentIndex()));
  std::string action = std::string("instrument fault ") + row.word + " ";
  action += WrittenWord(line_->currentText().toStdString());
  if (row.time == Time::Needed) action += " " + QString::number(seconds_->value()).toStdString();
  return action;
}

}  // namespace Helmsway
