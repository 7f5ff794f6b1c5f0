#include "history/mdlHistoryExport.h"

#include "dialogs/clsFileDialog.h"
#include "forms/Forms.h"
#include "history/mdlHistoryWork.h"
#include "ports/Desktop.h"
#include "ports/Files.h"
#include "ports/Locale.h"
#include "ports/OverwriteQuestion.h"
#include "ports/Platform.h"
#include "ports/Program.h"
#include "settings/DatedName.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "types/Convert.h"
#include "types/Text.h"
#include "ui/mdlGUIFigures.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace tarvik {

namespace {

constexpr std::string_view extension = ".csv";
constexpr std::uint32_t filterOfExports = 1;

void addLine(std::string& text, std::size_t place) {
    const ImportedHistory& log = forms().frmHistory.data.log;
    const LocaleData& locale = platform().locale.data();
    // Joined in place: texts in between would cost more than the digits.
    text += wholeToText(static_cast<std::int64_t>(place) + 1);
    const auto addField = [&](std::string_view field) {
        text += ';';
        text += field;
    };
    addField(log.date[place]);
    addField(log.time[place]);
    addField(FinaliseTime(log.duration[place]));
    addField(toText(log.sent[place], locale));
    addField(toText(log.rcvd[place], locale));
    addField(log.ip(place));
    text += "\r\n";
}

/// The whole file in pieces; nothing when the user has stopped it.
std::vector<std::string> piecesOfFile() {
    const std::size_t count = forms().frmHistory.data.log.sent.size();
    std::vector<std::string> pieces{"\"ID\";\"Date\";\"Time\";\"Duration\";"
                                    "\"Bytes sent\";\"Bytes rcvd\";\"IP address\"\r\n"};
    HistoryWork work(static_cast<std::int32_t>(count));
    for (std::size_t place = 0; place < count;) {
        const std::size_t end = std::min(place + HistoryWork::stride, count);
        std::string& piece = pieces.emplace_back();
        for (; place < end; ++place) {
            addLine(piece, place);
        }
        if (!work.goOn(static_cast<std::int32_t>(place))) {
            return {};
        }
    }
    return pieces;
}

/// Raises the error that writing ended with.
void write(const std::string& file, const std::vector<std::string>& pieces) {
    const std::vector<std::string_view> parts(pieces.begin(), pieces.end());
    FileResult result;
    // Even a disk that takes its time leaves the windows alive.
    platform().desktop.runBlocking([&] { result = platform().files.replace(file, parts); });
    if (result) {
        raise(*result);
    }
}

/// Whether the file may be written. The dialog has asked about the name that was chosen; where the
/// extension makes another of it, and there is such a file, nobody has asked yet.
bool mayReplace(const std::string& name, const std::string& chosen) {
    const FileKind there = platform().files.Dir(name);
    if (name == chosen || there == FileKind::None || there == FileKind::Directory) {
        return true; // a directory is not replaced, which writing tells
    }
    const MsgBoxRequest question = overwriteQuestion(nameWithoutFolder(name));
    return platform().desktop.messageBox(question) == MsgBoxAnswer::Yes;
}

} // namespace

std::optional<std::string> ChooseExportFile() {
    clsFileDialog dialog;
    for (const DialogFlag flag :
         {DialogFlag::Flag_Explorer, DialogFlag::Flag_NoChangeDir, DialogFlag::Flag_HideReadOnly,
          DialogFlag::Flag_OverwritePrompt}) {
        dialog.SetFlag(flag, true);
    }
    dialog.Filter = "CSV files *.csv|*.csv|All files *.*|*.*";
    dialog.DialogTitle = "Export history as CSV...";
    dialog.InitDir = platform().program.folder();
    dialog.Owner = &forms().frmHistory;
    dialog.ShowSave();
    // Who does not want a file replaced chooses another name, as where the dialog has asked.
    while (dialog.DialogError().Number() == 0) {
        std::string name = WithExportExtension(dialog.FileName, dialog.FilterIndex);
        if (mayReplace(name, dialog.FileName)) {
            return name;
        }
        dialog.ShowSave();
    }
    if (dialog.DialogError().Number() != clsDialogError::cancelled) {
        MsgBox("Assertion failure in function \"cmdExport_Click\".", MsgBoxButtons::OkOnly,
               MsgBoxIcon::Exclamation);
    }
    return std::nullopt;
}

std::string WithExportExtension(const std::string& Name, std::uint32_t FilterIndex) {
    std::string name(trimSpaces(Name));
    const bool hasName = name.size() > extension.size();
    const bool complete =
        hasName &&
        equalWithoutCase(std::string_view(name).substr(name.size() - extension.size()), extension);
    if (FilterIndex == filterOfExports && !complete) {
        name += extension;
    }
    return name;
}

bool ExportRecords(const std::string& FileName) {
    if (forms().frmHistory.data.log.sent.empty()) {
        raise(ErrorNumber::SubscriptOutOfRange);
    }
    const std::vector<std::string> pieces = piecesOfFile();
    if (!pieces.empty()) {
        write(FileName, pieces);
    }
    return !pieces.empty();
}

} // namespace tarvik
