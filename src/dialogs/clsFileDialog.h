#pragma once

#include "dialogs/clsDialogError.h"
#include "ports/CommonDialogs.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvik {

class Form;

/// The desktop's dialog for opening or saving a file. Set the properties, show it, then ask
/// `DialogError` whether a file was chosen.
class clsFileDialog {
public:
    std::string DialogTitle;
    /// Pairs of description and pattern, all separated by "|".
    std::string Filter;
    /// The selected filter, 1 for the first; afterwards the one that the user chose.
    std::uint32_t FilterIndex = 1;
    std::string InitDir;
    /// Added when the user types none.
    std::string DefaultExt;
    /// Full path: the proposed one, afterwards the chosen one.
    std::string FileName;
    /// Afterwards: folder and name of the chosen file.
    std::string FilePath;
    std::string FileTitle;
    /// More than one file may be chosen; they are then in `FileList`, names without the folder.
    bool MultiSelect = false;
    std::vector<std::string> FileList;
    /// Whether the caller counts a cancelled dialog as an error. It is recorded in `DialogError`
    /// either way.
    bool CancelError = false;
    /// The window that the dialog stands before; null for none.
    const Form* Owner = nullptr;

    /// Sets or clears one option.
    void SetFlag(DialogFlag Flag, bool Value);
    bool GetFlag(DialogFlag Flag) const;
    /// All options in one word.
    std::uint32_t Flags() const { return flags_; }

    void ShowOpen();
    void ShowSave();
    /// How the last call ended; number 0 when a file was chosen.
    const clsDialogError& DialogError() const { return error_; }

private:
    using Show = bool (CommonDialogs::*)(OPENFILENAMEA*, const DialogPlacement&);

    void ShowFileDialog(Show show);
    void takeChoice(const std::string& buffer, const std::string& title);
    void takeFailure();
    /// Records what the desktop's code means; 0 is a cancelled dialog.
    void raiseCode(std::uint32_t code);

    std::uint32_t flags_ = 0;
    clsDialogError error_;
};

/// The library whose texts explain the errors of a file dialog, by their numbers.
inline constexpr const char* dialogLibrary = "CMDLGDE.DLL";

/// A message text of a resource library; empty when there is no such library or no such text in it.
/// The program brings its one library, `dialogLibrary`, along as a table: nothing is loaded from
/// the machine.
std::string GetString(const std::string& Module, std::uint32_t Id);

/// Places a dialog in the middle of the window that owns it; where nobody owns it, it stays.
ScreenRect DlgPosit(const ScreenRect& Dialog, const ScreenRect& Owner);

} // namespace tarvik
