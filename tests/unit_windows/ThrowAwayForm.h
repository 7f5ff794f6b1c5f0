#pragma once

#include "support/Win32Machine.h"
#include "support/Win32Windows.h"
#include "windows/face/ControlIds.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace tarvik {

/// One control of each kind.
class ThrowAwayForm : public Form {
public:
    ThrowAwayForm() : Form("frmThrowAway", "Throw-away") {
        setLayout(frame(frameAll, column({
                                      row({item(lblName), item(txtName).wide(12).share(1)}),
                                      row({item(picLamp), item(lblPlain), item(chkTick)}),
                                      item(cboList).wide(10),
                                      row({item(cmdOk), item(cmdCancel)}).sameSize(),
                                  })));
        setDefaultButton(cmdOk);
        setCancelButton(cmdCancel);
        setInitialFocus(cboList);
        picLamp.setDrawing({{{.type = DrawingShape::Type::Circle,
                              .points = {{0.5, 0.5}, {1.0, 0.5}},
                              .colour = {10, 200, 30}}}});
    }

    Frame frameAll{*this, "frameAll", {"All & sundry"}};
    TextBox txtName{*this, "txtName", {.text = "first", .toolTip = "tip"}};
    Label lblName{*this, "lblName", {.caption = "Name:", .mnemonic = 'N', .labelled = &txtName}};
    Label lblPlain{*this, "lblPlain", {.caption = "this & that"}};
    Picture picLamp{*this, "picLamp"};
    CheckBox chkTick{*this, "chkTick", {.caption = "Tick", .mnemonic = 'T'}};
    ComboBox cboList{*this, "cboList", {.accessibleName = "List"}};
    CommandButton cmdOk{*this, "cmdOk", {.caption = "OK"}};
    CommandButton cmdCancel{*this, "cmdCancel", {.caption = "Cancel", .mnemonic = 'C'}};
    Timer timTick{*this, "timTick"};
};

/// A desktop with the real window of a form.
class Win32FaceTest : public testing::Test {
protected:
    Win32FaceTest() { form.load(); }
    ~Win32FaceTest() override {
        form.unload();
        settle();
    }

    HWND window() const { return ownWindow("frmThrowAway"); }
    HWND find(const Control& control) const {
        return GetDlgItem(window(), face::controlId(control));
    }

    /// What was put off until messages are handled again is done.
    void settle() { desktop.processEvents(); }

    void show() {
        form.setVisible(true);
        settle();
    }

    /// Handles messages until the condition holds; false when it does not within a fair while.
    bool spinUntil(const std::function<bool()>& condition) {
        constexpr ULONGLONG fairWhile = 10'000;
        const ULONGLONG begin = GetTickCount64();
        while (!condition() && GetTickCount64() - begin < fairWhile) {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
            settle();
        }
        return condition();
    }

    /// A key goes down in the window that has the focus, as from the keyboard.
    void press(WPARAM key) {
        PostMessageA(GetFocus(), WM_KEYDOWN, key, 1);
        settle();
    }

    Win32Machine machine;
    face::WindowsDesktop& desktop = machine.desktop;
    PlatformScope scope{machine.platform};
    ThrowAwayForm form;
};

} // namespace tarvik
