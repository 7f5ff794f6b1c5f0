#pragma once

#include "controls/Form.h"
#include "ports/Desktop.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarvik {

/// A desktop played by a test: boxes are answered as the test announced, time passes when the test
/// says so.
class ScriptedDesktop : public Desktop {
public:
    /// A box that the test expects, with its answer and what happens while it is open.
    struct ExpectedBox {
        std::string text;
        MsgBoxButtons buttons = MsgBoxButtons::OkOnly;
        MsgBoxIcon icon = MsgBoxIcon::None;
        MsgBoxAnswer answer = MsgBoxAnswer::Ok;
        std::function<void()> meanwhile = {};
    };

    ScriptedDesktop();
    ~ScriptedDesktop() override;

    /// Told of everything that the test did not expect; throws it unless the test sets another.
    std::function<void(const std::string&)> fail;
    /// Answers every box instead of the announced ones, when it is set.
    std::function<MsgBoxAnswer(const MsgBoxRequest&)> answerAny;
    /// The caption that every box must have.
    std::string caption = "Velmars Tarvik.";
    /// The entry that a pop-up menu is left with; -1 closes it.
    int menuChoice = -1;
    /// Runs while a blocking call is under way.
    std::function<void()> whileBlocking;
    /// Runs when the program lets waiting events be handled.
    std::function<void()> whileProcessing;

    std::vector<MsgBoxRequest> boxesShown;
    /// Names of forms in the order in which they were brought to the front.
    std::vector<std::string> broughtToFront;
    /// "frmMain.cmdMonitor" for each change told by a control of a realised form.
    std::vector<std::string> changesTold;
    /// "frmMain shown", "hidden" or "minimised" for each time a realised form told of it.
    std::vector<std::string> visibilityTold;
    /// "frmMain.cmdMonitor" for each time the program moved the focus of a window.
    std::vector<std::string> focusMoved;
    /// "frmSysTray.mnuTray" for each menu that was opened.
    std::vector<std::string> menusOpened;
    int beeps = 0;
    int blockingCalls = 0;
    int eventRounds = 0;
    int ticksDropped = 0;
    bool hasQuit = false;

    /// Announces the next box; boxes come in the order in which they are announced.
    void expect(ExpectedBox box);
    /// Fails for every announced box that has not come.
    void verify();

    /// Lets that many milliseconds pass; timers fire in the order in which they are due.
    void advance(std::uint64_t milliseconds);

    /// The realised form of that name; null when there is none.
    Form* form(const std::string& name) const;
    /// Realised forms in the order in which they were realised.
    std::vector<Form*> realisedForms() const;
    /// True while neither a box nor a blocking call is under way.
    bool takesInput() const { return busy_ == 0; }

    /// The user goes to the control, as by a click into it or the tab key: text boxes that are left
    /// and reached tell of it. True when the focus was not there. What is hidden or cannot be used
    /// is not reached.
    bool goTo(Control& control);
    /// The control of the form that keys reach; null while another form has them, or none.
    const Control* focused(const Form& form) const;

    /// The machine goes to sleep: every realised form is told, whatever is under way.
    void pause();
    /// What the end of the user's session does to the forms.
    void endSession();

    void realise(Form& form) override;
    void withdraw(Form& form) override;
    MsgBoxAnswer messageBox(const MsgBoxRequest& request) override;
    void popUpMenu(Menu& menu, Form& owner) override;
    void beep() override { ++beeps; }
    void processEvents() override;
    void runBlocking(const std::function<void()>& call) override;
    void run() override;
    void quit() override { hasQuit = true; }

private:
    class Window;
    class Recorder;

    Window* windowOf(const ControlList& form) const;
    /// The form's window gets the keys, or has them no longer.
    void activate(const Form& form);
    void deactivate(const Form& form);
    bool isRealised(const Form* form) const;
    void forEachRealised(const std::function<void(Form& form)>& act) const;
    Recorder* nextDue(std::uint64_t until) const;

    std::vector<const Form*> active_; ///< are seen and have had the keys, the last one at the end
    std::vector<std::unique_ptr<Window>> windows_;
    std::deque<ExpectedBox> expected_;
    std::uint64_t now_ = 0;
    std::uint32_t lastHandle_ = 0; ///< of windows and controls
    int busy_ = 0;
    bool ending_ = false;
};

} // namespace tarvik
