#pragma once

#include "ports/CommonDialogs.h"
#include "ports/Desktop.h"

#include <memory>
#include <string>
#include <vector>

namespace tarvik {

/// The file dialogs of one implementation, with a user in front of them.
class DialogsUnderTest {
public:
    virtual ~DialogsUnderTest() = default;

    virtual CommonDialogs& dialogs() = 0;
    /// The full path of that name in a folder that is there.
    virtual std::string path(const std::string& name) const = 0;
    virtual void makeFile(const std::string& path) = 0;

    // What the user does at the next dialog.
    virtual void cancelNext() = 0;
    /// He enters that path and confirms it; if he is asked anything then, he gives that answer, and
    /// cancels a dialog that is open still or comes again.
    virtual void chooseNext(const std::string& path, MsgBoxAnswer answer) = 0;
    /// The title of the last dialog.
    virtual std::string title() const = 0;
    /// What he was asked.
    virtual std::vector<std::string> questions() const = 0;
};

/// Those of the platform that this program of tests is for.
std::unique_ptr<DialogsUnderTest> dialogsUnderTest();

} // namespace tarvik
