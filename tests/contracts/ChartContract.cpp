#include "contracts/FaceUnderTest.h"

#include "support/ChartForm.h"
#include "support/FormOn.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class ChartContract : public testing::Test {
protected:
    ChartContract() {
        form.setVisible(true);
        face->settle();
    }
    ~ChartContract() override {
        form.unload();
        face->settle();
    }

    int rowAfter(FaceKey key) {
        face->press(form.chtValues, key);
        return form.chtValues.readRow();
    }
    std::string spoken() const { return face->spoken(form.chtValues); }

    std::unique_ptr<FaceUnderTest> face = faceUnderTest();
    FormOn<ChartForm> form{face->desktop()};
};

TEST_F(ChartContract, KeysMoveTheReading) {
    form.fill(100);

    EXPECT_EQ(rowAfter(FaceKey::Right), 0);
    EXPECT_EQ(rowAfter(FaceKey::Right), 1);
    EXPECT_EQ(rowAfter(FaceKey::Left), 0);
    EXPECT_EQ(rowAfter(FaceKey::PageDown), 5);
    EXPECT_EQ(rowAfter(FaceKey::PageUp), 0);
    EXPECT_EQ(rowAfter(FaceKey::End), 99);
    EXPECT_EQ(rowAfter(FaceKey::Home), 0);
}

TEST_F(ChartContract, EnterAndEscapeReachTheButtons) {
    std::string clicks;
    form.cmdOk.Click.connect([&] { clicks += "OK "; });
    form.cmdCancel.Click.connect([&] { clicks += "Cancel "; });

    face->press(form.chtValues, FaceKey::Enter);
    face->press(form.chtValues, FaceKey::Escape);

    EXPECT_EQ(clicks, "OK Cancel ");
}

TEST_F(ChartContract, AScreenReaderKnowsTheTitleWhatIsDrawnAndWhatIsRead) {
    form.fill(24);

    EXPECT_EQ(spoken(), "Traffic. Line chart; 1 to 24, 24 in all; from 100 to 123");
    face->press(form.chtValues, FaceKey::Home);
    EXPECT_EQ(spoken(), "Traffic. 1: 100");
    form.chtValues.setTitle("Cost");
    EXPECT_EQ(spoken(), "Traffic. 1: 100"); // the values are still those of the traffic
    form.fill(10);
    EXPECT_EQ(spoken(), "Cost. Line chart; 1 to 10, 10 in all; from 100 to 109");
    form.chtValues.setEmptyText("Press OK.");
    form.fill(0);
    EXPECT_EQ(spoken(), "Cost. Press OK.");
}

TEST_F(ChartContract, ProgressIsShown) {
    EXPECT_EQ(face->percent(form.prgDone), 0);

    form.prgDone.setValue(40);
    EXPECT_EQ(face->percent(form.prgDone), 40);

    form.prgDone.setValue(10);
    EXPECT_EQ(face->percent(form.prgDone), 10);
}

} // namespace
} // namespace tarvik
