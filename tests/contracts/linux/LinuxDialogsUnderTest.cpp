#include "contracts/painted/OutsideNames.h"

#include "../../unit_linux/FileDialogTest.h"

#include <utility>

namespace tarvik {
namespace {

class LinuxDialogsUnderTest : public DialogsUnderTest {
public:
    CommonDialogs& dialogs() override { return dialogs_; }
    std::string path(const std::string& name) const override { return folder_.path() + '/' + name; }
    void makeFile(const std::string& path) override { std::ofstream(path) << "text"; }
    void cancelNext() override {
        atNext([](QFileDialog& dialog) { dialog.reject(); }, QMessageBox::No);
    }
    void chooseNext(const std::string& path, MsgBoxAnswer answer) override {
        const auto enter = [path](QFileDialog& dialog) {
            auto* const name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            name->setText(QString::fromStdString(path));
            static_cast<QDialog&>(dialog).accept();
        };
        atNext(enter, answer == MsgBoxAnswer::Yes ? QMessageBox::Yes : QMessageBox::No);
    }
    std::string title() const override { return title_; }
    std::vector<std::string> questions() const override { return questions_; }

private:
    /// A question comes while the dialog is still at what it was told: another timer sees it.
    void atNext(std::function<void(QFileDialog&)> act, QMessageBox::StandardButton answer) {
        const auto work = [this, act = std::move(act)] {
            QWidget* const open = QApplication::activeModalWidget();
            if (auto* const dialog = qobject_cast<QFileDialog*>(open)) {
                title_ = dialog->windowTitle().toStdString();
                std::exchange(seen_, true) ? dialog->reject() : act(*dialog);
            }
        };
        const auto reply = [this, answer] {
            QWidget* const open = QApplication::activeModalWidget();
            if (auto* const box = qobject_cast<QMessageBox*>(open)) {
                questions_.push_back(box->text().toStdString());
                box->button(answer)->click();
            }
        };
        QObject::connect(&dialogWatch_, &QTimer::timeout, &dialogWatch_, work);
        QObject::connect(&boxWatch_, &QTimer::timeout, &boxWatch_, reply);
        dialogWatch_.start(5);
        boxWatch_.start(5);
    }

    OwnDialogs own_;
    TemporaryFolder folder_;
    QtMachine machine_;
    face::LinuxCommonDialogs dialogs_{machine_.desktop};
    QTimer dialogWatch_;
    QTimer boxWatch_;
    bool seen_ = false;
    std::string title_;
    std::vector<std::string> questions_;
};

} // namespace

std::unique_ptr<DialogsUnderTest> dialogsUnderTest() {
    return std::make_unique<LinuxDialogsUnderTest>();
}

OutsideDialogsUnderTest outsideDialogsUnderTest() {
    return {.machine = dialogsUnderTest(), .turned = "a\u202evsc.exe", .told = "a[U+202E]vsc.exe"};
}

} // namespace tarvik
