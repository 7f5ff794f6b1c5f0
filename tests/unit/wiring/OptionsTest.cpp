#include "wiring/OptionsTest.h"

#include "ui/mdlGUIFigures.h"
#include "wiring/frmOptionsEvents.h"

namespace tarvik {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* noUnits = "Error occured in: opt_cmdOK_Click\rInternal assertion failure!";
constexpr const char* sureToReset = "Are you really sure you want to reset the (overall) values?";

TEST_F(OptionsTest, OpeningItBringsItToTheFront) {
    open();

    EXPECT_TRUE(frmOptions().visible());
    EXPECT_EQ(machine.desktop.broughtToFront.back(), "frmOptions");
}

TEST_F(OptionsTest, OpeningItCopiesEverySetting) {
    state().UnitTransferCurrent = TransferUnit::MegaBytes;
    state().UnitTransferTotal = TransferUnit::GigaBytes;
    state().TransferLimitValue = Currency::fromScaled(50'000'000'005'000);
    state().DurationLimitHr = -3;
    state().DurationLimitMin = 75;
    state().TransferReset = enDateCalc::MiddleOfYear;
    state().RefreshInterval = 250;
    state().TransferTickerValue = 42;

    open();

    EXPECT_EQ(shown(), (Texts{"Mega-Bytes", "Giga-Bytes", "-", "-", "-", "5000000000.5", "-", "-3",
                              "75", "-", "-", "-", "middle of year", "-", "250", "-", "-", "42"}));
}

struct BoxCase {
    CheckBox FrmOptions::*box;
    std::uint8_t State::*setting;
    const char* name;
};

class OptionsBoxTest : public OptionsTest, public testing::WithParamInterface<BoxCase> {
protected:
    CheckBox& box() { return frmOptions().*GetParam().box; }
    std::uint8_t& setting() { return state().*GetParam().setting; }
};

INSTANTIATE_TEST_SUITE_P(
    All, OptionsBoxTest,
    testing::Values(
        BoxCase{&FrmOptions::chkStartupRunMonitoring, &State::StartUpRunMonitoring,
                "StartUpRunMonitoring"},
        BoxCase{&FrmOptions::chkStartUpMinimise, &State::StartUpMinimise, "StartUpMinimise"},
        BoxCase{&FrmOptions::chkTransferLimit, &State::TransferLimit, "TransferLimit"},
        BoxCase{&FrmOptions::chkDurationLimit, &State::DurationLimit, "DurationLimit"},
        BoxCase{&FrmOptions::chkTransferLimitWarning, &State::TransferLimitWarning,
                "TransferLimitWarning"},
        BoxCase{&FrmOptions::chkTransferLimitHangUp, &State::TransferLimitHangUp,
                "TransferLimitHangUp"},
        BoxCase{&FrmOptions::chkTransferResetEnable, &State::TransferResetEnable,
                "TransferResetEnable"},
        BoxCase{&FrmOptions::chkTransferResetBackup, &State::TransferResetBackup,
                "TransferResetBackup"},
        BoxCase{&FrmOptions::chkLogIPAddress, &State::LogIPAddress, "LogIPAddress"},
        BoxCase{&FrmOptions::chkTransferTicker, &State::TransferTicker, "TransferTicker"}),
    [](const auto& given) { return given.param.name; });

TEST_P(OptionsBoxTest, ShowsItsSetting) {
    const Texts before = shown();
    setting() = 1;

    open();

    EXPECT_TRUE(box().ticked());
    box().setValue(0);
    EXPECT_EQ(shown(), before);
}

TEST_P(OptionsBoxTest, SetsItsSettingToOne) {
    state().LimitWarningArmed = true;
    remember();
    open();
    box().setValue(1);

    pressOk();

    EXPECT_EQ(setting(), 1);
    EXPECT_EQ(changed(), Texts{GetParam().name});
}

TEST_P(OptionsBoxTest, SetsItsSettingToZero) {
    setting() = 1;
    open();
    box().setValue(0);

    pressOk();

    EXPECT_EQ(setting(), 0);
}

TEST_F(OptionsTest, OkAppliesEveryNumberAndChoice) {
    open();
    editEverything();

    pressOk();

    EXPECT_EQ(changed(), upTo("TransferTickerValue"));
    EXPECT_EQ(state().UnitTransferCurrent, TransferUnit::KiloBytes);
    EXPECT_EQ(state().UnitTransferTotal, TransferUnit::MegaBytes);
    EXPECT_EQ(state().TransferLimitValue, Currency::fromWhole(5'000'000'000));
    EXPECT_EQ(state().DurationLimitHr, Long(12));
    EXPECT_EQ(state().DurationLimitMin, Long(34));
    EXPECT_EQ(state().TransferReset, enDateCalc::EndOfMonth);
    EXPECT_EQ(state().RefreshInterval, Long(250));
    EXPECT_EQ(state().TransferTickerValue, Long(7));
}

TEST_F(OptionsTest, OkHidesTheDialogAndKeepsIt) {
    openAndPressOk();

    EXPECT_FALSE(frmOptions().visible());
    EXPECT_TRUE(frmOptions().loaded());
}

TEST_F(OptionsTest, OkWritesNoFile) {
    open();
    editEverything();
    const std::string stored = ini();
    const int replacements = machine.files.replacements;

    pressOk();

    EXPECT_EQ(machine.files.replacements, replacements);
    EXPECT_EQ(ini(), stored);
}

TEST_F(OptionsTest, OkRelabelsAndReformatsTheSession) {
    state().BytesRcvdCurrent = 1536;
    state().BytesSentCurrent = 512;
    open();
    frmOptions().cboUnitTransferCurrent.setListIndex(1);

    pressOk();

    EXPECT_EQ(frmMain().lblTransferCurrent.caption(), "current (KBytes):");
    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "1.50");
    EXPECT_EQ(frmMain().txtBytesSent.text(), "0.50");
    EXPECT_EQ(frmMain().lblTransferTotal.caption(), "total (bytes):");
}

TEST_F(OptionsTest, OkRelabelsAndReformatsTheTotals) {
    state().BytesRcvdTotal = 1'572'864;
    state().BytesSentTotal = 524'288;
    open();
    frmOptions().cboUnitTransferTotal.setListIndex(2);

    pressOk();

    EXPECT_EQ(frmMain().lblTransferTotal.caption(), "total (MBytes):");
    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "1.50");
    EXPECT_EQ(frmMain().txtBytesSentTotal.text(), "0.50");
    EXPECT_EQ(frmMain().lblTransferCurrent.caption(), "current (bytes):");
}

struct ListCase {
    ComboBox FrmOptions::*list;
    TransferUnit State::*setting;
    Label FrmMain::*label;
    const char* caption;
    TextBox FrmMain::*figure;
    Texts changedBefore; ///< what OK changes before it comes to this list
};

class UnitListTest : public OptionsTest, public testing::WithParamInterface<ListCase> {
protected:
    ComboBox& list() { return frmOptions().*GetParam().list; }
    TransferUnit& setting() { return state().*GetParam().setting; }
    const Label& label() { return frmMain().*GetParam().label; }
    const TextBox& figure() { return frmMain().*GetParam().figure; }

