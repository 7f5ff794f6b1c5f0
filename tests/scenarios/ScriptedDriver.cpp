#include "Driver.h"
#include "ExpectedBoxes.h"

#include "controls/ListView.h"

namespace tarvik::scenarios {

namespace {

std::vector<MsgBoxAnswer> answersOf(MsgBoxButtons buttons) {
    switch (buttons) {
    case MsgBoxButtons::OkCancel:
        return {MsgBoxAnswer::Ok, MsgBoxAnswer::Cancel};
    case MsgBoxButtons::YesNo:
        return {MsgBoxAnswer::Yes, MsgBoxAnswer::No};
    default:
        return {MsgBoxAnswer::Ok};
    }
}

class ScriptedDriver : public Driver {
public:
    ScriptedDriver() {
        machine_.desktop.fail = [this](const std::string& what) { boxes_.note(what); };
    }

    ScriptedPlatform& machine() override { return machine_; }
    Platform& platform() override { return machine_.platform; }

    void click(const std::string& name) override {
        Control& clicked = control(name);
        machine_.desktop.goTo(clicked);
        if (clicked.kind() == ControlKind::CheckBox) {
            auto& box = static_cast<CheckBox&>(clicked);
            if (!box.readOnly()) {
                box.setValue(box.ticked() ? 0 : 1);
            }
        } else if (clicked.kind() == ControlKind::OptionButton) {
            static_cast<OptionButton&>(clicked).setValue(true);
        } else {
            static_cast<CommandButton&>(clicked).press();
        }
    }

    void type(const std::string& name, const std::string& keys) override {
        auto& box = static_cast<TextBox&>(control(name));
        if (!machine_.desktop.goTo(box)) {
            box.GotFocus.raise(); // every driver comes to the box anew
        }
        bool selected = box.selLength() == static_cast<int>(box.text().size());
        for (const char key : keys) {
            box.KeyDown.raise();
            std::string text = std::exchange(selected, false) ? "" : box.text();
            if (key != '\b') {
                text += key;
            } else if (!text.empty()) {
                text.pop_back();
            }
            box.setText(text);
            box.KeyUp.raise();
        }
    }

    void choose(const std::string& name, const std::string& entry) override {
        auto& combo = static_cast<ComboBox&>(control(name));
        machine_.desktop.goTo(combo);
        for (int i = 0; i < combo.listCount(); ++i) {
            if (combo.items()[static_cast<std::size_t>(i)] == entry) {
                combo.setListIndex(i);
            }
        }
    }

    void select(const std::string& name, int row) override {
        auto& list = static_cast<ListView&>(control(name));
        machine_.desktop.goTo(list);
        list.setSelectedRow(row);
    }

    void open(const std::string& name) override {
        auto& list = static_cast<ListView&>(control(name));
        machine_.desktop.goTo(list);
        list.DblClick.raise();
    }

    std::string read(const std::string& name) override { return modelText(control(name)); }

    bool visible(const std::string& name) override {
        const Form* form = machine_.desktop.form(name);
        return form != nullptr && form->visible();
    }

    bool minimised(const std::string& name) override {
        return machine_.desktop.form(name)->minimised();
    }

    void closeWindow(const std::string& name) override {
        machine_.desktop.form(name)->unload(UnloadMode::FormControlMenu);
    }

    void clickTrayIcon() override {
        static_cast<Picture&>(control("frmSysTray.picSysTrayHook"))
            .MouseMove.raise(leftButtonReleased);
    }

    void chooseTrayEntry(int entry) override {
        machine_.desktop.menuChoice = entry;
        static_cast<Picture&>(control("frmSysTray.picSysTrayHook"))
            .MouseMove.raise(rightButtonReleased);
        machine_.desktop.menuChoice = -1;
    }

    void answerNext(const std::string& text, MsgBoxButtons buttons, MsgBoxAnswer answer) override {
        // The icon is asserted by the unit tests; here only what every face can tell.
        boxes_.announce(text, buttons, answer);
        machine_.desktop.answerAny = [this](const MsgBoxRequest& request) {
            return boxes_.answerTo(request.text, request.buttons).value_or(MsgBoxAnswer::Cancel);
        };
    }

    void answerEvery(Chooser choose) override {
        machine_.desktop.answerAny = [choose](const MsgBoxRequest& request) {
            const std::vector<MsgBoxAnswer> answers = answersOf(request.buttons);
            const int chosen = choose(request.text, static_cast<int>(answers.size()));
            return answers.at(static_cast<std::size_t>(chosen));
        };
    }

    void press(const std::string& name, Key key) override {
        Form& form = *machine_.desktop.form(name);
        CommandButton* const button = key == Key::Enter    ? form.defaultButton()
                                      : key == Key::Escape ? form.cancelButton()
                                                           : nullptr;
        if (button != nullptr && button->enabled() && button->visible()) {
            button->press();
        } else if (key == Key::Escape && form.escapeCloses()) {
            form.unload(UnloadMode::FormControlMenu);
        }
    }

    void clickAt(const std::string& name, int x, int, int times) override {
        const auto& all = machine_.desktop.form(name)->controls();
        Control& hit = *all[static_cast<std::size_t>(x) * all.size() / 1000];
        const bool takesClicks = hit.kind() == ControlKind::CheckBox ||
                                 hit.kind() == ControlKind::OptionButton ||
                                 hit.kind() == ControlKind::CommandButton;
        if (!takesClicks) {
            return;
        }
        const std::string path = name + "." + hit.name();
        for (int i = 0; i < times && visible(name); ++i) { // a click may have closed the window
            if (hit.enabled() && hit.visible()) {
                click(path);
            }
        }
    }

    void resize(const std::string&, int, int) override {} // nothing here has a size

    void settle() override { machine_.desktop.advance(0); }

    std::string boxTrouble() override { return boxes_.trouble(); }

    bool waitUntil(const std::function<bool()>& condition) override {
        constexpr int steps = 600;
        for (int i = 0; i < steps && !condition(); ++i) {
            machine_.desktop.advance(100);
        }
        return condition();
    }

    std::vector<SeenControl> controls(const std::string& name) override {
        return modelControls(*machine_.desktop.form(name));
    }

private:
    Control& control(const std::string& name) {
        const std::size_t dot = name.find('.');
        return *machine_.desktop.form(name.substr(0, dot))->control(name.substr(dot + 1));
    }

    ScriptedPlatform machine_;
    ExpectedBoxes boxes_;
};

} // namespace

std::unique_ptr<Driver> makeDriver() {
    return std::make_unique<ScriptedDriver>();
}

} // namespace tarvik::scenarios
