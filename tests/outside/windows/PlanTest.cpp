#include "RunningProgram.h"
#include "forms/frmOptions.h"
#include "forms/frmPlan.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tarvik {
namespace {

constexpr int fastest = 2; // in the list of connections
constexpr const char* ledgerQuestion =
    "Do you want Tarvik to write down from now on, in the file \"Tarvik.ledger\" beside the INI "
    "file, what each line carries?";

/// A plan of 5 MB a month, on the simulated link.
class BuiltPlanTest : public testing::Test {
protected:
    void startWith(const std::string& threshold) {
        installation.setIni("[Settings]\r\nRefreshInterval=100\r\n[Plan 1]\r\nName=\"Home\"\r\n"
                            "Allowance=5 MB\r\nPeriod=Month\r\nThreshold1=" +
                            threshold + "\r\n");
    }
    /// The user begins the ledger in the plans' window, and leaves that.
    void beginLedger(const RunningProgram& program) {
        ASSERT_TRUE(program.waitForMainWindow());
        program.click("cmdOptions");
        program.clickIn(options, "cmdPlan");
        program.clickIn(plans, "cmdLedger");
        ASSERT_TRUE(program.answer(ledgerQuestion, MsgBoxAnswer::Yes));
        ASSERT_TRUE(RunningProgram::waitUntil([&] { return installation.has("Tarvik.ledger"); }));
        program.clickIn(plans, "cmdCancel");
        ASSERT_TRUE(
            RunningProgram::waitUntil([&] { return program.shownWindow("frmPlan") == nullptr; }));
    }
    /// What the line at the foot tells.
    static double megabytesUsed(const RunningProgram& program) {
        return std::strtod(program.read("lblPlan").c_str(), nullptr);
    }
    void dial(const RunningProgram& program) {
        program.choose("cboConnections", fastest);
        program.click("cmdMonitor");
        ASSERT_TRUE(RunningProgram::waitUntil(
            [&] { return program.read("cmdMonitor") == "Stop &Monitoring"; }));
        program.click("cmdConnect");
    }

    Installation installation{"tarvik-demo.exe"};
    FrmOptions options; // nobody shows these: they tell names and numbers
    FrmPlan plans;
};

TEST_F(BuiltPlanTest, TheLineInTheMainWindowTellsHowItStandsInTheSystemsOwnCharacters) {
    startWith("50 note");
    const RunningProgram program(installation);
    beginLedger(program);

    EXPECT_TRUE(RunningProgram::waitUntil(
        [&] { return program.read("lblPlan").starts_with("0 of 5 MB \xB7 "); }));
}

TEST_F(BuiltPlanTest, AThresholdHangsUp) {
    startWith("20 hangup");
    const RunningProgram program(installation);
    beginLedger(program);

    dial(program);

    EXPECT_TRUE(RunningProgram::waitUntil([&] {
        return program.read("lblPlan").starts_with("1") &&
               program.read("txtActiveConnection").empty();
    }));
    EXPECT_NE(installation.ini().find("20!"), std::string::npos);
}

TEST_F(BuiltPlanTest, AWarningComesOnceAndIsNotSaidAgainAfterAKill) {
    startWith("1 window");
    {
        const RunningProgram program(installation);
        beginLedger(program);
        dial(program);
        ASSERT_TRUE(RunningProgram::waitUntil(
            [&] { return program.shownWindow("frmPlanWarning") != nullptr; }));
        // That takes longer than the journal waits.
        ASSERT_TRUE(RunningProgram::waitUntil([&] { return megabytesUsed(program) >= 8; }));
        program.kill();
    }
    const RunningProgram again(installation, "/r");
    ASSERT_TRUE(again.answerAbout("Warning: Another instance", MsgBoxAnswer::Yes));
    ASSERT_TRUE(again.waitForMainWindow());

    EXPECT_TRUE(RunningProgram::waitUntil([&] {
        return !again.read("lblPlan").empty() && !again.read("lblPlan").starts_with("0 ");
    }));
    EXPECT_EQ(again.shownWindow("frmPlanWarning"), nullptr);
}

} // namespace
} // namespace tarvik
