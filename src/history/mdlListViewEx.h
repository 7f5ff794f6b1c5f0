#pragma once

#include "controls/ListView.h"

namespace tarvik {

/// Whether the headers of the list look and work like buttons.
void SetSortHeader(ListView& List, bool Clickable);

/// Makes all columns as wide as their headers if `FitHeader`, else as wide as what they hold.
void SetOptimalHeaderWidth(ListView& List, bool FitHeader);

} // namespace tarvik
