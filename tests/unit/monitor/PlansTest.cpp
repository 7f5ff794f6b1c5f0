#include "monitor/mdlPlanFigures.h"
#include "monitor/mdlPlanWords.h"
#include "settings/PlanLifeTest.h"

#include <gmock/gmock.h>

namespace tarvik {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class PlansTest : public PlanLifeTest {
protected:
    Plan withThresholds(std::vector<Threshold> thresholds) {
        Plan made = oneMegabyte();
        made.thresholds = std::move(thresholds);
        return made;
    }
    std::string tip() { return machine.notificationArea.requests.back().data.szTip; }
    bool isUp() { return machine.connections.connection(ridge) != nullptr; }
};

TEST_F(PlansTest, WithoutAPlanNeitherWindowNorIconTellsOfOne) {
    count(600'000);

    EXPECT_FALSE(frmMain().lblPlan.visible());
    EXPECT_THAT(tip(), Not(HasSubstr("\n")));
    EXPECT_THAT(planNotes(), IsEmpty());
}

TEST_F(PlansTest, ALineTellsHowItStandsWithEachTick) {
    startWithPlan();
    carry(250'000);

    EXPECT_TRUE(frmMain().lblPlan.visible());
    EXPECT_EQ(line(), "0.2 of 1 MB \xC2\xB7 15 days left \xC2\xB7 0 MB a day");
}

TEST_F(PlansTest, TheTipTellsItInItsSecondLine) {
    startWithPlan();
    carry(250'000);

    EXPECT_THAT(tip(), HasSubstr("\n0.2 of 1 MB"));
    EXPECT_THAT(tip(), StartsWith("Velmars Tarvik: Active connection.\n"));
}

TEST_F(PlansTest, TheIconIsMarkedFromTheFirstThresholdAndFromTheLast) {
    startWithPlan(withThresholds({{.percent = 50}, {.percent = 100}}));
    const auto icon = [&] { return machine.notificationArea.requests.back().data.hIcon; };
    carry(100'000);
    EXPECT_EQ(icon(), iconNumber(TrayIcon::imgSysTrayOnline, TrayMark::None));

    carry(500'000);
    EXPECT_EQ(icon(), iconNumber(TrayIcon::imgSysTrayOnline, TrayMark::First));
    carry(500'000);
    EXPECT_EQ(icon(), iconNumber(TrayIcon::imgSysTrayOnline, TrayMark::Last));
}

TEST_F(PlansTest, AThresholdIsSaidOnceInAPeriod) {
    startWithPlan();
    carry(500'000);
    carry(10'000);

    ASSERT_EQ(planNotes().size(), 1U);
    EXPECT_EQ(planNotes()[0].title, "Velmars Tarvik");
    EXPECT_THAT(planNotes()[0].text, StartsWith("Home: 50 % is used.\r0.5 of 1 MB"));
    EXPECT_EQ(planNotes()[0].urgency, DesktopNote::Urgency::Normal);
}

TEST_F(PlansTest, WhatWasSaidIsNotSaidAgainAfterAKill) {
    startWithPlan();
    carry(500'000);
    newWorld();
    expectInstanceQuestion();
    start("/r");

    carry(10'000);

    EXPECT_EQ(planNotes().size(), 1U);
}

TEST_F(PlansTest, ItIsSaidAgainInTheNextPeriod) {
    startWithPlan();
    carry(500'000);
    machine.clock.advanceSeconds(20.0 * 86'400);

    carry(500'000);

    EXPECT_EQ(planNotes().size(), 2U);
}

TEST_F(PlansTest, OfSeveralAtOnceTheHighestIsSaid) {
    startWithPlan(withThresholds({{.percent = 50}, {.percent = 80}, {.percent = 100}}));
    carry(900'000);

    ASSERT_EQ(planNotes().size(), 1U);
    EXPECT_THAT(planNotes()[0].text, StartsWith("Home: 80 % is used."));
}

TEST_F(PlansTest, TheLastOneIsUrgent) {
    startWithPlan(withThresholds({{.percent = 100}}));
    carry(1'000'000);

    ASSERT_EQ(planNotes().size(), 1U);
    EXPECT_EQ(planNotes()[0].urgency, DesktopNote::Urgency::Critical);
}

TEST_F(PlansTest, TheNotesButtonExtendsIt) {
    startWithPlan();
    carry(500'000);
    ASSERT_THAT(planNotes()[0].buttons,
                ElementsAre("Extend by 500 MB today", "Extend by 500 MB to the period's end"));

    EXPECT_TRUE(machine.notificationArea.answer(1));

    EXPECT_EQ(standing().extended.bytes, 500'000'000U);
    ASSERT_EQ(written().notes.size(), 1U);
}

TEST_F(PlansTest, TheIconsMenuExtendsIt) {
    startWithPlan();
    carry(500'000);
    const Menu& menu = frmSysTray().mnuPopUp;
    ASSERT_EQ(menu.order(), (std::vector<int>{7, 8, 9, 0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(menu.entry(FrmSysTray::extendToday).caption, "Extend by 500 MB today");
    EXPECT_EQ(menu.entry(FrmSysTray::extendPeriod).caption, "Extend by 500 MB to the period's end");

    frmSysTray().mnuPopUp.choose(FrmSysTray::extendPeriod);

    EXPECT_EQ(standing().extended.bytes, 500'000'000U);
    ASSERT_EQ(written().notes.size(), 1U);
}

TEST_F(PlansTest, OfSeveralTheIconsMenuNamesAndExtendsThatOfWhichMostIsUsed) {
    Plan larger = oneMegabyte();
    larger.number = 2;
    larger.name = "All";
    larger.allowance = DataSize{.thousandths = 2000, .unit = SizeUnit::MB};
    Plan hours = oneMegabyte();
    hours.number = 3;
    hours.name = "Hours";
    hours.allowance.reset();
    hours.hours = 1;
    startWithPlans({larger, oneMegabyte(), hours});
    carry(100'000);
    Menu& menu = frmSysTray().mnuPopUp;
    EXPECT_EQ(menu.entry(FrmSysTray::extendToday).caption, "Extend by 500 MB today (Home)");
    pass(1800);

    tick();
    menu.choose(FrmSysTray::extendToday);

    EXPECT_EQ(menu.entry(FrmSysTray::extendToday).caption, "Extend by 1 hour today (Hours)");
    EXPECT_EQ(standing(2).extended.milliseconds, 3'600'000U);
}

TEST_F(PlansTest, ThePlanThatLimitsNothingIsNotExtended) {
    Plan free = oneMegabyte();
    free.allowance.reset();
    startWithPlan(free);

    carry(500'000);

    EXPECT_EQ(frmSysTray().mnuPopUp.entries().size(), 7U);
}

TEST_F(PlansTest, WithoutAPlanTheIconsMenuHasItsOwnEntriesAlone) {
    startWithPlan();
    carry(500'000);
    openPlans();
    planWindow().cmdDelete.press();

    planWindow().cmdOK.press();

    EXPECT_EQ(frmSysTray().mnuPopUp.entries().size(), 7U);
}

TEST_F(PlansTest, AnExtensionForTodayEndsWithTheDay) {
    startWithPlan();
    carry(500'000);
    EXPECT_TRUE(machine.notificationArea.answer(0));
    EXPECT_EQ(standing().extended.bytes, 500'000'000U);
    machine.clock.advanceSeconds(86'400);

    tick();

    EXPECT_EQ(standing().extended.bytes, 0U);
}

TEST_F(PlansTest, AClickOnTheNoteOpensTheMainWindow) {
    startWithPlan();
    frmMain().setVisible(false);
    carry(500'000);

    EXPECT_TRUE(machine.notificationArea.answer(NotificationArea::noteClicked));

    EXPECT_TRUE(frmMain().visible());
}

TEST_F(PlansTest, ANoteThatNobodyCanSeeYetComesLater) {
    startWithPlan();
    machine.notificationArea.present = false;
    carry(500'000);
    EXPECT_THAT(planNotes(), IsEmpty());
    machine.notificationArea.present = true;

    tickAfter(10);

    EXPECT_EQ(planNotes().size(), 1U);
}

TEST_F(PlansTest, TheWarningWindowTellsAndExtends) {
    startWithPlan(withThresholds({{.percent = 50, .note = false, .window = true}}));
    carry(500'000);
    FrmPlanWarning& warning = world->forms.frmPlanWarning;
    EXPECT_TRUE(warning.visible());
    EXPECT_TRUE(warning.isQuiet());
    EXPECT_THAT(warning.lblDescription.caption(), StartsWith("Home: 50 % is used."));
    EXPECT_THAT(planNotes(), IsEmpty());

    warning.cmdExtendPeriod.press();

    EXPECT_FALSE(warning.visible());
    EXPECT_EQ(standing().extended.bytes, 500'000'000U);
}

TEST_F(PlansTest, TheWarningWindowOpensThePlansAndIsClosed) {
    startWithPlan(withThresholds({{.percent = 50, .note = false, .window = true}}));
    carry(500'000);
    FrmPlanWarning& warning = world->forms.frmPlanWarning;

    warning.cmdPlan.press();
    EXPECT_TRUE(planWindow().visible());
    warning.cmdCancel.press();
    EXPECT_FALSE(warning.visible());
}

TEST_F(PlansTest, TheProgramGetsTheFiguresInItsEnvironment) {
    startWithPlan(
        withThresholds({{.percent = 50, .note = false, .program = "C:\\Tools\\tell.exe"}}));
    carry(500'000);

    const auto& launches = machine.program.launches;
    ASSERT_EQ(launches.size(), 1U);
    EXPECT_EQ(launches[0].path, "C:\\Tools\\tell.exe");
    EXPECT_THAT(launches[0].variables, ElementsAre(testing::Pair("TARVIK_PLAN", "Home"),
                                                   testing::Pair("TARVIK_PERCENT", "50"),
                                                   testing::Pair("TARVIK_USED_BYTES", "500000"),
                                                   testing::Pair("TARVIK_TOTAL_BYTES", "1000000"),
                                                   testing::Pair("TARVIK_LEFT_BYTES", "500000"),
                                                   testing::Pair("TARVIK_USED_SECONDS", "10"),
                                                   testing::Pair("TARVIK_TOTAL_SECONDS", "0"),
                                                   testing::Pair("TARVIK_LEFT_SECONDS", "0")));
}

TEST_F(PlansTest, AProgramThatCannotBeStartedIsTold) {
    startWithPlan(
        withThresholds({{.percent = 50, .note = false, .program = "C:\\Tools\\tell.exe"}}));
    machine.program.launchFails = true;
    carry(500'000);

    EXPECT_THAT(notes(), ElementsAre("Home: The program could not be started.\r"
                                     "C:\\Tools\\tell.exe"));
}

TEST_F(PlansTest, AThresholdHangsUpAtOnce) {
    startWithPlan(withThresholds({{.percent = 50, .hangUp = HangUpRule::AtOnce}}));
    carry(400'000);
    EXPECT_TRUE(isUp());

    carry(100'000);

    EXPECT_FALSE(isUp());
}

TEST_F(PlansTest, AThresholdHangsUpAfterSoMuchMore) {
    startWithPlan(withThresholds(
        {{.percent = 50, .hangUp = HangUpRule::AfterGrace, .grace = {100, SizeUnit::MB}}}));
    carry(500'000);
    EXPECT_TRUE(isUp());
    EXPECT_EQ(planNotes().size(), 1U);

    carry(100'000);

    EXPECT_FALSE(isUp());
    EXPECT_EQ(planNotes().size(), 1U);
}

TEST_F(PlansTest, ItHangsUpOnceOnly) {
    startWithPlan(withThresholds({{.percent = 50, .hangUp = HangUpRule::AtOnce}}));
    carry(500'000);
    ASSERT_FALSE(isUp());
    tick();

    carry(10'000);

    EXPECT_TRUE(isUp());
}

TEST_F(PlansTest, OnlyThePlansOwnLinesAreHungUp) {
    Plan made = withThresholds({{.percent = 50, .hangUp = HangUpRule::AtOnce}});
    made.lines = {"Ridge"};
    startWithPlan(made);
    harbour = machine.connections.connect("Harbour");
    tick();

    carry(500'000);

    EXPECT_FALSE(isUp());
    EXPECT_NE(machine.connections.connection(harbour), nullptr);
}

TEST_F(PlansTest, WhatTwoPlansTellAtOnceIsToldOneAfterTheOther) {
    Plan second = withThresholds({{.percent = 50, .note = true, .window = true}});
    second.number = 2;
    second.name = "Away";
    startWithPlans({withThresholds({{.percent = 50, .note = true, .window = true}}), second});

    carry(500'000);

    ASSERT_EQ(planNotes().size(), 1U);
    EXPECT_THAT(planNotes()[0].text, StartsWith("Home: 50 % is used."));
    FrmPlanWarning& warning = world->forms.frmPlanWarning;
    EXPECT_THAT(warning.lblDescription.caption(), StartsWith("Home: 50 % is used."));
    warning.cmdExtendPeriod.press();
    EXPECT_THAT(warning.lblDescription.caption(), StartsWith("Away: 50 % is used."));
    EXPECT_EQ(standing(0).extended.bytes, 500'000'000U);
    EXPECT_EQ(standing(1).extended.bytes, 0U);
    warning.cmdCancel.press();
    EXPECT_FALSE(warning.visible());
    tickAfter(10);
    ASSERT_EQ(planNotes().size(), 2U);
    EXPECT_THAT(planNotes()[1].text, StartsWith("Away: 50 % is used."));
}

TEST_F(PlansTest, AWarningOfAPlanThatIsNoMoreExtendsNone) {
    startWithPlan(withThresholds({{.percent = 50, .window = true}}));
    carry(500'000);
    openPlans();
    planWindow().cmdDelete.press();
    machine.clock.advanceSeconds(1);
    planWindow().cmdNew.press();
    planWindow().cmdOK.press();
    ASSERT_EQ(plan().number, 1);

    world->forms.frmPlanWarning.cmdExtendPeriod.press();

    EXPECT_FALSE(world->forms.frmPlanWarning.visible());
    EXPECT_TRUE(written().notes.empty());
}

TEST_F(PlansTest, OfBytesAndHoursThatIsExtendedOfWhichMoreIsUsed) {
    Plan both = withThresholds({{.percent = 50}});
    both.hours = 1;
    startWithPlan(both);
    carry(10'000);
    EXPECT_EQ(frmSysTray().mnuPopUp.entry(FrmSysTray::extendToday).caption,
              "Extend by 500 MB today");
    pass(1800);
    tick();

    EXPECT_TRUE(machine.notificationArea.answer(1));

    EXPECT_EQ(standing().extended, (Quantity{0, 3'600'000}));
}

TEST_F(PlansTest, WhereTheProgramEndsAtABoxNothingMoreIsSaidOrHungUp) {
    Plan second = withThresholds({{.percent = 50, .note = true}});
    second.number = 2;
    startWithPlans(
        {withThresholds({{.percent = 50, .note = false, .hangUp = HangUpRule::AtOnce}}), second});
    ridge = machine.connections.connect("Ridge");
    tick();
    machine.connections.failNext("RasHangUpA", 601);
    machine.desktop.answerAny = [&](const MsgBoxRequest&) {
        frmMain().unload(UnloadMode::AppWindows);
        return MsgBoxAnswer::Ok;
    };

    tickAfter(10, 500'000);

    EXPECT_THAT(planNotes(), IsEmpty());
    EXPECT_THAT(machine.files.file(iniPath), Not(HasSubstr("[Plan 2]\r\nSaid")));
}

TEST_F(PlansTest, WhatIsSaidAfterTheClockWasPutRightHoldsAtOnce) {
    startWithPlan();
    carry(100'000);
    const Date right = machine.clock.now;
    const std::int64_t universal = machine.clock.universal;
    machine.clock.advanceSeconds(20 * 86'400);
    tick();
    ASSERT_TRUE(ExtendPlan(plan().key(), false));
    machine.clock.now = right;
    machine.clock.universal = universal;
    tick();

    ASSERT_TRUE(ExtendPlan(plan().key(), false));

    EXPECT_EQ(standing().extended.bytes, 500'000'000U);
}

TEST_F(PlansTest, APlanThatWasMadeWhileTheClockWasAheadHearsWhatIsSaidNow) {
    Plan made = oneMegabyte();
    made.made = Moment(std::chrono::sys_days(std::chrono::year(2026) / 12 / 24));
    startWithPlan(made);
    carry(100'000);

    ASSERT_TRUE(ExtendPlan(plan().key(), false));

    EXPECT_EQ(standing().extended.bytes, 500'000'000U);
}

} // namespace
} // namespace tarvik
