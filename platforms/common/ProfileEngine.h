#pragma once

#include "common/CodePage.h"
#include "common/ProfileEdits.h"
#include "common/ProfileForm.h"
#include "common/ProfileText.h"
#include "ports/Files.h"
#include "ports/PrivateProfile.h"

#include <map>
#include <memory>
#include <string>

namespace tarvik {

/// Private-profile files over whole-file access. A file is read and indexed once and answers from
/// memory while its stamp is unchanged; each write, or each update of many writes, is one atomic
/// replacement. Whatever the program did not write survives byte for byte. A file of two bytes a
/// character stays one: only what goes in and out of it is converted.
///
/// A file that cannot be read has no keys for readers and is never written to; nor is one by an
/// update during which a key could not be read, for its writes may rest on what was read. A file
/// that had content and is empty counts as one that cannot be read: whoever emptied it is about to
/// write it. One that is longer than any log of this program's is refused before it is read, one of
/// more lines than such a log has before it is indexed; that, and that a large one does not fit the
/// memory, is remembered until the file changes. A write that would make a file one of those fails.
class ProfileEngine : public PrivateProfile {
public:
    /// Longest file that is read or written, bytes: millions of records. What is longer would hold
    /// up the window and fill the memory.
    static constexpr std::uint64_t longestFile = std::uint64_t{1} << 28U;
    /// Most line ends of a file: more than a log of that length has. An index may take far more
    /// memory than the file itself where its lines are short.
    static constexpr std::uint64_t mostLines = 20'000'000;
    /// Longest file that is read again after a shortage of memory, bytes: for more, there is hardly
    /// a chance, and each attempt holds up the window.
    static constexpr std::uint64_t longestRetried = std::uint64_t{1} << 24U;

    /// `lineEnd` is for files that have no line yet; files of more than `lines` line ends, or of
    /// more than `length` bytes, are refused.
    ProfileEngine(Files& files, std::string lineEnd, CodePage codePage = {},
                  std::uint64_t lines = mostLines, std::uint64_t length = longestFile);

    std::uint32_t GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                           std::string_view fallback, char* buffer,
                                           std::uint32_t size, const std::string& file) override;
    std::int32_t GetPrivateProfileIntA(std::string_view section, std::string_view key,
                                       std::int32_t fallback, const std::string& file) override;
    bool WritePrivateProfileStringA(std::string_view section, std::string_view key,
                                    std::string_view value, const std::string& file) override;
    bool WritePrivateProfileSectionA(std::string_view section, std::string_view lines,
                                     const std::string& file) override;
    bool beginReading(const std::string& file) override;
    void endReading() override;
    void release() override { forget(); }
    void beginUpdate(const std::string& file) override;
    UpdateOutcome commitUpdate() override;

private:
    /// A version of the file; nothing for no file.
    using Version = std::optional<FileStamp>;

    bool load(const std::string& file);
    bool loadUnlessReading(const std::string& file);
    bool reload(const std::string& file);
    bool readAnew(const std::string& file, const Version& stamp);
    bool isRefused(const std::string& file, const Version& stamp) const;
    void forget();
    std::optional<std::string_view> find(std::string_view section, std::string_view key,
                                         const std::string& file);
    std::optional<std::string_view> findInText(std::string_view section,
                                               std::string_view key) const;
    std::optional<std::string_view> findConverted(std::string_view section, std::string_view key);
    bool replaceBy(const std::string& file, const ProfileEdits& edits, const LastLook& stillRight);
    template <class Edit>
    bool write(const std::string& file, Edit&& edit);
    bool commit(const std::string& file, const ProfileEdits& edits);
    UpdateOutcome commitOnce(const std::string& file, const ProfileEdits& edits,
                             const std::optional<Version>& basis);
    void noteBasis();

    Files& files_;
    std::string lineEnd_;
    CodePage codePage_;
    std::uint64_t lines_;
    std::uint64_t length_;
    std::map<std::string, FileStamp> refused_; ///< by path: versions that are not tried again
    std::string file_;                         ///< whose text is in memory
    Version stamp_;                            ///< of that text
    std::unique_ptr<ProfileText> text_;        ///< null when nothing usable is in memory
    ProfileForm form_ = ProfileForm::Bytes;    ///< of its file; the text itself is never wide
    std::string converted_;                    ///< the value found last in a wide file
    bool reading_ = false; ///< that text stands for its file, whatever its stamp
    bool updating_ = false;
    bool blind_ = false; ///< a key of the file to update could not be read since the update began
    std::optional<Version> basis_; ///< which the update has read from; nothing before it reads
    bool overtaken_ = false;       ///< it has read from another one, too
    std::optional<std::uint64_t> filled_; ///< identity of the file last seen with content
    std::string updateFile_;
    ProfileEdits edits_;
};

} // namespace tarvik
