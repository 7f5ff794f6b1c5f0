#include "contracts/FaceUnderTest.h"
#include "support/ControlText.h"

#include "common/ChartReading.h"
#include "common/ClosingAnswer.h"
#include "common/FaceCaption.h"
#include "scripted/ScriptedDesktop.h"

#include <algorithm>
#include <optional>

namespace tarvik {
namespace {

class ScriptedBox : public ShownBox {
public:
    explicit ScriptedBox(const MsgBoxRequest& request) : request_(request) {
        caption = request.caption;
        icon = request.icon;
        lines.emplace_back();
        for (const char each : request.text) {
            if (each == '\r') {
                lines.emplace_back();
            } else if (each != '\n') {
                lines.back() += each;
            }
        }
    }

    void press(MsgBoxAnswer pressed) override { answer = pressed; }
    void close() override { answer = face::closingAnswer(request_.buttons); }

    MsgBoxAnswer answer = MsgBoxAnswer::Yes; ///< of somebody who leaves the box alone

private:
    const MsgBoxRequest& request_;
};

/// What is seen is what the desktop was told, what is done is done to the models.
class ScriptedFaceUnderTest : public FaceUnderTest {
public:
    Desktop& desktop() override { return desktop_; }
    void settle() override { desktop_.processEvents(); }
    bool waitUntil(const std::function<bool()>& condition) override {
        for (int i = 0; i < 100 && !condition(); ++i) {
            desktop_.advance(1);
        }
        return condition();
    }
    void runWith(const std::function<void()>& meanwhile) override {
        meanwhile();
        desktop_.run();
    }
    void atNextBox(std::function<void(ShownBox&)> act) override {
        desktop_.answerAny = [act = std::move(act)](const MsgBoxRequest& request) {
            ScriptedBox box(request);
            act(box);
            return box.answer;
        };
    }
    bool canClose(MsgBoxButtons) const override { return true; }
    void endSession() override { desktop_.endSession(); }
    void goToSleep() override { desktop_.pause(); }

    bool hasWindow(const Form& form) const override { return desktop_.form(form.name()) == &form; }
    bool isSeen(const Form& form) const override { return wasTold(form, " shown"); }
    bool isMinimised(const Form& form) const override { return wasTold(form, " minimised"); }
    void pressCloseBox(const Form& form) override {
        desktop_.form(form.name())->unload(UnloadMode::FormControlMenu);
    }
    void minimiseByHand(Form& form) override { form.setMinimised(true); }
    void restoreByHand(Form& form) override { form.setMinimised(false); }
    std::vector<std::string> tabOrder(const Form& form, int count) const override {
        std::vector<std::string> names;
        for (const Control* control : controlsInOrder(*form.layout())) {
            const ControlKind kind = control->kind();
            if (kind == ControlKind::TextBox || kind == ControlKind::CheckBox ||
                kind == ControlKind::ComboBox || kind == ControlKind::CommandButton) {
                names.push_back(control->name());
            }
        }
        names.resize(static_cast<std::size_t>(count));
        return names;
    }
    std::string focused(const Form& form) const override {
        const Control* there = desktop_.focused(form);
        return there == nullptr ? "" : there->name();
    }
    void pressMnemonic(Form& form, char letter) override {
        for (const Control* control : form.controls()) {
            if (control->kind() != ControlKind::Label) {
                continue;
            }
            const auto& label = static_cast<const Label&>(*control);
            if (label.mnemonic() == letter - 'a' + 'A') {
                desktop_.goTo(*label.labelled());
            }
        }
    }

