#include "monitor/mdlCodeMonitor.h"

#include "connection/mdlCode.h"
#include "connection/mdlObtainIP.h"
#include "forms/Forms.h"
#include "monitor/mdlCodeLimits.h"
#include "monitor/mdlCodeReset.h"
#include "monitor/mdlCodeToggle.h"
#include "monitor/mdlPlans.h"
#include "monitor/mdlSessions.h"
#include "ports/Platform.h"
#include "settings/mdlCarried.h"
#include "settings/mdlSettingsJournal.h"
#include "settings/mdlSettingsLedger.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"
#include "types/Convert.h"
#include "ui/mdlGUI.h"
#include "ui/mdlGUIFigures.h"
#include "ui/mdlGUILists.h"
#include "ui/mdlGUIStatistics.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

/// What went wrong last in a tick.
struct FailedCall {
    std::string name;
    std::uint32_t code = 0;
};

void readConnection(std::uint32_t index, FailedCall& failed, bool& result) {
    const std::uint32_t handle = state().RasConnections.at(index).hrasconn;
    bool connected = false;
    std::uint32_t code = ReadStatus(handle, connected);
    if (code != ras::success) {
        failed = {"RasGetConnectStatus", code};
        return;
    }
    if (!connected) {
        NoteFold(handle);
        HandleOnline();
        return;
    }
    RAS_STATS statistics{};
    code = ReadStatistics(handle, statistics);
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
bool firstOnlineUpdate(std::uint32_t handle) {
    State& s = state();
    if (IsResumed(handle)) {
        return false; // it was asked about when it was first found up, or needed no question
    }
    const bool untouched = s.BytesRcvdCurrent.figure() < Long(1) &&
                           s.BytesSentCurrent.figure() < Long(1) &&
                           s.DurationCurrent.figure() < Long(1);
    if (!HasResumed()) {
        // A sum that is too large is for the ticker to tell: the session counts all the same.
        s.TickerBase = nearestSum(Rcvd().finished, Sent().finished);
    }
    s.FirstOnlineUpdate = false;
    return !s.DialInStarted && !untouched;
}

/// The figures of the counters are added as 32-bit numbers, whose sum may be too large; a session
/// that they do not hold is told as it is.
std::string sessionText() {
    const Counter& rcvd = state().BytesRcvdCurrent;
    const Counter& sent = state().BytesSentCurrent;
    if (rcvd.beyond() > Currency(0) || sent.beyond() > Currency(0)) {
        return wholeToText((sent.whole() + rcvd.whole()).integralPart());
    }
    return toText(sent.figure() + rcvd.figure());
}

bool userCountsTheSession(const std::string& bytes) {
    return MsgBox(std::string("Monitoring has been started and an active connection with transfer "
                              "has been detected.") +
                      CR + CR +
                      "If you have already monitored this online-session with Tarvik then" + CR +
                      "this may result in an unwanted offset of the recorded transfer." + CR + CR +
                      "Do you want to use (record) the this online-session (" + bytes + " bytes)?" +
                      CR + "(Press NO if you restarted Tarvik.)",
                  MsgBoxButtons::YesNo, MsgBoxIcon::Question) == MsgBoxAnswer::Yes;
}

std::vector<std::uint32_t> firstHandles(std::uint32_t count) {
    std::vector<std::uint32_t> handles;
    for (std::uint32_t i = 0; i < count; ++i) {
        handles.push_back(connectionAt(i).hrasconn);
    }
    return handles;
}

/// A hang-up within the tick enumerates the connections again: they may have moved, or be gone.
std::uint32_t indexOf(std::uint32_t handle) {
    const auto& connections = state().RasConnections;
    const auto found = std::find_if(connections.begin(), connections.end(),
                                    [&](const RASCONNA& one) { return one.hrasconn == handle; });
    return static_cast<std::uint32_t>(found - connections.begin());
}

/// Watches whether the program ends at a box of the tick. Its state is saved then, and nothing may
/// change it, show a window or move the file any more.
class ProgramEnd {
public:
    bool hasCome() const { return running_ && !forms().frmMain.loaded(); }

private:
    bool running_ = forms().frmMain.loaded();
};

/// All connections that were up when the tick began, but for those that it has hung up itself.
void readConnections(std::uint32_t count, FailedCall& failed, bool& result) {
    const ProgramEnd end;
    for (const std::uint32_t handle : firstHandles(count)) {
        if (end.hasCome()) {
            return;
        }
        const std::uint32_t index = indexOf(handle);
        if (index < state().RasConnections.size() && !HungUpInTick(handle)) {
            readConnection(index, failed, result);
        }
    }
}

/// The user is being asked: after a kill the next start asks again.
class OpenQuestion {
public:
    OpenQuestion() { state_.QuestionOpen = true; }
    ~OpenQuestion() { state_.QuestionOpen = false; }
    OpenQuestion(const OpenQuestion&) = delete;
    OpenQuestion& operator=(const OpenQuestion&) = delete;

private:
    State& state_ = state();
};

bool answerCountsTheSession(const std::string& bytes) {
    const OpenQuestion open;
    return userCountsTheSession(bytes);
}

/// While the question is open the session counts as declined: that is what is saved when the user's
/// session ends before the answer.
void askAboutTheSession() {
    // Where the figure cannot be told nobody is asked, and the session counts.
    const std::string bytes = sessionText();
    const Amount before = SessionOffset();
    LeaveOutWhatHasPassed();
    if (answerCountsTheSession(bytes)) {
        CountWhatHasPassed(before);
    }
}

} // namespace

