#include "forms/frmWarning.h"

#include "support/WorldTest.h"

namespace tarvik {
namespace {

constexpr const char* description =
    "The transfer limit that has been setup has been reached. If \"HangUp\" was selected the "
    "connection has been automatically disconnected.\r\nIf you want to disconnect manually now "
    "press the \"Disconnect\" button. If you want to reset the overall transfer now press the "
    "\"Reset\" button.";
constexpr const char* resetQuestion = "Are you really sure you want to reset the (overall) values?";

class WarningTest : public WorldTest {
protected:
    WarningTest() {
        startQuietly("/r");
        state().TransferLimitWarning = 1;
    }

    FrmWarning& frmWarning() { return world->forms.frmWarning; }

    /// A connection that exceeds the limit of no bytes, and the tick that warns of it.
    void exceedTheTransfer() {
        state().TransferLimit = 1;
        exceed();
    }
    /// The same for the limit of no time.
    void exceedTheTime() {
        state().DurationLimit = 1;
        exceed();
    }
    /// Opens the options, which take over the settings, and confirms them.
    void confirmOptions(bool withWarning) {
        frmMain().cmdOptions.press();
        frmOptions().chkTransferLimitWarning.setValue(withWarning ? 1 : 0);
        frmOptions().cmdOK.press();
    }

private:
    void exceed() {
        line().transfer(dialledConnection(), 5000, 700, 1500);
        tick();
        ASSERT_TRUE(frmWarning().visible());
    }
};

TEST_F(WarningTest, TheTextIsSetWhenTheWindowIsMade) {
    EXPECT_TRUE(frmWarning().loaded());
    EXPECT_FALSE(frmWarning().visible());
    EXPECT_EQ(frmWarning().lblDescription.caption(), description);
}

TEST_F(WarningTest, TheTextIsTheSameForATransferThatWasExceeded) {
    exceedTheTransfer();

    EXPECT_EQ(frmWarning().lblDescription.caption(), description);
}

TEST_F(WarningTest, TheTextIsTheSameForATimeThatWasExceeded) {
    exceedTheTime();

    EXPECT_EQ(frmWarning().lblDescription.caption(), description);
}

TEST_F(WarningTest, DisconnectHangsUpAndLeavesTheWindowOpen) {
    exceedTheTransfer();

    frmWarning().cmdDisconnect.press();

    EXPECT_TRUE(machine.connections.connections.empty());
    EXPECT_FALSE(state().ConnectionActive);
    EXPECT_TRUE(frmWarning().visible());
    EXPECT_TRUE(state().LimitWarningArmed);
}

TEST_F(WarningTest, ResetClearsTheTotalsAndLeavesTheWindowOpen) {
    exceedTheTransfer();
    expectBox(resetQuestion, MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes);

    frmWarning().cmdReset.press();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(0));
    EXPECT_TRUE(frmWarning().visible());
    EXPECT_TRUE(state().LimitWarningArmed);
}

TEST_F(WarningTest, ARefusedResetClearsNothing) {
    exceedTheTransfer();
    expectBox(resetQuestion, MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::No);

    frmWarning().cmdReset.press();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(5000));
    EXPECT_TRUE(frmWarning().visible());
}

TEST_F(WarningTest, CloseHidesTheWindowAndSilencesIt) {
    exceedTheTransfer();

    frmWarning().cmdCancel.press();

    EXPECT_FALSE(frmWarning().visible());
    EXPECT_TRUE(frmWarning().loaded());
    EXPECT_FALSE(state().LimitWarningArmed);
}

TEST_F(WarningTest, TheCloseBoxHidesTheWindowAndTheWarningStaysArmed) {
    exceedTheTransfer();

    const bool unloaded = frmWarning().unload(UnloadMode::FormControlMenu);

    EXPECT_FALSE(unloaded);
    EXPECT_FALSE(frmWarning().visible());
    EXPECT_TRUE(frmWarning().loaded());
    EXPECT_TRUE(state().LimitWarningArmed);
}

