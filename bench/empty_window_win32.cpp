#include "windows/services/SystemHeader.h"

namespace {

LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcA(window, message, first, second);
}

} // namespace

/// The floor that the program is measured against: a window of the same size with nothing in it,
/// which wakes as often.
int main() {
    WNDCLASSA window{};
    window.lpfnWndProc = onMessage;
    window.hInstance = GetModuleHandleA(nullptr);
    window.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    window.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
    window.lpszClassName = "emptyWindow";
    RegisterClassA(&window);
    const HWND empty = CreateWindowExA(
        0, window.lpszClassName, "Empty window", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CW_USEDEFAULT,
        CW_USEDEFAULT, 660, 280, nullptr, nullptr, window.hInstance, nullptr);
    SetTimer(empty, 1, 100, nullptr);
    MSG message{};
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return 0;
}
