// The settings at the program's start: any file. What is saved afterwards is read back as it is.
//
// Input: the locale's number as one byte, then the file.

#include "FuzzWorld.h"
#include "settings/mdlSettings.h"
#include "settings/mdlSettingsLoad.h"
#include "settings/mdlSettingsLog.h"
#include "startup/mdlStartUp.h"

#include <memory>

namespace tarvik::fuzz {
namespace {

/// All settings and totals of a state, as a file would hold them.
std::string settingsOf(const State& s) {
    std::string text;
    const auto add = [&](std::int64_t number) { text += std::to_string(number) + ' '; };
    for (const std::uint8_t flag :
         {static_cast<std::uint8_t>(s.UnitTransferCurrent),
          static_cast<std::uint8_t>(s.UnitTransferTotal), s.StartUpRunMonitoring, s.StartUpMinimise,
          s.TransferLimit, s.DurationLimit, s.TransferLimitWarning, s.TransferLimitHangUp,
          s.TransferResetEnable, static_cast<std::uint8_t>(s.TransferReset), s.TransferResetBackup,
          s.LogIPAddress, s.TransferTicker}) {
        add(flag);
    }
    add(s.TransferLimitValue.scaled());
    add(s.DurationLimitHr.value());
    add(s.DurationLimitMin.value());
    add(s.RefreshInterval.value());
    add(s.TransferTickerValue.value());
    return text;
}

/// Starts the program on the machine's file and loads its settings.
bool load(FuzzWorld& fuzz) {
    fuzz.boxes.clear();
    return LoadState() && !fuzz.toldError();
}

void play(Input input) {
    auto fuzz = std::make_unique<FuzzWorld>();
    fuzz->machine.locale.conventions = localeOf(input.byte());
    fuzz->machine.files.setFile(FuzzWorld::iniPath, input.everything());
    fuzz->machine.connections.entries.push_back({.name = "Line"});
    Main();
    if (!load(*fuzz) || !SaveSettings()) {
        return;
    }
    const State& state = fuzz->world.state;
    const std::string before = settingsOf(state);
    const Currency sent = state.BytesSentTotal;
    const Currency rcvd = state.BytesRcvdTotal;
    const Currency duration = state.DurationTotal;
    require(load(*fuzz), "what was saved is loaded");
    require(settingsOf(state) == before, "saved settings are read back");
    require(state.BytesSentTotal == sent && state.BytesRcvdTotal == rcvd &&
                state.DurationTotal == duration,
            "totals stay while settings are saved");
    fuzz->boxes.clear();
    const Long records = GetNumRecords();
    if (SaveState() && !fuzz->toldError()) {
        const Long now = GetNumRecords();
        require(now == records || now == records + 1, "saving adds one record or none");
        require(load(*fuzz) && state.BytesSentTotal == sent && state.BytesRcvdTotal == rcvd,
                "saved totals are read back");
    }
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
