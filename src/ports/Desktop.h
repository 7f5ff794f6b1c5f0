#pragma once

#include <functional>
#include <string>

namespace tarvik {

class Form;
class Menu;

enum class MsgBoxButtons { OkOnly, OkCancel, YesNoCancel, YesNo };
enum class MsgBoxIcon { None, Critical, Question, Exclamation, Information };
enum class MsgBoxAnswer { Ok, Cancel, Yes, No };

/// Caption of every message box.
constexpr const char* ApplicationTitle = "Velmars Tarvik.";

/// A modal question or notice. A single carriage return in the text separates lines.
struct MsgBoxRequest {
    std::string text;
    MsgBoxButtons buttons = MsgBoxButtons::OkOnly;
    MsgBoxIcon icon = MsgBoxIcon::None;
    std::string caption;
};

/// The windows of the user's desktop. Everything here runs on the user-interface thread.
///
/// While a message box is open or a blocking call runs, no form's timer fires; what would have
/// fired is dropped, not made up for.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Makes the form's window and its timers, as the model stands, and keeps both in step from
    /// then on: what the user does goes into the model, what the model tells is shown as soon as
    /// anybody can see it. The form must stay alive until `withdraw`.
    virtual void realise(Form& form) = 0;

    /// Ends what `realise` began. May be called from a handler of the form itself: the window goes
    /// away once that handler has returned.
    virtual void withdraw(Form& form) = 0;

    /// Shows the box and returns with the answer. Closing it, or Escape, answers Cancel, or No in a
    /// box of Yes and No, or Ok where that is all there is. When the session of the user is ending,
    /// nobody answers: the box is not shown and the answer is the one that closing it gives.
    virtual MsgBoxAnswer messageBox(const MsgBoxRequest& request) = 0;

    /// Opens the menu at the pointer, for that form, and returns when it is closed; a chosen entry
    /// has then run.
    virtual void popUpMenu(Menu& menu, Form& owner) = 0;

    virtual void beep() = 0;

    /// Handles what is waiting, input included, then returns.
    virtual void processEvents() = 0;

    /// Runs the call to its end on another thread while windows go on being painted under a wait
    /// cursor; neither input nor timers are handled meanwhile. The call must touch nothing but what
    /// it was given. What it throws is thrown here.
    virtual void runBlocking(const std::function<void()>& call) = 0;

    /// Handles events until no form is realised any more or `quit` was called.
    virtual void run() = 0;
    virtual void quit() = 0;
};

} // namespace tarvik
