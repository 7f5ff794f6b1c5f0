#pragma once

#include "controls/Drawing.h"

namespace tarvik {

/// What the status lamp tells.
enum class LampState { NotMonitoring, Waiting, Online };

/// The lamp's image. The three differ in colour and in shape: an empty ring, a ring around a dot,
/// a full disc with a tick.
Drawing statusLamp(LampState state);

/// The lamp's meaning in words.
const char* statusLampName(LampState state);

} // namespace tarvik
