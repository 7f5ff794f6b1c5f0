#pragma once

#include "support/WorldTest.h"

#include <utility>

namespace tarvik {

/// The program has started with its defaults, the warning is not armed.
class OptionsTest : public WorldTest {
protected:
    OptionsTest() {
        startQuietly();
        state().LimitWarningArmed = false;
        remember();
    }

    void open() { frmMain().cmdOptions.press(); }
    void pressOk() { frmOptions().cmdOK.press(); }
    void openAndPressOk() {
        open();
        pressOk();
    }

    /// Types and chooses something else everywhere.
    void editEverything() {
        FrmOptions& o = frmOptions();
        o.cboUnitTransferCurrent.setListIndex(1);
        o.cboUnitTransferTotal.setListIndex(2);
        for (Control* control : o.controls()) {
            if (control->kind() == ControlKind::CheckBox) {
                static_cast<CheckBox*>(control)->setValue(1);
            }
        }
        o.txtTransferLimit.setText("5000000000");
        o.txtDurationLimitHr.setText("12");
        o.txtDurationLimitMin.setText("34");
        o.cboTransferReset.setListIndex(8);
        o.txtRefreshInterval.setText("250");
        o.txtTransferTicker.setText("7");
    }

    /// Every setting of the dialog with its value, in the order in which they are applied.
    std::vector<std::pair<std::string, std::string>> settings() {
        const State& s = state();
        const auto text = [](auto number) { return std::to_string(static_cast<int>(number)); };
        return {{"UnitTransferCurrent", text(s.UnitTransferCurrent)},
                {"UnitTransferTotal", text(s.UnitTransferTotal)},
                {"StartUpRunMonitoring", text(s.StartUpRunMonitoring)},
                {"StartUpMinimise", text(s.StartUpMinimise)},
                {"TransferLimit", text(s.TransferLimit)},
                {"TransferLimitValue", std::to_string(s.TransferLimitValue.scaled())},
                {"DurationLimit", text(s.DurationLimit)},
                {"DurationLimitHr", text(s.DurationLimitHr.value())},
                {"DurationLimitMin", text(s.DurationLimitMin.value())},
                {"TransferLimitWarning", text(s.TransferLimitWarning)},
                {"LimitWarningArmed", text(s.LimitWarningArmed)},
                {"TransferLimitHangUp", text(s.TransferLimitHangUp)},
                {"TransferResetEnable", text(s.TransferResetEnable)},
                {"TransferReset", text(s.TransferReset)},
                {"TransferResetBackup", text(s.TransferResetBackup)},
                {"RefreshInterval", text(s.RefreshInterval.value())},
                {"LogIPAddress", text(s.LogIPAddress)},
                {"TransferTicker", text(s.TransferTicker)},
                {"TransferTickerValue", text(s.TransferTickerValue.value())}};
    }

    void remember() { before_ = settings(); }

    /// The settings that are not as they were when they were remembered.
    std::vector<std::string> changed() {
        std::vector<std::string> names;
        const auto now = settings();
        for (std::size_t i = 0; i < now.size(); ++i) {
            if (now[i] != before_[i]) {
                names.push_back(now[i].first);
            }
        }
        return names;
    }

    /// All settings up to the one of that name.
    std::vector<std::string> upTo(const std::string& last) {
        std::vector<std::string> names;
        for (const auto& [name, value] : before_) {
            names.push_back(name);
            if (name == last) {
                break;
            }
        }
        return names;
    }

    /// What the dialog shows, from its first setting to its last.
    std::vector<std::string> shown() {
        const FrmOptions& o = frmOptions();
        const auto tick = [](const CheckBox& box) { return std::string(box.ticked() ? "x" : "-"); };
        return {o.cboUnitTransferCurrent.text(), o.cboUnitTransferTotal.text(),
                tick(o.chkStartUpMinimise),      tick(o.chkStartupRunMonitoring),
                tick(o.chkTransferLimit),        o.txtTransferLimit.text(),
                tick(o.chkDurationLimit),        o.txtDurationLimitHr.text(),
                o.txtDurationLimitMin.text(),    tick(o.chkTransferLimitWarning),
                tick(o.chkTransferLimitHangUp),  tick(o.chkTransferResetEnable),
                o.cboTransferReset.text(),       tick(o.chkTransferResetBackup),
                o.txtRefreshInterval.text(),     tick(o.chkLogIPAddress),
                tick(o.chkTransferTicker),       o.txtTransferTicker.text()};
    }

    const std::vector<std::string> edited{
        "Kilo-Bytes", "Mega-Bytes",   "x", "x",   "x", "5000000000", "x", "12", "34", "x", "x",
        "x",          "end of month", "x", "250", "x", "x",          "7"};

private:
    std::vector<std::pair<std::string, std::string>> before_;
};

} // namespace tarvik
