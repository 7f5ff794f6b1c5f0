#include "history/mdlIPAddresses.h"

#include "history/AddressBox.h"
#include "history/HistoryTest.h"

#include <algorithm>
#include <random>
#include <set>

namespace tarvik {
namespace {

// The rules once more, from their description: first what a comparison answers, then the list that
// is sorted by inserting one address after the other.

constexpr int answersAfter = 0;
constexpr int answersBefore = 1;
constexpr int answersEqual = 2;
constexpr int answersNotComparable = 3;

std::string trimmed(std::string text) {
    while (!text.empty() && text.front() == ' ') {
        text.erase(0, 1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.pop_back();
    }
    return text;
}

Texts split(const std::string& text) {
    Texts parts;
    if (text.empty()) {
        return parts;
    }
    parts.emplace_back();
    for (const char character : text) {
        if (character == '.') {
            parts.emplace_back();
        } else {
            parts.back() += character;
        }
    }
    return parts;
}

bool isLess(const std::string& a, const std::string& b) {
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        const int left = static_cast<unsigned char>(a[i]);
        const int right = static_cast<unsigned char>(b[i]);
        if (left != right) {
            return left < right;
        }
    }
    return a.size() < b.size();
}

int compared(const std::string& a, const std::string& b) {
    if (trimmed(a) == trimmed(b)) {
        return answersEqual;
    }
    const Texts first = split(a);
    const Texts second = split(b);
    if (first.size() != 4 || second.size() != 4) {
        return answersNotComparable;
    }
    for (std::size_t k = 0; k < 4; ++k) {
        if (first[k].size() < second[k].size()) {
            return answersBefore;
        }
        if (first[k].size() > second[k].size()) {
            return answersAfter;
        }
        if (isLess(first[k], second[k])) {
            return answersBefore;
        }
        if (isLess(second[k], first[k])) {
            return answersAfter;
        }
    }
    return answersNotComparable;
}

Texts sortedByInsertion(const Texts& members) {
    Texts sorted;
    for (const std::string& m : members) {
        int position = -1;
        bool marked = false;
        for (std::size_t e = 0; e < sorted.size(); ++e) {
            const int code = compared(m, sorted[e]);
            if (code == answersBefore || code == answersEqual) {
                position = static_cast<int>(e);
                break;
            }
            if (code == answersNotComparable) {
                marked = true;
                break;
            }
        }
        if (position >= 0) {
            sorted.insert(sorted.begin() + position, m);
        } else if (!marked) {
            sorted.push_back(m);
        }
    }
    return sorted;
}

class AddressesTest : public HistoryTest {
protected:
    void importAddresses(const Texts& addresses) {
        Log log;
        for (const std::string& address : addresses) {
            log.push_back({"d|" + std::to_string(log.size()), "1", "2", "3",
                           address.empty() ? "" : "\"" + address + "\""});
        }
        import(log);
    }

