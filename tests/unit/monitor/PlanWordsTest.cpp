#include "monitor/mdlPlanFigures.h"
#include "monitor/mdlPlanWords.h"
#include "settings/PlanLifeTest.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::IsEmpty;

using testing::StartsWith;

class PlanWordsTest : public PlanLifeTest {
protected:
    void openWithCarried(std::uint32_t bytes) {
        startWithPlan();
        carry(bytes);
        openPlans();
    }
};

TEST_F(PlanWordsTest, TheProvidersFigureIsCountedOn) {
    openWithCarried(300'000);
    planWindow().txtProvider.setText("0.4 MB");

    planWindow().cmdProvider.press();
    carry(10'000);

    EXPECT_EQ(standing().used.bytes, 410'000U);
    EXPECT_EQ(planWindow().lstNotes.cell(0, 1), "The provider says 0.4 MB");
}

TEST_F(PlanWordsTest, ItCanBeTakenBack) {
    openWithCarried(300'000);
    planWindow().txtProvider.setText("0.4 MB");
    planWindow().cmdProvider.press();
    planWindow().lstNotes.setSelectedRow(0);

    planWindow().cmdTakeBack.press();

    EXPECT_EQ(standing().used.bytes, 300'000U);
    EXPECT_EQ(planWindow().lstNotes.rowCount(), 0);
}

TEST_F(PlanWordsTest, TwoInOneSecondAreTakenBackOneByOne) {
    openWithCarried(300'000);
    planWindow().txtProvider.setText("0.4 MB");
    planWindow().cmdProvider.press();
    planWindow().txtProvider.setText("0.6 MB");
    planWindow().cmdProvider.press();
    EXPECT_EQ(standing().used.bytes, 600'000U);
    planWindow().lstNotes.setSelectedRow(0);

    planWindow().cmdTakeBack.press();

    EXPECT_EQ(standing().used.bytes, 400'000U);
    EXPECT_EQ(planWindow().lstNotes.rowCount(), 1);
}

TEST_F(PlanWordsTest, EnterInItsBoxIsForItAndNotForOk) {
    openWithCarried(300'000);
    planWindow().txtProvider.GotFocus.raise();
    planWindow().txtProvider.setText("0.4 MB");

    planWindow().cmdOK.press();

    EXPECT_TRUE(planWindow().visible());
    EXPECT_EQ(standing().used.bytes, 400'000U);
    EXPECT_EQ(planWindow().txtProvider.text(), "");
    planWindow().cmdOK.press();
    EXPECT_FALSE(planWindow().visible());
}

TEST_F(PlanWordsTest, EnterIsForAnExtensionThatWasTyped) {
    openWithCarried(300'000);
    planWindow().txtExtend.GotFocus.raise();
    planWindow().txtExtend.setText("2 MiB");

    planWindow().cmdOK.press();

    EXPECT_TRUE(planWindow().visible());
    EXPECT_EQ(planWindow().lstNotes.cell(0, 1), "Extended by 2 MiB today");
    planWindow().txtExtend.LostFocus.raise();
    planWindow().cmdOK.press();
    EXPECT_FALSE(planWindow().visible());
}

TEST_F(PlanWordsTest, WhatWasTypedForOnePlanIsNotLeftForAnother) {
    Plan second = oneMegabyte();
    second.number = 2;
    startWithPlans({oneMegabyte(), second});
    openPlans();
    planWindow().txtProvider.setText("0.4 MB");

    planWindow().lstPlans.setSelectedRow(1);

    EXPECT_EQ(planWindow().txtProvider.text(), "");
}

TEST_F(PlanWordsTest, WithoutTicksTheWindowTellsHowItStandsWhenItIsOpened) {
    startWithPlan();
    carry(300'000);
    endTheLine();
    frmMain().cmdMonitor.press();
    machine.clock.advanceSeconds(30 * 86'400);

    openPlans();

    EXPECT_THAT(planWindow().lblNow.caption(), StartsWith("0 of 1 MB"));
}

TEST_F(PlanWordsTest, WhatIsNoAmountGetsItsReason) {
    openWithCarried(300'000);
    planWindow().txtProvider.setText("a lot");

    planWindow().cmdProvider.press();

    EXPECT_EQ(planWindow().lblNowReason.caption(), "A size or a time, such as 500 MB or 2 hours.");
    EXPECT_THAT(written().notes, IsEmpty());
}

TEST_F(PlanWordsTest, WhatThePlanDoesNotCountGetsItToo) {
    openWithCarried(300'000);
    planWindow().txtExtend.setText("2 hours");

    planWindow().cmdExtend.press();

    EXPECT_EQ(planWindow().lblNowReason.caption(), "A size or a time, such as 500 MB or 2 hours.");
}

TEST_F(PlanWordsTest, AnExtensionStandsInTheList) {
    openWithCarried(300'000);
    planWindow().cboExtend.setListIndex(1);

    planWindow().cmdExtend.press();

    EXPECT_EQ(planWindow().lstNotes.cell(0, 1), "Extended by 500 MB to the period's end");
    EXPECT_EQ(standing().total().bytes, 501'000'000U);
}

TEST_F(PlanWordsTest, WhatCannotBeWrittenIsTold) {
    openWithCarried(300'000);
    machine.files.flushFailure = ErrorNumber::PathFileAccess;
    expectFailure("Error: It could not be written into the ledger.");

    planWindow().cmdExtend.press();

    machine.files.flushFailure.reset();
    EXPECT_EQ(standing().extended.bytes, 0U);
}

TEST_F(PlanWordsTest, TheWindowFollowsTheLine) {
    openWithCarried(300'000);
    EXPECT_EQ(planWindow().prgUsed.value(), 30);
    EXPECT_EQ(planWindow().lblUsedPercent.caption(), "30 %");
    EXPECT_EQ(planWindow().lblPassedPercent.caption(), "51 %");

    carry(100'000);

    EXPECT_EQ(planWindow().prgUsed.value(), 40);
}

} // namespace
} // namespace tarvik
