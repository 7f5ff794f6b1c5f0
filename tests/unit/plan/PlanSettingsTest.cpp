#include "plan/PlanSettings.h"
#include "plan/PlanTest.h"
#include "plan/PlanWords.h"

#include "scripted/ScriptedPlatform.h"

#include <gtest/gtest.h>

namespace tarvik::planned {
namespace {

class PlanSettingsTest : public testing::Test {
protected:
    static constexpr const char* ini = "C:\\Prog\\Tarvik.ini";

    ScriptedPlatform machine;
    PrivateProfile& profile = machine.platform.profile;

    std::optional<Plan> read(int number = 1) { return readPlan(profile, ini, number); }
    bool write(const Plan& plan) { return writePlan(profile, ini, plan); }
};

Plan fullPlan() {
    return {
        .number = 3,
        .counted = Counted::Larger,
        .rollOver = RollOver::UpTo,
        .dealOut = DealOut::CarryOn,
        .blockAfterLast = true,
        .name = " \"Home\" 100 %\n",
        .made = utc(11, 16, 435min) + 22s,
        .lines = {"Ridge", "a|b", " Harbour \""},
        .allowance = DataSize{.thousandths = 2'500, .unit = SizeUnit::GiB},
        .hours = 20,
        .period = {.kind = PeriodKind::Weeks,
                   .hour = 23,
                   .day = 31,
                   .every = 366,
                   .weekday = 7,
                   .from = dayOfCalendar(2026, 11, 2),
                   .until = dayOfCalendar(2027, 11, 2)},
        .rollOverMost = {.thousandths = 500'000, .unit = SizeUnit::MB},
        .rollOverHours = 5,
        .reservePercent = 10,
        .thresholds = {{.percent = 50},
                       {.percent = 80, .note = false, .window = true, .hangUp = HangUpRule::AtOnce},
                       {.percent = 100,
                        .hangUp = HangUpRule::AfterGrace,
                        .grace = {.thousandths = 1'500, .unit = SizeUnit::MiB},
                        .graceMinutes = 30,
                        .program = "C:\\Tools | more\\tell.exe \"now\" 5%"}},
        .said = {{.period = dayOfCalendar(2026, 10, 5) + 0h},
                 {.period = dayOfCalendar(2026, 11, 2) + 23h, .said = {50, 80}, .hungUp = {80}}}};
}

TEST_F(PlanSettingsTest, WithoutASectionThereIsNone) {
    machine.files.setFile(ini, "[Settings]\r\nPeriod=Month\r\n");

    EXPECT_FALSE(read());
}

TEST_F(PlanSettingsTest, WhatWasWrittenIsReadBack) {
    EXPECT_TRUE(write(fullPlan()));

    EXPECT_EQ(read(3), fullPlan());
    EXPECT_FALSE(read(1));
}

TEST_F(PlanSettingsTest, SoIsAPlanAsItIsUnlessSet) {
    write(Plan());

    EXPECT_EQ(read(), Plan());
}

TEST_F(PlanSettingsTest, ItsSectionIsToBeReadByAnyone) {
    Plan plan = tenGigabytes();
    plan.made = utc(11, 16);
    plan.thresholds = {{.percent = 80}};

    write(plan);

    EXPECT_EQ(machine.files.file(ini), "[Plan 1]\r\n"
                                       "Name=\"Home\"\r\n"
                                       "Made=2026-11-16T00:00:00Z\r\n"
                                       "Lines=\"\"\r\n"
                                       "Counts=Both\r\n"
                                       "Allowance=10 GB\r\n"
                                       "Hours=\r\n"
                                       "Period=Month\r\n"
                                       "Hour=0\r\n"
                                       "Day=1\r\n"
                                       "Every=1\r\n"
                                       "Weekday=1\r\n"
                                       "From=1970-01-01\r\n"
                                       "Until=\r\n"
                                       "RollOver=None\r\n"
                                       "RollOverMost=0 GB\r\n"
                                       "RollOverHours=0\r\n"
                                       "Reserve=0\r\n"
                                       "Budget=Evenly\r\n"
                                       "Threshold1=80 note\r\n"
                                       "Threshold2=\r\n"
                                       "Threshold3=\r\n"
                                       "Threshold4=\r\n"
                                       "Threshold5=\r\n"
                                       "BlockAfterLast=0\r\n"
                                       "Said=\r\n");
}

TEST_F(PlanSettingsTest, AnUnknownKeyIsKept) {
    write(fullPlan());
    profile.WritePrivateProfileStringA("Plan 3", "Colour", "blue", ini);

    write(fullPlan());

    EXPECT_NE(machine.files.file(ini).find("Colour=blue"), std::string::npos);
    EXPECT_EQ(read(3), fullPlan());
}

TEST_F(PlanSettingsTest, AValueThatIsNoneIsAsInANewPlan) {
    for (const PlanSetting& one : planSettings()) {
        if (one.key == "Name" || one.key == "Lines") {
            continue; // every text is one
        }
        write(fullPlan());
        profile.WritePrivateProfileStringA("Plan 3", one.key, "-7 of any", ini);
        const auto plan = read(3);
        ASSERT_TRUE(plan) << one.key;
        Plan expected = fullPlan();
        Plan standard{.number = 3};
        if (!one.key.starts_with("Threshold")) {
            one.read(expected, one.text(standard));
            EXPECT_EQ(*plan, expected) << one.key;
        }
    }
}

TEST_F(PlanSettingsTest, AThresholdThatIsNoneIsLeftOut) {
    write(fullPlan());
    profile.WritePrivateProfileStringA("Plan 3", "Threshold2", "80 notes", ini);

    EXPECT_EQ(read(3)->thresholds,
              (std::vector{fullPlan().thresholds[0], fullPlan().thresholds[2]}));
}

TEST_F(PlanSettingsTest, OfTwoWordsForHangingUpTheLastCounts) {
    const auto threshold = readThreshold("80 hangup+5MB+30min hangup");

    ASSERT_TRUE(threshold);
    EXPECT_EQ(*threshold, (Threshold{.percent = 80, .note = false, .hangUp = HangUpRule::AtOnce}));
}

TEST_F(PlanSettingsTest, NumbersBeyondTheirRangeAreNone) {
    const auto takes = [](std::string_view key, std::string_view value) {
        const auto row = std::find_if(planSettings().begin(), planSettings().end(),
                                      [&](const PlanSetting& one) { return one.key == key; });
        Plan plan;
        return row->read(plan, value);
    };

    EXPECT_TRUE(takes("Hour", "23"));
    EXPECT_FALSE(takes("Hour", "24"));
    EXPECT_TRUE(takes("Day", "31"));
    EXPECT_FALSE(takes("Day", "0"));
    EXPECT_FALSE(takes("Day", "32"));
    EXPECT_FALSE(takes("Every", "367"));
    EXPECT_FALSE(takes("Weekday", "8"));
    EXPECT_FALSE(takes("Hours", "0"));
    EXPECT_FALSE(takes("Hours", "100000"));
    EXPECT_FALSE(takes("Reserve", "100"));
    EXPECT_FALSE(takes("Allowance", "0 GB"));
    EXPECT_FALSE(takes("From", "2026-02-29"));
    EXPECT_FALSE(takes("Threshold1", "0 note"));
    EXPECT_FALSE(takes("Threshold1", "101 note"));
    EXPECT_FALSE(takes("Threshold1", "80 hangup+5MB"));
    EXPECT_FALSE(takes("Threshold1", "80 hangup+5MB+30"));
    EXPECT_FALSE(takes("Said", "2026-11-01T24 50"));
    EXPECT_FALSE(takes("Said", "2026-11-01T00 50;"));
}

TEST_F(PlanSettingsTest, OneThatIsErasedIsGoneAndTheOthersStay) {
    write(fullPlan());
    write(Plan());

    EXPECT_TRUE(erasePlan(profile, ini, 3));

    EXPECT_FALSE(read(3));
    EXPECT_EQ(read(1), Plan());
}

TEST_F(PlanSettingsTest, WhereNoneIsNothingIsErased) {
    EXPECT_TRUE(erasePlan(profile, ini, 3));

    EXPECT_FALSE(machine.files.exists(ini));
}

TEST_F(PlanSettingsTest, WhatCannotBeWrittenIsTold) {
    machine.files.replaceFailure = ErrorNumber::DiskFull;

    EXPECT_FALSE(write(fullPlan()));
}

} // namespace
} // namespace tarvik::planned
