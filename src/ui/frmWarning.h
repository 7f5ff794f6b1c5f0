#pragma once

#include "ui/controls/Form.h"

namespace tarvik {

/// The warning that a limit has been reached.
class FrmWarning : public Form {
public:
    FrmWarning() : Form("frmWarning", "Velmars Tarvik - Warning") {}
};

} // namespace tarvik
