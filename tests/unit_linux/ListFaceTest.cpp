#include "support/FormOn.h"
#include "support/ListForm.h"
#include "support/QtMachine.h"

#include <QApplication>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QProxyStyle>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

namespace tarvik {
namespace {

/// A desktop on which one click opens what it hits.
class OneClickOpens : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override {
        return hint == SH_ItemView_ActivateItemOnSingleClick
                   ? 1
                   : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

class ListFaceTest : public testing::Test {
protected:
    ListFaceTest() {
        form.lvwRows.DblClick.connect([this] { opened.push_back(form.lvwRows.selectedRow()); });
        form.setVisible(true);
        QCoreApplication::processEvents();
    }
    ~ListFaceTest() override { form.unload(); }

    template <class Widget>
    Widget& widget(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* found = window->findChild<Widget*>(QString::fromLatin1(name))) {
                return *found;
            }
        }
        throw std::runtime_error(name);
    }

    QTableView& table() { return widget<QTableView>("lvwRows"); }
    std::string shownCell(int row, int column) {
        return table().model()->index(row, column).data().toString().toStdString();
    }

    QPoint placeOf(int row) {
        QTableView& list = table();
        const QPoint inList = list.visualRect(list.model()->index(row, 1)).center();
        return list.viewport()->mapTo(list.window(), inList);
    }
    void click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(table().window()->windowHandle(), button, modifiers, placeOf(row));
    }
    void doubleClick(int row, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseDClick(table().window()->windowHandle(), button, Qt::NoModifier, placeOf(row));
    }
    void press(Qt::Key key) { QTest::keyClick(table().window()->windowHandle(), key); }

    QtMachine machine;
    FormOn<ListForm> form{machine.platform.desktop};
    std::vector<int> opened; ///< the selected row each time
    OneClickOpens oneClickOpens;
};

using Rows = std::vector<int>;

TEST_F(ListFaceTest, AClickChoosesAnOptionAndTheOtherLosesIt) {
    widget<QRadioButton>("optSecond").click();

    EXPECT_TRUE(form.optSecond.value());
    EXPECT_FALSE(widget<QRadioButton>("optFirst").isChecked());
}

TEST_F(ListFaceTest, AClickOnTheChosenOptionLeavesItChosen) {
    widget<QRadioButton>("optFirst").click();

    EXPECT_TRUE(form.optFirst.value());
    EXPECT_TRUE(widget<QRadioButton>("optFirst").isChecked());
}

