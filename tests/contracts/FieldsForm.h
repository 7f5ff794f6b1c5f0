#pragma once

#include "controls/Form.h"

namespace tarvik {

/// Two fields between two buttons, of which the first has the focus first, and a label.
class FieldsForm : public Form {
public:
    FieldsForm() : Form("frmFields", "Fields") {
        setLayout(column({item(cmdFirst), item(txtOne).wide(10), item(txtTwo).wide(10),
                          item(cmdLast), item(lblWhy)}));
        setInitialFocus(cmdFirst);
    }

    CommandButton cmdFirst{*this, "cmdFirst", {.caption = "First"}};
    TextBox txtOne{*this, "txtOne", {.text = "one"}};
    TextBox txtTwo{*this, "txtTwo", {.text = "two"}};
    CommandButton cmdLast{*this, "cmdLast", {.caption = "Last"}};
    Label lblWhy{*this, "lblWhy", {.caption = "fine"}};
};

/// A field in a window of its own; a quiet one does not take the focus by itself.
class AsideForm : public Form {
public:
    explicit AsideForm(bool quiet = false) : Form("frmAside", "Aside") {
        setLayout(column({item(txtAside).wide(10)}));
        if (quiet) {
            setQuiet();
        }
    }

    TextBox txtAside{*this, "txtAside", {}};
};

} // namespace tarvik
