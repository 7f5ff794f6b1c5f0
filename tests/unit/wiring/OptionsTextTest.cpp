#include "wiring/OptionsTest.h"

#include "settings/mdlSettingsControls.h"
#include "support/ControlText.h"

#include <algorithm>

namespace tarvik {
namespace {

using Texts = std::vector<std::string>;

struct TextCase {
    const char* control;
    const char* text;
    const char* toolTip;
    const char* frame; ///< the frame around it; empty for none
};

constexpr TextCase textCases[] = {
    {"frameStartUp", "StartUp behaviour...", "", ""},
    {"chkStartupRunMonitoring", "Run monitoring on startup",
     "If enabled, monitoring is being started immediately after the application has been started",
     "frameStartUp"},
    {"chkStartUpMinimise", "Minimise on startup",
     "If enabled, the application is being minimised to systray after startup", "frameStartUp"},
    {"frameTransfer", "Show transfer in...", "", ""},
    {"cboUnitTransferCurrent", "", "Select the unit of the (current) transfer", "frameTransfer"},
    {"lblUnitTransferCurrent", "(current conn.)", "", "frameTransfer"},
    {"cboUnitTransferTotal", "", "Select the unit of the (overall, or total) transfer",
     "frameTransfer"},
    {"lblUnitTransferTotal", "(total conn.)", "", "frameTransfer"},
    {"frameWarnings", "Transfer limit, warnings...", "", ""},
    {"chkTransferLimit", "Bytes:", "Enable limitation of transfer (data in bytes)",
     "frameWarnings"},
    {"txtTransferLimit", "1000000",
     "Set the limit (in bytes) the warning mechanisms become active (1048576 bytes = 1MB)",
     "frameWarnings"},
    {"chkDurationLimit", "Time (hh:mm):", "Enable limitation of duration (connection in time)",
     "frameWarnings"},
    {"txtDurationLimitHr", "", "Set the limit (in hours) the warning mechanisms become active",
     "frameWarnings"},
    {"lblDurationTimeSep", ":", "", "frameWarnings"},
    {"txtDurationLimitMin", "", "Set the limit (in seconds) the warning mechanisms become active",
     "frameWarnings"},
    {"lblLimitAction", "Action if limit has been reached:", "", "frameWarnings"},
    {"chkTransferLimitWarning", "Show a warning message",
     "If enabled, a warning message is shown as soon as the transfer limit is reached",
     "frameWarnings"},
    {"chkTransferLimitHangUp", "Hang up connection",
     "If enabled, the current connection is being hang up (disconnected) as soon as the transfer "
     "limit is reached",
     "frameWarnings"},
    {"frameTransferReset", "Transfer reset...", "", ""},
    {"chkTransferResetEnable", "Reset transfer records every:",
     "Enable to reset the total (overall) transfers recorded at a specific period",
     "frameTransferReset"},
    {"cboTransferReset", "", "Select when periodically to reset the recorded transfer...",
     "frameTransferReset"},
    {"chkTransferResetBackup", "Make backup of records",
     "Enable to make a backup of all transfers recorded until reset", "frameTransferReset"},
    {"cmdResetValues", "Reset recorded transfer now",
     "Reset the recorded transfer to 0 (data recorded so far will be lost!)", "frameTransferReset"},
    {"frameMisc", "Miscellanous...", "", ""},
    {"lblRefreshInterval", "Refresh-interval (ms):", "", "frameMisc"},
    {"txtRefreshInterval", "1000",
     "This is to setup the timer interval the applications checks for bytes sent/received. This "
     "also controls the CPU usage.",
     "frameMisc"},
    {"chkLogIPAddress", "Log IP addresses",
     "If enabled, the IP addresses of the connections are recorded (next to transfer)",
     "frameMisc"},
    {"chkTransferTicker", "Show transfer ticker every:",
     "If enabled, a transfer ticker will be shown within a specific interval", "frameMisc"},
    {"txtTransferTicker", "",
     "This is to setup the interval when a transfer ticker will be shown (in mega-bytes)",
     "frameMisc"},
    {"lblTransferTicker", "MB (ME/2K/XP only)", "", "frameMisc"},
    {"cmdPlan", "Plan...", "The bill's own period, what is left of it, and what it comes to", ""},
    {"cmdOK", "OK", "Apply settings and close the options dialog", ""},
    {"cmdCancel", "Cancel", "Discard any changes made to the settings and close the options dialog",
     ""},
};

/// Every place in the layout where the control stands, told by the frame around it.
void findPlaces(const LayoutNode& node, const Control& control, const std::string& around,
                Texts& places) {
    if (node.control == &control) {
        places.push_back(around);
    }
    for (const LayoutNode& child : node.children) {
        findPlaces(child, control,
                   node.type == LayoutNode::Type::Frame ? node.control->name() : around, places);
    }
}

/// The dialog of a program that has not started yet.
class NewOptionsTest : public WorldTest {};

class OptionsTextTest : public NewOptionsTest, public testing::WithParamInterface<TextCase> {};

TEST_P(OptionsTextTest, ReadsToTheLetter) {
    const Control* control = frmOptions().control(GetParam().control);

    ASSERT_NE(control, nullptr);
    EXPECT_EQ(textOf(*control), GetParam().text);
    EXPECT_EQ(control->toolTip(), GetParam().toolTip);
}

TEST_P(OptionsTextTest, StandsOnceInItsFrame) {
    const Control* control = frmOptions().control(GetParam().control);
    ASSERT_NE(control, nullptr);

    Texts places;
    findPlaces(*frmOptions().layout(), *control, "", places);

    EXPECT_EQ(places, Texts{GetParam().frame});
}

INSTANTIATE_TEST_SUITE_P(All, OptionsTextTest, testing::ValuesIn(textCases),
                         [](const auto& given) { return given.param.control; });

TEST_F(NewOptionsTest, TheDialogHasNoOtherControls) {
    Texts known;
    for (const TextCase& text : textCases) {
        known.emplace_back(text.control);
    }
    Texts present;
    for (const Control* control : frmOptions().controls()) {
        present.push_back(control->name());
    }

    std::sort(known.begin(), known.end());
    std::sort(present.begin(), present.end());
    EXPECT_EQ(present, known);
}

TEST_F(NewOptionsTest, TheDialogIsCalledOptions) {
    EXPECT_EQ(frmOptions().caption(), "Velmars Tarvik - Options");
}

TEST_F(NewOptionsTest, EnterAppliesAndEscapeCancels) {
    EXPECT_EQ(frmOptions().defaultButton(), &frmOptions().cmdOK);
    EXPECT_EQ(frmOptions().cancelButton(), &frmOptions().cmdCancel);
}

TEST_F(NewOptionsTest, EveryFieldCanBeTypedInto) {
    for (const Control* control : frmOptions().controls()) {
        if (control->kind() == ControlKind::TextBox) {
            EXPECT_FALSE(static_cast<const TextBox*>(control)->readOnly()) << control->name();
        }
    }
}

TEST_F(NewOptionsTest, TheTwelveCriteriaAreOffered) {
    startQuietly();

    EXPECT_EQ(frmOptions().cboTransferReset.items(),
              (Texts{"middle of day", "middle of week", "middle of month", "middle of 1/4 year",
                     "middle of 1/2 year", "middle of year", "end of day", "end of week",
                     "end of month", "end of 1/4 year", "end of 1/2 year", "end of year"}));
}

TEST_F(NewOptionsTest, BothUnitListsOfferTheFourUnits) {
    startQuietly();

    const Texts units{"Bytes", "Kilo-Bytes", "Mega-Bytes", "Giga-Bytes"};
    EXPECT_EQ(frmOptions().cboUnitTransferCurrent.items(), units);
    EXPECT_EQ(frmOptions().cboUnitTransferTotal.items(), units);
}

/// Which controls can be used.
class OptionsEnablingTest : public NewOptionsTest {
protected:
    Texts disabled() {
        Texts names;
        for (const Control* control : frmOptions().controls()) {
            if (!control->enabled()) {
                names.push_back(control->name());
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    /// All of these, in the order in which `disabled` tells them.
    static Texts together(std::initializer_list<Texts> groups) {
        Texts names;
        for (const Texts& group : groups) {
            names.insert(names.end(), group.begin(), group.end());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    void tickAll() {
        for (CheckBox* box :
             {&frmOptions().chkTransferLimit, &frmOptions().chkDurationLimit,
              &frmOptions().chkTransferResetEnable, &frmOptions().chkTransferTicker}) {
            box->setValue(1);
        }
    }

    const Texts ofTransferLimit{"txtTransferLimit"};
    const Texts ofDurationLimit{"txtDurationLimitHr", "txtDurationLimitMin", "lblDurationTimeSep"};
    const Texts ofEitherLimit{"lblLimitAction", "chkTransferLimitWarning",
                              "chkTransferLimitHangUp"};
    const Texts ofReset{"cboTransferReset", "chkTransferResetBackup"};
    const Texts ofTicker{"txtTransferTicker", "lblTransferTicker"};
};

TEST_F(OptionsEnablingTest, AtFirstWhatBelongsToAnUntickedBoxIsDisabled) {
    EXPECT_EQ(disabled(),
              together({ofTransferLimit, ofDurationLimit, ofEitherLimit, ofReset, ofTicker}));
}

TEST_F(OptionsEnablingTest, WithEveryBoxTickedEverythingIsEnabled) {
    tickAll();

    EXPECT_EQ(disabled(), Texts{});
}

TEST_F(OptionsEnablingTest, EveryCombinationOfTheLimitsEnablesWhatBelongsToIt) {
    tickAll();

    frmOptions().chkTransferLimit.setValue(0);
    EXPECT_EQ(disabled(), ofTransferLimit);

    frmOptions().chkDurationLimit.setValue(0);
    EXPECT_EQ(disabled(), together({ofTransferLimit, ofDurationLimit, ofEitherLimit}));

    frmOptions().chkTransferLimit.setValue(1);
    EXPECT_EQ(disabled(), together({ofDurationLimit}));

    frmOptions().chkDurationLimit.setValue(1);
    EXPECT_EQ(disabled(), Texts{});
}

TEST_F(OptionsEnablingTest, TheDurationLimitAloneEnablesTheActions) {
    frmOptions().chkDurationLimit.setValue(1);

    EXPECT_EQ(disabled(), together({ofTransferLimit, ofReset, ofTicker}));
}

TEST_F(OptionsEnablingTest, WithoutTheResetItsCriterionAndBackupAreDisabled) {
    tickAll();

    frmOptions().chkTransferResetEnable.setValue(0);

    EXPECT_EQ(disabled(), together({ofReset}));
}

TEST_F(OptionsEnablingTest, WithoutTheTickerItsFieldAndLabelAreDisabled) {
    tickAll();

    frmOptions().chkTransferTicker.setValue(0);

    EXPECT_EQ(disabled(), together({ofTicker}));
}

TEST_F(OptionsEnablingTest, TheOtherBoxesEnableNothing) {
    tickAll();
    for (CheckBox* box :
         {&frmOptions().chkStartupRunMonitoring, &frmOptions().chkStartUpMinimise,
          &frmOptions().chkTransferLimitWarning, &frmOptions().chkTransferLimitHangUp,
          &frmOptions().chkTransferResetBackup, &frmOptions().chkLogIPAddress}) {
        box->setValue(1);
        box->setValue(0);

        EXPECT_EQ(disabled(), Texts{}) << box->name();
    }
}

TEST_F(OptionsEnablingTest, TheSettingsEnableWhatBelongsToThem) {
    startQuietly();
    state().DurationLimit = 1;
    state().TransferTicker = 1;

    InitControls();

    EXPECT_EQ(disabled(), together({ofTransferLimit, ofReset}));
}

TEST_F(OptionsEnablingTest, TheSettingsDisableWhatDoesNotBelongToThem) {
    startQuietly();
    tickAll();
    state().TransferLimit = 1;
    state().TransferResetEnable = 1;

    InitControls();

    EXPECT_EQ(disabled(), together({ofDurationLimit, ofTicker}));
}

TEST_F(OptionsTest, ItHoldsTheStoredSettingsFromTheStart) {
    newWorld();
    setIni("[Settings]\r\nUnitTransferCurrent=3\r\nTransferLimit=1\r\nTransferLimitValue=5\r\n"
           "DurationLimitHr=6\r\nDurationLimitMin=7\r\nTransferReset=11\r\n"
           "RefreshInterval=800\r\nTransferTickerValue=9\r\n");

    start();

    EXPECT_EQ(shown(), (Texts{"Giga-Bytes", "Bytes", "-", "-", "x", "5", "-", "6", "7", "-", "-",
                              "-", "end of year", "-", "800", "-", "-", "9"}));
}

TEST_F(OptionsTest, AUnitThatIsNotListedLeavesTheSelection) {
    frmOptions().cboUnitTransferTotal.setListIndex(2);
    state().UnitTransferTotal = static_cast<TransferUnit>(4);

    open();

    EXPECT_EQ(frmOptions().cboUnitTransferTotal.listIndex(), 2);
}

TEST_F(OptionsTest, TheSettingsAreCopiedInTheirOrder) {
    const Texts order{"cboUnitTransferCurrent",  "cboUnitTransferTotal",   "chkStartUpMinimise",
                      "chkStartupRunMonitoring", "chkTransferLimit",       "txtTransferLimit",
                      "chkDurationLimit",        "txtDurationLimitHr",     "txtDurationLimitMin",
                      "chkTransferLimitWarning", "chkTransferLimitHangUp", "chkTransferResetEnable",
                      "cboTransferReset",        "chkTransferResetBackup", "txtRefreshInterval",
                      "chkLogIPAddress",         "chkTransferTicker",      "txtTransferTicker"};
    editEverything();
    machine.desktop.changesTold.clear();

    InitControls();

    // A box tells its dependents before they get their own values: the last change counts.
    Texts seen;
    for (std::string change : machine.desktop.changesTold) {
        change.erase(0, std::string("frmOptions.").size());
        if (std::find(order.begin(), order.end(), change) != order.end()) {
            std::erase(seen, change);
            seen.push_back(change);
        }
    }
    EXPECT_EQ(seen, order);
}

} // namespace
} // namespace tarvik
