#pragma once

#include "controls/Canvas.h"

#include <QFont>
#include <QPainter>
#include <QSizeF>

namespace tarvik::face {

/// A canvas on what a painter paints on. Its pixels are those of the device, however many of them
/// make up one of the toolkit's units; it begins at a whole pixel.
class QtCanvas : public Canvas {
public:
    /// `size` in the toolkit's units, as the font's is. The painter is as before when the canvas
    /// ends.
    QtCanvas(QPainter& painter, const QSizeF& size, const QFont& font);
    ~QtCanvas() override;
    QtCanvas(const QtCanvas&) = delete;
    QtCanvas& operator=(const QtCanvas&) = delete;

    CanvasSize size() const override { return size_; }
    double scale() const override { return scale_; }

    void line(std::span<const CanvasPoint> points, const Stroke& stroke) override;
    void polygon(std::span<const CanvasPoint> corners, const Colour& fill) override;
    void text(CanvasPoint leftTop, const std::string& text, const Colour& colour) override;
    CanvasSize textSize(const std::string& text) const override;

private:
    void slantedLine(std::span<const CanvasPoint> points, const Stroke& stroke);

    QPainter& painter_;
    CanvasSize size_;
    double scale_;
};

} // namespace tarvik::face
