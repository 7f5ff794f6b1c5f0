#include "scripted/ScriptedDesktop.h"

#include "common/ClosingAnswer.h"

#include <algorithm>
#include <stdexcept>

namespace tarvik {

namespace {

class Busy {
public:
    explicit Busy(int& depth) : depth_(depth) { ++depth_; }
    ~Busy() { --depth_; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    int& depth_;
};

const char* nameOf(MsgBoxButtons buttons) {
    constexpr const char* names[] = {"OK", "OK/Cancel", "Yes/No/Cancel", "Yes/No"};
    return names[static_cast<int>(buttons)];
}

const char* nameOf(MsgBoxIcon icon) {
    constexpr const char* names[] = {"none", "critical", "question", "exclamation", "information"};
    return names[static_cast<int>(icon)];
}

std::string described(const std::string& text, MsgBoxButtons buttons, MsgBoxIcon icon) {
    std::string lines = text;
    std::replace(lines.begin(), lines.end(), '\r', '\n');
    return "\"" + lines + "\" [" + nameOf(buttons) + ", icon " + nameOf(icon) + "]";
}

} // namespace

/// Shows nothing, notes what it is told, and counts a timer's time.
class ScriptedDesktop::Recorder : public ControlView {
public:
    Recorder(ScriptedDesktop& desktop, Control& control)
        : desktop_(desktop), control_(control), handle_(++desktop.lastHandle_) {
        control_.attach(this);
        restart();
    }
    ~Recorder() override { control_.attach(nullptr); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    void refresh(Property changed) override {
        desktop_.changesTold.push_back(control_.list().name() + "." + control_.name());
        if (changed == Property::Interval || changed == Property::Enabled) {
            restart();
        }
    }

    std::uint32_t handle() const override { return handle_; }

    Timer* timer() const {
        return control_.kind() == ControlKind::Timer ? static_cast<Timer*>(&control_) : nullptr;
    }
    bool runs() const {
        return timer() != nullptr && timer()->enabled() && timer()->interval() > 0;
    }
    std::uint64_t due() const { return due_; }
    void restart() {
        if (runs()) {
            due_ = desktop_.now_ + static_cast<std::uint64_t>(timer()->interval());
        }
    }

private:
    ScriptedDesktop& desktop_;
    Control& control_;
    std::uint32_t handle_;
    std::uint64_t due_ = 0;
};

class ScriptedDesktop::Window : public FormView {
public:
    Window(ScriptedDesktop& desktop, Form& shownForm)
        : form(shownForm), desktop_(desktop), handle_(++desktop.lastHandle_) {
        form.attach(this);
        for (Control* control : form.controls()) {
            views.push_back(std::make_unique<Recorder>(desktop, *control));
        }
    }
    ~Window() override {
        form.attach(nullptr);
        desktop_.deactivate(form);
    }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    void refreshVisibility() override {
        desktop_.visibilityTold.push_back(form.name() + (form.minimised() ? " minimised"
                                                         : form.visible() ? " shown"
                                                                          : " hidden"));
        if (!form.visible() || form.minimised()) {
            desktop_.deactivate(form);
        } else if (!form.isQuiet()) {
            desktop_.activate(form);
        }
    }
    void bringToFront() override {
        desktop_.broughtToFront.push_back(form.name());
        if (!form.isQuiet() && form.visible() && !form.minimised()) {
            desktop_.activate(form);
        }
    }
    void focusOn(Control& control) override {
        desktop_.focusMoved.push_back(form.name() + "." + control.name());
        if (desktop_.focused(form) != nullptr) {
            desktop_.goTo(control);
        } else {
            setFocus(control);
        }
    }
    std::uint32_t handle() const override { return handle_; }

    /// Who has the focus while the window has it; null for none.
    Control* focus() const {
        if (focus_ != nullptr || form.initialFocus() != nullptr) {
            return focus_ != nullptr ? focus_ : form.initialFocus();
        }
        const std::vector<Control*> order =
            form.layout() == nullptr ? std::vector<Control*>() : controlsInOrder(*form.layout());
        const auto first = std::find_if(order.begin(), order.end(), [](const Control* control) {
            return takesKeys(control->kind());
        });
        return first == order.end() ? nullptr : *first;
    }
    void setFocus(Control& control) { focus_ = &control; }

