#pragma once

#include "ui/controls/Form.h"

namespace tarvik {

/// The history window: what the saved records hold, and how it is to be shown.
class FrmHistory : public Form {
public:
    FrmHistory() : Form("frmHistory", "Velmars Tarvik - History") {}

    ComboBox cboChartType{
        *this,
        "cboChartType",
        {.toolTip = "Select the type (layout) of the chart", .accessibleName = "Chart type"}};
    ComboBox cboDataType{*this,
                         "cboDataType",
                         {.toolTip = "Select the data type (representation) within the chart",
                          .accessibleName = "Data type"}};
    ComboBox cboTransferUnit{
        *this,
        "cboTransferUnit",
        {.toolTip = "Select the transfer unit within the chart", .accessibleName = "Unit"}};
    ComboBox cboDataToShow{*this,
                           "cboDataToShow",
                           {.toolTip = "Select the type of data to show within the chart",
                            .accessibleName = "Data to show"}};
};

} // namespace tarvik
