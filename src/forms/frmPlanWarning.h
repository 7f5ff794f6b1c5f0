#pragma once

#include "controls/Form.h"
#include "types/PlanKey.h"

#include <string>
#include <vector>

namespace tarvik {

/// The warning that so much of a plan is used. It does not take the focus.
class FrmPlanWarning : public Form {
public:
    FrmPlanWarning();

    /// What there is to tell of a plan, the first of them in the window.
    struct Warning {
        PlanKey plan;
        std::string text;
    };
    std::vector<Warning> warnings;

    Picture picWarning{*this, "picWarning"};
    Label lblDescription{*this, "lblDescription", {.caption = "", .wrapped = true}};
    CommandButton cmdExtendToday{*this,
                                 "cmdExtendToday",
                                 {.caption = "Extend today",
                                  .toolTip = "So much more may be used today",
                                  .mnemonic = 't',
                                  .otherCaptions = {"Extend by 500 MB today"}}};
    CommandButton cmdExtendPeriod{*this,
                                  "cmdExtendPeriod",
                                  {.caption = "Extend period",
                                   .toolTip = "So much more may be used to the end of the period",
                                   .mnemonic = 'p',
                                   .otherCaptions = {"Extend by 500 MB to the period's end"}}};
    CommandButton cmdPlan{
        *this, "cmdPlan", {.caption = "Plan...", .toolTip = "Open the plans", .mnemonic = 'l'}};
    CommandButton cmdCancel{
        *this, "cmdCancel", {.caption = "Close", .toolTip = "Close this warning", .mnemonic = 'C'}};
};

} // namespace tarvik
