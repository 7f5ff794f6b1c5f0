#pragma once

#include "ports/Program.h"

#include <string>
#include <vector>

namespace tarvik {

/// The running program: its own folder where the user may write there, else a folder for the user's
/// data.
class LinuxProgram : public Program {
public:
    /// `arguments` without the program's name.
    explicit LinuxProgram(const std::vector<std::string>& arguments);

    std::string folder() override { return folder_; }
    char pathSeparator() override { return '/'; }
    std::string commandLine() override { return commandLine_; }
    bool launch(const std::string& path,
                const std::vector<std::pair<std::string, std::string>>& variables) override;

private:
    std::string folder_;
    std::string commandLine_;
};

/// Arguments as one text, to be cut at blanks outside quotes: those that hold a blank, or nothing,
/// stand in double quotes. That text knows no way to write a quote itself, so those that an
/// argument holds are left out; everything else comes back as it was given.
std::string joinedArguments(const std::vector<std::string>& arguments);

/// The folder for the user's data of this program; it need not exist.
std::string userDataFolder();

/// The user's own folder; "/" for a user without one.
std::string homeFolder();

} // namespace tarvik
