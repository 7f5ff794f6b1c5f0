#include "settings/mdlSettings.h"
#include "settings/mdlSettingsBackup.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

constexpr const char* notLoaded = "Warning: Old settings could not be loaded.\rAssuming first run.";
constexpr const char* notSaved = "Warning: State could not be saved.";
constexpr const char* years = "[Settings]\r\nIsLocked=0\r\nLastState=r\r\nDateStamp1=r\r\n"
                              "LastDateStamp=1\r\nRefreshInterval=200\r\n"
                              "[r]\r\nSent=5\r\nRcvd=7\r\nDuration=9\r\n";

/// A file that is out of reach when it is to be loaded, and within reach before and after.
class UnreadFileTest : public WorldTest {
protected:
    UnreadFileTest() {
        phoneBook({"Harbour"});
        setIni(years);
    }

    int looks = 0;

    void startWithFileOutOfReach() {
        int locks = 0;
        machine.files.meanwhile = [this, locks](const std::string& operation,
                                                const std::string&) mutable {
            locks += operation == "LastLook" ? 1 : 0;
            const bool lockedJustNow = locks == 1 && operation == "read";
            machine.files.readFailure =
                lockedJustNow ? FileResult(ErrorNumber::PermissionDenied) : std::nullopt;
        };
        expectWarning(notLoaded);
        start();
        machine.files.meanwhile = nullptr;
        machine.files.readFailure = std::nullopt;
    }
};

TEST_F(UnreadFileTest, TheRunSaysSoAndKeepsTheDefaults) {
    startWithFileOutOfReach();

    EXPECT_EQ(state().RefreshInterval, Long(1000));
    EXPECT_EQ(state().DurationLimitHr, Long(600));
    EXPECT_NE(ini().find("IsLocked=1\r\n"), std::string::npos);
}

TEST_F(UnreadFileTest, NeitherSettingsNorTotalsAreWrittenOverIt) {
    startWithFileOutOfReach();
    state().BytesRcvdTotal = 77;
    expectWarning(notSaved);

    frmMain().cmdQuit.press();

    EXPECT_EQ(ini(), years);
}

TEST_F(UnreadFileTest, ItIsNotMovedAsideEither) {
    startWithFileOutOfReach();

    EXPECT_FALSE(BackupINIFile());

    EXPECT_TRUE(machine.files.exists(iniPath));
    EXPECT_FALSE(machine.files.exists("C:\\Prog\\Tarvik.2026-11-16.ini"));
}

TEST_F(UnreadFileTest, TheNextRunFindsEverything) {
    startWithFileOutOfReach();
    expectWarning(notSaved);
    frmMain().cmdQuit.press();
    newWorld();

    start();

    EXPECT_EQ(state().RefreshInterval, Long(200));
    EXPECT_EQ(state().BytesRcvdTotal, Currency(7));
    EXPECT_TRUE(SaveState());
}

TEST_F(UnreadFileTest, AFileThatCannotEvenBeLookedAtIsNoFirstRun) {
    machine.files.setKind(iniPath, FileKind::Other);
    expectWarning("Warning: Unable to set \"IsLocked\"-flag in INI-file!");
    expectWarning(notLoaded);
    start();
    setIni(years);

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(ini(), years);
}

TEST_F(UnreadFileTest, AFileThatOnlyTheSecondLookFindsIsNoFirstRun) {
    state().IniFileName.clear();
    machine.files.setKind(iniPath, FileKind::Other);
    machine.files.meanwhile = [this](const std::string& operation, const std::string&) {
        if (operation == "Dir" && ++looks == 2) {
            setIni(years);
        }
    };
    expectWarning(notLoaded);
    InitApplicationStatus();
    machine.files.meanwhile = nullptr;

    EXPECT_FALSE(SaveState());

    EXPECT_EQ(looks, 2);
    EXPECT_EQ(ini(), years);
}

TEST_F(UnreadFileTest, AFirstRunIsSaved) {
    machine.files.remove(iniPath);
    expectFirstRunBoxes();
    start();
    state().BytesRcvdTotal = 77;

    EXPECT_TRUE(SaveState());

    EXPECT_EQ(GetNumRecords(), Long(1));
}

} // namespace
} // namespace tarvik
