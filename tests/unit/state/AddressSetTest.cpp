#include "state/AddressSet.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tarvik {
namespace {

/// What the hash of the standard library, which has no seed, gives one place in a table of as many.
std::vector<std::string> textsOfOnePlace(std::size_t count) {
    std::unordered_set<std::size_t> table;
    for (std::size_t i = 0; i < count; ++i) {
        table.insert(i);
    }
    std::vector<std::string> texts;
    for (std::size_t i = 0; texts.size() < count; ++i) {
        std::string text = std::to_string(i);
        if (std::hash<std::string>()(text) % table.bucket_count() == 0) {
            texts.push_back(std::move(text));
        }
    }
    return texts;
}

/// A text of ten letters with every mixture of capitals and small ones.
std::vector<std::string> textsOfOneName(std::size_t count) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < count; ++i) {
        std::string text = "abcdefghij";
        for (std::size_t letter = 0; letter < text.size(); ++letter) {
            if ((i >> letter & 1U) != 0) {
                text[letter] = static_cast<char>(text[letter] - ('a' - 'A'));
            }
        }
        texts.push_back(std::move(text));
    }
    return texts;
}

AddressSet setOf(const std::vector<std::string>& texts) {
    AddressSet set;
    for (const std::string& text : texts) {
        set.add(text);
    }
    return set;
}

TEST(AddressSetTest, EachIsKeptOnceAtThePlaceOfItsFirst) {
    AddressSet set;

    EXPECT_EQ(set.add("10.0.0.1"), 0U);
    EXPECT_EQ(set.add("10.0.0.2"), 1U);
    EXPECT_EQ(set.add("10.0.0.1"), 0U);

    EXPECT_EQ(set.size(), 2U);
    EXPECT_EQ(set[1], "10.0.0.2");
}

TEST(AddressSetTest, TextsThatWereChosenForTheLibrarysHashAreScattered) {
    for (std::size_t count = 250; count <= 1000; count *= 2) {
        const std::vector<std::string> texts = textsOfOnePlace(count);
        const std::unordered_set<std::string> library(texts.begin(), texts.end());

        EXPECT_EQ(library.bucket_size(library.bucket(texts.front())), count); // the choice works
        EXPECT_LT(setOf(texts).crowd(), 16U);
    }
}

TEST(AddressSetTest, TextsThatDifferInCaseAloneAreScattered) {
    for (std::size_t count = 256; count <= 1024; count *= 2) {
        const AddressSet set = setOf(textsOfOneName(count));

        EXPECT_EQ(set.size(), count);
        EXPECT_LT(set.crowd(), 16U);
    }
}

} // namespace
} // namespace tarvik
