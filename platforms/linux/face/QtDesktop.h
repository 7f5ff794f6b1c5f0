#pragma once

#include "common/FaceContext.h"
#include "ports/Desktop.h"

#include <QEventLoop>
#include <QObject>

#include <memory>
#include <vector>

class QMessageBox;

namespace tarvik::face {

class FormWindow;

/// The windows of a Qt desktop. A QApplication must live as long as this.
///
/// The user's session ends by a request of the session manager or by the signals that ask a process
/// to end: every form is then unloaded as at the end of the session, open boxes close, and `run`
/// returns.
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

    /// What happens when the user's session ends; may be called again.
    void endSession();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FormWindow* activeWindow() const;

    FaceContext context_;
    std::vector<FormWindow*> windows_; ///< in the order in which they were realised
    std::vector<QMessageBox*> boxes_;  ///< open ones
    QEventLoop loop_;
    bool blocking_ = false;
};

} // namespace tarvik::face
