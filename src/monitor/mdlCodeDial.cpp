#include "monitor/mdlCodeDial.h"

#include "connection/DialRecord.h"
#include "connection/mdlCode.h"
#include "monitor/mdlCodeToggle.h"
#include "monitor/mdlSessions.h"
#include "ports/ConnectionProvider.h"
#include "ports/Desktop.h"
#include "ports/Platform.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"

namespace tarvik {

namespace {

/// The handle that the dial returned, 0 for none; failures have been shown.
std::uint32_t dial(DialRecord& record) {
    ConnectionProvider& connections = platform().connections;
    bool passwordFound = false;
    std::uint32_t code =
        connections.RasGetEntryDialParamsA(nullptr, &record.parameters(), &passwordFound);
    if (code != ras::success) {
        // A service that fails may have filled in a part, and the box may stay open for long.
        record.wipe();
        ShowRasErrorMessage("RasGetEntryDialParams", code);
        return 0;
    }
    RASDIALEXTENSIONS extensions{
        .dwSize = RASDIALEXTENSIONS::size, .dwfOptions = 0, .hwndParent = 0, .reserved = 0};
    std::uint32_t handle = 0;
    const auto before = ConnectedSessions();
    platform().desktop.runBlocking([&] {
        code =
            connections.RasDialA(&extensions, nullptr, &record.parameters(), 0, nullptr, &handle);
    });
    record.wipe();
    if (code != ras::success) {
        ShowRasErrorMessage("RasDial", code);
        return handle;
    }
    NoteDial(handle, before);
    std::uint32_t count = 0;
    if (InitRas(0, count) != ras::success) {
        MsgBox(std::string("Error: Re-initialisation of RAS failed.") + CR +
                   "DialIn process may have failed.",
               MsgBoxButtons::OkOnly, MsgBoxIcon::Critical);
    }
    return handle;
}

void hangUpIfConnected(std::uint32_t handle) {
    bool connected = false;
    std::uint32_t code = ReadStatus(handle, connected);
    if (code != ras::success) {
        ShowRasErrorMessage("RasGetConnectStatus", code);
        ToggleMonitoringActive(false);
        return;
    }
    if (!connected) {
        return;
    }
    code = platform().connections.RasHangUpA(handle);
    if (code == ras::success) {
        state().ConnectionActive = false;
        NoteHangUp(handle);
    } else {
        ShowRasErrorMessage("RasHangUp", code);
        ToggleMonitoringActive(false);
    }
}

} // namespace

Long DialIn(const std::string& EntryName, const std::string&) {
    return guarded("DialIn", Long(-1), [&](Long& result) {
        if (EntryName.empty()) {
            MsgBox("Error: Invalid DialIn entry provided.", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
            return;
        }
        DialRecord record(EntryName);
        result = static_cast<std::int32_t>(dial(record));
        state().DialInStarted = result >= Long(1);
    });
}

void HangUpLine(std::uint32_t Handle) {
    guarded("HangUpLine", [&] { hangUpIfConnected(Handle); });
}

void HangUp() {
    guarded("HangUp", [] {
        std::uint32_t count = 0;
        const std::uint32_t code = InitRas(0, count);
        if (code != ras::success) {
            // The second box for one failure; kept so.
            ShowRasErrorMessage("RasEnumConnections", code);
            ToggleMonitoringActive(false);
            return;
        }
        for (std::uint32_t i = 0; i < count; ++i) {
            hangUpIfConnected(state().RasConnections.at(i).hrasconn);
        }
    });
}

} // namespace tarvik
