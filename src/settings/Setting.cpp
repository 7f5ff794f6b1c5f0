#include "settings/Setting.h"

#include "ports/Locale.h"
#include "ports/Platform.h"
#include "state/mdlConst.h"
#include "types/Convert.h"
#include "ui/mdlGUILists.h"

#include <algorithm>

namespace tarvik {

namespace {

using O = FrmOptions;
using S = State;

const Settings table{{
    {"UnitTransferCurrent", UnitSetting{&S::UnitTransferCurrent, &O::cboUnitTransferCurrent,
                                        &FrmMain::lblTransferCurrent, "current "}},
    {"UnitTransferTotal", UnitSetting{&S::UnitTransferTotal, &O::cboUnitTransferTotal,
                                      &FrmMain::lblTransferTotal, "total "}},
    {"StartUpRunMonitoring", FlagSetting{&S::StartUpRunMonitoring, &O::chkStartupRunMonitoring}},
    {"StartUpMinimise", FlagSetting{&S::StartUpMinimise, &O::chkStartUpMinimise}},
    {"TransferLimit", FlagSetting{&S::TransferLimit, &O::chkTransferLimit}},
    {"TransferLimitValue", BytesSetting{&S::TransferLimitValue, &O::txtTransferLimit,
                                        &O::rememberedTransferLimit, 1'000'000}},
    {"DurationLimit", FlagSetting{&S::DurationLimit, &O::chkDurationLimit}},
    {"DurationLimitHr", NumberSetting{&S::DurationLimitHr, &O::txtDurationLimitHr,
                                      &O::rememberedDurationLimitHr, 600}},
    {"DurationLimitMin", NumberSetting{&S::DurationLimitMin, &O::txtDurationLimitMin,
                                       &O::rememberedDurationLimitMin, 0}},
    {"TransferLimitWarning", FlagSetting{&S::TransferLimitWarning, &O::chkTransferLimitWarning}},
    {"TransferLimitHangUp", FlagSetting{&S::TransferLimitHangUp, &O::chkTransferLimitHangUp}},
    {"TransferResetEnable", FlagSetting{&S::TransferResetEnable, &O::chkTransferResetEnable}},
    {"TransferReset", CriterionSetting{&S::TransferReset, &O::cboTransferReset}},
    {"TransferResetBackup", FlagSetting{&S::TransferResetBackup, &O::chkTransferResetBackup}},
    {"TransferResetLast", DaySetting{&S::TransferResetLast}},
    {"RefreshInterval", NumberSetting{&S::RefreshInterval, &O::txtRefreshInterval,
                                      &O::rememberedRefreshInterval, 1000, 100, 50'000}},
    {"LogIPAddress", FlagSetting{&S::LogIPAddress, &O::chkLogIPAddress}},
    {"TransferTicker", FlagSetting{&S::TransferTicker, &O::chkTransferTicker}},
    {"TransferTickerValue", NumberSetting{&S::TransferTickerValue, &O::txtTransferTicker,
                                          &O::rememberedTransferTicker, 100, 1, 9999}},
}};

/// Where the one that is kept in that member stands.
template <class Value>
SettingsInOrder::iterator placeOf(Value State::*member, SettingsInOrder& order) {
    return std::find_if(order.begin(), order.end(),
                        [member](const Setting* setting) { return setting->isKeptIn(member); });
}

/// The two of the start-up change places.
SettingsInOrder orderOfShowing() {
    SettingsInOrder result{};
    std::transform(table.begin(), table.end(), result.begin(),
                   [](const Setting& setting) { return &setting; });
    std::iter_swap(placeOf(&S::StartUpRunMonitoring, result), placeOf(&S::StartUpMinimise, result));
    return result;
}

/// Likewise, and they come after the resets.
SettingsInOrder orderOfWriting() {
    SettingsInOrder result = orderOfShowing();
    std::rotate(placeOf(&S::StartUpMinimise, result), placeOf(&S::StartUpRunMonitoring, result) + 1,
                placeOf(&S::RefreshInterval, result));
    return result;
}

} // namespace

const Settings& settings() {
    return table;
}

const SettingsInOrder& settingsAsWritten() {
    static const SettingsInOrder written = orderOfWriting();
    return written;
}

const SettingsInOrder& settingsAsShown() {
    static const SettingsInOrder shown = orderOfShowing();
    return shown;
}

void setDefaults(State& state, const LocaleData& locale) {
    for (const Setting& setting : table) {
        std::visit(
            ByKind{
                [&](const auto& small) { setSmall(state.*small.value, 0); },
                [&](const BytesSetting& bytes) { state.*bytes.value = Currency(bytes.standard); },
                [&](const NumberSetting& number) { state.*number.value = number.standard; },
                [&](const DaySetting& day) {
                    state.*day.value = textToDate(DefaultDateText, locale);
                }},
            setting.kind);
    }
}

std::string textOf(const Setting& setting, const State& state, const LocaleData& locale) {
    return std::visit(
        ByKind{[&](const auto& small) { return wholeToText(smallOf(state.*small.value)); },
               [&](const BytesSetting& bytes) { return toText(state.*bytes.value, locale); },
               [&](const NumberSetting& number) { return toText(state.*number.value); },
               [&](const DaySetting& day) { return toText(state.*day.value, locale); }},
        setting.kind);
}

void show(const Setting& setting, const State& state, FrmOptions& options) {
    const auto fill = [&](TextBox FrmOptions::*field) {
        (options.*field).setText(textOf(setting, state, platform().locale.data()));
    };
    std::visit(
        ByKind{[&](const FlagSetting& flag) { (options.*flag.box).setValue(state.*flag.value); },
               [&](const auto& chosen) {
                   SetComboBox(options.*chosen.list, static_cast<int>(state.*chosen.value));
               },
               [&](const BytesSetting& bytes) { fill(bytes.field); },
               [&](const NumberSetting& number) { fill(number.field); }, [](const DaySetting&) {}},
        setting.kind);
}

} // namespace tarvik
