#include "scripted/TextPicture.h"

#include "controls/Chart.h"
#include "controls/Form.h"
#include "controls/LayoutSolver.h"
#include "controls/ListView.h"
#include "scripted/CellCanvas.h"
#include "types/Convert.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <vector>

namespace tarvik {

namespace {

constexpr int horizontalGap = 2;
constexpr int frameSide = 2;
constexpr int frameEnd = 1;
/// What stands around the text of a box or button: "[ " and " ]".
constexpr int boxSides = 4;
/// What stands around a frame's title inside its corners and sides: "- " and " -" less two cells.
constexpr int titleSides = 2;
constexpr int pictureWidth = 3;

int width(std::string_view text) {
    return static_cast<int>(cellsOf(text));
}

/// The lines of a text, which a carriage return, alone or with a line feed, sets apart.
std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char character : text) {
        if (character == '\r') {
            lines.emplace_back();
        } else if (character != '\n') {
            lines.back() += character;
        }
    }
    return lines;
}

std::vector<std::string> linesOf(const TextBox& box) {
    return box.multiLine() ? linesOf(box.text()) : std::vector{box.text()};
}

/// The same with lines that are too long broken between words.
std::vector<std::string> wrappedLinesOf(const std::string& text, int longest) {
    std::vector<std::string> lines;
    for (const std::string& line : linesOf(text)) {
        lines.emplace_back();
        std::istringstream words(line);
        for (std::string word; words >> word;) {
            const bool first = lines.back().empty();
            if (!first && width(lines.back()) + 1 + width(word) > longest) {
                lines.push_back(word);
            } else {
                lines.back() += first ? word : ' ' + word;
            }
        }
    }
    return lines;
}

int widestOf(const std::vector<std::string>& lines) {
    int widest = 0;
    for (const std::string& line : lines) {
        widest = std::max(widest, width(line));
    }
    return widest;
}

template <class Kind>
const Kind& as(const Control& control) {
    return static_cast<const Kind&>(control);
}

std::string chartText(const Chart& chart) {
    return "[chart: " + chart.title() + "]";
}

std::string progressText(const ProgressBar& bar) {
    return toText(Long(bar.value())) + " %";
}

/// The size of a control's content, for an item of at least that many characters.
LayoutSize contentSize(const Control& control, int characters) {
    switch (control.kind()) {
    case ControlKind::Label: {
        const auto& label = as<Label>(control);
        const auto lines = label.wrapped() ? wrappedLinesOf(label.caption(), characters)
                                           : linesOf(label.caption());
        return {std::max(characters, widestOf(lines)), static_cast<int>(lines.size())};
    }
    case ControlKind::TextBox: {
        const auto lines = linesOf(as<TextBox>(control));
        return {boxSides + std::max(characters, widestOf(lines)), static_cast<int>(lines.size())};
    }
    case ControlKind::CheckBox:
        return {boxSides + std::max(characters, width(as<CheckBox>(control).caption())), 1};
    case ControlKind::OptionButton:
        return {boxSides + std::max(characters, width(as<OptionButton>(control).caption())), 1};
    case ControlKind::ListView: {
        int sum = 0;
        for (const ListColumn& column : as<ListView>(control).columns()) {
            sum += width(column.header) + 1;
        }
        return {std::max(characters, sum), 1};
    }
    case ControlKind::CommandButton:
        return {boxSides + std::max(characters, width(as<CommandButton>(control).caption())), 1};
    case ControlKind::ComboBox:
        return {boxSides + std::max(characters, width(as<ComboBox>(control).text())), 1};
    case ControlKind::Chart:
        return {std::max(characters, width(chartText(as<Chart>(control)))), 1};
    case ControlKind::ProgressBar:
        return {std::max(characters, boxSides + width(progressText(as<ProgressBar>(control)))), 1};
    case ControlKind::Frame:
        return {titleSides + width(as<Frame>(control).caption()), 0};
    case ControlKind::Picture:
        return {std::max(characters, pictureWidth), 1};
    case ControlKind::Timer:
    case ControlKind::Menu:
        break;
    }
    return {};
}

LayoutSize cellSize(const Control& control, int characters, int lines) {
    const LayoutSize content = contentSize(control, characters);
    return {content.width, std::max(content.height, lines)};
}

LayoutMetrics cellMetrics() {
    LayoutMetrics metrics;
    metrics.measure = cellSize;
    metrics.horizontalGap = horizontalGap;
    metrics.frameLeft = metrics.frameRight = frameSide;
    metrics.frameTop = metrics.frameBottom = frameEnd;
    return metrics;
}

void drawLabel(CellCanvas& canvas, const Label& label, const LayoutRect& rect) {
    int top = rect.top;
    for (const std::string& line :
         label.wrapped() ? wrappedLinesOf(label.caption(), rect.width) : linesOf(label.caption())) {
        canvas.text(rect.left, top++, rect.width, line, label.alignment());
    }
}

