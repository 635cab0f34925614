#include <unistd.h>

#include <QPushButton>
#include <QTest>
#include <filesystem>
#include <optional>
#include <sstream>

#include "bench/desktop/InstallationLock.h"
#include "bench/desktop/MemoryFile.h"
#include "bench/replay/Replay.h"
#include "tests/desktop/WindowFixture.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

using OneInstallation = WindowFixture;

TEST_F(OneInstallation, ASecondWindowLooksAtACopy) {
  const auto title = [&] { return Window().windowTitle().toStdString(); };
  const std::string place = fs::path(Installation().PathOf("")).lexically_normal().string();
  EXPECT_NE(title().find(place), std::string::npos) << title();
  EXPECT_EQ(title().find("copy"), std::string::npos) << title();
  EXPECT_FALSE(IsShown("copyNotice"));
  const std::string before = File();

  // Another process's window, as far as this one can tell.
  EndWindow();
  std::optional<InstallationLock> other(Installation().PathOf(""));
  EXPECT_EQ(other->Holder(), "");
  Expect(Bench, [&](QDialog& dialog) {
    const std::string words = static_cast<const QMessageBox&>(dialog).text().toStdString();
    EXPECT_NE(words.find("process " + std::to_string(getpid()) + " of "), std::string::npos) << words;
    EXPECT_NE(words.find(", since 2"), std::string::npos) << words;
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("lookAtCopy")), Qt::LeftButton);
  });
  OpenAgain();
  EXPECT_NE(title().find(place + " (copy, nothing is written)"), std::string::npos) << title();
  EXPECT_TRUE(IsShown("copyNotice"));
  GoToMainPage();
  Start();
  Save();
  EXPECT_EQ(Text("valuesUpperTitle"), "– Saved in this window's copy only; the installation is as it was");
  EXPECT_TRUE(File() == before);
  EXPECT_FALSE(fs::exists(Installation().PathOf("Marivane.memory")));
  EndWindow();
  {
    MainWindow refused(Options());
    Expect(Bench, Press(QMessageBox::Close));
    EXPECT_FALSE(refused.BeginSession());
  }

  // The next one has it once the other has gone, and nothing is left behind.
  other.reset();
  OpenAgain();
  EXPECT_EQ(title().find("copy"), std::string::npos) << title();
  EndWindow();
  EXPECT_EQ(Installation().Names(), (std::set<std::string>{"Helmsway.ini", "Marivane.ini"}));
}

TEST_F(OneInstallation, TheInstrumentRemembersWhatWasSavedUntilTheNextStart) {
  EXPECT_EQ(Text("valuesSummary"), "– The instrument holds no calibration values yet");
  GoToMainPage();
  Start();
  Save();
  EXPECT_EQ(Text("valuesSummary"), "= File and instrument agree for all 14 classes");
  const CalibrationValues memory = Session().CalibrationMemory();
  ASSERT_EQ(memory.size(), 28U);

  OpenAgain();
  EXPECT_EQ(Session().CalibrationMemory(), memory);
  EXPECT_EQ(Text("valuesSummary"), "= File and instrument agree for all 14 classes");
  // The session's script knows it, and the score doesn't take it for a deed of this session.
  GoToMainPage();
  ASSERT_TRUE(Session().Perform("instrument show"));
  Expect("Score (Simulation)", [](QDialog& dialog) {
    const std::string words = static_cast<const QMessageBox&>(dialog).text().toStdString();
    EXPECT_NE(words.find("saved value: none"), std::string::npos) << words;
    Press(QMessageBox::Ok)(dialog);
  });
  ASSERT_TRUE(Session().Perform("instrument score"));
  const TemporaryFolder folder;
  Session().SaveScript(folder.PathOf("session.replay"));
  Session().SaveTrace(folder.PathOf("trace"));
  ReplayOptions options;
  options.configuration = folder.PathOf("session.installation");
  options.addIn = Session().Options().addIn;
  options.script = folder.PathOf("session.replay");
  EndWindow();
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream complaints;
  EXPECT_EQ(Replay(options, in, out, complaints), ExitStatus::Performed) << complaints.str();
  EXPECT_EQ(out.str(), folder.Read("trace"));
  EXPECT_NE(out.str().find("instrument memory AspirateOrigin_8Ch_125_S"), std::string::npos);
}

TEST_F(OneInstallation, AMemoryThatNoInstrumentCouldHaveIsNotUsed) {
  const std::string good = "AspirateOrigin_8Ch_125_S=-2964\n";
  EXPECT_EQ(MemoryFile::Read(Installation().Write("Marivane.memory", "# a remark\r\n\r\n" + good)).values.size(), 1U);
  for (const std::string& bad : {std::string("rubbish\n"), good + good, good + "AspirateOrigin_8Ch_125_S 1=2\n",
                                 good + "HOME=ALL\n", good + "TipEject_8Ch_125_S=30\n", std::string(1 << 17, '\n'),
                                 std::string("\0=\0", 3), good.substr(0, good.size() - 3) + "x"}) {
    const MemoryFile::Contents memory = MemoryFile::Read(Installation().Write("Marivane.memory", bad));
    EXPECT_TRUE(memory.values.empty());
    EXPECT_NE(memory.problem, "");
  }
  OpenAgain();
  EXPECT_EQ(Text("valuesSummary"), "– The instrument holds no calibration values yet");
  EXPECT_EQ(Count(ConsoleEntry::Kind::Note,
                  "Marivane.memory isn't a calibration memory, so the instrument begins without one"),
            1);
}

}  // namespace
}  // namespace Helmsway