TEST_F(WarningTest, AWarningThatWasOnlyPutAsideComesBackWithTheNextTick) {
    exceedTheTransfer();
    frmWarning().unload(UnloadMode::FormControlMenu);

    tick();

    EXPECT_TRUE(frmWarning().visible());
}

TEST_F(WarningTest, TheProgramCanUnloadItAndTheWarningStaysArmed) {
    exceedTheTransfer();

    const bool unloaded = frmWarning().unload(UnloadMode::FormCode);

    EXPECT_TRUE(unloaded);
    EXPECT_TRUE(state().LimitWarningArmed);
}

TEST_F(WarningTest, EscapeDoesWhatTheCloseBoxDoes) {
    EXPECT_EQ(frmWarning().cancelButton(), nullptr);
    EXPECT_TRUE(frmWarning().escapeCloses());
}

TEST_F(WarningTest, EnterPressesNoButtonThatTheUserDidNotChoose) {
    EXPECT_EQ(frmWarning().defaultButton(), nullptr);
    EXPECT_EQ(frmWarning().initialFocus(), &frmWarning().cmdCancel);
}

TEST_F(WarningTest, AClosedWarningDoesNotComeBackWithTheNextTicks) {
    exceedTheTransfer();
    frmWarning().cmdCancel.press();
    machine.desktop.broughtToFront.clear();

    tick();
    tick();

    EXPECT_FALSE(frmWarning().visible());
    EXPECT_TRUE(machine.desktop.broughtToFront.empty());
}

TEST_F(WarningTest, AClosedWarningDoesNotComeBackWithTheNextConnection) {
    exceedTheTransfer();
    frmWarning().cmdCancel.press();
    machine.connections.connections.clear();
    tick();
    machine.connections.transfer(machine.connections.connect("Harbour"), 1, 1, 1);

    tick();

    EXPECT_TRUE(state().ConnectionActive);
    EXPECT_FALSE(frmWarning().visible());
}

TEST_F(WarningTest, ConfirmedOptionsWithTheWarningBringItBack) {
    exceedTheTransfer();
    frmWarning().cmdCancel.press();
    state().TransferLimitValue = 100;
    confirmOptions(true);
    EXPECT_TRUE(state().LimitWarningArmed);

    tick();

    EXPECT_TRUE(frmWarning().visible());
}

TEST_F(WarningTest, ConfirmedOptionsWithoutTheWarningDoNotArmIt) {
    exceedTheTransfer();
    frmWarning().cmdCancel.press();

    confirmOptions(false);

    EXPECT_FALSE(state().LimitWarningArmed);
}

TEST_F(WarningTest, CancelledOptionsDoNotArmIt) {
    exceedTheTransfer();
    frmWarning().cmdCancel.press();
    frmMain().cmdOptions.press();
    frmOptions().cmdCancel.press();

    tick();

    EXPECT_FALSE(state().LimitWarningArmed);
    EXPECT_FALSE(frmWarning().visible());
}

TEST_F(WarningTest, AWarningThatWasResetStaysOpenAndComesWithTheSessionAgain) {
    exceedTheTransfer();
    expectBox(resetQuestion, MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes);
    frmWarning().cmdReset.press();
    machine.desktop.broughtToFront.clear();

    tick();

    EXPECT_EQ(machine.desktop.broughtToFront, std::vector<std::string>{"frmWarning"});
}

TEST_F(WarningTest, AnErrorOfTheQuestionIsReportedAndTheWindowStaysOpen) {
    exceedTheTransfer();
    expectBox(resetQuestion, MsgBoxButtons::YesNo, MsgBoxIcon::Question, MsgBoxAnswer::Yes,
              [] { raise(ErrorNumber::PermissionDenied); });
    expectError("70 (Permission denied)", "ResetTransfersRequest");

    frmWarning().cmdReset.press();

    EXPECT_EQ(state().BytesRcvdCurrent, Long(5000));
    EXPECT_TRUE(frmWarning().visible());
}

} // namespace
} // namespace tarvik
