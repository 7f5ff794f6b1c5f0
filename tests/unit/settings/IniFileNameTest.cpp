#include "settings/mdlSettings.h"
#include "settings/mdlSettingsDialog.h"
#include "settings/mdlSettingsLoad.h"
#include "settings/mdlSettingsLog.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

using IniFileNameTest = WorldTest;

struct NamingCase {
    const char* name;
    FileKind kind;
    bool create;
    const char* result;
    bool told;
};

class NamingTest : public WorldTest, public testing::WithParamInterface<NamingCase> {};

TEST_P(NamingTest, DependsOnWhatIsThereAndOnWhatMayBeMade) {
    if (GetParam().kind != FileKind::None) {
        machine.files.setKind(iniPath, GetParam().kind);
    }
    state().IniFileName = "before";
    if (GetParam().told) {
        expectWarning("Error: INI file exists as directory.");
    }

    SetIniFileName(GetParam().create, false);

    EXPECT_EQ(state().IniFileName, GetParam().result);
    EXPECT_EQ(machine.files.replacements, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Each, NamingTest,
    testing::Values(
        NamingCase{"NothingMayBeFound", FileKind::None, false, "before", false},
        NamingCase{"NothingMayBeMade", FileKind::None, true, "C:\\Prog\\Tarvik.ini", false},
        NamingCase{"FileMayBeFound", FileKind::File, false, "C:\\Prog\\Tarvik.ini", false},
        NamingCase{"FileMayBeMade", FileKind::File, true, "C:\\Prog\\Tarvik.ini", false},
        NamingCase{"DirectoryMayBeFound", FileKind::Directory, false, "before", true},
        NamingCase{"DirectoryMayBeMade", FileKind::Directory, true, "before", true},
        NamingCase{"DeviceMayBeFound", FileKind::Other, false, "before", false},
        NamingCase{"DeviceMayBeMade", FileKind::Other, true, "C:\\Prog\\Tarvik.ini", false}),
    [](const auto& given) { return given.param.name; });

struct FolderCase {
    const char* folder;
    char separator;
    const char* result;
};

class FolderTest : public WorldTest, public testing::WithParamInterface<FolderCase> {};

TEST_P(FolderTest, IsFollowedByOneSeparatorAndTheName) {
    machine.program.folderPath = GetParam().folder;
    machine.program.separator = GetParam().separator;

    SetIniFileName(true, false);

    EXPECT_EQ(state().IniFileName, GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Each, FolderTest,
    testing::Values(FolderCase{"C:\\", '\\', "C:\\Tarvik.ini"},
                    FolderCase{"C:\\Prog Files", '\\', "C:\\Prog Files\\Tarvik.ini"},
                    FolderCase{"\\\\host\\share\\", '\\', "\\\\host\\share\\Tarvik.ini"},
                    FolderCase{"/", '/', "/Tarvik.ini"},
                    FolderCase{"/opt/tarvik", '/', "/opt/tarvik/Tarvik.ini"},
                    FolderCase{"/strange\\", '/', "/strange\\/Tarvik.ini"}));

class AskingTest : public WorldTest, public testing::WithParamInterface<bool> {};

TEST_P(AskingTest, LooksAtNothingButTheUsersChoice) {
    machine.files.setKind(iniPath, FileKind::Directory);
    machine.dialogs.chosen = "D:\\gone.ini";

    SetIniFileName(GetParam(), true);

    EXPECT_EQ(state().IniFileName, "D:\\gone.ini");
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutCreating, AskingTest, testing::Bool());

TEST_F(IniFileNameTest, TheDialogStartsEmptyWithTheFirstFilter) {
    SetIniFileName(false, true);

    EXPECT_EQ(machine.dialogs.seen.nFilterIndex, 1U);
    EXPECT_EQ(machine.dialogs.seen.Flags, 0x8100DU);
    EXPECT_EQ(machine.dialogs.seen.lpstrDefExt, nullptr);
    EXPECT_EQ(machine.dialogs.filter,
              std::string("INI files *.ini\0*.ini\0All files *.*\0*.*\0\0", 41));
}

TEST_F(IniFileNameTest, TheDialogStartsInTheProgramsFolder) {
    machine.program.folderPath = "E:\\";

    SetIniFileName(false, true);

    EXPECT_EQ(machine.dialogs.initialFolder, "E:\\");
}

TEST_F(IniFileNameTest, AnyOtherFailureOfTheDialogIsToldToo) {
    machine.dialogs.chosen = "D:\\chosen.ini";
    machine.dialogs.extendedError = 0xFFFF;
    expectWarning("Assertion failure in function \"ShowIniFileDialog\".");

    EXPECT_EQ(ShowIniFileDialog(), "");
}

class ReturningTest : public WorldTest {
protected:
    ReturningTest() {
        setIni("[Settings]\r\nDurationLimitHr=3\r\n");
        machine.files.setFile(other, "[Settings]\r\nIsLocked=1\r\nDurationLimitHr=9\r\n");
        state().IniFileName = other;
    }

    static constexpr const char* other = "D:\\Old.ini";
};

TEST_F(ReturningTest, ReadingTheFlagGoesBackToTheProgramsFile) {
    EXPECT_FALSE(GetLocked());

    EXPECT_EQ(state().IniFileName, iniPath);
}

TEST_F(ReturningTest, LoadingGoesBackToTheProgramsFile) {
    EXPECT_TRUE(LoadState());

    EXPECT_EQ(state().IniFileName, iniPath);
    EXPECT_EQ(state().DurationLimitHr, Long(3));
}

TEST_F(ReturningTest, SavingGoesBackToTheProgramsFile) {
    state().BytesSentTotal = 1;

    EXPECT_TRUE(SaveState());

    EXPECT_NE(ini().find("LastDateStamp=1\r\n"), std::string::npos);
    EXPECT_EQ(machine.files.file(other), "[Settings]\r\nIsLocked=1\r\nDurationLimitHr=9\r\n");
}

TEST_F(ReturningTest, SavingMakesTheProgramsFileIfItIsGone) {
    machine.files.remove(iniPath);

    EXPECT_TRUE(SaveState());

    EXPECT_TRUE(machine.files.exists(iniPath));
}

TEST_F(ReturningTest, TheFlagIsWrittenToTheFileInUse) {
    EXPECT_TRUE(SetLocked(false));

    EXPECT_EQ(machine.files.file(other), "[Settings]\r\nIsLocked=0\r\nDurationLimitHr=9\r\n");
    EXPECT_EQ(ini(), "[Settings]\r\nDurationLimitHr=3\r\n");
}

TEST_F(ReturningTest, TheSettingsAreWrittenToTheFileInUse) {
    EXPECT_TRUE(SaveSettings());

    EXPECT_NE(machine.files.file(other).find("TransferTickerValue=0\r\n"), std::string::npos);
    EXPECT_EQ(ini(), "[Settings]\r\nDurationLimitHr=3\r\n");
}

TEST_F(IniFileNameTest, WithoutANameTheSettingsCannotBeWritten) {
    EXPECT_FALSE(SaveSettings());

    EXPECT_EQ(machine.profile.written, std::vector<std::string>{"Settings/UnitTransferCurrent"});
}

} // namespace
} // namespace tarvik
