#include "dialogs/clsFileDialog.h"

#include "controls/Form.h"
#include "ports/Platform.h"
#include "ports/Program.h"
#include "state/mdlTools.h"
#include "types/Text.h"

#include <algorithm>
#include <array>
#include <span>

namespace tarvik {

namespace {

constexpr std::size_t fileBufferSize = 2048;
constexpr std::size_t titleBufferSize = 260;
constexpr const char* errorSource = "clsFileDialg.ShowFileDialog";

struct LibraryText {
    std::uint32_t id;
    const char* text;
};

constexpr std::array<LibraryText, 17> dialogTexts{{
    {clsDialogError::cancelled, "The dialog was cancelled."},
    {0xFFFF, "The dialog could not be shown."},
    {0x0001, "The size of the dialog's record is not known."},
    {0x0002, "The dialog could not be set up."},
    {0x0003, "The dialog's template is missing."},
    {0x0004, "The instance of the program is missing."},
    {0x0005, "A text of the dialog could not be loaded."},
    {0x0006, "A resource of the dialog could not be found."},
    {0x0007, "A resource of the dialog could not be loaded."},
    {0x0008, "A resource of the dialog could not be locked."},
    {0x0009, "There is not enough memory for the dialog."},
    {0x000A, "The memory of the dialog could not be locked."},
    {0x000B, "The procedure that watches the dialog is missing."},
    {0x000C, "A message of the dialog could not be registered."},
    {0x3001, "The list of files could not be watched."},
    {0x3002, "The file name is not valid."},
    {0x3003, "Buffer too small.\r\nPlease select less files."},
}};

/// The texts of a library, whose name counts in any case; none for one that is not there.
std::span<const LibraryText> textsOf(const std::string& module) {
    return equalWithoutCase(module, dialogLibrary) ? std::span<const LibraryText>(dialogTexts)
                                                   : std::span<const LibraryText>();
}

/// The parts between NULs, up to the first empty one.
std::vector<std::string> partsOf(const std::string& buffer) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin < buffer.size();) {
        const std::size_t end = std::min(buffer.find('\0', begin), buffer.size());
        if (end == begin) {
            break;
        }
        parts.push_back(buffer.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

void* windowOf(const Form* owner) {
    const std::uintptr_t number = owner == nullptr ? 0 : owner->hWnd();
    return reinterpret_cast<void*>(number); // NOLINT: the desktop knows windows by their numbers
}

/// The folder of a full path, without the separator at its end unless it is a root.
std::string folderOf(const std::string& path, std::size_t separator) {
    const bool root = separator == 0 || path[separator - 1] == ':';
    return path.substr(0, separator + (root ? 1 : 0));
}

const char* textOrNull(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

} // namespace

void clsFileDialog::SetFlag(DialogFlag Flag, bool Value) {
    const auto bit = static_cast<std::uint32_t>(Flag);
    flags_ = Value ? flags_ | bit : flags_ & ~bit;
}

bool clsFileDialog::GetFlag(DialogFlag Flag) const {
    return (flags_ & static_cast<std::uint32_t>(Flag)) != 0;
}

void clsFileDialog::ShowOpen() {
    ShowFileDialog(&CommonDialogs::GetOpenFileNameA);
}

void clsFileDialog::ShowSave() {
    ShowFileDialog(&CommonDialogs::GetSaveFileNameA);
}

void clsFileDialog::ShowFileDialog(Show show) {
    guarded("ShowFileDialog", [&] {
        error_.Clear();
        if (FileName.size() >= fileBufferSize) {
            raiseCode(CommonDialogs::bufferTooSmall);
            return;
        }
        std::string filter = Filter + "||";
        std::replace(filter.begin(), filter.end(), '|', '\0');
        std::string file = FileName;
        file.resize(fileBufferSize, '\0');
        std::string title(titleBufferSize, '\0');

        OPENFILENAMEA data{};
        data.lStructSize = OPENFILENAMEA::size;
        data.hwndOwner = windowOf(Owner);
        data.lpstrFilter = Filter.empty() ? nullptr : filter.data();
        data.nFilterIndex = FilterIndex;
        data.lpstrFile = file.data();
        data.nMaxFile = fileBufferSize;
        data.lpstrFileTitle = title.data();
        data.nMaxFileTitle = titleBufferSize;
        data.lpstrInitialDir = textOrNull(InitDir);
        data.lpstrTitle = textOrNull(DialogTitle);
        data.lpstrDefExt = textOrNull(DefaultExt);
        data.Flags =
            flags_ |
            (MultiSelect ? static_cast<std::uint32_t>(DialogFlag::Flag_AllowMultiselect) : 0U);
        if ((platform().dialogs.*show)(&data, DlgPosit)) {
            FilterIndex = data.nFilterIndex;
            takeChoice(file, title);
        } else {
            takeFailure();
        }
    });
}

void clsFileDialog::takeChoice(const std::string& buffer, const std::string& title) {
    const std::vector<std::string> parts = partsOf(buffer);
    const char separator = platform().program.pathSeparator();
    FileList.clear();
    FileName = parts.empty() ? std::string() : parts.front();
    FileTitle = title.substr(0, title.find('\0'));
    if (MultiSelect && parts.size() > 1) {
        FilePath = parts.front();
        FileList.assign(parts.begin() + 1, parts.end());
        return;
    }
    const std::size_t end = FileName.rfind(separator);
    FilePath = end == std::string::npos ? std::string() : folderOf(FileName, end);
    if (FileTitle.empty()) {
        FileTitle = end == std::string::npos ? FileName : FileName.substr(end + 1);
    }
    if (MultiSelect) {
        FileList = {FileTitle};
    }
}

void clsFileDialog::takeFailure() {
    raiseCode(platform().dialogs.CommDlgExtendedError());
}

void clsFileDialog::raiseCode(std::uint32_t code) {
    const std::uint32_t number = code == 0 ? clsDialogError::cancelled : code;
    error_.Raise(number, errorSource, GetString(dialogLibrary, number), code);
}

std::string GetString(const std::string& Module, std::uint32_t Id) {
    return guarded("GetString", std::string(), [&](std::string& result) {
        const std::span<const LibraryText> texts = textsOf(Module);
        const auto found = std::find_if(texts.begin(), texts.end(),
                                        [&](const LibraryText& each) { return each.id == Id; });
        if (found != texts.end()) {
            result = found->text;
        }
    });
}

ScreenRect DlgPosit(const ScreenRect& Dialog, const ScreenRect& Owner) {
    return guarded("DlgPosit", Dialog, [&](ScreenRect& result) {
        if (Owner.width > 0 && Owner.height > 0) {
            result.left = Owner.left + (Owner.width - Dialog.width) / 2;
            result.top = Owner.top + (Owner.height - Dialog.height) / 2;
        }
    });
}

} // namespace tarvik
