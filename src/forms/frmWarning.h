#pragma once

#include "controls/Form.h"

namespace tarvik {

/// The warning that a limit has been reached.
class FrmWarning : public Form {
public:
    FrmWarning();

    Picture picWarning{*this, "picWarning"};
    Label lblDescription{*this, "lblDescription", {.caption = "", .wrapped = true}};
    CommandButton cmdDisconnect{*this,
                                "cmdDisconnect",
                                {.caption = "Disconnect",
                                 .toolTip = "Disconnect from all current connections",
                                 .mnemonic = 'D'}};
    CommandButton cmdReset{*this,
                           "cmdReset",
                           {.caption = "Reset",
                            .toolTip = "Reset the recorded transfer to 0 (data recorded so far "
                                       "will be lost!)",
                            .mnemonic = 'R'}};
    CommandButton cmdCancel{
        *this,
        "cmdCancel",
        {.caption = "Close",
         .toolTip = "Close this warning; it comes back after the options have been confirmed",
         .mnemonic = 'C'}};
};

} // namespace tarvik
