#include "forms/Forms.h"

#include "support/ControlText.h"
#include "support/WorldTest.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace tarvik {
namespace {

class FormsTest : public WorldTest {
protected:
    auto all() { return world->forms.all(); }

    static bool isLabelled(const Form& form, const Control& input) {
        return std::any_of(form.controls().begin(), form.controls().end(),
                           [&](const Control* control) {
                               return control->kind() == ControlKind::Label &&
                                      static_cast<const Label*>(control)->labelled() == &input;
                           });
    }

    /// Caption and mnemonic of a control that can have one.
    static std::pair<std::string, char> mnemonicOf(const Control& control) {
        switch (control.kind()) {
        case ControlKind::Label: {
            const auto& label = static_cast<const Label&>(control);
            return {label.caption(), label.mnemonic()};
        }
        case ControlKind::CheckBox: {
            const auto& box = static_cast<const CheckBox&>(control);
            return {box.caption(), box.mnemonic()};
        }
        case ControlKind::CommandButton: {
            const auto& button = static_cast<const CommandButton&>(control);
            return {button.caption(), button.mnemonic()};
        }
        default:
            return {"", '\0'};
        }
    }
};

TEST_F(FormsTest, EveryInputHasALabelOrAName) {
    for (const Form* form : all()) {
        for (const Control* control : form->controls()) {
            if (control->kind() == ControlKind::TextBox ||
                control->kind() == ControlKind::ComboBox) {
                EXPECT_TRUE(isLabelled(*form, *control) || !control->accessibleName().empty())
                    << form->name() << "." << control->name();
            }
        }
    }
}

TEST_F(FormsTest, MnemonicsAreUniqueAndStandInTheirCaptions) {
    for (const Form* form : all()) {
        std::set<char> taken;
        for (const Control* control : form->controls()) {
            const auto [caption, mnemonic] = mnemonicOf(*control);
            if (mnemonic != 0) {
                EXPECT_NE(caption.find(mnemonic), std::string::npos) << control->name();
                EXPECT_TRUE(taken.insert(static_cast<char>(std::toupper(mnemonic))).second)
                    << form->name() << "." << control->name();
            }
        }
    }
}

TEST_F(FormsTest, ControlNamesAreUniqueInTheirForm) {
    for (const Form* form : all()) {
        std::set<std::string> names;
        for (const Control* control : form->controls()) {
            EXPECT_TRUE(names.insert(control->name()).second) << control->name();
        }
    }
}

TEST_F(FormsTest, EverythingOfAWindowIsInItsLayout) {
    for (const Form* form : all()) {
        if (form->layout() == nullptr) {
            continue;
        }
        const auto placed = controlsInOrder(*form->layout());
        for (Control* control : form->controls()) {
            EXPECT_EQ(std::count(placed.begin(), placed.end(), control),
                      control->kind() == ControlKind::Timer ? 0 : 1)
                << form->name() << "." << control->name();
        }
    }
}

TEST_F(FormsTest, TabsGoThroughFiguresThenStatusThenCommands) {
    std::vector<std::string> order;
    for (const Control* control : controlsInOrder(*frmMain().layout())) {
        const ControlKind kind = control->kind();
        if (kind == ControlKind::TextBox || kind == ControlKind::ComboBox ||
            kind == ControlKind::CommandButton) {
            order.push_back(control->name());
        }
    }

    EXPECT_EQ(order, (std::vector<std::string>{
                         "txtBytesSent", "txtBytesRcvd", "txtDurationCurrent", "txtBytesSentTotal",
                         "txtBytesRcvdTotal", "txtDurationTotal", "cboConnections",
                         "txtActiveConnection", "cmdMonitor", "cmdConnect", "cmdDisconnect",
                         "cmdStatistics", "cmdHistory", "cmdOptions", "cmdQuit"}));
}

TEST_F(FormsTest, TheMainWindowIsCalledByTheProgramsName) {
    EXPECT_EQ(frmMain().caption(), "Velmars Tarvik");
}

struct TextCase {
    const char* control;
    const char* text;
    const char* toolTip;
};

class MainWindowTextTest : public FormsTest, public testing::WithParamInterface<TextCase> {};

TEST_P(MainWindowTextTest, ReadsToTheLetter) {
    const Control* control = frmMain().control(GetParam().control);

    ASSERT_NE(control, nullptr);
    EXPECT_EQ(textOf(*control), GetParam().text);
    EXPECT_EQ(control->toolTip(), GetParam().toolTip);
}

INSTANTIATE_TEST_SUITE_P(
    All, MainWindowTextTest,
    testing::Values(
        TextCase{"frameTransfers", "Recorded transfers (amount and time):", ""},
        TextCase{"txtBytesSent", "",
                 "This shows the number of monitored bytes sent (current connection only)"},
        TextCase{"txtBytesRcvd", "",
                 "This shows the number of monitored bytes received (current connection only)"},
        TextCase{"txtBytesSentTotal", "",
                 "This shows the number of monitored bytes sent since monitoring has been started "
                 "(all connections)"},
        TextCase{"txtBytesRcvdTotal", "",
                 "This shows the number of monitored bytes received since monitoring has been "
                 "started (all connections)"},
        TextCase{"txtDurationCurrent", "00:00:00:000",
                 "This shows the duration of the active connection(s) since monitoring has been "
                 "started (current connection only)"},
        TextCase{"txtDurationTotal", "00:00:00:000",
                 "This shows the duration of the active connection(s) since monitoring has been "
                 "started (all connections)"},
        TextCase{"lblTransfer", "Transer", ""}, TextCase{"lblTransferSent", "Sent", ""},
        TextCase{"lblTransferRcvd", "Received", ""},
        TextCase{"lblTransferCurrent", "current (bytes):", ""},
        TextCase{"lblTransferTotal", "total (bytes):", ""}, TextCase{"lblDuration", "Duration", ""},
        TextCase{"lblDurationCurrent", "Current", ""}, TextCase{"lblDurationTotal", "Total", ""},
        TextCase{"lblDurationTime", "hr:min:sec:ms", ""}, TextCase{"frameStatus", "Status:", ""},
        TextCase{"picStatus", "no text", ""},
        TextCase{"lblMonitoring", "Monitoring: inactive",
                 "This shows the status of the monitoring activity"},
        TextCase{"lblAvailableConnections", "Available connection(s):", ""},
        TextCase{"cboConnections", "", "This shows the connections that have been detected"},
        TextCase{"lblActiveConnection", "Active connection to:", ""},
        TextCase{"txtActiveConnection", "", "This shows the currently active connection (if any)"},
        TextCase{"cmdMonitor", "Start Monitoring", "This toggles the monitoring on or off"},
        TextCase{"cmdConnect", "Connect", "Connect to the (currently) selected connection"},
        TextCase{"cmdDisconnect", "Disconnect", "Disconnect from all current connections"},
        TextCase{"cmdStatistics", "Statistics...", "Show statistics about the current connection"},
        TextCase{"cmdHistory", "History...", "This shows a history dialog to see past traffic"},
        TextCase{"cmdOptions", "Options...",
                 "This shows the options dialog to setup the application"},
        TextCase{"cmdQuit", "Quit", "This quits the application (and stops monitoring)"}),
    [](const auto& given) { return given.param.control; });

TEST_F(FormsTest, FiguresAndTheActiveConnectionCanOnlyBeCopied) {
    for (const Control* control : frmMain().controls()) {
        if (control->kind() == ControlKind::TextBox) {
            EXPECT_TRUE(static_cast<const TextBox*>(control)->readOnly()) << control->name();
        }
    }
}

TEST_F(FormsTest, TheTrayMenuHasItsSevenEntries) {
    std::vector<std::string> captions;
    for (const Menu::Entry& entry : frmSysTray().mnuPopUp.entries()) {
        captions.push_back(entry.caption);
    }

    EXPECT_EQ(captions, (std::vector<std::string>{"Show/Hide", "Start Monitoring", "-", "Connect",
                                                  "Disconnect", "-", "Quit"}));
    EXPECT_EQ(frmSysTray().mnuPopUp.entryName(), "mnuPopUpEntry");
}

} // namespace
} // namespace tarvik