    /// The open dialog, a list of so many entries, and a unit and figures that are not shown yet.
    void setUpFor(int entries) {
        open();
        list().clear();
        for (int i = 0; i < entries; ++i) {
            list().addItem("Bytes");
        }
        setting() = TransferUnit::GigaBytes;
        state().BytesSentCurrent = 5;
        captionBefore_ = label().caption();
        figureBefore_ = figure().text();
    }

    void expectNothingDone() {
        EXPECT_EQ(setting(), TransferUnit::GigaBytes);
        EXPECT_EQ(label().caption(), captionBefore_);
        EXPECT_EQ(figure().text(), figureBefore_);
    }

private:
    std::string captionBefore_;
    std::string figureBefore_;
};

INSTANTIATE_TEST_SUITE_P(Both, UnitListTest,
                         testing::Values(ListCase{&FrmOptions::cboUnitTransferCurrent,
                                                  &State::UnitTransferCurrent,
                                                  &FrmMain::lblTransferCurrent,
                                                  "current (GBytes):",
                                                  &FrmMain::txtBytesSent,
                                                  {}},
                                         ListCase{&FrmOptions::cboUnitTransferTotal,
                                                  &State::UnitTransferTotal,
                                                  &FrmMain::lblTransferTotal,
                                                  "total (GBytes):",
                                                  &FrmMain::txtBytesSentTotal,
                                                  {"UnitTransferCurrent"}}),
                         [](const auto& given) { return given.index == 0 ? "Current" : "Total"; });

TEST_P(UnitListTest, WithoutEntriesItIsSkippedWithAReport) {
    setUpFor(0);
    expectFailure(noUnits);

    pressOk();

    expectNothingDone();
}

TEST_P(UnitListTest, WithThreeEntriesItIsSkippedWithAReport) {
    setUpFor(3);
    list().setListIndex(1);
    expectFailure(noUnits);

    pressOk();

    expectNothingDone();
}

TEST_P(UnitListTest, WithFewerThanFourEntriesTheRestIsAppliedAfterTheReport) {
    open();
    editEverything();
    list().clear();
    Texts changedMeanwhile;
    expectBox(noUnits, MsgBoxButtons::OkOnly, MsgBoxIcon::Critical, MsgBoxAnswer::Ok,
              [&] { changedMeanwhile = changed(); });

    pressOk();

    EXPECT_EQ(changedMeanwhile, GetParam().changedBefore);
    EXPECT_EQ(changed().size(), settings().size() - 1);
    EXPECT_FALSE(frmOptions().visible());
}

TEST_P(UnitListTest, WithoutASelectionTheUnitStaysAndIsShown) {
    open();
    list().setListIndex(ComboBox::none);
    setting() = TransferUnit::GigaBytes;

    pressOk();

    EXPECT_EQ(setting(), TransferUnit::GigaBytes);
    EXPECT_EQ(label().caption(), GetParam().caption);
    EXPECT_EQ(figure().text(), "0.00");
}

TEST_P(UnitListTest, OfFivePositionsOnlyTheFirstFourAreUnits) {
    list().addItem("Tera-Bytes");
    for (const auto& [position, unit] :
         {std::pair{2, TransferUnit::MegaBytes}, std::pair{4, TransferUnit::MegaBytes},
          std::pair{3, TransferUnit::GigaBytes}, std::pair{0, TransferUnit::Bytes},
          std::pair{1, TransferUnit::KiloBytes}}) {
        list().setListIndex(position);

        GetUnitTypeTransfer(list(), setting());

        EXPECT_EQ(setting(), unit) << position;
    }
}

TEST_F(OptionsTest, WithBothListsTooShortBothAreReported) {
    open();
    frmOptions().cboUnitTransferCurrent.clear();
    frmOptions().cboUnitTransferTotal.clear();
    expectFailure(noUnits);
    expectFailure(noUnits);

    pressOk();

    EXPECT_FALSE(frmOptions().visible());
}

TEST_F(OptionsTest, OkArmsATickedWarningOnceMore) {
    open();
    frmOptions().chkTransferLimitWarning.setValue(1);

    pressOk();
    state().LimitWarningArmed = false;
    openAndPressOk();

    EXPECT_TRUE(state().LimitWarningArmed);
}

TEST_F(OptionsTest, OkDoesNotArmAWarningThatIsNotTicked) {
    openAndPressOk();

    EXPECT_FALSE(state().LimitWarningArmed);
}

struct FailureCase {
    const char* name;
    void (*spoil)(FrmOptions&);
    const char* error;
    const char* lastWritten;
};

class OptionsFailureTest : public OptionsTest, public testing::WithParamInterface<FailureCase> {};

TEST_P(OptionsFailureTest, LeavesWhatWasWrittenBeforeAndNothingMore) {
    open();
    editEverything();
    GetParam().spoil(frmOptions());
    expectError(GetParam().error, "cmdOK_Click");

    pressOk();

    EXPECT_EQ(changed(), upTo(GetParam().lastWritten));
    EXPECT_TRUE(frmOptions().visible());
}

INSTANTIATE_TEST_SUITE_P(
    All, OptionsFailureTest,
    testing::Values(
        FailureCase{"NoLimit", [](FrmOptions& o) { o.txtTransferLimit.setText("many"); },
                    "13 (Type mismatch)", "TransferLimit"},
        FailureCase{"EmptyLimit", [](FrmOptions& o) { o.txtTransferLimit.setText(""); },
                    "13 (Type mismatch)", "TransferLimit"},
        FailureCase{"HugeLimit", [](FrmOptions& o) { o.txtTransferLimit.setText("1E15"); },
                    "6 (Overflow)", "TransferLimit"},
        FailureCase{"HugeHours", [](FrmOptions& o) { o.txtDurationLimitHr.setText("2147483648"); },
                    "6 (Overflow)", "DurationLimit"},
        FailureCase{"NoMinutes", [](FrmOptions& o) { o.txtDurationLimitMin.setText("x"); },
                    "13 (Type mismatch)", "DurationLimitHr"},
        FailureCase{"NoCriterion",
                    [](FrmOptions& o) { o.cboTransferReset.setListIndex(ComboBox::none); },
                    "6 (Overflow)", "TransferResetEnable"},
        FailureCase{"HugeInterval", [](FrmOptions& o) { o.txtRefreshInterval.setText("1E10"); },
                    "6 (Overflow)", "TransferResetBackup"},
        FailureCase{"NoTicker", [](FrmOptions& o) { o.txtTransferTicker.setText("-"); },
                    "13 (Type mismatch)", "TransferTicker"}),
    [](const auto& given) { return given.param.name; });

TEST_F(OptionsTest, CancelHidesTheDialogAndChangesNothing) {
    open();
    editEverything();

    frmOptions().cmdCancel.press();

    EXPECT_FALSE(frmOptions().visible());
    EXPECT_TRUE(frmOptions().loaded());
    EXPECT_EQ(changed(), Texts{});
}

TEST_F(OptionsTest, TheCloseBoxHidesTheDialogAndChangesNothing) {
    open();
    editEverything();

    const bool unloaded = frmOptions().unload(UnloadMode::FormControlMenu);

    EXPECT_FALSE(unloaded);
    EXPECT_FALSE(frmOptions().visible());
    EXPECT_TRUE(frmOptions().loaded());
    EXPECT_EQ(changed(), Texts{});
}

TEST_F(OptionsTest, TheProgramAndTheEndOfTheSessionUnloadTheDialog) {
    open();
    EXPECT_TRUE(frmOptions().unload());

    open();
    EXPECT_TRUE(frmOptions().unload(UnloadMode::AppWindows));
}

TEST_F(OptionsTest, AfterCancelItOpensWithTheSettings) {
    open();
    const Texts before = shown();
    editEverything();
    frmOptions().cmdCancel.press();

    open();

    EXPECT_EQ(shown(), before);
}

TEST_F(OptionsTest, OpenedAgainWhileItIsOpenItKeepsWhatWasEdited) {
    open();
    editEverything();
    frmMain().bringToFront();

    open();

    EXPECT_EQ(shown(), edited);
    EXPECT_EQ(machine.desktop.broughtToFront.back(), "frmOptions");
}

class OptionsResetTest : public OptionsTest {
protected:
    OptionsResetTest() {
        state().BytesRcvdTotal = 1000;
        state().BytesSentTotal = 2000;
        state().DurationTotal = 3000;
        state().BytesRcvdCurrent = 10;
        state().DurationCurrent = 500;
        UpdateValuesInGUI(true, true, false);
        open();
        editEverything();
    }

