#pragma once

#include "ports/Program.h"

#include <string>

namespace tarvik {

/// The running program: its own folder where the user may write there, else a folder for the user's
/// data.
class WindowsProgram : public Program {
public:
    WindowsProgram();

    std::string folder() override { return folder_; }
    char pathSeparator() override { return '\\'; }
    std::string commandLine() override { return commandLine_; }
    /// Programs are files whose names end in .exe or .com. One that asks for more rights than this
    /// process has is not started.
    bool launch(const std::string& path,
                const std::vector<std::pair<std::string, std::string>>& variables) override;

private:
    std::string folder_;
    std::string commandLine_;
};

/// A path as bytes of the system's code page. One that has characters beyond it is told by the
/// short names that the system keeps, where there are any.
std::string codePagePath(const std::wstring& path);

/// The folder of a full path; with the separator only for the root of a drive.
std::string folderOfPath(const std::string& path);

/// What follows the program's name in a whole command line.
std::string argumentsOf(const std::string& wholeLine);

/// True when a file can be made in that folder.
bool canWriteIn(const std::string& folder);

} // namespace tarvik
