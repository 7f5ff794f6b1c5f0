#pragma once

#include "support/FaceMachine.h"
#include "windows/face/WindowsDesktop.h"

namespace tarvik {

using Win32Machine = FaceMachine<face::WindowsDesktop>;

} // namespace tarvik
