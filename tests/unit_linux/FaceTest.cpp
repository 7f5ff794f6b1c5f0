#include "controls/Form.h"
#include "linux/face/Palette.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"
#include "support/ThrowAwayForm.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace tarvik {
namespace {

class FaceTest : public testing::Test {
protected:
    FaceTest() {
        form.setVisible(true);
        takeQueued();
    }
    ~FaceTest() override {
        // What the handlers of the test wrote to is gone.
        form.QueryUnload.connect({});
        form.Unload.connect({});
        form.unload();
    }

    QWidget* window() { return widgetNamed<QPushButton>("cmdOk")->window(); }

    QtMachine machine;
    face::QtDesktop& desktop = machine.desktop;
    FormOn<ThrowAwayForm> form{machine.platform.desktop};
};

TEST_F(FaceTest, EveryControlHasAWidgetWithItsName) {
    EXPECT_NE(widgetNamed<QGroupBox>("frameAll"), nullptr);
    EXPECT_NE(widgetNamed<QLabel>("lblName"), nullptr);
    EXPECT_NE(widgetNamed<QLineEdit>("txtName"), nullptr);
    EXPECT_NE(widgetNamed<QWidget>("picLamp"), nullptr);
    EXPECT_NE(widgetNamed<QCheckBox>("chkTick"), nullptr);
    EXPECT_NE(widgetNamed<QComboBox>("cboList"), nullptr);
    EXPECT_NE(widgetNamed<QPushButton>("cmdOk"), nullptr);
    EXPECT_EQ(widgetNamed<QPushButton>("cmdOk")->accessibleDescription(),
              QStringLiteral("id:cmdOk"));
    EXPECT_EQ(window()->windowTitle(), QStringLiteral("Throw-away"));
}

TEST_F(FaceTest, EntriesThatComeTogetherAreInsertedTogether) {
    auto& list = *widgetNamed<QComboBox>("cboList");
    int insertions = 0;
    QObject::connect(list.model(), &QAbstractItemModel::rowsInserted, [&] { ++insertions; });

    form.cboList.setItems({"Moor", "Dune", "Pier"});

    EXPECT_EQ(insertions, 1);
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(list.currentIndex(), -1);
}

TEST_F(FaceTest, ALabelIsTheBuddyOfItsInput) {
    EXPECT_EQ(widgetNamed<QLabel>("lblName")->buddy(), widgetNamed<QLineEdit>("txtName"));
}

TEST_F(FaceTest, AControlThatIsEnabledAgainHasTheFocusAgain) {
    widgetNamed<QPushButton>("cmdOk")->setFocus();

    form.cmdOk.setEnabled(false);
    EXPECT_NE(window()->focusWidget(), widgetNamed<QPushButton>("cmdOk"));
    form.cmdOk.setEnabled(true);

    EXPECT_EQ(window()->focusWidget(), widgetNamed<QPushButton>("cmdOk"));
}

TEST_F(FaceTest, AControlThatIsEnabledAgainLeavesTheFocusWhereTheUserPutIt) {
    widgetNamed<QPushButton>("cmdOk")->setFocus();

    form.cmdOk.setEnabled(false);
    widgetNamed<QLineEdit>("txtName")->setFocus();
    form.cmdOk.setEnabled(true);

    EXPECT_EQ(window()->focusWidget(), widgetNamed<QLineEdit>("txtName"));
}

TEST_F(FaceTest, ThePointerWaitsNoLongerThanTheCall) {
    desktop.runBlocking([] {});

    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(PaletteTest, BlackIsThePalettesOwnColour) {
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    dark.setColor(QPalette::WindowText, QColor(230, 230, 230));

    EXPECT_EQ(face::readableColour({0, 0, 0}, dark), QColor(230, 230, 230));
}

TEST(PaletteTest, AReadableColourStaysAsItIs) {
    QPalette light;
    light.setColor(QPalette::Window, QColor(240, 240, 240));

    EXPECT_EQ(face::readableColour({192, 0, 0}, light), QColor(192, 0, 0));
}

} // namespace
} // namespace tarvik
