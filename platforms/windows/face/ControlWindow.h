#pragma once

#include "common/ControlPeer.h"
#include "controls/Controls.h"
#include "controls/LayoutSolver.h"
#include "windows/face/FaceFont.h"
#include "windows/face/WindowContext.h"

#include <memory>
#include <string>
#include <vector>

namespace tarvik::face {

class ControlWindow;

/// What a control's peer needs of the window it stands in.
class ControlSite {
public:
    virtual ~ControlSite() = default;
    virtual HWND window() const = 0;
    virtual WindowContext& context() = 0;
    /// The text for the eye, see `WindowContext`.
    std::string shown(const std::string& text) { return context().shown(text); }
    /// The size of a control may have changed.
    virtual void layOutAgain() = 0;
    virtual void showToolTip(HWND control, const std::string& tip) = 0;
    /// The control has the focus now. True when the user has come to it: from another control, or
    /// to a window that was hidden; not when its window was only somewhere else meanwhile.
    virtual bool tookFocus(const ControlWindow& control) = 0;
    /// A control can take the focus now, or no longer.
    virtual void focusMayMove() = 0;
};

/// The peer of one control: a child window, or none for a control that is not seen.
class ControlWindow : public ControlPeer {
public:
    ControlWindow(Control& control, ControlSite& site, HWND window);
    ~ControlWindow() override;
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;

    std::uint32_t handle() const override;

    HWND window() const { return window_; }

    /// The size that the control needs for so many characters and lines; 0: for its content.
    virtual LayoutSize measure(const FaceFont& font, int characters, int lines) const = 0;
    /// The window tells of something that happened to it, in its own numbers.
    virtual void onNotification(int) {}
    /// The window tells of something, or asks for something, by a code and in a record at the
    /// address that comes with it; the answer, where one is asked for.
    virtual LRESULT onNews(UINT, LPARAM) { return 0; }
    /// The control's time is up.
    virtual void onTimer() {}
    /// The user has come to the control.
    virtual void onArrival() {}
    /// The user has left the control for another one of its window.
    virtual void onLeave() {}
    /// The colour of the control's text; black is the system's own.
    virtual Colour textColour() const { return {}; }

protected:
    ControlSite& site() const { return site_; }
    /// The text that the child window holds.
    std::string windowText() const;
    void setWindowText(const std::string& text);
    /// The text for the eye, see `WindowContext`.
    std::string shown(const std::string& text) const { return site_.shown(text); }

private:
    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second,
                                      UINT_PTR, DWORD_PTR own);
    bool refreshShared(Property changed) final;

    ControlSite& site_;
    HWND window_;
};

/// The width that has room for the text and for all the others.
int widestText(const FaceFont& font, const std::string& text,
               const std::vector<std::string>& others);

/// A child window for the control, with the control's number. The text comes with it: each change
/// of a window that is there costs more.
HWND makeChild(const Control& control, const ControlSite& site, const char* className,
               const std::string& text, DWORD style, DWORD extendedStyle = 0);

/// Registers a class of the program's own for the windows of a kind of control; its name.
const char* registerClass(const char* name, WNDPROC onMessage, UINT style);

/// The peer for a control of any kind; null for a kind that is only shown when it is opened.
std::unique_ptr<ControlWindow> makeControlWindow(Control& control, ControlSite& site);

// One maker for each kind.
std::unique_ptr<ControlWindow> makeLabel(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makeTextBox(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makeOptionButton(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makeListView(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makeCheckBox(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makeCommandButton(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makeComboBox(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makeChart(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makeProgressBar(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makeFrame(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makePicture(Control&, ControlSite&);
std::unique_ptr<ControlWindow> makeTimer(Control&, ControlSite&);

} // namespace tarvik::face
