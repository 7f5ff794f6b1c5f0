#pragma once

#include "ports/Platform.h"
#include "scripted/ScriptedConnections.h"
#include "scripted/ScriptedDesktop.h"
#include "scripted/ScriptedFiles.h"
#include "scripted/ScriptedProfile.h"
#include "scripted/ScriptedServices.h"

namespace tarvik {

/// A whole machine played by a test.
class ScriptedPlatform {
public:
    ScriptedConnections connections;
    ScriptedErrorTexts systemErrors;
    ScriptedInternetState internet;
    ScriptedSockets sockets;
    ScriptedFiles files;
    ScriptedProfile profile{files, "\r\n"};
    ScriptedInstances instances;
    ScriptedNotificationArea notificationArea;
    ScriptedDialogs dialogs;
    ScriptedDesktop desktop;
    ScriptedClock clock;
    ScriptedLocale locale;
    ScriptedProgram program;

    Platform platform{connections,      systemErrors, internet, sockets, profile, files,  instances,
                      notificationArea, dialogs,      desktop,  clock,   locale,  program};

    /// The same machine with files that are not played.
    Platform withFiles(PrivateProfile& otherProfile, Files& otherFiles) {
        return {connections, systemErrors, internet,         sockets, otherProfile,
                otherFiles,  instances,    notificationArea, dialogs, desktop,
                clock,       locale,       program};
    }
};

} // namespace tarvik
