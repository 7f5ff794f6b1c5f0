#include "monitor/LimitsTest.h"

namespace tarvik {
namespace {

// When a limit is reached.

TEST_F(LimitsTest, AsManyBytesAsTheLimitAreAllowed) {
    limitTransfer(1'000'000);
    warn();
    connection(1'000'000, 0, 0);

    tick();

    EXPECT_FALSE(frmWarning().visible());
}

TEST_F(LimitsTest, OneByteMoreThanTheLimitWarns) {
    limitTransfer(1'000'000);
    warn();
    connection(1'000'001, 0, 0);

    tick();

    EXPECT_TRUE(frmWarning().visible());
}

struct CountedCase {
    const char* name;
    int rcvdTotal;
    int rcvdCurrent;
    int rcvdOffset;
    int sentTotal;
    int sentCurrent;
    int sentOffset;
    bool reached;
};

class CountedBytesTest : public LimitsTest, public testing::WithParamInterface<CountedCase> {};

TEST_P(CountedBytesTest, AreTotalsAndSessionsLessTheirOffsets) {
    limitTransfer(1000);
    warn();
    state().BytesRcvdTotal = GetParam().rcvdTotal;
    state().BytesRcvdCurrent = GetParam().rcvdCurrent;
    state().BytesRcvdOffset = GetParam().rcvdOffset;
    state().BytesSentTotal = GetParam().sentTotal;
    state().BytesSentCurrent = GetParam().sentCurrent;
    state().BytesSentOffset = GetParam().sentOffset;

    CheckLimits();

    EXPECT_EQ(frmWarning().visible(), GetParam().reached);
}

INSTANTIATE_TEST_SUITE_P(
    Each, CountedBytesTest,
    testing::Values(CountedCase{"ReceivedTotal", 1001, 0, 0, 0, 0, 0, true},
                    CountedCase{"ReceivedInTheSession", 0, 1001, 0, 0, 0, 0, true},
                    CountedCase{"SentTotal", 0, 0, 0, 1001, 0, 0, true},
                    CountedCase{"SentInTheSession", 0, 0, 0, 0, 1001, 0, true},
                    CountedCase{"AllOfThem", 250, 250, 0, 250, 251, 0, true},
                    CountedCase{"ReceivedButDeclined", 0, 1001, 1, 0, 0, 0, false},
                    CountedCase{"SentButDeclined", 0, 0, 0, 0, 1001, 1, false},
                    CountedCase{"MoreThanWasDeclined", 500, 900, 600, 200, 500, 499, true},
                    CountedCase{"JustNotMoreThanWasDeclined", 500, 900, 600, 200, 500, 500, false}),
    [](const auto& given) { return given.param.name; });

TEST_F(LimitsTest, AFractionOfAByteCountsInTheLimit) {
    limitTransfer(Currency::fromScaled(10'005'000));
    warn();
    state().BytesRcvdTotal = 1000;
    CheckLimits();
    EXPECT_FALSE(frmWarning().visible());
    state().BytesRcvdTotal = 1001;

    CheckLimits();

    EXPECT_TRUE(frmWarning().visible());
}

TEST_F(LimitsTest, AsLongATimeAsTheLimitIsAllowed) {
    limitDuration(0, 1);
    warn();
    connection(0, 0, 60'000);

    tick();

    EXPECT_FALSE(frmWarning().visible());
}

TEST_F(LimitsTest, OneMillisecondMoreThanTheLimitWarns) {
    limitDuration(0, 1);
    warn();
    connection(0, 0, 60'001);

    tick();

    EXPECT_TRUE(frmWarning().visible());
}

TEST_F(LimitsTest, HoursAndMinutesAreAddedUp) {
    limitDuration(2, 30);
    warn();
    connection(0, 0, 9'000'000);
    tick();
    EXPECT_FALSE(frmWarning().visible());
    line().transfer(line().connections.front().handle, 0, 0, 1);

    tick();

    EXPECT_TRUE(frmWarning().visible());
}

TEST_F(LimitsTest, TheTimeOfFormerSessionsCounts) {
    limitDuration(0, 1);
    warn();
    state().DurationTotal = 59'000;
    connection(0, 0, 1001);

    tick();

    EXPECT_TRUE(frmWarning().visible());
}

TEST_F(LimitsTest, TheTimeThatTheUserDeclinedDoesNotCount) {
    limitDuration(0, 1);
    warn();
    const std::uint32_t handle = line().connect("Harbour");
    line().transfer(handle, 0, 0, 70'000);
    expectSessionQuestion("0", MsgBoxAnswer::No);
    tick();
    line().transfer(handle, 0, 0, 60'000);

    tick();

    EXPECT_EQ(state().DurationOffset, Long(70'000));
    EXPECT_FALSE(frmWarning().visible());
}

TEST_F(LimitsTest, EitherLimitIsEnough) {
    limitTransfer(1'000'000);
    limitDuration(0, 1);
    warn();
    connection(1, 1, 60'001);

    tick();

    EXPECT_TRUE(frmWarning().visible());
}

struct SwitchCase {
    const char* name;
    std::uint8_t transfer;
    std::uint8_t duration;
};

class LimitSwitchTest : public LimitsTest, public testing::WithParamInterface<SwitchCase> {};

TEST_P(LimitSwitchTest, OnlyTheEnabledLimitIsChecked) {
    state().TransferLimit = GetParam().transfer;
    state().TransferLimitValue = GetParam().transfer != 0 ? 1000 : 0;
    state().DurationLimit = GetParam().duration;
    state().DurationLimitMin = GetParam().duration != 0 ? 1 : 0;
    warn();
    hangUp();
    connection(1000, 0, 60'000);

    tick();

    EXPECT_FALSE(frmWarning().visible());
    EXPECT_EQ(hangUps(), 0);
}

INSTANTIATE_TEST_SUITE_P(Each, LimitSwitchTest,
                         testing::Values(SwitchCase{"Neither", 0, 0}, SwitchCase{"Transfer", 1, 0},
                                         SwitchCase{"Duration", 0, 1}),
                         [](const auto& given) { return given.param.name; });

TEST_F(LimitsTest, WithoutAnActionNothingHappens) {
    limitTransfer(0);
    limitDuration(0, 0);
    connection(5000, 0, 5000);

    tick();

    EXPECT_FALSE(frmWarning().visible());
    EXPECT_EQ(hangUps(), 0);
}

TEST_F(LimitsTest, WithoutAnActionNothingIsEvenAddedUp) {
    limitTransfer(0);
    limitDuration(0, 0);
    state().BytesRcvdTotal = Currency::fromScaled(INT64_MAX);
    state().BytesRcvdCurrent = 1;
    state().DurationTotal = Currency::fromScaled(INT64_MAX);
    state().DurationCurrent = 1;

    CheckLimits();

    EXPECT_TRUE(machine.desktop.boxesShown.empty());
}

TEST_F(LimitsTest, OfflineNoLimitIsChecked) {
    limitTransfer(0);
    warn();
    state().BytesRcvdTotal = 5000;

    tick();

    EXPECT_FALSE(frmWarning().visible());
}

// Large figures.

TEST_F(LimitsTest, SixHundredHoursDoNotOverflow) {
    limitDuration(600, 0);
    warn();
    state().DurationTotal = Currency::fromWhole(2'160'000'000);
    CheckLimits();
    EXPECT_FALSE(frmWarning().visible());
    state().DurationCurrent = 1;

    CheckLimits();

    EXPECT_TRUE(frmWarning().visible());
}

TEST_F(LimitsTest, AbsurdLimitsAreNeverReachedWithoutAnError) {
    limitDuration(INT32_MAX, INT32_MAX);
    limitTransfer(Currency::fromScaled(INT64_MAX));
    warn();
    state().DurationTotal = Currency::fromWhole(922'337'203'685'477);
    state().BytesRcvdTotal = Currency::fromWhole(922'337'203'685'477);

    CheckLimits();

    EXPECT_FALSE(frmWarning().visible());
}

struct OverflowCase {
    const char* name;
    Currency State::*total;
    Counter State::*current;
};

class LimitOverflowTest : public LimitsTest, public testing::WithParamInterface<OverflowCase> {};

TEST_P(LimitOverflowTest, IsReportedAndNothingHappens) {
    limitTransfer(0);
    limitDuration(0, 0);
    warn();
    hangUp();
    state().*GetParam().total = Currency::fromScaled(INT64_MAX);
    state().*GetParam().current = 1;
    expectError("6 (Overflow)", "CheckLimits");

    CheckLimits();

    EXPECT_FALSE(frmWarning().visible());
}

INSTANTIATE_TEST_SUITE_P(
    Each, LimitOverflowTest,
    testing::Values(OverflowCase{"Received", &State::BytesRcvdTotal, &State::BytesRcvdCurrent},
                    OverflowCase{"Sent", &State::BytesSentTotal, &State::BytesSentCurrent},
                    OverflowCase{"Time", &State::DurationTotal, &State::DurationCurrent}),
    [](const auto& given) { return given.param.name; });

/// The limits as they are before anything was set.
class DefaultLimitsTest : public WorldTest {
protected:
    DefaultLimitsTest() {
        phoneBook({"Harbour"});
        expectFirstRunBoxes();
        start();
    }
};

TEST_F(DefaultLimitsTest, TheWarningIsArmedButNoLimitIsChecked) {
    state().TransferLimitWarning = 1;
    state().BytesRcvdTotal = 1'000'001;

    CheckLimits();

    EXPECT_TRUE(state().LimitWarningArmed);
    EXPECT_FALSE(world->forms.frmWarning.visible());
}

TEST_F(DefaultLimitsTest, OfTransferIsAMillionBytes) {
    state().TransferLimit = 1;
    state().TransferLimitWarning = 1;
    state().BytesRcvdTotal = 1'000'000;
    CheckLimits();
    EXPECT_FALSE(world->forms.frmWarning.visible());
    state().BytesRcvdTotal = 1'000'001;

    CheckLimits();

    EXPECT_TRUE(world->forms.frmWarning.visible());
}

TEST_F(DefaultLimitsTest, OfTimeIsSixHundredHours) {
    state().DurationLimit = 1;
    state().TransferLimitWarning = 1;
    state().DurationTotal = Currency::fromWhole(2'160'000'000);
    CheckLimits();
    EXPECT_FALSE(world->forms.frmWarning.visible());
    state().DurationTotal = Currency::fromWhole(2'160'000'001);

    CheckLimits();

    EXPECT_TRUE(world->forms.frmWarning.visible());
}

} // namespace
} // namespace tarvik
