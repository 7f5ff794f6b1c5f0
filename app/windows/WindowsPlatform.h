#pragma once

#include "common/ProfileEngine.h"
#include "ports/Platform.h"
#include "windows/face/WindowsCommonDialogs.h"
#include "windows/face/WindowsDesktop.h"
#include "windows/face/WindowsNotificationArea.h"
#include "windows/services/Library.h"
#include "windows/services/WindowsClock.h"
#include "windows/services/WindowsCodePage.h"
#include "windows/services/WindowsFiles.h"
#include "windows/services/WindowsInternetState.h"
#include "windows/services/WindowsLocale.h"
#include "windows/services/WindowsProgram.h"
#include "windows/services/WindowsSingleInstance.h"
#include "windows/services/WindowsSockets.h"
#include "windows/services/WindowsSystemErrorText.h"

namespace tarvik {

/// Everything a program on a Windows desktop runs on, apart from its connections.
class WindowsPlatform {
public:
    /// The arguments are not used: the system hands out the whole command line.
    WindowsPlatform(int argc, char** argv);

    /// The services with that connection provider, which must outlive the platform's use.
    Platform with(ConnectionProvider& connections);

private:
    SystemLibrariesOnly systemLibrariesOnly_;
    WindowsProgram program_;
    WindowsFiles files_{program_.folder()};
    ProfileEngine profile_{files_, "\r\n", windowsCodePage()};
    WindowsSingleInstance instances_;
    WindowsClock clock_;
    WindowsLocale locale_;
    WindowsSystemErrorText systemErrors_;
    WindowsInternetState internet_;
    WindowsSockets sockets_;
    face::WindowsNotificationArea notificationArea_;
    face::WindowsDesktop desktop_;
    face::WindowsCommonDialogs dialogs_{desktop_};
};

} // namespace tarvik
