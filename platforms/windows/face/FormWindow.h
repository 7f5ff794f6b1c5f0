#pragma once

#include "controls/Form.h"
#include "windows/face/ControlWindow.h"
#include "windows/face/ToolTips.h"

#include <memory>
#include <optional>
#include <vector>

namespace tarvik::face {

/// The window of one form, its class named after the form; for a form without a layout a window
/// that is never seen, with the form's timers and pictures. What stands in the window is made when
/// it is first to be seen, and follows its controls while it is seen.
class FormWindow final : public FormView, public ControlSite {
public:
    FormWindow(Form& form, WindowContext& context);
    ~FormWindow() override;
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;

    void refreshVisibility() override;
    void bringToFront() override;
    void focusOn(Control& control) override;
    std::uint32_t handle() const override {
        return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window_));
    }

    HWND window() const override { return window_; }
    WindowContext& context() override { return context_; }
    void layOutAgain() override;
    void showToolTip(HWND control, const std::string& tip) override;
    bool tookFocus(const ControlWindow& control) override;
    void focusMayMove() override;

    Form& form() const { return form_; }

    /// Shows, hides or minimises the window at once if the form has asked for it and it is put off.
    void applyVisibility();

    /// Ends all connection with the form and hides the window.
    void detach();

private:
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second);
    static const char* registeredClass(const Form& form);
    LRESULT handle(UINT message, WPARAM first, LPARAM second);
    /// The answers to messages of one kind; nothing for those of another.
    using Answer = std::optional<LRESULT>;
    Answer answerUser(UINT message, WPARAM first, LPARAM second);
    Answer answerSession(UINT message, WPARAM first, LPARAM second);
    Answer answerLooks(UINT message, WPARAM first, LPARAM second);
    LRESULT passOn(UINT message, WPARAM first, LPARAM second);

    void makeWindow();
    void makeControl(Control& control);
    /// What stands in the window; does nothing when it is made.
    void makeContents();
    /// Its controls rest, or wake.
    void followSight(bool seen);
    void groupControls();
    void orderFocus();
    ControlWindow* childOf(const Control* control) const;

    // What happens to the window.
    void onCommand(int id, int notification);
    LRESULT onNews(LPARAM record);
    void onTimer(int id);
    void onSize(WPARAM how);
    LRESULT onColour(HDC context, HWND control) const;
    void onSmallestSize(MINMAXINFO& info) const;
    void onResolution(int resolution, const RECT& place);
    bool onCursor() const;
    LRESULT onSystemCommand(WPARAM command, LPARAM place);
    void onClose();

    // Where the keyboard is: see FormWindowFocus.cpp.
    void onActivation(WPARAM how);
    void onNextControl(WPARAM which, bool isControl);
    const ControlWindow* focusHolder() const;
    HWND placeOfFocus() const;
    void giveFocus();
    static void moveFocus(HWND form, HWND control);
    bool canTake(HWND control) const;
    void moveFocusTo(const Control& control);
    void setHolder(const ControlWindow& control);
    void tellLeaving(const ControlWindow& left);

    // Sizes: see FormWindowLayout.cpp.
    void useFont(int resolution);
    LayoutMetrics metrics() const;
    const LayoutSize& leastSize() const;
    SIZE frameSize() const;
    void layOut();
    bool followsLeastHeight(const LayoutSize& least, LONG height);
    void placeControls();
    void paintAnew(const LayoutRect& rect) const;
    void showWhatIsSeen();
    void appear(bool aside);

    Form& form_;
    WindowContext& context_;
    HWND window_ = nullptr;
    std::unique_ptr<FaceFont> font_; ///< made with the contents
    int dotsPerInch_ = 0;            ///< of the font
    std::unique_ptr<ToolTips> tips_; ///< made with the first tip
    std::vector<std::unique_ptr<ControlWindow>> children_;
    mutable std::optional<LayoutSize> leastSize_; ///< as long as no control has changed its size
    std::vector<PlacedControl> placed_;           ///< where they stand
    std::vector<const LayoutNode*> collapsed_;    ///< what takes no room there
    int leastHeight_ = 0;                         ///< with that
    bool detached_ = false;
    bool changePending_ = false;
    bool frontWanted_ = false;
    bool layoutPending_ = false;
    bool closedByUser_ = false; ///< the close box or the system menu is being answered
    /// Those that have had the focus, the last one first.
    std::vector<const ControlWindow*> focusOrder_;
    bool arrivalKnown_ = false;            ///< the control that has the focus has been told of it
    bool tellsLeaving_ = true;             ///< not while that is being told
    const Control* focusWanted_ = nullptr; ///< gets it as soon as the window is seen
};

} // namespace tarvik::face
