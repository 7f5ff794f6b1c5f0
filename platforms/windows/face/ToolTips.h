#pragma once

#include "windows/services/SystemHeader.h"

#include <string>

namespace tarvik::face {

/// The window that shows the tool tips of one form's controls.
class ToolTips {
public:
    explicit ToolTips(HWND form);
    ~ToolTips();
    ToolTips(const ToolTips&) = delete;
    ToolTips& operator=(const ToolTips&) = delete;

    /// Gives a control its tip; an empty one takes it away.
    void set(HWND control, const std::string& tip);
    /// Breaks the lines at that width, pixels.
    void setWidth(int width);

    HWND window() const { return tips_; }

private:
    HWND form_;
    HWND tips_;
};

} // namespace tarvik::face
