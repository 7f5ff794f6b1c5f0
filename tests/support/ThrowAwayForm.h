#pragma once

#include "controls/Form.h"

namespace tarvik {

/// One control of each kind.
class ThrowAwayForm : public Form {
public:
    ThrowAwayForm() : Form("frmThrowAway", "Throw-away") {
        setLayout(frame(frameAll, column({
                                      row({item(lblName), item(txtName).wide(12).share(1)}),
                                      row({item(picLamp), item(lblPlain), item(chkTick)}),
                                      item(cboList).wide(10),
                                      row({item(cmdOk), item(cmdCancel)}).sameSize(),
                                  })));
        setDefaultButton(cmdOk);
        setCancelButton(cmdCancel);
        setInitialFocus(cboList);
        picLamp.setDrawing({{{.type = DrawingShape::Type::Circle,
                              .points = {{0.5, 0.5}, {1.0, 0.5}},
                              .colour = {10, 200, 30}}}});
    }

    Frame frameAll{*this, "frameAll", {"All & sundry"}};
    TextBox txtName{*this, "txtName", {.text = "first", .toolTip = "tip"}};
    Label lblName{*this, "lblName", {.caption = "Name:", .mnemonic = 'N', .labelled = &txtName}};
    Label lblPlain{*this, "lblPlain", {.caption = "this & that"}};
    Picture picLamp{*this, "picLamp"};
    CheckBox chkTick{*this, "chkTick", {.caption = "Tick", .mnemonic = 'T'}};
    ComboBox cboList{*this, "cboList", {.accessibleName = "List"}};
    CommandButton cmdOk{*this, "cmdOk", {.caption = "OK"}};
    CommandButton cmdCancel{*this, "cmdCancel", {.caption = "Cancel", .mnemonic = 'C'}};
    Timer timTick{*this, "timTick"};
};

} // namespace tarvik
