#pragma once

#include "ports/Files.h"

#include <memory>
#include <string>
#include <vector>

namespace tarvik {

/// Files of one implementation in an empty folder, with what the world around them does to it.
class FilesUnderTest {
public:
    virtual ~FilesUnderTest() = default;

    virtual Files& files() = 0;
    /// The same files as another program has them.
    virtual Files& others() = 0;
    /// The same files for a program whose home is that folder.
    virtual Files& withHome(const std::string& home) = 0;

    virtual const std::string& folder() const = 0;
    virtual char separator() const = 0;
    virtual const char* lineEnd() const = 0;
    /// What lies in the folder in the order of the names, hidden ones too.
    virtual std::vector<std::string> names() const = 0;
    /// Something that is neither file nor directory.
    virtual std::string device() const = 0;
    /// What the system tells of a path into a folder that is not there.
    virtual ErrorNumber missingFolder() const = 0;

    virtual void makeFolder(const std::string& path) = 0;
    virtual void makeReadOnly(const std::string& path) = 0;
    /// Only the owner may read the file from now on.
    virtual void makePrivate(const std::string& path) = 0;
    virtual bool isPrivate(const std::string& path) const = 0;
    /// Gives the file a second name; false where none can be given.
    virtual bool giveSecondName(const std::string& path, const std::string& name) = 0;
    /// Another program writes into the file as it lies there.
    virtual void writeInPlace(const std::string& path, const std::string& bytes) = 0;

    /// A name that a new file has until it is put in place, and names that only look like one.
    virtual std::string temporaryName() const = 0;
    virtual std::vector<std::string> similarNames() const = 0;
    /// Another program begins to write under that temporary name; it breaks off where what is
    /// returned ends, and leaves the file.
    virtual std::shared_ptr<void> beginWriting(const std::string& path) = 0;
};

/// Those of the platform that this program of tests is for.
std::unique_ptr<FilesUnderTest> filesUnderTest();

} // namespace tarvik
