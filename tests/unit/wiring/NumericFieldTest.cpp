#include "wiring/NumericField.h"

#include "support/WorldTest.h"

#include <tuple>

namespace tarvik {
namespace {

struct Field {
    const char* name;
    TextBox FrmOptions::*box;
    const char* standard;
};

constexpr Field hours{"txtDurationLimitHr", &FrmOptions::txtDurationLimitHr, "600"};
constexpr Field minutes{"txtDurationLimitMin", &FrmOptions::txtDurationLimitMin, "0"};
constexpr Field interval{"txtRefreshInterval", &FrmOptions::txtRefreshInterval, "1000"};
constexpr Field limit{"txtTransferLimit", &FrmOptions::txtTransferLimit, "1000000"};
constexpr Field ticker{"txtTransferTicker", &FrmOptions::txtTransferTicker, "100"};

auto everyField() {
    return testing::Values(hours, minutes, interval, limit, ticker);
}

void PrintTo(const Field& field, std::ostream* out) {
    *out << field.name;
}

class FieldTest : public WorldTest {
protected:
    TextBox& box(const Field& field) { return frmOptions().*field.box; }

    /// One key: it goes down, changes the text, and comes up.
    void type(const Field& field, const std::string& text) {
        box(field).KeyDown.raise();
        box(field).setText(text);
        box(field).KeyUp.raise();
    }

