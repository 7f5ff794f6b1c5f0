#include "ImagePixels.h"
#include "Waiting.h"
#include "controls/Form.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"

#include <QApplication>
#include <QGroupBox>
#include <QLineEdit>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace tarvik {
namespace {

/// Two figures in a frame, and something else for the keyboard.
class FigureBoxForm : public Form {
public:
    FigureBoxForm() : Form("frmFigures", "Figures") {
        setLayout(column({
            item(cmdOther),
            frame(frameFigures, column({item(txtLeft).wide(20), item(txtRight).wide(20)})),
        }));
        setInitialFocus(cmdOther);
    }

    CommandButton cmdOther{*this, "cmdOther", {.caption = "Other"}};
    Frame frameFigures{*this, "frameFigures", {"Figures:"}};
    TextBox txtLeft{*this, "txtLeft", {.text = "1", .readOnly = true}};
    TextBox txtRight{
        *this, "txtRight", {.text = "1", .readOnly = true, .alignment = TextAlignment::Right}};
};

/// Counts what a widget paints.
class PaintCount : public QObject {
public:
    explicit PaintCount(QWidget& watched) { watched.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        times += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int times = 0;
};

/// A box of figures paints what it lies on from a picture: what is seen is what the toolkit's own
/// box would show.
class FigureBoxTest : public testing::Test {
protected:
    FigureBoxTest() {
        form.setVisible(true);
        takeQueued();
        EXPECT_TRUE(spinUntil([] { return widgetNamed("cmdOther")->hasFocus(); }));
        set("1,234");
    }
    ~FigureBoxTest() override { form.unload(); }

    void set(const std::string& text) {
        form.txtLeft.setText(text);
        form.txtRight.setText(text);
        takeQueued();
    }

    static QLineEdit& box(const Control& control) { return theWidgetOf<QLineEdit>(control); }

    /// What lies on the screen, at the place of the widget.
    static Pixels seen(const QWidget& widget) {
        takeQueued();
        QWidget& window = *widget.window();
        const QRect place(widget.mapTo(&window, QPoint(0, 0)), widget.size());
        const QImage whole = window.screen()->grabWindow(window.winId()).toImage();
        return pixelsOf(whole.copy(place).convertToFormat(QImage::Format_RGB32));
    }

    /// What the toolkit's own box shows there.
    static Pixels plain(QLineEdit& box) {
        const bool focused = box.hasFocus();
        QLineEdit other(box.parentWidget());
        other.setGeometry(box.geometry());
        other.setReadOnly(true);
        other.setPalette(box.palette());
        other.setAlignment(box.alignment());
        other.setEnabled(box.isEnabled());
        other.setText(box.text());
        other.home(false);
        if (box.hasSelectedText()) {
            other.setSelection(box.selectionStart(), box.selectionLength());
        }
        QSizePolicy keepsItsPlace = box.sizePolicy();
        keepsItsPlace.setRetainSizeWhenHidden(true);
        box.setSizePolicy(keepsItsPlace);
        box.hide();
        other.show();
        if (focused) {
            other.setFocus(Qt::OtherFocusReason);
        }
        const Pixels pixels = seen(other);
        box.show();
        return pixels;
    }

    void expectAsTheToolkitPaintsThem() {
        for (const TextBox* control :
             {&std::as_const(form.txtLeft), &std::as_const(form.txtRight)}) {
            const Pixels own = seen(box(*control));
            EXPECT_TRUE(own == plain(box(*control))) << control->name();
        }
    }

    QtMachine machine;
    FormOn<FigureBoxForm> form{machine.platform.desktop};
};

TEST_F(FigureBoxTest, AFigureLooksAsTheToolkitPaintsIt) {
    const Pixels before = seen(box(form.txtRight));

    set("98,765,432");

    EXPECT_FALSE(seen(box(form.txtRight)) == before);
    expectAsTheToolkitPaintsThem();
}

TEST_F(FigureBoxTest, AnEmptyTextAndOneTooLongLookSoToo) {
    for (const char* text :
         {"", "a text that is much too long for a box of twenty characters, it is"}) {
        set(text);
        expectAsTheToolkitPaintsThem();
    }
}

TEST_F(FigureBoxTest, OneThatIsDisabledLooksSoToo) {
    form.txtLeft.setEnabled(false);
    form.txtRight.setEnabled(false);
    expectAsTheToolkitPaintsThem();

    form.txtLeft.setEnabled(true);
    form.txtRight.setEnabled(true);
    expectAsTheToolkitPaintsThem();
}

TEST_F(FigureBoxTest, OneThatHasTheKeyboardLooksSoToo) {
    box(form.txtLeft).setFocus(Qt::MouseFocusReason);

    const Pixels own = seen(box(form.txtLeft));

    EXPECT_TRUE(own == plain(box(form.txtLeft)));
}

TEST_F(FigureBoxTest, WhatIsSelectedInItLooksSoToo) {
    const Pixels before = seen(box(form.txtLeft));
    box(form.txtLeft).setFocus(Qt::OtherFocusReason);
    box(form.txtLeft).setSelection(1, 3);

    const Pixels own = seen(box(form.txtLeft));

    EXPECT_FALSE(own == before);
    EXPECT_TRUE(own == plain(box(form.txtLeft)));
}

TEST_F(FigureBoxTest, InOtherColoursTooAndBack) {
    const QPalette usual = QApplication::palette();
    const Pixels before = seen(box(form.txtLeft));
    QApplication::setPalette(QPalette(QColor(40, 44, 52)));

    EXPECT_FALSE(seen(box(form.txtLeft)) == before);
    expectAsTheToolkitPaintsThem();

    QApplication::setPalette(usual);
    EXPECT_TRUE(seen(box(form.txtLeft)) == before);
}

TEST_F(FigureBoxTest, InALargerWindowAndAtAnotherPlaceToo) {
    QWidget& window = theWindowOf(form);
    window.resize(window.width() + 60, window.height() + 90);
    expectAsTheToolkitPaintsThem();

    set("7");
    expectAsTheToolkitPaintsThem();
}

TEST_F(FigureBoxTest, InAFrameThatChangesItsColoursToo) {
    QGroupBox& around = theWidgetOf<QGroupBox>(form.frameFigures);
    const Pixels before = seen(box(form.txtLeft));
    QPalette own = around.palette();
    own.setColor(QPalette::Window, QColor(200, 120, 40));
    around.setPalette(own);
    around.setAutoFillBackground(true);

    EXPECT_FALSE(seen(box(form.txtLeft)) == before);
    expectAsTheToolkitPaintsThem();
}

TEST_F(FigureBoxTest, AnotherFigurePaintsNothingElse) {
    const PaintCount frames(theWidgetOf<QGroupBox>(form.frameFigures));
    const PaintCount windows(theWindowOf(form));
    const PaintCount boxes(box(form.txtLeft));

    set("4,711");

    EXPECT_EQ(boxes.times, 1);
    EXPECT_EQ(frames.times, 0);
    EXPECT_EQ(windows.times, 0);
}

TEST_F(FigureBoxTest, APictureOfTheBoxAloneIsWhole) {
    const Pixels lying = seen(box(form.txtLeft));

    const QImage alone = box(form.txtLeft).grab().toImage();

    EXPECT_TRUE(pixelsOf(alone.convertToFormat(QImage::Format_RGB32)) == lying);
}

} // namespace
} // namespace tarvik
