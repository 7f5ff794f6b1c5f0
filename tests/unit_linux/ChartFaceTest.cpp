#include "ImagePixels.h"

#include "support/ChartForm.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"

#include <QApplication>
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
    Pixels image() { return pixelsOf(chart().grab().toImage()); }

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

TEST_F(ChartFaceTest, ADarkPaletteMakesADarkImage) {
    form.fill(24);
    const Pixels light = image();
    QPalette dark = QApplication::palette();
    dark.setColor(QPalette::Base, QColor(30, 32, 34));
    dark.setColor(QPalette::Text, QColor(220, 220, 220));

    chart().setPalette(dark);

    const Pixels now = image();
    EXPECT_EQ(now.at(2, 2), 0x1E2022U);
    EXPECT_GT(differingPart(now, light), 0.9);
}

} // namespace
} // namespace tarvik
