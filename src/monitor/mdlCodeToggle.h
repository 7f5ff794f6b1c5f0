#pragma once

namespace tarvik {

/// Switches monitoring on or off. While a connection is up, switching off is asked about first and
/// may be declined.
void ToggleMonitoringActive(bool Activate);

} // namespace tarvik
