#pragma once

#include "FileDialogTest.h"
#include "startup/mdlStartUp.h"
#include "support/QtWidgets.h"
#include "wiring/World.h"

#include <QAbstractButton>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

namespace tarvik {

/// The whole program on a played machine with the toolkit's own windows and file dialogs. Keys and
/// the mouse go to the window, as those of a user do, and find their widget from there.
class ProgramTest : public testing::Test {
protected:
    ProgramTest() {
        machine.scripted.connections.entries.push_back({.name = "Harbour"});
        machine.scripted.files.setFile(iniPath, "[Settings]\r\nRefreshInterval=100\r\n");
        Main();
    }
    ~ProgramTest() override { boxes_.stop(); }

    static constexpr const char* iniPath = "C:\\Prog\\Tarvik.ini";

    FrmMain& frmMain() { return world.forms.frmMain; }
    FrmHistory& frmHistory() { return world.forms.frmHistory; }
    FrmOptions& frmOptions() { return world.forms.frmOptions; }
    /// All that a user ever sees.
    std::array<Form*, 5> windows() {
        return {&frmMain(), &frmHistory(), &frmOptions(), &world.forms.frmStatistics,
                &world.forms.frmWarning};
    }

    static QWidget& window(const ControlList& list) { return theWindowOf(list); }

    /// The widget that shows the control.
    template <class Widget = QWidget>
    static Widget& widget(const Control& control) {
        return theWidgetOf<Widget>(control);
    }

    /// Opens the window in front of the others.
    static QWidget& open(Form& form) {
        form.setVisible(true);
        form.bringToFront();
        QWidget& shown = window(form);
        EXPECT_TRUE(spinUntil([&] { return shown.isActiveWindow(); })) << form.name();
        return shown;
    }

    /// What a desktop does when a box has gone, and what a click does: nobody else does it here.
    static void activate(QWidget& whole) {
        whole.activateWindow();
        EXPECT_TRUE(spinUntil([&] { return whole.isActiveWindow(); }));
    }

    static void press(const Form& form, Qt::Key key,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        activate(window(form));
        QTest::keyClick(window(form).windowHandle(), key, modifiers);
        // A button that is pressed by its letter stays down for a moment before it acts.
        EXPECT_TRUE(spinUntil([&] { return !hasButtonDown(window(form)); }));
        takeQueued();
    }

    static void click(QWidget& target, const QPoint& place,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget& whole = *target.window();
        activate(whole);
        QTest::mouseClick(whole.windowHandle(), Qt::LeftButton, modifiers,
                          target.mapTo(&whole, place));
        takeQueued();
    }

    static void doubleClick(QWidget& target, const QPoint& place) {
        QWidget& whole = *target.window();
        activate(whole);
        QTest::mouseDClick(whole.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                           target.mapTo(&whole, place));
        takeQueued();
    }

    /// From now on every box and file dialog is looked at and left so.
    void answer(std::function<void(QMessageBox&)> box, std::function<void(QFileDialog&)> dialog) {
        boxes_.disconnect();
        QObject::connect(&boxes_, &QTimer::timeout, &boxes_, [=] {
            QWidget* const open = QApplication::activeModalWidget();
            if (open == nullptr || !open->isVisible()) {
                return;
            }
            if (auto* openBox = qobject_cast<QMessageBox*>(open)) {
                box(*openBox);
            } else if (auto* openDialog = qobject_cast<QFileDialog*>(open)) {
                dialog(*openDialog);
            }
        });
        boxes_.start(5);
    }
    void answerBoxes(std::function<void(QMessageBox&)> box) {
        answer(std::move(box), [](QFileDialog& dialog) {
            ADD_FAILURE() << "a dialog nobody announced";
            dialog.reject();
        });
    }
    /// Presses the button that is there for that answer, or else the only one.
    static void pressIn(QMessageBox& box, QMessageBox::StandardButton button) {
        QAbstractButton* wanted = box.button(button);
        (wanted != nullptr ? wanted : box.buttons().constFirst())->click();
    }

    /// So many records in the program's file, and their import.
    void importRecords(int count) {
        std::string index = "[Settings]\r\nLastDateStamp=" + std::to_string(count) + "\r\n";
        std::string sections;
        for (int i = 1; i <= count; ++i) {
            const std::string number = std::to_string(i);
            const std::string stamp = "12.05.2005|" + number;
            index.append("DateStamp").append(number).append("=").append(stamp).append("\r\n");
            sections.append("[").append(stamp).append("]\r\nSent=").append(number);
            sections.append("\r\nRcvd=8\r\nDuration=9\r\nIPAddress=10.0.0.1\r\n");
        }
        machine.scripted.files.setFile(iniPath, index + sections);
        answerBoxes([](QMessageBox& box) { pressIn(box, QMessageBox::Yes); });
        press(frmHistory(), Qt::Key_M, Qt::AltModifier);
        EXPECT_EQ(frmHistory().lvwCompleteLog.rowCount(), count);
    }

    static bool hasButtonDown(const QWidget& whole) {
        const auto buttons = whole.findChildren<QAbstractButton*>();
        return std::any_of(buttons.begin(), buttons.end(),
                           [](const QAbstractButton* button) { return button->isDown(); });
    }

    OwnDialogs ownDialogs;
    QtMachine machine;
    face::LinuxCommonDialogs dialogs{machine.desktop};
    Platform platform{machine.scripted.connections,
                      machine.scripted.systemErrors,
                      machine.scripted.internet,
                      machine.scripted.sockets,
                      machine.scripted.profile,
                      machine.scripted.files,
                      machine.scripted.instances,
                      machine.scripted.notificationArea,
                      dialogs,
                      machine.desktop,
                      machine.scripted.clock,
                      machine.scripted.locale,
                      machine.scripted.program};
    World world{platform};

private:
    QTimer boxes_;
};

} // namespace tarvik
