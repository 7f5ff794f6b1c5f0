#include "monkey/Monkey.h"

#include "controls/ListView.h"

// What the user does with the windows.

namespace tarvik::monkey {

namespace {

bool takesInput(const Control& control) {
    if (!control.enabled()) {
        return false;
    }
    switch (control.kind()) {
    case ControlKind::TextBox:
        return !static_cast<const TextBox&>(control).readOnly();
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
    case ControlKind::CommandButton:
    case ControlKind::ComboBox:
    case ControlKind::ListView:
        return true;
    default:
        return false;
    }
}

} // namespace

void Monkey::workControl() {
    Form* const form = anyWindow();
    if (form == nullptr) {
        return;
    }
    std::vector<Control*> usable;
    // What a hidden frame holds is not seen, whatever it says of itself.
    for (Control* control : seenControlsInOrder(*form->layout())) {
        if (takesInput(*control)) {
            usable.push_back(control);
        }
    }
    if (!usable.empty()) {
        Control& control =
            *usable[static_cast<std::size_t>(upTo(static_cast<int>(usable.size()) - 1))];
        work(form->name() + "." + control.name(), control);
    }
}

void Monkey::work(const std::string& path, Control& control) {
    switch (control.kind()) {
    case ControlKind::TextBox:
        typeInto(path);
        break;
    case ControlKind::ComboBox:
        choose(path, static_cast<ComboBox&>(control));
        break;
    case ControlKind::ListView: {
        const int rows = static_cast<int>(static_cast<ListView&>(control).rowCount());
        if (rows > 0) {
            const int row = upTo(rows - 1);
            note("select row " + std::to_string(row) + " of " + path);
            driver_->select(path, row);
        }
        if (oneIn(3)) {
            note("open in " + path);
            driver_->open(path);
        }
        break;
    }
    default:
        note("click " + path);
        driver_->click(path);
    }
}

void Monkey::typeInto(const std::string& path) {
    static constexpr std::string_view likely = "0123456789\b\b\b";
    static constexpr std::string_view any = " .,-+eE$%'xZ!\"#&/()=?*";
    std::string keys;
    for (int left = upTo(12); left > 0; --left) {
        const std::string_view from = oneIn(5) ? any : likely;
        keys += from[static_cast<std::size_t>(upTo(static_cast<int>(from.size()) - 1))];
    }
    note("type \"" + keys + "\" into " + path);
    driver_->type(path, keys);
}

void Monkey::choose(const std::string& path, const ComboBox& combo) {
    if (combo.listCount() == 0) {
        return;
    }
    const std::string entry = combo.items()[static_cast<std::size_t>(upTo(combo.listCount() - 1))];
    note("choose \"" + entry + "\" in " + path);
    driver_->choose(path, entry);
}

void Monkey::clickSomewhere() {
    if (Form* const form = anyWindow()) {
        const int x = upTo(999);
        const int y = upTo(999);
        const int times = 1 + upTo(1);
        note("click at " + std::to_string(x) + ", " + std::to_string(y) + " of " + form->name() +
             ", " + std::to_string(times) + " times");
        driver_->clickAt(form->name(), x, y, times);
    }
}

void Monkey::pressKey() {
    if (Form* const form = anyWindow()) {
        const auto key = static_cast<scenarios::Key>(upTo(scenarios::keyCount - 1));
        note("key " + std::to_string(static_cast<int>(key)) + " in " + form->name());
        driver_->press(form->name(), key);
    }
}

void Monkey::closeWindow() {
    if (Form* const form = anyWindow()) {
        note("close " + form->name());
        driver_->closeWindow(form->name());
    }
}

void Monkey::resizeWindow() {
    if (Form* const form = anyWindow()) {
        const int width = upTo(1500);
        const int height = upTo(1000);
        note("resize " + form->name() + " to " + std::to_string(width) + " by " +
             std::to_string(height));
        driver_->resize(form->name(), width, height);
    }
}

void Monkey::workIcon() {
    if (oneIn(2)) {
        note("click the icon");
        driver_->clickTrayIcon();
        return;
    }
    const Menu& menu = world_->forms.frmSysTray.mnuPopUp;
    const int entry = upTo(static_cast<int>(menu.entries().size()) - 1);
    if (menu.entry(entry).enabled && !menu.entry(entry).isSeparator()) {
        note("entry " + std::to_string(entry) + " of the icon's menu");
        driver_->chooseTrayEntry(entry);
    }
}

void Monkey::endSession() {
    note("the user's session ends");
    world_->forms.frmMain.unload(UnloadMode::AppWindows);
}

} // namespace tarvik::monkey
