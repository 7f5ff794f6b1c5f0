#pragma once

#include "scripted/ScriptedPlatform.h"

namespace tarvik {

/// A machine played by a test, with the real windows of a desktop.
template <class RealDesktop>
struct FaceMachine {
    ScriptedPlatform scripted;
    RealDesktop desktop;
    Platform platform{scripted.connections, scripted.systemErrors,
                      scripted.internet,    scripted.sockets,
                      scripted.profile,     scripted.files,
                      scripted.instances,   scripted.notificationArea,
                      scripted.dialogs,     desktop,
                      scripted.clock,       scripted.locale,
                      scripted.program};
};

} // namespace tarvik
