#include "windows/face/ToolTips.h"

#include <commctrl.h>

namespace tarvik::face {

ToolTips::ToolTips(HWND form)
    : form_(form), tips_(CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr,
                                         WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                                         CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, form, nullptr,
                                         GetModuleHandleA(nullptr), nullptr)) {
    // Some tips are three lines long: time to read them, milliseconds.
    constexpr LPARAM readingTime = 20'000;
    SendMessageA(tips_, TTM_SETDELAYTIME, TTDT_AUTOPOP, readingTime);
}

ToolTips::~ToolTips() {
    DestroyWindow(tips_);
}

void ToolTips::set(HWND control, const std::string& tip) {
    std::string text = tip; // the message takes no constant text
    TOOLINFOA tool{};
    // Without the last field, which only the newest form of the controls knows.
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = form_;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = text.data();
    SendMessageA(tips_, TTM_DELTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
    if (!text.empty()) {
        SendMessageA(tips_, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

void ToolTips::setWidth(int width) {
    SendMessageA(tips_, TTM_SETMAXTIPWIDTH, 0, width);
}

} // namespace tarvik::face
