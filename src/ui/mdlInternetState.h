#pragma once

namespace tarvik {

// What the statistics window shows of the machine.

/// Shows how the machine is connected to the Internet.
void SetConnectedState();

/// Shows that a panel of the window was refreshed now.
void ShowTimeStamp();

} // namespace tarvik
