#include "history/ChartWorld.h"

#include <limits>

namespace tarvik {
namespace {

constexpr bool second = true;

class ChartValuesTest : public ChartWorld {
protected:
    ChartValuesTest() {
        hold({{100, 1000, 60'000}, {250, 3000, 30'000}, {700, 5000, 90'000}, {400, 8000, 120'000}});
    }

    static Currency scaled(std::int64_t value) { return Currency::fromScaled(value); }
};

/// What a cell of record 1 and of record 3 holds.
struct ShownValue {
    int type;
    int show;
    bool second;
    double first;
    double third;

    friend std::ostream& operator<<(std::ostream& out, const ShownValue& one) {
        return out << "type " << one.type << ", show " << one.show
                   << (one.second ? ", second" : ", first") << " column";
    }
};

class ShownValueTest : public ChartValuesTest, public testing::WithParamInterface<ShownValue> {};

TEST_P(ShownValueTest, IsThatOfRecordOneAndOfALaterRecord) {
    choose(GetParam().show, GetParam().type);

    EXPECT_EQ(GetTransfer(1, GetParam().second).toDouble(), GetParam().first);
    EXPECT_EQ(GetTransfer(3, GetParam().second).toDouble(), GetParam().third);
}

TEST_P(ShownValueTest, ComesFromTheFunctionForRecordOneAndTheOneForLaterRecords) {
    choose(GetParam().show, GetParam().type);

    EXPECT_EQ(GetTransferNthRow(1, GetParam().second).toDouble(), GetParam().first);
    EXPECT_EQ(GetTransfer1stRow(3, GetParam().second).toDouble(), GetParam().third);
}

std::string nameOfShown(const testing::TestParamInfo<ShownValue>& given) {
    static const std::vector<std::string> types{"NoType", "AsRecorded", "Differential",
                                                "Percentual"};
    static const std::vector<std::string> shows{"Nothing", "Both",  "Received",
                                                "Sent",    "Total", "Duration"};
    return types[static_cast<std::size_t>(given.param.type + 1)] + "Of" +
           shows[static_cast<std::size_t>(given.param.show + 1)] +
           (given.param.second ? "InColumnTwo" : "InColumnOne");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    All, ShownValueTest,
    testing::Values(
        ShownValue{ 0,  0, false,  1000,  5000}, ShownValue{ 0,  0, second,   100,   700},
        ShownValue{ 0,  1, false,  1000,  5000}, ShownValue{ 0,  1, second,   100,   700},
        ShownValue{ 0,  2, false,   100,   700}, ShownValue{ 0,  2, second,   100,   700},
        ShownValue{ 0,  3, false,  1100,  5700}, ShownValue{ 0,  3, second,   100,   700},
        ShownValue{ 0,  4, false, 60000, 90000}, ShownValue{ 0,  4, second,   100,   700},
        ShownValue{ 0, -1, false,     0,     0}, ShownValue{ 0, -1, second,   100,   700},

        ShownValue{ 1,  0, false,  1000,  2000}, ShownValue{ 1,  0, second,   100,   450},
        ShownValue{ 1,  1, false,  1000,  2000}, ShownValue{ 1,  1, second,   100,   450},
        ShownValue{ 1,  2, false,   100,   450}, ShownValue{ 1,  2, second,   100,   450},
        ShownValue{ 1,  3, false,  1100,  2450}, ShownValue{ 1,  3, second,   100,   450},
        ShownValue{ 1,  4, false, 60000, 60000}, ShownValue{ 1,  4, second,   100,   450},
        ShownValue{ 1, -1, false,     0,     0}, ShownValue{ 1, -1, second,   100,   450},

        ShownValue{ 2,  0, false,    12.5,    62.5}, ShownValue{ 2,  0, second, 25, 175},
        ShownValue{ 2,  1, false,    12.5,    62.5}, ShownValue{ 2,  1, second, 25, 175},
        ShownValue{ 2,  2, false,      25,     175}, ShownValue{ 2,  2, second, 25, 175},
        ShownValue{ 2,  3, false, 13.0952, 67.8571}, ShownValue{ 2,  3, second, 25, 175},
        ShownValue{ 2,  4, false,      50,      75}, ShownValue{ 2,  4, second, 25, 175},
        ShownValue{ 2, -1, false,       0,       0}, ShownValue{ 2, -1, second, 25, 175},

        ShownValue{-1,  0, false,  1000,     0}, ShownValue{-1,  0, second,   100,     0},
        ShownValue{-1,  1, false,  1000,     0}, ShownValue{-1,  1, second,   100,     0},
        ShownValue{-1,  2, false,   100,     0}, ShownValue{-1,  2, second,   100,     0},
        ShownValue{-1,  3, false,  1100,     0}, ShownValue{-1,  3, second,   100,     0},
        ShownValue{-1,  4, false, 60000,     0}, ShownValue{-1,  4, second,   100,     0},
        ShownValue{-1, -1, false,     0,     0}, ShownValue{-1, -1, second,   100,     0}),
    nameOfShown);
// clang-format on

/// A value of column one in all four units and where none is chosen.
struct UnitRow {
    const char* name;
    int show;
    double values[4];
};

class UnitTest : public ChartValuesTest, public testing::WithParamInterface<UnitRow> {
protected:
    UnitTest() {
        constexpr std::int64_t bytes = 3LL * 1024 * 1024 * 1024;
        hold({{Currency::fromWhole(bytes), Currency::fromWhole(bytes), 5'400'000},
              {Currency::fromWhole(bytes), Currency::fromWhole(bytes), 5'400'000}});
    }
};

TEST_P(UnitTest, DividesTheValue) {
    for (int unit = 0; unit < 4; ++unit) {
        choose(GetParam().show, asRecorded, unit);

        EXPECT_EQ(GetTransfer(1, false).toDouble(), GetParam().values[unit]) << unit;
        EXPECT_EQ(GetTransfer(2, false).toDouble(), GetParam().values[unit]) << unit;
    }
}

TEST_P(UnitTest, ThatIsNotChosenLeavesTheValueAlone) {
    choose(GetParam().show, asRecorded, none);

    EXPECT_EQ(GetTransfer(1, false).toDouble(), GetParam().values[0]);
    EXPECT_EQ(GetTransfer(2, false).toDouble(), GetParam().values[0]);
}

TEST_P(UnitTest, ThatThereIsNotLeavesTheValueAlone) {
    window().cboTransferUnit.addItem("other");
    choose(GetParam().show, asRecorded, 4);

    EXPECT_EQ(GetTransfer(1, false).toDouble(), GetParam().values[0]);
}

TEST_P(UnitTest, DoesNotMatterInPercent) {
    for (int unit = none; unit < 4; ++unit) {
        choose(GetParam().show, percentual, unit);

        EXPECT_EQ(GetTransfer(1, false), Currency(100)) << unit;
        EXPECT_EQ(GetTransfer(2, false), Currency(100)) << unit;
    }
}

INSTANTIATE_TEST_SUITE_P(All, UnitTest,
                         testing::Values(UnitRow{"Both", 0, {3'221'225'472, 3'145'728, 3072, 3}},
                                         UnitRow{
                                             "Received", 1, {3'221'225'472, 3'145'728, 3072, 3}},
                                         UnitRow{"Sent", 2, {3'221'225'472, 3'145'728, 3072, 3}},
                                         UnitRow{"Total", 3, {6'442'450'944, 6'291'456, 6144, 6}},
                                         UnitRow{"Duration", 4, {5'400'000, 5400, 90, 1.5}}),
                         [](const auto& given) { return std::string(given.param.name); });

TEST_F(ChartValuesTest, ASecondColumnIsInTheUnitOfTheFirst) {
    hold({{7'200'000, 0, 0}, {7'200'000, 0, 0}});

    choose(both, asRecorded, 1);
    EXPECT_EQ(GetTransfer(2, second).toDouble(), 7031.25);
    choose(duration, asRecorded, 3);
    EXPECT_EQ(GetTransfer(2, second).toDouble(), 2);
}

TEST_F(ChartValuesTest, WhereNothingIsShownThereIsNoUnit) {
    choose(none, asRecorded, 3);

    EXPECT_EQ(GetTransfer(3, second), Currency(700));
}

TEST_F(ChartValuesTest, OneAndAHalfKiloBytesAreNotRounded) {
    hold({{0, 1536, 0}});
    choose(received, asRecorded, 1);

    EXPECT_EQ(GetTransfer(1, false), scaled(15'000));
}

TEST_F(ChartValuesTest, AByteIsNothingInGigaBytes) {
    hold({{0, 1, 0}});
    choose(received, asRecorded, 3);

    EXPECT_EQ(GetTransfer(1, false), Currency(0));
}

TEST_F(ChartValuesTest, HalvesOfTheFourthDecimalGoToTheEvenOne) {
    // 32 / 1024 is 0.03125, 96 / 1024 is 0.09375.
    hold({{0, 32, 0}, {0, 96, 0}, {0, 64, 0}, {0, -32, 0}});

    choose(received, asRecorded, 1);
    EXPECT_EQ(GetTransfer(1, false), scaled(312));
    EXPECT_EQ(GetTransfer(2, false), scaled(938));
    choose(received, differential, 1);
    EXPECT_EQ(GetTransfer(3, false), scaled(-312));
    EXPECT_EQ(GetTransfer(4, false), scaled(-938));
}

TEST_F(ChartValuesTest, HalvesOfTheFourthDecimalOfAPercentageGoToTheEvenOneToo) {
    // 1 / 32 and 3 / 32 of a percent: 0.03125 and 0.09375.
    hold({{0, 1, 0}, {0, 3, 0}, {0, 3200, 0}});
    choose(received, percentual);

    EXPECT_EQ(GetTransfer(1, false), scaled(312));
    EXPECT_EQ(GetTransfer(2, false), scaled(938));
}

TEST_F(ChartValuesTest, FractionsOfBytesCountToo) {
    hold({{scaled(5001), scaled(2500), 0}, {scaled(1), scaled(15'000), 0}});

    choose(total);
    EXPECT_EQ(GetTransfer(1, false), scaled(7501));
    choose(received, differential);
    EXPECT_EQ(GetTransfer(2, false), scaled(12'500));
}

TEST_F(ChartValuesTest, DifferencesMayBeNegative) {
    choose(sent, differential);

    EXPECT_EQ(GetTransfer(4, false), Currency(-300));
}

TEST_F(ChartValuesTest, PercentRefersToTheLastRecordOfTheLogAndNotOfTheRange) {
    range(1, 2);
    choose(received, percentual);

    EXPECT_EQ(GetTransfer(2, false).toDouble(), 37.5);
}

TEST_F(ChartValuesTest, PercentOfTheLastRecordIsAHundred) {
    choose(total, percentual);

    EXPECT_EQ(GetTransfer(4, false), Currency(100));
}

TEST_F(ChartValuesTest, ALogOfOneRecordIsAHundredPercent) {
    hold({{7, 9, 11}});

    for (const int show : {both, received, sent, total, duration}) {
        choose(show, percentual);
        EXPECT_EQ(GetTransfer(1, false), Currency(100)) << show;
        EXPECT_EQ(GetTransfer(1, second), Currency(100)) << show;
    }
}

TEST_F(ChartValuesTest, AnErrorWithRecordOneIsReportedUnderTheOtherName) {
    hold({{0, 5, 0}, {0, 0, 0}});
    choose(received, percentual);
    expectError("11 (Division by zero)", "GetTransferNthRow");

    EXPECT_EQ(GetTransfer(1, false), Currency(0));
}

TEST_F(ChartValuesTest, AnErrorWithALaterRecordIsReportedUnderTheOtherName) {
    hold({{0, 5, 0}, {0, 5, 0}, {0, 0, 0}});
    choose(received, percentual);
    expectError("11 (Division by zero)", "GetTransfer1stRow");

    EXPECT_EQ(GetTransfer(2, false), Currency(0));
}

TEST_F(ChartValuesTest, OnlyTheReferenceOfItsOwnColumnMatters) {
    hold({{10, 5, 0}, {20, 0, 0}});
    choose(both, percentual);
    expectError("11 (Division by zero)", "GetTransferNthRow");

    EXPECT_EQ(GetTransfer(1, second), Currency(50));
    EXPECT_EQ(GetTransfer(1, false), Currency(0));
}

TEST_F(ChartValuesTest, ATotalHasAReferenceAsLongAsOneOfBothHas) {
    hold({{1, 1, 0}, {8, 0, 0}});
    choose(total, percentual);

    EXPECT_EQ(GetTransfer(1, false), Currency(25));
}

TEST_F(ChartValuesTest, ARecordBeforeTheFirstIsAnError) {
    choose(received);
    for (const std::int32_t r : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
        expectError("9 (Subscript out of range)", "GetTransferNthRow");

        EXPECT_EQ(GetTransfer(r, false), Currency(0)) << r;
    }
}

TEST_F(ChartValuesTest, ARecordBehindTheLastIsAnError) {
    for (const int type : {asRecorded, differential, percentual}) {
        choose(duration, type);
        for (const std::int32_t r : {6, std::numeric_limits<std::int32_t>::max()}) {
            expectError("9 (Subscript out of range)", "GetTransfer1stRow");

            EXPECT_EQ(GetTransfer(r, false), Currency(0)) << r;
        }
    }
}

TEST_F(ChartValuesTest, TheRecordRightBehindTheLastIsAnErrorToo) {
    choose(received, differential);
    expectError("9 (Subscript out of range)", "GetTransfer1stRow");

    EXPECT_EQ(GetTransfer(5, false), Currency(0));
}

TEST_F(ChartValuesTest, WithoutADataTypeNoRecordIsLookedUp) {
    choose(received, none);

    EXPECT_EQ(GetTransfer(1000, false), Currency(0));
}

TEST_F(ChartValuesTest, AnEmptyLogHasNoRecordOne) {
    hold({});
    choose(received);
    expectError("9 (Subscript out of range)", "GetTransferNthRow");

    EXPECT_EQ(GetTransfer(1, false), Currency(0));
}

TEST_F(ChartValuesTest, ATotalBeyondAllNumbersIsAnError) {
    const Currency most = scaled(std::numeric_limits<std::int64_t>::max());
    hold({{most, scaled(1), 0}, {most, scaled(1), 0}, {1, 1, 0}});
    choose(total);
    expectError("6 (Overflow)", "GetTransferNthRow");
    expectError("6 (Overflow)", "GetTransfer1stRow");

    EXPECT_EQ(GetTransfer(1, false), Currency(0));
    EXPECT_EQ(GetTransfer(2, false), Currency(0));
}

TEST_F(ChartValuesTest, ATotalMayBeTheLargestNumber) {
    const std::int64_t most = std::numeric_limits<std::int64_t>::max();
    hold({{scaled(most - 1), scaled(1), 0}});
    choose(total);

    EXPECT_EQ(GetTransfer(1, false), scaled(most));
}

TEST_F(ChartValuesTest, ADifferenceBeyondAllNumbersIsAnError) {
    hold({{0, scaled(-2), 0}, {0, scaled(std::numeric_limits<std::int64_t>::max()), 0}});
    choose(received, differential);
    expectError("6 (Overflow)", "GetTransfer1stRow");

    EXPECT_EQ(GetTransfer(2, false), Currency(0));
}

TEST_F(ChartValuesTest, APercentageBeyondAllNumbersIsAnError) {
    hold({{0, scaled(std::numeric_limits<std::int64_t>::max()), 0}, {0, scaled(1), 0}});
    choose(received, percentual);
    expectError("6 (Overflow)", "GetTransferNthRow");

    EXPECT_EQ(GetTransfer(1, false), Currency(0));
}

} // namespace
} // namespace tarvik
