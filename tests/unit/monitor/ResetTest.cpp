#include "monitor/mdlCodeReset.h"

#include "monitor/DateOn.h"
#include "settings/mdlSettingsLog.h"
#include "support/WorldTest.h"

namespace tarvik {
namespace {

constexpr const char* withoutBackup =
    "The criteria to reset the transfer records has been reached.\rHowever - An error occured "
    "while trying to create the backup-file.\rDo you want to reset the transfers recorded anyway?";
constexpr const char* backupPath = "C:\\Prog\\Tarvik.2026-11-17.ini";

/// The reset in the middle of the month, the last one on 10 November 2026: the boundary is the 16th
/// and passes with the 17th.
class ResetTest : public WorldTest {
protected:
    ResetTest() {
        startQuietly("/r");
        state().TransferResetEnable = 1;
        state().TransferReset = enDateCalc::MiddleOfMonth;
        state().TransferResetLast = on(2026, 11, 10);
        machine.clock.now = on(2026, 11, 17, 9, 30, 0);
        setTotals(20, 100, 3000);
    }

    void expectBackupQuestion(MsgBoxAnswer answer) {
        expectBox(withoutBackup, MsgBoxButtons::YesNo, MsgBoxIcon::Question, answer);
    }

    /// Asks for a backup that fails.
    void failBackups() {
        state().TransferResetBackup = 1;
        machine.files.replaceFailure = ErrorNumber::DiskFull;
    }

    bool wasReset() {
        return state().BytesRcvdTotal == Currency(0) && state().BytesSentTotal == Currency(0) &&
               state().DurationTotal == Currency(0);
    }
    /// Neither totals nor date have changed.
    void expectUntouched() {
        EXPECT_EQ(state().BytesRcvdTotal, Currency(100));
        EXPECT_EQ(state().BytesSentTotal, Currency(20));
        EXPECT_EQ(state().DurationTotal, Currency(3000));
        EXPECT_EQ(state().TransferResetLast, on(2026, 11, 10));
    }
};

// When the totals are reset.

TEST_F(ResetTest, ThePassedBoundaryClearsTheTotals) {
    CheckReset();

    EXPECT_TRUE(wasReset());
}

TEST_F(ResetTest, TheDayOfTheResetIsRememberedWithoutItsTime) {
    CheckReset();

    EXPECT_EQ(state().TransferResetLast, on(2026, 11, 17));
}

TEST_F(ResetTest, TheRunningSessionIsClearedToo) {
    state().BytesRcvdCurrent = 5;
    state().BytesSentCurrent = 6;
    state().DurationCurrent = 7;

    CheckReset();

    EXPECT_TRUE(wasReset());
    EXPECT_EQ(state().BytesRcvdCurrent, Long(0));
    EXPECT_EQ(state().BytesSentCurrent, Long(0));
    EXPECT_EQ(state().DurationCurrent, Long(0));
}

TEST_F(ResetTest, SwitchedOffNothingIsReset) {
    state().TransferResetEnable = 0;

    CheckReset();

    expectUntouched();
}

TEST_F(ResetTest, OnTheDayOfTheBoundaryNothingIsResetAtAnyTime) {
    for (const Date now : {on(2026, 11, 16), on(2026, 11, 16, 12), on(2026, 11, 16, 23, 59, 59)}) {
        machine.clock.now = now;

        CheckReset();

        expectUntouched();
    }
}

TEST_F(ResetTest, TheTotalsAreResetWithTheFirstSecondOfTheDayAfter) {
    machine.clock.now = on(2026, 11, 17);

    CheckReset();

    EXPECT_TRUE(wasReset());
}

TEST_F(ResetTest, BeforeTheBoundaryNothingIsReset) {
    machine.clock.now = on(2026, 11, 15, 23, 59, 59);

    CheckReset();

    expectUntouched();
}

TEST_F(ResetTest, AClockThatWasSetBackResetsNothing) {
    machine.clock.now = on(2025, 1, 1);

    CheckReset();

    expectUntouched();
}

struct TimedBoundaryCase {
    const char* name;
    Date now;
    bool reset;
};

/// The end of the week after a last reset with a time of day: Monday the 16th, 18:00.
class TimedBoundaryTest : public ResetTest,
                          public testing::WithParamInterface<TimedBoundaryCase> {};

TEST_P(TimedBoundaryTest, IsHeldAgainstTheDayAlone) {
    state().TransferReset = enDateCalc::EndOfWeek;
    state().TransferResetLast = on(2026, 11, 10, 18);
    machine.clock.now = GetParam().now;

    CheckReset();

    EXPECT_EQ(wasReset(), GetParam().reset);
    EXPECT_EQ(state().TransferResetLast,
              GetParam().reset ? GetParam().now.dateOnly() : on(2026, 11, 10, 18));
}

INSTANTIATE_TEST_SUITE_P(
    Each, TimedBoundaryTest,
    testing::Values(TimedBoundaryCase{"BeforeIt", on(2026, 11, 16, 17), false},
                    TimedBoundaryCase{"AfterItOnTheSameDay", on(2026, 11, 16, 19), false},
                    TimedBoundaryCase{"TheNextMorning", on(2026, 11, 17, 6), true}),
    [](const auto& given) { return given.param.name; });

class FirstResetTest : public ResetTest, public testing::WithParamInterface<enDateCalc> {};

TEST_P(FirstResetTest, ComesWithTheFirstTickThatIsOnline) {
    state().TransferReset = GetParam();
    state().TransferResetLast = on(2001, 1, 1);
    dialledConnection();

    tick();

    EXPECT_TRUE(wasReset());
    EXPECT_EQ(state().TransferResetLast, on(2026, 11, 17));
}

INSTANTIATE_TEST_SUITE_P(EachCriterionOfMoreThanADay, FirstResetTest,
                         testing::Values(enDateCalc::MiddleOfWeek, enDateCalc::MiddleOfMonth,
                                         enDateCalc::MiddleOfQuarter, enDateCalc::MiddleOfHalfYear,
                                         enDateCalc::MiddleOfYear, enDateCalc::EndOfWeek,
                                         enDateCalc::EndOfMonth, enDateCalc::EndOfQuarter,
                                         enDateCalc::EndOfHalfYear, enDateCalc::EndOfYear));

class DayCriterionTest : public ResetTest, public testing::WithParamInterface<enDateCalc> {};

TEST_P(DayCriterionTest, NeverResets) {
    state().TransferReset = GetParam();
    state().TransferResetLast = on(2001, 1, 1);

    CheckReset();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(100));
    EXPECT_EQ(state().TransferResetLast, on(2001, 1, 1));
}

INSTANTIATE_TEST_SUITE_P(Both, DayCriterionTest,
                         testing::Values(enDateCalc::MiddleOfDay, enDateCalc::EndOfDay));

TEST_F(ResetTest, AnUnknownCriterionIsToldAndCountsAsPassed) {
    state().TransferReset = static_cast<enDateCalc>(12);
    expectWarning("DateCalc: Assertion failure - Input is not of enum enDateCalc.");

    CheckReset();

    EXPECT_TRUE(wasReset());
}

TEST_F(ResetTest, APeriodIsResetOnce) {
    dialledConnection();
    tick();
    setTotals(8, 7, 9);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(7));
    EXPECT_EQ(state().DurationTotal, Currency(9));
}

