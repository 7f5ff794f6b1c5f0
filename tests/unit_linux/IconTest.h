#pragma once

#include "forms/frmSysTray.h"
#include "linux/face/LinuxNotificationArea.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace tarvik {

/// The program's icon in the notification area, with its menu.
class IconTest : public testing::Test {
protected:
    IconTest() {
        tray.load();
        data.cbSize = NOTIFYICONDATAA::size;
        data.hWnd = tray.picSysTrayHook.hWnd();
        data.uFlags = NotificationArea::message | NotificationArea::icon | NotificationArea::tip;
    }
    ~IconTest() override {
        // What the handlers of the test wrote to is gone.
        tray.mnuPopUp.Click.connect({});
        tray.unload();
    }

    bool ask(std::uint32_t request) { return area.Shell_NotifyIconA(request, &data); }

    QtMachine machine;
    FormOn<FrmSysTray> tray{machine.desktop};
    face::LinuxNotificationArea area{machine.desktop};
    NOTIFYICONDATAA data{};
};

} // namespace tarvik
