#include "contracts/DialogsUnderTest.h"

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
        atNext([](QFileDialog& dialog) { dialog.reject(); });
    }
    void chooseNext(const std::string& path) override {
        atNext([path](QFileDialog& dialog) {
            auto* const name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            name->setText(QString::fromStdString(path));
            static_cast<QDialog&>(dialog).accept();
        });
    }
    int asked() const override { return asked_; }

private:
    /// A dialog that is open still after an answer is cancelled.
    void atNext(std::function<void(QFileDialog&)> act) {
        QObject::connect(&watch_, &QTimer::timeout, &watch_, [this, act = std::move(act)] {
            QWidget* const open = QApplication::activeModalWidget();
            if (auto* const box = qobject_cast<QMessageBox*>(open)) {
                ++asked_;
                box->button(QMessageBox::No)->click();
            } else if (auto* const dialog = qobject_cast<QFileDialog*>(open)) {
                std::exchange(seen_, true) ? dialog->reject() : act(*dialog);
            }
        });
        watch_.start(5);
    }

    OwnDialogs own_;
    TemporaryFolder folder_;
    QtMachine machine_;
    face::LinuxCommonDialogs dialogs_{machine_.desktop};
    QTimer watch_;
    bool seen_ = false;
    int asked_ = 0;
};

} // namespace

std::unique_ptr<DialogsUnderTest> dialogsUnderTest() {
    return std::make_unique<LinuxDialogsUnderTest>();
}

} // namespace tarvik
