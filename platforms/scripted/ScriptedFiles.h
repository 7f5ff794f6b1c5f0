#pragma once

#include "ports/Files.h"

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tarvik {

/// Files in memory, with failures on demand.
class ScriptedFiles : public Files {
public:
    /// Puts a file there, as another program would.
    void setFile(const std::string& path, std::string bytes);
    /// Puts a directory, or something that is neither file nor directory, there.
    void setKind(const std::string& path, FileKind kind);
    /// Forbids reading or writing a file that is there; a new `setFile` allows both again.
    void setUnreadable(const std::string& path);
    void setReadOnly(const std::string& path);
    /// Only its owner may read the file; what is made of it is private too.
    void setPrivate(const std::string& path);
    bool isPrivate(const std::string& path) const;
    /// The file that is there has a second name elsewhere.
    void setTwoNames(const std::string& path);
    /// Another program writes a new file, which is not in its place yet, and leaves it there.
    void beginWriting(const std::string& path);
    void breakOff(const std::string& path);
    /// Takes away whatever is there.
    void remove(const std::string& path);
    /// The file's bytes; empty when there is none.
    std::string file(const std::string& path) const;
    bool exists(const std::string& path) const;
    /// What lies in a folder, in the order of the names.
    std::vector<std::string> namesIn(const std::string& folder) const;

    /// Folders that are not there; every other one is.
    std::set<std::string> missingFolders;
    /// The folder that is made when something is first written there.
    std::string home;
    /// How many files somebody holds.
    int held() const;

    /// What other programs do: asked with a port operation's name and its path before the
    /// operation, and with "LastLook" before what a replacement asks last, if it asks anything.
    std::function<void(const std::string& operation, const std::string& path)> meanwhile;

    /// Every replacement fails with this, until it is nothing again.
    FileResult replaceFailure;
    /// So many replacements still succeed before `replaceFailure` holds.
    int replacementsLeft = 0;
    /// Every replacement is done and reports this all the same, until it is nothing again.
    FileResult lateFailure;
    /// Every read fails with this, until it is nothing again.
    FileResult readFailure;
    /// Every deletion fails with this, until it is nothing again.
    FileResult killFailure;
    /// Every wish to hold a file, every write in place and every flush ends so, until it is nothing
    /// again.
    FileResult holdFailure;
    /// Every flush ends so, until it is nothing again; what it was to bring to the disk is taken
    /// for clean then, and no later flush brings it there.
    FileResult flushFailure;
    /// Another process holds every file.
    bool heldElsewhere = false;

    /// Takes away what was written in place and never flushed. Of each file `kept` tells how many
    /// bytes of it, from its beginning, reached the disk all the same.
    void cutPower(std::size_t kept = 0);

    /// Somebody cuts a file off, also one that is held.
    void cutOff(const std::string& path, std::size_t size) { nodes_.at(path).bytes.resize(size); }
    /// What lies there is what lay there then, as if nobody had done anything since. Stamps are not
    /// given a second time.
    void goBackTo(const ScriptedFiles& then);
    /// Whoever held a file has ended.
    void letAllGo();

    int writesInPlace = 0;
    int flushes = 0;

    int reads = 0;
    int replacements = 0;

    FileKind Dir(const std::string& path) override;
    std::optional<FileStamp> stamp(const std::string& path) override;
    FileResult read(const std::string& path, std::string& bytes) override;
    FileResult replaceIf(const std::string& path, const std::vector<std::string_view>& pieces,
                         const LastLook& stillRight) override;
    FileResult FileCopy(const std::string& source, const std::string& target) override;
    FileResult Name(const std::string& path, const std::string& newPath) override;
    FileResult Kill(const std::string& path) override;
    Holding hold(const std::string& path) override;
    Holding holdOrMake(const std::string& path, std::size_t size, const std::string& like) override;

private:
    class Held;
    FileKind kindOf(const std::string& path) const;
    bool isMissing(const std::string& folder) const { return missingFolders.contains(folder); }
    ErrorNumber absence(const std::string& path) const;
    FileResult whyNotReplaced(const std::string& path);
    /// The folder is there, the home by now at the latest.
    bool hasFolder(const std::string& folder);
    bool isStillRight(const std::string& path, const LastLook& stillRight);
    void sweepUp(const std::string& folder);
    void tell(const std::string& operation, const std::string& path);

    struct Node {
        FileKind kind = FileKind::File;
        std::string bytes;
        std::int64_t version = 0;
        bool unreadable = false;
        bool readOnly = false;
        bool isPrivate = false;
        bool isNew = false;     ///< not in its place yet
        bool isWritten = false; ///< a program is at it
        bool held = false;
        bool hasTwoNames = false;
        std::string flushed; ///< of a file that was held: what a power cut leaves
        bool unflushed = false;
        bool takenForClean = false; ///< what no flush brings to the disk any more
    };

    std::map<std::string, Node> nodes_;
    std::int64_t version_ = 0;
    std::string deleted_;
    bool deletedWasPrivate_ = false;
};

} // namespace tarvik
