#include "common/NameIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

namespace tarvik {
namespace {

/// Names one behind the other in a text of their own.
class Names {
public:
    Names(std::initializer_list<std::string_view> names) {
        std::vector<TextRange> ranges;
        for (const std::string_view name : names) {
            const auto begin = static_cast<std::uint32_t>(text_.size());
            text_ += name;
            ranges.push_back({begin, static_cast<std::uint32_t>(text_.size())});
        }
        index_ = NameIndex(text_, std::move(ranges));
    }

    std::uint32_t find(std::string_view name) const { return index_.find(text_, name); }

private:
    std::string text_;
    NameIndex index_;
};

TEST(NameIndexTest, AnEmptyIndexHasNoName) {
    EXPECT_EQ(NameIndex().find("", ""), NameIndex::none);
    EXPECT_EQ(Names({}).find("a"), NameIndex::none);
}

TEST(NameIndexTest, NamesAreFoundInAnyOrder) {
    const Names names{"one", "two", "three", "four"};
    EXPECT_EQ(names.find("four"), 3U);
    EXPECT_EQ(names.find("one"), 0U);
    EXPECT_EQ(names.find("three"), 2U);
    EXPECT_EQ(names.find("two"), 1U);
}

TEST(NameIndexTest, ANameIsFoundAgainAndThenTheOneBehindIt) {
    const Names names{"one", "two", "three"};
    EXPECT_EQ(names.find("one"), 0U);
    EXPECT_EQ(names.find("one"), 0U);
    EXPECT_EQ(names.find("two"), 1U);
    EXPECT_EQ(names.find("three"), 2U);
    EXPECT_EQ(names.find("three"), 2U);
}

TEST(NameIndexTest, NamesAreFoundByTurns) {
    const Names names{"settings", "one", "two", "three"};
    for (const std::uint32_t number : {1U, 2U, 3U}) {
        const std::string_view name = number == 1 ? "one" : number == 2 ? "two" : "three";
        EXPECT_EQ(names.find("settings"), 0U);
        EXPECT_EQ(names.find(name), number);
        EXPECT_EQ(names.find("settings"), 0U);
        EXPECT_EQ(names.find(name), number);
    }
}

TEST(NameIndexTest, OfEqualNamesTheFirstIsFoundAlsoRightBeforeTheSecond) {
    const Names names{"first", "twice", "other", "twice", "last"};
    EXPECT_EQ(names.find("other"), 2U);
    EXPECT_EQ(names.find("twice"), 1U);
}

TEST(NameIndexTest, OfEqualNamesFarApartTheFirstIsFound) {
    std::string text;
    std::vector<TextRange> ranges;
    for (int number = 0; number < 200; ++number) {
        const auto begin = static_cast<std::uint32_t>(text.size());
        text += "name" + std::to_string(number % 90);
        ranges.push_back({begin, static_cast<std::uint32_t>(text.size())});
    }
    const NameIndex index(text, ranges);

    for (std::uint32_t number = 0; number < 90; ++number) {
        EXPECT_EQ(index.find(text, "NAME" + std::to_string(number)), number);
    }
}

TEST(NameIndexTest, NamesThatDifferInCaseAreEqual) {
    const Names names{"first", "Twice", "other", "tWICE", "last"};
    EXPECT_EQ(names.find("other"), 2U);
    EXPECT_EQ(names.find("tWICE"), 1U);
    EXPECT_EQ(names.find("LAST"), 4U);
    EXPECT_EQ(names.find("Last"), 4U);
}

TEST(NameIndexTest, WhatIsNotThereIsNotFoundWhateverWasFoundBefore) {
    const Names names{"one", "two"};
    EXPECT_EQ(names.find("three"), NameIndex::none);
    EXPECT_EQ(names.find("two"), 1U);
    EXPECT_EQ(names.find("three"), NameIndex::none);
    EXPECT_EQ(names.find("tw"), NameIndex::none);
    EXPECT_EQ(names.find(""), NameIndex::none);
    EXPECT_EQ(names.find("two"), 1U);
}

TEST(NameIndexTest, EachOfManyNamesIsFound) {
    constexpr std::uint32_t count = 5000;
    std::string text;
    std::vector<TextRange> ranges;
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto begin = static_cast<std::uint32_t>(text.size());
        text += "name" + std::to_string(i);
        ranges.push_back({begin, static_cast<std::uint32_t>(text.size())});
    }
    const NameIndex index(text, ranges);
    for (std::uint32_t i = count; i-- > 0;) {
        ASSERT_EQ(index.find(text, "NAME" + std::to_string(i)), i);
    }
    EXPECT_EQ(index.find(text, "name5000"), NameIndex::none);
}

TEST(NameIndexTest, OfNamesThatRiseSeveralTimesTheFirstIsFound) {
    const Names names{"settings", "name8", "name9", "name10", "NAME9", "name11", "name9", "name12"};
    EXPECT_EQ(names.find("Settings"), 0U);
    EXPECT_EQ(names.find("name10"), 3U);
    EXPECT_EQ(names.find("name9"), 2U);
    EXPECT_EQ(names.find("name11"), 5U);
    EXPECT_EQ(names.find("name9"), 2U);
    EXPECT_EQ(names.find("NAME9"), 2U);
    EXPECT_EQ(names.find("name12"), 7U);
    EXPECT_EQ(names.find("name7"), NameIndex::none);
    EXPECT_EQ(names.find("name13"), NameIndex::none);
}

/// Of names by their numbers, each the first of its kind, whatever the order.
TEST(NameIndexTest, TheFirstOfEachKindIsFoundInEachOrder) {
    for (const std::uint32_t step : {1U, 7U, 50U, 99U, 149U}) { // 1 rises, 149 falls
        constexpr std::uint32_t count = 150;
        std::string text;
        std::vector<TextRange> ranges;
        std::map<std::string, std::uint32_t> first;
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::string name = "Name" + std::to_string(i * step % count);
            first.emplace(name, i);
            const auto begin = static_cast<std::uint32_t>(text.size());
            text += name;
            ranges.push_back({begin, static_cast<std::uint32_t>(text.size())});
        }
        const NameIndex index(text, ranges);
        for (const auto& [name, number] : first) {
            ASSERT_EQ(index.find(text, name), number) << step;
        }
        for (const TextRange& range : ranges) {
            const std::string name(slice(text, range));
            ASSERT_EQ(index.find(text, name), first[name]) << step;
        }
        EXPECT_EQ(index.find(text, "Name150"), NameIndex::none);
    }
}

