#pragma once

#include "controls/Chart.h"
#include "controls/Form.h"
#include "controls/ListView.h"
#include "ports/Desktop.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvik {

enum class FaceKey { Enter, Escape, Tab, Delete, Left, Right, PageUp, PageDown, Home, End, Space };

/// A message box that is open.
class ShownBox {
public:
    virtual ~ShownBox() = default;

    std::vector<std::string> lines;
    std::string caption;
    std::optional<MsgBoxIcon> icon; ///< nothing where it cannot be told

    virtual void press(MsgBoxAnswer answer) = 0;
    /// As the close box of its window does.
    virtual void close() = 0;
};

/// A user in front of the windows of one desktop: what he does, and what he sees.
class FaceUnderTest {
public:
    virtual ~FaceUnderTest() = default;

    virtual Desktop& desktop() = 0;
    /// Lets the desktop do what waits.
    virtual void settle() = 0;
    /// Lets time pass until the condition holds; false when it does not within a fair while.
    virtual bool waitUntil(const std::function<bool()>& condition) = 0;
    /// Runs the desktop and does something meanwhile.
    virtual void runWith(const std::function<void()>& meanwhile) = 0;
    /// Does something as soon as the next box is open, which it must bring to an end; until the
    /// face ends.
    virtual void atNextBox(std::function<void(ShownBox&)> act) = 0;
    /// Whether a box of these buttons has a close box.
    virtual bool canClose(MsgBoxButtons buttons) const = 0;
    /// The user's session ends.
    virtual void endSession() = 0;
    /// The machine is about to sleep.
    virtual void goToSleep() = 0;

    // Windows.
    virtual bool hasWindow(const Form& form) const = 0;
    virtual bool isSeen(const Form& form) const = 0;
    virtual bool isMinimised(const Form& form) const = 0;
    virtual void pressCloseBox(const Form& form) = 0;
    /// As the buttons of its window do.
    virtual void minimiseByHand(Form& form) = 0;
    virtual void restoreByHand(Form& form) = 0;
    /// The first inputs in the order in which the Tab key leads through them.
    virtual std::vector<std::string> tabOrder(const Form& form, int count) const = 0;
    /// The control of the form that keys reach; empty for none.
    virtual std::string focused(const Form& form) const = 0;
    /// The key of a small letter is pressed with Alt.
    virtual void pressMnemonic(Form& form, char letter) = 0;

    // Controls.
    /// The caption with the mark of its mnemonic, as the toolkit has it.
    virtual std::string marked(const Control& control) const = 0;
    /// The text that is read; the chosen entry of a list; of a box or an option its caption.
    virtual std::string shown(const Control& control) const = 0;
    virtual bool isTicked(const Control& control) const = 0;
    virtual bool isEnabled(const Control& control) const = 0;
    virtual bool isVisible(const Control& control) const = 0;
    virtual std::string tip(const Control& control) const = 0;
    /// What a screen reader says.
    virtual std::string spoken(const Control& control) const = 0;
    virtual void click(Control& control) = 0;
    /// A key goes down in the control and comes up.
    virtual void press(Control& control, FaceKey key) = 0;
    /// Puts another text in place of the one in the field, at once.
    virtual void enter(TextBox& field, char text) = 0;
    virtual void choose(ComboBox& list, int entry) = 0;

    // Fields to write in.
    /// The user comes to the field. While a box is open no focus comes there: the field is told all
    /// the same.
    virtual void goInto(TextBox& field) = 0;
    /// The user clicks on the beginning of its text.
    virtual void clickInto(TextBox& field) = 0;
    /// The key of a small letter goes down, writes it, and comes up.
    virtual void type(TextBox& field, char letter) = 0;
    /// The key of a small letter goes down and comes up wherever the keys are now.
    virtual void typeOn(char letter) = 0;
    /// Pastes a text of the clipboard into the field that has the focus, by the keyboard.
    virtual void paste(TextBox& field, const std::string& text) = 0;
    /// The user selects so many letters; with none the next one is written there.
    virtual void selectByHand(TextBox& field, int start, int length) = 0;
    virtual std::string selected(const TextBox& field) const = 0;

    // Other controls.
    /// A tick that was on its way when the timer was stopped or a box came, or several.
    virtual void tickLate(Timer& timer) = 0;
    virtual int lineCount(const TextBox& area) const = 0;
    virtual bool isReadOnly(const TextBox& area) const = 0;
    virtual int percent(const ProgressBar& bar) const = 0;

    // Lists.
    virtual int rowCount(const ListView& list) const = 0;
    virtual std::string cell(const ListView& list, int row, int column) const = 0;
    /// -1 for none.
    virtual int selectedRow(const ListView& list) const = 0;
    virtual void selectRow(ListView& list, int row) = 0;
    virtual void clickRow(ListView& list, int row) = 0;
    virtual void doubleClickRow(ListView& list, int row) = 0;
    virtual void typeLetter(ListView& list, char letter) = 0;
    virtual bool hasFlatHeaders(const ListView& list) const = 0;
    /// In any measure.
    virtual int columnWidth(const ListView& list, int column) const = 0;
    virtual int textWidth(const ListView& list, const std::string& text) const = 0;
    /// Shows everything anew that is seen of it.
    virtual void repaint(ListView& list) = 0;
};

/// That of the platform that this program of tests is for.
std::unique_ptr<FaceUnderTest> faceUnderTest();

} // namespace tarvik
