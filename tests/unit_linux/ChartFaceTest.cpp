#include "ImagePixels.h"

#include "controls/ChartPalette.h"
#include "support/ChartForm.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>

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

    template <class Widget>
    Widget& widget(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* found = window->findChild<Widget*>(QString::fromLatin1(name))) {
                return *found;
            }
        }
        throw std::runtime_error(name);
    }

    QWidget& chart() { return widget<QWidget>("chtValues"); }
    Pixels picture() { return pixelsOf(chart().grab().toImage()); }

    void press(Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&chart(), &event);
    }

    int rowAfter(Qt::Key key) {
        press(key);
        return form.chtValues.readRow();
    }

    void movePointer(double x) {
        const QPointF place(x, chart().height() / 2.0);
        QMouseEvent event(QEvent::MouseMove, place, chart().mapToGlobal(place), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&chart(), &event);
    }

    void leave() {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(&chart(), &event);
    }

    QtMachine machine;
    FormOn<ChartForm> form{machine.platform.desktop};
};

TEST_F(ChartFaceTest, TheChartIsPainted) {
    const Colour line = ChartPalette::on({255, 255, 255}, {0, 0, 0}).columns[0];
    const auto colour = static_cast<std::uint32_t>(line.red << 16 | line.green << 8 | line.blue);
    const auto before = picture().countOf(colour);

    form.fill(24);

    EXPECT_GT(picture().countOf(colour), before + 100);
}

TEST_F(ChartFaceTest, AMillionRowsArePainted) {
    const Pixels empty = picture();

    form.fill(1'000'000);

    EXPECT_GT(differingPart(picture(), empty), 0.05);
}

TEST_F(ChartFaceTest, TheChartGrowsWithTheWindow) {
    QWidget& window = *chart().window();
    const QSize before = chart().size();

    window.resize(window.size() + QSize(100, 50));
    QCoreApplication::processEvents();

    EXPECT_EQ(chart().size(), before + QSize(100, 50));
    EXPECT_GE(before.width(), 40 * chart().fontMetrics().horizontalAdvance(QLatin1Char('0')));
    EXPECT_GE(before.height(), 12 * chart().fontMetrics().lineSpacing());
}

TEST_F(ChartFaceTest, KeysMoveTheReading) {
    form.fill(100);

    EXPECT_EQ(rowAfter(Qt::Key_Right), 0);
    EXPECT_EQ(rowAfter(Qt::Key_Right), 1);
    EXPECT_EQ(rowAfter(Qt::Key_Left), 0);
    EXPECT_EQ(rowAfter(Qt::Key_PageDown), 5);
    EXPECT_EQ(rowAfter(Qt::Key_PageUp), 0);
    EXPECT_EQ(rowAfter(Qt::Key_End), 99);
    EXPECT_EQ(rowAfter(Qt::Key_Home), 0);
}

TEST_F(ChartFaceTest, WhatIsReadIsPainted) {
    form.fill(24);
    const Pixels before = picture();

    press(Qt::Key_Home);
    const Pixels first = picture();
    press(Qt::Key_End);

    EXPECT_NE(first, before);
    EXPECT_NE(picture(), first);
}

TEST_F(ChartFaceTest, ThePointerReadsRowAfterRow) {
    form.fill(24);
    picture();
    std::vector<int> rows;
    for (int x = 0; x < chart().width(); ++x) {
        movePointer(x);
        if (rows.empty() || rows.back() != form.chtValues.readRow()) {
            rows.push_back(form.chtValues.readRow());
        }
    }

    std::vector<int> expected{Chart::none};
    for (int row = 0; row < 24; ++row) {
        expected.push_back(row);
    }
    expected.push_back(Chart::none);
    EXPECT_EQ(rows, expected);
}

TEST_F(ChartFaceTest, NothingIsReadWhenThePointerHasLeft) {
    form.fill(24);
    picture();
    movePointer(chart().width() / 2.0);
    EXPECT_NE(form.chtValues.readRow(), Chart::none);

    leave();

    EXPECT_EQ(form.chtValues.readRow(), Chart::none);
}

TEST_F(ChartFaceTest, TheChartTakesTheFocusByTabAndClick) {
    EXPECT_EQ(chart().focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(chart().window()->focusWidget(), &chart());
}

TEST_F(ChartFaceTest, TheFocusIsSeen) {
    chart().window()->activateWindow();
    QCoreApplication::processEvents();
    widget<QPushButton>("cmdOk").setFocus();
    const Pixels without = picture();

    chart().setFocus();

    EXPECT_TRUE(chart().hasFocus());
    const double differing = differingPart(picture(), without);
    EXPECT_GT(differing, 0);
    EXPECT_LT(differing, 0.02);
}

TEST_F(ChartFaceTest, EnterAndEscapeReachTheButtons) {
    std::string clicks;
    form.cmdOk.Click.connect([&] { clicks += "OK "; });
    form.cmdCancel.Click.connect([&] { clicks += "Cancel "; });

    press(Qt::Key_Return);
    press(Qt::Key_Escape);

    EXPECT_EQ(clicks, "OK Cancel ");
}

TEST_F(ChartFaceTest, AScreenReaderKnowsTheTitleWhatIsDrawnAndWhatIsRead) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&chart());
    const auto name = [&] { return accessible->text(QAccessible::Name).toStdString(); };
    form.fill(24);

    EXPECT_EQ(accessible->role(), QAccessible::Chart);
    EXPECT_EQ(name(), "Traffic. Line chart; 1 to 24, 24 in all; from 100 to 123");
    press(Qt::Key_Home);
    EXPECT_EQ(name(), "Traffic. 1: 100");
    form.chtValues.setTitle("Cost");
    EXPECT_EQ(name(), "Traffic. 1: 100"); // the values are still those of the traffic
    form.fill(10);
    EXPECT_EQ(name(), "Cost. Line chart; 1 to 10, 10 in all; from 100 to 109");
    form.chtValues.setEmptyText("Press OK.");
    form.fill(0);
    EXPECT_EQ(name(), "Cost. Press OK.");
}

TEST_F(ChartFaceTest, ADarkPaletteMakesADarkPicture) {
    form.fill(24);
    const Pixels light = picture();
    QPalette dark = QApplication::palette();
    dark.setColor(QPalette::Base, QColor(30, 32, 34));
    dark.setColor(QPalette::Text, QColor(220, 220, 220));

    chart().setPalette(dark);

    const Pixels now = picture();
    EXPECT_EQ(now.at(2, 2), 0x1E2022U);
    EXPECT_GT(differingPart(now, light), 0.9);
}

TEST_F(ChartFaceTest, ProgressIsShown) {
    const auto& bar = widget<QProgressBar>("prgDone");
    EXPECT_EQ(bar.value(), 0);
    EXPECT_EQ(bar.maximum(), 100);
    EXPECT_EQ(bar.accessibleName(), QStringLiteral("Done"));

    form.prgDone.setValue(40);
    EXPECT_EQ(bar.value(), 40);
    EXPECT_EQ(bar.text(), QStringLiteral("40 %"));

    form.prgDone.setValue(10);
    EXPECT_EQ(bar.value(), 10);
}

} // namespace
} // namespace tarvik
