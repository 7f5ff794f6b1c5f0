#include "settings/PlanLifeTest.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class PlanPagesTest : public PlanLifeTest {
protected:
    void open(const Plan& made) {
        startWithPlan(made);
        openPlans();
    }
};

TEST_F(PlanPagesTest, OnePageIsShownAtATime) {
    open(oneMegabyte());
    FrmPlan& form = planWindow();

    form.cboPage.setListIndex(FrmPlan::period);

    for (int page = 0; page < FrmPlan::pageCount; ++page) {
        EXPECT_EQ(form.frameOf(page).visible(), page == FrmPlan::period) << page;
    }
}

TEST_F(PlanPagesTest, ThePreviewTellsTheNextThreePeriodsByTheirLastDays) {
    Plan made = oneMegabyte();
    made.period.day = 31;
    open(made);

    EXPECT_EQ(planWindow().txtPreview.text(), "31.10.2026 to 29.11.2026\r\n"
                                              "30.11.2026 to 30.12.2026\r\n"
                                              "31.12.2026 to 30.01.2027");
}

TEST_F(PlanPagesTest, ThePreviewFollowsAFieldThatIsLeft) {
    open(oneMegabyte());

    enter(planWindow().txtDay, "14");

    EXPECT_THAT(planWindow().txtPreview.text(), HasSubstr("14.11.2026 to 13.12.2026"));
}

TEST_F(PlanPagesTest, ThePreviewTellsTheHourWhereItIsNotMidnight) {
    open(oneMegabyte());

    planWindow().cboHour.setListIndex(6);

    EXPECT_THAT(planWindow().txtPreview.text(), HasSubstr("01.11.2026 06:00 to 01.12.2026 06:00"));
}

TEST_F(PlanPagesTest, APackWithoutADateLastsUntilItIsUsedUp) {
    Plan made = oneMegabyte();
    made.period = {.kind = PeriodKind::Pack, .from = LocalDay(std::chrono::year(2026) / 11 / 2)};
    open(made);

    EXPECT_EQ(planWindow().txtPreview.text(), "02.11.2026 until it is used up");
}

TEST_F(PlanPagesTest, OnlyWhatThePeriodNeedsCanBeTyped) {
    open(oneMegabyte());
    FrmPlan& form = planWindow();

    form.cboPeriod.setListIndex(static_cast<int>(PeriodKind::Weeks));

    EXPECT_FALSE(form.txtDay.enabled());
    EXPECT_TRUE(form.txtEvery.enabled());
    EXPECT_TRUE(form.txtFrom.enabled());
    EXPECT_FALSE(form.txtUntil.enabled());
    EXPECT_FALSE(form.cboWeekday.enabled());
}

TEST_F(PlanPagesTest, LinesAreChosenByEnterOrTheButton) {
    open(oneMegabyte());
    FrmPlan& form = planWindow();
    EXPECT_FALSE(form.lstLines.enabled());
    form.optTheseLines.setValue(true);
    form.lstLines.setSelectedRow(1);
    form.lstLines.DblClick.raise();
    EXPECT_EQ(form.lstLines.cell(1, 0), "Ridge");
    EXPECT_EQ(form.lstLines.cell(1, 1), "yes");

    form.cmdOK.press();

    EXPECT_THAT(plan().lines, ElementsAre("Ridge"));
}

TEST_F(PlanPagesTest, AllLinesAgainForgetsThoseThatWereChosen) {
    Plan made = oneMegabyte();
    made.lines = {"Ridge"};
    open(made);

    planWindow().optAllLines.setValue(true);
    planWindow().cmdOK.press();

    EXPECT_THAT(plan().lines, IsEmpty());
}

