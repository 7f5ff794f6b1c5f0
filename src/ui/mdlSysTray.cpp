#include "ui/mdlSysTray.h"

#include "forms/Forms.h"
#include "ports/Clock.h"
#include "ports/NotificationArea.h"
#include "ports/Platform.h"
#include "state/mdlTools.h"

#include <string_view>

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

NOTIFYICONDATAA iconRecord(TrayState iconState, TrayState tipState) {
    NOTIFYICONDATAA data{};
    const bool balloons = forms().frmSysTray.balloonSupport;
    data.cbSize = balloons ? NOTIFYICONDATAA::size : NOTIFYICONDATAA::oldestSize;
    data.hWnd = forms().frmSysTray.picSysTrayHook.hWnd();
    data.uID = iconIdentifier;
    data.uFlags = NotificationArea::message | NotificationArea::icon | NotificationArea::tip;
    data.uCallbackMessage = mouseMoveMessage;
    data.hIcon = static_cast<std::uint32_t>(iconFor(iconState));
    data.uTimeoutOrVersion = balloons ? balloonVersion : 0;
    tipFor(tipState).copy(data.szTip, sizeof data.szTip - 1);
    return data;
}

NOTIFYICONDATAA currentRecord() {
    const FrmSysTray& tray = forms().frmSysTray;
    return iconRecord(static_cast<TrayState>(tray.iconState),
                      static_cast<TrayState>(tray.tipState));
}

/// One at a time: the next one would take its place.
void tellNext() {
    FrmSysTray& tray = forms().frmSysTray;
    tray.notesTriedAt = platform().clock.steadyMilliseconds();
    if (Tell(tray.notesToTell.front())) {
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
    guarded("TellSoon", [&] {
        forms().frmSysTray.notesToTell.push_back(Text);
        if (forms().frmSysTray.notesToTell.size() == 1) {
            tellNext();
        }
    });
}

void TellWhatWaits() {
    guarded("TellWhatWaits", [] {
        const FrmSysTray& tray = forms().frmSysTray;
        if (!tray.notesToTell.empty() &&
            platform().clock.steadyMilliseconds() - tray.notesTriedAt >= betweenNotes) {
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
