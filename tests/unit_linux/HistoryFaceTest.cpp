#include "ProgramTest.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTableView>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <set>

namespace tarvik {
namespace {

/// The history window as its user works it, with mouse and keyboard.
class HistoryFaceTest : public ProgramTest {
protected:
    HistoryFaceTest() { open(frmHistory()); }

    HistoryData& data() { return frmHistory().data; }
    QTableView& table() { return widget<QTableView>(frmHistory().lvwCompleteLog); }

    void showLog(int count) {
        importRecords(count);
        press(frmHistory(), Qt::Key_S, Qt::AltModifier);
    }
    QPoint placeOf(int row) {
        const QPoint place = table().visualRect(table().model()->index(row, 1)).center();
        return table().viewport()->mapTo(&table(), place);
    }

    /// Collects the texts of all boxes from now on.
    void readBoxes() {
        answerBoxes([this](QMessageBox& box) {
            told.push_back(box.text().toStdString());
            pressIn(box, QMessageBox::Ok);
        });
    }
    std::string focused() {
        const QWidget* holder = window(frmHistory()).focusWidget();
        return holder == nullptr ? "" : holder->objectName().toStdString();
    }

    std::vector<std::string> told;
};

TEST_F(HistoryFaceTest, ADoubleClickShowsTheRecordAndAClickDoesNot) {
    showLog(5);
    readBoxes();

    click(table(), placeOf(2));
    EXPECT_TRUE(told.empty());
    doubleClick(table(), placeOf(3));

    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("ID:  \t\t4\n"), std::string::npos) << told[0];
}

TEST_F(HistoryFaceTest, WithoutASelectedRowTheRangeStays) {
    showLog(30);
    readBoxes();

    press(frmHistory(), Qt::Key_G, Qt::AltModifier);
    EXPECT_EQ(focused(), "lvwCompleteLog");
    press(frmHistory(), Qt::Key_O, Qt::AltModifier);
    press(frmHistory(), Qt::Key_A, Qt::AltModifier);

    EXPECT_TRUE(told.empty());
    EXPECT_EQ(data().start, Long(1));
    EXPECT_EQ(data().stop, Long(30));
}

TEST_F(HistoryFaceTest, ARowWhoseSelectionWasTakenAwayDoesNotCount) {
    showLog(30);
    readBoxes();
    click(table(), placeOf(4));

    click(table(), placeOf(4), Qt::ControlModifier);
    press(frmHistory(), Qt::Key_A, Qt::AltModifier);

    EXPECT_TRUE(told.empty());
    EXPECT_EQ(data().start, Long(1));
}

TEST_F(HistoryFaceTest, TheSelectedRowCounts) {
    showLog(30);
    readBoxes();

    click(table(), placeOf(4));
    press(frmHistory(), Qt::Key_A, Qt::AltModifier);

    EXPECT_EQ(data().start, Long(5));
    EXPECT_EQ(told, std::vector<std::string>{"History diagram has been updated."});
}

TEST_F(HistoryFaceTest, AScreenReaderChangesTheView) {
    auto& chosen = widget<QRadioButton>(frmHistory().optStatistics);
    QAccessibleActionInterface* actions =
        QAccessible::queryAccessibleInterface(&chosen)->actionInterface();

    for (int i = 0; i < 2; ++i) {
        actions->doAction(actions->actionNames().constFirst());
        takeQueued();

        EXPECT_TRUE(widget(frmHistory().frameStatistics).isVisible());
        EXPECT_TRUE(chosen.isChecked());
        EXPECT_FALSE(widget<QRadioButton>(frmHistory().optHistory).isChecked());
    }
}

class RecordBoxTest : public HistoryFaceTest, public testing::WithParamInterface<const char*> {
protected:
    ~RecordBoxTest() override { QApplication::setFont(before_); }

