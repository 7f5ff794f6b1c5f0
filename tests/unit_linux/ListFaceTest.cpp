#include "support/ListForm.h"
#include "support/QtMachine.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTableView>

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class ListFaceTest : public testing::Test {
protected:
    ListFaceTest() {
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

    QtMachine machine;
    PlatformScope scope{machine.platform};
    ListForm form;
};

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
    int clicks = 0;
    form.lvwRows.DblClick.connect([&] { clicks += 1 + form.lvwRows.selectedRow(); });
    table().selectRow(1);

    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(&table(), &enter);

    EXPECT_EQ(clicks, 2);
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
