#pragma once

#include "ports/NotificationArea.h"
#include "windows/services/SystemHeader.h"
#include "windows/services/WindowsCodePage.h"

#include <array>
#include <optional>

namespace tarvik::face {

/// The notification area of the task bar. An icon comes back by itself when the task bar was
/// started anew.
class WindowsNotificationArea : public NotificationArea {
public:
    /// Texts are bytes of that code page.
    explicit WindowsNotificationArea(const CodePage& codePage = windowsCodePage())
        : codePage_(codePage) {}
    ~WindowsNotificationArea() override;
    WindowsNotificationArea(const WindowsNotificationArea&) = delete;
    WindowsNotificationArea& operator=(const WindowsNotificationArea&) = delete;

    bool Shell_NotifyIconA(std::uint32_t request, tarvik::NOTIFYICONDATAA* data) override;
    bool SetForegroundWindow(std::uint32_t window) override;
    std::uint32_t GetVersion() override;

private:
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second);
    void watchTaskBar();
    void addAgain();
    void tellTurns(tarvik::NOTIFYICONDATAA& record) const;
    HICON iconOf(std::uint32_t which);

    CodePage codePage_;
    HWND watcher_ = nullptr;
    std::array<HICON, 3> icons_{};
    std::optional<tarvik::NOTIFYICONDATAA> shown_; ///< as last told to the task bar
};

} // namespace tarvik::face
