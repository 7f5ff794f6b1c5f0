#include "history/mdlHistoryImport.h"

#include "common/ClosingAnswer.h"
#include "history/HistoryTest.h"
#include "history/mdlIPAddresses.h"
#include "wiring/frmHistoryEvents.h"

#include <algorithm>

namespace tarvik {
namespace {

using ImportTest = HistoryTest;

const Texts alwaysEnabled{"optHistory", "optStatistics", "optStatisticsIP", "cmdImport",
                          "cmdCancel"};

/// What needs imported records, in the order in which it is enabled or disabled.
const Texts toggled{"cboChartType",    "cboDataType",   "cboTransferUnit", "cboDataToShow",
                    "chkShowXLines",   "chkShowYLines", "lvwCompleteLog",  "cmdSetStart",
                    "cmdSetStop",      "cmdExport",     "txtCurrentStart", "txtCurrentStop",
                    "txtStatisticsIP", "cmdSortByIP",   "cmdSortByTime"};

Texts changesOf(const Texts& controls) {
    Texts changes;
    for (const std::string& name : controls) {
        changes.push_back("frmHistory." + name);
    }
    return changes;
}

/// Of some names, those that are in neither list.
Texts strangers(const Texts& names, const Texts& known, const Texts& alsoKnown = {}) {
    Texts result;
    for (const std::string& name : names) {
        if (std::count(known.begin(), known.end(), name) == 0 &&
            std::count(alsoKnown.begin(), alsoKnown.end(), name) == 0) {
            result.push_back(name);
        }
    }
    return result;
}

TEST_F(ImportTest, TheQuestionIsAskedToTheLetter) {
    expectQuestion(MsgBoxAnswer::Cancel);

    window().cmdImport.press();

    ASSERT_EQ(machine.desktop.boxesShown.size(), 1U);
    const MsgBoxRequest& box = machine.desktop.boxesShown.front();
    EXPECT_EQ(box.text, "Ok to import recorded transfers from the\rINI-file located in the "
                        "application folder?\r\r(Press \"No\" to select another file.)");
    EXPECT_EQ(box.buttons, MsgBoxButtons::YesNoCancel);
    EXPECT_EQ(box.icon, MsgBoxIcon::Question);
    EXPECT_EQ(box.caption, "Velmars Tarvik.");
}

TEST_F(ImportTest, TheFileIsNotKeptInMemoryOnceItIsImported) {
    import(numberedLog(3));
    const int before = machine.files.reads;

    EXPECT_EQ(GetNumRecords(), 3);

    EXPECT_EQ(machine.files.reads, before + 1);
}

TEST_F(ImportTest, AnsweringCancelLeavesEverythingAsItWas) {
    import(numberedLog(3));
    select(2);
    const Texts before = everything();
    setIni(fileOf(numberedLog(5)));
    state().IniFileName = "before";
    machine.desktop.changesTold.clear();
    expectQuestion(MsgBoxAnswer::Cancel);

    window().cmdImport.press();

    EXPECT_EQ(everything(), before);
    EXPECT_EQ(state().IniFileName, "before");
    EXPECT_EQ(machine.desktop.changesTold, Texts{});
}

TEST_F(ImportTest, ClosingTheQuestionLeavesEverythingAsItWas) {
    import(numberedLog(3));
    const Texts before = everything();
    setIni(fileOf(numberedLog(5)));
    expectQuestion(face::closingAnswer(MsgBoxButtons::YesNoCancel));

    window().cmdImport.press();

    EXPECT_EQ(everything(), before);
}

TEST_F(ImportTest, YesImportsFromTheProgramsFolder) {
    machine.files.setFile(otherPath, fileOf(numberedLog(5)));
    state().IniFileName = otherPath;

    import(numberedLog(2));

    EXPECT_EQ(window().lvwCompleteLog.rowCount(), 2);
    EXPECT_EQ(state().IniFileName, iniPath);
    EXPECT_EQ(machine.dialogs.title, "");
}

TEST_F(ImportTest, NoImportsFromTheFileThatTheUserPicks) {
    setIni(fileOf(numberedLog(2)));

    importPicked(numberedLog(5));

    EXPECT_EQ(window().lvwCompleteLog.rowCount(), 5);
    EXPECT_EQ(state().IniFileName, otherPath);
    EXPECT_FALSE(machine.dialogs.saving);
    EXPECT_EQ(machine.dialogs.seen.Flags, 0x8100DU);
    EXPECT_EQ(machine.dialogs.title, "Import history...");
    EXPECT_EQ(machine.dialogs.initialFolder, "C:\\Prog");
}

TEST_F(ImportTest, PickingNothingFindsNoRecords) {
    import(numberedLog(2));
    machine.dialogs.chosen.clear();
    expectQuestion(MsgBoxAnswer::No);
    expectNoRecords();

    window().cmdImport.press();

    EXPECT_FALSE(data().imported);
    EXPECT_EQ(state().IniFileName, "");
}

TEST_F(ImportTest, AFailingDialogIsToldAndFindsNoRecords) {
    setIni(fileOf(numberedLog(2)));
    machine.dialogs.chosen = otherPath;
    machine.dialogs.extendedError = 0x3002;
    expectQuestion(MsgBoxAnswer::No);
    expectWarning("Assertion failure in function \"ShowIniFileDialog\".");
    expectNoRecords();

    window().cmdImport.press();

    EXPECT_EQ(window().lvwCompleteLog.rowCount(), 0);
}

TEST_F(ImportTest, APickedFileThatCannotBeReadHasNoRecords) {
    machine.files.setFile(otherPath, fileOf(numberedLog(2)));
    machine.files.setUnreadable(otherPath);
    machine.dialogs.chosen = otherPath;
    expectQuestion(MsgBoxAnswer::No);
    expectNoRecords();

    window().cmdImport.press();

    EXPECT_EQ(window().lvwCompleteLog.rowCount(), 0);
}

TEST_F(ImportTest, WithoutAFileInTheProgramsFolderThereAreNoRecords) {
    machine.files.remove(iniPath);
    state().IniFileName.clear();

    importNothing();

    EXPECT_FALSE(data().imported);
}

TEST_F(ImportTest, ADirectoryInTheFilesPlaceIsToldOf) {
    machine.files.setKind(iniPath, FileKind::Directory);
    state().IniFileName.clear();
    expectQuestion(MsgBoxAnswer::Yes);
    expectWarning("Error: INI file exists as directory.");
    expectNoRecords();

    window().cmdImport.press();

    EXPECT_FALSE(data().imported);
}

class CountTest : public HistoryTest, public testing::WithParamInterface<const char*> {};

TEST_P(CountTest, BelowOneIsNoRecord) {
    setIni(std::string("[Settings]\r\nDateStamp1=a|b\r\n") + GetParam() +
           "\r\n[a|b]\r\nSent=1\r\n");
    expectQuestion(MsgBoxAnswer::Yes);
    expectNoRecords();

    window().cmdImport.press();

    EXPECT_EQ(window().lvwCompleteLog.rowCount(), 0);
    EXPECT_EQ(data().stop, Long(0));
}

INSTANTIATE_TEST_SUITE_P(Each, CountTest,
                         testing::Values("", "LastDateStamp=", "LastDateStamp=0",
                                         "LastDateStamp=-1", "LastDateStamp=many"));

TEST_F(ImportTest, WithoutRecordsWhatWasImportedStays) {
    import(numberedLog(4));
    select(3);
    data().start = 2;
    data().stop = 3;
    const std::vector<Row> before = rows();
    const std::string addresses = window().txtStatisticsIP.text();
    const int points = window().mscHistory.rowCount();
    setIni("[Settings]\r\n");

    importNothing();

    EXPECT_EQ(rows(), before);
    EXPECT_EQ(window().lvwCompleteLog.selectedRow(), 2);
    EXPECT_EQ(window().txtStatisticsIP.text(), addresses);
    EXPECT_EQ(window().mscHistory.rowCount(), points);
    EXPECT_EQ(data().start, Long(2));
    EXPECT_EQ(data().stop, Long(3));
    EXPECT_EQ(data().log.sent.size(), 4U);
}

TEST_F(ImportTest, WithoutRecordsTheControlsAreDisabledBeforeItIsTold) {
    import(numberedLog(4));
    setIni("[Settings]\r\n");
    expectQuestion(MsgBoxAnswer::Yes);
    Texts enabled;
    bool imported = true;
    expectNoRecords([&] {
        enabled = enabledControls();
        imported = data().imported;
    });

    window().cmdImport.press();

    EXPECT_FALSE(imported);
    EXPECT_EQ(strangers(toggled, enabled), toggled);
    EXPECT_EQ(strangers(alwaysEnabled, enabled), Texts{});
}

TEST_F(ImportTest, EachRecordIsARowInTheOrderOfTheirNumbers) {
    import(numberedLog(3));

    EXPECT_EQ(rows(),
              (std::vector<Row>{{"1", "d1", "t1", "00:00:00:001", "8001", "9001", "10.0.0.1"},
                                {"2", "d2", "t2", "00:00:00:002", "8002", "9002", "10.0.0.2"},
                                {"3", "d3", "t3", "00:00:00:003", "8003", "9003", "10.0.0.3"}}));
    EXPECT_EQ(window().lvwCompleteLog.selectedRow(), -1);
}

struct RowCase {
    const char* name;
    LoggedRecord record;
    Row row;
};

class RowTest : public HistoryTest, public testing::WithParamInterface<RowCase> {};

TEST_P(RowTest, IsListed) {
    machine.locale.conventions = germanLocale();

    import({GetParam().record});

    EXPECT_EQ(row(1), GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(
    Each, RowTest,
    testing::Values(RowCase{"Usual",
                            {"12.05.2005|14:03:11", "123456", "987654", "760000", "10.0.0.1"},
                            {"1", "12.05.2005", "14:03:11", "00:12:40:000", "123456", "987654",
                             "10.0.0.1"}},
                    RowCase{"WithoutDate",
                            {"|14:03:11", "1", "2", "3", "x"},
                            {"1", "(no date)", "14:03:11", "00:00:00:003", "1", "2", "x"}},
                    RowCase{"WithoutTime",
                            {"12.05.2005|", "1", "2", "3", "x"},
                            {"1", "12.05.2005", "(no time)", "00:00:00:003", "1", "2", "x"}},
                    RowCase{"WithNeither",
                            {"|", "1", "2", "3", "x"},
                            {"1", "(no date)", "(no time)", "00:00:00:003", "1", "2", "x"}},
                    RowCase{"WithTwoBars",
                            {"a|b|c", "1", "2", "3", "x"},
                            {"1", "a", "b|c", "00:00:00:003", "1", "2", "x"}},
                    RowCase{"WithoutAddress",
                            {"a|b", "1", "2", "3", ""},
                            {"1", "a", "b", "00:00:00:003", "1", "2", "[no IP logged]"}},
                    RowCase{"WithAnAddressOfBlanks",
                            {"a|b", "1", "2", "3", "\"  \""},
                            {"1", "a", "b", "00:00:00:003", "1", "2", "  "}},
                    RowCase{"WithLargeNumbers",
                            {"a|b", "922337203685477", "4294967296", "360000000", "x"},
                            {"1", "a", "b", "100:00:00:000", "922337203685477", "4294967296", "x"}},
                    RowCase{"WithDecimals",
                            {"a|b", "1,5", "1234,5678", "1999,9", "x"},
                            {"1", "a", "b", "00:00:01:999", "1,5", "1234,5678", "x"}},
                    RowCase{"WithoutNumbers",
                            {"a|b", "", "many", "-", "x"},
                            {"1", "a", "b", "00:00:00:000", "0", "0", "x"}}),
    [](const auto& given) { return given.param.name; });

TEST_F(ImportTest, TwoNumbersOfOneSectionAreTwoRows) {
    setIni("[Settings]\r\nDateStamp1=a|b\r\nDateStamp2=a|b\r\nLastDateStamp=2\r\n"
           "[a|b]\r\nSent=1\r\nRcvd=2\r\nDuration=3\r\n");

    import();

    EXPECT_EQ(rows(),
              (std::vector<Row>{{"1", "a", "b", "00:00:00:003", "1", "2", "[no IP logged]"},
                                {"2", "a", "b", "00:00:00:003", "1", "2", "[no IP logged]"}}));
}

TEST_F(ImportTest, AnAddressOfSeveralRecordsIsTakenOnceAtThePlaceOfTheFirst) {
    Log log = numberedLog(6);
    log[1].address = log[4].address = "192.168.0.5";

    import(log);

    EXPECT_EQ(window().txtStatisticsIP.text(),
              "10.0.0.1\r\n192.168.0.5\r\n10.0.0.3\r\n10.0.0.4\r\n10.0.0.6\r\n");
    EXPECT_EQ(row(5).back(), "192.168.0.5");
}

TEST_F(ImportTest, AddressesThatDifferOnlyInTheirCaseAreTwo) {
    Log log = numberedLog(3);
    log[0].address = "fe80";
    log[1].address = "FE80";
    log[2].address = "fe80";

    import(log);

    EXPECT_EQ(window().txtStatisticsIP.text(), "fe80\r\nFE80\r\n");
}

TEST_F(ImportTest, RecordsWithoutAddressAddNone) {
    Log log = numberedLog(3);
    log[0].address = log[2].address = "";

    import(log);

    EXPECT_EQ(window().txtStatisticsIP.text(), "10.0.0.2\r\n");
}

TEST_F(ImportTest, OneRecordIsStartAndStop) {
    import({{ "12.05.2005|14:03:11", "123456", "987654", "760000", "10.0.0.1" }});

    const char* text = "1.) 12.05.2005/14:03:11 (00:12:40:000) S:123456; R:987654 (IP: 10.0.0.1)";
    EXPECT_EQ(data().start, Long(1));
    EXPECT_EQ(data().stop, Long(1));
    EXPECT_EQ(window().txtCurrentStart.text(), text);
    EXPECT_EQ(window().txtCurrentStop.text(), text);
}

TEST_F(ImportTest, TheWholeLogIsTheRangeAndIsDrawn) {
    import(numberedLog(4));

    EXPECT_TRUE(data().imported);
    EXPECT_EQ(data().start, Long(1));
    EXPECT_EQ(data().stop, Long(4));
    ASSERT_EQ(window().mscHistory.rowCount(), 4);
    EXPECT_EQ(window().mscHistory.data(0, 3), 9004.0);
    EXPECT_EQ(window().mscHistory.rowLabel(3), "4");
}

TEST_F(ImportTest, AnotherImportReplacesEverything) {
    import(numberedLog(5));
    select(4);
    data().start = 3;
    data().stop = 4;

    import({{"a|b", "1", "2", "3", "9.9.9.9"}, { "c|d", "4", "5", "6", "" }});

    EXPECT_EQ(rows(),
              (std::vector<Row>{{"1", "a", "b", "00:00:00:003", "1", "2", "9.9.9.9"},
                                {"2", "c", "d", "00:00:00:006", "4", "5", "[no IP logged]"}}));
    EXPECT_EQ(window().lvwCompleteLog.selectedRow(), -1);
    EXPECT_EQ(window().txtStatisticsIP.text(), "9.9.9.9\r\n");
    EXPECT_EQ(data().start, Long(1));
    EXPECT_EQ(data().stop, Long(2));
    EXPECT_EQ(window().mscHistory.rowCount(), 2);
}

TEST_F(ImportTest, TheListComesFirstThenTheControlsThenTheRange) {
    import(numberedLog(2));

    Texts changes = machine.desktop.changesTold;
    std::erase(changes, "frmHistory.mscHistory");
    Texts expected = changesOf({"lvwCompleteLog", "txtStatisticsIP"});
    for (const std::string& change : changesOf(toggled)) {
        expected.push_back(change);
    }
    for (const char* last : {"lvwCompleteLog", "txtCurrentStart", "txtCurrentStop"}) {
        expected.push_back(std::string("frmHistory.") + last);
    }
    EXPECT_EQ(changes, expected);
}

TEST_F(ImportTest, BeforeTheFirstImportNothingCanBeAnalysed) {
    EXPECT_FALSE(data().imported);
    EXPECT_EQ(data().start, Long(0));
    EXPECT_EQ(data().stop, Long(0));
    EXPECT_EQ(data().log.sent.size(), 0U);
    EXPECT_EQ(strangers(toggled, enabledControls()), toggled);
    EXPECT_EQ(strangers(alwaysEnabled, enabledControls()), Texts{});
}

TEST_F(ImportTest, AnImportEnablesAllThatWorksOnIt) {
    import(numberedLog(1));

    EXPECT_EQ(strangers(toggled, enabledControls()), Texts{});
    EXPECT_EQ(strangers(alwaysEnabled, enabledControls()), Texts{});
}

TEST_F(ImportTest, ControlsAreEnabledInTheirOrderAndThenTheColumnsFitted) {
    Texts expected = changesOf(toggled);
    expected.emplace_back("frmHistory.lvwCompleteLog");

    ToggleControls(true);

    EXPECT_EQ(machine.desktop.changesTold, expected);
    EXPECT_EQ(window().lvwCompleteLog.columnFit(), ColumnFit::Contents);
}

TEST_F(ImportTest, ControlsAreDisabledInTheSameOrder) {
    ToggleControls(true);
    machine.desktop.changesTold.clear();
    Texts expected = changesOf(toggled);
    expected.emplace_back("frmHistory.lvwCompleteLog");

    ToggleControls(false);

    EXPECT_EQ(machine.desktop.changesTold, expected);
}

TEST_F(ImportTest, EnablingTakesAlsoTheUnitOfPercents) {
    import(numberedLog(2));
    window().cboDataType.setListIndex(2);
    ASSERT_FALSE(window().cboTransferUnit.enabled());

    ToggleControls(true);

    EXPECT_TRUE(window().cboTransferUnit.enabled());
}

TEST_F(ImportTest, LoadingTheWindowForgetsRangeAndImportAndFlattensTheHeaders) {
    import(numberedLog(2));
    window().lvwCompleteLog.setHeadersClickable(true);

    frmHistory_Form_Initialize();

    EXPECT_FALSE(data().imported);
    EXPECT_EQ(data().start, Long(0));
    EXPECT_EQ(data().stop, Long(0));
    EXPECT_FALSE(window().lvwCompleteLog.headersClickable());
}

} // namespace
} // namespace tarvik
