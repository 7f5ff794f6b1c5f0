#pragma once

#include "common/FaceContext.h"
#include "controls/Controls.h"
#include "linux/face/ClipboardGuard.h"
#include "linux/face/PlainBoxes.h"
#include "ports/Desktop.h"

#include <QEventLoop>
#include <QObject>

#include <functional>
#include <memory>
#include <vector>

class QDialog;

namespace tarvik::face {

class FormWindow;

/// The windows of a Qt desktop. A QApplication must live as long as this.
///
/// The user's session ends by a request of the session manager or by the signals that ask a process
/// to end: every form is then unloaded as at the end of the session, open boxes close, and `run`
/// returns. When the display goes first, the forms are unloaded likewise, but no window is touched.
class QtDesktop : public QObject, public Desktop {
public:
    QtDesktop();
    ~QtDesktop() override;

    void realise(Form& form) override;
    void withdraw(Form& form) override;
    MsgBoxAnswer messageBox(const MsgBoxRequest& request) override;
    void popUpMenu(Menu& menu, Form& owner) override;
    void beep() override;
    void processEvents() override;
    void runBlocking(const std::function<void()>& call) override;
    void run() override;
    void quit() override;

    /// The picture that is known by that number; null when there is none.
    Picture* pictureOf(std::uint32_t handle) const;
    /// Puts the window that is known by that number in front of others, if it is seen.
    bool bringToFront(std::uint32_t handle);
    /// What the user does outside the windows may reach the models now.
    bool takesInput() const { return context_.takesInput() && !context_.ending; }
    /// The window known by that number if it is seen, or else the one the user works in; null for
    /// none.
    QWidget* ownerOf(std::uint32_t handle);
    /// Shows the dialog and returns when it is closed: true when something was chosen. Meanwhile
    /// timers go on; what the user does elsewhere is refused.
    bool runDialog(QDialog& dialog);
    /// Asks before the dialog that is open, without its closing. Timers go on.
    MsgBoxAnswer askInDialog(const MsgBoxRequest& request);

    /// What happens when the user's session ends; may be called again.
    void endSession();
    /// Tells every form that the machine is about to sleep or to be shut down.
    void pause();

    /// What happens when there is no display any more: the same, without windows and boxes, which
    /// are left as they are. The process must end afterwards.
    void loseDisplay();
    bool displayLost() const { return displayLost_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    MsgBoxAnswer showBox(const MsgBoxRequest& request);
    /// The window of the form, or the first of all for null, if it is seen; else null.
    FormWindow* seenWindow(const ControlList* form) const;
    /// The window whose user is answered, or else the one that was active last, or else any; null
    /// when none of the program's is seen.
    FormWindow* windowToAskIn() const;
    /// Makes true what the program has said of its windows so far.
    void applyVisibility();
    /// Before what a box stands: the dialog that is open, or a window.
    QWidget* boxOwner() const;
    FormWindow* windowOf(std::uint32_t handle) const;
    void forEachForm(const std::function<void(Form& form)>& act) const;
    void unloadForms();

    FaceContext context_;
    std::vector<FormWindow*> windows_; ///< in the order in which they were realised
    QEventLoop loop_;
    PlainBoxes plainBoxes_;
    ClipboardGuard clipboardGuard_;
    bool blocking_ = false;
    bool displayLost_ = false;
};

} // namespace tarvik::face