    std::string byTime() {
        window().cmdSortByTime.press();
        return window().txtStatisticsIP.text();
    }
    std::string byAddress() {
        window().cmdSortByIP.press();
        return window().txtStatisticsIP.text();
    }
};

struct Comparison {
    const char* name;
    const char* first;
    const char* second;
    AddressOrder order;
};

class ComparisonTest : public WorldTest, public testing::WithParamInterface<Comparison> {};

TEST_P(ComparisonTest, Answers) {
    EXPECT_EQ(CompareIPAddresses(GetParam().first, GetParam().second), GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(
    Each, ComparisonTest,
    testing::Values(
        Comparison{"TenAfterNine", "10.0.0.1", "9.0.0.1", AddressOrder::After},
        Comparison{"NineBeforeTen", "9.255.255.255", "10.0.0.0", AddressOrder::Before},
        Comparison{"LastPartCounts", "10.0.0.2", "10.0.0.10", AddressOrder::Before},
        Comparison{"SecondPartBeforeThird", "1.2.9.9", "1.3.0.0", AddressOrder::Before},
        Comparison{"ThirdPart", "1.1.20.1", "1.1.3.9", AddressOrder::After},
        Comparison{"Equal", "10.0.0.1", "10.0.0.1", AddressOrder::Equal},
        Comparison{"EqualWithoutBlanks", " 10.0.0.1", "10.0.0.1  ", AddressOrder::Equal},
        Comparison{"EqualNames", "harbour", "harbour", AddressOrder::Equal},
        Comparison{"BothEmpty", "", "", AddressOrder::Equal},
        Comparison{"EmptyAndBlank", "", "  ", AddressOrder::Equal},
        Comparison{"EmptyAndAddress", "", "1.2.3.4", AddressOrder::NotComparable},
        Comparison{"ThreeParts", "192.168.1", "1.2.3.4", AddressOrder::NotComparable},
        Comparison{"ThreePartsSecond", "1.2.3.4", "192.168.1", AddressOrder::NotComparable},
        Comparison{"FiveParts", "1.2.3.4.5", "1.2.3.4", AddressOrder::NotComparable},
        Comparison{"PointAtTheEnd", "1.2.3.4.", "1.2.3.4", AddressOrder::NotComparable},
        Comparison{"EmptyParts", "...", "1...", AddressOrder::Before},
        Comparison{"EmptyLastPart", "1.2.3.", "1.2.3.0", AddressOrder::Before},
        Comparison{"LeadingZeroIsLonger", "1.2.3.04", "1.2.3.5", AddressOrder::After},
        Comparison{"BlankInFrontIsPartOfThePart", " 1.2.3.4", "9.2.3.4", AddressOrder::After},
        Comparison{"BlankInsideIsPartOfThePart", "1. 2.3.4", "1.9.3.4", AddressOrder::After},
        Comparison{"BlanksInDifferentPlaces", " 1.2.3.4", "1.2.3.4 5", AddressOrder::After},
        Comparison{"LettersByTheirCodes", "a.b.c.d", "B.b.c.d", AddressOrder::After},
        Comparison{"LettersBeyondAscii", "\xE4.b.c.d", "a.b.c.d", AddressOrder::After},
        Comparison{"LongParts", "12345678901234567890.0.0.0", "9.0.0.0", AddressOrder::After},
        Comparison{"TabsAreNoBlanks", "\t1.2.3.4", "1.2.3.4", AddressOrder::After}),
    [](const auto& given) { return given.param.name; });

/// All texts of up to four parts, each one of these, with blanks around some.
Texts manyAddresses() {
    const Texts parts{"", "0", "9", "10", "a"};
    Texts texts;
    for (const std::string& a : parts) {
        for (const std::string& b : parts) {
            texts.push_back(a + "." + b);
            texts.push_back(a + ".1." + b + ".1");
            texts.push_back("1." + a + ".1." + b);
            texts.push_back(" " + a + ".1." + b + ".1");
            texts.push_back(a + ".1." + b + ".1 ");
        }
    }
    for (const char* other : {"", " ", "1", "1.2.3.4.5", "1.1.1.1", "harbour", ". . .", "...."}) {
        texts.emplace_back(other);
    }
    return texts;
}

TEST_F(AddressesTest, EveryPairComparesByTheRule) {
    const Texts addresses = manyAddresses();
    for (const std::string& a : addresses) {
        for (const std::string& b : addresses) {
            ASSERT_EQ(static_cast<int>(CompareIPAddresses(a, b)), compared(a, b))
                << "\"" << a << "\" and \"" << b << "\"";
        }
    }
}

TEST_F(AddressesTest, TheCodesHaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(AddressOrder::After), 0);
    EXPECT_EQ(static_cast<int>(AddressOrder::Before), 1);
    EXPECT_EQ(static_cast<int>(AddressOrder::Equal), 2);
    EXPECT_EQ(static_cast<int>(AddressOrder::NotComparable), 3);
    EXPECT_EQ(sizeof(AddressOrder), 2U);
}

TEST_F(AddressesTest, ByTimeTheyStandAsTheyWereRecordedByAddressAscending) {
    importAddresses({"10.0.0.2", "9.1.1.1", "10.0.0.10"});

    EXPECT_EQ(byTime(), "10.0.0.2\r\n9.1.1.1\r\n10.0.0.10\r\n");
    EXPECT_EQ(byAddress(), "9.1.1.1\r\n10.0.0.2\r\n10.0.0.10\r\n");
}

TEST_F(AddressesTest, AnImportShowsThemByTime) {
    importAddresses({"10.0.0.2", "9.1.1.1"});
    byAddress();

    importAddresses({"10.0.0.3", "9.1.1.2"});

    EXPECT_EQ(window().txtStatisticsIP.text(), "10.0.0.3\r\n9.1.1.2\r\n");
}

TEST_F(AddressesTest, SortingByTimeUndoesSortingByAddress) {
    importAddresses({"10.0.0.2", "9.1.1.1"});
    byAddress();

    EXPECT_EQ(byTime(), "10.0.0.2\r\n9.1.1.1\r\n");
}

TEST_F(AddressesTest, WithoutAnyItIsSaidInBothOrders) {
    importAddresses({"", ""});

    EXPECT_EQ(window().txtStatisticsIP.text(), "[no IP addresses recorded]");
    EXPECT_EQ(byAddress(), "[no IP addresses recorded]");
    EXPECT_EQ(byTime(), "[no IP addresses recorded]");
}

TEST_F(AddressesTest, BeforeAnyImportThereAreNone) {
    UpdateIPAddresses(true);

    EXPECT_EQ(window().txtStatisticsIP.text(), "[no IP addresses recorded]");
}

TEST_F(AddressesTest, OneOfThreePartsIsMissingByAddress) {
    importAddresses({"10.0.0.2", "192.168.1", "9.1.1.1"});

    EXPECT_EQ(byTime(), "10.0.0.2\r\n192.168.1\r\n9.1.1.1\r\n");
    EXPECT_EQ(byAddress(), "9.1.1.1\r\n10.0.0.2\r\n");
}

TEST_F(AddressesTest, OneOfThreePartsThatIsTheFirstLeavesOnlyItself) {
    importAddresses({"192.168.1", "10.0.0.2", "9.1.1.1"});

    EXPECT_EQ(byAddress(), "192.168.1\r\n");
}

TEST_F(AddressesTest, EqualOnesStandTheLaterFirst) {
    importAddresses({"10.0.0.2", "10.0.0.2 ", " 10.0.0.2"});

    EXPECT_EQ(byAddress(), " 10.0.0.2\r\n10.0.0.2 \r\n10.0.0.2\r\n");
}

TEST_F(AddressesTest, EqualOnesThatAllHaveBlanksAroundThemStandTheLaterFirstToo) {
    importAddresses({"10.0.0.2 ", " 10.0.0.2"});

    EXPECT_EQ(byAddress(), " 10.0.0.2\r\n10.0.0.2 \r\n");
}

TEST_F(AddressesTest, AnAddressThatIsNotThereIsNeverShown) {
    importAddresses({"10.0.0.2"});

    importAddresses({"", ""});

    EXPECT_EQ(byAddress(), "[no IP addresses recorded]");
}

/// Makes lists that are alike enough to meet every rule.
class AnyAddresses {
public:
    explicit AnyAddresses(unsigned seed) : random_(seed) {}

    Texts list() {
        blanks_ = next(2) == 0;
        Texts addresses;
        for (unsigned i = next(14); i > 0; --i) {
            addresses.push_back(address());
        }
        return addresses;
    }

private:
    std::string address() {
        const unsigned kind = next(40);
        if (kind == 0) {
            return {};
        }
        std::string text = part();
        for (unsigned dots = kind == 1 ? 2 : kind == 2 ? 4 : 3; dots > 0; --dots) {
            text += "." + part();
        }
        if (blanks_ && next(4) == 0) {
            text.insert(next(2) == 0 ? 0 : text.size(), " ");
        }
        return text;
    }

    std::string part() {
        static const Texts parts{"0",   "1",   "2",   "9", "10",  "11",  "99",
                                 "100", "255", "007", "",  "1 2", "abc", "123456789012345"};
        return parts[next(next(6) == 0 ? static_cast<unsigned>(parts.size()) : 3)];
    }

    unsigned next(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

    std::mt19937 random_;
    bool blanks_ = false;
};

/// Many addresses that differ but for blanks in ever other places.
Texts manyWithBlanks(std::size_t count) {
    std::mt19937 random(7);
    Texts addresses;
    while (addresses.size() < count) {
        std::string address = std::to_string(random() % 40) + ".0." + std::to_string(random() % 40);
        address += "." + std::to_string(random() % 10);
        addresses.push_back(std::string(random() % 5, ' ') + address +
                            std::string(random() % 5, ' '));
    }
    return addresses;
}

/// Each address once, in the order in which they first appear; none for an empty one.
Texts distinct(const Texts& addresses) {
    Texts result;
    std::set<std::string> known;
    for (const std::string& address : addresses) {
        if (!address.empty() && known.insert(address).second) {
            result.push_back(address);
        }
    }
    return result;
}

class AnyListTest : public AddressesTest, public testing::WithParamInterface<unsigned> {};

TEST_F(AddressesTest, ManyWithBlanksAroundThemStandAsInsertingOneAfterTheOtherPutsThem) {
    const Texts logged = manyWithBlanks(1500);

    importAddresses(logged);

    EXPECT_EQ(byAddress(), boxOf(sortedByInsertion(distinct(logged))));
}

TEST_F(AddressesTest, TensOfThousandsWithBlanksAroundThemAreSortedWithoutLosingOne) {
    const Texts logged = manyWithBlanks(60'000);
    importAddresses(logged);

    const std::string sorted = byAddress();

    EXPECT_EQ(sorted.size(), boxOf(distinct(logged)).size());
}

TEST_P(AnyListTest, IsShownInBothOrdersAsTheRulesSay) {
    AnyAddresses any(GetParam());
    int shortened = 0;
    for (int round = 0; round < 150; ++round) {
        Texts logged = any.list();
        logged.emplace_back();
        const Texts addresses = distinct(logged);
        const Texts sorted = sortedByInsertion(addresses);
        shortened += sorted.size() < addresses.size() ? 1 : 0;

        importAddresses(logged);

        ASSERT_EQ(byTime(), boxOf(addresses)) << "round " << round;
        ASSERT_EQ(byAddress(), boxOf(sorted)) << "round " << round << " of " << boxOf(addresses);
    }
    EXPECT_GT(shortened, 5) << "The lists are too tame.";
}

INSTANTIATE_TEST_SUITE_P(Seeds, AnyListTest, testing::Range(1U, 21U));

} // namespace
} // namespace tarvik
