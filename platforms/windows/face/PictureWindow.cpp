#include "windows/face/ControlWindow.h"
#include "windows/face/DrawingRaster.h"
#include "windows/face/WindowMessages.h"

#include <shellapi.h>

#include <algorithm>

namespace tarvik::face {

namespace {

constexpr const char* pictureClass = "TarvikPicture";

void paint(HWND window, const Drawing& drawing) {
    PAINTSTRUCT painting{};
    const HDC context = BeginPaint(window, &painting);
    RECT area{};
    GetClientRect(window, &area);
    FillRect(context, &area, GetSysColorBrush(COLOR_3DFACE));
    const int side = static_cast<int>(std::min(area.right, area.bottom));
    const COLORREF face = GetSysColor(COLOR_3DFACE);
    const Raster raster =
        rasterOn(drawing, side, {GetRValue(face), GetGValue(face), GetBValue(face)});
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = raster.side;
    info.bmiHeader.biHeight = -raster.side;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    if (raster.side > 0) {
        SetDIBitsToDevice(context, (area.right - side) / 2, (area.bottom - side) / 2,
                          static_cast<DWORD>(side), static_cast<DWORD>(side), 0, 0, 0,
                          static_cast<UINT>(side), raster.points.data(), &info, DIB_RGB_COLORS);
    }
    EndPaint(window, &painting);
}

class PictureWindow : public ControlWindow {
public:
    PictureWindow(Picture& picture, ControlSite& site)
        : ControlWindow(picture, site, makeChild(picture, site, registeredClass(), "", 0)),
          picture_(picture) {
        SetWindowLongPtrA(window(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    ~PictureWindow() override { SetWindowLongPtrA(window(), GWLP_USERDATA, 0); }
    PictureWindow(const PictureWindow&) = delete;
    PictureWindow& operator=(const PictureWindow&) = delete;

    LayoutSize measure(const FaceFont& font, int, int) const override {
        const int side = font.lineHeight() * 3 / 2;
        return {side, side};
    }

protected:
    void refreshOwn(Property changed) override {
        if (changed == Property::Drawing) {
            InvalidateRect(window(), nullptr, FALSE);
        }
    }

private:
    static const char* registeredClass() {
        static const char* const name = registerClass(pictureClass, onMessage, 0);
        return name;
    }

    static LRESULT CALLBACK onMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
        auto* own = reinterpret_cast<PictureWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
        if (own != nullptr) {
            switch (message) {
            case WM_PAINT:
                paint(window, own->picture_.drawing());
                return 0;
            case WM_ERASEBKGND:
                return TRUE; // painting covers everything
            case WM_MOUSEMOVE:
                if (!own->onNoteNews(LOWORD(second))) {
                    own->onMouseMove(static_cast<std::int16_t>(LOWORD(second)));
                }
                return 0;
            default:
                break;
            }
        }
        return DefWindowProcA(window, message, first, second);
    }

    /// False for what is none, or where nobody listens. What it begins may take the picture away.
    bool onNoteNews(UINT news) {
        const auto listener = static_cast<HWND>(GetPropA(window(), noteListenerProperty));
        if (listener == nullptr || news < NIN_BALLOONSHOW || news > NIN_BALLOONUSERCLICK) {
            return false;
        }
        const HandlingScope handling(site().context());
        const auto tell = [&] { SendMessageA(listener, noteNewsMessage, news, 0); };
        if (news == NIN_BALLOONUSERCLICK) {
            fromUser(Property::Caption, tell);
        } else {
            tell();
        }
        return true;
    }

    void onMouseMove(int place) {
        const HandlingScope handling(site().context());
        fromUser(Property::Caption, [&] { picture_.MouseMove.raise(place); });
    }

    Picture& picture_;
};

} // namespace

std::unique_ptr<ControlWindow> makePicture(Control& control, ControlSite& site) {
    return std::make_unique<PictureWindow>(static_cast<Picture&>(control), site);
}

} // namespace tarvik::face
