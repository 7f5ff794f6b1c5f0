#pragma once

#include "ports/Desktop.h"
#include "windows/face/FormWindow.h"
#include "windows/services/WindowsCodePage.h"

#include <memory>
#include <vector>

namespace tarvik::face {

/// The windows of a Windows desktop. One at a time, on the thread that made it.
///
/// When the user's session ends, or the system's list of tasks ends the program, every form is
/// unloaded for that reason, open boxes close, and `run` returns.
class WindowsDesktop : public Desktop {
public:
    explicit WindowsDesktop(const CodePage& codePage = windowsCodePage());
    ~WindowsDesktop() override;
    WindowsDesktop(const WindowsDesktop&) = delete;
    WindowsDesktop& operator=(const WindowsDesktop&) = delete;

    void realise(Form& form) override;
    void withdraw(Form& form) override;
    MsgBoxAnswer messageBox(const MsgBoxRequest& request) override;
    void popUpMenu(Menu& menu, Form& owner) override;
    void beep() override;
    void processEvents() override;
    void runBlocking(const std::function<void()>& call) override;
    void run() override;
    /// Runs the call, which shows a dialog of the system. Meanwhile timers go on; what the user
    /// does elsewhere in the program is refused. Does nothing when the program must end.
    void runDialog(const std::function<void()>& call);
    /// A box that is part of such a dialog: meanwhile timers go on. Answered as if closed when the
    /// program must end.
    MsgBoxAnswer askInDialog(HWND owner, const MsgBoxRequest& request);
    void quit() override;

    /// What happens when the program must end, whatever it is doing; may be called again.
    void end(UnloadMode why);

private:
    MsgBoxAnswer showBox(HWND owner, const MsgBoxRequest& request);
    /// Handles one message, as in any dialog.
    void handle(MSG& message);
    /// Ends the windows that were withdrawn, unless a handler may be running in one.
    void bury();
    /// Handles what waits, but drops the input.
    void paintOnly();
    FormWindow* windowOf(const Form& form) const;
    /// Makes true what the program has said of its windows so far.
    void applyVisibility();
    /// The window of the form, or the first of all for null, if it is seen; else null.
    HWND seenWindow(const ControlList* form) const;
    /// The window whose user is answered, or else the one that was active last, or else any; null
    /// when none of the program's is seen.
    HWND boxOwner() const;

    WindowContext context_;
    std::vector<std::unique_ptr<FormWindow>> windows_; ///< in the order in which they were realised
    std::vector<std::unique_ptr<FormWindow>> withdrawn_;
    bool quit_ = false;
};

} // namespace tarvik::face
