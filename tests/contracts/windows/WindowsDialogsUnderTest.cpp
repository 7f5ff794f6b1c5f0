#include "contracts/DialogsUnderTest.h"

#include "../../unit_windows/Later.h"
#include "../../unit_windows/OpenDialog.h"
#include "support/TemporaryFolder.h"
#include "windows/face/WindowsCommonDialogs.h"
#include "windows/face/WindowsDesktop.h"
#include "windows/services/WindowsFiles.h"

#include <optional>
#include <utility>

namespace tarvik {
namespace {

class WindowsDialogsUnderTest : public DialogsUnderTest {
public:
    CommonDialogs& dialogs() override { return dialogs_; }
    std::string path(const std::string& name) const override {
        return folder_.path() + '\\' + name;
    }
    void makeFile(const std::string& path) override { WindowsFiles().replace(path, {"text"}); }
    void cancelNext() override {
        later_.emplace([] {
            const HWND dialog = openDialog();
            return dialog != nullptr && press(dialog, IDCANCEL);
        });
    }
    /// A dialog that comes again after an answer is cancelled.
    void chooseNext(const std::string& path) override {
        later_.emplace([this, path] {
            const HWND window = openDialog();
            const HWND box = nameBoxOf(window);
            if (window == nullptr || window == last_) {
                return false;
            }
            if (textOf(window) == questionCaption) {
                ++asked_;
                press(window, IDNO);
            } else if (box == nullptr) {
                return false;
            } else if (std::exchange(entered_, true)) {
                press(window, IDCANCEL);
            } else {
                SendMessageA(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
                press(window, IDOK);
            }
            last_ = window;
            return false;
        });
    }
    int asked() const override { return asked_; }

private:
    TemporaryFolder folder_;
    face::WindowsDesktop desktop_{windowsCodePage()};
    face::WindowsCommonDialogs dialogs_{desktop_};
    std::optional<Later> later_;
    HWND last_ = nullptr;
    bool entered_ = false;
    int asked_ = 0;
};

} // namespace

std::unique_ptr<DialogsUnderTest> dialogsUnderTest() {
    return std::make_unique<WindowsDialogsUnderTest>();
}

} // namespace tarvik
