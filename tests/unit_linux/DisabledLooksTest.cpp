#include "ProgramTest.h"

#include <algorithm>

namespace tarvik {
namespace {

/// What cannot be used looks so.
class DisabledLooksTest : public ProgramTest {
protected:
    static QImage image(Control& control, bool enabled) {
        control.setEnabled(enabled);
        takeQueued();
        return widget(control).grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    /// The lightness of the darkest pixel, 0 to 255: of dark text on a light ground.
    static int darkest(const QImage& image) {
        int least = 255;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                least = std::min(least, image.pixelColor(x, y).lightness());
            }
        }
        return least;
    }

    /// It shows something that could look disabled.
    static bool hasText(const Control& control) {
        switch (control.kind()) {
        case ControlKind::Label:
            return !static_cast<const Label&>(control).caption().empty();
        case ControlKind::TextBox:
            return !static_cast<const TextBox&>(control).text().empty();
        case ControlKind::ComboBox:
            return !static_cast<const ComboBox&>(control).text().empty();
        default:
            return control.kind() == ControlKind::CheckBox ||
                   control.kind() == ControlKind::OptionButton ||
                   control.kind() == ControlKind::CommandButton;
        }
    }
};

TEST_F(DisabledLooksTest, TheLabelsOfFieldsThatAreOffAreAsPaleAsTheirBoxes) {
    open(frmOptions());

    for (Label* label : {&frmOptions().lblLimitAction, &frmOptions().lblDurationTimeSep,
                         &frmOptions().lblTransferTicker}) {
        ASSERT_FALSE(label->enabled()) << label->name();
        const int off = darkest(image(*label, false));
        const int on = darkest(image(*label, true));
        EXPECT_LT(on, 64) << label->name();
        EXPECT_GT(off, on + 64) << label->name();
        EXPECT_LT(off, 224) << label->name();
    }
}

TEST_F(DisabledLooksTest, EverythingWithATextLooksOtherwiseWhenItIsDisabled) {
    for (Form* form : windows()) {
        open(*form);
        for (Control* control : seenControlsInOrder(*form->layout())) {
            if (auto* box = dynamic_cast<TextBox*>(control)) {
                box->setText("1");
            }
            if (hasText(*control)) {
                const bool alike = image(*control, true) == image(*control, false);
                EXPECT_FALSE(alike) << form->name() << "." << control->name();
            }
        }
    }
}

TEST_F(DisabledLooksTest, AColouredLabelIsPaleTooWhenItIsDisabled) {
    open(frmMain());
    Label& label = frmMain().lblActiveConnection;
    label.setForeColour({192, 0, 0});

    const QImage on = image(label, true);
    const QImage off = image(label, false);

    EXPECT_GT(darkest(off), darkest(on) + 16);
}

} // namespace
} // namespace tarvik
