#include "common/FaceCaption.h"
#include "windows/face/ControlWindow.h"

namespace tarvik::face {

namespace {

DWORD styleOf(const Label& label) {
    const DWORD alignment = label.alignment() == TextAlignment::Right    ? SS_RIGHT
                            : label.alignment() == TextAlignment::Centre ? SS_CENTER
                                                                         : SS_LEFT;
    // Only a label that names an input knows marked letters; any other shows its text as it is.
    const DWORD marks = label.labelled() == nullptr ? SS_NOPREFIX : 0U;
    // Without notifications the mouse passes through, and no tool tip comes.
    // A text in the middle of its height stands in one line.
    const DWORD place = label.wrapped() ? 0U : SS_CENTERIMAGE;
    return alignment | marks | place | SS_NOTIFY;
}

std::string marked(const Label& label) {
    return label.labelled() != nullptr ? markedCaption(label.caption(), label.mnemonic())
                                       : label.caption();
}

class LabelWindow : public ControlWindow {
public:
    LabelWindow(Label& label, ControlSite& site)
        : ControlWindow(
              label, site,
              makeChild(label, site, "STATIC", site.shown(marked(label)), styleOf(label))),
          label_(label) {}

    LayoutSize measure(const FaceFont& font, int characters, int lines) const override {
        const int width = characters > 0
                              ? font.charactersWidth(characters)
                              : widestText(font, shown(label_.caption()), label_.otherCaptions());
        return {width, font.lineHeight() * (lines > 0 ? lines : 1)};
    }

    Colour textColour() const override { return label_.foreColour(); }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Caption) {
            setWindowText(shown(marked(label_)));
            site().layOutAgain();
        } else if (changed == Property::ForeColour) {
            InvalidateRect(window(), nullptr, TRUE);
        }
    }

private:
    Label& label_;
};

} // namespace

std::unique_ptr<ControlWindow> makeLabel(Control& control, ControlSite& site) {
    return std::make_unique<LabelWindow>(static_cast<Label&>(control), site);
}

} // namespace tarvik::face
