#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace tarvik {

class ControlList;

enum class ControlKind {
    Label,
    TextBox,
    CheckBox,
    OptionButton,
    CommandButton,
    ComboBox,
    ListView,
    Chart,
    ProgressBar,
    Frame,
    Picture,
    Timer,
    Menu,
};

/// Whether the focus comes to controls of that kind.
bool takesKeys(ControlKind kind);

/// What of a control has changed.
enum class Property {
    Caption,
    Text,
    Selection,
    Value,
    Enabled,
    Visible,
    ToolTip,
    AccessibleName,
    ForeColour,
    Items,
    ListIndex,
    Headers,
    ColumnWidths,
    Interval,
    Drawing,
    Reading,
    Entries,
};

/// Whoever shows a control: told of each change, it asks the control for the new state.
class ControlView {
public:
    virtual ~ControlView() = default;
    virtual void refresh(Property changed) = 0;
    /// The number by which the desktop knows what shows the control; 0 where there is none.
    virtual std::uint32_t handle() const { return 0; }
};

/// What every control has: a name, a place in a list, and whether it is seen and can be used.
///
/// The control is the truth, and its view follows it. Setting a property to the value it has does
/// nothing; a change is told to the view, if there is one.
class Control {
public:
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    ControlKind kind() const { return kind_; }
    /// The control's name in its list, unique there.
    const std::string& name() const { return name_; }
    /// What the control belongs to.
    ControlList& list() const { return list_; }

    const std::string& toolTip() const { return toolTip_; }
    /// What a screen reader should say where the caption does not tell it; may be empty.
    const std::string& accessibleName() const { return accessibleName_; }
    bool enabled() const { return enabled_; }
    bool visible() const { return visible_; }

    void setToolTip(std::string text) { assign(toolTip_, std::move(text), Property::ToolTip); }
    void setAccessibleName(std::string text) {
        assign(accessibleName_, std::move(text), Property::AccessibleName);
    }
    void setEnabled(bool enabled) { assign(enabled_, enabled, Property::Enabled); }
    void setVisible(bool visible) { assign(visible_, visible, Property::Visible); }

    /// The number by which the desktop knows what shows the control; 0 while nothing does.
    std::uint32_t hWnd() const { return view_ == nullptr ? 0 : view_->handle(); }

    /// Puts a view in place, or none. The view must take itself away before it ends.
    void attach(ControlView* view) { view_ = view; }

protected:
    /// Puts the control into the list; the order of declaration is the list's order.
    Control(ControlList& list, ControlKind kind, const char* name);

    void tell(Property changed) const {
        if (view_ != nullptr) {
            view_->refresh(changed);
        }
    }

    /// Stores a new value and tells the view; true when it was new.
    template <class T>
    bool assign(T& field, T value, Property property) {
        if (field == value) {
            return false;
        }
        field = std::move(value);
        tell(property);
        return true;
    }

private:
    ControlList& list_;
    ControlKind kind_;
    std::string name_;
    std::string toolTip_;
    std::string accessibleName_;
    bool enabled_ = true;
    bool visible_ = true;
    ControlView* view_ = nullptr;
};

} // namespace tarvik
