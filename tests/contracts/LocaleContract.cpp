#include "contracts/ServicesUnderTest.h"

#include "types/RunTimeError.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class LocaleContract : public testing::TestWithParam<LocaleCase> {
protected:
    std::string withBlanks(const std::string& number) const {
        std::string result;
        for (const char each : number) {
            result += each == '_' ? machine.noBreakSpace : std::string(1, each);
        }
        return result;
    }

    LocalesUnderTest machine = localesUnderTest();
};

TEST_P(LocaleContract, GivesTheFormsOfTheLanguageWithFullYears) {
    const LocaleData data = machine.named(GetParam().name);
    const Date date = Date::fromCivil({2026, 11, 16, 18, 40, 5});

    EXPECT_EQ(shortDateText(date, data), GetParam().date);
    EXPECT_EQ(longTimeText(date, data), GetParam().time);
    EXPECT_EQ(formatGrouped(1'234'567.5, 1, data), withBlanks(GetParam().number));
    EXPECT_EQ(textToDate(toText(date, data), data).serial(), date.serial());
}

std::vector<LocaleCase> localeCases() {
    std::vector<LocaleCase> all{{"de_DE", "16.11.2026", "18:40:05", "1.234.567,5"},
                                {"en_US", "11/16/2026", "6:40:05 PM", "1,234,567.5"},
                                {"en_GB", "16/11/2026", "18:40:05", "1,234,567.5"},
                                {"sv_SE", "2026-11-16", "18:40:05", "1_234_567,5"}};
    const std::vector<LocaleCase> own = localesUnderTest().ownCases;
    all.insert(all.end(), own.begin(), own.end());
    return all;
}

INSTANTIATE_TEST_SUITE_P(All, LocaleContract, testing::ValuesIn(localeCases()),
                         [](const auto& given) { return given.param.name; });

/// What comes back from a text under its own locale; -1 where nothing does.
double readBack(const std::string& text, const LocaleData& data) {
    try {
        return textToDate(text, data).serial();
    } catch (const RunTimeError&) {
        return -1;
    }
}

TEST(LocaleFormsContract, EveryLocaleOfTheSystemReadsBackWhatItWrites) {
    const Date evening = Date::fromCivil({2026, 11, 16, 18, 40, 5});
    const Date morning = Date::fromCivil({1999, 1, 2, 0, 5, 59});
    const auto all = localesUnderTest().all();
    EXPECT_FALSE(all.empty());
    for (const auto& [name, data] : all) {
        for (const Date date : {evening, morning}) {
            const std::string text = toText(date, data);
            EXPECT_EQ(readBack(text, data), date.serial()) << name << ": " << text;
        }
        const Currency amount = Currency::fromScaled(12'345'678'901'234);
        EXPECT_EQ(textToCurrency(toText(amount, data), data), amount) << name;
    }
}

} // namespace
} // namespace tarvik
