#pragma once

#include "ports/CommonDialogs.h"

#include <QStringList>

namespace tarvik::face {

class QtDesktop;

/// The file dialogs of the toolkit itself, on every desktop: those show names as they are.
///
/// Of the option word the following have an equivalent: more than one file, the file must exist
/// (its path always must), asking before overwriting, links themselves instead of what they lead
/// to. The dialogs know no box for read-only files, no help button and no network button; they
/// never change the current folder. Of the options that a dialog returns, the one for another
/// extension is set.
class LinuxCommonDialogs : public CommonDialogs {
public:
    explicit LinuxCommonDialogs(QtDesktop& desktop) : desktop_(desktop) {}

    bool GetOpenFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) override;
    bool GetSaveFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) override;
    std::uint32_t CommDlgExtendedError() override { return error_; }

private:
    bool show(OPENFILENAMEA& data, const DialogPlacement& place, bool open);
    /// False where the files do not fit the buffer.
    bool takeFiles(const QStringList& files, OPENFILENAMEA& data);

    QtDesktop& desktop_;
    std::uint32_t error_ = 0;
};

} // namespace tarvik::face
