#include "FileDialogTest.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarvik {
namespace {

using OpenDialogTest = FileDialogTest;

void* handleOf(std::uint32_t number) {
    return reinterpret_cast<void*>(
        static_cast<std::uintptr_t>(number)); // NOLINT: as the record has
}

ScreenRect rectOf(const QRect& rect) {
    return {.left = rect.left(), .top = rect.top(), .width = rect.width(), .height = rect.height()};
}

std::vector<int> numbers(const ScreenRect& rect) {
    return {rect.left, rect.top, rect.width, rect.height};
}

TEST_F(OpenDialogTest, TheWindowOfTheHandleOwnsTheDialog) {
    data.hwndOwner = handleOf(form.hWnd());
    QWidget* owner = nullptr;

    open([&](const QFileDialog& dialog) { owner = dialog.parentWidget(); });

    EXPECT_EQ(owner, window());
}

TEST_F(OpenDialogTest, TheWindowTheUserWorksInOwnsADialogWithoutAHandle) {
    QWidget* owner = nullptr;

    save([&](const QFileDialog& dialog) { owner = dialog.parentWidget(); });

    EXPECT_EQ(owner, window());
}

TEST_F(OpenDialogTest, ThePlaceIsAskedForOnceWithTheSizesOfDialogAndOwner) {
    std::vector<ScreenRect> places;
    std::vector<ScreenRect> owners;
    window()->move(90, 70);
    place = [&](const ScreenRect& dialog, const ScreenRect& owner) {
        places.push_back(dialog);
        owners.push_back(owner);
        return dialog;
    };
    QSize size;

    open([&](const QFileDialog& dialog) { size = dialog.size(); });

    ASSERT_EQ(places.size(), 1U);
    EXPECT_EQ(QSize(places[0].width, places[0].height), size);
    EXPECT_EQ(numbers(owners[0]), numbers(rectOf(window()->frameGeometry())));
    EXPECT_EQ(QPoint(owners[0].left, owners[0].top), QPoint(90, 70));
}

TEST_F(OpenDialogTest, TheDialogStandsWhereItIsPlaced) {
    ScreenRect wanted;
    place = [&](const ScreenRect& dialog, const ScreenRect&) {
        wanted = {.left = 33, .top = 44, .width = dialog.width + 21, .height = dialog.height + 12};
        return wanted;
    };
    ScreenRect stands;

    open([&](const QFileDialog& dialog) { stands = rectOf(dialog.geometry()); });

    EXPECT_EQ(numbers(stands), numbers(wanted));
}

TEST_F(OpenDialogTest, WithoutAWindowTheOwnersRectangleIsEmpty) {
    form.setVisible(false);
    ASSERT_TRUE(spinUntil([] { return !window()->isVisible(); }));
    ScreenRect owner{.left = 1, .top = 1, .width = 1, .height = 1};
    place = [&](const ScreenRect& dialog, const ScreenRect& given) {
        owner = given;
        return dialog;
    };

    open(cancel);

    EXPECT_EQ(numbers(owner), (std::vector<int>{0, 0, 0, 0}));
}

TEST_F(OpenDialogTest, TimersGoOnWhileADialogIsOpen) {
    int ticks = 0;
    form.timTick.Tick.connect([&] { ++ticks; });
    form.timTick.setInterval(1);
    form.timTick.setEnabled(true);
    bool gone = false;

    open([&](const QFileDialog&) {
        ticks = 0;
        gone = spinUntil([&] { return ticks >= 3; });
    });

    EXPECT_TRUE(gone);
    form.timTick.setEnabled(false);
}

TEST_F(OpenDialogTest, WhileADialogIsOpenNoButtonReachesTheModel) {
    int clicks = 0;
    form.cmdOk.Click.connect([&] { ++clicks; });
    auto* button = window()->findChild<QPushButton*>(QStringLiteral("cmdOk"));

    open([&](const QFileDialog&) { button->click(); });

    EXPECT_EQ(clicks, 0);
}

TEST_F(OpenDialogTest, AfterADialogButtonsReachTheModelAgain) {
    int clicks = 0;
    form.cmdOk.Click.connect([&] { ++clicks; });
    auto* button = window()->findChild<QPushButton*>(QStringLiteral("cmdOk"));

    open(cancel);
    button->click();

    EXPECT_EQ(clicks, 1);
}

TEST_F(OpenDialogTest, WhileADialogIsOpenTheWindowCannotBeClosed) {
    open([](const QFileDialog&) { window()->close(); });

    EXPECT_TRUE(form.loaded());
}

TEST_F(OpenDialogTest, AFormMayBeUnloadedWhileItOwnsADialog) {
    const QPointer<QWidget> owner = window();
    bool unloaded = false;

    const bool chosen = open([&](const QFileDialog&) {
        QTimer::singleShot(0, &questions, [&] { form.unload(); });
        unloaded = spinUntil([&] { return !form.loaded(); }) && takeQueued();
    });

    EXPECT_TRUE(unloaded);
    EXPECT_FALSE(chosen);
    EXPECT_TRUE(spinUntil([&] { return owner.isNull(); }));
}

TEST_F(OpenDialogTest, TheEndOfTheSessionClosesAnOpenDialog) {
    makeFile("data.csv");
    bool openStill = true;

    const bool chosen = open([&](const QFileDialog& dialog) {
        nameOf(dialog).setText(QStringLiteral("data.csv"));
        machine.desktop.endSession();
        openStill = dialog.isVisible();
    });

    EXPECT_FALSE(chosen);
    EXPECT_FALSE(openStill);
    EXPECT_EQ(dialogs.CommDlgExtendedError(), 0U);
}

TEST_F(OpenDialogTest, TheEndOfTheSessionClosesTheQuestionOfADialogToo) {
    makeFile("data.csv");
    data.Flags = 0x2; // ask before a file is overwritten
    bool asks = false;
    bool closed = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            watch.stop();
            asks = true;
            machine.desktop.endSession();
            closed = !question->isVisible();
            question->close();
        }
    });
    watch.start(5);

    const bool chosen = save(choose("data.csv"));

    EXPECT_TRUE(asks);
    EXPECT_TRUE(closed);
    EXPECT_FALSE(chosen);
}

TEST_F(OpenDialogTest, AfterTheEndOfTheSessionNoDialogIsShown) {
    machine.desktop.endSession();
    bool seen = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            seen = true;
            dialog->close();
        }
    });
    watch.start(5);

    EXPECT_FALSE(dialogs.GetOpenFileNameA(&data, place));

    EXPECT_FALSE(seen);
}

} // namespace
} // namespace tarvik