/// Text between a sign on the left and one on the right.
void drawBox(CellCanvas& canvas, const LayoutRect& rect, char left, const std::string& text,
             char right, TextAlignment alignment) {
    canvas.text(rect.left, rect.top, 1, std::string(1, left));
    canvas.text(rect.left + 2, rect.top, rect.width - boxSides, text, alignment);
    canvas.text(rect.left + rect.width - 1, rect.top, 1, std::string(1, right));
}

void drawTextBox(CellCanvas& canvas, const TextBox& box, const LayoutRect& rect) {
    LayoutRect line = rect;
    line.height = 1;
    for (const std::string& text : linesOf(box)) {
        drawBox(canvas, line, box.readOnly() ? '(' : '[', text, box.readOnly() ? ')' : ']',
                box.alignment());
        ++line.top;
    }
}

/// The headers, and below them as many rows as there is room for; the selected one is marked.
void drawList(CellCanvas& canvas, const ListView& list, const LayoutRect& rect) {
    for (int line = 0; line < rect.height; ++line) {
        const int row = line - 1;
        std::string text;
        for (int column = 0; column < static_cast<int>(list.columns().size()); ++column) {
            text += (column == 0 ? "" : "|") +
                    (row < 0 ? list.columns()[static_cast<std::size_t>(column)].header
                             : list.cell(row, column));
        }
        if (row < list.rowCount()) {
            canvas.text(rect.left, rect.top + line, rect.width,
                        (row >= 0 && row == list.selectedRow() ? "> " : "  ") + text);
        }
    }
}

void drawButton(CellCanvas& canvas, const CommandButton& button, const LayoutRect& rect) {
    drawBox(canvas, rect, button.enabled() ? '<' : '-', button.caption(),
            button.enabled() ? '>' : '-', TextAlignment::Centre);
}

void drawCombo(CellCanvas& canvas, const ComboBox& combo, const LayoutRect& rect) {
    canvas.text(rect.left, rect.top, 1, "[");
    canvas.text(rect.left + 1, rect.top, rect.width - boxSides, combo.text());
    canvas.text(rect.left + rect.width - 2, rect.top, 2, "v]");
}

void draw(CellCanvas& canvas, const Control& control, const LayoutRect& rect) {
    switch (control.kind()) {
    case ControlKind::Label:
        return drawLabel(canvas, as<Label>(control), rect);
    case ControlKind::TextBox:
        return drawTextBox(canvas, as<TextBox>(control), rect);
    case ControlKind::CheckBox: {
        const auto& box = as<CheckBox>(control);
        return canvas.text(rect.left, rect.top, rect.width,
                           (box.ticked() ? "[x] " : "[ ] ") + box.caption());
    }
    case ControlKind::OptionButton: {
        const auto& option = as<OptionButton>(control);
        return canvas.text(rect.left, rect.top, rect.width,
                           (option.value() ? "(o) " : "( ) ") + option.caption());
    }
    case ControlKind::ListView:
        return drawList(canvas, as<ListView>(control), rect);
    case ControlKind::CommandButton:
        return drawButton(canvas, as<CommandButton>(control), rect);
    case ControlKind::ComboBox:
        return drawCombo(canvas, as<ComboBox>(control), rect);
    case ControlKind::Chart:
        return canvas.text(rect.left, rect.top, rect.width, chartText(as<Chart>(control)));
    case ControlKind::ProgressBar:
        return drawBox(canvas, rect, '[', progressText(as<ProgressBar>(control)), ']',
                       TextAlignment::Left);
    case ControlKind::Frame:
        return canvas.border(rect.left, rect.top, rect.width, rect.height,
                             as<Frame>(control).caption());
    case ControlKind::Picture:
        return canvas.text(rect.left, rect.top, rect.width, "(*)");
    case ControlKind::Timer:
    case ControlKind::Menu:
        break;
    }
}

} // namespace

std::string textPicture(const Form& form) {
    if (form.layout() == nullptr) {
        return {};
    }
    const LayoutMetrics metrics = cellMetrics();
    LayoutSize size = minimumSize(*form.layout(), metrics);
    size.width = std::max(size.width, titleSides + width(form.caption()));
    CellCanvas canvas(size.width + 2 * frameSide, size.height + 2 * frameEnd);
    canvas.border(0, 0, size.width + 2 * frameSide, size.height + 2 * frameEnd, form.caption());
    for (const PlacedControl& placed : solveLayout(*form.layout(), metrics, size)) {
        const LayoutRect& rect = placed.rect;
        draw(canvas, *placed.control,
             {rect.left + frameSide, rect.top + frameEnd, rect.width, rect.height});
    }
    return canvas.lines();
}

} // namespace tarvik