TEST_F(ListFaceTest, TheRowsAreShown) {
    form.fill(3);

    EXPECT_EQ(table().model()->rowCount(), 3);
    EXPECT_EQ(shownCell(2, 0), "3");
    EXPECT_EQ(shownCell(2, 1), "row 3");
    EXPECT_EQ(table().model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Name"));
}

TEST_F(ListFaceTest, OfAMillionRowsOnlyThoseThatAreSeenAreAskedFor) {
    form.fill(1'000'000);
    QCoreApplication::processEvents();
    table().grab();

    EXPECT_GT(form.cellsAsked, 0);
    EXPECT_LT(form.cellsAsked, 2000);
}

TEST_F(ListFaceTest, TheUsersSelectionReachesTheModel) {
    form.fill(3);

    table().selectRow(1);

    EXPECT_EQ(form.lvwRows.selectedRow(), 1);
}

TEST_F(ListFaceTest, TheModelsSelectionIsShown) {
    form.fill(3);

    form.lvwRows.setSelectedRow(2);

    EXPECT_EQ(table().currentIndex().row(), 2);
}

TEST_F(ListFaceTest, EnterOnARowIsADoubleClick) {
    form.fill(3);
    click(1);

    press(Qt::Key_Return);

    EXPECT_EQ(opened, Rows{1});
}

TEST_F(ListFaceTest, ADoubleClickOpensTheRow) {
    form.fill(3);

    doubleClick(2);

    EXPECT_EQ(opened, Rows{2});
}

TEST_F(ListFaceTest, ADoubleClickOfAnotherButtonOpensNothing) {
    form.fill(3);

    doubleClick(2, Qt::RightButton);

    EXPECT_EQ(opened, Rows{});
}

TEST_F(ListFaceTest, AClickSelectsTheRowAndOpensNothing) {
    form.fill(3);

    click(1);

    EXPECT_EQ(form.lvwRows.selectedRow(), 1);
    EXPECT_EQ(opened, Rows{});
}

TEST_F(ListFaceTest, AClickOpensNothingWhereOneClickOpensThings) {
    form.fill(3);
    table().setStyle(&oneClickOpens);

    click(1);

    EXPECT_EQ(form.lvwRows.selectedRow(), 1);
    EXPECT_EQ(opened, Rows{});
}

TEST_F(ListFaceTest, ADoubleClickAndEnterOpenTheRowOnceWhereOneClickOpensThings) {
    form.fill(3);
    table().setStyle(&oneClickOpens);

    doubleClick(2);
    EXPECT_EQ(opened, Rows{2});
    press(Qt::Key_Return);
    press(Qt::Key_Enter);

    EXPECT_EQ(opened, (Rows{2, 2, 2}));
}

TEST_F(ListFaceTest, TheRowThatTheKeyboardIsAtIsNotSelectedByThat) {
    form.fill(3);

    table().setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();

    EXPECT_EQ(table().currentIndex().row(), 0);
    EXPECT_FALSE(table().selectionModel()->hasSelection());
    EXPECT_EQ(form.lvwRows.selectedRow(), ListView::none);
}

TEST_F(ListFaceTest, AClickWithTheControlKeyTakesTheSelectionAway) {
    form.fill(3);
    click(1);
    ASSERT_EQ(form.lvwRows.selectedRow(), 1);

    click(1, Qt::ControlModifier);

    EXPECT_FALSE(table().selectionModel()->hasSelection());
    EXPECT_EQ(form.lvwRows.selectedRow(), ListView::none);
}

TEST_F(ListFaceTest, TypedLettersAskForNoRowThatIsNotSeen) {
    form.fill(1'000'000);
    click(0);
    form.cellsAsked = 0;

    for (const Qt::Key key : {Qt::Key_X, Qt::Key_R, Qt::Key_9}) {
        press(key);
    }
    QCoreApplication::processEvents();

    EXPECT_LT(form.cellsAsked, 2000);
    EXPECT_EQ(form.lvwRows.selectedRow(), 0);
}

TEST_F(ListFaceTest, HeadersMayBeFlat) {
    EXPECT_TRUE(table().horizontalHeader()->sectionsClickable());

    form.lvwRows.setHeadersClickable(false);

    EXPECT_FALSE(table().horizontalHeader()->sectionsClickable());
}

TEST_F(ListFaceTest, ColumnsFitTheirLongestText) {
    form.fill(1, {"1", "a much longer name than the header"});

    form.lvwRows.fitColumns(ColumnFit::Contents);

    const QFontMetrics metrics = table().fontMetrics();
    EXPECT_GE(table().columnWidth(1),
              metrics.horizontalAdvance(QStringLiteral("a much longer name than the header")));
    EXPECT_LT(table().columnWidth(0), table().columnWidth(1));
}

TEST_F(ListFaceTest, ALongTextIsShownInLines) {
    form.txtLines.setText("one\r\ntwo");

    const auto& area = widget<QPlainTextEdit>("txtLines");
    EXPECT_EQ(area.blockCount(), 2);
    EXPECT_TRUE(area.isReadOnly());
    EXPECT_EQ(form.txtLines.text(), "one\r\ntwo");
}

TEST_F(ListFaceTest, AHiddenFrameHidesWhatItHolds) {
    form.frameText.setVisible(false);
    EXPECT_FALSE(widget<QPlainTextEdit>("txtLines").isVisible());

    form.frameText.setVisible(true);
    EXPECT_TRUE(widget<QPlainTextEdit>("txtLines").isVisible());
}

} // namespace
} // namespace tarvik
