#pragma once

#include "ports/CommonDialogs.h"
#include "windows/services/Library.h"

namespace tarvik {

/// The system's file dialogs.
class WindowsCommonDialogs : public CommonDialogs {
public:
    bool GetOpenFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) override;
    bool GetSaveFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) override;
    std::uint32_t CommDlgExtendedError() override;

private:
    bool show(const char* function, OPENFILENAMEA* data, const DialogPlacement& place);

    Library library_{"comdlg32.dll"};
};

} // namespace tarvik
