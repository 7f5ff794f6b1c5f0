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

/// Options of a file dialog, each one bit of its record's `Flags`.
enum class DialogFlag : std::uint32_t {
    Flag_ReadOnly = 0x1,
    Flag_OverwritePrompt = 0x2,
    Flag_HideReadOnly = 0x4,
    Flag_NoChangeDir = 0x8,
    Flag_HelpButton = 0x10,
    Flag_NoValidate = 0x100,
    Flag_AllowMultiselect = 0x200,
    Flag_ExtensionDifferent = 0x400,
    Flag_PathMustExist = 0x800,
    Flag_FileMustExist = 0x1000,
    Flag_CreatePrompt = 0x2000,
    Flag_ShareAware = 0x4000,
    Flag_NoReadOnlyReturn = 0x8000,
    Flag_NoNetworkButton = 0x20000,
    Flag_NoLongNames = 0x40000,
    Flag_Explorer = 0x80000,
    Flag_NoDereferenceLinks = 0x100000,
    Flag_LongNames = 0x200000,
};

inline bool has(const OPENFILENAMEA& data, DialogFlag flag) {
    return (data.Flags & static_cast<std::uint32_t>(flag)) != 0;
}

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