TEST_F(ResetTest, OfflineABoundaryPassesWithoutAReset) {
    tick();

    expectUntouched();
}

TEST_F(ResetTest, ABoundaryThatPassedOfflineTakesEffectOnline) {
    tick();
    dialledConnection();

    tick();

    EXPECT_TRUE(wasReset());
}

TEST_F(ResetTest, TheDayOfTheResetIsSavedWithTheSettings) {
    CheckReset();

    EXPECT_TRUE(SaveState());

    EXPECT_NE(ini().find("TransferResetLast=17.11.2026\r\n"), std::string::npos);
}

// The tick around the reset.

TEST_F(ResetTest, WhatWouldHaveExceededTheLimitIsClearedBeforeItIsChecked) {
    state().TransferLimit = 1;
    state().TransferLimitValue = 50;
    state().TransferLimitWarning = 1;
    state().TransferLimitHangUp = 1;
    line().transfer(dialledConnection(), 60, 0, 0);

    tick();

    EXPECT_TRUE(wasReset());
    EXPECT_FALSE(world->forms.frmWarning.visible());
    EXPECT_EQ(line().countOf("RasHangUpA"), 0);
}

TEST_F(ResetTest, TheTickOfTheResetShowsNothingCounted) {
    line().transfer(dialledConnection(), 60, 70, 80);

    tick();

    EXPECT_EQ(frmMain().txtBytesRcvd.text(), "0");
    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "0");
    EXPECT_EQ(frmMain().txtDurationTotal.text(), "00:00:00:000");
}

TEST_F(ResetTest, TheNextTickCountsTheWholeSessionInTheNewPeriod) {
    const std::uint32_t handle = dialledConnection();
    line().transfer(handle, 60, 70, 80);
    tick();
    line().transfer(handle, 1, 2, 3);
    tick();
    line().disconnect(handle);

    tick();

    EXPECT_EQ(state().BytesRcvdTotal, Currency(61));
    EXPECT_EQ(state().BytesSentTotal, Currency(72));
    EXPECT_EQ(state().DurationTotal, Currency(83));
}