    Form& form;
    std::vector<std::unique_ptr<Recorder>> views;
    bool tellsLeaving = true; ///< not while that is being told

private:
    ScriptedDesktop& desktop_;
    std::uint32_t handle_;
    Control* focus_ = nullptr; ///< null for the one that has it first
};

ScriptedDesktop::ScriptedDesktop()
    : fail([](const std::string& what) { throw std::logic_error(what); }) {}
ScriptedDesktop::~ScriptedDesktop() = default;

void ScriptedDesktop::expect(ExpectedBox box) {
    expected_.push_back(std::move(box));
}

void ScriptedDesktop::verify() {
    for (const ExpectedBox& box : expected_) {
        fail("This box did not come: " + described(box.text, box.buttons, box.icon));
    }
    expected_.clear();
}

Form* ScriptedDesktop::form(const std::string& name) const {
    const auto found = std::find_if(windows_.begin(), windows_.end(), [&](const auto& window) {
        return window->form.name() == name;
    });
    return found == windows_.end() ? nullptr : &(*found)->form;
}

std::vector<Form*> ScriptedDesktop::realisedForms() const {
    std::vector<Form*> result;
    for (const auto& window : windows_) {
        result.push_back(&window->form);
    }
    return result;
}

void ScriptedDesktop::realise(Form& form) {
    if (!ending_) {
        windows_.push_back(std::make_unique<Window>(*this, form));
    }
}

void ScriptedDesktop::withdraw(Form& form) {
    std::erase_if(windows_, [&](const auto& window) { return &window->form == &form; });
}

MsgBoxAnswer ScriptedDesktop::messageBox(const MsgBoxRequest& request) {
    boxesShown.push_back(request);
    if (ending_) {
        return face::closingAnswer(request.buttons);
    }
    if (answerAny) {
        const Busy busy(busy_);
        const MsgBoxAnswer answer = answerAny(request);
        // The end of the session closes the box, whatever the user was about to press.
        return ending_ ? face::closingAnswer(request.buttons) : answer;
    }
    const std::string seen = described(request.text, request.buttons, request.icon);
    if (expected_.empty()) {
        fail("Unexpected box: " + seen);
        return face::closingAnswer(request.buttons);
    }
    const ExpectedBox box = expected_.front();
    expected_.pop_front();
    const std::string wanted = described(box.text, box.buttons, box.icon);
    if (request.text != box.text || wanted != seen) {
        fail("Expected the box " + wanted + "\nbut this came: " + seen);
    }
    if (request.caption != caption) {
        fail("The box's caption is \"" + request.caption + "\".");
    }
    const Busy busy(busy_);
    if (box.meanwhile) {
        box.meanwhile();
    }
    return ending_ ? face::closingAnswer(request.buttons) : box.answer;
}

void ScriptedDesktop::popUpMenu(Menu& menu, Form& owner) {
    menusOpened.push_back(owner.name() + "." + menu.name());
    if (menuChoice >= 0) {
        menu.choose(menuChoice);
    }
}

void ScriptedDesktop::processEvents() {
    ++eventRounds;
    if (whileProcessing) {
        whileProcessing();
    }
}

void ScriptedDesktop::runBlocking(const std::function<void()>& call) {
    const Busy busy(busy_);
    ++blockingCalls;
    if (whileBlocking) {
        whileBlocking();
    }
    call();
}

void ScriptedDesktop::run() {
    if (!windows_.empty() && !hasQuit) {
        fail("The program would run on: the test must end it first.");
    }
}

void ScriptedDesktop::pause() {
    forEachRealised([](Form& form) { form.Pause.raise(); });
}

void ScriptedDesktop::endSession() {
    ending_ = true;
    forEachRealised([](Form& form) { form.unload(UnloadMode::AppWindows); });
    hasQuit = true;
}

void ScriptedDesktop::forEachRealised(const std::function<void(Form& form)>& act) const {
    for (Form* realised : realisedForms()) {
        // What one form does may have withdrawn the next, which may be gone then.
        if (isRealised(realised)) {
            act(*realised);
        }
    }
}

ScriptedDesktop::Window* ScriptedDesktop::windowOf(const ControlList& form) const {
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [&](const auto& window) { return &window->form == &form; });
    return found == windows_.end() ? nullptr : found->get();
}

void ScriptedDesktop::activate(const Form& form) {
    deactivate(form);
    active_.push_back(&form);
}

void ScriptedDesktop::deactivate(const Form& form) {
    std::erase(active_, &form);
}

const Control* ScriptedDesktop::focused(const Form& form) const {
    const Window* const window = windowOf(form);
    const bool has = window != nullptr && !active_.empty() && active_.back() == &form;
    return has ? window->focus() : nullptr;
}

bool ScriptedDesktop::goTo(Control& control) {
    Window* const window = windowOf(control.list());
    if (window == nullptr || !control.enabled() || !control.visible()) {
        return false;
    }
    activate(window->form);
    Control* const left = window->focus();
    if (left == &control) {
        return false;
    }
    window->setFocus(control);
    const auto isBox = [](const Control* each) {
        return each != nullptr && each->kind() == ControlKind::TextBox;
    };
    if (isBox(left) && left->enabled() && left->visible() && window->tellsLeaving && takesInput()) {
        window->tellsLeaving = false;
        static_cast<TextBox*>(left)->LostFocus.raise();
        if (windowOf(control.list()) != window) {
            return true; // the handler has ended the form
        }
        window->tellsLeaving = true;
    }
    // It may also have moved the focus on, or disabled the control.
    if (isBox(&control) && window->focus() == &control && control.enabled() && takesInput()) {
        static_cast<TextBox&>(control).GotFocus.raise();
    }
    return true;
}

bool ScriptedDesktop::isRealised(const Form* form) const {
    return std::any_of(windows_.begin(), windows_.end(),
                       [&](const auto& window) { return &window->form == form; });
}

void ScriptedDesktop::advance(std::uint64_t milliseconds) {
    const std::uint64_t until = now_ + milliseconds;
    while (Recorder* next = nextDue(until)) {
        now_ = std::max(now_, next->due());
        next->restart();
        if (takesInput()) {
            next->timer()->fire();
        } else {
            ++ticksDropped;
        }
    }
    // A handler may have let more time pass by itself.
    now_ = std::max(now_, until);
}

ScriptedDesktop::Recorder* ScriptedDesktop::nextDue(std::uint64_t until) const {
    Recorder* next = nullptr;
    for (const auto& window : windows_) {
        for (const auto& view : window->views) {
            if (view->runs() && view->due() <= until &&
                (next == nullptr || view->due() < next->due())) {
                next = view.get();
            }
        }
    }
    return next;
}

} // namespace tarvik
