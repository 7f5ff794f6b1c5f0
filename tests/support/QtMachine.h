#pragma once

#include "linux/face/QtDesktop.h"
#include "support/FaceMachine.h"

namespace tarvik {

using QtMachine = FaceMachine<face::QtDesktop>;

} // namespace tarvik
