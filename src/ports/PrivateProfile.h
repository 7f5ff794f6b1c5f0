#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvik {

/// What became of the writes of an update. `Overtaken`: another program changed the file after it
/// was read for them, so that they would not fit it; whoever reads again may write again.
enum class UpdateOutcome { Written, Failed, Overtaken };

/// Private-profile (INI) files: `[section]` lines, `key=value` lines, lookup without regard to
/// case, the first match wins. `file` is a full path; an empty one finds nothing and cannot be
/// written. No operation throws.
class PrivateProfile {
public:
    virtual ~PrivateProfile() = default;

    /// Copies the value of the key, or `fallback` when there is none, NUL-terminated into `buffer`
    /// of `size` bytes (cut to `size` - 1), blanks around it and one pair of quotes removed. A line
    /// of the key's name alone has no value, and hides one further down.
    /// Returns the number of bytes copied without the NUL.
    virtual std::uint32_t GetPrivateProfileStringA(std::string_view section, std::string_view key,
                                                   std::string_view fallback, char* buffer,
                                                   std::uint32_t size, const std::string& file) = 0;

    /// The whole number at the start of the value, `fallback` when the key is missing or empty,
    /// 0 when the value starts with no number. Numbers wrap at 32 bits.
    virtual std::int32_t GetPrivateProfileIntA(std::string_view section, std::string_view key,
                                               std::int32_t fallback, const std::string& file) = 0;

    /// Replaces the key's value in place, or appends the key to the section's end, the section to
    /// the file's end; makes the file. False when that cannot be written: the file is then as it
    /// was. Names or values with line breaks cannot be written.
    virtual bool WritePrivateProfileStringA(std::string_view section, std::string_view key,
                                            std::string_view value, const std::string& file) = 0;

    /// Replaces the whole section by `lines`: each `key=value` ended by a NUL, one more NUL at the
    /// end of all.
    virtual bool WritePrivateProfileSectionA(std::string_view section, std::string_view lines,
                                             const std::string& file) = 0;

    /// From here on readers of `file` need not look whether another program has written to it,
    /// until `endReading`: many keys are read fast, and from one state of the file. Readings do not
    /// nest. False when the file cannot be read: each reader then tries anew.
    virtual bool beginReading(const std::string& file) = 0;
    virtual void endReading() = 0;

    /// No more is read for now: nothing of a file need be kept in memory.
    virtual void release() = 0;

    /// From here on writes to `file` are collected and seen by the readers, but reach the file only
    /// at `commitUpdate`, in one atomic replacement. Updates do not nest.
    virtual void beginUpdate(const std::string& file) = 0;

    /// Writes what was collected since `beginUpdate`, if the file is still the one that was read
    /// since then. If that is not done, the file is as it was and the collected writes are
    /// forgotten. `Written` also when nothing was to be written.
    virtual UpdateOutcome commitUpdate() = 0;
};

/// Reads of one scope come from one state of the file, apart from what the scope itself writes.
class ProfileReading {
public:
    ProfileReading(PrivateProfile& profile, const std::string& file)
        : profile_(profile), readable_(profile.beginReading(file)) {}
    ~ProfileReading() { profile_.endReading(); }
    ProfileReading(const ProfileReading&) = delete;
    ProfileReading& operator=(const ProfileReading&) = delete;

    /// The file can be read, or there is none.
    bool readable() const { return readable_; }

private:
    PrivateProfile& profile_;
    bool readable_;
};

/// Collects the writes of one scope into a single replacement of the file. A scope that is left
/// early, also by an error, still writes what was collected so far.
class ProfileUpdate {
public:
    ProfileUpdate(PrivateProfile& profile, const std::string& file) : profile_(profile) {
        profile_.beginUpdate(file);
    }
    ~ProfileUpdate() { commit(); }
    ProfileUpdate(const ProfileUpdate&) = delete;
    ProfileUpdate& operator=(const ProfileUpdate&) = delete;

    /// `Written` when everything collected is safely in the file.
    UpdateOutcome commit() {
        const bool wasOpen = open_;
        open_ = false;
        return wasOpen ? profile_.commitUpdate() : UpdateOutcome::Written;
    }

private:
    PrivateProfile& profile_;
    bool open_ = true;
};

} // namespace tarvik
