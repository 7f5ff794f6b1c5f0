#include "ui/mdlSysTray.h"

#include "forms/Forms.h"
#include "ports/Clock.h"
#include "ports/NotificationArea.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"

#include <string_view>
#include <utility>

namespace tarvik {

namespace {

constexpr std::uint32_t iconIdentifier = 1;
constexpr std::uint32_t mouseMoveMessage = 512;
constexpr std::uint32_t balloonVersion = 3;
/// Milliseconds from one attempt to show a note that waits to the next.
constexpr std::uint64_t betweenNotes = 5'000;

TrayIcon iconFor(TrayState state) {
    switch (state) {
    case TrayState::ActiveConnection:
        return TrayIcon::imgSysTrayOnline;
    case TrayState::NoConnection:
        return TrayIcon::imgSysTrayOffline;
    case TrayState::NotMonitoring:
        break;
    }
    return TrayIcon::imgSysTray;
}

std::string_view tipFor(TrayState state) {
    switch (state) {
    case TrayState::ActiveConnection:
        return "Velmars Tarvik: Active connection.";
    case TrayState::NoConnection:
        return "Velmars Tarvik: No active connection.";
    case TrayState::NotMonitoring:
        break;
    }
    return "Velmars Tarvik: Not monitoring.";
}

std::string tipTextFor(TrayState state) {
    const std::string& plan = forms().frmSysTray.planTip;
    return std::string(tipFor(state)) + (plan.empty() ? "" : "\n" + plan);
}

NOTIFYICONDATAA iconRecord(TrayState iconState, TrayState tipState) {
    NOTIFYICONDATAA data{};
    const bool balloons = forms().frmSysTray.balloonSupport;
    data.cbSize = balloons ? NOTIFYICONDATAA::size : NOTIFYICONDATAA::oldestSize;
    data.hWnd = forms().frmSysTray.picSysTrayHook.hWnd();
    data.uID = iconIdentifier;
    data.uFlags = NotificationArea::message | NotificationArea::icon | NotificationArea::tip;
    data.uCallbackMessage = mouseMoveMessage;
    data.hIcon = iconNumber(iconFor(iconState), forms().frmSysTray.planMark);
    data.uTimeoutOrVersion = balloons ? balloonVersion : 0;
    tipTextFor(tipState).copy(data.szTip, sizeof data.szTip - 1);
    return data;
}

NOTIFYICONDATAA currentRecord() {
    const FrmSysTray& tray = forms().frmSysTray;
    return iconRecord(static_cast<TrayState>(tray.iconState),
                      static_cast<TrayState>(tray.tipState));
}

/// One at a time: the next one takes its place. Without ticks nobody would come back to it.
bool mayTell() {
    const std::uint64_t tried = forms().frmSysTray.notesTriedAt;
    return tried == 0 || !forms().frmMain.timUpdateStats.enabled() ||
           platform().clock.steadyMilliseconds() - tried >= betweenNotes;
}

void tellNext() {
    FrmSysTray& tray = forms().frmSysTray;
    tray.notesTriedAt = platform().clock.steadyMilliseconds();
    const NoteToTell& next = tray.notesToTell.front();
    const bool isShown = next.answered ? platform().notificationArea.tell(next.note, next.answered)
                                       : Tell(next.note.text);
    if (isShown) {
        tray.notesToTell.erase(tray.notesToTell.begin());
    }
}

} // namespace

bool AddToSysTray(TrayState IconState, TrayState TipState) {
    return guarded("AddToSysTray", false, [&](bool& result) {
        FrmSysTray& tray = forms().frmSysTray;
        tray.load();
        tray.iconState = static_cast<std::uint8_t>(IconState);
        tray.tipState = static_cast<std::uint8_t>(TipState);
        NOTIFYICONDATAA data = iconRecord(IconState, TipState);
        NotificationArea& area = platform().notificationArea;
        result = area.Shell_NotifyIconA(NotificationArea::add, &data);
        if (result && tray.balloonSupport) {
            area.Shell_NotifyIconA(NotificationArea::setVersion, &data);
        }
    });
}

bool ToggleSysTray(TrayState IconState, TrayState TipState) {
    return guarded("ToggleSysTray", false, [&](bool& result) {
        FrmSysTray& tray = forms().frmSysTray;
        const auto icon = static_cast<std::uint8_t>(IconState);
        const auto tip = static_cast<std::uint8_t>(TipState);
        if (tray.iconState == icon && tray.tipState == tip) {
            return;
        }
        tray.iconState = icon;
        tray.tipState = tip;
        NOTIFYICONDATAA data = iconRecord(IconState, TipState);
        result = platform().notificationArea.Shell_NotifyIconA(NotificationArea::modify, &data);
    });
}

void ShowPlanInSysTray(const std::string& Line, TrayMark Mark) {
    guarded("ShowPlanInSysTray", [&] {
        FrmSysTray& tray = forms().frmSysTray;
        if (tray.planTip == Line && tray.planMark == Mark) {
            return;
        }
        tray.planTip = Line;
        tray.planMark = Mark;
        NOTIFYICONDATAA data = currentRecord();
        platform().notificationArea.Shell_NotifyIconA(NotificationArea::modify, &data);
    });
}

bool IsInSysTray() {
    return guarded("IsInSysTray", false, [](bool& result) {
        NOTIFYICONDATAA data = currentRecord();
        result = platform().notificationArea.Shell_NotifyIconA(NotificationArea::modify, &data);
    });
}

bool ShowBalloonTip(const std::string& Text, const std::string& Title, std::uint32_t Icon,
                    std::uint32_t Timeout) {
    return guarded("ShowBalloonTip", false, [&](bool& result) {
        if (!forms().frmSysTray.balloonSupport) {
            return;
        }
        NOTIFYICONDATAA data = currentRecord();
        data.uFlags = NotificationArea::info;
        Text.copy(data.szInfo, sizeof data.szInfo - 1);
        Title.copy(data.szInfoTitle, sizeof data.szInfoTitle - 1);
        data.dwInfoFlags = Icon;
        data.uTimeoutOrVersion = Timeout;
        result = platform().notificationArea.Shell_NotifyIconA(NotificationArea::modify, &data);
    });
}

bool Tell(const std::string& Text) {
    return ShowBalloonTip(Text, "Velmars Tarvik", informationIcon, balloonMilliseconds);
}

void TellSoon(const std::string& Text) {
    TellSoon({.title = {}, .text = Text}, nullptr);
}

void TellSoon(DesktopNote Note, std::function<void(int)> Answered) {
    guarded("TellSoon", [&] {
        FrmSysTray& tray = forms().frmSysTray;
        const bool isFirst = tray.notesToTell.empty();
        tray.notesToTell.push_back({std::move(Note), std::move(Answered)});
        if (isFirst && mayTell()) {
            tellNext();
        }
    });
}

void TellWhatWaits() {
    guarded("TellWhatWaits", [] {
        if (!forms().frmSysTray.notesToTell.empty() && mayTell()) {
            tellNext();
        }
    });
}

bool RemoveFromSysTray() {
    return guarded("RemoveFromSysTray", false, [](bool& result) {
        FrmSysTray& tray = forms().frmSysTray;
        NOTIFYICONDATAA data = currentRecord();
        result = platform().notificationArea.Shell_NotifyIconA(NotificationArea::remove, &data);
        tray.unload();
    });
}

} // namespace tarvik