    std::string marked(const Control& control) const override {
        switch (control.kind()) {
        case ControlKind::Frame:
            return face::markedCaption(shown(control), 0);
        case ControlKind::Label:
            return face::markedCaption(shown(control),
                                       static_cast<const Label&>(control).mnemonic());
        default:
            return face::markedCaption(shown(control),
                                       static_cast<const CommandButton&>(control).mnemonic());
        }
    }
    std::string shown(const Control& control) const override { return textOf(control); }
    bool isTicked(const Control& control) const override {
        return control.kind() == ControlKind::CheckBox
                   ? static_cast<const CheckBox&>(control).ticked()
                   : static_cast<const OptionButton&>(control).value();
    }
    bool isEnabled(const Control& control) const override { return control.enabled(); }
    bool isVisible(const Control& control) const override {
        const auto seen = seenControlsInOrder(*formOf(control).layout());
        return std::find(seen.begin(), seen.end(), &control) != seen.end();
    }
    std::string tip(const Control& control) const override { return control.toolTip(); }
    std::string spoken(const Control& control) const override {
        return face::spokenName(static_cast<const Chart&>(control));
    }
    void click(Control& control) override {
        switch (control.kind()) {
        case ControlKind::CheckBox: {
            auto& box = static_cast<CheckBox&>(control);
            box.setValue(box.ticked() ? 0 : 1);
            break;
        }
        case ControlKind::OptionButton:
            static_cast<OptionButton&>(control).setValue(true);
            break;
        default:
            static_cast<CommandButton&>(control).press();
        }
    }
    void press(Control& control, FaceKey key) override {
        desktop_.goTo(control);
        if (control.kind() == ControlKind::Chart && goesOn(static_cast<Chart&>(control), key)) {
            return;
        }
        Form& form = formOf(control);
        if (key == FaceKey::Tab) {
            goBehind(control);
        } else if (control.kind() == ControlKind::ListView && key == FaceKey::Enter) {
            static_cast<ListView&>(control).DblClick.raise();
        } else if (key == FaceKey::Enter && form.defaultButton() != nullptr) {
            form.defaultButton()->press();
        } else if (key == FaceKey::Escape && form.cancelButton() != nullptr) {
            form.cancelButton()->press();
        } else if (key == FaceKey::Escape && form.escapeCloses()) {
            form.unload(UnloadMode::FormControlMenu);
        }
    }
    void enter(TextBox& field, char text) override { field.setText(std::string(1, text)); }
    void choose(ComboBox& list, int entry) override { list.setListIndex(entry); }
    void goInto(TextBox& field) override {
        if (desktop_.takesInput()) {
            desktop_.goTo(field);
        }
    }
    void clickInto(TextBox& field) override { goInto(field); }
    void type(TextBox& field, char letter) override {
        if (!desktop_.takesInput()) {
            return;
        }
        const std::string window = field.list().name();
        field.KeyDown.raise();
        if (desktop_.form(window) != nullptr) {
            write(field, std::string(1, letter));
            field.KeyUp.raise();
        }
    }
    void typeOn(char letter) override {
        for (Form* form : desktop_.realisedForms()) {
            Control* const there = form->control(focused(*form));
            if (there != nullptr && there->kind() == ControlKind::TextBox) {
                type(static_cast<TextBox&>(*there), letter);
            }
        }
    }
    void paste(TextBox& field, const std::string& text) override {
        constexpr const char* blanks = " \t\r\n";
        const std::size_t first = text.find_first_not_of(blanks);
        write(field, text.substr(first, text.find_last_not_of(blanks) + 1 - first));
    }
    void selectByHand(TextBox&, int start, int length) override { byHand_ = {start, length}; }
    std::string selected(const TextBox& field) const override {
        return field.text().substr(static_cast<std::size_t>(field.selStart()),
                                   static_cast<std::size_t>(field.selLength()));
    }
    void tickLate(Timer& timer) override {
        desktop_.advance(3 * static_cast<std::uint64_t>(timer.interval()));
    }
    int lineCount(const TextBox& area) const override {
        return 1 + static_cast<int>(std::count(area.text().begin(), area.text().end(), '\n'));
    }
    bool isReadOnly(const TextBox& area) const override { return area.readOnly(); }
    int percent(const ProgressBar& bar) const override { return bar.value(); }

