#pragma once

#include "controls/Form.h"
#include "controls/ListView.h"

namespace tarvik {

/// Choices, a list, a long text, and a frame that can be hidden with what it holds.
class ListForm : public Form {
public:
    ListForm() : Form("frmList", "List") {
        setLayout(column({
            row({item(optFirst), item(optSecond)}),
            frame(frameList, item(lvwRows).wide(30).tall(5).share(1)).share(1),
            frame(frameText, item(txtLines).wide(30).tall(3)),
            item(txtOther),
        }));
    }

    OptionButton optFirst{*this, "optFirst", {.caption = "First", .mnemonic = 'F', .value = true}};
    OptionButton optSecond{*this, "optSecond", {.caption = "Second", .mnemonic = 'S'}};
    Frame frameList{*this, "frameList", {"Rows"}};
    ListView lvwRows{
        *this,
        "lvwRows",
        {.columns = {{"ID", TextAlignment::Right}, {"Name"}}, .accessibleName = "Rows"}};
    Frame frameText{*this, "frameText", {"Text"}};
    TextBox txtLines{
        *this, "txtLines", {.accessibleName = "Lines", .readOnly = true, .multiLine = true}};
    TextBox txtOther{*this, "txtOther", {.accessibleName = "Other"}};

    /// So many rows: "1" and "row 1", and so on.
    void fill(int count, std::vector<std::string> longestTexts = {}) {
        const auto cell = [this](int row, int column) {
            ++cellsAsked;
            const std::string number = std::to_string(row + 1);
            return column == 0 ? number : "row " + number;
        };
        lvwRows.setRows(count, cell, std::move(longestTexts));
    }

    int cellsAsked = 0;
};

} // namespace tarvik
