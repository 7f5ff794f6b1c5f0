#pragma once

#include "controls/Form.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/Handle.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace tarvik::face {

/// The window of one form, or, for a form without a layout, only its timers and what receives the
/// mouse messages of an icon. What stands in the window is made when it is first to be seen, and
/// follows its controls while it is seen.
class FormWindow final : public QWidget, public FormView {
public:
    FormWindow(Form& form, FaceContext& context);
    ~FormWindow() override;

    void refreshVisibility() override;
    void bringToFront() override;
    void focusOn(Control& control) override;
    std::uint32_t handle() const override { return handle_.number(); }

    Form& form() const { return form_; }

    /// Shows, hides or minimises the window at once if the form has asked for it and it is put off.
    void applyVisibility();

    /// Ends all connection with the form and hides the window.
    void detach();
    /// Ends all connection with the form and leaves the window as it is.
    void disconnectForm();

    /// The control that is known by that number; null when it is none of this form.
    Control* controlOf(std::uint32_t handle) const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// Of what stands in the window: the focus comes to one of them.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// The desktop gives the keys to that window; null for none of the program's.
    void onFocusMoved(const QWindow* focused);
    void makeControl(Control& control);
    void takeBackWordToMinimise();
    /// What stands in the window; does nothing when it is made.
    void makeContents();
    /// Its controls rest, or wake.
    void followSight(bool seen);
    void connectLabels();
    void orderTabs();
    ControlWidget* widgetOf(const Control* control) const;

    // Where the keyboard is: see FormWindowFocus.cpp.
    void moveFocus();
    bool onArrival(QWidget& widget, bool byUser);

    // What collapses: see FormWindowRoom.cpp.
    void watchRoom();
    void changeRoom(QWidget& changed, const std::function<void()>& change);
    void giveRoom(const LayoutNode& node, bool collapsed);

    Form& form_;
    FaceContext& context_;
    ReturningFocus<QWidget*> focus_;
    std::vector<std::unique_ptr<ControlWidget>> widgets_;
    std::vector<const LayoutNode*> collapsed_; ///< what takes no room now
    ControlWidget* focusHolder_ = nullptr;     ///< came to have it last
    Control* focusWanted_ = nullptr;           ///< gets it as soon as the window is seen
    bool tellsLeaving_ = true;                 ///< not while that is being told
    Handle handle_;
    bool detached_ = false;
    bool contentsMade_ = false;
    bool changePending_ = false;
    bool frontWanted_ = false;
    bool wordToMinimise_ = false; ///< may still stand at the window manager
};

} // namespace tarvik::face
