#pragma once

#include "support/FormOn.h"
#include "support/ThrowAwayForm.h"
#include "support/Win32Machine.h"
#include "support/Win32Windows.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace tarvik {

/// A desktop with the real window of a form.
class Win32FaceTest : public testing::Test {
protected:
    Win32FaceTest() { show(); }
    ~Win32FaceTest() override {
        // What the handlers of the test wrote to is gone.
        form.QueryUnload.connect({});
        form.Unload.connect({});
        form.unload();
        settle();
    }

    HWND window() const { return ownWindow("frmThrowAway"); }

    /// What was put off until messages are handled again is done.
    void settle() { desktop.processEvents(); }

    void show() {
        form.setVisible(true);
        settle();
    }

    /// Handles messages until the condition holds; false when it does not within a fair while.
    bool spinUntil(const std::function<bool()>& condition) {
        return tarvik::spinUntil([this] { settle(); }, condition);
    }

    /// A key goes down in the window that has the focus, as from the keyboard.
    void press(WPARAM key) {
        PostMessageA(GetFocus(), WM_KEYDOWN, key, 1);
        settle();
    }

    Win32Machine machine;
    face::WindowsDesktop& desktop = machine.desktop;
    FormOn<ThrowAwayForm> form{machine.platform.desktop};
};

} // namespace tarvik
