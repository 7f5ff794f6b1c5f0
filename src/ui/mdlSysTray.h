#pragma once

#include "ports/NotificationArea.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tarvik {

/// What the icon in the notification area and its tip tell; any other value counts as the first.
enum class TrayState : std::uint8_t { NotMonitoring = 0, ActiveConnection = 1, NoConnection = 2 };

/// Adds the icon; false where the desktop shows none.
bool AddToSysTray(TrayState IconState, TrayState TipState);

/// Changes icon and tip. Asks the desktop for nothing when both are as they were.
bool ToggleSysTray(TrayState IconState, TrayState TipState);

/// A second line for the tip, none where it is empty, and a mark on the icon. Asks the desktop for
/// nothing when both are as they were.
void ShowPlanInSysTray(const std::string& Line, TrayMark Mark);

/// True while the icon stands in the notification area, where it can bring a hidden main window
/// back.
bool IsInSysTray();

/// The sign for information, and how long the program's notes are shown.
inline constexpr std::uint32_t informationIcon = 1;
inline constexpr std::uint32_t balloonMilliseconds = 10'000;

/// Shows a note beside the icon, or wherever the desktop shows notes, for so many milliseconds.
/// The text ends after 255 characters, the title after 63; a
/// carriage return separates lines. False where no note was shown.
bool ShowBalloonTip(const std::string& Text, const std::string& Title, std::uint32_t Icon,
                    std::uint32_t Timeout);

/// Shows such a note under the program's name.
bool Tell(const std::string& Text);

/// The same as soon as the desktop shows notes and the one before has had its time, which may be
/// later: for what the user must get to know, and no box may ask about, since nothing is counted
/// behind a box that nobody closes.
void TellSoon(const std::string& Text);
/// The same with a note that the user can answer.
void TellSoon(DesktopNote Note, std::function<void(int)> Answered);
/// Shows the next of those that wait, five seconds after the one before. Asks the desktop for
/// nothing when none waits.
void TellWhatWaits();

/// Removes the icon and unloads the form that owns it.
bool RemoveFromSysTray();

} // namespace tarvik
