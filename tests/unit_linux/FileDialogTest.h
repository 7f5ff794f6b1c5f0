#pragma once

#include "Waiting.h"
#include "linux/face/LinuxCommonDialogs.h"
#include "support/FormOn.h"
#include "support/QtMachine.h"
#include "support/QtWidgets.h"
#include "support/TemporaryFolder.h"
#include "support/ThrowAwayForm.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace tarvik {

/// Dialogs that remember nothing of the user's and leave nothing to him.
class OwnDialogs {
public:
    OwnDialogs() { settingsIn(QString::fromStdString(settings_.path())); }
    ~OwnDialogs() {
        settingsIn(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    }
    OwnDialogs(const OwnDialogs&) = delete;
    OwnDialogs& operator=(const OwnDialogs&) = delete;

private:
    static void settingsIn(const QString& folder) {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
    }

    TemporaryFolder settings_;
};

/// File dialogs over a form that is seen. The record holds an empty name, a folder of the test's
/// own and large buffers.
class FileDialogTest : public testing::Test {
protected:
    using Act = std::function<void(QFileDialog&)>;

    FileDialogTest() {
        form.setVisible(true);
        EXPECT_TRUE(spinUntil([] { return window() != nullptr && window()->isVisible(); }));
        data.lStructSize = OPENFILENAMEA::size;
        data.lpstrInitialDir = folder.path().c_str();
        data.lpstrFile = file.data();
        data.nMaxFile = 2048;
        data.lpstrFileTitle = title.data();
        data.nMaxFileTitle = 260;
    }
    ~FileDialogTest() override { form.unload(); }

    static QWidget* window() { return windowNamed("frmThrowAway"); }

    /// Makes a file in the folder; its full path.
    std::string makeFile(const std::string& name) const {
        const std::string path = folder.path() + '/' + name;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path) << "text";
        return path;
    }

    /// Shows the dialog, does `act` in it once, and cancels it if it is open still.
    bool open(const Act& act) { return run(&CommonDialogs::GetOpenFileNameA, act); }
    bool save(const Act& act) { return run(&CommonDialogs::GetSaveFileNameA, act); }

    /// Enters a name, or several in quotes, and confirms.
    static Act choose(const std::string& typed) {
        return [typed](QFileDialog& dialog) {
            nameOf(dialog).setText(QString::fromStdString(typed));
            static_cast<QDialog&>(dialog).accept();
        };
    }
    static void cancel(QFileDialog& dialog) { dialog.reject(); }

    static QLineEdit& nameOf(const QFileDialog& dialog) {
        return *dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    }
    static QComboBox& typeOf(const QFileDialog& dialog) {
        return *dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    }

    /// Gives that answer when the dialog asks something; `asked` counts.
    void answerWith(QMessageBox::StandardButton button) {
        QObject::connect(&questions, &QTimer::timeout, &questions, [this, button] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                questions.stop();
                ++asked;
                box->button(button)->click();
            }
        });
        questions.start(5);
    }

    OwnDialogs own;
    TemporaryFolder folder;
    QtMachine machine;
    FormOn<ThrowAwayForm> form{machine.platform.desktop};
    face::LinuxCommonDialogs dialogs{machine.desktop};
    std::string file = std::string(2048, '\0');
    std::string title = std::string(260, '\0');
    OPENFILENAMEA data{};
    DialogPlacement place = [](const ScreenRect& dialog, const ScreenRect&) { return dialog; };
    QTimer questions;
    int asked = 0;

private:
    bool run(bool (CommonDialogs::*show)(OPENFILENAMEA*, const DialogPlacement&), const Act& act) {
        bool seen = false;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            const QPointer<QFileDialog> dialog =
                qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!dialog.isNull() && !seen) {
                seen = true;
                act(*dialog);
                if (!dialog.isNull() && dialog->isVisible()) {
                    dialog->reject();
                }
            }
        });
        watch.start(5);
        QTimer::singleShot(20'000, &watch, [] {
            ADD_FAILURE() << "a dialog stays open";
            while (QWidget* open = QApplication::activeModalWidget()) {
                open->close();
            }
        });
        const bool result = (dialogs.*show)(&data, place);
        EXPECT_TRUE(seen);
        return result;
    }
};

} // namespace tarvik
