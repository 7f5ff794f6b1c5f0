#include "support/FormOn.h"
#include "support/ListForm.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"

#include <QApplication>
#include <QProxyStyle>
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

    QTableView& table() { return theWidget<QTableView>("lvwRows"); }

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

TEST_F(ListFaceTest, TheHeadersAreShown) {
    EXPECT_EQ(table().model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Name"));
}

TEST_F(ListFaceTest, ADoubleClickOfAnotherButtonOpensNothing) {
    form.fill(3);

    doubleClick(2, Qt::RightButton);

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

} // namespace
} // namespace tarvik
