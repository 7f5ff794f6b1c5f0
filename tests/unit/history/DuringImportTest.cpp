#include "history/HistoryTest.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLog.h"

namespace tarvik {
namespace {

/// Something happens to the program or to the file while a long import goes on.
class DuringImportTest : public HistoryTest {
protected:
    static constexpr int many = 6000;

    DuringImportTest() { setIni(otherRecords()); }

    /// As many records as are imported, and none like them.
    static Log otherLog() {
        Log log = numberedLog(many);
        for (LoggedRecord& record : log) {
            record.sent = record.rcvd = record.duration = "77";
            record.address = "7.7.7.7";
        }
        return log;
    }

    // The files, which take their time to be made.
    static const std::string& records() {
        static const std::string text = fileOf(numberedLog(many));
        return text;
    }
    static const std::string& otherRecords() {
        static const std::string text = fileOf(otherLog());
        return text;
    }

    /// That is to happen once, when a part of the records is read.
    void happens(std::function<void()> event) {
        machine.desktop.whileProcessing = [this, event] {
            if (!happened && window().prgWork.visible() && window().prgWork.value() >= 30) {
                happened = true;
                event();
            }
        };
    }
    void importPickedFile() {
        putPicked(records());
        machine.dialogs.chosen = otherPath;
        expectQuestion(MsgBoxAnswer::No);
        window().cmdImport.press();
    }
    void importPickedLog() {
        importPickedFile();
        EXPECT_TRUE(happened) << "The import was not long enough.";
    }
    void importPickedLogInVain() {
        putPicked(records());
        machine.dialogs.chosen = otherPath;
        expectQuestion(MsgBoxAnswer::No);
        expectError("5 (Invalid procedure call or argument)", "ImportHistory", [this] {
            usableAtError = window().cmdImport.enabled() && !window().prgWork.visible() &&
                            !window().cmdStop.visible();
        });
        expectError("9 (Subscript out of range)", "UpdateStartStop");
        window().cmdImport.press();
    }

    void putPicked(const std::string& text) { machine.files.setFile(otherPath, text); }

    void expectRowsUpTo(int last) {
        ASSERT_EQ(window().lvwCompleteLog.rowCount(), last);
        for (int number = 1; number <= last; ++number) {
            ASSERT_EQ(row(number), numberedRow(number));
        }
    }
    void expectAllRecords() {
        expectRowsUpTo(many);
        EXPECT_TRUE(data().imported);
        EXPECT_EQ(data().stop, Long(many));
    }
    /// Records from some place on are missing; those before it are there.
    void expectSomeRecords() {
        EXPECT_GE(window().lvwCompleteLog.rowCount(), many * 30 / 100);
        EXPECT_LT(window().lvwCompleteLog.rowCount(), many);
        expectRowsUpTo(window().lvwCompleteLog.rowCount());
        EXPECT_FALSE(data().imported);
        EXPECT_EQ(data().log.sent.size(), static_cast<std::size_t>(many));
        EXPECT_FALSE(window().cmdExport.enabled());
    }

