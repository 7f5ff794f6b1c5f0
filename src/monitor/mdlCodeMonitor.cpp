#include "monitor/mdlCodeMonitor.h"

#include "connection/mdlCode.h"
#include "connection/mdlObtainIP.h"
#include "monitor/mdlCodeLimits.h"
#include "monitor/mdlCodeReset.h"
#include "monitor/mdlCodeToggle.h"
#include "monitor/mdlSessions.h"
#include "ports/Platform.h"
#include "startup/mdlConst.h"
#include "startup/mdlTools.h"
#include "startup/mdlVar.h"
#include "types/Convert.h"
#include "ui/Forms.h"
#include "ui/mdlGUI.h"
#include "ui/mdlGUIStatistics.h"

#include <string>

namespace tarvik {

namespace {

/// What went wrong last in a tick.
struct FailedCall {
    std::string name;
    std::uint32_t code = 0;
};

void readConnection(std::uint32_t index, FailedCall& failed, bool& result) {
    ConnectionProvider& connections = platform().connections;
    const std::uint32_t handle = state().RasConnections.at(index).hrasconn;
    RASCONNSTATUSA status{};
    status.dwSize = RASCONNSTATUSA::size;
    std::uint32_t code = connections.RasGetConnectStatusA(handle, &status);
    if (code != ras::success) {
        failed = {"RasGetConnectStatus", code};
        return;
    }
    if (status.rasconnstate != ras::connected) {
        HandleOnline();
        return;
    }
    RAS_STATS statistics{};
    statistics.dwSize = RAS_STATS::size;
    code = connections.RasGetConnectionStatistics(handle, &statistics);
    if (code != ras::success) {
        failed = {"RasGetConnectionStatistics", code};
        return;
    }
    result = HandleOnline(index, statistics);
}

RASCONNA connectionAt(std::uint32_t index) {
    const auto& connections = state().RasConnections;
    return index < connections.size() ? connections[index] : RASCONNA{};
}

/// True when the user is to be asked whether the session counts: it ran before the program knew it.
bool firstOnlineUpdate() {
    State& s = state();
    const bool untouched =
        s.BytesRcvdCurrent < Long(1) && s.BytesSentCurrent < Long(1) && s.DurationCurrent < Long(1);
    s.TickerBase = s.BytesRcvdTotal + s.BytesSentTotal;
    s.FirstOnlineUpdate = false;
    return !s.DialInStarted && !untouched;
}

/// The figures of the counters are added as 32-bit numbers, whose sum may be too large; a session
/// that they do not hold is told as it is.
std::string sessionText() {
    const State& s = state();
    if (s.BytesRcvdBeyond > Currency(0) || s.BytesSentBeyond > Currency(0)) {
        return wholeToText((SessionSent() + SessionRcvd()).integralPart());
    }
    return toText(s.BytesSentCurrent + s.BytesRcvdCurrent);
}

bool userCountsTheSession() {
    return MsgBox(std::string("Monitoring has been started and an active connection with transfer "
                              "has been detected.") +
                      CR + CR +
                      "If you have already monitored this online-session with Tarvik then" + CR +
                      "this may result in an unwanted offset of the recorded transfer." + CR + CR +
                      "Do you want to use (record) the this online-session (" + sessionText() +
                      " bytes)?" + CR + "(Press NO if you restarted Tarvik.)",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question) == MsgBoxAnswer::Yes;
}

void leaveOutWhatHasPassed() {
    State& s = state();
    s.BytesRcvdOffset = s.BytesRcvdCurrent;
    s.BytesSentOffset = s.BytesSentCurrent;
    s.DurationOffset = s.DurationCurrent;
    s.BytesRcvdOffsetBeyond = s.BytesRcvdBeyond;
    s.BytesSentOffsetBeyond = s.BytesSentBeyond;
    s.DurationOffsetBeyond = s.DurationBeyond;
}

} // namespace

bool UpdateStats() {
    return guarded("UpdateStats", false, [](bool& result) {
        state().ConnectionActive = false;
        FailedCall failed;
        std::uint32_t count = 0;
        const std::uint32_t code = InitRas(0, count);
        if (code != ras::success) {
            failed = {"RasEnumConnections", code};
        } else if (count == 0) {
            HandleOnline();
        }
        if (code == ras::success) {
            ForgetEndedSessions(count);
        }
        for (std::uint32_t i = 0; code == ras::success && i < count; ++i) {
            readConnection(i, failed, result);
        }
        if (!failed.name.empty()) {
            ShowRasErrorMessage(failed.name, failed.code);
            ToggleMonitoringActive(false);
        }
    });
}

bool HandleOnline(std::uint32_t Index, const RAS_STATS& Statistics) {
    return guarded("HandleOnline", false, [&](bool& result) {
        State& s = state();
        s.ConnectionActive = true;
        SetActiveConnection(Index);
        const RASCONNA connection = connectionAt(Index);
        const LineTotals session = CarryOn(connection, Statistics);
        if (forms().frmStatistics.chkActiveConnection.ticked()) {
            SetStatistics(Statistics, session);
        }
        TakeCounters(connection, session);
        if (s.LogIPAddress != 0 && s.FirstOnlineUpdate) {
            s.IPAddress = ObtainIP(s.HostName);
        }
        const bool ask = s.FirstOnlineUpdate && firstOnlineUpdate();
        s.DialInStarted = false;
        if (ask && !userCountsTheSession()) {
            leaveOutWhatHasPassed();
        }
        CheckReset();
        CheckLimits();
        UpdateGUI();
        result = true;
    });
}

bool HandleOnline() {
    return guarded("HandleOnline", false, [](bool& result) {
        ResetTransfers(false);
        UpdateGUI();
        result = true;
    });
}

void SetActiveConnection(std::uint32_t Index) {
    guarded("SetActiveConnection", [&] {
        const RASCONNA& connection = state().RasConnections.at(Index);
        const auto text = [](const auto& field) { return StripNull({field, sizeof field}); };
        const std::string entryName = text(connection.szEntryName);
        FrmMain& main = forms().frmMain;
        main.txtActiveConnection.setText(text(connection.szDeviceType) + ": " + entryName + " - " +
                                         text(connection.szDeviceName));
        const int position = ElementIsInComboBox(main.cboConnections, entryName);
        if (position >= 0) {
            main.cboConnections.setListIndex(position);
        }
    });
}

} // namespace tarvik
