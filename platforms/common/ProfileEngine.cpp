#include "common/ProfileEngine.h"

#include <algorithm>
#include <new>

namespace tarvik {

namespace {

bool hasLineBreak(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

/// What could not be read back under the same name is not written.
bool writableSection(std::string_view name) {
    return !name.empty() && !hasLineBreak(name);
}

bool writableKey(std::string_view key) {
    return !key.empty() && !hasLineBreak(key) && key.find('=') == std::string_view::npos &&
           key.front() != '[' && key.front() != ';';
}

bool writableLine(std::string_view line) {
    const std::string_view text = trimBlanks(line);
    return !text.empty() && text.front() != '[' && !hasLineBreak(line);
}

/// Cuts a list of NUL-ended texts that an empty one closes.
std::vector<std::string> cutLines(std::string_view lines) {
    std::vector<std::string> result;
    while (!lines.empty() && lines.front() != '\0') {
        const std::size_t end = std::min(lines.find('\0'), lines.size());
        result.emplace_back(lines.substr(0, end));
        lines.remove_prefix(std::min(end + 1, lines.size()));
    }
    return result;
}

int digitOf(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 16;
}

/// The base that a prefix tells; removes the prefix.
std::uint32_t takeBase(std::string_view& text) {
    if (text.size() >= 2 && text[0] == '0') {
        const char mark = text[1];
        const std::uint32_t base = mark == 'x' ? 16 : mark == 'o' ? 8 : mark == 'b' ? 2 : 10;
        text.remove_prefix(base == 10 ? 0 : 2);
        return base;
    }
    return 10;
}

std::int32_t leadingInteger(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const std::uint32_t base = takeBase(text);
    std::uint32_t value = 0;
    for (const char character : text) {
        const auto digit = static_cast<std::uint32_t>(digitOf(character));
        if (digit >= base) {
            break;
        }
        value = value * base + digit;
    }
    return static_cast<std::int32_t>(negative ? 0 - value : value);
}

} // namespace

ProfileEngine::ProfileEngine(Files& files, std::string lineEnd)
    : files_(files), lineEnd_(std::move(lineEnd)) {}

void ProfileEngine::forget() {
    text_.reset();
    file_.clear();
    stamp_.reset();
}

bool ProfileEngine::load(const std::string& file) {
    const bool inMemory = text_ != nullptr && file_ == file;
    if (inMemory && ((updating_ && file == updateFile_) || files_.stamp(file) == stamp_)) {
        return true;
    }
    return reload(file);
}

bool ProfileEngine::reload(const std::string& file) {
    forget();
    if (file.empty()) {
        return false;
    }
    const std::optional<FileStamp> stamp = files_.stamp(file);
    std::string bytes;
    if (stamp ? files_.read(file, bytes).has_value() : files_.Dir(file) != FileKind::None) {
        return false;
    }
    if (bytes.size() > ProfileText::longest) {
        return false;
    }
    auto text = std::make_unique<ProfileText>(std::move(bytes));
    if (text->isWide()) {
        return false;
    }
    text_ = std::move(text);
    file_ = file;
    stamp_ = stamp;
    return true;
}

std::optional<std::string_view> ProfileEngine::find(std::string_view section, std::string_view key,
                                                    const std::string& file) {
    section = trimBlanks(section);
    key = trimBlanks(key);
    if (updating_ && file == updateFile_) {
        if (const auto edited = edits_.value(section, key)) {
            return *edited;
        }
    }
    if (!load(file)) {
        return std::nullopt;
    }
    const ProfileSection* found = text_->section(section);
    if (found == nullptr) {
        return std::nullopt;
    }
    const auto line = text_->key(*found, key);
    return line ? std::optional(text_->value(*line)) : std::nullopt;
}

std::uint32_t ProfileEngine::GetPrivateProfileStringA(std::string_view section,
                                                      std::string_view key,
                                                      std::string_view fallback, char* buffer,
                                                      std::uint32_t size, const std::string& file) {
    if (size == 0) {
        return 0;
    }
    std::string_view value = fallback;
    try {
        value = find(section, key, file).value_or(fallback);
    } catch (const std::bad_alloc&) {
        forget();
    }
    const auto count = static_cast<std::uint32_t>(value.copy(buffer, size - 1));
    buffer[count] = '\0';
    return count;
}

std::int32_t ProfileEngine::GetPrivateProfileIntA(std::string_view section, std::string_view key,
                                                  std::int32_t fallback, const std::string& file) {
    try {
        const auto value = find(section, key, file);
        return value && !value->empty() ? leadingInteger(trimBlanks(*value)) : fallback;
    } catch (const std::bad_alloc&) {
        forget();
        return fallback;
    }
}

template <class Edit>
bool ProfileEngine::write(const std::string& file, Edit&& edit) {
    if (file.empty()) {
        return false;
    }
    try {
        if (updating_ && file == updateFile_) {
            edit(edits_);
            return true;
        }
        // A write to another file must not carry the collected ones along.
        ProfileEdits collected;
        std::swap(collected, edits_);
        edit(edits_);
        const bool written = commit(file);
        std::swap(collected, edits_);
        return written;
    } catch (const std::bad_alloc&) {
        forget();
        return false;
    }
}

bool ProfileEngine::WritePrivateProfileStringA(std::string_view section, std::string_view key,
                                               std::string_view value, const std::string& file) {
    section = trimBlanks(section);
    key = trimBlanks(key);
    if (!writableSection(section) || !writableKey(key) || hasLineBreak(value)) {
        return false;
    }
    return write(file, [&](ProfileEdits& edits) { edits.writeKey(section, key, value); });
}

bool ProfileEngine::WritePrivateProfileSectionA(std::string_view section, std::string_view lines,
                                                const std::string& file) {
    section = trimBlanks(section);
    std::vector<std::string> cut = cutLines(lines);
    if (!writableSection(section) || !std::all_of(cut.begin(), cut.end(), writableLine)) {
        return false;
    }
    return write(file, [&](ProfileEdits& edits) { edits.writeSection(section, std::move(cut)); });
}

void ProfileEngine::beginUpdate(const std::string& file) {
    edits_.clear();
    updateFile_ = file;
    updating_ = true;
}

bool ProfileEngine::commitUpdate() {
    updating_ = false;
    try {
        const bool written = edits_.empty() || commit(updateFile_);
        edits_.clear();
        return written;
    } catch (const std::bad_alloc&) {
        edits_.clear();
        forget();
        return false;
    }
}

bool ProfileEngine::commit(const std::string& file) {
    // What another program wrote since the text was read is kept: the edits go on top of it.
    if (!load(file)) {
        return false;
    }
    const ProfilePieces pieces = edits_.applied(*text_, lineEnd_);
    const bool written = !files_.replace(file, pieces.parts()).has_value();
    forget();
    return written;
}

} // namespace tarvik
