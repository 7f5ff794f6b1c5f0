#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace tarvik {

/// One question to a profile file.
struct ProfileRead {
    std::string section;
    std::string key;
    std::string fallback;
    std::size_t size = 0; ///< of the buffer, bytes
};

/// One write of a key, or of a whole section.
struct ProfileWrite {
    std::string section;
    std::string key;
    std::string value;
    std::vector<std::string> keyLines;

    /// The lines as the operation takes them: each ended by a NUL, one more at the end.
    std::string lines() const {
        std::string text;
        for (const std::string& line : keyLines) {
            text += line + '\0';
        }
        return text + '\0';
    }
};

/// Random profile files, reads and writes from one fixed seed, made of few names so that they meet.
///
/// Left out is what the system's functions and the engine are known to take differently:
/// - a UTF-8 mark, which systems read in different ways, some as a part of the first header;
/// - letters beyond ASCII that differ only in case: the engine compares them exactly on every
/// system;
/// - empty names: the system finds lines before the first section and lines that begin with `=`,
///   the engine refuses them, as nothing the program writes is named so;
/// - a header without a name, which the system drops when it writes the file;
/// - names with `=`, a `;` or `[` at their beginning, and line breaks anywhere: the system writes
///   them and cannot read them back, the engine refuses to;
/// - NUL, the end-of-file mark of old editors, form feed and vertical tab: the system ends a value
///   there or counts them as blanks, the engine keeps them as characters;
/// - quotes around a fallback, which the system removes too;
/// - a quoted value in a buffer that its quotes do not fit into: the system then gives a character
///   less than there is room for;
/// - an emptied section and one of comments or bare names only: the system forgets them, the engine
///   writes them down; neither has a key that could be read.
class ProfileChance {
public:
    bool oneIn(std::size_t times) { return below(times) == 0; }

    std::string file() {
        const std::string& end = of(lineEnds_);
        std::string text;
        for (std::size_t i = below(oneIn(10) ? 300 : 25); i > 0; --i) {
            text += line() + (oneIn(20) ? of(lineEnds_) : end);
        }
        return text + (oneIn(2) ? line() : "");
    }

    ProfileRead read() {
        return {
            .section = of(sections_), .key = of(keys_), .fallback = of(fallbacks_), .size = 128};
    }

    ProfileWrite keyWrite() {
        return {.section = of(sections_), .key = of(keys_), .value = of(values_), .keyLines = {}};
    }

    ProfileWrite sectionWrite() {
        ProfileWrite write{.section = of(sections_), .key = {}, .value = {}, .keyLines = {}};
        for (std::size_t i = below(4); i > 0; --i) {
            write.keyLines.push_back(of(keys_) + "=" + of(values_));
        }
        return write;
    }

private:
    using Texts = std::vector<std::string>;

    std::size_t below(std::size_t limit) { return source_() % limit; }
    const std::string& of(const Texts& texts) { return texts[below(texts.size())]; }

    std::string line() {
        switch (below(6)) {
        case 0:
            return of(blanks_) + "[" + of(sections_) + "]" + of(blanks_);
        case 1:
            return of(oddLines_);
        default:
            return of(blanks_) + of(keys_) + of(blanks_) + "=" + of(blanks_) + of(values_) +
                   of(blanks_);
        }
    }

    std::mt19937 source_{20261121};
    const Texts lineEnds_{"\r\n", "\n"};
    const Texts blanks_{"", "", "", " ", "\t"};
    const Texts fallbacks_{"", "fallback", " padded "};
    const Texts sections_{"a", "A", "a b", "Settings", "LastState", "\xC4rger", "c]d"};
    const Texts keys_{"x",          "X",           "Sent",      "Rcvd",
                      "DateStamp1", "DateStamp12", "two words", "\xE9t\xE9"};
    const Texts values_{"",
                        "1",
                        "0",
                        "-1",
                        "4294967297",
                        "2147483648",
                        "+7",
                        "0x1F",
                        "12abc",
                        "abc",
                        "21.11.2026 02:48:18",
                        "1234,56",
                        "a=b",
                        "\"quoted\"",
                        "'single'",
                        "\"half",
                        "\" in \"",
                        "[z]",
                        ";c",
                        "caf\xE9",
                        "two words",
                        "long long long long long long long long long long long text"};
    const Texts oddLines_{"",   " \t",   ";x=1", " ; note", "junk",   "=",
                          "=5", "[open", "]",    "x",       "[a]tail"};
};

} // namespace tarvik
