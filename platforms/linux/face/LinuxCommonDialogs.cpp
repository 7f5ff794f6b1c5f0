#include "linux/face/LinuxCommonDialogs.h"

#include "linux/face/FaceText.h"
#include "linux/face/FileDialogNames.h"
#include "linux/face/QtDesktop.h"
#include "ports/OverwriteQuestion.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik::face {

namespace {

/// The texts of a list that ends with an empty one.
std::vector<std::string> textsOf(const char* list) {
    std::vector<std::string> texts;
    while (list != nullptr && *list != '\0') {
        texts.emplace_back(list);
        list += texts.back().size() + 1;
    }
    return texts;
}

/// The patterns as this desktop writes them; names without an ending belong to "all files" here.
QString patternsOf(const std::string& pattern) {
    QStringList patterns = shown(pattern).split(QLatin1Char(';'), Qt::SkipEmptyParts);
    patterns.replaceInStrings(QStringLiteral("*.*"), QStringLiteral("*"));
    return patterns.join(QLatin1Char(' '));
}

QStringList nameFiltersOf(const OPENFILENAMEA& data) {
    const std::vector<std::string> texts = textsOf(data.lpstrFilter);
    QStringList filters;
    for (std::size_t i = 0; i + 1 < texts.size(); i += 2) {
        filters << shown(texts[i]) + QStringLiteral(" (") + patternsOf(texts[i + 1]) +
                       QLatin1Char(')');
    }
    return filters;
}

QString pathOf(const char* bytes) {
    return bytes == nullptr ? QString() : QFile::decodeName(bytes);
}

/// A dialog that stays open where the file that was chosen is not to be replaced. The toolkit's own
/// question would show a line break in a name as one of its text.
class AskingDialog : public QFileDialog {
public:
    AskingDialog(QtDesktop& desktop, QWidget* owner, bool asks)
        : QFileDialog(owner), desktop_(desktop), asks_(asks) {}

protected:
    void done(int result) override {
        if (result != QDialog::Accepted || !asks_ || mayReplace(selectedFiles().value(0))) {
            QFileDialog::done(result);
        }
    }

private:
    bool mayReplace(const QString& path) {
        const QFileInfo file(path);
        if (!file.exists()) {
            return true;
        }
        const QPointer<QFileDialog> open = this;
        const MsgBoxAnswer answer =
            desktop_.askInDialog(overwriteQuestion(entered(file.fileName())));
        return !open.isNull() && answer == MsgBoxAnswer::Yes;
    }

    QtDesktop& desktop_;
    bool asks_;
};

void setOptions(QFileDialog& dialog, const OPENFILENAMEA& data, bool open) {
    identify(dialog, "fileDialog");
    dialog.setAcceptMode(open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(!open                                          ? QFileDialog::AnyFile
                       : has(data, DialogFlag::Flag_AllowMultiselect) ? QFileDialog::ExistingFiles
                       : has(data, DialogFlag::Flag_FileMustExist)    ? QFileDialog::ExistingFile
                                                                      : QFileDialog::AnyFile);
    // The desktop's dialog would show names in its own way, and what is done to the toolkit's own
    // would go unseen.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setOption(QFileDialog::DontResolveSymlinks,
                     has(data, DialogFlag::Flag_NoDereferenceLinks));
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setDefaultSuffix(pathOf(data.lpstrDefExt));
    if (data.lpstrTitle != nullptr) {
        dialog.setWindowTitle(shown(data.lpstrTitle));
    }
    if (data.lpstrInitialDir != nullptr) {
        dialog.setDirectory(pathOf(data.lpstrInitialDir));
    }
    const QStringList filters = nameFiltersOf(data);
    dialog.setNameFilters(filters);
    const auto wanted = static_cast<qsizetype>(data.nFilterIndex) - 1;
    if (wanted >= 0 && wanted < filters.size()) {
        dialog.selectNameFilter(dialog.nameFilters().at(wanted));
    }
    if (data.lpstrFile != nullptr && *data.lpstrFile != '\0') {
        dialog.selectFile(pathOf(data.lpstrFile));
    }
}

ScreenRect rectOf(const QRect& rect) {
    return {.left = rect.left(), .top = rect.top(), .width = rect.width(), .height = rect.height()};
}

void placeDialog(QFileDialog& dialog, const DialogPlacement& place) {
    const QWidget* owner = dialog.parentWidget();
    const QRect own(dialog.pos(), dialog.size().expandedTo(dialog.sizeHint()));
    const ScreenRect chosen =
        place(rectOf(own), owner == nullptr ? ScreenRect{} : rectOf(owner->frameGeometry()));
    if (owner != nullptr) {
        dialog.setGeometry(chosen.left, chosen.top, chosen.width, chosen.height);
    }
}

/// The number of the chosen filter, 1 for the first; 0 for none. The dialog may tell it without its
/// patterns, as it shows it.
std::uint32_t selectedFilter(const QFileDialog& dialog) {
    const QString chosen = dialog.selectedNameFilter();
    const QStringList filters = dialog.nameFilters();
    const QString patterns = QStringLiteral(" (");
    for (qsizetype i = 0; i < filters.size(); ++i) {
        if (filters[i] == chosen || filters[i].left(filters[i].lastIndexOf(patterns)) == chosen) {
            return static_cast<std::uint32_t>(i + 1);
        }
    }
    return 0;
}

/// Folder and names, or the one path, each with a NUL behind it and one more at the end.
std::string bufferFor(const QStringList& files, bool several) {
    std::string buffer;
    const auto append = [&](const QString& text) {
        const QByteArray bytes = QFile::encodeName(text);
        buffer.append(bytes.constData(), static_cast<std::size_t>(bytes.size()) + 1);
    };
    if (several) {
        append(QFileInfo(files.front()).absolutePath());
        for (const QString& file : files) {
            append(QFileInfo(file).fileName());
        }
    } else {
        append(files.front());
    }
    return buffer + '\0';
}

void writePlaces(const std::string& path, OPENFILENAMEA& data) {
    const std::size_t name = path.rfind('/') + 1;
    const std::size_t dot = path.rfind('.');
    data.nFileOffset = static_cast<std::uint16_t>(name);
    data.nFileExtension =
        static_cast<std::uint16_t>(dot == std::string::npos || dot < name ? 0 : dot + 1);
    const std::string extension = data.nFileExtension == 0 ? "" : path.substr(dot + 1);
    if (data.lpstrDefExt != nullptr && extension != data.lpstrDefExt) {
        data.Flags |= static_cast<std::uint32_t>(DialogFlag::Flag_ExtensionDifferent);
    }
}

} // namespace

