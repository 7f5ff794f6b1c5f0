#pragma once

#include "controls/Controls.h"
#include "state/mdlVar.h"
#include "types/Currency.h"

#include <string>

namespace tarvik {

/// Writes the value boxes: the totals, the current session, or zero for the current session.
void UpdateValuesInGUI(bool ShowTotal, bool ShowCurrent, bool ResetCurrent);

/// Scales bytes to the unit chosen for the current session or for the totals.
double FinaliseTransfer(double Value, bool Current);

/// Milliseconds as hours:minutes:seconds:milliseconds; the hours grow beyond two digits.
std::string FinaliseTime(Currency Duration);

/// Writes the unit behind the prefix: "(bytes):" and so on. Any other unit changes nothing.
void SetLabelUnitTransfer(Label& Caption, const std::string& Prefix, TransferUnit Unit);

} // namespace tarvik
