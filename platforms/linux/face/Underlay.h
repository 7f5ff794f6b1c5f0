#pragma once

#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QStyle>

class QPainter;
class QStyleOptionFrame;
class QWidget;

namespace tarvik::face {

/// What lies under a box and the panel that its style draws for it, kept as a picture: when only
/// the text of the box changes, neither is painted again. The picture is made anew when something
/// that it is made of has changed.
class Underlay {
public:
    /// Whether a picture can lie under the box pixel by pixel: not on a screen whose pixels are a
    /// fraction of the toolkit's.
    static bool fits(const QWidget& box);

    /// The picture of that area of the box, whose panel is described by the option.
    void paint(QPainter& painter, const QRect& area, const QStyleOptionFrame& panel,
               const QWidget& box);

private:
    /// What the picture depends on.
    struct Made {
        const QStyle* style = nullptr;
        QStyle::State state;
        int lineWidth = 0;
        QPoint place;
        QSize parentSize;
        qint64 palette = 0;
        qreal pixelRatio = 0;
        QSize size;

        bool operator==(const Made&) const = default;
    };

    static Made madeOf(const QStyleOptionFrame& panel, const QWidget& box);

    Made made_;
    QPixmap picture_;
};

} // namespace tarvik::face
