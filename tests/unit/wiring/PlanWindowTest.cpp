#include "settings/PlanLifeTest.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* ledgerQuestion =
    "Do you want Tarvik to write down from now on, in the file \"Tarvik.ledger\" beside the INI "
    "file, what each line carries?";

class PlanWindowTest : public PlanLifeTest {
protected:
    void startWithoutPlan() {
        setIni(usualSection);
        start();
    }
    void expectLedgerQuestion(MsgBoxAnswer answer) {
        expectBox(ledgerQuestion, MsgBoxButtons::YesNo, MsgBoxIcon::Question, answer);
    }
    std::vector<std::string> names() {
        std::vector<std::string> result;
        for (int row = 0; row < planWindow().lstPlans.rowCount(); ++row) {
            result.push_back(planWindow().lstPlans.cell(row, 0));
        }
        return result;
    }
};

TEST_F(PlanWindowTest, TheButtonOfTheOptionsOpensIt) {
    startWithoutPlan();

    openPlans();

    EXPECT_TRUE(planWindow().visible());
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(PlanWindowTest, WithoutAPlanOnlyANewOneCanBeMade) {
    startWithoutPlan();
    openPlans();

    EXPECT_TRUE(planWindow().cmdNew.enabled());
    EXPECT_FALSE(planWindow().txtName.enabled());
    EXPECT_FALSE(planWindow().cmdCopy.enabled());
    EXPECT_FALSE(planWindow().cmdDelete.enabled());
}

TEST_F(PlanWindowTest, ANewPlanIsOfferedThreeThresholds) {
    startWithoutPlan();
    openPlans();

    planWindow().cmdNew.press();

    const ListView& list = planWindow().lstThresholds;
    ASSERT_EQ(list.rowCount(), 3);
    EXPECT_EQ(list.cell(0, 0), "50 %");
    EXPECT_EQ(list.cell(1, 0), "80 %");
    EXPECT_EQ(list.cell(2, 0), "100 %");
    EXPECT_EQ(list.cell(2, 1), "note");
}

TEST_F(PlanWindowTest, NothingHoldsBeforeOk) {
    startWithoutPlan();
    openPlans();
    planWindow().cmdNew.press();
    enter(planWindow().txtAllowance, "10 GB");

    planWindow().cmdCancel.press();

    EXPECT_FALSE(planWindow().visible());
    EXPECT_THAT(world->plans.all, IsEmpty());
    EXPECT_THAT(ini(), Not(HasSubstr("[Plan")));
    openPlans();
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(PlanWindowTest, OkStoresThePlanAndAsksForALedgerInOneSentence) {
    startWithoutPlan();
    openPlans();
    planWindow().cmdNew.press();
    enter(planWindow().txtName, "Home");
    enter(planWindow().txtAllowance, "10 GB");
    expectLedgerQuestion(MsgBoxAnswer::Yes);

    planWindow().cmdOK.press();

    EXPECT_FALSE(planWindow().visible());
    EXPECT_THAT(ini(), HasSubstr("[Plan 1]\r\nName=\"Home\"\r\n"));
    EXPECT_THAT(ini(), HasSubstr("Allowance=10 GB\r\n"));
    EXPECT_TRUE(ledgerIsThere());
    EXPECT_TRUE(frmMain().lblPlan.visible());
}

TEST_F(PlanWindowTest, WhoWantsNoLedgerIsNotAskedAgainAndFindsTheButton) {
    startWithoutPlan();
    openPlans();
    planWindow().cmdNew.press();
    expectLedgerQuestion(MsgBoxAnswer::No);
    planWindow().cmdOK.press();
    openPlans();
    planWindow().cmdOK.press();
    EXPECT_FALSE(ledgerIsThere());
    EXPECT_FALSE(frmMain().lblPlan.visible());
    openPlans();
    EXPECT_TRUE(planWindow().cmdLedger.visible());
    EXPECT_EQ(planWindow().lblLedger.caption(),
              "No ledger is kept: nothing is reckoned for the plans.");
    expectLedgerQuestion(MsgBoxAnswer::Yes);

    planWindow().cmdLedger.press();

    EXPECT_TRUE(ledgerIsThere());
    EXPECT_FALSE(planWindow().cmdLedger.visible());
}

TEST_F(PlanWindowTest, ALedgerThatCannotBeBegunIsTold) {
    startWithoutPlan();
    openPlans();
    planWindow().cmdNew.press();
    machine.files.holdFailure = ErrorNumber::PathFileAccess;
    expectLedgerQuestion(MsgBoxAnswer::Yes);
    expectFailure("Error: The ledger could not be begun.");

    planWindow().cmdOK.press();
}

TEST_F(PlanWindowTest, PlansThatCannotBeStoredAreToldAndHold) {
    startWithPlan();
    openPlans();
    enter(planWindow().txtName, "Changed");
    machine.files.replaceFailure = ErrorNumber::PathFileAccess;
    expectWarning("Warning: The plans could not be stored in the INI file.");

    planWindow().cmdOK.press();

    EXPECT_EQ(plan().name, "Changed");
}

struct FieldCase {
    TextBox FrmPlan::*box;
    Label FrmPlan::*reason;
    const char* wrong;
    const char* text;
};

class PlanFieldTest : public PlanLifeTest, public testing::WithParamInterface<FieldCase> {
protected:
    /// A plan in which each field can be used.
    void openWithEverything(PeriodKind kind) {
        Plan all = oneMegabyte();
        all.hours = 10;
        all.rollOver = RollOver::UpTo;
        all.period.kind = kind;
        all.period.from = LocalDay(std::chrono::year(2026) / 11 / 1);
        all.thresholds = {{.percent = 50, .hangUp = HangUpRule::AfterGrace}, {.percent = 80}};
        startWithPlan(all);
        openPlans();
    }
    void openForField() {
        const bool isDay = GetParam().box == &FrmPlan::txtDay;
        const bool isPack = GetParam().box == &FrmPlan::txtUntil;
        const bool isRollOver = GetParam().box == &FrmPlan::txtRollOverMost ||
                                GetParam().box == &FrmPlan::txtRollOverHours;
        openWithEverything(isDay || isRollOver ? PeriodKind::Month
                                               : (isPack ? PeriodKind::Pack : PeriodKind::Days));
    }
};

TEST_P(PlanFieldTest, TheReasonStandsBesideItAsSoonAsItIsLeft) {
    openForField();
    TextBox& box = planWindow().*GetParam().box;
    ASSERT_TRUE(box.enabled());

    enter(box, GetParam().wrong);

    EXPECT_EQ((planWindow().*GetParam().reason).caption(), GetParam().text);
}

TEST_P(PlanFieldTest, OkStaysOpenWithIt) {
    openForField();
    (planWindow().*GetParam().box).setText(GetParam().wrong);

    planWindow().cmdOK.press();

    EXPECT_TRUE(planWindow().visible());
    EXPECT_EQ((planWindow().*GetParam().reason).caption(), GetParam().text);
}

TEST_P(PlanFieldTest, TheReasonGoesWhenItCanBe) {
    openForField();
    TextBox& box = planWindow().*GetParam().box;
    const std::string before = box.text();
    enter(box, GetParam().wrong);

    enter(box, before);

    EXPECT_EQ((planWindow().*GetParam().reason).caption(), "");
}

INSTANTIATE_TEST_SUITE_P(
    All, PlanFieldTest,
    testing::Values(
        FieldCase{&FrmPlan::txtName, &FrmPlan::lblNameReason, "  ", "A name."},
        FieldCase{&FrmPlan::txtAllowance, &FrmPlan::lblAllowanceReason, "10 apples",
                  "A size, such as 10 GB."},
        FieldCase{&FrmPlan::txtAllowance, &FrmPlan::lblAllowanceReason, "0 GB",
                  "A size, such as 10 GB."},
        FieldCase{&FrmPlan::txtHours, &FrmPlan::lblHoursReason, "0", "1 to 99999."},
        FieldCase{&FrmPlan::txtHours, &FrmPlan::lblHoursReason, "1.5", "1 to 99999."},
        FieldCase{&FrmPlan::txtRollOverMost, &FrmPlan::lblRollOverMostReason, "",
                  "A size, such as 2 GB."},
        FieldCase{&FrmPlan::txtRollOverHours, &FrmPlan::lblRollOverHoursReason, "-1",
                  "0 to 99999."},
        FieldCase{&FrmPlan::txtReserve, &FrmPlan::lblReserveReason, "100", "0 to 99."},
        FieldCase{&FrmPlan::txtDay, &FrmPlan::lblDayReason, "32", "1 to 31."},
        FieldCase{&FrmPlan::txtEvery, &FrmPlan::lblEveryReason, "367", "1 to 366."},
        FieldCase{&FrmPlan::txtFrom, &FrmPlan::lblFromReason, "31.02.2026", "A date."},
        FieldCase{&FrmPlan::txtUntil, &FrmPlan::lblUntilReason, "01.11.2026",
                  "A date after the first day."},
        FieldCase{&FrmPlan::txtPercent, &FrmPlan::lblPercentReason, "80", "1 to 100, each once."},
        FieldCase{&FrmPlan::txtPercent, &FrmPlan::lblPercentReason, "101", "1 to 100, each once."},
        FieldCase{&FrmPlan::txtGrace, &FrmPlan::lblGraceReason, "much", "A size, such as 100 MB."},
        FieldCase{&FrmPlan::txtGraceMinutes, &FrmPlan::lblGraceMinutesReason, "10000",
                  "0 to 9999."},
        FieldCase{&FrmPlan::txtProgram, &FrmPlan::lblProgramReason, "tell.exe", "A full path."}));

} // namespace
} // namespace tarvik