    /// Where what follows the last tab of each line begins.
    static std::set<int> columnsOf(const QMessageBox& box) {
        std::set<int> columns;
        const auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        const auto* document = label->findChild<QTextDocument*>();
        EXPECT_LE(document->idealWidth(), label->width());
        for (QTextBlock line = document->begin(); line.isValid(); line = line.next()) {
            const auto tab = static_cast<int>(line.text().lastIndexOf(QLatin1Char('\t')));
            if (tab >= 0) {
                columns.insert(qRound(line.layout()->lineAt(0).cursorToX(tab + 1)));
            }
        }
        return columns;
    }

private:
    const QFont before_ = QApplication::font();
};

TEST_P(RecordBoxTest, HasItsValuesInOneColumnWhateverTheFont) {
    showLog(3);
    click(table(), placeOf(1));
    std::set<int> columns;
    int lines = 0;
    answerBoxes([&](QMessageBox& box) {
        lines = static_cast<int>(box.text().count(QLatin1Char('\n')));
        columns = columnsOf(box);
        pressIn(box, QMessageBox::Ok);
    });

    for (const int points : {7, 9, 12}) { // the screen here is too narrow for more
        QApplication::setFont(QFont(QString::fromLatin1(GetParam()), points));
        press(frmHistory(), Qt::Key_Return);
        EXPECT_EQ(columns.size(), 1U) << points;
    }
    EXPECT_EQ(lines, 8);
}

INSTANTIATE_TEST_SUITE_P(Each, RecordBoxTest,
                         testing::Values("DejaVu Sans", "DejaVu Serif", "Noto Sans"));

TEST_F(HistoryFaceTest, ABoxAfterAFileDialogStandsBeforeTheWindowThatAsked) {
    open(frmMain());
    QWidget& history = open(frmHistory());
    std::vector<const QWidget*> owners;
    std::vector<const QWindow*> before;
    int dialogsSeen = 0;
    answer(
        [&](QMessageBox& box) {
            owners.push_back(box.parentWidget());
            before.push_back(box.windowHandle()->transientParent());
            pressIn(box, QMessageBox::No);
        },
        [&](QFileDialog& dialog) {
            ++dialogsSeen;
            EXPECT_EQ(dialog.parentWidget(), &history);
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
        });

    press(frmHistory(), Qt::Key_M, Qt::AltModifier);

    EXPECT_EQ(dialogsSeen, 1);
    EXPECT_EQ(owners, (std::vector<const QWidget*>{&history, &history}));
    EXPECT_EQ(before, (std::vector<const QWindow*>(2, history.windowHandle())));
}

/// Work that is long enough to take the buttons away while it goes on.
class LongWorkFaceTest : public HistoryFaceTest {
protected:
    static constexpr int many = 5000;

    /// Acts once when the button that began the work is disabled.
    void meanwhile(const Control& button, std::function<void()> act) {
        QObject::connect(&watch_, &QTimer::timeout, &watch_, [this, &button, act] {
            if (!widget(button).isEnabled()) {
                watch_.stop();
                act();
            }
        });
        watch_.start(0);
    }

    void exportTo(const std::string& path) {
        answer([](QMessageBox& box) { pressIn(box, QMessageBox::Ok); },
               [path](QFileDialog& dialog) {
                   dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
                       ->setText(QString::fromStdString(path));
                   static_cast<QDialog&>(dialog).accept();
               });
        widget(frmHistory().cmdExport).setFocus(Qt::TabFocusReason);
        press(frmHistory(), Qt::Key_Space);
    }

private:
    QTimer watch_;
};

TEST_F(LongWorkFaceTest, AnImportGivesTheFocusBack) {
    std::string during;
    meanwhile(frmHistory().cmdImport, [&] { during = focused(); });
    ASSERT_EQ(focused(), "cmdImport");

    importRecords(many);

    EXPECT_NE(during, "");
    EXPECT_NE(during, "cmdImport");
    EXPECT_EQ(focused(), "cmdImport");
}

TEST_F(LongWorkFaceTest, AnExportGivesTheFocusBack) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/out.csv";
    showLog(many);
    std::string during;
    meanwhile(frmHistory().cmdExport, [&] { during = focused(); });

    exportTo(path);

    EXPECT_NE(during, "cmdExport");
    EXPECT_TRUE(machine.scripted.files.exists(path));
    EXPECT_EQ(focused(), "cmdExport");
}

TEST_F(LongWorkFaceTest, SpaceAfterAnImportDoesNotCloseTheWindow) {
    importRecords(many);
    answerBoxes([](QMessageBox& box) { pressIn(box, QMessageBox::Cancel); });

    press(frmHistory(), Qt::Key_Space);

    EXPECT_TRUE(window(frmHistory()).isVisible());
}

} // namespace
} // namespace tarvik