    void answer(MsgBoxAnswer given) {
        expectBox(sureToReset, MsgBoxButtons::YesNo, MsgBoxIcon::Question, given);
        frmOptions().cmdResetValues.press();
    }

    Texts figures() {
        const FrmMain& main = frmMain();
        return {main.txtBytesRcvd.text(),       main.txtBytesSent.text(),
                main.txtDurationCurrent.text(), main.txtBytesRcvdTotal.text(),
                main.txtBytesSentTotal.text(),  main.txtDurationTotal.text()};
    }
};

TEST_F(OptionsResetTest, YesClearsTheFiguresAtOnce) {
    answer(MsgBoxAnswer::Yes);

    EXPECT_EQ(figures(), (Texts{"0", "0", "00:00:00:000", "0", "0", "00:00:00:000"}));
    EXPECT_EQ(state().BytesRcvdTotal, Currency(0));
    EXPECT_EQ(state().BytesSentTotal, Currency(0));
    EXPECT_EQ(state().DurationTotal, Currency(0));
}

TEST_F(OptionsResetTest, NoLeavesTheFigures) {
    answer(MsgBoxAnswer::No);

    EXPECT_EQ(figures(), (Texts{"10", "0", "00:00:00:500", "1,010", "2,000", "00:00:03:500"}));
    EXPECT_EQ(state().BytesRcvdTotal, Currency(1000));
    EXPECT_EQ(state().BytesSentTotal, Currency(2000));
    EXPECT_EQ(state().DurationTotal, Currency(3000));
}

TEST_F(OptionsResetTest, EitherAnswerLeavesTheDialogAndTheSettings) {
    answer(MsgBoxAnswer::No);
    answer(MsgBoxAnswer::Yes);

    EXPECT_TRUE(frmOptions().visible());
    EXPECT_EQ(shown(), edited);
    EXPECT_EQ(changed(), Texts{});
}

TEST_F(OptionsTest, WhatOkAppliedIsThereInTheNextRun) {
    open();
    editEverything();
    pressOk();
    frmMain().cmdQuit.press();
    newWorld();

    start();
    open();

    EXPECT_EQ(shown(), edited);
}

} // namespace
} // namespace tarvik
