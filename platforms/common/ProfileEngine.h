#pragma once

#include "common/ProfileEdits.h"
#include "common/ProfileText.h"
#include "ports/Files.h"
#include "ports/PrivateProfile.h"

#include <memory>
#include <string>

namespace tarvik {

/// Private-profile files over whole-file access. A file is read and indexed once and answers from
/// memory while its stamp is unchanged; each write, or each update of many writes, is one atomic
/// replacement. Whatever the program did not write survives byte for byte.
///
/// A file that cannot be read, or is written in a form of two bytes a character, has no keys for
/// readers and is never written to; nor is one by an update during which a key could not be read,
/// for its writes may rest on what was read.
class ProfileEngine : public PrivateProfile {
public:
    /// `lineEnd` is for files that have no line yet.
    ProfileEngine(Files& files, std::string lineEnd);

    std::uint32_t GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                           std::string_view fallback, char* buffer,
                                           std::uint32_t size, const std::string& file) override;
    std::int32_t GetPrivateProfileIntA(std::string_view section, std::string_view key,
                                       std::int32_t fallback, const std::string& file) override;
    bool WritePrivateProfileStringA(std::string_view section, std::string_view key,
                                    std::string_view value, const std::string& file) override;
    bool WritePrivateProfileSectionA(std::string_view section, std::string_view lines,
                                     const std::string& file) override;
    void beginReading(const std::string& file) override;
    void endReading() override;
    void beginUpdate(const std::string& file) override;
    bool commitUpdate() override;

private:
    bool load(const std::string& file);
    bool loadUnlessReading(const std::string& file);
    bool reload(const std::string& file);
    void forget();
    std::optional<std::string_view> find(std::string_view section, std::string_view key,
                                         const std::string& file);
    template <class Edit>
    bool write(const std::string& file, Edit&& edit);
    bool commit(const std::string& file, const ProfileEdits& edits);

    Files& files_;
    std::string lineEnd_;
    std::string file_;                  ///< whose text is in memory
    std::optional<FileStamp> stamp_;    ///< of that text; nothing when there was no file
    std::unique_ptr<ProfileText> text_; ///< null when nothing usable is in memory
    bool reading_ = false;              ///< that text stands for its file, whatever its stamp
    bool updating_ = false;
    bool blind_ = false; ///< a key of the file to update could not be read since the update began
    std::string updateFile_;
    ProfileEdits edits_;
};

} // namespace tarvik
