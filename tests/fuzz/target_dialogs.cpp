// File dialogs: any properties, and a desktop that leaves anything in the buffers.
//
// Input: bytes for options, answer and numbers; then filter, name, folder, title, extension, the
// title and the buffer that the desktop leaves.

#include "FuzzWorld.h"
#include "dialogs/clsFileDialog.h"
#include "history/mdlHistoryExport.h"
#include "types/Text.h"

#include <algorithm>
#include <cstring>

namespace tarvik::fuzz {
namespace {

using Texts = std::vector<std::string>;

/// Fills what it is given to the brim, without a NUL of its own.
class AnyDialogs : public CommonDialogs {
public:
    bool chosen = false;
    std::uint32_t error = 0;
    std::uint32_t filterIndex = 0;
    std::string buffer;
    std::string title;
    ScreenRect dialog;
    ScreenRect owner;
    std::string filterExpected;
    std::string nameExpected;

    bool GetOpenFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) override {
        require(data->lStructSize == 76, "the record tells its size");
        require(data->nMaxFile > 0 &&
                    nameExpected.compare(0, nameExpected.find('\0'), data->lpstrFile) == 0,
                "the name is proposed");
        require(listOf(data->lpstrFilter) == filterExpected, "the filters are handed on");
        const ScreenRect placed = place(dialog, owner);
        require(placed.width == dialog.width && placed.height == dialog.height,
                "a dialog keeps its size");
        buffer.resize(std::min<std::size_t>(buffer.size(), data->nMaxFile));
        buffer.copy(data->lpstrFile, data->nMaxFile);
        title.resize(std::min<std::size_t>(title.size(), data->nMaxFileTitle));
        title.copy(data->lpstrFileTitle, data->nMaxFileTitle);
        data->nFilterIndex = filterIndex;
        return chosen;
    }
    bool GetSaveFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) override {
        return GetOpenFileNameA(data, place);
    }
    std::uint32_t CommDlgExtendedError() override { return error; }

private:
    /// The texts up to an empty one, with "|" behind each, as a desktop reads them.
    static std::string listOf(const char* texts) {
        std::string list;
        while (texts != nullptr && *texts != '\0') {
            list.append(texts).append("|");
            texts += std::strlen(texts) + 1;
        }
        return list;
    }
};

/// What a desktop sees of such a filter: it ends at the first empty text.
std::string seenFilter(std::string filter) {
    std::replace(filter.begin(), filter.end(), '\0', '|');
    filter.insert(0, "|").append("||");
    return filter.substr(1, filter.find("||"));
}

/// The texts between NULs up to an empty one, cut one at a time.
Texts textsIn(std::string buffer, bool untouchedTail) {
    Texts texts;
    if (untouchedTail) {
        buffer += '\0';
    }
    while (!buffer.empty() && buffer.front() != '\0') {
        const std::size_t end = buffer.find('\0');
        texts.push_back(buffer.substr(0, end));
        if (end == std::string::npos || end + 1 == buffer.size()) {
            break;
        }
        buffer.erase(0, end + 1);
    }
    return texts;
}

class Dialog {
public:
    Dialog(FuzzWorld& fuzz, AnyDialogs& desktop) : fuzz_(fuzz), desktop_(desktop) {}

    void play(Input& input) {
        take(input);
        const std::uint32_t before = dialog_.FilterIndex;
        const std::string proposed = dialog_.FileName;
        dialog_.ShowOpen();
        const std::uint32_t number = dialog_.DialogError().Number();
        if (proposed.size() >= 2048) {
            require(number == CommonDialogs::bufferTooSmall, "a name that does not fit is told");
        } else if (!desktop_.chosen) {
            require(number == (desktop_.error == 0 ? 32755 : desktop_.error), "a failure is told");
            require(dialog_.FilterIndex == before && dialog_.FileName == proposed,
                    "a failure leaves the choice");
        } else {
            require(number == 0, "a choice is no error");
            checkChoice();
        }
        require(fuzz_.boxes.empty(), "a dialog raises no error");
    }

private:
    void take(Input& input) {
        desktop_.chosen = !input.flag();
        dialog_.MultiSelect = input.flag();
        desktop_.error = input.number();
        desktop_.filterIndex = input.number();
        for (int* value : {&desktop_.dialog.left, &desktop_.dialog.top, &desktop_.dialog.width,
                           &desktop_.dialog.height, &desktop_.owner.left, &desktop_.owner.top,
                           &desktop_.owner.width, &desktop_.owner.height}) {
            *value = static_cast<std::int16_t>(input.byte() << 8U | input.byte());
        }
        dialog_.Filter = input.text();
        dialog_.FileName = input.text();
        dialog_.InitDir = input.text();
        dialog_.DialogTitle = input.text();
        dialog_.DefaultExt = input.text();
        desktop_.title = input.text();
        desktop_.buffer = input.everything();
        desktop_.filterExpected = seenFilter(dialog_.Filter);
        desktop_.nameExpected = dialog_.FileName;
    }

    void checkChoice() {
        // What the desktop did not write over is the proposed name, which it may not leave.
        const bool full = desktop_.buffer.size() == 2048;
        if (desktop_.buffer.size() < desktop_.nameExpected.size()) {
            return;
        }
        const Texts texts = textsIn(desktop_.buffer, !full);
        require(dialog_.FilterIndex == desktop_.filterIndex, "the chosen filter is taken");
        if (dialog_.MultiSelect && texts.size() > 1) {
            require(dialog_.FilePath == texts[0], "the first text is the folder");
            require(dialog_.FileList == Texts(texts.begin() + 1, texts.end()),
                    "the others are the files");
        } else if (!full) {
            require(dialog_.FileName == (texts.empty() ? "" : texts[0]), "the first is the file");
        }
        for (const std::string& text : dialog_.FileList) {
            require(text.find('\0') == std::string::npos, "no name holds a NUL");
        }
        if (trimSpaces(dialog_.FileName).empty()) {
            return;
        }
        const std::string name = WithExportExtension(dialog_.FileName, 1);
        require(equalWithoutCase(name.substr(name.size() - 4), ".csv") && name.size() > 3,
                "an export has its extension");
        require(WithExportExtension(name, 1) == name, "an extension is added once");
    }

    FuzzWorld& fuzz_;
    AnyDialogs& desktop_;
    clsFileDialog dialog_;
};

void play(Input input) {
    FuzzWorld fuzz;
    AnyDialogs desktop;
    ScriptedPlatform& m = fuzz.machine;
    Platform platform{m.connections, m.systemErrors, m.internet,         m.sockets, m.profile,
                      m.files,       m.instances,    m.notificationArea, desktop,   m.desktop,
                      m.clock,       m.locale,       m.program};
    const PlatformScope scope(platform);
    Dialog(fuzz, desktop).play(input);
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
