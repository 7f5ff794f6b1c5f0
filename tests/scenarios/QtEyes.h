#pragma once

#include <QSize>

#include <map>
#include <string>

class QWidget;

namespace tarvik::scenarios {

/// Looks at the windows as a person does and notes what is wrong with them.
class QtEyes {
public:
    /// Looks at the sizes of all windows, to know them again.
    void remember();
    /// Looks again: what a user does in a window does not change the size of any.
    void compare();

    /// Everything noted since the last call, and what is wrong with the windows that are seen now:
    /// texts that are cut, and disabled ones that do not look so. Empty when nothing is.
    std::string complaints();

private:
    std::map<const QWidget*, QSize> sizes_;
    std::string noted_;
};

} // namespace tarvik::scenarios
