#pragma once

#include "linux/face/QtDesktop.h"
#include "scripted/ScriptedPlatform.h"

namespace tarvik {

/// A machine played by a test, with the real windows of a Qt desktop.
struct QtMachine {
    ScriptedPlatform scripted;
    face::QtDesktop desktop;
    Platform platform{scripted.connections, scripted.systemErrors,
                      scripted.internet,    scripted.sockets,
                      scripted.profile,     scripted.files,
                      scripted.instances,   scripted.notificationArea,
                      scripted.dialogs,     desktop,
                      scripted.clock,       scripted.locale,
                      scripted.program};
};

} // namespace tarvik
