#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTest>
#include <chrono>
#include <filesystem>

#include "bench/host/FolderLock.h"
#include "tests/desktop/WindowFixture.h"

namespace Helmsway {
namespace {

namespace fs = std::filesystem;

/// A save that doesn't do what it is there for, seen by the operator who has agreed to it.
class TruthfulSave : public WindowFixture {
 protected:
  TruthfulSave() {
    GoToMainPage();
    Start();
  }

  std::string Verdict() { return Text("valuesUpperTitle"); }

  void ExpectVerdict(const std::string& begin) { EXPECT_EQ(Verdict().substr(0, begin.size()), begin); }
};

TEST_F(TruthfulSave, AFileWithoutHeadsIsNoSuccess) {
  struct Row {
    const char* name;
    std::string bytes;
    const char* foretold;
    const char* verdict;
  };
  const std::string utf16 = std::string("\xff\xfe[\0H\0]\0", 8);
  const Row rows[] = {
      {"missing", "", "✗ Save can't do what it asks for: Marivane.ini is missing",
       "✗ Not saved: Marivane.ini has no heads"},
      {"random", "\x93\xfa\x01\x7f=\xc3(\n\xe2[]\x80", "✗ Save can't do what it asks for: Marivane.ini has no heads",
       "✗ Not saved: Marivane.ini has no heads"},
      {"UTF-16", utf16, "✗ Save can't do what it asks for: Marivane.ini is a UTF-16 file",
       "✗ Not saved: Marivane.ini is a UTF-16 file"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    fs::remove(Installation().PathOf("Marivane.ini"));
    if (!row.bytes.empty()) Installation().Write("Marivane.ini", row.bytes);
    EXPECT_TRUE(QTest::qWaitFor([&] { return IsShown("installationNotice"); }, 3000));
    Save([&] { ExpectVerdict(row.foretold); });
    ExpectVerdict(row.verdict);
    EXPECT_TRUE(IsShown("installationNotice"));
  }
  EXPECT_EQ(File(), utf16);
}

TEST_F(TruthfulSave, AFileThatCannotBeWrittenIsForetoldAndTold) {
  const std::string before = File();
  EXPECT_FALSE(IsShown("installationNotice"));
  fs::permissions(Installation().PathOf("Marivane.ini"), fs::perms(0444));
  Save([&] {
    ExpectVerdict("✗ Save can't do what it asks for: Marivane.ini is read-only");
    const auto& view = static_cast<const QPlainTextEdit&>(Widget("valuesUpperLines"));
    EXPECT_EQ(view.toPlainText().toStdString(), "Nothing: all lines stay as they are.");
  });
  EXPECT_EQ(File(), before);
  ExpectVerdict("✗ Not saved: Marivane.ini is read-only. The instrument has taken the new values all the same");
  EXPECT_EQ(Text("installationNotice"), "⚠ Installation: nothing can be saved: Marivane.ini is read-only");
  EXPECT_NE(Text("troublesNotice").find("Not written: 17 keys of Marivane.ini: Marivane.ini is read-only"),
            std::string::npos);
  ASSERT_TRUE(Window().BeginSession());
  EXPECT_TRUE(IsShown("installationNotice"));
  fs::permissions(Installation().PathOf("Marivane.ini"), fs::perms(0644));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !IsShown("installationNotice"); }, 5000));
}

TEST_F(TruthfulSave, AFolderThatIsHeldDelaysTheQuestionOnce) {
  const FolderLock held(fs::path(Installation().PathOf("Marivane.ini")).parent_path().string(),
                        std::chrono::milliseconds(0));
  ASSERT_TRUE(held);
  QElapsedTimer watch;
  watch.start();
  Expect(SaveBox, [&](QDialog& box) {
    ExpectVerdict("✗ Save can't do what it asks for: another program is writing in the folder of Marivane.ini");
    Press(QMessageBox::Cancel)(box);
  });
  Trigger("saveChanges");
  EXPECT_LT(watch.elapsed(), 2500);
}

