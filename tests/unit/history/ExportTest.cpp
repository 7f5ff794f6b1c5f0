#include "history/mdlHistoryExport.h"

#include "history/HistoryTest.h"
#include "wiring/frmHistoryEvents.h"

namespace tarvik {
namespace {

constexpr const char* header =
    "\"ID\";\"Date\";\"Time\";\"Duration\";\"Bytes sent\";\"Bytes rcvd\";\"IP address\"\r\n";
constexpr const char* exported = "All records have been successfully exported.";

class ExportTest : public HistoryTest {
protected:
    static constexpr const char* csvPath = "E:\\out.csv";

    ExportTest() { choose(csvPath); }

    void choose(const std::string& name, std::uint32_t filter = 0) {
        machine.dialogs.chosen = name;
        machine.dialogs.chosenFilter = filter;
    }

    /// The user exports, all goes well; what the file then holds.
    std::string exportedTo(const std::string& path) {
        expectInformation(exported);
        window().cmdExport.press();
        return machine.files.file(path);
    }
};

TEST_F(ExportTest, TheFileIsWrittenToTheByte) {
    import({{"12.05.2005|14:03:11", "123456", "987654", "760000", "10.0.0.1"},
            { "13.05.2005|09:10:00",
              "2048",
              "4096",
              "62000",
              "" }});

    EXPECT_EQ(exportedTo(csvPath),
              "\"ID\";\"Date\";\"Time\";\"Duration\";\"Bytes sent\";\"Bytes rcvd\";"
              "\"IP address\"\r\n"
              "1;12.05.2005;14:03:11;00:12:40:000;123456;987654;10.0.0.1\r\n"
              "2;13.05.2005;09:10:00;00:01:02:000;2048;4096;\r\n");
}

TEST_F(ExportTest, SuccessIsToldWhenTheFileIsThere) {
    import(numberedLog(1));
    bool there = false;
    expectInformation(exported, [&] { there = machine.files.exists(csvPath); });

    window().cmdExport.press();

    EXPECT_TRUE(there);
    EXPECT_EQ(machine.desktop.boxesShown.back().buttons, MsgBoxButtons::OkOnly);
}

TEST_F(ExportTest, TheDialogIsSetUp) {
    import(numberedLog(1));
    frmMain().cmdHistory.press();

    exportedTo(csvPath);

    const ScriptedDialogs& dialog = machine.dialogs;
    EXPECT_TRUE(dialog.saving);
    EXPECT_EQ(dialog.seen.Flags, 0x8000EU);
    EXPECT_EQ(dialog.seen.nFilterIndex, 1U);
    EXPECT_EQ(dialog.filter, std::string("CSV files *.csv\0*.csv\0All files *.*\0*.*\0\0", 41));
    EXPECT_EQ(dialog.title, "Export history as CSV...");
    EXPECT_EQ(dialog.initialFolder, "C:\\Prog");
    EXPECT_EQ(dialog.seen.lpstrDefExt, nullptr);
    EXPECT_EQ(dialog.buffer, std::string(2048, '\0'));
    EXPECT_EQ(dialog.seen.hwndOwner, reinterpret_cast<void*>(std::uintptr_t{window().hWnd()}));
}

struct NameCase {
    const char* chosen;
    std::uint32_t filter;
    const char* written;
};

class ExportNameTest : public ExportTest, public testing::WithParamInterface<NameCase> {};

TEST_P(ExportNameTest, IsTheFileThatIsWritten) {
    import(numberedLog(1));
    choose(GetParam().chosen, GetParam().filter);

    EXPECT_NE(exportedTo(GetParam().written), "");
    EXPECT_EQ(machine.files.replacements, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Each, ExportNameTest,
    testing::Values(NameCase{"a", 1, "a.csv"}, NameCase{"data.CSV", 1, "data.CSV"},
                    NameCase{"data.txt", 1, "data.txt.csv"}, NameCase{"data.txt", 2, "data.txt"},
                    NameCase{"E:\\a", 1, "E:\\a.csv"}, NameCase{"E:\\a.csv", 1, "E:\\a.csv"},
                    NameCase{"E:\\a.cSv", 1, "E:\\a.cSv"}, NameCase{"E:\\a", 2, "E:\\a"},
                    NameCase{"abcd", 1, "abcd.csv"}, NameCase{".csv", 1, ".csv.csv"},
                    NameCase{"a.csv", 1, "a.csv"}, NameCase{"abcsv", 1, "abcsv.csv"},
                    NameCase{"E:\\a.csv.txt", 1, "E:\\a.csv.txt.csv"},
                    NameCase{"E:\\a.csv.", 1, "E:\\a.csv..csv"},
                    NameCase{"  E:\\a.csv  ", 1, "E:\\a.csv"}, NameCase{"  a  ", 1, "a.csv"},
                    NameCase{"  a.txt ", 2, "a.txt"}, NameCase{" .csv", 1, ".csv.csv"},
                    NameCase{"E:\\a.csv", 2, "E:\\a.csv"}, NameCase{"E:\\a", 3, "E:\\a"}));

TEST_F(ExportTest, ANameOfBlanksIsNotCompletedWithoutTheFilter) {
    import(numberedLog(1));
    choose("  ", 2);
    machine.files.replaceFailure = ErrorNumber::PathNotFound;
    expectError("76 (Path not found)", "cmdExport_Click");

    window().cmdExport.press();

    EXPECT_EQ(machine.files.replacements, 1);
}

TEST_F(ExportTest, CancellingTheDialogDoesNothing) {
    import(numberedLog(2));
    choose("");
    machine.desktop.boxesShown.clear();
    const Texts before = everything();

    window().cmdExport.press();

    EXPECT_EQ(machine.files.replacements, 0);
    EXPECT_TRUE(machine.desktop.boxesShown.empty());
    EXPECT_EQ(everything(), before);
}

TEST_F(ExportTest, AnyOtherFailureOfTheDialogIsTold) {
    import(numberedLog(2));
    machine.dialogs.extendedError = 0xFFFF;
    expectWarning("Assertion failure in function \"cmdExport_Click\".");

    window().cmdExport.press();

    EXPECT_EQ(machine.files.replacements, 0);
}

TEST_F(ExportTest, AnExistingFileIsReplaced) {
    machine.files.setFile(csvPath, std::string(5000, 'x'));
    import({{ "a|b", "1", "2", "3", "x" }});

    EXPECT_EQ(exportedTo(csvPath), std::string(header) + "1;a;b;00:00:00:003;1;2;x\r\n");
}

/// A name that is typed while there is a file that it would become.
struct TypedName {
    const char* typed;
    std::uint32_t filter;
    const char* written;
    char separator = '\\';
};

class CompletedNameTest : public ExportTest, public testing::WithParamInterface<TypedName> {
protected:
    CompletedNameTest() {
        import(numberedLog(1));
        machine.program.separator = GetParam().separator;
        choose(GetParam().typed, GetParam().filter);
        machine.files.setFile(GetParam().written, "old");
    }

    void expectQuestion(MsgBoxAnswer answer) {
        expectBox("history.csv already exists.\rDo you want to replace it?", MsgBoxButtons::YesNo,
                  MsgBoxIcon::Exclamation, answer);
    }
};

TEST_P(CompletedNameTest, IsAskedAboutBeforeItsFileIsReplaced) {
    expectQuestion(MsgBoxAnswer::Yes);

    EXPECT_NE(exportedTo(GetParam().written), "old");
}

TEST_P(CompletedNameTest, KeepsItsFileWhenTheUserSaysNo) {
    expectQuestion(MsgBoxAnswer::No);
    const Texts before = everything();

    window().cmdExport.press();

    EXPECT_EQ(machine.files.file(GetParam().written), "old");
    EXPECT_EQ(machine.files.replacements, 0);
    EXPECT_EQ(everything(), before);
}

TEST_P(CompletedNameTest, MayBeAnotherOneAfterTheUserSaysNo) {
    expectQuestion(MsgBoxAnswer::No);
    machine.dialogs.chosenAgain = "other.csv";

    EXPECT_NE(exportedTo("other.csv"), "");

    EXPECT_EQ(machine.files.file(GetParam().written), "old");
    EXPECT_EQ(machine.files.replacements, 1);
}

INSTANTIATE_TEST_SUITE_P(Each, CompletedNameTest,
                         testing::Values(TypedName{"E:\\history", 1, "E:\\history.csv"},
                                         TypedName{"/mnt/history", 1, "/mnt/history.csv", '/'},
                                         TypedName{" history ", 1, "history.csv"}));

TEST_F(ExportTest, ALineBreakInANameIsToldInTheQuestion) {
    import(numberedLog(1));
    choose("E:\\a\nb\r", 1);
    machine.files.setFile("E:\\a\nb\r.csv", "old");
    expectBox("a[U+000A]b[U+000D].csv already exists.\rDo you want to replace it?",
              MsgBoxButtons::YesNo, MsgBoxIcon::Exclamation, MsgBoxAnswer::Yes);

    EXPECT_NE(exportedTo("E:\\a\nb\r.csv"), "old");
}

TEST_F(ExportTest, WhatSeparatesNoFoldersHereBelongsToTheNameInTheQuestion) {
    import(numberedLog(1));
    machine.program.separator = '/';
    choose("/mnt/a\\b", 1);
    machine.files.setFile("/mnt/a\\b.csv", "old");
    expectBox("a\\b.csv already exists.\rDo you want to replace it?", MsgBoxButtons::YesNo,
              MsgBoxIcon::Exclamation, MsgBoxAnswer::Yes);

    EXPECT_NE(exportedTo("/mnt/a\\b.csv"), "old");
}

TEST_F(ExportTest, AFolderOfTheCompletedNameCannotBeReplacedAndIsNotAskedAbout) {
    import(numberedLog(1));
    choose("E:\\a", 1);
    machine.files.setKind("E:\\a.csv", FileKind::Directory);
    machine.files.replaceFailure = ErrorNumber::PathFileAccess;
    expectError("75 (Path/File access error)", "cmdExport_Click");

    window().cmdExport.press();
}

TEST_F(ExportTest, ANarrowedRangeExportsAllRecords) {
    import(numberedLog(3));
    select(2);
    expectInformation("History diagram has been updated.");
    window().cmdSetStart.press();
    expectInformation("History diagram has been updated.");
    window().cmdSetStop.press();

    EXPECT_EQ(exportedTo(csvPath), std::string(header) +
                                       "1;d1;t1;00:00:00:001;8001;9001;10.0.0.1\r\n"
                                       "2;d2;t2;00:00:00:002;8002;9002;10.0.0.2\r\n"
                                       "3;d3;t3;00:00:00:003;8003;9003;10.0.0.3\r\n");
}

struct LineCase {
    const char* name;
    LoggedRecord record;
    const char* line;
};

class LineTest : public ExportTest, public testing::WithParamInterface<LineCase> {};

TEST_P(LineTest, IsWritten) {
    machine.locale.conventions = germanLocale();
    import({GetParam().record});

    EXPECT_EQ(exportedTo(csvPath), std::string(header) + GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    Each, LineTest,
    testing::Values(
        LineCase{"WithoutDate", {"|t", "1", "2", "3", "x"}, "1;;t;00:00:00:003;1;2;x\r\n"},
        LineCase{"WithoutTime", {"d|", "1", "2", "3", "x"}, "1;d;;00:00:00:003;1;2;x\r\n"},
        LineCase{"WithNothing", {"|", "", "", "", ""}, "1;;;00:00:00:000;0;0;\r\n"},
        LineCase{"WithLargeNumbers",
                 {"d|t", "922337203685477", "4294967296", "360000000", "x"},
                 "1;d;t;100:00:00:000;922337203685477;4294967296;x\r\n"},
        LineCase{"WithFractions",
                 {"d|t", "1,5", "1234567,25", "3", "x"},
                 "1;d;t;00:00:00:003;1,5;1234567,25;x\r\n"},
        LineCase{"WithASemicolonThatShiftsItsColumns",
                 {"d|t", "1", "2", "3", "10.0.0.1;10.0.0.2"},
                 "1;d;t;00:00:00:003;1;2;10.0.0.1;10.0.0.2\r\n"},
        LineCase{"WithQuotesAsTheyAre",
                 {"d\"|t", "1", "2", "3", "\"x"},
                 "1;d\";t;00:00:00:003;1;2;\"x\r\n"},
        LineCase{"WithBytesOfTheCodePage",
                 {"M\xE4rz|t", "1", "2", "3", "caf\xE9"},
                 "1;M\xE4rz;t;00:00:00:003;1;2;caf\xE9\r\n"}),
    [](const auto& given) { return given.param.name; });

class FailingExportTest : public ExportTest, public testing::WithParamInterface<ErrorNumber> {};

TEST_P(FailingExportTest, IsToldAndLeavesTheOldFile) {
    import(numberedLog(2));
    machine.files.setFile(csvPath, "old");
    machine.files.replaceFailure = GetParam();
    expectError(std::to_string(static_cast<int>(GetParam())) + " (" + descriptionOf(GetParam()) +
                    ")",
                "cmdExport_Click");

    window().cmdExport.press();

    EXPECT_EQ(machine.files.file(csvPath), "old");
}

INSTANTIATE_TEST_SUITE_P(Each, FailingExportTest,
                         testing::Values(ErrorNumber::DiskFull, ErrorNumber::PermissionDenied,
                                         ErrorNumber::PathFileAccess, ErrorNumber::PathNotFound));

TEST_F(ExportTest, AFullDiskIsToldToTheLetter) {
    import(numberedLog(2));
    machine.files.replaceFailure = ErrorNumber::DiskFull;
    expectBox("Error 61 (Disk full)\roccured in function \"cmdExport_Click\".\rPlease contact the "
              "author for support.",
              MsgBoxButtons::OkOnly, MsgBoxIcon::Critical);

    window().cmdExport.press();

    EXPECT_FALSE(machine.files.exists(csvPath));
}

TEST_F(ExportTest, AReadOnlyFileStays) {
    import(numberedLog(2));
    machine.files.setFile(csvPath, "old");
    machine.files.setReadOnly(csvPath);
    expectError("70 (Permission denied)", "cmdExport_Click");

    window().cmdExport.press();

    EXPECT_EQ(machine.files.file(csvPath), "old");
}

TEST_F(ExportTest, ADirectoryOfThatNameStays) {
    import(numberedLog(2));
    machine.files.setKind(csvPath, FileKind::Directory);
    expectError("75 (Path/File access error)", "cmdExport_Click");

    window().cmdExport.press();

    EXPECT_EQ(machine.files.Dir(csvPath), FileKind::Directory);
}

TEST_F(ExportTest, AfterAFailureTheNextOneWorks) {
    import(numberedLog(1));
    machine.files.replaceFailure = ErrorNumber::DiskFull;
    expectError("61 (Disk full)", "cmdExport_Click");
    window().cmdExport.press();
    machine.files.replaceFailure.reset();

    EXPECT_EQ(exportedTo(csvPath),
              std::string(header) + "1;d1;t1;00:00:00:001;8001;9001;10.0.0.1\r\n");
}

TEST_F(ExportTest, WithoutImportedRecordsItsButtonDoesNothing) {
    window().cmdExport.press();

    EXPECT_EQ(machine.dialogs.title, "");
    EXPECT_EQ(machine.files.replacements, 0);
}

TEST_F(ExportTest, WithoutImportedRecordsItIsAnError) {
    expectError("9 (Subscript out of range)", "cmdExport_Click");

    cmdExport_Click();

    EXPECT_EQ(machine.dialogs.title, "Export history as CSV...");
    EXPECT_EQ(machine.files.file(csvPath), "");
}

TEST_F(ExportTest, WithoutImportedRecordsCancellingIsNoError) {
    choose("");

    cmdExport_Click();

    EXPECT_TRUE(machine.desktop.boxesShown.empty());
}

TEST_F(ExportTest, AfterAnImportThatFoundNothingTheEarlierRecordsAreStillThere) {
    import({{ "a|b", "1", "2", "3", "x" }});
    setIni("[Settings]\r\n");
    importNothing();
    expectInformation(exported);

    cmdExport_Click();

    EXPECT_EQ(machine.files.file(csvPath), std::string(header) + "1;a;b;00:00:00:003;1;2;x\r\n");
}

TEST_F(ExportTest, AnExportChangesNothingInTheWindow) {
    import(numberedLog(3));
    select(2);
    const Texts before = everything();

    exportedTo(csvPath);

    EXPECT_EQ(everything(), before);
}

TEST_F(ExportTest, TheFileIsWrittenOnceWhileTheWindowsStayAlive) {
    import(numberedLog(3));
    int replacementsBefore = -1;
    machine.desktop.whileBlocking = [&] { replacementsBefore = machine.files.replacements; };

    exportedTo(csvPath);

    EXPECT_EQ(machine.desktop.blockingCalls, 1);
    EXPECT_EQ(replacementsBefore, 0);
    EXPECT_EQ(machine.files.replacements, 1);
}

TEST_F(ExportTest, ARecordReadInVainIsExportedAsFarAsItWasRead) {
    import(numberedLog(2));
    setIni(fileOf({{"1.1.26|8:00", "1", "2", "3", "10.0.0.1"}, {"no bar", "7", "8", "5", ""}}));
    expectQuestion(MsgBoxAnswer::Yes);
    expectError("5 (Invalid procedure call or argument)", "ImportHistory");
    window().cmdImport.press();
    expectInformation(exported);

    cmdExport_Click();

    EXPECT_EQ(machine.files.file(csvPath), std::string(header) +
                                               "1;1.1.26;8:00;00:00:00:003;1;2;10.0.0.1\r\n"
                                               "2;;;00:00:00:005;7;8;\r\n");
}

} // namespace
} // namespace tarvik