    int rowCount(const ListView& list) const override { return list.rowCount(); }
    std::string cell(const ListView& list, int row, int column) const override {
        return list.cell(row, column);
    }
    int selectedRow(const ListView& list) const override { return list.selectedRow(); }
    void selectRow(ListView& list, int row) override { list.setSelectedRow(row); }
    void clickRow(ListView& list, int row) override { list.setSelectedRow(row); }
    void doubleClickRow(ListView& list, int row) override {
        list.setSelectedRow(row);
        list.DblClick.raise();
    }
    void typeLetter(ListView&, char) override {}
    bool hasFlatHeaders(const ListView& list) const override { return !list.headersClickable(); }
    int columnWidth(const ListView& list, int column) const override {
        const auto place = static_cast<std::size_t>(column);
        const bool contents =
            list.columnFit() == ColumnFit::Contents && place < list.longestTexts().size();
        constexpr int margins = 2;
        return margins + std::max(textWidth(list, list.columns()[place].header),
                                  contents ? textWidth(list, list.longestTexts()[place]) : 0);
    }
    int textWidth(const ListView&, const std::string& text) const override {
        return static_cast<int>(text.size());
    }
    void repaint(ListView& list) override {
        for (int row = 0; row < std::min(seenRows, list.rowCount()); ++row) {
            list.cell(row, 0);
        }
    }

private:
    static constexpr int seenRows = 5;

    struct Selection {
        int start = 0;
        int length = 0;
    };

    /// In place of what is selected, by the user or else by the model.
    void write(TextBox& field, const std::string& letters) const {
        const Selection at = byHand_.value_or(Selection{field.selStart(), field.selLength()});
        std::string text = field.text();
        text.replace(static_cast<std::size_t>(at.start), static_cast<std::size_t>(at.length),
                     letters);
        field.setText(text);
    }

    /// The last that the form's window was told.
    bool wasTold(const Form& form, const std::string& what) const {
        const auto last = std::find_if(
            desktop_.visibilityTold.rbegin(), desktop_.visibilityTold.rend(),
            [&](const std::string& told) { return told.rfind(form.name() + " ", 0) == 0; });
        return last != desktop_.visibilityTold.rend() && *last == form.name() + what;
    }
    Form& formOf(const Control& control) const { return *desktop_.form(control.list().name()); }

    /// To what the Tab key leads to: the next one that can be used.
    void goBehind(const Control& control) {
        const Form& form = formOf(control);
        const std::vector<std::string> names =
            tabOrder(form, static_cast<int>(form.controls().size()));
        for (auto next = std::next(std::find(names.begin(), names.end(), control.name()));
             next != names.end(); ++next) {
            Control* const reached = form.control(*next);
            if (reached != nullptr && reached->enabled() && isVisible(*reached)) {
                desktop_.goTo(*reached);
                return;
            }
        }
    }

    static bool goesOn(Chart& chart, FaceKey key) {
        using face::ReadingStep;
        switch (key) {
        case FaceKey::Left:
            face::goOn(chart, ReadingStep::Back);
            return true;
        case FaceKey::Right:
            face::goOn(chart, ReadingStep::On);
            return true;
        case FaceKey::PageUp:
            face::goOn(chart, ReadingStep::PageBack);
            return true;
        case FaceKey::PageDown:
            face::goOn(chart, ReadingStep::PageOn);
            return true;
        case FaceKey::Home:
            face::goOn(chart, ReadingStep::First);
            return true;
        case FaceKey::End:
            face::goOn(chart, ReadingStep::Last);
            return true;
        default:
            return false;
        }
    }

    ScriptedDesktop desktop_;
    std::optional<Selection> byHand_;
};

} // namespace

std::unique_ptr<FaceUnderTest> faceUnderTest() {
    return std::make_unique<ScriptedFaceUnderTest>();
}

} // namespace tarvik