    /// What comes back when a key deletes that text.
    std::string restoredAfter(const Field& field, const std::string& text) {
        box(field).setText(text);
        type(field, "");
        return box(field).text();
    }
};

class NumericFieldTest : public FieldTest, public testing::WithParamInterface<Field> {
protected:
    TextBox& box() { return FieldTest::box(GetParam()); }
    void type(const std::string& text) { FieldTest::type(GetParam(), text); }
    std::string keyDown() const { return std::string(GetParam().name) + "_KeyDown"; }
};

INSTANTIATE_TEST_SUITE_P(All, NumericFieldTest, everyField(),
                         [](const auto& given) { return given.param.name; });

TEST_P(NumericFieldTest, ComingToItSelectsTheWholeText) {
    box().setText("12345");
    box().select(2, 1);

    box().GotFocus.raise();

    EXPECT_EQ(box().text(), "12345");
    EXPECT_EQ(box().selStart(), 0);
    EXPECT_EQ(box().selLength(), 5);
}

TEST_P(NumericFieldTest, ComingToItStripsTheBlanksAroundTheText) {
    box().setText("  1 2   ");

    box().GotFocus.raise();

    EXPECT_EQ(box().text(), "1 2");
    EXPECT_EQ(box().selStart(), 0);
    EXPECT_EQ(box().selLength(), 3);
}

TEST_P(NumericFieldTest, ComingToItWithBlanksOnlyLeavesNothingToSelect) {
    box().setText("   ");
    box().select(1, 2);

    box().GotFocus.raise();

    EXPECT_EQ(box().text(), "");
    EXPECT_EQ(box().selStart(), 0);
    EXPECT_EQ(box().selLength(), 0);
}

TEST_P(NumericFieldTest, ANumberStaysAsItWasTyped) {
    box().setText("42");

    type(" 0043.50 ");

    EXPECT_EQ(box().text(), " 0043.50 ");
    EXPECT_EQ(machine.desktop.beeps, 0);
}

TEST_P(NumericFieldTest, ALetterBeepsOnceAndIsUndone) {
    box().setText("42");

    type("42x");

    EXPECT_EQ(box().text(), "42");
    EXPECT_EQ(machine.desktop.beeps, 1);
}

TEST_P(NumericFieldTest, ABlankBetweenDigitsBeepsAndIsUndone) {
    box().setText("42");

    type("4 2");

    EXPECT_EQ(box().text(), "42");
    EXPECT_EQ(machine.desktop.beeps, 1);
}

TEST_P(NumericFieldTest, DeletingEverythingIsUndoneWithoutABeep) {
    box().setText("42");

    type("");

    EXPECT_EQ(box().text(), "42");
    EXPECT_EQ(machine.desktop.beeps, 0);
}

TEST_P(NumericFieldTest, ReplacingEverythingByBlanksIsUndoneWithoutABeep) {
    box().setText("42");

    type("  ");

    EXPECT_EQ(box().text(), "42");
    EXPECT_EQ(machine.desktop.beeps, 0);
}

TEST_P(NumericFieldTest, EachKeyIsUndoneToTheNumberBeforeIt) {
    box().setText("4");
    type("42");
    type("421");

    type("421x");

    EXPECT_EQ(box().text(), "421");
}

TEST_P(NumericFieldTest, AfterATextThatIsNoNumberTheDefaultComesBack) {
    box().setText("42");
    type("43");
    box().setText("abc");

    type("");

    EXPECT_EQ(box().text(), GetParam().standard);
}

TEST_P(NumericFieldTest, AfterAnEmptyTextTheDefaultComesBack) {
    box().setText("42");
    type("43");
    box().setText("");

    type("x");

    EXPECT_EQ(box().text(), GetParam().standard);
    EXPECT_EQ(machine.desktop.beeps, 1);
}

TEST_P(NumericFieldTest, AKeyThatWentDownElsewhereBringsTheDefaultBack) {
    box().setText("");

    box().KeyUp.raise();

    EXPECT_EQ(box().text(), GetParam().standard);
}

TEST_P(NumericFieldTest, BlanksAroundAndInsideANumberAreLeftOutWhenItComesBack) {
    EXPECT_EQ(restoredAfter(GetParam(), "  1 2  3 "), "123");
}

TEST_P(NumericFieldTest, TheLargestAndTheSmallestNumberComeBack) {
    EXPECT_EQ(restoredAfter(GetParam(), "2147483647"), "2147483647");
    EXPECT_EQ(restoredAfter(GetParam(), "-2147483648"), "-2147483648");
}

TEST_P(NumericFieldTest, ANumberBeyond32BitsIsReportedWhenAKeyGoesDown) {
    for (const char* text : {"2147483648", "-2147483649", "2147483647.5", "1E308"}) {
        box().setText(text);
        expectError("6 (Overflow)", keyDown());

        box().KeyDown.raise();
    }
}

TEST_P(NumericFieldTest, ANumberBeyond32BitsLeavesTheRememberedOne) {
    box().setText("42");
    type("3000000000");
    expectError("6 (Overflow)", keyDown());

    type("");

    EXPECT_EQ(box().text(), "42");
}

TEST_P(NumericFieldTest, ANumberBeyondEveryFloatingPointNumberIsNone) {
    box().setText("42");
    type("43");
    box().setText("1E309");

    type("1E3090");

    EXPECT_EQ(box().text(), GetParam().standard);
    EXPECT_EQ(machine.desktop.beeps, 1);
}

TEST_P(NumericFieldTest, AKeyInAnotherFieldLeavesTheRememberedNumber) {
    box().setText("42");
    box().KeyDown.raise();
    for (const Field& other : {hours, minutes, interval, limit, ticker}) {
        if (&FieldTest::box(other) != &box()) {
            FieldTest::type(other, "7");
            FieldTest::type(other, "78");
        }
    }

    box().setText("");
    box().KeyUp.raise();

    EXPECT_EQ(box().text(), "42");
}

struct Conventions {
    const char* name;
    LocaleData (*data)();
};

constexpr Conventions american{"American", americanLocale};
constexpr Conventions german{"German", germanLocale};
constexpr Conventions swedish{"Swedish", swedishLocale};

struct RestoreCase {
    Conventions conventions;
    const char* before;
    const char* restored;
};

void PrintTo(const RestoreCase& given, std::ostream* out) {
    *out << given.conventions.name << " \"" << given.before << '"';
}

class RestoredNumberTest : public FieldTest,
                           public testing::WithParamInterface<std::tuple<Field, RestoreCase>> {};

TEST_P(RestoredNumberTest, IsTheNearestWholeNumber) {
    const auto& [field, given] = GetParam();
    machine.locale.conventions = given.conventions.data();

    const std::string restored = restoredAfter(field, given.before);

    EXPECT_EQ(restored, given.restored);
}

INSTANTIATE_TEST_SUITE_P(
    American, RestoredNumberTest,
    testing::Combine(
        everyField(),
        testing::Values(RestoreCase{american, "12.5", "12"}, RestoreCase{american, "13.5", "14"},
                        RestoreCase{american, "12.50001", "13"}, RestoreCase{american, "-7", "-7"},
                        RestoreCase{american, "+7", "7"}, RestoreCase{american, "7-", "-7"},
                        RestoreCase{american, "1E3", "1000"}, RestoreCase{american, "15e-1", "2"},
                        RestoreCase{american, "1,234", "1234"}, RestoreCase{american, "007", "7"},
                        RestoreCase{american, "2147483647.4", "2147483647"})));

INSTANTIATE_TEST_SUITE_P(German, RestoredNumberTest,
                         testing::Combine(everyField(),
                                          testing::Values(RestoreCase{german, "12,5", "12"},
                                                          RestoreCase{german, "13,5", "14"},
                                                          RestoreCase{german, "-1,5E3", "-1500"},
                                                          RestoreCase{german, "1.234", "1234"})));

INSTANTIATE_TEST_SUITE_P(Swedish, RestoredNumberTest,
                         testing::Combine(everyField(),
                                          testing::Values(RestoreCase{swedish, "12,5", "12"},
                                                          RestoreCase{swedish,
                                                                      "1\xC2\xA0"
                                                                      "234",
                                                                      "1234"},
                                                          RestoreCase{swedish, "1 234", "1234"})));

struct ValidCase {
    Conventions conventions;
    const char* text;
    bool valid;
    int beeps;
};

void PrintTo(const ValidCase& given, std::ostream* out) {
    *out << given.conventions.name << " \"" << given.text << '"';
}

class ValidValueTest : public WorldTest, public testing::WithParamInterface<ValidCase> {};

TEST_P(ValidValueTest, TellsANumberAndBeepsAtAnyOtherTextButAnEmptyOne) {
    machine.locale.conventions = GetParam().conventions.data();
    frmOptions().txtTransferTicker.setText(GetParam().text);

    const bool valid = ValidValue(frmOptions().txtTransferTicker);

    EXPECT_EQ(valid, GetParam().valid);
    EXPECT_EQ(machine.desktop.beeps, GetParam().beeps);
    EXPECT_EQ(frmOptions().txtTransferTicker.text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, ValidValueTest,
    testing::Values(ValidCase{american, "5", true, 0}, ValidCase{american, "  5 ", true, 0},
                    ValidCase{american, "-5", true, 0}, ValidCase{american, "1.5", true, 0},
                    ValidCase{american, "1E3", true, 0}, ValidCase{american, "3000000000", true, 0},
                    ValidCase{american, "1E308", true, 0}, ValidCase{german, "1,5", true, 0},
                    ValidCase{german, "1.234,5", true, 0}, ValidCase{swedish, "1 234", true, 0}));

INSTANTIATE_TEST_SUITE_P(
    Others, ValidValueTest,
    testing::Values(ValidCase{american, "", false, 0}, ValidCase{american, " ", false, 0},
                    ValidCase{american, "     ", false, 0}, ValidCase{american, "x", false, 1},
                    ValidCase{american, " 5x ", false, 1}, ValidCase{american, "-", false, 1},
                    ValidCase{american, ".", false, 1}, ValidCase{american, "1 2", false, 1},
                    ValidCase{american, "1E309", false, 1}, ValidCase{american, "1E", false, 1},
                    ValidCase{german, ",", false, 1}, ValidCase{german, "1,2,3", false, 1},
                    ValidCase{swedish, "1.5", false, 1}));

/// What OK makes of the numbers.
class AppliedNumberTest : public FieldTest {
protected:
    AppliedNumberTest() { startQuietly(); }

    void open() { frmMain().cmdOptions.press(); }
    void pressOk() { frmOptions().cmdOK.press(); }
};

TEST_F(AppliedNumberTest, TheLimitIsShownWithTheDecimalSeparatorOfTheUser) {
    machine.locale.conventions = germanLocale();
    state().TransferLimitValue = Currency::fromScaled(12'345'000);

    open();

    EXPECT_EQ(frmOptions().txtTransferLimit.text(), "1234,5");
}

TEST_F(AppliedNumberTest, OkReadsNumbersAsTheUserWritesThem) {
    machine.locale.conventions = germanLocale();
    open();
    frmOptions().txtTransferLimit.setText("1.234,5");
    frmOptions().txtDurationLimitHr.setText(" 12,5 ");
    frmOptions().txtDurationLimitMin.setText("13,5");
    frmOptions().txtRefreshInterval.setText("1.200");
    frmOptions().txtTransferTicker.setText("2E2");

    pressOk();

    EXPECT_EQ(state().TransferLimitValue, Currency::fromScaled(12'345'000));
    EXPECT_EQ(state().DurationLimitHr, Long(12));
    EXPECT_EQ(state().DurationLimitMin, Long(14));
    EXPECT_EQ(state().RefreshInterval, Long(1200));
    EXPECT_EQ(state().TransferTickerValue, Long(200));
}

TEST_F(AppliedNumberTest, HoursAndMinutesOfAnySizeAreKept) {
    open();
    frmOptions().txtDurationLimitHr.setText("-5");
    frmOptions().txtDurationLimitMin.setText("2147483647");

    pressOk();

    EXPECT_EQ(state().DurationLimitHr, Long(-5));
    EXPECT_EQ(state().DurationLimitMin, Long(2'147'483'647));
}

struct RangeCase {
    const char* typed;
    std::int32_t applied;
};

class IntervalRangeTest : public AppliedNumberTest,
                          public testing::WithParamInterface<RangeCase> {};

TEST_P(IntervalRangeTest, OutsideItTheDefaultIsSettingAndIntervalOfTheTimer) {
    state().RefreshInterval = 300;
    open();
    frmOptions().txtRefreshInterval.setText(GetParam().typed);

    pressOk();

    EXPECT_EQ(state().RefreshInterval, Long(GetParam().applied));
    EXPECT_EQ(frmMain().timUpdateStats.interval(), GetParam().applied);
    EXPECT_EQ(frmOptions().txtRefreshInterval.text(), GetParam().typed);
    open();
    EXPECT_EQ(frmOptions().txtRefreshInterval.text(), std::to_string(GetParam().applied));
}

INSTANTIATE_TEST_SUITE_P(All, IntervalRangeTest,
                         testing::Values(RangeCase{"99", 1000}, RangeCase{"100", 100},
                                         RangeCase{"50000", 50'000}, RangeCase{"50001", 1000},
                                         RangeCase{"0", 1000}, RangeCase{"-100", 1000}));

class TickerRangeTest : public AppliedNumberTest, public testing::WithParamInterface<RangeCase> {};

TEST_P(TickerRangeTest, OutsideItTheDefaultIsTheSetting) {
    state().TransferTickerValue = 50;
    open();
    frmOptions().txtTransferTicker.setText(GetParam().typed);

    pressOk();

    EXPECT_EQ(state().TransferTickerValue, Long(GetParam().applied));
    EXPECT_EQ(frmOptions().txtTransferTicker.text(), GetParam().typed);
    open();
    EXPECT_EQ(frmOptions().txtTransferTicker.text(), std::to_string(GetParam().applied));
}

INSTANTIATE_TEST_SUITE_P(All, TickerRangeTest,
                         testing::Values(RangeCase{"0", 100}, RangeCase{"1", 1},
                                         RangeCase{"9999", 9999}, RangeCase{"10000", 100},
                                         RangeCase{"-1", 100}));

TEST_F(AppliedNumberTest, ANewIntervalCountsFromOk) {
    int ticks = 0;
    frmMain().timUpdateStats.Tick.connect([&] { ++ticks; });
    frmMain().timUpdateStats.setEnabled(true);
    machine.desktop.advance(500);
    open();
    frmOptions().txtRefreshInterval.setText("200");

    pressOk();

    machine.desktop.advance(400);
    EXPECT_EQ(ticks, 2);
}

} // namespace
} // namespace tarvik