    bool happened = false;
    bool usableAtError = false;
};

TEST_F(DuringImportTest, TurningToTheProgramsFileDoesNotMixTheTwo) {
    happens([] { SetIniFileName(true, false); });

    importPickedLog();

    expectAllRecords();
    EXPECT_EQ(state().IniFileName, otherPath);
}

TEST_F(DuringImportTest, SavingTheStateDoesNotMixTheFiles) {
    state().BytesSentTotal = 12;
    happens([] { EXPECT_TRUE(SaveState()); });

    importPickedLog();

    expectAllRecords();
    EXPECT_TRUE(machine.files.file(otherPath) == records());
    EXPECT_NE(ini().find("LastDateStamp=6001\r\n"), std::string::npos);
}

TEST_F(DuringImportTest, SavingTheStateToTheVeryFileAddsNothingToIt) {
    state().BytesSentTotal = 12;
    happens([] { EXPECT_TRUE(SaveState()); });

    setIni(records());
    import();

    expectAllRecords();
    EXPECT_NE(ini().find("LastDateStamp=6001\r\n"), std::string::npos);
}

TEST_F(DuringImportTest, LosingTheNameOfTheFileDoesNotEndIt) {
    happens([this] { state().IniFileName.clear(); });

    importPickedLog();

    expectAllRecords();
}

TEST_F(DuringImportTest, ARecordThatIsAddedIsNotRead) {
    happens([this] { putPicked(fileOf(numberedLog(many + 1))); });

    importPickedLog();

    expectAllRecords();
}

TEST_F(DuringImportTest, AFileThatGoesEndsIt) {
    happens([this] { machine.files.remove(otherPath); });

    importPickedLogInVain();

    expectSomeRecords();
}

TEST_F(DuringImportTest, AFileThatCannotBeReadAnyMoreEndsIt) {
    happens([this] {
        putPicked(records() + ";\r\n");
        machine.files.setUnreadable(otherPath);
    });

    importPickedLogInVain();

    expectSomeRecords();
}

TEST_F(DuringImportTest, AFileThatBecomesShorterEndsIt) {
    happens([this] { putPicked(fileOf(numberedLog(3))); });

    importPickedLogInVain();

    expectSomeRecords();
}

TEST_F(DuringImportTest, AnotherLogInTheSameFileIsMixedIntoNoRecord) {
    happens([this] { putPicked(otherRecords()); });

    importPickedLog();

    ASSERT_EQ(window().lvwCompleteLog.rowCount(), many);
    for (int number = 1; number <= many; ++number) {
        const std::string text = std::to_string(number);
        const Row otherRow{text, "d" + text, "t" + text, "00:00:00:077", "77", "77", "7.7.7.7"};
        ASSERT_TRUE(row(number) == numberedRow(number) || row(number) == otherRow) << number;
    }
}

TEST_F(DuringImportTest, AFaultOfTheFileEndsItAsItEndsAShortOne) {
    Log log = numberedLog(many);
    log[3499].stamp = "no bar";
    const std::string faulty = fileOf(log);
    happens([&] { putPicked(faulty); });

    importPickedLogInVain();

    expectRowsUpTo(3499);
    EXPECT_TRUE(usableAtError);
    EXPECT_FALSE(data().imported);
    EXPECT_FALSE(window().lvwCompleteLog.enabled());
    EXPECT_TRUE(window().optHistory.enabled());
}

TEST_F(DuringImportTest, AnImportAfterAFaultIsComplete) {
    happens([this] { machine.files.remove(otherPath); });
    importPickedLogInVain();

    importPickedFile();

    expectAllRecords();
}

TEST_F(DuringImportTest, QuittingEndsTheProgram) {
    happens([this] { EXPECT_TRUE(frmMain().unload()); });

    importPickedLog();

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_FALSE(data().imported);
    EXPECT_TRUE(machine.files.file(otherPath) == records());
    EXPECT_NE(ini().find("IsLocked=0\r\n"), std::string::npos);
}

TEST_F(DuringImportTest, TheEndOfTheSessionEndsTheProgram) {
    happens([this] { machine.desktop.endSession(); });

    importPickedLog();

    EXPECT_TRUE(machine.desktop.realisedForms().empty());
    EXPECT_FALSE(data().imported);
    EXPECT_TRUE(machine.files.file(otherPath) == records());
    EXPECT_EQ(machine.desktop.boxesShown.size(), 1U);
}

TEST_F(DuringImportTest, QuittingWhileAnExportGoesOnWritesNoFile) {
    setIni(records());
    import();
    machine.dialogs.chosen = "E:\\out.csv";
    happens([this] { EXPECT_TRUE(frmMain().unload()); });

    window().cmdExport.press();

    EXPECT_TRUE(happened);
    EXPECT_FALSE(machine.files.exists("E:\\out.csv"));
    EXPECT_TRUE(machine.desktop.realisedForms().empty());
}

TEST_F(DuringImportTest, ABoxThatComesIsAnsweredFirst) {
    happens([this] {
        expectWarning("Error: INI file exists as directory.");
        machine.files.setKind(iniPath, FileKind::Directory);
        SetIniFileName(true, false);
    });

    importPickedLog();

    expectAllRecords();
}

} // namespace
} // namespace tarvik
