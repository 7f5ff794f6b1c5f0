#include "controls/Controls.h"

#include "controls/ControlList.h"
#include "types/RunTimeError.h"

#include <algorithm>

namespace tarvik {

namespace {

/// The caption that it has now will be one of the others once it has changed.
std::vector<std::string> withOwn(const std::string& caption, std::vector<std::string> others) {
    if (!others.empty()) {
        others.push_back(caption);
    }
    return others;
}

} // namespace

Label::Label(ControlList& list, std::string name, Setup setup)
    : Control(list, ControlKind::Label, std::move(name)), caption_(std::move(setup.caption)),
      alignment_(setup.alignment), mnemonic_(setup.mnemonic), labelled_(setup.labelled),
      wrapped_(setup.wrapped), otherCaptions_(withOwn(caption_, std::move(setup.otherCaptions))) {
    setToolTip(std::move(setup.toolTip));
}

void Label::setCaption(std::string caption) {
    assign(caption_, std::move(caption), Property::Caption);
}

void Label::setForeColour(Colour colour) {
    assign(foreColour_, colour, Property::ForeColour);
}

TextBox::TextBox(ControlList& list, std::string name, Setup setup)
    : Control(list, ControlKind::TextBox, std::move(name)), text_(std::move(setup.text)),
      readOnly_(setup.readOnly), alignment_(setup.alignment), multiLine_(setup.multiLine) {
    setToolTip(std::move(setup.toolTip));
    setAccessibleName(std::move(setup.accessibleName));
}

void TextBox::setText(std::string text) {
    if (assign(text_, std::move(text), Property::Text)) {
        Change.raise();
    }
}

void TextBox::select(int start, int length) {
    selStart_ = start;
    selLength_ = length;
    // Told each time: the user may have selected something else since.
    tell(Property::Selection);
}

CheckBox::CheckBox(ControlList& list, std::string name, Setup setup)
    : Control(list, ControlKind::CheckBox, std::move(name)), caption_(std::move(setup.caption)),
      mnemonic_(setup.mnemonic), readOnly_(setup.readOnly) {
    setToolTip(std::move(setup.toolTip));
}

void CheckBox::setValue(std::uint8_t value) {
    if (assign(value_, static_cast<std::uint8_t>(value != 0 ? 1 : 0), Property::Value)) {
        Click.raise();
    }
}

OptionButton::OptionButton(ControlList& list, std::string name, Setup setup)
    : Control(list, ControlKind::OptionButton, std::move(name)), caption_(std::move(setup.caption)),
      mnemonic_(setup.mnemonic), value_(setup.value) {
    setToolTip(std::move(setup.toolTip));
}

void OptionButton::setValue(bool value) {
    if (value) {
        for (Control* other : list().controls()) {
            if (other != this && other->kind() == ControlKind::OptionButton) {
                static_cast<OptionButton*>(other)->setValue(false);
            }
        }
    }
    if (assign(value_, value, Property::Value) && value) {
        Click.raise();
    }
}

CommandButton::CommandButton(ControlList& list, std::string name, Setup setup)
    : Control(list, ControlKind::CommandButton, std::move(name)),
      caption_(std::move(setup.caption)), mnemonic_(setup.mnemonic),
      otherCaptions_(withOwn(caption_, std::move(setup.otherCaptions))) {
    setToolTip(std::move(setup.toolTip));
    setEnabled(setup.enabled);
}

void CommandButton::setCaption(std::string caption) {
    assign(caption_, std::move(caption), Property::Caption);
}

void CommandButton::press() {
    if (enabled()) {
        Click.raise();
    }
}

ComboBox::ComboBox(ControlList& list, std::string name, Setup setup)
    : Control(list, ControlKind::ComboBox, std::move(name)) {
    setToolTip(std::move(setup.toolTip));
    setAccessibleName(std::move(setup.accessibleName));
}

void ComboBox::addItem(std::string text) {
    items_.push_back(std::move(text));
    tell(Property::Items);
}

void ComboBox::clear() {
    if (items_.empty()) {
        return;
    }
    items_.clear();
    listIndex_ = none;
    tell(Property::Items);
}

void ComboBox::setListIndex(int index) {
    if (index < none || index >= listCount()) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    if (assign(listIndex_, index, Property::ListIndex)) {
        Click.raise();
    }
}

std::string ComboBox::text() const {
    return listIndex_ == none ? std::string() : items_[static_cast<std::size_t>(listIndex_)];
}

ProgressBar::ProgressBar(ControlList& list, std::string name, Setup setup)
    : Control(list, ControlKind::ProgressBar, std::move(name)) {
    setToolTip(std::move(setup.toolTip));
    setAccessibleName(std::move(setup.accessibleName));
}

void ProgressBar::setValue(int percent) {
    assign(value_, std::clamp(percent, 0, complete), Property::Value);
}

Frame::Frame(ControlList& list, std::string name, Setup setup)
    : Control(list, ControlKind::Frame, std::move(name)), caption_(std::move(setup.caption)) {}

Picture::Picture(ControlList& list, std::string name)
    : Control(list, ControlKind::Picture, std::move(name)) {}

void Picture::setDrawing(Drawing drawing) {
    assign(drawing_, std::move(drawing), Property::Drawing);
}

Timer::Timer(ControlList& list, std::string name)
    : Control(list, ControlKind::Timer, std::move(name)) {
    setEnabled(false);
}

void Timer::setInterval(std::int32_t milliseconds) {
    assign(interval_, milliseconds, Property::Interval);
}

void Timer::fire() {
    if (enabled()) {
        Tick.raise();
    }
}

Menu::Menu(ControlList& list, std::string name, std::string entryName,
           std::vector<std::string> captions)
    : Control(list, ControlKind::Menu, std::move(name)), entryName_(std::move(entryName)) {
    for (std::string& caption : captions) {
        entries_.push_back({.caption = std::move(caption)});
    }
}

const Menu::Entry& Menu::entry(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= entries_.size()) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    return entries_[static_cast<std::size_t>(index)];
}

Menu::Entry& Menu::at(int index) {
    return const_cast<Entry&>(entry(index)); // NOLINT: this object is not const
}

void Menu::setEntryCaption(int index, std::string caption) {
    assign(at(index).caption, std::move(caption), Property::Entries);
}

void Menu::setEntryEnabled(int index, bool enabled) {
    assign(at(index).enabled, enabled, Property::Entries);
}

void Menu::choose(int index) {
    const Entry& chosen = entry(index);
    if (chosen.enabled && !chosen.isSeparator()) {
        Click.raise(index);
    }
}

} // namespace tarvik
