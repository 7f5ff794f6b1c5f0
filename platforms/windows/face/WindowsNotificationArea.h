#pragma once

#include "common/TrayLamp.h"
#include "ports/NotificationArea.h"
#include "windows/services/SystemHeader.h"
#include "windows/services/WindowsCodePage.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

namespace tarvik::face {

/// The notification area of the task bar. An icon comes back by itself when the task bar was
/// started anew. A task bar that does not answer is left alone until it does, and then told how the
/// icon is by then; notes are dropped meanwhile.
class WindowsNotificationArea : public NotificationArea {
public:
    /// Texts are bytes of that code page. The task bar is given `patience`, milliseconds, once, to
    /// show that it answers.
    explicit WindowsNotificationArea(const CodePage& codePage = windowsCodePage(),
                                     UINT patience = 100)
        : codePage_(codePage), patience_(patience) {}
    ~WindowsNotificationArea() override;
    WindowsNotificationArea(const WindowsNotificationArea&) = delete;
    WindowsNotificationArea& operator=(const WindowsNotificationArea&) = delete;

    bool Shell_NotifyIconA(std::uint32_t request, tarvik::NOTIFYICONDATAA* data) override;
    /// The task bar's notes have no buttons. It shows none while it keeps quiet for the user, who
    /// then finds it in its list, where it has one.
    bool tell(const DesktopNote& note, std::function<void(int)> answered) override;
    bool SetForegroundWindow(std::uint32_t window) override;
    std::uint32_t GetVersion() override;

private:
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second);
    static void CALLBACK onAnswer(HWND, UINT, ULONG_PTR watcher, LRESULT);
    void watchTaskBar();
    void addAgain();
    bool answers();
    void catchUp();
    bool tellOrKeep(std::uint32_t request, tarvik::NOTIFYICONDATAA& record);
    void tellHidden(tarvik::NOTIFYICONDATAA& record) const;
    tarvik::NOTIFYICONDATAA recordOf(const DesktopNote& note) const;
    void hearOfNote(UINT news);
    HICON iconOf(std::uint32_t which);

    CodePage codePage_;
    HWND watcher_ = nullptr;
    std::array<HICON, trayIconNumbers> icons_{};
    UINT patience_;
    std::optional<tarvik::NOTIFYICONDATAA> shown_; ///< as it is to be shown
    bool there_ = false;                           ///< the task bar has it, as far as is known
    std::optional<tarvik::NOTIFYICONDATAA> gone_;  ///< to be taken away when the task bar answers
    HWND silent_ = nullptr;                        ///< the task bar that has not answered yet
    std::function<void(int)> answered_; ///< empty where no answer to the last note is waited for
    bool noteSeen_ = false;             ///< what goes from now on is that note, not the one before
};

} // namespace tarvik::face
