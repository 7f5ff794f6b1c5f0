#pragma once

#include "ports/CommonDialogs.h"
#include "windows/services/Library.h"

namespace tarvik::face {

class WindowsDesktop;

/// The system's file dialogs. While one is open timers go on; what the user does elsewhere in the
/// program is refused. Before a file is overwritten the program asks itself: the system's own
/// question would show a name that turns the direction of writing as another one.
class WindowsCommonDialogs : public CommonDialogs {
public:
    explicit WindowsCommonDialogs(WindowsDesktop& desktop) : desktop_(desktop) {}

    bool GetOpenFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) override;
    bool GetSaveFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) override;
    std::uint32_t CommDlgExtendedError() override;

private:
    bool mayOverwrite(const OPENFILENAMEA& data);
    bool show(const char* function, OPENFILENAMEA* data, const DialogPlacement& place);

    WindowsDesktop& desktop_;
    Library library_{"comdlg32.dll"};
};

} // namespace tarvik::face
