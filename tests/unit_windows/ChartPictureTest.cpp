#include "support/MemorySheet.h"

#include "support/ChartPictures.h"
#include "windows/face/GdiCanvas.h"

// The header of the images wants these first.
#include <objbase.h>
#include <propidl.h>

#include <gdiplus.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace tarvik {
namespace {

/// Of all pixels; what another system's letters may do differently.
constexpr double tolerance = 0.005;

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

    /// A picture among the program's resources; empty when it is not there.
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

Pixels drawn(const ChartCase& one) {
    const ChartOfCase form(one);
    const KnownFont font;
    const MemorySheet sheet(ChartCase::width, ChartCase::height);
    {
        face::GdiCanvas canvas(sheet.context(), {ChartCase::width, ChartCase::height}, 1,
                               font.handle());
        ChartPicture(form.chart).draw(canvas, one.palette());
    }
    return sheet.pixels();
}

/// Writes an image as the picture of that case; the name of its file.
std::string write(const Pixels& pixels, const std::filesystem::path& folder, const ChartCase& one) {
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    const std::filesystem::path file = folder / (one.name + ".png");
    return (Images::write(pixels, file) ? "" : "nowhere: ") + file.string();
}

class ChartPictureTest : public testing::TestWithParam<ChartCase> {
protected:
    Images images;
};

TEST_P(ChartPictureTest, LooksAsItShould) {
    const Pixels now = drawn(GetParam());
    if (const char* folder = std::getenv("TARVIK_WRITE_PICTURES"); folder != nullptr) {
        GTEST_SKIP() << "Written to " << write(now, folder, GetParam());
    }

    const double differing = differingPart(now, Images::resource(GetParam().name));

    EXPECT_LE(differing, tolerance)
        << "What was drawn is in "
        << write(now, std::filesystem::temp_directory_path() / "tarvik-pictures", GetParam())
        << ". If it is right, TARVIK_WRITE_PICTURES=FOLDER writes all pictures anew.";
}

INSTANTIATE_TEST_SUITE_P(All, ChartPictureTest, testing::ValuesIn(chartCases()),
                         [](const auto& one) { return nameOf(one.param); });

TEST(ChartPicturesTest, APictureThatLacksALineIsNoticed) {
    const Pixels one = drawn({.name = "line_one"});
    const Pixels two = drawn({.name = "line_two", .columns = 2});

    EXPECT_GT(differingPart(one, two), tolerance);
}

} // namespace
} // namespace tarvik
