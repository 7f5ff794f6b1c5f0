#include "settings/mdlSettings.h"

#include "ports/CommonDialogs.h"
#include "ports/Platform.h"
#include "ports/Program.h"
#include "startup/mdlTools.h"

#include <array>

namespace tarvik {

namespace {

// Explorer style, read-only box hidden and ticked, the file must exist, the current folder stays.
constexpr std::uint32_t openFlags = 0x8100D;
constexpr char filter[] = "INI files *.ini\0*.ini\0All files *.*\0*.*\0";

ScreenRect centredOver(const ScreenRect& dialog, const ScreenRect& owner) {
    return {.left = owner.left + (owner.width - dialog.width) / 2,
            .top = owner.top + (owner.height - dialog.height) / 2,
            .width = dialog.width,
            .height = dialog.height};
}

} // namespace

std::string ShowIniFileDialog() {
    return guarded("ShowIniFileDialog", std::string(), [](std::string& result) {
        const std::string folder = platform().program.folder();
        std::array<char, 2048> file{};
        std::array<char, 260> title{};
        OPENFILENAMEA data{};
        data.lStructSize = OPENFILENAMEA::size;
        data.lpstrFilter = filter;
        data.nFilterIndex = 1;
        data.lpstrFile = file.data();
        data.nMaxFile = file.size();
        data.lpstrFileTitle = title.data();
        data.nMaxFileTitle = title.size();
        data.lpstrInitialDir = folder.c_str();
        data.lpstrTitle = "Import history...";
        data.Flags = openFlags;
        if (platform().dialogs.GetOpenFileNameA(&data, centredOver)) {
            result = file.data();
        } else if (platform().dialogs.CommDlgExtendedError() != 0) {
            MsgBox("Assertion failure in function \"ShowIniFileDialog\".", MsgBoxButtons::OkOnly,
                   MsgBoxIcon::Exclamation);
        }
    });
}

} // namespace tarvik