TEST_F(TruthfulSave, LinesThatDoNotGoThroughAreCounted) {
  struct Row {
    const char* action;
    const char* verdict;
  };
  const Row rows[] = {
      {"instrument refuse \"SET_CALIBRATION AspirateOrigin\"",
       "✗ Saved in the file, not in the instrument: line 2 of 29 was refused (the script says so)"},
      {"instrument fail \"SET_CALIBRATION SAVE\"",
       "✗ Saved in the file, not in the instrument: line 29 of 29 failed (the script says so)"},
      {"during \"SET_CALIBRATION AspirateOrigin\" host stop",
       "✗ Saved in the file, not in the instrument: a stop was requested, 27 of 29 lines were not sent"},
      {"link down", "✗ Saved in the file, not in the instrument: the link was lost"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.action);
    ASSERT_TRUE(Session().Perform(row.action));
    Expect(SaveBox, Press(QMessageBox::Ok));
    Trigger("saveChanges");
    EXPECT_EQ(Verdict(), row.verdict);
    EXPECT_TRUE(IsShown("troublesNotice"));
  }
  EXPECT_FALSE(fs::exists(Installation().PathOf("Marivane.memory")));
  ASSERT_TRUE(Session().Perform("link up"));
  Save();
  ExpectVerdict("✓ Saved");
  EXPECT_FALSE(IsShown("troublesNotice"));
}

TEST_F(TruthfulSave, AnAnswerThatIsLostIsNoValueThatIsLost) {
  // The line is carried out, and the link comes back before the next save.
  ASSERT_TRUE(Session().Perform("instrument fault link \"SET_CALIBRATION SAVE\" 1"));
  Save();
  EXPECT_EQ(Verdict(),
            "✗ Saved in the file, but the upload broke off: line 29 of 29 failed (planned fault: the link was lost "
            "before the answer came). The instrument's memory agrees all the same");
  EXPECT_TRUE(fs::exists(Installation().PathOf("Marivane.memory")));
  // The link comes back before the first line of the upload.
  ASSERT_TRUE(Session().Perform("instrument fault link \"MOVE S\" 2"));
  Save();
  EXPECT_EQ(Verdict(), "⚠ Saved, but the number on the form, -3097, may not have been reached");
}

TEST_F(TruthfulSave, ANumberThatSWasNeverMovedToIsNoGoodSave) {
  OpenAgain();
  GoToMainPage();
  Expect(SaveBox, Press(QMessageBox::Ok));
  Trigger("saveChanges");
  EXPECT_EQ(Verdict(), "⚠ Saved, but S has not been moved to the number on the form, -3097");
}

TEST_F(TruthfulSave, HeadsThatCannotBeReadAreNotSaved) {
  ASSERT_TRUE(Session().Perform("file reads fail"));
  Save();
  EXPECT_EQ(Verdict(), "✗ Not saved: the heads could not be read: the host's configuration service doesn't work");
}

TEST_F(TruthfulSave, ValuesThatCannotBeWorkedOutAreMissed) {
  std::string file = File();
  const std::string axis = "Axis4=\"S\",0.0234375";
  for (std::size_t at = file.find(axis); at != std::string::npos; at = file.find(axis)) {
    file.replace(at, axis.size(), "Axis4=\"S\",0");
  }
  Installation().Write("Marivane.ini", file);
  OpenAgain();
  GoToMainPage();
  Start();
  Save();
  EXPECT_EQ(Verdict(), "✗ Saved in part: 14 values for the instrument could not be worked out, and were not sent");
}

TEST_F(TruthfulSave, ACheckWithoutHomingIsNoGoodSave) {
  ASSERT_TRUE(Session().Perform("instrument refuse \"HOME S\""));
  Save();
  EXPECT_EQ(Verdict(), "⚠ Saved, but S was not homed for the check: HOME S was refused (the script says so)");
  Save();
  ExpectVerdict("✓ Saved");
}

TEST_F(TruthfulSave, ANumberThatWasNotReachedIsNoGoodSave) {
  ASSERT_TRUE(Session().Perform("instrument refuse \"MOVE S\" 2"));
  Click("cmdButton_7");
  Save();
  EXPECT_EQ(Verdict(), "⚠ Saved, but the number on the form, -3093, was not reached");
}

TEST_F(TruthfulSave, AnotherProgramsEditTakesTheVerdictBack) {
  Save();
  ExpectVerdict("✓ Saved");
  Installation().Write("Marivane.ini", File());
  QTest::qWait(50);
  ExpectVerdict("✓ Saved");
  Installation().Write("Marivane.ini", File() + "; a remark\r\n");
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return Verdict().find("Marivane.ini was changed by another program since") != std::string::npos; }, 3000));
  ExpectVerdict("– Saved at ");
  // In the middle of a save, too.
  Save([&] { Installation().Write("Marivane.ini", File() + "; another\r\n"); });
  EXPECT_EQ(Verdict(), "≠ Marivane.ini is not what the save has written: another program has changed it meanwhile");
}

}  // namespace
}  // namespace Helmsway
