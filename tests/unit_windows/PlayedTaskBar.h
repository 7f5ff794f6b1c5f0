#pragma once

#include "ports/NotificationArea.h"
#include "windows/services/SystemHeader.h"

#include <shellapi.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace tarvik {

using TellTaskBar = BOOL WINAPI(DWORD, ::NOTIFYICONDATAA*);

/// Where this program keeps the address of the system's function.
extern "C" TellTaskBar* systemsTellTaskBar __asm__("__imp__Shell_NotifyIconA@8");

/// The record of an icon that the window owns.
inline tarvik::NOTIFYICONDATAA iconOf(HWND window, TrayIcon icon) {
    tarvik::NOTIFYICONDATAA record{};
    record.cbSize = 488;
    record.hWnd = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window));
    record.uID = 1;
    record.uFlags = 7;
    record.uCallbackMessage = 512;
    record.hIcon = static_cast<std::uint32_t>(icon);
    return record;
}

/// Stands in the task bar's place for its own lifetime: does nothing but write down what it is
/// told.
class PlayedTaskBar {
public:
    struct Told {
        DWORD request = 0;
        ::NOTIFYICONDATAA record{};
    };

    PlayedTaskBar() : system_(std::exchange(systemsTellTaskBar, writeDown)) { told.clear(); }
    ~PlayedTaskBar() { systemsTellTaskBar = system_; }
    PlayedTaskBar(const PlayedTaskBar&) = delete;
    PlayedTaskBar& operator=(const PlayedTaskBar&) = delete;

    static inline std::vector<Told> told;

private:
    static BOOL WINAPI writeDown(DWORD request, ::NOTIFYICONDATAA* record) {
        told.push_back({.request = request, .record = *record});
        return TRUE;
    }

    TellTaskBar* system_;
};

} // namespace tarvik
