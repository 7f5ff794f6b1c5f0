#include "settings/mdlSettings.h"
#include "settings/mdlSettingsBackup.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

constexpr const char* one = "[Settings]\r\nIsLocked=1\r\nLastState=r1\r\nDateStamp1=r1\r\n"
                            "LastDateStamp=1\r\n[r1]\r\nSent=1\r\nRcvd=1\r\nDuration=1\r\n";
constexpr const char* two =
    "[Settings]\r\nIsLocked=1\r\nLastState=r2\r\nDateStamp1=r1\r\nDateStamp2=r2\r\n"
    "LastDateStamp=2\r\n[r1]\r\nSent=1\r\nRcvd=1\r\nDuration=1\r\n[r2]\r\nSent=2\r\nRcvd=2\r\n"
    "Duration=2\r\n";

/// Other programs that change the file while it is saved: at any of the looks at it.
class OvertakenSaveTest : public WorldTest {
protected:
    OvertakenSaveTest() { prepare(); }

    void prepare() {
        newWorld();
        machine.files.meanwhile = nullptr;
        setIni(one);
        InitApplicationStatus();
        state().BytesRcvdTotal = 77;
        happened = 0;
    }

    /// Before that call that looks at the file or replaces it, counted from 1, `action` is done.
    void atCall(int call, std::function<void()> action) {
        machine.files.meanwhile = [this, call, action](const std::string&, const std::string&) {
            if (++happened == call) {
                action();
            }
        };
    }

    /// The records of the index, by their numbers.
    std::vector<std::string> index() {
        std::vector<std::string> names;
        for (int n = 1; GetNumRecords() >= Long(n); ++n) {
            names.push_back(GetDate(n));
        }
        return names;
    }

    int happened = 0;
};

TEST_F(OvertakenSaveTest, ARecordThatAnotherCopyAddsMeanwhileStaysWhenverItComes) {
    int call = 1;
    for (bool ended = false; !ended; ++call) {
        prepare();
        atCall(call, [this] { setIni(two); });

        EXPECT_TRUE(SaveState()) << call;

        machine.files.meanwhile = nullptr;
        ended = happened < call;
        const auto expected = ended ? std::vector<std::string>{"r1", "16.11.2026|08:15:22"}
                                    : std::vector<std::string>{"r1", "r2", "16.11.2026|08:15:22"};
        EXPECT_EQ(index(), expected) << call;
        EXPECT_EQ(GetBytesRcvd(GetNumRecords()), Currency(77)) << call;
    }
    EXPECT_GT(call, 4);
}

TEST_F(OvertakenSaveTest, AFileThatAnEditorEmptiesAndWritesAgainLosesNothing) {
    int calls = 0;
    for (int emptied = 1; emptied < 12; ++emptied) {
        for (int written = emptied + 1; written < 12; ++written) {
            prepare();
            machine.files.meanwhile = [&](const std::string&, const std::string&) {
                ++happened;
                if (happened == emptied) {
                    setIni("");
                } else if (happened == written) {
                    setIni(two);
                }
            };

            const bool saved = SaveState();

            machine.files.meanwhile = nullptr;
            if (happened < written) {
                continue; // the save was over before the editor was
            }
            ++calls;
            EXPECT_GE(GetNumRecords(), Long(2)) << emptied << " " << written;
            EXPECT_EQ(GetDate(1), "r1") << emptied << " " << written;
            EXPECT_EQ(GetDate(2), "r2") << emptied << " " << written;
            EXPECT_EQ(GetNumRecords(), Long(saved ? 3 : 2)) << emptied << " " << written;
        }
    }
    EXPECT_GT(calls, 5);
}

TEST_F(OvertakenSaveTest, AFileThatIsStillEmptyAtTheEndIsLeftToTheEditor) {
    setIni("");

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(ini(), "");
}

TEST_F(OvertakenSaveTest, AFileThatChangesAllTheTimeIsGivenUpAndTold) {
    int changes = 0;
    machine.files.meanwhile = [&](const std::string& operation, const std::string&) {
        if (operation == "LastLook") {
            setIni(std::string(two) + "; " + std::to_string(++changes) + "\r\n");
        }
    };

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(changes, 5);
    EXPECT_EQ(ini(), std::string(two) + "; 5\r\n");
}

TEST_F(OvertakenSaveTest, TheIndexStaysAlsoWhereTheTotalsNeedNoRecord) {
    state().BytesSentTotal = 1;
    state().BytesRcvdTotal = 1;
    state().DurationTotal = 1;
    atCall(3, [this] { setIni(two); });

    EXPECT_TRUE(SaveState());

    machine.files.meanwhile = nullptr;
    EXPECT_EQ(GetDate(2), "r2");
}

TEST_F(OvertakenSaveTest, ABackupHoldsWhatWasAddedWhileItWasMade) {
    int copies = 0;
    std::string added;
    machine.files.meanwhile = [&](const std::string& operation, const std::string& path) {
        if (operation == "replace" && path != iniPath && ++copies == 1) {
            added = ini() + "; of another copy\r\n";
            setIni(added);
        }
    };

    EXPECT_TRUE(BackupINIFile());

    EXPECT_EQ(machine.files.file("C:\\Prog\\Tarvik.2026-11-16.ini"), added);
}

} // namespace
} // namespace tarvik
