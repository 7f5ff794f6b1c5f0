#include "controls/Controls.h"

#include "controls/ControlList.h"
#include "types/RunTimeError.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace tarvik {

namespace {

/// The caption that it has now will be one of the others once it has changed.
std::vector<std::string> withOwn(const std::string& caption, const OtherCaptions& others) {
    std::vector<std::string> all;
    for (const char* other : others) {
        if (other != nullptr) {
            all.emplace_back(other);
        }
    }
    if (!all.empty()) {
        all.push_back(caption);
    }
    return all;
}

} // namespace

Label::Label(ControlList& list, const char* name, const Setup& setup)
    : Control(list, ControlKind::Label, name), caption_(setup.caption), alignment_(setup.alignment),
      mnemonic_(setup.mnemonic), labelled_(setup.labelled), wrapped_(setup.wrapped),
      otherCaptions_(withOwn(caption_, setup.otherCaptions)) {
    setToolTip(setup.toolTip);
}

void Label::setCaption(std::string caption) {
    assign(caption_, std::move(caption), Property::Caption);
}

void Label::setOtherCaptions(std::vector<std::string> captions) {
    otherCaptions_ = std::move(captions);
}

void Label::setForeColour(Colour colour) {
    assign(foreColour_, colour, Property::ForeColour);
}

TextBox::TextBox(ControlList& list, const char* name, const Setup& setup)
    : Control(list, ControlKind::TextBox, name), text_(setup.text), readOnly_(setup.readOnly),
      alignment_(setup.alignment), multiLine_(setup.multiLine) {
    setToolTip(setup.toolTip);
    setAccessibleName(setup.accessibleName);
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

CheckBox::CheckBox(ControlList& list, const char* name, const Setup& setup)
    : Control(list, ControlKind::CheckBox, name), caption_(setup.caption),
      mnemonic_(setup.mnemonic), readOnly_(setup.readOnly) {
    setToolTip(setup.toolTip);
}

void CheckBox::setValue(std::uint8_t value) {
    if (assign(value_, static_cast<std::uint8_t>(value != 0 ? 1 : 0), Property::Value)) {
        Click.raise();
    }
}

OptionButton::OptionButton(ControlList& list, const char* name, const Setup& setup)
    : Control(list, ControlKind::OptionButton, name), caption_(setup.caption),
      mnemonic_(setup.mnemonic), value_(setup.value) {
    setToolTip(setup.toolTip);
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

CommandButton::CommandButton(ControlList& list, const char* name, const Setup& setup)
    : Control(list, ControlKind::CommandButton, name), caption_(setup.caption),
      mnemonic_(setup.mnemonic), otherCaptions_(withOwn(caption_, setup.otherCaptions)) {
    setToolTip(setup.toolTip);
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

ComboBox::ComboBox(ControlList& list, const char* name, const Setup& setup)
    : Control(list, ControlKind::ComboBox, name) {
    setToolTip(setup.toolTip);
    setAccessibleName(setup.accessibleName);
}

void ComboBox::addItem(std::string text) {
    items_.push_back(std::move(text));
    tell(Property::Items);
}

void ComboBox::setItems(std::vector<std::string> texts) {
    if (items_.empty() && texts.empty()) {
        return;
    }
    items_ = std::move(texts);
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

ProgressBar::ProgressBar(ControlList& list, const char* name, const Setup& setup)
    : Control(list, ControlKind::ProgressBar, name) {
    setToolTip(setup.toolTip);
    setAccessibleName(setup.accessibleName);
}

void ProgressBar::setValue(int percent) {
    assign(value_, std::clamp(percent, 0, complete), Property::Value);
}

Frame::Frame(ControlList& list, const char* name, const Setup& setup)
    : Control(list, ControlKind::Frame, name), caption_(setup.caption) {}

Picture::Picture(ControlList& list, const char* name) : Control(list, ControlKind::Picture, name) {}

void Picture::setDrawing(Drawing drawing) {
    assign(drawing_, std::move(drawing), Property::Drawing);
}

Timer::Timer(ControlList& list, const char* name) : Control(list, ControlKind::Timer, name) {
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

Menu::Menu(ControlList& list, const char* name, const char* entryName,
           std::vector<std::string> captions)
    : Control(list, ControlKind::Menu, name), entryName_(entryName) {
    for (std::string& caption : captions) {
        entries_.push_back({.caption = std::move(caption)});
    }
    ownCount_ = entries_.size();
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

void Menu::setEntriesAbove(const std::vector<std::string>& captions) {
    const auto own = static_cast<std::ptrdiff_t>(ownCount_);
    std::vector<Entry> all(entries_.begin(), entries_.begin() + own);
    for (const std::string& caption : captions) {
        all.push_back({.caption = caption});
    }
    if (!captions.empty()) {
        all.push_back({.caption = separator});
    }
    assign(entries_, std::move(all), Property::Entries);
}

std::vector<int> Menu::order() const {
    std::vector<int> numbers(entries_.size());
    std::iota(numbers.begin(), numbers.end(), 0);
    const auto own = static_cast<std::ptrdiff_t>(ownCount_);
    std::rotate(numbers.begin(), numbers.begin() + own, numbers.end());
    return numbers;
}

void Menu::choose(int index) {
    const Entry& chosen = entry(index);
    if (chosen.enabled && !chosen.isSeparator()) {
        Click.raise(index);
    }
}

} // namespace tarvik
