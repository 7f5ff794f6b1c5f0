#pragma once

#include "common/CodePage.h"

namespace tarvik {

/// The conversions of the system's own code page.
CodePage windowsCodePage();

} // namespace tarvik
