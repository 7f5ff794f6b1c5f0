#pragma once

#include "ports/Desktop.h"
#include "scripted/ScriptedPlatform.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace tarvik::scenarios {

/// The number of the mouse message that an icon in the notification area sends.
inline constexpr int leftButtonReleased = 514;
inline constexpr int rightButtonReleased = 517;

/// What a user sees of one control.
struct SeenControl {
    std::string name;
    std::string text;
    bool enabled = true;

    friend bool operator==(const SeenControl&, const SeenControl&) = default;
    /// How a failed comparison shows it.
    friend void PrintTo(const SeenControl& control, std::ostream* out) {
        *out << control.name << ": " << control.text << (control.enabled ? "" : " (disabled)");
    }
};

/// Keys by which a user moves and decides.
enum class Key {
    Tab,
    Enter,
    Escape,
    Space,
    Left,
    Right,
    Up,
    Down,
    PageUp,
    PageDown,
    Home,
    End,
    F4
};
inline constexpr int keyCount = 13;

/// A user in front of one face of the program. Controls are named "frmMain.cmdConnect". Line, clock
/// and files are played by the script on every face.
class Driver {
public:
    virtual ~Driver() = default;

    /// The machine; its desktop is the face's own.
    virtual ScriptedPlatform& machine() = 0;
    virtual Platform& platform() = 0;

    /// Presses a button, chooses an option, or ticks a box or takes the tick away.
    virtual void click(const std::string& control) = 0;
    /// Comes to a field by the keyboard and presses those keys, one after the other; '\b' is the
    /// backspace.
    virtual void type(const std::string& textBox, const std::string& keys) = 0;
    virtual void choose(const std::string& combo, const std::string& entry) = 0;
    /// Selects a row of a list, counted from 0.
    virtual void select(const std::string& list, int row) = 0;
    /// Clicks twice on the row of a list that is selected.
    virtual void open(const std::string& list) = 0;
    /// The caption or text of a control; the chosen entry of a list.
    virtual std::string read(const std::string& control) = 0;
    virtual bool visible(const std::string& form) = 0;
    virtual bool minimised(const std::string& form) = 0;
    /// The close box of the window.
    virtual void closeWindow(const std::string& form) = 0;
    /// The left button, released over the icon in the notification area.
    virtual void clickTrayIcon() = 0;
    /// The right button over the icon, then the entry of that number, counted with the separators.
    virtual void chooseTrayEntry(int entry) = 0;

    /// Announces the next box and what the user answers. Lines are separated by carriage returns.
    virtual void answerNext(const std::string& text, MsgBoxButtons buttons,
                            MsgBoxAnswer answer) = 0;
    /// Everything that went wrong with boxes since the last call; empty when nothing did.
    virtual std::string boxTrouble() = 0;

    /// Chooses a button of a box, counted from 0 to below the number given.
    using Chooser = std::function<int(const std::string& text, int buttons)>;
    /// From now on every box is answered so.
    virtual void answerEvery(Chooser choose) = 0;

    /// Presses a key in the window, wherever its focus is.
    virtual void press(const std::string& form, Key key) = 0;
    /// Clicks somewhere in the window, in thousandths of its width and height; so often in a row.
    virtual void clickAt(const std::string& form, int x, int y, int times) = 0;
    /// Gives the window a size, in pixels.
    virtual void resize(const std::string& form, int width, int height) = 0;
    /// Lets the face handle everything that waits.
    virtual void settle() = 0;

    /// Lets time pass until the condition holds; false when it does not within a fair while.
    virtual bool waitUntil(const std::function<bool()>& condition) = 0;

    /// Everything that a person would find wrong with the windows: what grew, shrank or was cut
    /// since the last call, and what does not look as it is. Empty when nothing, or when the face
    /// has no eyes.
    virtual std::string complaints() { return {}; }

    /// What is seen of a form, in the order of its layout.
    virtual std::vector<SeenControl> controls(const std::string& form) = 0;
};

/// The driver that the stories run on in this program.
std::unique_ptr<Driver> makeDriver();

/// What should be seen of a form, as its model tells.
std::vector<SeenControl> modelControls(const Form& form);

/// What is seen of a box or an option with that caption.
inline std::string boxText(bool ticked, const std::string& caption) {
    return (ticked ? "[x] " : "[ ] ") + caption;
}

/// What is seen of a progress bar.
inline std::string progressText(int percent) {
    return std::to_string(percent) + " %";
}

/// The text that a control shows, as its model tells.
std::string modelText(const Control& control);

} // namespace tarvik::scenarios
