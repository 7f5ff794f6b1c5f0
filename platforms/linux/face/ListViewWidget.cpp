#include "controls/ListView.h"
#include "linux/face/ControlWidget.h"
#include "linux/face/FaceText.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTableView>

#include <algorithm>
#include <functional>

namespace tarvik::face {

namespace {

/// The rows of a list as the toolkit asks for them: only those that are seen.
class Rows : public QAbstractTableModel {
public:
    Rows(const ListView& list, QObject* parent) : QAbstractTableModel(parent), list_(list) {}

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : rows_;
    }

    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(list_.columns().size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DisplayRole) {
            return shown(list_.cell(index.row(), index.column()));
        }
        return role == Qt::TextAlignmentRole ? alignmentOf(index.column()) : QVariant();
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal) {
            return {};
        }
        if (role == Qt::DisplayRole) {
            return shown(list_.columns()[static_cast<std::size_t>(section)].header);
        }
        return role == Qt::TextAlignmentRole ? alignmentOf(section) : QVariant();
    }

    void takeRows() {
        beginResetModel();
        rows_ = list_.rowCount();
        endResetModel();
    }

private:
    QVariant alignmentOf(int column) const {
        const bool right =
            list_.columns()[static_cast<std::size_t>(column)].alignment == TextAlignment::Right;
        return QVariant::fromValue((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }

    const ListView& list_;
    int rows_ = 0;
};

/// A table of which a row is opened by a double click or by Enter, also on desktops where a single
/// click opens things: here it only selects.
class Table : public QTableView {
public:
    using QTableView::QTableView;

    /// What opens the selected row; set before the table is used.
    std::function<void()> open;

    /// Typed letters look for no row: that would ask for the texts of all of them.
    void keyboardSearch(const QString&) override {}

protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (enter && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
            open();
        } else {
            QTableView::keyPressEvent(event);
        }
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton) {
            QTableView::mouseDoubleClickEvent(event);
        }
    }
};

class ListViewWidget : public ControlWidget {
public:
    ListViewWidget(ListView& list, Table* widget, FaceContext& context)
        : ControlWidget(list, widget, context), list_(list), widget_(widget),
          rows_(new Rows(list, widget)) {
        widget->setModel(rows_);
        widget->setSelectionBehavior(QAbstractItemView::SelectRows);
        widget->setSelectionMode(QAbstractItemView::SingleSelection);
        widget->setEditTriggers(QAbstractItemView::NoEditTriggers);
        widget->setTabKeyNavigation(false);
        widget->setShowGrid(false);
        widget->setWordWrap(false);
        QHeaderView* numbers = widget->verticalHeader();
        numbers->hide();
        numbers->setSectionResizeMode(QHeaderView::Fixed);
        numbers->setDefaultSectionSize(widget->fontMetrics().height() + 4);
        widget->horizontalHeader()->setHighlightSections(false);
        widget->horizontalHeader()->setStretchLastSection(true);
        for (const Property own :
             {Property::Items, Property::ListIndex, Property::Headers, Property::ColumnWidths}) {
            refresh(own);
        }
        // The row that the keyboard is at need not be selected.
        QObject::connect(
            widget->selectionModel(), &QItemSelectionModel::selectionChanged, widget, [this] {
                fromUser(Property::ListIndex, [this] { list_.setSelectedRow(selectedRow()); });
            });
        widget->open = [this] {
            fromUser(Property::ListIndex, [this] { list_.DblClick.raise(); });
        };
        QObject::connect(widget, &QTableView::doubleClicked, widget, [widget] { widget->open(); });
    }

    int widthFor(int characters) const override {
        constexpr int scrollBar = 3;
        return ControlWidget::widthFor(characters + scrollBar);
    }

protected:
    void refreshOwn(Property changed) override {
        switch (changed) {
        case Property::Items:
            rows_->takeRows();
            showSelection(); // new rows have none of their own
            break;
        case Property::ListIndex:
            showSelection();
            break;
        case Property::Headers:
            widget_->horizontalHeader()->setSectionsClickable(list_.headersClickable());
            break;
        case Property::ColumnWidths:
            fitColumns();
            break;
        default:
            break;
        }
    }

private:
    int selectedRow() const {
        const QModelIndexList rows = widget_->selectionModel()->selectedRows();
        return rows.isEmpty() ? ListView::none : rows.front().row();
    }

    void showSelection() {
        if (selectedRow() == list_.selectedRow()) {
            return;
        }
        if (list_.selectedRow() == ListView::none) {
            widget_->selectionModel()->clear();
        } else {
            widget_->selectRow(list_.selectedRow());
        }
    }

    void fitColumns() {
        constexpr int aroundText = 16;
        const bool toContents = list_.columnFit() == ColumnFit::Contents;
        const auto& longest = list_.longestTexts();
        for (int column = 0; column < rows_->columnCount(); ++column) {
            const auto place = static_cast<std::size_t>(column);
            const QString text =
                toContents && place < longest.size() ? shown(longest[place]) : QString();
            const int header = widget_->horizontalHeader()->sectionSizeHint(column);
            const int width = widget_->fontMetrics().horizontalAdvance(text) + aroundText;
            widget_->setColumnWidth(column, std::max(header, width));
        }
    }

    ListView& list_;
    Table* widget_;
    Rows* rows_;
};

} // namespace

std::unique_ptr<ControlWidget> makeListView(Control& control, QWidget& parent,
                                            FaceContext& context) {
    return std::make_unique<ListViewWidget>(static_cast<ListView&>(control), new Table(&parent),
                                            context);
}

} // namespace tarvik::face
