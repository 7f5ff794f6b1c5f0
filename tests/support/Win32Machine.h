#pragma once

#include "scripted/ScriptedPlatform.h"
#include "windows/face/WindowsDesktop.h"

namespace tarvik {

/// A machine played by a test, with the real windows of a Windows desktop.
struct Win32Machine {
    ScriptedPlatform scripted;
    face::WindowsDesktop desktop;
    Platform platform{scripted.connections, scripted.systemErrors,
                      scripted.internet,    scripted.sockets,
                      scripted.profile,     scripted.files,
                      scripted.instances,   scripted.notificationArea,
                      scripted.dialogs,     desktop,
                      scripted.clock,       scripted.locale,
                      scripted.program};
};

} // namespace tarvik