/// An index of names of one place: somebody chose them who knew the hash, among so many places, and
/// has them fall, for names that rise need no places.
NameIndex indexOfChosen(const NameHash& known, const NameHash& hash, std::uint32_t count) {
    std::string text;
    std::vector<TextRange> ranges;
    for (std::uint32_t i = 0; ranges.size() < count; ++i) {
        const std::string name = "record " + std::to_string(i);
        if (known(name) % (4 * count) == 0) {
            const auto begin = static_cast<std::uint32_t>(text.size());
            text += name;
            ranges.push_back({begin, static_cast<std::uint32_t>(text.size())});
        }
    }
    std::reverse(ranges.begin(), ranges.end());
    return {text, std::move(ranges), hash};
}

TEST(NameIndexTest, NamesThatWereChosenForOneSeedStayCheapInAnIndexOfAnother) {
    for (std::uint32_t count = 256; count <= 1024; count *= 2) {
        EXPECT_EQ(indexOfChosen(NameHash(1), NameHash(1), count).longestWay(), count);
        EXPECT_LT(indexOfChosen(NameHash(1), NameHash(2), count).longestWay(), 60U);
        EXPECT_LT(indexOfChosen(NameHash(1), NameHash::ofThisRun(), count).longestWay(), 60U);
    }
}

} // namespace
} // namespace tarvik
