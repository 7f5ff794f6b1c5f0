#include "types/NameHash.h"

#include "types/Text.h"

#include <gtest/gtest.h>

#include <bit>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace tarvik {
namespace {

using Name = std::function<std::string(std::uint32_t)>;

std::vector<std::string> namesOf(std::uint32_t count, const Name& name) {
    std::vector<std::string> names;
    for (std::uint32_t i = 0; i < count; ++i) {
        names.push_back(name(i));
    }
    return names;
}

/// How many places are looked at when the names go one after the other into a table with room for
/// twice as many, each to the first empty place from its own on.
std::uint64_t stepsFor(const std::vector<std::string>& names, const NameHash& hash) {
    std::vector<bool> taken(std::bit_ceil(2 * names.size()));
    std::uint64_t steps = 0;
    for (const std::string& name : names) {
        std::size_t at = hash(name) & (taken.size() - 1);
        for (++steps; taken[at]; ++steps) {
            at = (at + 1) & (taken.size() - 1);
        }
        taken[at] = true;
    }
    return steps;
}

/// Names that somebody who knows the seed chose to have one place, among so many places.
std::vector<std::string> namesOfOnePlace(const NameHash& hash, std::uint32_t places) {
    std::vector<std::string> names;
    for (std::uint32_t i = 0; names.size() < places; ++i) {
        if (std::string name = "record " + std::to_string(i); hash(name) % places == 0) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

TEST(NameHashTest, IsTheSameForNamesThatDifferInTheCaseOfLettersAlone) {
    const NameHash hash(1);
    for (const std::size_t place : {0U, 6U, 7U, 8U, 12U}) {
        for (int a = 0; a < 256; ++a) {
            for (int b = 0; b < 256; ++b) {
                std::string one(13, 'x');
                std::string other = one;
                one[place] = static_cast<char>(a);
                other[place] = static_cast<char>(b);
                ASSERT_EQ(hash(one) == hash(other), equalWithoutCase(one, other))
                    << place << ": " << a << " and " << b;
            }
        }
    }
}

TEST(NameHashTest, TellsNamesOfAnyLengthFromEachOther) {
    std::set<std::uint32_t> numbers;
    for (std::size_t length = 0; length < 200; ++length) {
        numbers.insert(NameHash(1)(std::string(length, '\0')));
    }
    EXPECT_EQ(numbers.size(), 200U);
}

TEST(NameHashTest, DependsOnTheSeed) {
    EXPECT_NE(NameHash(1)("Settings"), NameHash(2)("Settings"));
    EXPECT_EQ(NameHash::ofThisRun()("Settings"), NameHash::ofThisRun()("settings"));
}

TEST(NameHashTest, TheSeedIsDrawnAnewWithEachCall) {
    EXPECT_NE(drawnSeed(), drawnSeed());
}

TEST(NameHashTest, TextsThatDifferInTheCaseOfLettersHaveNumbersOfTheirOwn) {
    const TextHash hash(1);
    std::set<std::size_t> numbers;
    for (std::uint32_t i = 0; i < 1024; ++i) {
        std::string text = "abcdefghij";
        for (std::size_t letter = 0; letter < text.size(); ++letter) {
            if ((i >> letter & 1U) != 0) {
                text[letter] = static_cast<char>(text[letter] - ('a' - 'A'));
            }
        }
        numbers.insert(hash(text));
    }
    EXPECT_EQ(numbers.size(), 1024U);
}

TEST(NameHashTest, TheNumberOfATextDependsOnTheSeed) {
    EXPECT_NE(TextHash(1)("Settings"), TextHash(2)("Settings"));
    EXPECT_EQ(TextHash()("Settings"), TextHash()("Settings"));
}

TEST(NameHashTest, NamesThatWereChosenForOneSeedAreScatteredByAnother) {
    constexpr std::uint32_t count = 1024;
    const std::vector<std::string> names = namesOfOnePlace(NameHash(1), count);

    EXPECT_GT(stepsFor(names, NameHash(1)), count * 100); // the choice works
    EXPECT_LT(stepsFor(names, NameHash(2)), count * 2);
}

TEST(NameHashTest, TwiceAsManyNamesOfAnyKindTakeTwiceTheSteps) {
    const Name kinds[] = {
        [](std::uint32_t i) { return std::to_string(i); },
        [](std::uint32_t i) { return "2026-11-22 | " + std::to_string(i); },
        [](std::uint32_t i) { return std::string(1 + i % 256, 'a') + std::to_string(i / 256); },
        // One letter differs by its upper bits only, in each of the eight of a word.
        [](std::uint32_t i) {
            std::string name(16, '\0');
            for (char& letter : name) {
                letter = static_cast<char>((i & 1U) != 0 ? 0x80 : 0);
                i >>= 1U;
            }
            return name;
        },
        // A few bits of letters far apart.
        [](std::uint32_t i) {
            std::string name(24, '.');
            name.front() = static_cast<char>(i & 0x1FU);
            name[11] = static_cast<char>((i >> 5U) & 0x1FU);
            name.back() = static_cast<char>(i >> 10U);
            return name;
        },
    };
    for (const Name& kind : kinds) {
        for (std::uint32_t count = 1U << 10U; count <= 1U << 15U; count *= 2) {
            EXPECT_LT(stepsFor(namesOf(count, kind), NameHash(1)), count * 2) << kind(count);
        }
    }
}

} // namespace
} // namespace tarvik
