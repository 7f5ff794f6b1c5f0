#include "monitor/mdlCodeReset.h"
#include "settings/PlanLifeTest.h"
#include "settings/mdlSettingsBackup.h"
#include "settings/mdlSettingsLog.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::HasSubstr;
using testing::Not;

using PlansInFileTest = PlanLifeTest;

TEST_F(PlansInFileTest, WithoutAPlanNothingOfItIsWritten) {
    count(5000);
    endTheLine();
    endSession();

    EXPECT_THAT(ini(), Not(HasSubstr("[Plan")));
}

TEST_F(PlansInFileTest, AStartTakesThePlansThatTheFileHas) {
    Plan second = oneMegabyte();
    second.number = 4;
    second.name = "Travel";

    startWithPlans({oneMegabyte(), second});

    ASSERT_EQ(world->plans.all.size(), 2U);
    EXPECT_EQ(plan(0), oneMegabyte());
    EXPECT_EQ(plan(1), second);
}

TEST_F(PlansInFileTest, APlanStandsInTheFileAfterEverySave) {
    startWithPlan();
    plan().name = "Changed";

    EXPECT_TRUE(SaveState());

    EXPECT_THAT(ini(), HasSubstr("Name=\"Changed\"\r\n"));
}

TEST_F(PlansInFileTest, AKeyThatIsNoneOfAPlansStays) {
    setIni(std::string(usualSection) + "[Plan 1]\r\nColour=blue\r\nPeriod=Month\r\n");
    start("/r");
    plan().name = "Changed";

    EXPECT_TRUE(SaveState());

    EXPECT_THAT(ini(), HasSubstr("Colour=blue\r\n"));
}

TEST_F(PlansInFileTest, WhatAnotherCopyHasWrittenMeanwhileStays) {
    startWithPlan();
    Plan theirs = oneMegabyte();
    theirs.name = "Theirs";
    writePlan(machine.platform.profile, iniPath, theirs);

    EXPECT_TRUE(SaveState());

    EXPECT_THAT(ini(), HasSubstr("Name=\"Theirs\"\r\n"));
}

TEST_F(PlansInFileTest, ASaveThatFailsIsMadeUpForByTheNextOne) {
    startWithPlan();
    plan().name = "Changed";
    machine.files.replaceFailure = ErrorNumber::PathFileAccess;
    EXPECT_FALSE(SavePlans());
    machine.files.replaceFailure.reset();

    EXPECT_TRUE(SaveState());

    EXPECT_THAT(ini(), HasSubstr("Name=\"Changed\"\r\n"));
}

TEST_F(PlansInFileTest, ABackupLeavesThemInTheNewFile) {
    startWithPlan();
    carry(5000);

    EXPECT_TRUE(BackupINIFile());

    EXPECT_THAT(ini(), HasSubstr("[Plan 1]"));
    EXPECT_THAT(ini(), Not(HasSubstr("RefreshInterval")));
}

class PlansAfterBackupTest : public PlanLifeTest {
protected:
    /// A reset with a backup is due; the program is killed within it.
    void startBeforeReset() {
        startWithPlan();
        carry(5000);
        state().TransferResetEnable = state().TransferResetBackup = 1;
        state().TransferReset = enDateCalc::EndOfDay;
    }
};

TEST_F(PlansAfterBackupTest, AKillBeforeTheyAreWrittenAgainLosesNone) {
    startBeforeReset();
    EXPECT_TRUE(BackupINIFile());
    machine.files.remove(iniPath); // as it was a moment before
    newWorld();
    expectFirstRunBoxes();
    start("/r");

    ASSERT_EQ(world->plans.all.size(), 1U);
    EXPECT_EQ(plan(), oneMegabyte());
    EXPECT_THAT(ini(), HasSubstr("[Plan 1]"));
}

TEST_F(PlansAfterBackupTest, AKillAfterTheyWereWrittenAgainResetsOnce) {
    startBeforeReset();
    EXPECT_TRUE(BackupINIFile());
    newWorld();
    expectWarning("Warning: Old settings could not be loaded.\rAssuming first run.");
    start("/r");

    EXPECT_EQ(received(), 0);
    ASSERT_EQ(world->plans.all.size(), 1U);
}

} // namespace
} // namespace tarvik
