#include "contracts/painted/OutsideNames.h"

#include "../../unit_windows/HebrewPage.h"
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
    explicit WindowsDialogsUnderTest(const CodePage& codePage) : desktop_(codePage) {}

    CommonDialogs& dialogs() override { return dialogs_; }
    std::string path(const std::string& name) const override {
        return folder_.path() + '\\' + name;
    }
    void makeFile(const std::string& path) override { WindowsFiles().replace(path, {"text"}); }
    void cancelNext() override {
        later_.emplace([this] {
            const HWND dialog = openDialog();
            title_ = dialog == nullptr ? title_ : textOf(dialog);
            return dialog != nullptr && press(dialog, IDCANCEL);
        });
    }
    void chooseNext(const std::string& path, MsgBoxAnswer answer) override {
        later_.emplace([this, path, answer] {
            const HWND window = openDialog();
            const HWND box = nameBoxOf(window);
            if (window == nullptr || window == last_) {
                return false;
            }
            if (textOf(window) == questionCaption) {
                questions_.push_back(textOf(GetDlgItem(window, 0xFFFF)));
                press(window, answer == MsgBoxAnswer::Yes ? IDYES : IDNO);
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
    std::string title() const override { return title_; }
    std::vector<std::string> questions() const override { return questions_; }

private:
    TemporaryFolder folder_;
    face::WindowsDesktop desktop_;
    face::WindowsCommonDialogs dialogs_{desktop_};
    std::optional<Later> later_;
    HWND last_ = nullptr;
    bool entered_ = false;
    std::string title_;
    std::vector<std::string> questions_;
};

} // namespace

std::unique_ptr<DialogsUnderTest> dialogsUnderTest() {
    return std::make_unique<WindowsDialogsUnderTest>(windowsCodePage());
}

OutsideDialogsUnderTest outsideDialogsUnderTest() {
    return {.machine = std::make_unique<WindowsDialogsUnderTest>(hebrewPage()),
            .turned = "a\xFE"
                      "vsc.exe",
            .told = "a[U+200F]vsc.exe"};
}

} // namespace tarvik
