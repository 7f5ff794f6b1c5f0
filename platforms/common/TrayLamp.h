#pragma once

#include "forms/StatusLamp.h"
#include "ports/NotificationArea.h"

namespace tarvik::face {

/// The lamp that an icon in the notification area shows; any unknown icon shows the first.
LampState lampOf(TrayIcon icon);

} // namespace tarvik::face
