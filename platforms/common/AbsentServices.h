#pragma once

#include "ports/CommonDialogs.h"
#include "ports/InternetState.h"
#include "ports/NotificationArea.h"

namespace tarvik {

// What the program meets where a machine does not offer a service: each operation fails the way the
// service itself reports its absence.

/// A desktop without a notification area. The version word is that of a system that would show
/// balloons.
class AbsentNotificationArea : public NotificationArea {
public:
    bool Shell_NotifyIconA(std::uint32_t, NOTIFYICONDATAA*) override { return false; }
    bool SetForegroundWindow(std::uint32_t) override { return false; }
    std::uint32_t GetVersion() override { return 5; }
};

/// A machine that is not connected and knows of no connection.
class AbsentInternetState : public InternetState {
public:
    bool InternetGetConnectedState(std::uint32_t* flags, std::uint32_t) override {
        *flags = 0;
        return false;
    }
    bool InternetGetConnectedStateExA(std::uint32_t* flags, char*, std::uint32_t,
                                      std::uint32_t) override {
        *flags = 0;
        return false;
    }
};

/// A desktop that cannot show file dialogs.
class AbsentCommonDialogs : public CommonDialogs {
public:
    bool GetOpenFileNameA(OPENFILENAMEA*, const DialogPlacement&) override { return false; }
    bool GetSaveFileNameA(OPENFILENAMEA*, const DialogPlacement&) override { return false; }
    std::uint32_t CommDlgExtendedError() override { return dialogFailure; }
};

} // namespace tarvik
