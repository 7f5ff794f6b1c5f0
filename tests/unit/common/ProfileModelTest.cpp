#include "common/ProfileTest.h"
#include "support/ReferenceProfile.h"

#include <random>

namespace tarvik {
namespace {

using namespace std::string_literals;

using Texts = std::vector<std::string>;

const Texts sectionNames{"a", "A", " b", "ab", "a b", "c]d", "Settings", "[", "\xC3\x84"};
const Texts keyNames{"x", "X", "y ", "long key", "DateStamp1", "DateStamp12", "\xC3\xA9", "\"k\""};
const Texts values{"",    "1",   "  padded\t", "\"quoted\"", "' '",
                   "a=b", "[z]", ";c",         "\"",         "longer text"};
const Texts oddLines{"",  " \t", ";x=1", " ; note", "junk",    "=",      "=5",    "[open",
                     "]", "[]",  "x",    "[a]tail", "[ a ] ]", "\0x=1"s, "x\0=1"s};

/// Random texts and names from one fixed seed.
class RandomProfile {
public:
    explicit RandomProfile(std::uint64_t seed) : source_(seed) {}

    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(source_() % limit); }
    bool oneIn(std::size_t times) { return below(times) == 0; }
    const std::string& of(const Texts& texts) { return texts[below(texts.size())]; }

    std::string keyLine() { return of(keyNames) + (oneIn(3) ? " = " : "=") + of(values); }

    Texts keyLines() {
        Texts lines(below(4));
        for (std::string& line : lines) {
            line = keyLine();
        }
        return lines;
    }

    std::string file(const Texts& lineEnds) {
        std::string text = oneIn(5) ? "\xEF\xBB\xBF" : "";
        const std::size_t lines = below(oneIn(10) ? 400 : 25);
        for (std::size_t i = 0; i < lines; ++i) {
            text += line() + of(lineEnds);
        }
        return text + (oneIn(2) ? line() : "");
    }

private:
    std::string line() {
        switch (below(6)) {
        case 0:
            return "[" + of(sectionNames) + "]";
        case 1:
            return of(oddLines);
        default:
            return keyLine();
        }
    }

    std::mt19937_64 source_;
};

class ProfileModelTest : public ProfileTest {
protected:
    RandomProfile random{20261116};

    /// Writes the same, a key or a whole section, through the engine and in the reference.
    void writeBoth(ReferenceProfile& reference) {
        const std::string section = random.of(sectionNames);
        if (random.oneIn(3)) {
            const Texts lines = random.keyLines();
            std::string text;
            for (const std::string& line : lines) {
                text += line + '\0';
            }
            ASSERT_TRUE(writeSection(section, text + '\0'));
            reference.writeSection(section, lines);
        } else {
            const std::string key = random.of(keyNames);
            const std::string text = random.of(values);
            ASSERT_TRUE(write(section, key, text));
            reference.writeKey(section, key, text);
        }
    }

    void compareReads(const ReferenceProfile& reference) {
        for (const std::string& section : sectionNames) {
            const std::string& key = random.of(keyNames);
            ASSERT_EQ(value(section, key), reference.read(section, key).value_or("none"))
                << '[' << section << ']' << key << '\n'
                << reference.bytes();
        }
    }

    void runUpdates(const Texts& lineEnds) {
        given(random.file(lineEnds));
        for (int update = 0; update < 4; ++update) {
            const std::string before = bytes();
            ReferenceProfile reference(before, "\n");
            engine.beginUpdate(file);
            for (std::size_t i = random.below(6); i > 0; --i) {
                ASSERT_NO_FATAL_FAILURE(writeBoth(reference));
                ASSERT_NO_FATAL_FAILURE(compareReads(reference));
            }
            ASSERT_EQ(bytes(), before);
            ASSERT_EQ(engine.commitUpdate(), UpdateOutcome::Written);
            ASSERT_EQ(comparable(bytes(), lineEnds), comparable(reference.bytes(), lineEnds))
                << before;
        }
    }

    /// Where line ends are mixed, which of them a new line takes may hang on the order of writing.
    static std::string comparable(std::string bytes, const Texts& lineEnds) {
        if (lineEnds.size() > 1) {
            std::erase(bytes, '\r');
        }
        return bytes;
    }
};

TEST_F(ProfileModelTest, EveryWriteChangesTheFileAsTheReferenceDoes) {
    const Texts lineEnds{"\n", "\r\n", "\r"};
    for (int round = 0; round < 600; ++round) {
        given(random.file(lineEnds));
        for (int i = 0; i < 10; ++i) {
            const std::string before = bytes();
            ReferenceProfile reference(before, "\n");
            ASSERT_NO_FATAL_FAILURE(writeBoth(reference));
            ASSERT_EQ(bytes(), reference.bytes()) << before;
        }
    }
}

TEST_F(ProfileModelTest, EveryReadAnswersAsTheReferenceDoes) {
    const Texts lineEnds{"\n", "\r\n", "\r"};
    for (int round = 0; round < 1000; ++round) {
        given(random.file(lineEnds));
        ASSERT_NO_FATAL_FAILURE(compareReads(ReferenceProfile(bytes(), "\n")));
    }
}

TEST_F(ProfileModelTest, AnUpdateEqualsItsWritesOneByOne) {
    for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
        for (int round = 0; round < 200; ++round) {
            ASSERT_NO_FATAL_FAILURE(runUpdates({lineEnd}));
        }
    }
}

TEST_F(ProfileModelTest, AnUpdateOfMixedLinesEqualsItsWritesOneByOne) {
    for (int round = 0; round < 300; ++round) {
        ASSERT_NO_FATAL_FAILURE(runUpdates({"\n", "\r\n"}));
    }
}

TEST_F(ProfileModelTest, AFailedWriteChangesNothing) {
    const Texts lineEnds{"\n", "\r\n", "\r"};
    for (int round = 0; round < 300; ++round) {
        const std::string before = random.file(lineEnds);
        given(before);
        files.replacesFail = true;
        const std::string& section = random.of(sectionNames);
        ASSERT_FALSE(write(section, random.of(keyNames), random.of(values)));
        ASSERT_EQ(bytes(), before);
        files.replacesFail = false;
        ASSERT_NO_FATAL_FAILURE(compareReads(ReferenceProfile(before, "\n")));
    }
}

} // namespace
} // namespace tarvik
