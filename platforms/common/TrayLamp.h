#pragma once

#include "controls/Drawing.h"
#include "forms/StatusLamp.h"
#include "ports/NotificationArea.h"

#include <cstdint>

namespace tarvik::face {

/// So many numbers of icons are known, from 0 on.
inline constexpr std::uint32_t trayIconNumbers = 9;
static_assert(iconNumber(TrayIcon::imgSysTrayOffline, TrayMark::Last) + 1 == trayIconNumbers);

/// The lamp that an icon in the notification area shows; any unknown icon shows the first.
LampState lampOf(TrayIcon icon);

/// What the icon of that number looks like: its lamp, and above it the mark. An unknown number
/// looks like the first.
Drawing trayDrawing(std::uint32_t number);

} // namespace tarvik::face
