#pragma once

#include "windows/services/SystemHeader.h"

#include <set>
#include <string>

struct IAccPropServices;

namespace tarvik::face {

/// What a screen reader says of windows whose own text does not tell it. A system without the
/// service says what it finds itself.
class AccessibleNames {
public:
    AccessibleNames() = default;
    ~AccessibleNames();
    AccessibleNames(const AccessibleNames&) = delete;
    AccessibleNames& operator=(const AccessibleNames&) = delete;

    /// Names a window; an empty name gives it back its own.
    void set(HWND window, const std::string& name);
    /// The window is about to end.
    void clear(HWND window);

private:
    IAccPropServices* services();

    IAccPropServices* services_ = nullptr;
    std::set<HWND> named_;
    bool tried_ = false;
    bool initialised_ = false;
};

} // namespace tarvik::face
