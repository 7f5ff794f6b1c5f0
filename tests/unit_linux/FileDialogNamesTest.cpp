#include "FileDialogTest.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QImage>
#include <QScreen>
#include <QStyledItemDelegate>

#include <filesystem>
#include <string>

namespace tarvik {
namespace {

const std::string turnedFile = "a\u202egnp.exe";
const QString shownFile = QStringLiteral("a[U+202E]gnp.exe");

/// What a widget shows while nobody works in it.
QImage imageOf(QWidget& widget) {
    widget.clearFocus();
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

QString shownBy(const QAbstractItemView& list, const QString& text) {
    const auto* delegate = qobject_cast<const QStyledItemDelegate*>(list.itemDelegate());
    return delegate == nullptr ? QString() : delegate->displayText(text, QLocale::c());
}

using FileDialogNamesTest = FileDialogTest;

TEST_F(FileDialogNamesTest, TheBoxOfTheNameTellsOfATurnAndKeepsTheName) {
    const QString name = QString::fromStdString(turnedFile);
    QImage shown;
    QImage wanted;
    QString kept;

    open([&](QFileDialog& dialog) {
        nameOf(dialog).setText(name);
        shown = imageOf(nameOf(dialog));
        kept = nameOf(dialog).text();
        QLineEdit plain(shownFile);
        plain.setFont(nameOf(dialog).font());
        plain.resize(nameOf(dialog).size());
        wanted = imageOf(plain);
    });

    EXPECT_EQ(shown, wanted);
    EXPECT_EQ(kept, name);
}

/// What stands on the screen where a widget is.
QImage onScreen(QWidget& widget) {
    // Two turns of the loop: one to be shownFile that it is to be painted, one to paint it.
    for (int i = 0; i < 2; ++i) {
        QCoreApplication::processEvents();
    }
    const QWidget& window = *widget.window();
    const QRect place(widget.mapTo(&window, QPoint()), widget.size());
    return window.screen()
        ->grabWindow(window.winId(), place.x(), place.y(), place.width(), place.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

TEST_F(FileDialogNamesTest, TheScreenShowsTheNameOfTheBoxWithItsTurnTold) {
    QImage empty;
    QImage shown;
    QImage wanted;

    open([&](QFileDialog& dialog) {
        QLineEdit& box = nameOf(dialog);
        ASSERT_TRUE(spinUntil([&] { return dialog.isActiveWindow(); }));
        box.clearFocus();
        empty = onScreen(box);
        box.setText(QString::fromStdString(turnedFile));
        shown = onScreen(box);
        box.setText(shownFile);
        box.setCursorPosition(0);
        wanted = onScreen(box);
    });

    EXPECT_NE(shown, empty);
    EXPECT_EQ(shown, wanted);
}

TEST_F(FileDialogNamesTest, ALineBreakInANameIsToldInTheListsAndInTheBox) {
    const QString name = QStringLiteral("a\nb\u200b");
    const QString toldSo = QStringLiteral("a[U+000A]b[U+200B]");
    QString listed;
    QImage shown;
    QImage wanted;

    open([&](QFileDialog& dialog) {
        listed = shownBy(*dialog.findChild<QAbstractItemView*>(QStringLiteral("sidebar")), name);
        nameOf(dialog).setText(name);
        shown = imageOf(nameOf(dialog));
        QLineEdit plain(toldSo);
        plain.setFont(nameOf(dialog).font());
        plain.resize(nameOf(dialog).size());
        wanted = imageOf(plain);
    });

    EXPECT_EQ(listed.toStdString(), toldSo.toStdString());
    EXPECT_EQ(shown, wanted);
}

TEST_F(FileDialogNamesTest, TheNameIsChangedAsItStands) {
    QImage shown;
    QImage wanted;

    open([&](QFileDialog& dialog) {
        dialog.activateWindow();
        nameOf(dialog).setFocus();
        ASSERT_TRUE(spinUntil([&] { return nameOf(dialog).hasFocus(); }));
        nameOf(dialog).setText(shownFile);
        wanted = nameOf(dialog).grab().toImage();
        nameOf(dialog).setText(QString::fromStdString(turnedFile));
        shown = nameOf(dialog).grab().toImage();
    });

    EXPECT_NE(shown, wanted);
}

TEST_F(FileDialogNamesTest, TheNameWithATurnIsOpened) {
    const std::string path = makeFile(turnedFile);

    EXPECT_TRUE(open(choose(turnedFile)));

    EXPECT_EQ(file.substr(0, path.size() + 1), path + '\0');
}

TEST_F(FileDialogNamesTest, TheFolderThatIsShownTellsOfATurn) {
    std::filesystem::create_directories(folder.path() + "/" + turnedFile);
    std::filesystem::create_directories(folder.path() + "/" + shownFile.toStdString());
    const auto shownFor = [&](const std::string& name) {
        const std::string path = folder.path() + "/" + name;
        data.lpstrInitialDir = path.c_str();
        QImage image;
        open([&](const QFileDialog& dialog) {
            auto& folders = *dialog.findChild<QComboBox*>(QStringLiteral("lookInCombo"));
            ASSERT_TRUE(spinUntil(
                [&] { return folders.currentText().endsWith(QString::fromStdString(name)); }));
            folders.setItemIcon(folders.currentIndex(), QIcon());
            image = imageOf(folders);
        });
        return image;
    };

    const QImage shown = shownFor(turnedFile);

    EXPECT_EQ(shown, shownFor(shownFile.toStdString()));
}

TEST_F(FileDialogNamesTest, AllListsOfNamesTellOfATurn) {
    const QString name = QString::fromStdString(turnedFile);

    open([&](const QFileDialog& dialog) {
        const auto& folders = *dialog.findChild<QComboBox*>(QStringLiteral("lookInCombo"));
        const auto& places = *dialog.findChild<QAbstractItemView*>(QStringLiteral("sidebar"));

        EXPECT_EQ(shownBy(places, name), shownFile);
        EXPECT_EQ(shownBy(*nameOf(dialog).completer()->popup(), name), shownFile);
        const auto* delegate = qobject_cast<const QStyledItemDelegate*>(folders.itemDelegate());
        ASSERT_NE(delegate, nullptr);
        EXPECT_EQ(delegate->displayText(name, QLocale::c()), shownFile);
    });
}

} // namespace
} // namespace tarvik
