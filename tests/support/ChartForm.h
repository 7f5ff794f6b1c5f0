#pragma once

#include "controls/Chart.h"
#include "controls/Form.h"

namespace tarvik {

/// A chart, a progress bar, and buttons for Enter and Escape.
class ChartForm : public Form {
public:
    ChartForm() : Form("frmChart", "Chart") {
        setLayout(column({
                             item(chtValues).wide(40).tall(12).share(1),
                             item(prgDone).wide(20),
                             row({item(cmdOk), item(cmdCancel)}).sameSize(),
                         })
                      .share(1));
        setDefaultButton(cmdOk);
        setCancelButton(cmdCancel);
        setInitialFocus(chtValues);
    }

    Chart chtValues{*this, "chtValues", {.title = "Traffic"}};
    ProgressBar prgDone{*this, "prgDone", {.accessibleName = "Done"}};
    CommandButton cmdOk{*this, "cmdOk", {.caption = "OK"}};
    CommandButton cmdCancel{*this, "cmdCancel", {.caption = "Cancel"}};

    /// So many rows: 100, 101 and so on to 199, then 100 again.
    void fill(int rows) {
        chtValues.setRowCount(rows);
        for (int row = 0; row < rows; ++row) {
            chtValues.setData(0, row, 100 + row % 100);
        }
        chtValues.showData();
    }
};

} // namespace tarvik
