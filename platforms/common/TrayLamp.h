#pragma once

#include "ports/NotificationArea.h"
#include "ui/StatusLamp.h"

namespace tarvik::face {

/// The lamp that an icon in the notification area shows; any unknown icon shows the first.
LampState lampOf(TrayIcon icon);

} // namespace tarvik::face
