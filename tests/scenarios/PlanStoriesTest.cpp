#include "Story.h"

namespace tarvik::scenarios {
namespace {

constexpr const char* ledgerQuestion =
    "Do you want Tarvik to write down from now on, in the file \"Tarvik.ledger\" beside the INI "
    "file, what each line carries?";
constexpr const char* homePlan =
    "[Plan 1]\r\nName=\"Home\"\r\nAllowance=1 MB\r\nPeriod=Month\r\nThreshold1=50 note window\r\n";

bool has(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

class PlanStory : public Story {
protected:
    void startWithPlan(const std::string& plan = homePlan) {
        setIni("[Settings]\r\nRefreshInterval=100\r\nTransferTickerValue=100\r\n" + plan);
        start();
        openPlans();
        answer(ledgerQuestion, MsgBoxButtons::YesNo, MsgBoxAnswer::Yes);
        driver->click("frmPlan.cmdLedger");
        keepsLedger = true;
    }
    void openPlans() {
        driver->click("frmMain.cmdOptions");
        driver->click("frmOptions.cmdPlan");
    }
    void connect() {
        driver->choose("frmMain.cboConnections", "Ridge");
        driver->click("frmMain.cmdMonitor");
        driver->click("frmMain.cmdConnect");
        ASSERT_EQ(line().connections.size(), 1U);
    }
};

TEST_F(PlanStory, APlanIsMadeAndToldInTheMainWindow) {
    startQuietly();
    openPlans();
    expectFaceAsModel(world->forms.frmPlan);
    driver->click("frmPlan.cmdNew");
    driver->type("frmPlan.txtAllowance", "1 MB");
    driver->choose("frmPlan.cboPage", "When it begins anew");
    driver->type("frmPlan.txtDay", "14");
    driver->choose("frmPlan.cboPage", "What happens on the way");
    EXPECT_TRUE(driver->read("frmPlan.txtPreview").starts_with("14.11.2026 to 13.12.2026"));
    expectFaceAsModel(world->forms.frmPlan);
    answer(ledgerQuestion, MsgBoxButtons::YesNo, MsgBoxAnswer::Yes);
    driver->click("frmPlan.cmdOK");
    keepsLedger = true;

    EXPECT_FALSE(driver->visible("frmPlan"));
    EXPECT_TRUE(has(ini(), "Allowance=1 MB\r\n"));
    EXPECT_TRUE(has(ini(), "Day=14\r\n"));
    connect();
    receive(250'000);
    EXPECT_TRUE(driver->waitUntil(
        [&] { return driver->read("frmMain.lblPlan").rfind("0.2 of 1 MB", 0) == 0; }));
    expectFaceAsModel();
}

TEST_F(PlanStory, AFieldThatCannotBeIsNamedBesideIt) {
    startWithPlan();
    driver->choose("frmPlan.cboPage", "What may be used");
    driver->type("frmPlan.txtAllowance", "apples");

    driver->click("frmPlan.cmdOK");

    EXPECT_TRUE(driver->visible("frmPlan"));
    EXPECT_EQ(driver->read("frmPlan.lblAllowanceReason"), "A size, such as 10 GB.");
    expectFaceAsModel(world->forms.frmPlan);
    driver->click("frmPlan.cmdCancel");
}

TEST_F(PlanStory, AThresholdWarnsOnceAndIsExtended) {
    startWithPlan();
    driver->click("frmPlan.cmdOK");
    connect();
    receive(499'999);
    EXPECT_FALSE(driver->visible("frmPlanWarning"));
    receive(1);
    EXPECT_TRUE(driver->waitUntil([&] { return driver->visible("frmPlanWarning"); }));
    EXPECT_TRUE(driver->read("frmPlanWarning.lblDescription").starts_with("Home: 50 % is used."));
    expectFaceAsModel(world->forms.frmPlanWarning);

    driver->click("frmPlanWarning.cmdExtendPeriod");

    EXPECT_FALSE(driver->visible("frmPlanWarning"));
    receive(10);
    EXPECT_FALSE(driver->visible("frmPlanWarning"));
    EXPECT_TRUE(driver->read("frmMain.lblPlan").starts_with("0.5 of 501 MB"));
}

TEST_F(PlanStory, TheIconsMenuExtendsItAndWorksAsBefore) {
    startWithPlan();
    driver->click("frmPlan.cmdOK");
    connect();
    receive(400'000);

    driver->chooseTrayEntry(FrmSysTray::extendPeriod);

    EXPECT_TRUE(driver->read("frmMain.lblPlan").starts_with("0.4 of 501 MB"));
    driver->chooseTrayEntry(FrmSysTray::showHide);
    EXPECT_FALSE(driver->visible("frmMain"));
}

TEST_F(PlanStory, TheProvidersFigureIsTakenAndTakenBack) {
    startWithPlan();
    connect();
    receive(100'000);
    driver->type("frmPlan.txtProvider", "0.3 MB");
    driver->click("frmPlan.cmdProvider");
    EXPECT_TRUE(
        driver->waitUntil([&] { return driver->read("frmPlan.lblUsedPercent") == "30 %"; }));
    driver->select("frmPlan.lstNotes", 0);

    driver->click("frmPlan.cmdTakeBack");

    EXPECT_EQ(driver->read("frmPlan.lblUsedPercent"), "10 %");
    driver->click("frmPlan.cmdCancel");
}

TEST_F(PlanStory, APlanIsCopiedAndDeleted) {
    startWithPlan();
    driver->click("frmPlan.cmdCopy");
    EXPECT_EQ(driver->read("frmPlan.txtName"), "Home (copy)");
    driver->select("frmPlan.lstPlans", 0);
    EXPECT_EQ(driver->read("frmPlan.txtName"), "Home");
    driver->click("frmPlan.cmdDelete");
    EXPECT_EQ(driver->read("frmPlan.txtName"), "Home (copy)");

    driver->click("frmPlan.cmdOK");

    EXPECT_TRUE(has(ini(), "Name=\"Home (copy)\"\r\n"));
    EXPECT_FALSE(has(ini(), "Name=\"Home\"\r\n"));
}

TEST_F(PlanStory, LinesAreChosenByADoubleClick) {
    startWithPlan();
    driver->choose("frmPlan.cboPage", "What it is reckoned from");
    driver->click("frmPlan.optTheseLines");
    driver->select("frmPlan.lstLines", 1);
    driver->open("frmPlan.lstLines");

    driver->click("frmPlan.cmdOK");

    EXPECT_TRUE(has(ini(), "Lines=\"Ridge\"\r\n"));
}

} // namespace
} // namespace tarvik::scenarios
