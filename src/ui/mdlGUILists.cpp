#include "ui/mdlGUILists.h"

#include "connection/mdlCode.h"
#include "forms/Forms.h"
#include "state/mdlTools.h"
#include "types/Text.h"

#include <algorithm>
#include <initializer_list>

namespace tarvik {

namespace {

/// Adds the entries to what the list holds and selects the first.
void addItems(ComboBox& combo, std::initializer_list<const char*> texts) {
    for (const char* text : texts) {
        combo.addItem(text);
    }
    combo.setListIndex(0);
}

} // namespace

bool PreInitGUI() {
    return guarded("PreInitGUI", false, [](bool& result) {
        PreInitOptions();
        PreInitHistory();
        std::vector<PhoneBookEntry> entries;
        result = RasGetAllEntries(entries, "");
        ComboBox& connections = forms().frmMain.cboConnections;
        connections.clear();
        for (const PhoneBookEntry& entry : entries) {
            connections.addItem(entry.name);
        }
    });
}

void RefreshEntries() {
    guarded("RefreshEntries", [] {
        std::vector<PhoneBookEntry> entries;
        RasGetAllEntries(entries, "");
        std::vector<std::string> names;
        names.reserve(entries.size());
        for (const PhoneBookEntry& entry : entries) {
            names.push_back(entry.name);
        }
        ComboBox& connections = forms().frmMain.cboConnections;
        if (connections.items() == names) {
            return;
        }
        const std::string chosen = connections.text();
        connections.clear();
        for (const std::string& name : names) {
            connections.addItem(name);
        }
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

} // namespace tarvik