TEST_F(PlanPagesTest, ThresholdsAreAddedChangedAndRemoved) {
    open(oneMegabyte());
    FrmPlan& form = planWindow();
    form.cmdAddThreshold.press();
    EXPECT_EQ(form.txtPercent.text(), "90");
    form.chkWindow.setValue(1);
    form.cboHangUp.setListIndex(2);
    enter(form.txtGrace, "1.5 MB");
    EXPECT_EQ(form.lstThresholds.cell(1, 1), "note, window, hang up after 1.5 MB more");
    form.lstThresholds.setSelectedRow(0);
    form.cmdRemoveThreshold.press();

    form.cmdOK.press();

    ASSERT_EQ(plan().thresholds.size(), 1U);
    EXPECT_EQ(plan().thresholds[0], (Threshold{.percent = 90,
                                               .window = true,
                                               .hangUp = HangUpRule::AfterGrace,
                                               .grace = {1500, SizeUnit::MB}}));
}

TEST_F(PlanPagesTest, FiveThresholdsAreTheMost) {
    open(oneMegabyte());
    for (int i = 0; i < 4; ++i) {
        planWindow().cmdAddThreshold.press();
    }

    EXPECT_EQ(planWindow().lstThresholds.rowCount(), 5);
    EXPECT_FALSE(planWindow().cmdAddThreshold.enabled());
}

TEST_F(PlanPagesTest, ChoosingAnotherPlanShowsItsOwnFields) {
    Plan second = oneMegabyte();
    second.number = 2;
    second.name = "Travel";
    second.counted = Counted::Sent;
    second.period.kind = PeriodKind::Daily;
    second.thresholds = {};
    startWithPlans({oneMegabyte(), second});
    openPlans();

    planWindow().lstPlans.setSelectedRow(1);

    EXPECT_EQ(planWindow().txtName.text(), "Travel");
    EXPECT_EQ(planWindow().cboCounted.text(), "Sent");
    EXPECT_EQ(planWindow().cboPeriod.text(), "A day");
    EXPECT_EQ(planWindow().lstThresholds.rowCount(), 0);
    EXPECT_FALSE(planWindow().txtPercent.enabled());
    planWindow().lstPlans.setSelectedRow(0);
    planWindow().cmdOK.press();
    EXPECT_EQ(plan(0), oneMegabyte());
    EXPECT_EQ(plan(1), second);
}

TEST_F(PlanPagesTest, AFieldThatCannotBeKeepsItsPlanAndItsThreshold) {
    Plan second = oneMegabyte();
    second.number = 2;
    Plan first = oneMegabyte();
    first.thresholds.push_back({.percent = 80});
    startWithPlans({first, second});
    openPlans();
    FrmPlan& form = planWindow();
    enter(form.txtAllowance, "apples");

    form.lstPlans.setSelectedRow(1);
    form.lstThresholds.setSelectedRow(1);
    form.cmdNew.press();
    form.cmdCopy.press();
    form.cmdAddThreshold.press();

    EXPECT_EQ(form.lstPlans.selectedRow(), 0);
    EXPECT_EQ(form.lstThresholds.selectedRow(), 0);
    EXPECT_EQ(form.lstPlans.rowCount(), 2);
    EXPECT_EQ(form.lstThresholds.rowCount(), 2);
    EXPECT_EQ(form.txtAllowance.text(), "apples");
    EXPECT_EQ(form.lblAllowanceReason.caption(), "A size, such as 10 GB.");
}

TEST_F(PlanPagesTest, WithoutALineTheseLinesAreNone) {
    open(oneMegabyte());
    FrmPlan& form = planWindow();
    form.optTheseLines.setValue(true);

    form.cmdOK.press();

    EXPECT_TRUE(form.visible());
    EXPECT_EQ(form.lblLinesReason.caption(), "At least one line.");
    EXPECT_EQ(form.cboPage.listIndex(), static_cast<int>(FrmPlan::lines));
    form.lstLines.setSelectedRow(0);
    form.cmdLine.press();
    EXPECT_EQ(form.lblLinesReason.caption(), "");
    form.cmdOK.press();
    EXPECT_FALSE(form.visible());
}

TEST_F(PlanPagesTest, WhereAllLinesCountTheListSaysSo) {
    open(oneMegabyte());
    FrmPlan& form = planWindow();
    EXPECT_EQ(form.lstLines.cell(0, 1), "yes");

    form.optTheseLines.setValue(true);

    EXPECT_EQ(form.lstLines.cell(0, 1), "no");
}

