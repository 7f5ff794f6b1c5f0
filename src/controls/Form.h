#pragma once

#include "controls/ControlList.h"
#include "controls/Controls.h"
#include "controls/Layout.h"

#include <string>
#include <vector>

namespace tarvik {

class Desktop;

/// Why a form is being unloaded.
enum class UnloadMode {
    FormControlMenu = 0, ///< the user used the close box or the system menu
    FormCode = 1,        ///< the program asked for it
    AppWindows = 2,      ///< the user's session is ending
    AppTaskManager = 3,  ///< the task list ends the program
    FormOwner = 4,       ///< the window that owns it closes
};

/// Whoever shows a form.
class FormView {
public:
    virtual ~FormView() = default;
    /// The form was shown or hidden, minimised or restored: ask it.
    virtual void refreshVisibility() = 0;
    /// Puts the window in front of others and gives it the focus, unless the form is a quiet one.
    virtual void bringToFront() = 0;
    /// Gives the focus of the window to a control that can take it.
    virtual void focusOn(Control& control) = 0;
    /// The number by which the desktop knows the window; 0 where there is none.
    virtual std::uint32_t handle() const { return 0; }
};

/// A window as the program knows it: its controls by name, their layout, and whether it is loaded
/// and seen. Forms derive from it and declare their controls as members.
class Form : public ControlList {
public:
    /// Raised when the form is loaded, before its window is made.
    Event<> Initialize;
    /// Raised before the form is unloaded; a handler that sets the flag keeps it loaded.
    Event<bool&, UnloadMode> QueryUnload;
    /// Raised when the form is being unloaded.
    Event<> Unload;
    /// Raised when the machine is about to sleep or to be shut down: it may not come back to this
    /// process.
    Event<> Pause;

    const std::string& caption() const { return caption_; }
    /// Null for a form that never shows a window of its own.
    const LayoutNode* layout() const { return layout_.children.empty() ? nullptr : &layout_; }
    /// The button that Enter presses, the button that Escape presses; null for none.
    CommandButton* defaultButton() const { return defaultButton_; }
    CommandButton* cancelButton() const { return cancelButton_; }
    /// Escape does what the close box does, in a form whose cancel button it does not press.
    bool escapeCloses() const { return escapeCloses_; }
    /// A form that is filled in and confirmed: there is nothing in it to be seen larger.
    bool isDialog() const { return defaultButton_ != nullptr; }
    /// The control that has the focus when the window opens; null for the first in tab order.
    Control* initialFocus() const { return initialFocus_; }
    /// Its window comes in front of the others of the program without taking the focus: what the
    /// user is typing goes on where it was.
    bool isQuiet() const { return quiet_; }

    bool loaded() const { return loaded_; }
    /// Loads the form, hidden; does nothing when it is loaded.
    void load();
    /// Asks `QueryUnload`, raises `Unload`, then takes the window away. Does nothing when the form
    /// is not loaded or is being unloaded already. True when it is unloaded now.
    bool unload(UnloadMode mode = UnloadMode::FormCode);

    bool visible() const { return visible_; }
    /// Shows (loading it first) or hides the form; showing restores a minimised window.
    void setVisible(bool visible);
    bool minimised() const { return minimised_; }
    void setMinimised(bool minimised);
    void bringToFront();
    /// Moves the focus to the control, if its window has it or gets it. Boxes tell of it as when
    /// the user goes there. What is hidden, cannot be used or takes no keys leaves it where it is.
    void focusOn(Control& control);

    /// The number by which the desktop knows the window; 0 while there is none.
    std::uint32_t hWnd() const { return view_ == nullptr ? 0 : view_->handle(); }

    void attach(FormView* view) { view_ = view; }
    /// Where its window is to be made; without a desktop it is loaded without a window.
    void setDesktop(Desktop& desktop) { desktop_ = &desktop; }

protected:
    Form(const char* name, const char* caption);

    void setLayout(LayoutNode root);
    void setDefaultButton(CommandButton& button) { defaultButton_ = &button; }
    void setCancelButton(CommandButton& button) { cancelButton_ = &button; }
    void setEscapeCloses() { escapeCloses_ = true; }
    void setInitialFocus(Control& control) { initialFocus_ = &control; }
    void setQuiet() { quiet_ = true; }

private:
    std::string caption_;
    LayoutNode layout_;
    CommandButton* defaultButton_ = nullptr;
    CommandButton* cancelButton_ = nullptr;
    bool escapeCloses_ = false;
    Control* initialFocus_ = nullptr;
    bool quiet_ = false;
    bool loaded_ = false;
    bool unloading_ = false;
    bool visible_ = false;
    bool minimised_ = false;
    FormView* view_ = nullptr;
    Desktop* desktop_ = nullptr;
};

} // namespace tarvik
