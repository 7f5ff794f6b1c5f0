#include "ui/mdlGUILists.h"

#include "connection/mdlCode.h"
#include "forms/Forms.h"
#include "state/mdlTools.h"
#include "types/Text.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <utility>

namespace tarvik {

namespace {

/// Adds the entries to what the list holds and selects the first.
void addItems(ComboBox& combo, std::initializer_list<const char*> texts) {
    for (const char* text : texts) {
        combo.addItem(text);
    }
    combo.setListIndex(0);
}

std::vector<std::string> namesOf(const std::vector<PhoneBookEntry>& entries) {
    std::vector<std::string> names;
    names.reserve(entries.size());
    for (const PhoneBookEntry& entry : entries) {
        names.push_back(entry.name);
    }
    return names;
}

using Rows = std::vector<std::vector<std::string>>;

bool isShownIn(const ListView& list, const Rows& rows) {
    bool same = list.rowCount() == static_cast<int>(rows.size());
    for (std::size_t row = 0; same && row < rows.size(); ++row) {
        for (std::size_t column = 0; column < rows[row].size(); ++column) {
            same = same &&
                   list.cell(static_cast<int>(row), static_cast<int>(column)) == rows[row][column];
        }
    }
    return same;
}

std::vector<std::string> longestOf(const Rows& rows, std::size_t columns) {
    std::vector<std::string> longest(columns);
    for (const std::vector<std::string>& row : rows) {
        for (std::size_t column = 0; column < columns; ++column) {
            longest[column] = std::max(
                longest[column], row[column],
                [](const std::string& a, const std::string& b) { return a.size() < b.size(); });
        }
    }
    return longest;
}

} // namespace

bool PreInitGUI() {
    return guarded("PreInitGUI", false, [](bool& result) {
        PreInitOptions();
        PreInitHistory();
        std::vector<PhoneBookEntry> entries;
        result = RasGetAllEntries(entries, "");
        forms().frmMain.cboConnections.setItems(namesOf(entries));
    });
}

void RefreshEntries() {
    guarded("RefreshEntries", [] {
        std::vector<PhoneBookEntry> entries;
        RasGetAllEntries(entries, "");
        const std::vector<std::string> names = namesOf(entries);
        ComboBox& connections = forms().frmMain.cboConnections;
        if (connections.items() == names) {
            return;
        }
        const std::string chosen = connections.text();
        connections.setItems(names);
        const auto place = std::find(names.begin(), names.end(), chosen);
        if (place != names.end()) {
            connections.setListIndex(static_cast<int>(place - names.begin()));
        }
    });
}

void PreInitOptions() {
    guarded("PreInitOptions", [] {
        FrmOptions& options = forms().frmOptions;
        FillTransferUnitComboBox(options.cboUnitTransferCurrent);
        FillTransferUnitComboBox(options.cboUnitTransferTotal);
        addItems(options.cboTransferReset,
                 {"middle of day", "middle of week", "middle of month", "middle of 1/4 year",
                  "middle of 1/2 year", "middle of year", "end of day", "end of week",
                  "end of month", "end of 1/4 year", "end of 1/2 year", "end of year"});
    });
}

void PreInitHistory() {
    guarded("PreInitHistory", [] {
        FrmHistory& history = forms().frmHistory;
        addItems(history.cboChartType,
                 {"plot as line", "plot as bars", "plot as area", "plot as step"});
        addItems(history.cboDataType, {"total transfer", "differential transfer", "percentual"});
        FillTransferUnitComboBox(history.cboTransferUnit);
        addItems(history.cboDataToShow,
                 {"Rcvd and Sent", "Received only", "Sent only", "Total (rcvd+sent)", "Duration"});
    });
}

void FillTransferUnitComboBox(ComboBox& Combo) {
    guarded("FillTransferUnitComboBox", [&] {
        Combo.clear();
        addItems(Combo, {"Bytes", "Kilo-Bytes", "Mega-Bytes", "Giga-Bytes"});
    });
}

void FillDurationUnitComboBox(ComboBox& Combo) {
    guarded("FillDurationUnitComboBox", [&] {
        Combo.clear();
        addItems(Combo, {"Milli-Seconds", "Seconds", "Minutes", "Hours"});
    });
}

int ElementIsInComboBox(const ComboBox& Combo, const std::string& Element) {
    return guarded("ElementIsInComboBox", ComboBox::none, [&](int& result) {
        constexpr int longestSearched = 32'000;
        if (Combo.listCount() > longestSearched) {
            return;
        }
        for (int position = 0; position < Combo.listCount(); ++position) {
            const std::string& text = Combo.items()[static_cast<std::size_t>(position)];
            if (equalWithoutCase(trimSpaces(text), trimSpaces(Element))) {
                result = position;
            }
        }
    });
}

void SetComboBox(ComboBox& Combo, Long Index) {
    guarded("SetComboBox", [&] {
        if (Index.value() < Combo.listCount()) {
            Combo.setListIndex(Index.value());
        }
    });
}

void FillList(ListView& List, std::vector<std::vector<std::string>> Rows) {
    guarded("FillList", [&] {
        if (isShownIn(List, Rows) && List.columnFit() == ColumnFit::Contents) {
            return;
        }
        const auto count = static_cast<int>(Rows.size());
        std::vector<std::string> longest = longestOf(Rows, List.columns().size());
        List.setRows(
            count,
            [rows = std::move(Rows)](int row, int column) {
                return rows.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
            },
            std::move(longest));
        List.fitColumns(ColumnFit::Contents);
    });
}

} // namespace tarvik
