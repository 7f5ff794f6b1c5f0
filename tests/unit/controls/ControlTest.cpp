#include "controls/TestForm.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>

namespace tarvik {
namespace {

/// One property of one control kind: how it is changed, and what its view is told.
struct PropertyCase {
    const char* name;
    std::function<std::unique_ptr<Control>(Form&)> make;
    std::function<void(Control&)> change;
    Property told;
};

void PrintTo(const PropertyCase& propertyCase, std::ostream* out) {
    *out << propertyCase.name;
}

template <class Kind>
Kind& as(Control& control) {
    return static_cast<Kind&>(control);
}

template <class Kind, class... Args>
std::function<std::unique_ptr<Control>(Form&)> making(Args... args) {
    return [args...](Form& form) { return std::make_unique<Kind>(form, "made", args...); };
}

std::vector<PropertyCase> everyProperty() {
    const auto label = making<Label>(Label::Setup{.caption = "Old"});
    const auto textBox = making<TextBox>(TextBox::Setup{.text = "old"});
    const auto checkBox = making<CheckBox>(CheckBox::Setup{.caption = "Tick"});
    const auto button = making<CommandButton>(CommandButton::Setup{.caption = "Old"});
    const auto picture = making<Picture>();
    const auto timer = making<Timer>();
    const auto menu = making<Menu>("mnuEntry", std::vector<std::string>{"Old", "-", "Last"});
    return {
        {"ToolTip", label, [](Control& c) { c.setToolTip("tip"); }, Property::ToolTip},
        {"AccessibleName", picture, [](Control& c) { c.setAccessibleName("Lamp"); },
         Property::AccessibleName},
        {"Disabled", label, [](Control& c) { c.setEnabled(false); }, Property::Enabled},
        {"Hidden", label, [](Control& c) { c.setVisible(false); }, Property::Visible},
        {"LabelCaption", label, [](Control& c) { as<Label>(c).setCaption("New"); },
         Property::Caption},
        {"LabelColour", label,
         [](Control& c) {
             as<Label>(c).setForeColour({192, 0, 0});
         },
         Property::ForeColour},
        {"TextBoxText", textBox, [](Control& c) { as<TextBox>(c).setText("new"); }, Property::Text},
        {"CheckBoxValue", checkBox, [](Control& c) { as<CheckBox>(c).setValue(1); },
         Property::Value},
        {"ButtonCaption", button, [](Control& c) { as<CommandButton>(c).setCaption("New"); },
         Property::Caption},
        {"PictureDrawing", picture,
         [](Control& c) {
             as<Picture>(c).setDrawing(
                 {{{.type = DrawingShape::Type::Line, .points = {{0, 0}, {1, 1}}, .colour = {}}}});
         },
         Property::Drawing},
        {"TimerInterval", timer, [](Control& c) { as<Timer>(c).setInterval(1000); },
         Property::Interval},
        {"TimerEnabled", timer, [](Control& c) { c.setEnabled(true); }, Property::Enabled},
        {"MenuCaption", menu, [](Control& c) { as<Menu>(c).setEntryCaption(0, "New"); },
         Property::Entries},
        {"MenuEntryDisabled", menu, [](Control& c) { as<Menu>(c).setEntryEnabled(2, false); },
         Property::Entries},
    };
}

class ControlPropertyTest : public testing::TestWithParam<PropertyCase> {
protected:
    BareForm form;
};

TEST_P(ControlPropertyTest, AChangeIsToldOnce) {
    const auto control = GetParam().make(form);
    const RecordingView view(*control);

    GetParam().change(*control);

    EXPECT_EQ(view.told, Told{GetParam().told});
}

TEST_P(ControlPropertyTest, TheSameValueTellsNothing) {
    const auto control = GetParam().make(form);
    GetParam().change(*control);
    const RecordingView view(*control);

    GetParam().change(*control);

    EXPECT_EQ(view.told, Told{});
}

INSTANTIATE_TEST_SUITE_P(Every, ControlPropertyTest, testing::ValuesIn(everyProperty()),
                         [](const auto& tested) { return tested.param.name; });

TEST(ControlTest, ANewControlIsEnabledAndVisible) {
    BareForm form;

    const Label label(form, "lblNew", {.caption = "New", .toolTip = "tip"});

    EXPECT_TRUE(label.enabled());
    EXPECT_TRUE(label.visible());
    EXPECT_EQ(label.name(), "lblNew");
    EXPECT_EQ(label.toolTip(), "tip");
    EXPECT_EQ(&label.list(), &form);
}

TEST(ControlTest, AViewTakenAwayIsToldNothingMore) {
    BareForm form;
    Label label(form, "lblNew", {.caption = "Old"});
    RecordingView view(label);

    label.attach(nullptr);
    label.setCaption("New");

    EXPECT_EQ(view.told, Told{});
}

TEST(ControlTest, AViewFindsTheNewValueWhenItIsTold) {
    struct Reader : ControlView {
        explicit Reader(Label& shown) : label(shown) { label.attach(this); }
        void refresh(Property) override { seen = label.caption(); }
        Label& label;
        std::string seen;
    };
    BareForm form;
    Label label(form, "lblNew", {.caption = "Old"});
    Reader reader(label);

    label.setCaption("New");

    EXPECT_EQ(reader.seen, "New");
}

} // namespace
} // namespace tarvik
