#include "common/ChartReading.h"
#include "controls/ChartPainter.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"
#include "linux/face/QtCanvas.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace tarvik::face {

namespace {

std::optional<ReadingStep> stepOf(const QKeyEvent& event) {
    static const std::map<int, ReadingStep> steps{
        {Qt::Key_Left, ReadingStep::Back},       {Qt::Key_Right, ReadingStep::On},
        {Qt::Key_PageUp, ReadingStep::PageBack}, {Qt::Key_PageDown, ReadingStep::PageOn},
        {Qt::Key_Home, ReadingStep::First},      {Qt::Key_End, ReadingStep::Last},
    };
    const auto found = steps.find(event.key());
    const bool plain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    return plain && found != steps.end() ? std::optional(found->second) : std::nullopt;
}

/// Paints a chart over the whole widget and tells what the user wants to read off.
class ChartPane : public QWidget {
public:
    /// What the user does to the chart.
    using Action = std::function<void(Chart&)>;

    ChartPane(QWidget* parent, const Chart& chart) : QWidget(parent), painter_(chart) {
        setFocusPolicy(Qt::StrongFocus);
        setMouseTracking(true);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        setBackgroundRole(QPalette::Base);
        setAutoFillBackground(true);
    }

    std::function<void(const Action&)> act;

    QSize sizeHint() const override { return sizeFor(60, 16); }
    QSize minimumSizeHint() const override { return sizeFor(30, 9); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QtCanvas canvas(painter, size(), font());
        painter_.draw(canvas, ChartPalette::on(colour(QPalette::Base), colour(QPalette::Text)));
        if (hasFocus()) {
            frame(canvas);
        }
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (const auto step = stepOf(*event)) {
            act([&](Chart& chart) { goOn(chart, *step); });
        } else {
            QWidget::keyPressEvent(event);
        }
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        const double place = std::floor(event->position().x() * devicePixelRatioF());
        act([&](Chart& chart) { chart.setReadRow(painter_.rowAt(place)); });
    }

    void leaveEvent(QEvent*) override {
        act([](Chart& chart) { chart.setReadRow(Chart::none); });
    }

private:
    Colour colour(QPalette::ColorRole role) const {
        const QColor found = palette().color(role);
        return {found.red(), found.green(), found.blue()};
    }

    /// Shows along the edge that keys go to the chart.
    void frame(Canvas& canvas) const {
        const double width = std::round(canvas.scale());
        const double inset = std::floor((width - 1) / 2);
        const double right = canvas.size().width - width + inset;
        const double bottom = canvas.size().height - width + inset;
        canvas.line(
            std::vector<CanvasPoint>{
                {inset, inset}, {right, inset}, {right, bottom}, {inset, bottom}, {inset, inset}},
            {.colour = colour(QPalette::Highlight), .width = width});
    }

    QSize sizeFor(int characters, int lines) const {
        const QFontMetrics metrics = fontMetrics();
        return {characters * metrics.horizontalAdvance(QLatin1Char('0')),
                lines * metrics.lineSpacing()};
    }

    ChartPainter painter_;
};

/// Lets screen readers know what the widget is.
QAccessibleInterface* accessibleChart(const QString&, QObject* object) {
    auto* pane = dynamic_cast<ChartPane*>(object);
    return pane == nullptr ? nullptr : new QAccessibleWidget(pane, QAccessible::Chart);
}

class ChartWidget : public ControlWidget {
public:
    ChartWidget(Chart& chart, ChartPane* widget, FaceContext& context)
        : ControlWidget(chart, widget, context), chart_(chart) {
        static const bool known = (QAccessible::installFactory(accessibleChart), true);
        static_cast<void>(known);
        widget->act = [this](const ChartPane::Action& action) {
            fromUser(Property::Reading, [&] { action(chart_); });
        };
        refresh(Property::Caption);
    }

protected:
    void refreshOwn(Property changed) override {
        if (!reading_.differs(chart_, changed)) {
            return;
        }
        widget()->setWindowTitle(shown(chart_.title()));
        widget()->setAccessibleName(shown(spokenName(chart_)));
        widget()->update();
    }

private:
    Chart& chart_;
    ShownReading reading_;
};

} // namespace

std::unique_ptr<ControlWidget> makeChart(Control& control, QWidget& parent, FaceContext& context) {
    auto& chart = static_cast<Chart&>(control);
    return std::make_unique<ChartWidget>(chart, new ChartPane(&parent, chart), context);
}

} // namespace tarvik::face
