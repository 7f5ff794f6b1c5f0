#include "contracts/FaceContract.h"

#include "types/RunTimeError.h"

namespace tarvik {
namespace {

TEST_F(FaceContract, WhatABlockingCallThrowsIsThrownToTheCaller) {
    EXPECT_THROW(face->desktop().runBlocking([] { raise(ErrorNumber::Overflow); }), RunTimeError);
}

TEST_F(FaceContract, RunEndsWhenNoFormIsLeft) {
    face->runWith([&] { form.unload(); });
    face->desktop().run(); // nothing is realised: returns at once

    EXPECT_FALSE(form.loaded());
}

TEST_F(FaceContract, QuitEndsRunAndTheFormStays) {
    face->runWith([&] { face->desktop().quit(); });

    EXPECT_TRUE(form.loaded());
}

// The end of the session.

class EndOfSessionContract : public FaceContract {
protected:
    EndOfSessionContract() {
        form.QueryUnload.connect([this](bool&, UnloadMode mode) { modes.push_back(mode); });
        form.Unload.connect([this] { ++unloads; });
    }

    std::vector<UnloadMode> modes;
    int unloads = 0;
};

TEST_F(EndOfSessionContract, EveryFormIsUnloadedOnceAndTheProgramEnds) {
    face->runWith([&] {
        face->endSession();
        face->endSession();
    });

    EXPECT_EQ(modes, std::vector<UnloadMode>{UnloadMode::AppWindows});
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(form.loaded());
    face->desktop().run(); // returns at once
}

TEST_F(EndOfSessionContract, AnOpenBoxIsClosedAsIfDeclined) {
    face->atNextBox([&](ShownBox&) { face->endSession(); });

    EXPECT_EQ(ask(MsgBoxButtons::YesNo), MsgBoxAnswer::No);

    EXPECT_EQ(unloads, 1);
}

TEST_F(EndOfSessionContract, ABoxOnTheWayIsAnsweredAsIfDeclined) {
    MsgBoxAnswer answer = MsgBoxAnswer::Yes;
    form.Unload.connect([&] { answer = ask(MsgBoxButtons::YesNo); });

    face->endSession();

    EXPECT_EQ(answer, MsgBoxAnswer::No);
}

TEST_F(EndOfSessionContract, AfterwardsNoWindowIsMade) {
    face->endSession();
    face->settle();

    form.setVisible(true);

    EXPECT_FALSE(face->hasWindow(form));
    face->desktop().run(); // returns at once
}

// The machine goes to sleep.

class SecondForm : public Form {
public:
    SecondForm() : Form("frmSecond", "Second") { setLayout(column({item(cmdOk)})); }
    CommandButton cmdOk{*this, "cmdOk", {.caption = "OK"}};
};

class SleepContract : public EndOfSessionContract {
protected:
    SleepContract() {
        second.load();
        form.Pause.connect([this] { ++pauses; });
        second.Pause.connect([this] { ++pausesOfSecond; });
    }
    ~SleepContract() override {
        second.unload();
        face->settle();
    }

    FormOn<SecondForm> second{face->desktop()};
    int pauses = 0;
    int pausesOfSecond = 0;
};

TEST_F(SleepContract, EveryFormIsToldEachTimeAndNothingEnds) {
    face->goToSleep();
    face->goToSleep();

    EXPECT_EQ(pauses, 2);
    EXPECT_EQ(pausesOfSecond, 2);
    EXPECT_TRUE(form.loaded());
    EXPECT_EQ(modes, std::vector<UnloadMode>());
}

TEST_F(SleepContract, AFormThatIsNotLoadedIsToldNothing) {
    form.unload();

    face->goToSleep();

    EXPECT_EQ(pauses, 0);
    EXPECT_EQ(pausesOfSecond, 1);
}

TEST_F(SleepContract, AFormThatEndsBeforeItsTurnIsToldNothing) {
    int told = 0;
    form.Pause.connect([&] {
        ++told;
        second.unload();
    });
    second.Pause.connect([&] {
        ++told;
        form.unload();
    });

    face->goToSleep();

    EXPECT_EQ(told, 1);
}

TEST_F(SleepContract, WhileABoxIsOpenTheFormIsToldAndTheBoxStays) {
    int whileOpen = 0;
    face->atNextBox([&](ShownBox& box) {
        face->goToSleep();
        whileOpen = pauses;
        box.press(MsgBoxAnswer::Yes);
    });

    EXPECT_EQ(ask(MsgBoxButtons::YesNo), MsgBoxAnswer::Yes);

    EXPECT_EQ(whileOpen, 1);
}

} // namespace
} // namespace tarvik
