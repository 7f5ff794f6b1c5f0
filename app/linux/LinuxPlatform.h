#pragma once

#include "common/ProfileEngine.h"
#include "linux/face/DisplayLoss.h"
#include "linux/face/EndSignals.h"
#include "linux/face/LinuxCommonDialogs.h"
#include "linux/face/LinuxNotificationArea.h"
#include "linux/face/QtDesktop.h"
#include "linux/network/LinuxInternetState.h"
#include "linux/services/LinuxClock.h"
#include "linux/services/LinuxFiles.h"
#include "linux/services/LinuxLocale.h"
#include "linux/services/LinuxProgram.h"
#include "linux/services/LinuxSingleInstance.h"
#include "linux/services/LinuxSockets.h"
#include "linux/services/LinuxSystemErrorText.h"
#include "linux/services/LoginWatch.h"
#include "linux/services/ToolkitServices.h"
#include "ports/Platform.h"

#include <QApplication>

namespace tarvik {

/// Everything a program on a Linux desktop runs on, apart from its connections.
class LinuxPlatform {
public:
    /// `argc` and `argv` are those of `main` and must outlive this.
    LinuxPlatform(int argc, char** argv);
    ~LinuxPlatform();
    LinuxPlatform(const LinuxPlatform&) = delete;
    LinuxPlatform& operator=(const LinuxPlatform&) = delete;

    /// The services with that connection provider, which must outlive the platform's use.
    Platform with(ConnectionProvider& connections);

private:
    void pause(const LoginWatch::Release& release);

    face::DisplayLoss displayLoss_; ///< outlives the application, which may lose the display last
    ToolkitServices services_;      ///< before the application, which would wait for them
    int onlyName_; ///< the toolkit gets no switch: each is the program's, known or not
    QApplication application_;
    LinuxProgram program_;
    LinuxFiles files_;
    ProfileEngine profile_{files_, "\n"};
    LinuxSingleInstance instances_;
    LinuxClock clock_;
    LinuxLocale locale_;
    LinuxSystemErrorText systemErrors_;
    LinuxInternetState internet_;
    LinuxSockets sockets_;
    face::QtDesktop desktop_;
    face::LinuxNotificationArea notificationArea_{desktop_};
    face::LinuxCommonDialogs dialogs_{desktop_};
    face::EndSignals endSignals_;
    LoginWatch loginWatch_;
};

} // namespace tarvik
