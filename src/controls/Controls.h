#pragma once

#include "controls/Colour.h"
#include "controls/Control.h"
#include "controls/Drawing.h"
#include "controls/Event.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tarvik {

enum class TextAlignment { Left, Right, Centre };

/// Captions that a control has at other times, up to two; null where there are fewer.
using OtherCaptions = std::array<const char*, 2>;

/// A line of text. One that names an input beside it passes its mnemonic on to that input.
class Label : public Control {
public:
    struct Setup {
        const char* caption = "";
        const char* toolTip = "";
        TextAlignment alignment = TextAlignment::Left;
        char mnemonic = 0;
        Control* labelled = nullptr;
        bool wrapped = false;
        OtherCaptions otherCaptions = {};
    };

    Label(ControlList& list, const char* name, const Setup& setup);

    const std::string& caption() const { return caption_; }
    void setCaption(std::string caption);
    const Colour& foreColour() const { return foreColour_; }
    void setForeColour(Colour colour);
    TextAlignment alignment() const { return alignment_; }
    /// The letter that, with Alt, moves to the labelled input; 0 for none.
    char mnemonic() const { return mnemonic_; }
    /// The input that this label names, or null.
    Control* labelled() const { return labelled_; }
    /// The text is broken into lines where it does not fit into one.
    bool wrapped() const { return wrapped_; }
    /// Captions that it has at other times: there is room for each, so that nothing moves.
    const std::vector<std::string>& otherCaptions() const { return otherCaptions_; }
    /// For captions that are not known before the program runs; to be told before anybody sees it.
    void setOtherCaptions(std::vector<std::string> captions);

private:
    std::string caption_;
    Colour foreColour_;
    TextAlignment alignment_;
    char mnemonic_;
    Control* labelled_;
    bool wrapped_;
    std::vector<std::string> otherCaptions_;
};

/// A text that can be selected and copied, and typed into unless it is read-only: one line, or as
/// many as there are.
class TextBox : public Control {
public:
    struct Setup {
        const char* text = "";
        const char* toolTip = "";
        const char* accessibleName = "";
        bool readOnly = false;
        TextAlignment alignment = TextAlignment::Left;
        bool multiLine = false;
    };

    TextBox(ControlList& list, const char* name, const Setup& setup);

    /// Raised when the text has changed, by the user or the program.
    Event<> Change;
    /// Raised when the user has come to the box, by key or mouse.
    Event<> GotFocus;
    /// Raised when the user has left the box, by key or mouse; not when the window as a whole has
    /// lost the focus to another one.
    Event<> LostFocus;
    /// Raised when a key goes down in the box, before it changes the text.
    Event<> KeyDown;
    /// Raised when a key comes up in the box, after it has changed the text.
    Event<> KeyUp;

    const std::string& text() const { return text_; }
    void setText(std::string text);
    /// Selects so many bytes of the text from `start`, counted from 0; typing replaces them. What
    /// the user selects afterwards is not known here.
    void select(int start, int length);
    int selStart() const { return selStart_; }
    int selLength() const { return selLength_; }
    bool readOnly() const { return readOnly_; }
    TextAlignment alignment() const { return alignment_; }
    /// Lines are set apart by a carriage return and a line feed.
    bool multiLine() const { return multiLine_; }

private:
    std::string text_;
    int selStart_ = 0;
    int selLength_ = 0;
    bool readOnly_;
    TextAlignment alignment_;
    bool multiLine_;
};

/// A box that is ticked or not; one that is read-only shows something and takes no click.
class CheckBox : public Control {
public:
    struct Setup {
        const char* caption = "";
        const char* toolTip = "";
        char mnemonic = 0;
        bool readOnly = false;
    };

    CheckBox(ControlList& list, const char* name, const Setup& setup);

    /// Raised when the value has changed, by the user or the program.
    Event<> Click;

    const std::string& caption() const { return caption_; }
    char mnemonic() const { return mnemonic_; }
    /// 1 when ticked, else 0.
    std::uint8_t value() const { return value_; }
    bool ticked() const { return value_ != 0; }
    /// Any value but 0 ticks the box.
    void setValue(std::uint8_t value);
    bool readOnly() const { return readOnly_; }

private:
    std::string caption_;
    char mnemonic_;
    bool readOnly_;
    std::uint8_t value_ = 0;
};

/// One of several choices: choosing it takes the choice from all others of its form.
class OptionButton : public Control {
public:
    struct Setup {
        const char* caption = "";
        const char* toolTip = "";
        char mnemonic = 0;
        bool value = false;
    };

    OptionButton(ControlList& list, const char* name, const Setup& setup);

    /// Raised when it has been chosen, by the user or the program.
    Event<> Click;

    const std::string& caption() const { return caption_; }
    char mnemonic() const { return mnemonic_; }
    bool value() const { return value_; }
    void setValue(bool value);

private:
    std::string caption_;
    char mnemonic_;
    bool value_;
};

