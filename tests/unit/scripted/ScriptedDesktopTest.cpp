#include "scripted/ScriptedDesktop.h"
#include "../../support/FormOn.h"

#include "controls/TestForm.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace tarvik {
namespace {

using Texts = std::vector<std::string>;

class ScriptedDesktopTest : public testing::Test {
protected:
    ScriptedDesktopTest() {
        desktop().fail = [this](const std::string& what) { failures.push_back(what); };
        form.setDesktop(machine.desktop);
        timer.Tick.connect([this] { ++ticks; });
    }

    ScriptedDesktop& desktop() { return machine.desktop; }

    MsgBoxAnswer show(const std::string& text, MsgBoxButtons buttons = MsgBoxButtons::OkOnly,
                      MsgBoxIcon icon = MsgBoxIcon::None) {
        return desktop().messageBox({text, buttons, icon, "Velmars Tarvik."});
    }

    void runTimer(std::int32_t interval) {
        form.load();
        timer.setInterval(interval);
        timer.setEnabled(true);
    }

    BareForm form;
    Timer timer{form, "timTick"};
    ScriptedPlatform machine;
    Texts failures;
    int ticks = 0;
};

TEST_F(ScriptedDesktopTest, AnAnnouncedBoxIsAnsweredAsAnnounced) {
    desktop().expect({"Go on?", MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes});

    const MsgBoxAnswer answer = show("Go on?", MsgBoxButtons::YesNo, MsgBoxIcon::Question);
    desktop().verify();

    EXPECT_EQ(answer, MsgBoxAnswer::Yes);
    EXPECT_EQ(failures, Texts{});
}

TEST_F(ScriptedDesktopTest, AnUnannouncedBoxFails) {
    show("Surprise!\rReally.", MsgBoxButtons::OkOnly, MsgBoxIcon::Critical);

    EXPECT_EQ(failures, Texts{"Unexpected box: \"Surprise!\nReally.\" [OK, icon critical]"});
}

TEST_F(ScriptedDesktopTest, AnUnannouncedBoxIsAnsweredAsEscapeWould) {
    EXPECT_EQ(show("a", MsgBoxButtons::OkOnly), MsgBoxAnswer::Ok);
    EXPECT_EQ(show("b", MsgBoxButtons::OkCancel), MsgBoxAnswer::Cancel);
    EXPECT_EQ(show("c", MsgBoxButtons::YesNo), MsgBoxAnswer::No);
    EXPECT_EQ(show("d", MsgBoxButtons::YesNoCancel), MsgBoxAnswer::Cancel);
}

TEST_F(ScriptedDesktopTest, ABoxThatDoesNotComeFails) {
    desktop().expect({.text = "Awaited", .icon = MsgBoxIcon::Information});

    desktop().verify();

    EXPECT_EQ(failures, Texts{"This box did not come: \"Awaited\" [OK, icon information]"});
}

TEST_F(ScriptedDesktopTest, ABoxIsComparedToTheLetter) {
    desktop().expect({.text = "Error: 5"});
    desktop().expect({.text = "Error: 6", .buttons = MsgBoxButtons::OkCancel});
    desktop().expect({.text = "Error: 7", .icon = MsgBoxIcon::Exclamation});
    desktop().expect({.text = "Two\rlines"});

    show("Error: 5 ");
    show("Error: 6");
    show("Error: 7", MsgBoxButtons::OkOnly, MsgBoxIcon::Critical);
    show("Two\nlines");

    EXPECT_EQ(failures.size(), 4U);
    EXPECT_EQ(failures.at(0), "Expected the box \"Error: 5\" [OK, icon none]\n"
                              "but this came: \"Error: 5 \" [OK, icon none]");
}

TEST_F(ScriptedDesktopTest, AnotherCaptionFails) {
    desktop().expect({.text = "Hello"});

    desktop().messageBox({.text = "Hello", .caption = "Velmars Tarvik"});

    EXPECT_EQ(failures, Texts{"The box's caption is \"Velmars Tarvik\"."});
}

TEST_F(ScriptedDesktopTest, WithoutATestAFailureIsThrown) {
    ScriptedDesktop own;

    EXPECT_THROW(own.messageBox({.text = "Hello", .caption = ""}), std::logic_error);
}

TEST_F(ScriptedDesktopTest, AnyBoxCanBeAnsweredByOneFunction) {
    desktop().answerAny = [](const MsgBoxRequest& request) {
        return request.text == "Yes?" ? MsgBoxAnswer::Yes : MsgBoxAnswer::No;
    };

    EXPECT_EQ(show("Yes?", MsgBoxButtons::YesNo), MsgBoxAnswer::Yes);
    EXPECT_EQ(show("No?", MsgBoxButtons::YesNo), MsgBoxAnswer::No);
    EXPECT_EQ(failures, Texts{});
}

TEST_F(ScriptedDesktopTest, TimersFireAtEachInterval) {
    runTimer(1000);

    desktop().advance(999);
    EXPECT_EQ(ticks, 0);
    desktop().advance(1);
    EXPECT_EQ(ticks, 1);
    desktop().advance(2500);

    EXPECT_EQ(ticks, 3);
}

TEST_F(ScriptedDesktopTest, TimersOfOneOrManyFormsFireInTheOrderInWhichTheyAreDue) {
    FormOn<BareForm> other(machine.desktop, "frmOther");
    Timer slow(other, "timSlow");
    Texts order;
    timer.Tick.connect([&] { order.emplace_back("quick"); });
    slow.Tick.connect([&] { order.emplace_back("slow"); });
    other.load();
    slow.setInterval(500);
    slow.setEnabled(true);
    runTimer(200);

    desktop().advance(700);
    other.unload();

    EXPECT_EQ(order, (Texts{"quick", "quick", "slow", "quick"}));
}

TEST_F(ScriptedDesktopTest, SwitchingATimerOnOrChangingItsIntervalStartsAnew) {
    runTimer(1000);
    desktop().advance(900);
    timer.setEnabled(false);
    timer.setEnabled(true);

    desktop().advance(900);
    EXPECT_EQ(ticks, 0);
    timer.setInterval(300);
    desktop().advance(299);
    EXPECT_EQ(ticks, 0);
    desktop().advance(1);

    EXPECT_EQ(ticks, 1);
}

TEST_F(ScriptedDesktopTest, ATimerOfAnUnloadedFormDoesNotFire) {
    runTimer(1000);
    form.unload();

    desktop().advance(5000);

    EXPECT_EQ(ticks, 0);
}

TEST_F(ScriptedDesktopTest, ATickMayUnloadItsForm) {
    runTimer(1000);
    timer.Tick.connect([this] {
        ++ticks;
        form.unload();
    });

    desktop().advance(5000);

    EXPECT_EQ(ticks, 1);
}

TEST_F(ScriptedDesktopTest, TicksAreDroppedWhileABoxIsOpen) {
    runTimer(1000);
    desktop().expect({.text = "Wait", .meanwhile = [this] { desktop().advance(3500); }});

    show("Wait");
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(desktop().ticksDropped, 3);
    desktop().advance(500);

    EXPECT_EQ(ticks, 1);
}

TEST_F(ScriptedDesktopTest, TimeThatPassesWithinATickIsNotTakenBack) {
    runTimer(1000);
    timer.Tick.connect([this] {
        if (++ticks == 1) {
            desktop().expect({.text = "Wait", .meanwhile = [this] { desktop().advance(9400); }});
            show("Wait");
        }
    });

    desktop().advance(1000);
    desktop().advance(599);
    EXPECT_EQ(ticks, 1);
    desktop().advance(1);

    EXPECT_EQ(ticks, 2);
}

TEST_F(ScriptedDesktopTest, ABlockingCallRunsInPlaceAndRefusesInput) {
    runTimer(1000);
    bool refused = false;
    bool ran = false;
    desktop().whileBlocking = [&] {
        refused = !desktop().takesInput();
        desktop().advance(2000);
    };

    desktop().runBlocking([&] { ran = true; });

    EXPECT_TRUE(ran);
    EXPECT_TRUE(refused);
    EXPECT_TRUE(desktop().takesInput());
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(desktop().blockingCalls, 1);
}

TEST_F(ScriptedDesktopTest, WhatABlockingCallThrowsComesOutAndInputIsTakenAgain) {
    EXPECT_THROW(desktop().runBlocking([] { throw std::runtime_error("no line"); }),
                 std::runtime_error);

    EXPECT_TRUE(desktop().takesInput());
}

TEST_F(ScriptedDesktopTest, AMenuIsNotedAndLeftWithTheScriptedEntry) {
    Menu menu(form, "mnuMenu", "mnuEntry", {"Show", "Hide"});
    std::vector<int> chosen;
    menu.Click.connect([&](int index) { chosen.push_back(index); });

    desktop().popUpMenu(menu, form);
    desktop().menuChoice = 1;
    desktop().popUpMenu(menu, form);

    EXPECT_EQ(desktop().menusOpened, (Texts{"frmBare.mnuMenu", "frmBare.mnuMenu"}));
    EXPECT_EQ(chosen, std::vector<int>{1});
}

TEST_F(ScriptedDesktopTest, BeepsAndRoundsOfEventsAreCounted) {
    int rounds = 0;
    desktop().whileProcessing = [&] { ++rounds; };

    desktop().beep();
    desktop().beep();
    desktop().processEvents();

    EXPECT_EQ(desktop().beeps, 2);
    EXPECT_EQ(desktop().eventRounds, 1);
    EXPECT_EQ(rounds, 1);
}

TEST_F(ScriptedDesktopTest, RunReturnsOnceNoFormIsLeft) {
    desktop().run();
    EXPECT_EQ(failures, Texts{});

    form.load();
    desktop().run();
    EXPECT_EQ(failures, Texts{"The program would run on: the test must end it first."});

    desktop().quit();
    desktop().run();
    EXPECT_EQ(failures.size(), 1U);
}

TEST_F(ScriptedDesktopTest, TheEndOfTheSessionUnloadsFormsAndNobodyAnswersBoxes) {
    form.load();
    std::vector<UnloadMode> modes;
    MsgBoxAnswer answer = MsgBoxAnswer::Yes;
    form.QueryUnload.connect([&](bool&, UnloadMode mode) {
        modes.push_back(mode);
        answer = show("Save?", MsgBoxButtons::YesNo);
    });

    desktop().endSession();

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::AppWindows});
    EXPECT_EQ(answer, MsgBoxAnswer::No);
    EXPECT_EQ(failures, Texts{});
    EXPECT_TRUE(desktop().hasQuit);
}

TEST_F(ScriptedDesktopTest, AFormThatIsGoneBeforeItsTurnIsLeftAloneAtTheEndOfTheSession) {
    auto second = std::make_unique<BareForm>("frmSecond");
    form.load();
    second->load();
    form.Unload.connect([&] {
        second->unload();
        second.reset();
    });

    desktop().endSession();

    EXPECT_TRUE(desktop().realisedForms().empty());
}

TEST_F(ScriptedDesktopTest, ChangesOfAWithdrawnFormAreNotNoted) {
    form.load();
    timer.setInterval(50);
    form.unload();
    timer.setInterval(60);

    EXPECT_EQ(desktop().changesTold, Texts{"frmBare.timTick"});
}

} // namespace
} // namespace tarvik
