#include "FaceUnderTest.h"
#include "windows/face/GdiCanvas.h"

namespace tarvik {

void onSheet(const std::function<void(Canvas&)>& work) {
    static const HDC sheet = CreateCompatibleDC(nullptr);
    static const HBITMAP pixels = [] {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = sheetWidth;
        info.bmiHeader.biHeight = -sheetHeight;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        const HBITMAP made = CreateDIBSection(sheet, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        SelectObject(sheet, made);
        return made;
    }();
    static_cast<void>(pixels);
    const auto font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    face::GdiCanvas canvas(sheet, {sheetWidth, sheetHeight}, 1, font);
    work(canvas);
    GdiFlush();
}

void writeAndFlush(const std::string& path, std::string_view bytes) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    FlushFileBuffers(file);
    CloseHandle(file);
}

bool writeKeyBySystem(const std::string& path, const std::string& section, const std::string& key,
                      const std::string& value) {
    return WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), path.c_str()) !=
           FALSE;
}

} // namespace tarvik
