#include "common/ProfileEngine.h"

#include <algorithm>
#include <limits>
#include <new>
#include <numeric>
#include <utility>

namespace tarvik {

namespace {

/// How often a write is tried on a file that another program changes all the time.
constexpr int attempts = 5;

/// Of two bytes in the file a text may take three.
static_assert(ProfileEngine::longestFile / 2 * 3 < ProfileText::longest);

/// A NUL counts too: the texts of these operations end there.
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
    return !text.empty() && text.front() != '[' && text.front() != '=' && !hasLineBreak(line);
}

/// Takes the first of a list of NUL-ended texts that an empty one closes; empty at the end.
std::string_view takeLine(std::string_view& lines) {
    const std::string_view line = lines.substr(0, lines.find('\0'));
    lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    return line;
}

bool writableLines(std::string_view lines) {
    for (std::string_view line = takeLine(lines); !line.empty(); line = takeLine(lines)) {
        if (!writableLine(line)) {
            return false;
        }
    }
    return true;
}

std::vector<std::string> cutLines(std::string_view lines) {
    std::vector<std::string> result;
    for (std::string_view line = takeLine(lines); !line.empty(); line = takeLine(lines)) {
        result.emplace_back(line);
    }
    return result;
}

std::uint64_t lengthOf(const std::vector<std::string_view>& pieces) {
    return std::accumulate(
        pieces.begin(), pieces.end(), std::uint64_t{0},
        [](std::uint64_t sum, std::string_view piece) { return sum + piece.size(); });
}

/// Both characters of a CR LF are one, also where the text before ended with the first of them. Of
/// so few bytes that their number fits into one: the compiler then takes many of them at once.
std::uint8_t lineEndsIn(std::string_view few, char before) {
    const auto isEnd = [](char character, char last) {
        return character == '\r' || (character == '\n' && last != '\r');
    };
    std::uint8_t ends = isEnd(few.front(), before) ? 1 : 0;
    for (std::size_t at = 1; at < few.size(); ++at) {
        ends = static_cast<std::uint8_t>(ends + (isEnd(few[at], few[at - 1]) ? 1 : 0));
    }
    return ends;
}

/// Of a text in pieces.
bool hasMoreLines(const std::vector<std::string_view>& pieces, std::uint64_t lines) {
    if (lengthOf(pieces) <= lines) {
        return false; // nearly all files
    }
    constexpr std::size_t few = 128;
    static_assert(few <= std::numeric_limits<std::uint8_t>::max());
    std::uint64_t count = 0;
    char before = 0;
    for (std::string_view piece : pieces) {
        while (!piece.empty()) {
            const std::string_view part = piece.substr(0, few);
            count += lineEndsIn(part, before);
            before = part.back();
            piece.remove_prefix(part.size());
        }
    }
    return count > lines;
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

ProfileEngine::ProfileEngine(Files& files, std::string lineEnd, CodePage codePage,
                             std::uint64_t lines, std::uint64_t length)
    : files_(files), lineEnd_(std::move(lineEnd)), codePage_(codePage), lines_(lines),
      length_(length) {}

void ProfileEngine::forget() {
    text_.reset();
    file_.clear();
    stamp_.reset();
}

bool ProfileEngine::load(const std::string& file) {
    const bool inMemory = text_ != nullptr && file_ == file;
    // Once more, for a file may be out of reach for a moment: a setting taken for missing would be
    // saved so.
    return (inMemory && files_.stamp(file) == stamp_) || reload(file) || reload(file);
}

bool ProfileEngine::loadUnlessReading(const std::string& file) {
    return (reading_ && text_ != nullptr && file_ == file) || load(file);
}

/// Counting again and again what was refused would hold up the window at each key.
bool ProfileEngine::isRefused(const std::string& file, const Version& stamp) const {
    const auto found = refused_.find(file);
    return stamp && (stamp->size > length_ || (found != refused_.end() && found->second == *stamp));
}

bool ProfileEngine::reload(const std::string& file) {
    const Version stamp = file.empty() ? Version() : files_.stamp(file);
    if (file.empty() || isRefused(file, stamp)) {
        return false; // and the text of another file stays
    }
    forget();
    try {
        return readAnew(file, stamp);
    } catch (const std::bad_alloc&) {
        if (stamp && stamp->size > longestRetried) {
            refused_[file] = *stamp;
        }
        throw;
    }
}

bool ProfileEngine::readAnew(const std::string& file, const Version& stamp) {
    std::string bytes;
    if (stamp ? files_.read(file, bytes).has_value() : files_.Dir(file) != FileKind::None) {
        return false;
    }
    if (stamp && bytes.empty() && stamp->identity == filled_) {
        return false;
    }
    if (stamp && bytes.size() > length_) { // it has grown since it was looked at
        refused_[file] = *stamp;
        return false;
    }
    filled_ = stamp && !bytes.empty() ? stamp->identity : filled_;
    const ProfileForm form = formOf(bytes);
    bytes = textOf(std::move(bytes), form);
    if (stamp && hasMoreLines({bytes}, lines_)) {
        refused_[file] = *stamp;
        return false;
    }
    text_ = std::make_unique<ProfileText>(std::move(bytes));
    form_ = form;
    file_ = file;
    stamp_ = stamp;
    return true;
}

std::optional<std::string_view> ProfileEngine::find(std::string_view section, std::string_view key,
                                                    const std::string& file) {
    section = trimBlanks(section);
    key = trimBlanks(key);
    if (section.empty() || key.empty()) {
        return std::nullopt;
    }
    if (updating_ && file == updateFile_) {
        if (const auto edited = edits_.value(section, key)) {
            return *edited;
        }
    }
    if (!loadUnlessReading(file)) {
        blind_ = blind_ || file == updateFile_;
        return std::nullopt;
    }
    if (updating_ && file == updateFile_) {
        noteBasis();
    }
    return form_ == ProfileForm::Bytes ? findInText(section, key) : findConverted(section, key);
}

std::optional<std::string_view> ProfileEngine::findInText(std::string_view section,
                                                          std::string_view key) const {
    const ProfileSection* found = text_->section(section);
    if (found == nullptr) {
        return std::nullopt;
    }
    const auto line = text_->key(*found, key);
    return line && line->hasValue ? std::optional(strippedValue(line->value)) : std::nullopt;
}

std::optional<std::string_view> ProfileEngine::findConverted(std::string_view section,
                                                             std::string_view key) {
    const auto value = findInText(codePage_.toUtf8(section), codePage_.toUtf8(key));
    if (!value) {
        return std::nullopt;
    }
    converted_ = codePage_.fromUtf8(*value);
    return converted_;
}

std::uint32_t ProfileEngine::GetPrivateProfileStringA(std::string_view section,
                                                      std::string_view key,
                                                      std::string_view fallback, char* buffer,
                                                      std::uint32_t size, const std::string& file) {
    if (size == 0) {
        return 0;
    }
    // Blanks at a fallback's end are not part of it.
    fallback = fallback.substr(0, fallback.find_last_not_of(' ') + 1);
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
        ProfileEdits single;
        edit(single);
        return commit(file, single);
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
    if (!writableSection(section) || !writableLines(lines)) {
        return false;
    }
    return write(file, [&](ProfileEdits& edits) { edits.writeSection(section, cutLines(lines)); });
}

bool ProfileEngine::beginReading(const std::string& file) {
    try {
        // What is in memory may be old; a file that cannot be read is tried anew by each reader.
        reading_ = load(file);
    } catch (const std::bad_alloc&) {
        forget();
    }
    return reading_;
}

void ProfileEngine::endReading() {
    reading_ = false;
}

void ProfileEngine::beginUpdate(const std::string& file) {
    edits_.clear();
    updating_ = false;
    blind_ = false;
    basis_.reset();
    overtaken_ = false;
    try {
        updateFile_ = file;
        updating_ = true;
    } catch (const std::bad_alloc&) {
        // Without an update every write goes to the file by itself.
        updateFile_.clear();
    }
}

/// Whatever an update writes may rest on what it has read: all of that must be of one version.
void ProfileEngine::noteBasis() {
    if (!basis_) {
        basis_ = stamp_;
    }
    overtaken_ = overtaken_ || *basis_ != stamp_;
}

UpdateOutcome ProfileEngine::commitUpdate() {
    updating_ = false;
    const ProfileEdits edits = std::exchange(edits_, ProfileEdits());
    if (blind_) {
        // The number of the newest record was not there to be read, say: the edits would put
        // another in its place.
        return UpdateOutcome::Failed;
    }
    if (edits.empty()) {
        return UpdateOutcome::Written;
    }
    try {
        if (!basis_) {
            return commit(updateFile_, edits) ? UpdateOutcome::Written : UpdateOutcome::Failed;
        }
        return overtaken_ ? UpdateOutcome::Overtaken : commitOnce(updateFile_, edits, basis_);
    } catch (const std::bad_alloc&) {
        forget();
        return UpdateOutcome::Failed;
    }
}

/// What another program wrote since the text was read is kept: the edits, which rest on nothing
/// that was read, go on top of it.
bool ProfileEngine::commit(const std::string& file, const ProfileEdits& edits) {
    UpdateOutcome outcome = UpdateOutcome::Overtaken;
    for (int i = 0; i < attempts && outcome == UpdateOutcome::Overtaken; ++i) {
        outcome = commitOnce(file, edits, std::nullopt);
    }
    return outcome == UpdateOutcome::Written;
}

/// Replaces the file by its text with the edits, in the file's own form. What the next reader would
/// refuse is not written: the file then still tells the state of the save before.
bool ProfileEngine::replaceBy(const std::string& file, const ProfileEdits& edits,
                              const LastLook& stillRight) {
    const bool wide = form_ != ProfileForm::Bytes;
    const ProfileEdits own = wide ? edits.converted(codePage_.toUtf8) : edits;
    const ProfilePieces text = own.applied(*text_, lineEnd_);
    const std::string bytes = wide ? bytesOf(text.parts(), form_) : std::string();
    const std::vector<std::string_view> parts =
        wide ? std::vector<std::string_view>{bytes} : text.parts();
    return lengthOf(parts) <= length_ && !hasMoreLines(text.parts(), lines_) &&
           !files_.replaceIf(file, parts, stillRight).has_value();
}

/// With a basis, only over that version of the file.
UpdateOutcome ProfileEngine::commitOnce(const std::string& file, const ProfileEdits& edits,
                                        const std::optional<Version>& basis) {
    if (!load(file)) {
        return UpdateOutcome::Failed;
    }
    if (basis && *basis != stamp_) {
        return UpdateOutcome::Overtaken;
    }
    bool overtaken = false;
    const auto unchanged = [&] {
        overtaken = files_.stamp(file) != stamp_;
        return !overtaken;
    };
    const bool written = replaceBy(file, edits, unchanged);
    forget();
    if (overtaken) {
        return UpdateOutcome::Overtaken;
    }
    return written ? UpdateOutcome::Written : UpdateOutcome::Failed;
}

} // namespace tarvik
