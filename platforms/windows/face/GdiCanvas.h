#pragma once

#include "controls/Canvas.h"
#include "windows/services/SystemHeader.h"
#include "windows/services/WindowsCodePage.h"

namespace tarvik::face {

/// A canvas on a device context; it begins at the origin.
class GdiCanvas : public Canvas {
public:
    /// The context is as before when the canvas ends. `scale` as canvases tell it; texts are bytes
    /// of that code page.
    GdiCanvas(HDC context, SIZE size, double scale, HFONT font,
              const CodePage& codePage = windowsCodePage());
    ~GdiCanvas() override;
    GdiCanvas(const GdiCanvas&) = delete;
    GdiCanvas& operator=(const GdiCanvas&) = delete;

    CanvasSize size() const override;
    double scale() const override { return scale_; }

    void line(std::span<const CanvasPoint> points, const Stroke& stroke) override;
    void polygon(std::span<const CanvasPoint> corners, const Colour& fill) override;
    void text(CanvasPoint leftTop, const std::string& text, const Colour& colour) override;
    CanvasSize textSize(const std::string& text) const override;

private:
    void slantedLine(std::span<const CanvasPoint> points, const Stroke& stroke);

    HDC context_;
    SIZE size_;
    double scale_;
    CodePage codePage_;
    int saved_;
};

} // namespace tarvik::face
