#pragma once

#include "plan/PlanSettings.h"
#include "plan/Plans.h"
#include "settings/LedgerLifeTest.h"
#include "settings/mdlSettingsPlans.h"

#include <string>
#include <utility>

namespace tarvik {

/// A program whose user has a plan, and a ledger that it is reckoned from.
class PlanLifeTest : public LedgerLifeTest {
protected:
    static constexpr const char* usualSection =
        "[Settings]\r\nIsLocked=0\r\nRefreshInterval=200\r\n"
        "TransferTickerValue=100\r\nLastDateStamp=0\r\n";

    FrmPlan& planWindow() { return world->forms.frmPlan; }
    Plan& plan(std::size_t place = 0) { return world->plans.all.at(place).plan; }
    const Standing& standing(std::size_t place = 0) {
        return world->plans.all.at(place).meter.value().standing;
    }
    std::string line() { return frmMain().lblPlan.caption(); }

    /// 1 MB from the first of the month; half of it gives a note.
    static Plan oneMegabyte() {
        Plan planned{.number = 1, .name = "Home"};
        planned.allowance = DataSize{.thousandths = 1000, .unit = SizeUnit::MB};
        planned.thresholds = {{.percent = 50}};
        return planned;
    }

    /// Starts the program as the INI file has it, with plans that were made long ago.
    void startWithPlans(std::vector<Plan> planned) {
        setIni(usualSection);
        for (const Plan& each : planned) {
            writePlan(machine.platform.profile, iniPath, each);
        }
        start("/r");
        EXPECT_TRUE(BeginLedger());
    }
    void startWithPlan(Plan planned = oneMegabyte()) { startWithPlans({std::move(planned)}); }

    /// A line comes up and carries so many bytes in ten seconds.
    void carry(std::uint32_t bytes) {
        if (machine.connections.connection(ridge) == nullptr) {
            ridge = machine.connections.connect("Ridge");
            tick();
        }
        tickAfter(10, bytes);
    }
    const std::vector<DesktopNote>& planNotes() const { return machine.notificationArea.notes; }

    /// What a person does in a box, then goes on to the next one.
    static void enter(TextBox& box, const std::string& text) {
        box.GotFocus.raise();
        box.setText(text);
        box.LostFocus.raise();
    }
    void openPlans() {
        frmMain().cmdOptions.press();
        frmOptions().cmdPlan.press();
    }
};

} // namespace tarvik
