#include "contracts/painted/DrawnChart.h"

#include "support/MemorySheet.h"
#include "windows/face/GdiCanvas.h"

// The header of the images wants these first.
#include <objbase.h>
#include <propidl.h>

#include <gdiplus.h>

namespace tarvik {

namespace {

/// The system's own reader and writer of image files.
class Images {
public:
    Images() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    }
    ~Images() { Gdiplus::GdiplusShutdown(token_); }
    Images(const Images&) = delete;
    Images& operator=(const Images&) = delete;

    /// A image among the program's resources; empty when it is not there.
    static Pixels resource(const std::string& name) {
        const HRSRC found = FindResourceA(nullptr, name.c_str(), MAKEINTRESOURCEA(10));
        if (found == nullptr) {
            return {};
        }
        const DWORD size = SizeofResource(nullptr, found);
        const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
        std::copy_n(static_cast<const char*>(LockResource(LoadResource(nullptr, found))), size,
                    static_cast<char*>(GlobalLock(memory)));
        GlobalUnlock(memory);
        IStream* stream = nullptr;
        CreateStreamOnHGlobal(memory, TRUE, &stream);
        Pixels pixels = read(*stream);
        stream->Release();
        return pixels;
    }

    static bool write(Pixels pixels, const std::filesystem::path& file) {
        static constexpr CLSID encoder{
            0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
        Gdiplus::Bitmap image(pixels.width, pixels.height, 4 * pixels.width, PixelFormat32bppRGB,
                              reinterpret_cast<BYTE*>(pixels.values.data()));
        return image.Save(file.wstring().c_str(), &encoder, nullptr) == Gdiplus::Ok;
    }

private:
    static Pixels read(IStream& stream) {
        Gdiplus::Bitmap image(&stream);
        Pixels pixels{.width = static_cast<int>(image.GetWidth()),
                      .height = static_cast<int>(image.GetHeight()),
                      .values = {}};
        for (int y = 0; y < pixels.height; ++y) {
            for (int x = 0; x < pixels.width; ++x) {
                Gdiplus::Color colour;
                image.GetPixel(x, y, &colour);
                pixels.values.push_back(colour.GetValue() & 0xFFFFFFU);
            }
        }
        return pixels;
    }

    ULONG_PTR token_ = 0;
};

/// One that every system has, without the shades that each has in its own way.
class KnownFont {
public:
    KnownFont() {
        LOGFONTA description{};
        description.lfHeight = -11;
        description.lfQuality = NONANTIALIASED_QUALITY;
        description.lfCharSet = ANSI_CHARSET;
        lstrcpyA(description.lfFaceName, "Tahoma");
        font_ = CreateFontIndirectA(&description);
    }
    ~KnownFont() { DeleteObject(font_); }
    KnownFont(const KnownFont&) = delete;
    KnownFont& operator=(const KnownFont&) = delete;

    HFONT handle() const { return font_; }

private:
    HFONT font_;
};

} // namespace

Pixels drawn(const ChartCase& one) {
    const ChartOfCase form(one);
    const KnownFont font;
    const MemorySheet sheet(ChartCase::width, ChartCase::height);
    {
        face::GdiCanvas canvas(sheet.context(), {ChartCase::width, ChartCase::height}, 1,
                               font.handle());
        ChartPainter(form.chart).draw(canvas, one.palette());
    }
    return sheet.pixels();
}

Pixels kept(const ChartCase& one) {
    const Images images;
    return Images::resource(one.name);
}

bool writeImage(const Pixels& pixels, const std::filesystem::path& file) {
    const Images images;
    return Images::write(pixels, file);
}

} // namespace tarvik