bool UpdateStats() {
    return guarded("UpdateStats", false, [](bool& result) {
        const ProgramEnd end;
        state().ConnectionActive = false;
        FailedCall failed;
        std::uint32_t count = 0;
        const std::uint32_t code = InitRas(0, count);
        if (code != ras::success) {
            failed = {"RasEnumConnections", code};
        } else {
            BeginTick(count);
            if (count == 0) {
                HandleOnline();
            }
            readConnections(count, failed, result);
            NoteCarried();
            if (!end.hasCome()) {
                CheckPlans();
            }
            EndTick(failed.name.empty());
        }
        if (!failed.name.empty() && !end.hasCome()) {
            // What ended in this tick is in the totals, and no other tick may come.
            UpdateValuesInGUI(true, false, false);
            ShowRasErrorMessage(failed.name, failed.code);
            ToggleMonitoringActive(false);
        }
        // After a reset the session under way counts from its beginning, from the next tick on.
        const bool over =
            std::exchange(state().SessionOver, std::exchange(state().WasReset, false));
        KeepJournal(over ? KeepWhen::AtOnce : KeepWhen::Due);
        KeepLedger(over ? LedgerOccasion::SessionEnds : LedgerOccasion::Tick);
    });
}

bool HandleOnline(std::uint32_t Index, const RAS_STATS& Statistics) {
    return guarded("HandleOnline", false, [&](bool& result) {
        const ProgramEnd end;
        State& s = state();
        s.ConnectionActive = true;
        SetActiveConnection(Index);
        const RASCONNA connection = connectionAt(Index);
        const Traffic session = CarryOn(connection, Statistics);
        if (forms().frmStatistics.chkActiveConnection.ticked()) {
            SetStatistics(Statistics, session);
        }
        TakeCounters(connection, session);
        if (s.LogIPAddress != 0 && s.FirstOnlineUpdate && !s.AddressAsked) {
            s.AddressAsked = true;
            s.IPAddress = ObtainIP(s.HostName);
            if (end.hasCome()) {
                return;
            }
        }
        const bool ask = s.FirstOnlineUpdate && firstOnlineUpdate(connection.hrasconn);
        // The line that the program dialled may come behind one that goes on after a kill.
        s.DialInStarted = s.DialInStarted && s.FirstOnlineUpdate && IsResumed(connection.hrasconn);
        if (ask) {
            askAboutTheSession();
            if (end.hasCome()) {
                return;
            }
        }
        CheckReset();
        if (end.hasCome()) {
            return;
        }
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
