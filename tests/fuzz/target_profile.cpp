// The INI engine: any file, any writes and reads. Held against the rules stated a second time, and
// against what users count on: what was written is read back, and nothing else changes.
//
// Input: the file, then operations: a letter and its texts. k section, key, value: writes a key;
// s section, line, line, ..., empty: writes a section; u begins or ends an update; any other letter
// reads section, key.

#include "Fuzz.h"
#include "common/MemoryFiles.h"
#include "common/ProfileEngine.h"
#include "common/Utf16.h"
#include "support/ReferenceProfile.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace tarvik::fuzz {
namespace {

using Texts = std::vector<std::string>;

const std::string path = "/here/Tarvik.ini";

bool oneLine(const std::string& text) {
    return text.find_first_of(std::string("\r\n\0", 3)) == std::string::npos;
}

bool writableSection(const std::string& name) {
    return !trimmed(name).empty() && oneLine(trimmed(name));
}

bool writableKey(const std::string& key) {
    const std::string name = trimmed(key);
    return !name.empty() && oneLine(name) && name.find('=') == std::string::npos &&
           name[0] != '[' && name[0] != ';';
}

bool writableLine(const std::string& line) {
    const std::string text = trimmed(line);
    return !text.empty() && oneLine(line) && text[0] != '[' && text[0] != '=';
}

bool isWide(const std::string& bytes) {
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

/// The units of a file of two bytes a character, without its mark and half a unit at its end.
std::u16string unitsOf(const std::string& bytes) {
    std::u16string units;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        units +=
            static_cast<char16_t>(bytes[0] == '\xFF' ? first + second * 256 : first * 256 + second);
    }
    return units;
}

/// What the rules are about: a file's text, whatever its form.
std::string textOfFile(const std::string& bytes) {
    return isWide(bytes) ? utf8Of(unitsOf(bytes)) : bytes;
}

/// Characters only, no halves of any: what can be written down in two bytes a character.
bool isWhole(const std::string& text) {
    for (std::size_t at = text.find('\xED'); at != std::string::npos;
         at = text.find('\xED', at + 1)) {
        if (at + 1 < text.size() && static_cast<unsigned char>(text[at + 1]) >= 0xA0) {
            return false;
        }
    }
    return utf8Of(utf16Of(text)) == text;
}

std::string asRead(std::string value) {
    value = trimmed(std::move(value));
    const bool quoted =
        value.size() > 1 && value.front() == value.back() && (value[0] == '"' || value[0] == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

/// The number that a value begins with, in any of the bases.
std::int32_t asNumber(std::string text) {
    text = trimmed(std::move(text));
    const bool negative = text.starts_with("-");
    text.erase(0, negative || text.starts_with("+") ? 1 : 0);
    std::uint64_t base = 10;
    for (const auto& [prefix, ofPrefix] : {std::pair("0x", 16U), {"0o", 8U}, {"0b", 2U}}) {
        if (text.starts_with(prefix)) {
            base = ofPrefix;
            text.erase(0, 2);
            break;
        }
    }
    const std::string digits = "0123456789abcdef";
    std::uint64_t value = 0;
    for (const char character : folded(text)) {
        const std::size_t digit = character == '\0' ? std::string::npos : digits.find(character);
        if (digit >= base) {
            break;
        }
        value = (value * base + digit) & 0xFFFFFFFF;
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(negative ? 0 - value : value));
}

struct Chunk {
    std::string name; ///< of the section; what stands before the first one has none
    std::string bytes;
};

/// The text cut before each header.
std::vector<Chunk> chunksOf(const std::string& bytes) {
    std::vector<Chunk> chunks(1);
    std::size_t at = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    chunks[0].bytes = bytes.substr(0, at);
    while (at < bytes.size()) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n", at), bytes.size());
        const std::string line = trimmed(bytes.substr(at, end - at));
        const std::size_t close = line.rfind(']');
        if (line.starts_with("[") && close != std::string::npos) {
            chunks.push_back({folded(trimmed(line.substr(1, close - 1))), {}});
        }
        const bool pair = bytes.compare(end, 2, "\r\n") == 0;
        const std::size_t next = std::min(end + (pair ? 2 : 1), bytes.size());
        chunks.back().bytes += bytes.substr(at, next - at);
        at = next;
    }
    return chunks;
}

/// All but the first section of that name is as it was; a line that was open may have been ended.
void requireOthersUntouched(const std::string& before, const std::string& after,
                            const std::string& section) {
    const std::string name = folded(trimmed(section));
    std::vector<Chunk> old = chunksOf(before);
    const std::vector<Chunk> now = chunksOf(after);
    const auto found = std::find_if(old.begin() + 1, old.end(),
                                    [&](const Chunk& chunk) { return chunk.name == name; });
    const bool isNew = found == old.end();
    require(now.size() == old.size() + (isNew ? 1 : 0), "a write makes its own section only");
    for (std::size_t i = 0; i < old.size(); ++i) {
        const bool own = !isNew && old.begin() + static_cast<std::ptrdiff_t>(i) == found;
        const bool mayEnd = isNew && i + 1 == old.size();
        const std::string rest =
            now[i].bytes.substr(0, mayEnd ? old[i].bytes.size() : now[i].bytes.size());
        require(own || rest == old[i].bytes, "other sections survive byte for byte");
        require(!mayEnd || trimmed(now[i].bytes.substr(rest.size())).find_first_not_of("\r\n") ==
                               std::string::npos,
                "nothing but a line end is added to another section");
    }
}

/// A key's write takes no line away.
void requireNoLineLost(const std::string& before, const std::string& after) {
    const auto front = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto shared = front.first - before.begin();
    const auto most = static_cast<std::ptrdiff_t>(std::min(before.size(), after.size())) - shared;
    std::ptrdiff_t back = 0;
    while (back < most && *(before.rbegin() + back) == *(after.rbegin() + back)) {
        ++back;
    }
    const std::string lost(front.first, before.end() - back);
    require(lost.find_first_of("\r\n") == std::string::npos, "a key's write takes no line away");
}

/// The engine and the second statement of its rules over one file.
class Pair {
public:
    explicit Pair(std::string bytes) {
        files_.put(path, std::move(bytes));
        wide_ = isWide(files_.bytes(path));
    }

    void writeKey(const std::string& section, const std::string& key, const std::string& value) {
        if (wide_ && !(isWhole(section) && isWhole(key) && isWhole(value))) {
            return;
        }
        const std::string before = files_.bytes(path);
        const bool written = engine_.WritePrivateProfileStringA(section, key, value, path);
        const bool legal = writableSection(section) && writableKey(key) && oneLine(value);
        require(written == legal, "what can be read back is written");
        if (!written) {
            requireUnchanged(before);
            return;
        }
        record([&](ReferenceProfile& rules) { rules.writeKey(section, key, value); }, before);
        require(valueOf(section, key) == asRead(value), "a written value is read back");
        if (!update_) {
            requireOthersUntouched(textOfFile(before), textOfFile(files_.bytes(path)), section);
            requireNoLineLost(textOfFile(before), textOfFile(files_.bytes(path)));
        }
    }

    void writeSection(const std::string& section, const Texts& lines) {
        if (wide_ && !(isWhole(section) && std::all_of(lines.begin(), lines.end(), isWhole))) {
            return;
        }
        const std::string before = files_.bytes(path);
        std::string text;
        for (const std::string& line : lines) {
            text += line + '\0';
        }
        const bool written = engine_.WritePrivateProfileSectionA(section, text + '\0', path);
        const bool legal =
            writableSection(section) && std::all_of(lines.begin(), lines.end(), writableLine);
        require(written == legal, "whole sections are written");
        if (!written) {
            requireUnchanged(before);
            return;
        }
        record([&](ReferenceProfile& rules) { rules.writeSection(section, lines); }, before);
        if (!update_) {
            requireOthersUntouched(textOfFile(before), textOfFile(files_.bytes(path)), section);
        }
    }

    void read(const std::string& section, const std::string& key, std::uint32_t size) {
        const std::string whole = valueOf(section, key);
        const auto buffer = std::make_unique<char[]>(size);
        const std::uint32_t count =
            engine_.GetPrivateProfileStringA(section, key, "none", buffer.get(), size, path);
        require(count < size && std::string(buffer.get(), count) == whole.substr(0, size - 1) &&
                    buffer[count] == '\0',
                "a value is cut to its buffer and ended");
        const auto expected = expectedValue(section, key);
        require(whole == expected.value_or("none"), "a value is read by the rules");
        const std::int32_t number = engine_.GetPrivateProfileIntA(section, key, -77, path);
        const bool given = expected && !expected->empty();
        require(number == (given ? asNumber(*expected) : -77), "a number is read by the rules");
    }

    void toggleUpdate() {
        if (!update_) {
            update_ = std::make_unique<ReferenceProfile>(textOfFile(files_.bytes(path)), "\n");
            engine_.beginUpdate(path);
            return;
        }
        const std::string before = files_.bytes(path);
        require(engine_.commitUpdate() == UpdateOutcome::Written, "an update is written whole");
        const std::string after = files_.bytes(path);
        // Where line ends are mixed, which of them a new line takes hangs on the order of writing.
        const bool mixed = textOfFile(before).find('\r') != std::string::npos;
        // Where the last line has no end, one is made for what is written behind it; in an update,
        // not for what is gone again at its end.
        const bool open = !textOfFile(before).ends_with('\n');
        require(mixed || textOfFile(after) == update_->bytes() ||
                    (open && textOfFile(after) + '\n' == update_->bytes()),
                "an update equals its writes one by one");
        require(after.substr(0, 2) == before.substr(0, 2) || !wide_, "a file keeps its form");
        update_.reset();
    }

    bool updating() const { return update_ != nullptr; }

private:
    template <class Write>
    void record(const Write& write, const std::string& before) {
        if (update_) {
            write(*update_);
            requireUnchanged(before);
            return;
        }
        ReferenceProfile rules(textOfFile(before), "\n");
        write(rules);
        const std::string after = files_.bytes(path);
        require(textOfFile(after) == rules.bytes(), "a write changes the file by the rules");
        require(after.substr(0, 2) == before.substr(0, 2) || !wide_, "a file keeps its form");
    }

    void requireUnchanged(const std::string& before) const {
        require(files_.bytes(path) == before, "a file that is not written to stays as it is");
    }

    std::optional<std::string> expectedValue(const std::string& section,
                                             const std::string& key) const {
        if (trimmed(section).empty() || trimmed(key).empty()) {
            return std::nullopt;
        }
        return update_ ? update_->read(section, key)
                       : ReferenceProfile(textOfFile(files_.bytes(path)), "\n").read(section, key);
    }

    std::string valueOf(const std::string& section, const std::string& key) {
        std::string buffer(8192, '?');
        const std::uint32_t count = engine_.GetPrivateProfileStringA(
            section, key, "none", buffer.data(), static_cast<std::uint32_t>(buffer.size()), path);
        buffer.resize(count);
        return buffer;
    }

    MemoryFiles files_;
    ProfileEngine engine_{files_, "\n"};
    bool wide_ = false;
    std::unique_ptr<ReferenceProfile> update_;
};

void play(Input input) {
    Pair pair(input.text());
    while (!input.empty()) {
        const std::string operation = input.text();
        const std::string section = operation == "u" ? "" : input.text();
        if (operation == "u") {
            pair.toggleUpdate();
        } else if (operation == "s") {
            Texts lines;
            for (std::string line = input.text(); !line.empty(); line = input.text()) {
                // A text ends at its first NUL: what is behind it begins the next line.
                lines.push_back(line.substr(0, line.find('\0')));
                if (lines.back().empty()) {
                    lines.pop_back();
                    break;
                }
            }
            pair.writeSection(section, lines);
        } else if (operation == "k") {
            const std::string key = input.text();
            pair.writeKey(section, key, input.text());
        } else {
            const auto size = static_cast<std::uint32_t>(operation.size() * 7 + 1);
            pair.read(section, input.text(), size);
        }
    }
    if (pair.updating()) {
        pair.toggleUpdate();
    }
}

} // namespace
} // namespace tarvik::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tarvik::fuzz::play({data, size});
    return 0;
}
