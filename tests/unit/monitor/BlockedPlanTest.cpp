#include "monitor/mdlPlanFigures.h"
#include "monitor/mdlPlanWords.h"
#include "settings/PlanLifeTest.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

class BlockedPlanTest : public PlanLifeTest {
protected:
    Plan blocking() {
        Plan made = oneMegabyte();
        made.thresholds = {{.percent = 100}};
        made.blockAfterLast = true;
        return made;
    }
    bool isUp() { return machine.connections.connection(ridge) != nullptr; }
};

TEST_F(BlockedPlanTest, TheLineThatIsUpGoesOn) {
    startWithPlan(blocking());
    carry(1'000'000);
    carry(10'000);

    EXPECT_TRUE(isUp());
}

TEST_F(BlockedPlanTest, ANewOneIsHungUpAndTold) {
    startWithPlan(blocking());
    carry(1'000'000);
    endTheLine();
    ridge = machine.connections.connect("Ridge");

    tick();
    EXPECT_FALSE(isUp());

    tickAfter(10);
    EXPECT_THAT(planNotes().back().text,
                "Home: A new connection was hung up, as the last threshold is reached.");
}

TEST_F(BlockedPlanTest, OneThatGoesOnAfterAKillIsLeftUp) {
    startWithPlan(blocking());
    carry(1'000'000);
    newWorld();
    expectInstanceQuestion();
    start("/r");

    tick();

    EXPECT_TRUE(isUp());
}

TEST_F(BlockedPlanTest, ThePlanThatIsUsedUpWhenItIsMadeLeavesWhatIsUpAlone) {
    startWithPlan();
    carry(1'000'000);
    openPlans();
    planWindow().chkBlock.setValue(1);

    planWindow().cmdOK.press();
    tick();

    EXPECT_TRUE(isUp());
    harbour = machine.connections.connect("Harbour");
    tick();
    EXPECT_EQ(machine.connections.connection(harbour), nullptr);
    EXPECT_TRUE(isUp());
}

TEST_F(BlockedPlanTest, WhatIsUpAtAStartIsLeftUp) {
    startWithPlan(blocking());
    carry(1'000'000);
    endSession();
    newWorld();
    machine.desktop.answerAny = [](const MsgBoxRequest&) { return MsgBoxAnswer::Yes; };
    start("/r");

    tick();
    tick();

    EXPECT_TRUE(isUp());
}

TEST_F(BlockedPlanTest, AnExtensionLetsNewOnesUpAgain) {
    startWithPlan(blocking());
    carry(1'000'000);
    endTheLine();
    EXPECT_TRUE(machine.notificationArea.answer(1));
    ridge = machine.connections.connect("Ridge");

    tick();

    EXPECT_TRUE(isUp());
}

} // namespace
} // namespace tarvik