bool LinuxCommonDialogs::GetOpenFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) {
    return show(*data, place, true);
}

bool LinuxCommonDialogs::GetSaveFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) {
    return show(*data, place, false);
}

bool LinuxCommonDialogs::show(OPENFILENAMEA& data, const DialogPlacement& place, bool open) {
    error_ = 0;
    const auto owner = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(data.hwndOwner));
    // The owner takes the dialog along if it goes meanwhile.
    const QPointer<QFileDialog> dialog = new AskingDialog(
        desktop_, desktop_.ownerOf(owner), !open && has(data, DialogFlag::Flag_OverwritePrompt));
    setOptions(*dialog, data, open);
    showNamesPlainly(*dialog);
    placeDialog(*dialog, place);
    const bool accepted = desktop_.runDialog(*dialog);
    if (dialog.isNull()) {
        return false;
    }
    const QStringList files = dialog->selectedFiles();
    const std::uint32_t filterIndex = selectedFilter(*dialog);
    delete dialog.data();
    if (!accepted || files.isEmpty()) {
        return false;
    }
    data.nFilterIndex = filterIndex;
    return takeFiles(files, data);
}

bool LinuxCommonDialogs::takeFiles(const QStringList& files, OPENFILENAMEA& data) {
    const bool several = has(data, DialogFlag::Flag_AllowMultiselect) && files.size() > 1;
    const std::string buffer = bufferFor(files, several);
    if (buffer.size() > data.nMaxFile) {
        // The needed size stands in the first two bytes, the lower one first.
        if (data.nMaxFile >= 2) {
            const auto needed =
                static_cast<std::uint16_t>(std::min<std::size_t>(buffer.size(), 0xFFFF));
            data.lpstrFile[0] = static_cast<char>(needed & 0xFFU);
            data.lpstrFile[1] = static_cast<char>(needed >> 8U);
        }
        error_ = bufferTooSmall;
        return false;
    }
    buffer.copy(data.lpstrFile, buffer.size());
    if (several) {
        data.nFileOffset = static_cast<std::uint16_t>(buffer.find('\0') + 1);
        return true;
    }
    const std::string path = buffer.substr(0, buffer.find('\0'));
    writePlaces(path, data);
    if (data.lpstrFileTitle != nullptr && data.nMaxFileTitle > 0) {
        const std::string title = path.substr(data.nFileOffset);
        const std::size_t length = title.copy(data.lpstrFileTitle, data.nMaxFileTitle - 1);
        data.lpstrFileTitle[length] = '\0';
    }
    return true;
}

} // namespace tarvik::face