TEST_F(PlanPagesTest, TwentyLinesAreTheMost) {
    Plan made = oneMegabyte();
    for (int i = 10; i < 30; ++i) {
        made.lines.push_back("Line " + std::to_string(i));
    }
    open(made);
    FrmPlan& form = planWindow();
    form.lstLines.setSelectedRow(form.lstLines.rowCount() - 1);

    form.cmdLine.press();

    EXPECT_EQ(form.lblLinesReason.caption(), "20 lines at most.");
    form.cmdOK.press();
    EXPECT_EQ(plan().lines.size(), 20U);
}

TEST_F(PlanPagesTest, APackEndsAfterItsBeginning) {
    open(oneMegabyte());
    FrmPlan& form = planWindow();
    form.cboPeriod.setListIndex(5);
    enter(form.txtFrom, "10.11.2026");
    enter(form.txtUntil, "20.11.2026");

    enter(form.txtFrom, "20.11.2026");

    EXPECT_NE(form.lblFromReason.caption(), "");
    form.cmdOK.press();
    EXPECT_TRUE(form.visible());
}

TEST_F(PlanPagesTest, OfAPlanOfHoursTheGraceIsTime) {
    Plan made = oneMegabyte();
    made.allowance.reset();
    made.hours = 10;
    made.thresholds = {{.percent = 50, .hangUp = HangUpRule::AfterGrace, .graceMinutes = 30}};
    open(made);
    EXPECT_EQ(planWindow().lstThresholds.cell(0, 1), "note, hang up after 30 minutes more");

    enter(planWindow().txtAllowance, "10 GB");

    EXPECT_EQ(planWindow().lstThresholds.cell(0, 1), "note, hang up after 0 MB or 30 minutes more");
}

TEST_F(PlanPagesTest, ACopySaysTheSameUnderAnotherName) {
    Plan made = oneMegabyte();
    made.said = {{.period = LocalMoment(LocalDay(std::chrono::year(2026) / 11 / 1)), .said = {50}}};
    open(made);

    planWindow().cmdCopy.press();
    planWindow().cmdOK.press();

    ASSERT_EQ(world->plans.all.size(), 2U);
    EXPECT_EQ(plan(1).number, 2);
    EXPECT_EQ(plan(1).name, "Home (copy)");
    EXPECT_EQ(plan(1).allowance, plan(0).allowance);
    EXPECT_THAT(plan(1).said, IsEmpty());
}

TEST_F(PlanPagesTest, ADeletedPlanLeavesTheFile) {
    open(oneMegabyte());
    planWindow().cmdDelete.press();

    planWindow().cmdOK.press();

    EXPECT_THAT(world->plans.all, IsEmpty());
    EXPECT_THAT(ini(), Not(HasSubstr("Period=")));
    EXPECT_FALSE(frmMain().lblPlan.visible());
}

TEST_F(PlanPagesTest, NinePlansAreTheMost) {
    open(oneMegabyte());
    for (int i = 0; i < 8; ++i) {
        planWindow().cmdNew.press();
    }

    EXPECT_EQ(planWindow().lstPlans.rowCount(), 9);
    EXPECT_FALSE(planWindow().cmdNew.enabled());
    EXPECT_FALSE(planWindow().cmdCopy.enabled());
}

TEST_F(PlanPagesTest, SizesAreWrittenAndReadInTheUsersLocale) {
    Plan made = oneMegabyte();
    made.allowance = DataSize{.thousandths = 2500, .unit = SizeUnit::GiB};
    machine.locale.conventions = germanLocale();
    open(made);
    EXPECT_EQ(planWindow().txtAllowance.text(), "2,5 GiB");

    enter(planWindow().txtAllowance, "3,25 GiB");
    planWindow().cmdOK.press();

    EXPECT_EQ(plan().allowance, (DataSize{.thousandths = 3250, .unit = SizeUnit::GiB}));
}

} // namespace
} // namespace tarvik
