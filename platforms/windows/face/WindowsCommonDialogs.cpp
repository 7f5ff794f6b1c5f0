#include "windows/face/WindowsCommonDialogs.h"

#include "ports/OverwriteQuestion.h"
#include "windows/face/WindowsDesktop.h"

#include <string>
#include <string_view>

namespace tarvik::face {

namespace {

ScreenRect rectOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return {.left = static_cast<int>(rect.left),
            .top = static_cast<int>(rect.top),
            .width = static_cast<int>(rect.right - rect.left),
            .height = static_cast<int>(rect.bottom - rect.top)};
}

bool isDialog(HWND window) {
    char className[16] = {};
    GetClassNameA(window, className, sizeof className);
    return std::string_view(className) == "#32770";
}

/// Moves the dialog that this thread opens next, for its own lifetime. The system tells of a window
/// about to be active before it is seen; only the first of a dialog's class is the dialog itself.
class PlacementHook {
public:
    PlacementHook(HWND owner, const DialogPlacement& place) : owner_(owner), place_(place) {
        current = this;
        hook_ = SetWindowsHookExA(WH_CBT, onEvent, nullptr, GetCurrentThreadId());
    }
    ~PlacementHook() {
        release();
        current = nullptr;
    }
    PlacementHook(const PlacementHook&) = delete;
    PlacementHook& operator=(const PlacementHook&) = delete;

private:
    static LRESULT CALLBACK onEvent(int code, WPARAM first, LPARAM second) {
        if (code == HCBT_ACTIVATE && current != nullptr) {
            current->move(reinterpret_cast<HWND>(first));
        }
        return CallNextHookEx(nullptr, code, first, second);
    }

    void move(HWND dialog) {
        if (!isDialog(dialog)) {
            return;
        }
        release();
        const ScreenRect before = rectOf(dialog);
        const ScreenRect after = place_(before, owner_ == nullptr ? ScreenRect{} : rectOf(owner_));
        SetWindowPos(
            dialog, nullptr, after.left, after.top, after.width, after.height,
            SWP_NOZORDER | SWP_NOACTIVATE |
                (after.width == before.width && after.height == before.height ? SWP_NOSIZE : 0U));
    }

    void release() {
        if (hook_ != nullptr) {
            UnhookWindowsHookEx(hook_);
            hook_ = nullptr;
        }
    }

    static PlacementHook* current;
    HWND owner_;
    const DialogPlacement& place_;
    HHOOK hook_ = nullptr;
};

PlacementHook* PlacementHook::current = nullptr;

} // namespace

bool WindowsCommonDialogs::show(const char* function, OPENFILENAMEA* data,
                                const DialogPlacement& place) {
    using Dialog = BOOL WINAPI(OPENFILENAMEA*);
    Dialog* const dialog = library_.function<Dialog>(function);
    if (dialog == nullptr) {
        return false;
    }
    bool chosen = false;
    desktop_.runDialog([&] {
        const PlacementHook hook(static_cast<HWND>(data->hwndOwner), place);
        chosen = dialog(data) != FALSE;
    });
    return chosen;
}

bool WindowsCommonDialogs::GetOpenFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) {
    return show("GetOpenFileNameA", data, place);
}

bool WindowsCommonDialogs::GetSaveFileNameA(OPENFILENAMEA* data, const DialogPlacement& place) {
    constexpr auto prompt = static_cast<std::uint32_t>(DialogFlag::Flag_OverwritePrompt);
    if (!has(*data, DialogFlag::Flag_OverwritePrompt)) {
        return show("GetSaveFileNameA", data, place);
    }
    bool chosen = false;
    do {
        data->Flags &= ~prompt;
        chosen = show("GetSaveFileNameA", data, place);
    } while (chosen && !mayOverwrite(*data));
    data->Flags |= prompt;
    return chosen;
}

/// Whether there is no file of the name that was chosen, or the user wants another one in its
/// place.
bool WindowsCommonDialogs::mayOverwrite(const OPENFILENAMEA& data) {
    if (GetFileAttributesA(data.lpstrFile) == INVALID_FILE_ATTRIBUTES) {
        return true;
    }
    return desktop_.askInDialog(static_cast<HWND>(data.hwndOwner),
                                overwriteQuestion(data.lpstrFile + data.nFileOffset)) ==
           MsgBoxAnswer::Yes;
}

std::uint32_t WindowsCommonDialogs::CommDlgExtendedError() {
    using Error = DWORD WINAPI();
    Error* const error = library_.function<Error>("CommDlgExtendedError");
    return error == nullptr ? dialogFailure : error();
}

} // namespace tarvik::face
