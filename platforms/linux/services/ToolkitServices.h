#pragma once

#include "linux/services/Greeting.h"

namespace tarvik {

/// The services that the toolkit greets while its application is made, and waits for without end:
/// the session bus, the bus of accessibility, the session manager, the input method. Made before
/// the application, this greets them all at once, and hides from this process those that do not
/// answer in 100 ms, all together: the window must come. One that answers later is taken for none
/// until the program is started again; which they are is written to the standard error.
class ToolkitServices {
public:
    explicit ToolkitServices(Patience patience = Patience());
};

} // namespace tarvik
