#pragma once

#include <QString>
#include <QtGlobal>
#include <filesystem>
#include <string>
#include <vector>

class QWidget;

namespace Helmsway::StartProblems {

/// On the standard error, and in a message box: the bench can't begin.
void Tell(QWidget* parent, const QString& what);

/// The same for what the bench begins in spite of. The box doesn't wait for its answer; nothing for no words.
void Warn(QWidget* parent, const std::vector<std::string>& words);

/// While it lives, a toolkit that finds no display ends the program with status 1 and a plain sentence on the standard
/// error, instead of aborting it. What else the toolkit has to say is passed on when that is over.
class DisplayDemanded {
 public:
  DisplayDemanded();
  DisplayDemanded(const DisplayDemanded&) = delete;
  DisplayDemanded& operator=(const DisplayDemanded&) = delete;
  ~DisplayDemanded();

 private:
  QtMessageHandler usual_;
};

}  // namespace Helmsway::StartProblems
