#include "common/ChartReading.h"

#include "../../support/ChartForm.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using face::ReadingStep;

class ChartReadingTest : public testing::Test {
protected:
    int after(ReadingStep step) {
        face::goOn(form.chtValues, step);
        return form.chtValues.readRow();
    }

    ChartForm form;
};

TEST_F(ChartReadingTest, StepsGoFromRowToRow) {
    form.fill(100);
    form.chtValues.setReadRow(50);

    EXPECT_EQ(after(ReadingStep::On), 51);
    EXPECT_EQ(after(ReadingStep::Back), 50);
    EXPECT_EQ(after(ReadingStep::PageOn), 55);
    EXPECT_EQ(after(ReadingStep::PageBack), 50);
    EXPECT_EQ(after(ReadingStep::Last), 99);
    EXPECT_EQ(after(ReadingStep::First), 0);
}

TEST_F(ChartReadingTest, APageHasAtLeastOneRow) {
    form.fill(5);
    form.chtValues.setReadRow(2);

    EXPECT_EQ(after(ReadingStep::PageOn), 3);
    EXPECT_EQ(after(ReadingStep::PageBack), 2);
}

TEST_F(ChartReadingTest, AnEmptyChartReadsNothing) {
    form.fill(0);

    for (const ReadingStep step : {ReadingStep::Back, ReadingStep::On, ReadingStep::PageBack,
                                   ReadingStep::PageOn, ReadingStep::First, ReadingStep::Last}) {
        EXPECT_EQ(after(step), Chart::none);
    }
}

TEST_F(ChartReadingTest, TheLastStepLeadsToTheLastRowThatHasAValue) {
    form.fill(9);
    form.chtValues.setFilledRows(4);

    EXPECT_EQ(after(ReadingStep::Last), 3);
}

TEST_F(ChartReadingTest, ItsTitleAndWhatIsReadAreSpoken) {
    form.fill(3);

    form.chtValues.setReadRow(1);

    EXPECT_EQ(face::spokenName(form.chtValues), "Traffic. 2: 101");
}

TEST_F(ChartReadingTest, WhileNothingIsReadWhatItDrawsIsSpoken) {
    form.fill(3);

    EXPECT_EQ(face::spokenName(form.chtValues),
              "Traffic. Line chart; 1 to 3, 3 in all; from 100 to 102");
}

TEST_F(ChartReadingTest, AnEmptyChartSaysHowToFillIt) {
    EXPECT_EQ(face::spokenName(form.chtValues), "Traffic");

    form.chtValues.setEmptyText("Press OK.");

    EXPECT_EQ(face::spokenName(form.chtValues), "Traffic. Press OK.");
}

TEST_F(ChartReadingTest, WithoutATitleOnlyWhatIsReadIsSpoken) {
    form.chtValues.setTitle("");
    form.fill(3);
    form.chtValues.setReadRow(1);

    EXPECT_EQ(face::spokenName(form.chtValues), "2: 101");
}

TEST_F(ChartReadingTest, TheTitleOfTheValuesIsSpoken) {
    form.fill(3);
    form.chtValues.setTitle("Something else");
    form.chtValues.setReadRow(0);

    EXPECT_EQ(face::spokenName(form.chtValues), "Traffic. 1: 100");
}

} // namespace
} // namespace tarvik