TEST_F(ResetTest, ADeclinedPartOfTheSessionCountsInTheNewPeriod) {
    const std::uint32_t handle = line().connect("Harbour");
    line().transfer(handle, 4000, 1000, 60'000);
    expectSessionQuestion("5000", MsgBoxAnswer::No);
    tick();
    EXPECT_EQ(state().BytesRcvdOffset, Long(0));
    EXPECT_EQ(state().BytesSentOffset, Long(0));
    EXPECT_EQ(state().DurationOffset, Long(0));

    tick();

    EXPECT_EQ(frmMain().txtBytesRcvdTotal.text(), "4,000");
    EXPECT_EQ(frmMain().txtBytesSentTotal.text(), "1,000");
    EXPECT_EQ(frmMain().txtDurationTotal.text(), "00:01:00:000");
}

// The backup before it.

TEST_F(ResetTest, WithoutTheBackupTheFileStaysAlone) {
    CheckReset();

    EXPECT_TRUE(machine.files.exists(iniPath));
    EXPECT_FALSE(machine.files.exists(backupPath));
}

TEST_F(ResetTest, WithTheBackupTheFileIsMovedAndTheTotalsAreReset) {
    state().TransferResetBackup = 1;

    CheckReset();

    EXPECT_FALSE(machine.files.exists(iniPath));
    EXPECT_TRUE(machine.files.exists(backupPath));
    EXPECT_TRUE(wasReset());
    EXPECT_EQ(state().TransferResetLast, on(2026, 11, 17));
}

TEST_F(ResetTest, TheBackupHoldsTheTotalsOfTheEndedPeriod) {
    state().TransferResetBackup = 1;
    line().transfer(dialledConnection(), 60, 70, 80);

    tick();

    EXPECT_NE(machine.files.file(backupPath)
                  .find("[17.11.2026|09:30:00]\r\nSent=90\r\nRcvd=160\r\nDuration=3080\r\n"),
              std::string::npos);
}

TEST_F(ResetTest, NothingIsBackedUpBeforeTheBoundary) {
    state().TransferResetBackup = 1;
    machine.clock.now = on(2026, 11, 16);

    CheckReset();

    EXPECT_TRUE(machine.files.exists(iniPath));
    EXPECT_EQ(machine.files.file("C:\\Prog\\Tarvik.2026-11-16.ini"), "");
}

TEST_F(ResetTest, AFailedBackupAndNoLeavesTotalsAndDate) {
    failBackups();
    expectBackupQuestion(MsgBoxAnswer::No);

    CheckReset();

    expectUntouched();
}

TEST_F(ResetTest, AfterNoTheNextTicksAskAgain) {
    failBackups();
    dialledConnection();
    for (int ticks = 0; ticks < 3; ++ticks) {
        expectBackupQuestion(MsgBoxAnswer::No);
        tick();
    }

    EXPECT_EQ(machine.desktop.boxesShown.size(), 3U);
    expectUntouched();
}

TEST_F(ResetTest, AfterNoABackupThatWorksAgainResetsWithoutAQuestion) {
    failBackups();
    expectBackupQuestion(MsgBoxAnswer::No);
    CheckReset();
    machine.files.replaceFailure.reset();

    CheckReset();

    EXPECT_TRUE(wasReset());
    EXPECT_TRUE(machine.files.exists(backupPath));
}

TEST_F(ResetTest, AFailedBackupAndYesResetsWithoutABackup) {
    failBackups();
    expectBackupQuestion(MsgBoxAnswer::Yes);

    CheckReset();

    EXPECT_TRUE(wasReset());
    EXPECT_EQ(state().TransferResetLast, on(2026, 11, 17));
    EXPECT_FALSE(machine.files.exists(backupPath));
}

TEST_F(ResetTest, ABackupThatFailsWithAnErrorIsReportedBeforeTheQuestion) {
    state().TransferResetBackup = 1;
    machine.files.setKind(backupPath, FileKind::Directory);
    expectError("75 (Path/File access error)", "BackupINIFile");
    expectBackupQuestion(MsgBoxAnswer::No);

    CheckReset();

    expectUntouched();
    EXPECT_TRUE(machine.files.exists(iniPath));
}

TEST_F(ResetTest, AnErrorOfTheQuestionIsReportedAndLeavesTheTotals) {
    failBackups();
    expectBox(withoutBackup, MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes,
              [] { raise(ErrorNumber::OutOfMemory); });
    expectError("7 (Out of memory)", "CheckReset");

    CheckReset();

    expectUntouched();
}

} // namespace
} // namespace tarvik
