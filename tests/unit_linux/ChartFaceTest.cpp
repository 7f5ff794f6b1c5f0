#include "support/ChartForm.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QWidget>

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class ChartFaceTest : public testing::Test {
protected:
    ChartFaceTest() {
        form.setVisible(true);
        QCoreApplication::processEvents();
    }
    ~ChartFaceTest() override { form.unload(); }

    QWidget& chart() { return theWidget("chtValues"); }

    QtMachine machine;
    FormOn<ChartForm> form{machine.platform.desktop};
};

TEST_F(ChartFaceTest, TheChartHasRoomForItsCharacters) {
    const QFontMetrics metrics = chart().fontMetrics();

    EXPECT_GE(chart().width(), 40 * metrics.horizontalAdvance(QLatin1Char('0')));
    EXPECT_GE(chart().height(), 12 * metrics.lineSpacing());
}

TEST_F(ChartFaceTest, TheChartTakesTheFocusByTabAndClick) {
    EXPECT_EQ(chart().focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(chart().window()->focusWidget(), &chart());
}

} // namespace
} // namespace tarvik
