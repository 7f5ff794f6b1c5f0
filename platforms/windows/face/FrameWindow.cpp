#include "common/FaceCaption.h"
#include "windows/face/ControlWindow.h"

namespace tarvik::face {

namespace {

class FrameWindow : public ControlWindow {
public:
    FrameWindow(Frame& frame, ControlSite& site)
        : ControlWindow(frame, site,
                        makeChild(frame, site, "BUTTON",
                                  site.shown(markedCaption(frame.caption(), 0)), BS_GROUPBOX)),
          frame_(frame) {}

    LayoutSize measure(const FaceFont& font, int, int) const override {
        return {font.textWidth(frame_.caption()), font.lineHeight()};
    }

protected:
    void refreshOwn(Property) override {}

private:
    Frame& frame_;
};

} // namespace

std::unique_ptr<ControlWindow> makeFrame(Control& control, ControlSite& site) {
    return std::make_unique<FrameWindow>(static_cast<Frame&>(control), site);
}

} // namespace tarvik::face
