#include "dialogs/clsFileDialog.h"

#include "support/WorldTest.h"

#include <array>

namespace tarvik {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

class FileDialogTest : public WorldTest {
protected:
    ScriptedDialogs& shown() { return machine.dialogs; }

    /// Shows the dialog; the user chooses that.
    void choose(const std::string& selection) {
        shown().chosen = selection;
        dialog.ShowOpen();
    }
    /// The same where several files may be chosen.
    void chooseSeveral(const std::string& selection) {
        dialog.MultiSelect = true;
        dialog.SetFlag(DialogFlag::Flag_AllowMultiselect, true);
        dialog.SetFlag(DialogFlag::Flag_Explorer, true);
        choose(selection);
    }

    clsFileDialog dialog;
};

struct FlagCase {
    const char* name;
    DialogFlag flag;
    std::uint32_t bit;
};

constexpr std::array<FlagCase, 18> flagCases{{
    {"ReadOnly", DialogFlag::Flag_ReadOnly, 0x1},
    {"OverwritePrompt", DialogFlag::Flag_OverwritePrompt, 0x2},
    {"HideReadOnly", DialogFlag::Flag_HideReadOnly, 0x4},
    {"NoChangeDir", DialogFlag::Flag_NoChangeDir, 0x8},
    {"HelpButton", DialogFlag::Flag_HelpButton, 0x10},
    {"NoValidate", DialogFlag::Flag_NoValidate, 0x100},
    {"AllowMultiselect", DialogFlag::Flag_AllowMultiselect, 0x200},
    {"ExtensionDifferent", DialogFlag::Flag_ExtensionDifferent, 0x400},
    {"PathMustExist", DialogFlag::Flag_PathMustExist, 0x800},
    {"FileMustExist", DialogFlag::Flag_FileMustExist, 0x1000},
    {"CreatePrompt", DialogFlag::Flag_CreatePrompt, 0x2000},
    {"ShareAware", DialogFlag::Flag_ShareAware, 0x4000},
    {"NoReadOnlyReturn", DialogFlag::Flag_NoReadOnlyReturn, 0x8000},
    {"NoNetworkButton", DialogFlag::Flag_NoNetworkButton, 0x20000},
    {"NoLongNames", DialogFlag::Flag_NoLongNames, 0x40000},
    {"Explorer", DialogFlag::Flag_Explorer, 0x80000},
    {"NoDereferenceLinks", DialogFlag::Flag_NoDereferenceLinks, 0x100000},
    {"LongNames", DialogFlag::Flag_LongNames, 0x200000},
}};

constexpr std::uint32_t allBits = 0x3EFF1F;

class DialogFlagTest : public FileDialogTest, public testing::WithParamInterface<FlagCase> {
protected:
    void setAll() {
        for (const FlagCase& each : flagCases) {
            dialog.SetFlag(each.flag, true);
        }
    }
};

TEST_P(DialogFlagTest, SetIsItsBitAlone) {
    dialog.SetFlag(GetParam().flag, true);

    dialog.ShowOpen();

    EXPECT_EQ(shown().seen.Flags, GetParam().bit);
    for (const FlagCase& each : flagCases) {
        EXPECT_EQ(dialog.GetFlag(each.flag), each.flag == GetParam().flag) << each.name;
    }
}

TEST_P(DialogFlagTest, ClearedIsMissingAlone) {
    setAll();

    dialog.SetFlag(GetParam().flag, false);
    dialog.ShowOpen();

    EXPECT_EQ(shown().seen.Flags, allBits & ~GetParam().bit);
    EXPECT_FALSE(dialog.GetFlag(GetParam().flag));
}

TEST_P(DialogFlagTest, SetTwiceStaysSetAndClearedTwiceStaysCleared) {
    dialog.SetFlag(GetParam().flag, true);
    dialog.SetFlag(GetParam().flag, true);
    EXPECT_EQ(dialog.Flags(), GetParam().bit);
    dialog.SetFlag(GetParam().flag, false);

    dialog.SetFlag(GetParam().flag, false);

    EXPECT_EQ(dialog.Flags(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Each, DialogFlagTest, testing::ValuesIn(flagCases),
                         [](const auto& given) { return std::string(given.param.name); });

TEST_F(FileDialogTest, NothingIsSetInANewDialog) {
    dialog.ShowOpen();

    EXPECT_EQ(shown().seen.Flags, 0U);
    EXPECT_EQ(shown().seen.nFilterIndex, 1U);
    EXPECT_EQ(shown().seen.lpstrFilter, nullptr);
    EXPECT_EQ(shown().seen.lpstrInitialDir, nullptr);
    EXPECT_EQ(shown().seen.lpstrTitle, nullptr);
    EXPECT_EQ(shown().seen.lpstrDefExt, nullptr);
    EXPECT_EQ(shown().seen.hwndOwner, nullptr);
    EXPECT_EQ(shown().buffer, std::string(2048, '\0'));
}

TEST_F(FileDialogTest, TheRecordIsTheOldestOneWithItsTwoBuffers) {
    dialog.ShowOpen();

    EXPECT_EQ(shown().seen.lStructSize, 76U);
    EXPECT_EQ(shown().seen.nMaxFile, 2048U);
    EXPECT_EQ(shown().seen.nMaxFileTitle, 260U);
    EXPECT_NE(shown().seen.lpstrFileTitle, nullptr);
}

TEST_F(FileDialogTest, TheFilterHasNulsBetweenItsPartsAndTwoAtItsEnd) {
    dialog.Filter = "CSV files *.csv|*.csv|All files *.*|*.*";

    dialog.ShowOpen();

    EXPECT_EQ(shown().filter, "CSV files *.csv\0*.csv\0All files *.*\0*.*\0\0"s);
    EXPECT_EQ(dialog.Filter, "CSV files *.csv|*.csv|All files *.*|*.*");
}

TEST_F(FileDialogTest, TitleFolderAndExtensionAreHandedOn) {
    dialog.DialogTitle = "Export...";
    dialog.InitDir = "D:\\Data";
    dialog.DefaultExt = "csv";

    dialog.ShowOpen();

    EXPECT_EQ(shown().title, "Export...");
    EXPECT_EQ(shown().initialFolder, "D:\\Data");
    EXPECT_EQ(shown().defaultExtension, "csv");
}

TEST_F(FileDialogTest, TheSelectedFilterIsHandedOn) {
    dialog.FilterIndex = 2;

    choose("C:\\a.ini");

    EXPECT_EQ(shown().seen.nFilterIndex, 2U);
    EXPECT_EQ(dialog.FilterIndex, 2U);
}

TEST_F(FileDialogTest, TheFilterThatTheUserChangedToIsToldAfterwards) {
    dialog.FilterIndex = 2;
    shown().chosenFilter = 3;

    choose("C:\\a.ini");

    EXPECT_EQ(dialog.FilterIndex, 3U);
}

TEST_F(FileDialogTest, TheProposedNameStandsInTheBuffer) {
    dialog.FileName = "C:\\Prog\\proposed.csv";

    dialog.ShowOpen();

    EXPECT_EQ(shown().buffer, "C:\\Prog\\proposed.csv" + std::string(2028, '\0'));
}

TEST_F(FileDialogTest, TheLongestProposedNameLeavesRoomForANul) {
    dialog.FileName = std::string(2047, 'x');

    dialog.ShowOpen();

    EXPECT_EQ(shown().buffer, std::string(2047, 'x') + '\0');
}

TEST_F(FileDialogTest, AProposedNameThatDoesNotFitIsNotShown) {
    dialog.FileName = std::string(2048, 'x');

    dialog.ShowOpen();

    EXPECT_EQ(shown().seen.lStructSize, 0U);
    EXPECT_EQ(dialog.DialogError().Number(), 0x3003U);
    EXPECT_EQ(dialog.DialogError().Description(), "Buffer too small.\r\nPlease select less files.");
}

TEST_F(FileDialogTest, OpeningShowsTheDialogForOpening) {
    shown().saving = true;

    dialog.ShowOpen();

    EXPECT_FALSE(shown().saving);
    EXPECT_EQ(shown().seen.lStructSize, 76U);
}

TEST_F(FileDialogTest, SavingShowsTheDialogForSavingWithTheSameProperties) {
    dialog.Filter = "CSV|*.csv";
    dialog.DefaultExt = "csv";
    dialog.SetFlag(DialogFlag::Flag_OverwritePrompt, true);
    shown().chosen = "C:\\out.csv";

    dialog.ShowSave();

    EXPECT_TRUE(shown().saving);
    EXPECT_EQ(shown().filter, "CSV\0*.csv\0\0"s);
    EXPECT_EQ(shown().defaultExtension, "csv");
    EXPECT_EQ(shown().seen.Flags, 0x2U);
    EXPECT_EQ(dialog.FileName, "C:\\out.csv");
}

// What was chosen.

TEST_F(FileDialogTest, AChosenFileIsTakenApart) {
    shown().chosenTitle = "Tarvik.ini";

    choose("C:\\Old\\Data\\Tarvik.ini");

    EXPECT_EQ(dialog.FileName, "C:\\Old\\Data\\Tarvik.ini");
    EXPECT_EQ(dialog.FilePath, "C:\\Old\\Data");
    EXPECT_EQ(dialog.FileTitle, "Tarvik.ini");
    EXPECT_EQ(dialog.FileList, Texts{});
}

TEST_F(FileDialogTest, TheTitleIsTheOneThatTheDialogTells) {
    shown().chosenTitle = "Tarvik";

    choose("C:\\Old\\Tarvik.ini");

    EXPECT_EQ(dialog.FileTitle, "Tarvik");
}

TEST_F(FileDialogTest, AMissingTitleIsTheNameWithoutItsFolder) {
    choose("C:\\Old\\Tarvik.ini");

    EXPECT_EQ(dialog.FileTitle, "Tarvik.ini");
}

TEST_F(FileDialogTest, ALongerProposedNameLeavesNothingBehindTheChosenOne) {
    dialog.FileName = "C:\\Somewhere\\with a long name.ini";

    choose("D:\\a.ini");

    EXPECT_EQ(dialog.FileName, "D:\\a.ini");
    EXPECT_EQ(dialog.FilePath, "D:\\");
    EXPECT_EQ(dialog.FileTitle, "a.ini");
}

struct FolderCase {
    const char* name;
    const char* chosen;
    char separator;
    const char* folder;
    const char* title;
};

class FolderOfChoiceTest : public FileDialogTest, public testing::WithParamInterface<FolderCase> {};

TEST_P(FolderOfChoiceTest, EndsWithASeparatorOnlyWhereItIsARoot) {
    machine.program.separator = GetParam().separator;

    choose(GetParam().chosen);

    EXPECT_EQ(dialog.FilePath, GetParam().folder);
    EXPECT_EQ(dialog.FileTitle, GetParam().title);
}

INSTANTIATE_TEST_SUITE_P(
    Each, FolderOfChoiceTest,
    testing::Values(FolderCase{"DriveRoot", "C:\\a.ini", '\\', "C:\\", "a.ini"},
                    FolderCase{"Drive", "C:\\Old\\a.ini", '\\', "C:\\Old", "a.ini"},
                    FolderCase{"Share", "\\\\server\\share\\a.ini", '\\', "\\\\server\\share",
                               "a.ini"},
                    FolderCase{"Root", "/a.ini", '/', "/", "a.ini"},
                    FolderCase{"Directory", "/srv/me/a.ini", '/', "/srv/me", "a.ini"},
                    FolderCase{"BackslashInAName", "/old\\a.ini", '/', "/", "old\\a.ini"},
                    FolderCase{"None", "a.ini", '\\', "", "a.ini"}),
    [](const auto& given) { return given.param.name; });

TEST_F(FileDialogTest, SeveralChosenFilesAreListedWithTheirFolderBeside) {
    chooseSeveral("C:\\Old\0a.ini\0b.ini\0c.ini"s);

    EXPECT_EQ(dialog.FilePath, "C:\\Old");
    EXPECT_EQ(dialog.FileList, (Texts{"a.ini", "b.ini", "c.ini"}));
    EXPECT_EQ(dialog.DialogError().Number(), 0U);
}

TEST_F(FileDialogTest, SeveralChosenFilesOfARootKeepItsSeparator) {
    chooseSeveral("C:\\\0a.ini\0b.ini"s);

    EXPECT_EQ(dialog.FilePath, "C:\\");
    EXPECT_EQ(dialog.FileList, (Texts{"a.ini", "b.ini"}));
}

TEST_F(FileDialogTest, SeveralChosenFilesEndWhereTheSelectionEnds) {
    dialog.FileName = std::string(200, 'x');

    chooseSeveral("C:\\Old\0a.ini\0b.ini"s);

    EXPECT_EQ(dialog.FileList, (Texts{"a.ini", "b.ini"}));
}

TEST_F(FileDialogTest, OneChosenFileOfSeveralPossibleIsTakenApartAndListed) {
    dialog.FileName = std::string(200, 'x');

    chooseSeveral("C:\\Old\\a.ini");

    EXPECT_EQ(dialog.FileName, "C:\\Old\\a.ini");
    EXPECT_EQ(dialog.FilePath, "C:\\Old");
    EXPECT_EQ(dialog.FileTitle, "a.ini");
    EXPECT_EQ(dialog.FileList, Texts{"a.ini"});
}

TEST_F(FileDialogTest, TheNextSingleChoiceForgetsTheList) {
    chooseSeveral("C:\\Old\0a.ini\0b.ini"s);
    dialog.MultiSelect = false;
    dialog.SetFlag(DialogFlag::Flag_AllowMultiselect, false);
    dialog.FileName.clear();

    choose("C:\\Old\\c.ini");

    EXPECT_EQ(dialog.FileList, Texts{});
    EXPECT_EQ(dialog.FileName, "C:\\Old\\c.ini");
}

} // namespace
} // namespace tarvik
