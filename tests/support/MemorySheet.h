#pragma once

#include "support/Pixels.h"
#include "windows/services/SystemHeader.h"

#include <algorithm>

namespace tarvik {

/// A white image in memory that can be drawn on and read.
class MemorySheet {
public:
    MemorySheet(int width, int height)
        : width_(width), height_(height), context_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        points_ = static_cast<std::uint32_t*>(bits);
        before_ = SelectObject(context_, bitmap_);
        std::fill_n(points_, count(), 0xFFFFFFU);
    }
    ~MemorySheet() {
        SelectObject(context_, before_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }
    MemorySheet(const MemorySheet&) = delete;
    MemorySheet& operator=(const MemorySheet&) = delete;

    HDC context() const { return context_; }

    Pixels pixels() const {
        GdiFlush();
        Pixels result{.width = width_, .height = height_, .values = {points_, points_ + count()}};
        for (std::uint32_t& value : result.values) {
            value &= 0xFFFFFFU;
        }
        return result;
    }

private:
    std::size_t count() const {
        return static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
    }

    int width_;
    int height_;
    HDC context_;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
    std::uint32_t* points_ = nullptr;
};

} // namespace tarvik
