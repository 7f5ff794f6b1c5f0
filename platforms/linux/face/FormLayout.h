#pragma once

#include "controls/Layout.h"
#include "linux/face/ControlWidget.h"

#include <functional>

class QLayout;

namespace tarvik::face {

/// Finds the widget of a control.
using WidgetOf = std::function<ControlWidget&(const Control&)>;

/// The toolkit's own layouts for a layout tree, without a parent yet.
QLayout* makeLayout(const LayoutNode& root, const WidgetOf& widgetOf);

} // namespace tarvik::face
