#pragma once

#include <cstdint>
#include <functional>

namespace tarvik {

/// The record of an open or save dialog, in its oldest layout: 76 bytes where pointers have 32
/// bits. `lStructSize` is 76 everywhere.
struct OPENFILENAMEA {
    static constexpr std::uint32_t size = 76;
    std::uint32_t lStructSize;
    void* hwndOwner;
    void* hInstance;
    const char* lpstrFilter; ///< description, NUL, pattern, NUL, and so on; two NULs at the end
    char* lpstrCustomFilter;
    std::uint32_t nMaxCustFilter;
    std::uint32_t nFilterIndex; ///< in and out, 1 for the first
    char* lpstrFile;            ///< in: the proposed name; out: the chosen file or files
    std::uint32_t nMaxFile;
    char* lpstrFileTitle;
    std::uint32_t nMaxFileTitle;
    const char* lpstrInitialDir;
    const char* lpstrTitle;
    std::uint32_t Flags;
    std::uint16_t nFileOffset;
    std::uint16_t nFileExtension;
    const char* lpstrDefExt;
    void* lCustData;
    void* lpfnHook;
    const char* lpTemplateName;
};
static_assert(sizeof(void*) != 4 || sizeof(OPENFILENAMEA) == OPENFILENAMEA::size);

/// A rectangle on the screen, in its own units.
struct ScreenRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// Tells where a dialog goes, from its own rectangle and that of the window that owns it. Called
/// once, when the dialog is about to be seen.
using DialogPlacement =
    std::function<ScreenRect(const ScreenRect& dialog, const ScreenRect& owner)>;

/// The desktop's file dialogs. Both calls return when the dialog is closed; false when the user
/// cancelled or the dialog failed, which `CommDlgExtendedError` then tells apart.
class CommonDialogs {
public:
    /// The extended error of a selection that does not fit the file buffer; the needed size then
    /// stands in the buffer's first two bytes.
    static constexpr std::uint32_t bufferTooSmall = 0x3003;
    /// The extended error of a dialog that could not be shown at all.
    static constexpr std::uint32_t dialogFailure = 0xFFFF;

    virtual ~CommonDialogs() = default;

    virtual bool GetOpenFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) = 0;
    virtual bool GetSaveFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) = 0;

    /// 0 after a cancelled dialog, else why the last one failed.
    virtual std::uint32_t CommDlgExtendedError() = 0;
};

} // namespace tarvik