/// A push button.
class CommandButton : public Control {
public:
    struct Setup {
        const char* caption = "";
        const char* toolTip = "";
        char mnemonic = 0;
        bool enabled = true;
        OtherCaptions otherCaptions = {};
    };

    CommandButton(ControlList& list, const char* name, const Setup& setup);

    Event<> Click;

    const std::string& caption() const { return caption_; }
    void setCaption(std::string caption);
    char mnemonic() const { return mnemonic_; }
    /// Captions that it has at other times: there is room for each, so that nothing moves.
    const std::vector<std::string>& otherCaptions() const { return otherCaptions_; }
    /// The user presses the button; does nothing while it is disabled.
    void press();

private:
    std::string caption_;
    char mnemonic_;
    std::vector<std::string> otherCaptions_;
};

/// A drop-down list: texts of which one, or none, is selected.
class ComboBox : public Control {
public:
    static constexpr int none = -1;

    struct Setup {
        const char* toolTip = "";
        const char* accessibleName = "";
    };

    ComboBox(ControlList& list, const char* name, const Setup& setup);

    /// Raised when another entry has been selected, by the user or the program.
    Event<> Click;
    /// Raised before the user sees the list.
    Event<> DropDown;

    const std::vector<std::string>& items() const { return items_; }
    int listCount() const { return static_cast<int>(items_.size()); }
    void addItem(std::string text);
    /// Puts other entries in place of those that are there; nothing is selected then. The view is
    /// told once, however many they are.
    void setItems(std::vector<std::string> texts);
    /// Removes all entries; nothing is selected then.
    void clear() { setItems({}); }
    /// Position of the selected entry from 0, or `none`.
    int listIndex() const { return listIndex_; }
    /// Selects an entry or `none`; raises SubscriptOutOfRange (9) for any other position.
    void setListIndex(int index);
    /// The selected entry's text; empty when none is.
    std::string text() const;

private:
    std::vector<std::string> items_;
    int listIndex_ = none;
};

/// Shows how far a piece of work is.
class ProgressBar : public Control {
public:
    static constexpr int complete = 100;

    struct Setup {
        const char* toolTip = "";
        const char* accessibleName = "";
    };

    ProgressBar(ControlList& list, const char* name, const Setup& setup);

    /// Percent.
    int value() const { return value_; }
    /// Below 0 is 0, above 100 is 100.
    void setValue(int percent);

private:
    int value_ = 0;
};

/// A titled border around other controls.
class Frame : public Control {
public:
    struct Setup {
        const char* caption = "";
    };

    Frame(ControlList& list, const char* name, const Setup& setup);

    const std::string& caption() const { return caption_; }

private:
    std::string caption_;
};

/// A small drawing.
class Picture : public Control {
public:
    Picture(ControlList& list, const char* name);

    /// Raised with the pointer's distance from the left edge, in pixels, when it has moved over the
    /// picture.
    Event<int> MouseMove;

    const Drawing& drawing() const { return drawing_; }
    void setDrawing(Drawing drawing);

private:
    Drawing drawing_;
};

/// Fires every `interval` milliseconds while it is enabled and its form is loaded. Switching it on
/// or changing the interval starts a new interval. It is not seen.
class Timer : public Control {
public:
    Timer(ControlList& list, const char* name);

    Event<> Tick;

    /// Milliseconds; 0 never fires.
    std::int32_t interval() const { return interval_; }
    void setInterval(std::int32_t milliseconds);
    /// The time is up; does nothing while the timer is disabled.
    void fire();

private:
    std::int32_t interval_ = 0;
};

/// A pop-up menu of entries, numbered from 0.
class Menu : public Control {
public:
    /// The caption of an entry that is a line between others.
    static constexpr const char* separator = "-";

    struct Entry {
        std::string caption;
        bool enabled = true;

        bool isSeparator() const { return caption == separator; }
        friend bool operator==(const Entry&, const Entry&) = default;
    };

    Menu(ControlList& list, const char* name, const char* entryName,
         std::vector<std::string> captions);

    /// Raised with the number of the entry that was chosen.
    Event<int> Click;

    /// The name of the entries' control array.
    const std::string& entryName() const { return entryName_; }
    const std::vector<Entry>& entries() const { return entries_; }
    /// These raise SubscriptOutOfRange (9) for a number that has no entry.
    const Entry& entry(int index) const;
    void setEntryCaption(int index, std::string caption);
    void setEntryEnabled(int index, bool enabled);
    /// Entries that stand above its own, a line between; their numbers follow on those. They take
    /// the place of those that were added before; none take them away.
    void setEntriesAbove(const std::vector<std::string>& captions);
    /// The numbers of all entries, from the top down.
    std::vector<int> order() const;
    /// The user chooses an entry; does nothing for a disabled one or a separator.
    void choose(int index);

private:
    Entry& at(int index);

    std::string entryName_;
    std::vector<Entry> entries_;
    std::size_t ownCount_ = 0; ///< of the entries; behind them are those above
};

} // namespace tarvik
