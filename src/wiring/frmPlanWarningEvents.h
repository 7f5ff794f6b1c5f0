#pragma once

namespace tarvik {

void cmdExtendToday_Click();
void cmdExtendPeriod_Click();
void frmPlanWarning_cmdPlan_Click();
void frmPlanWarning_cmdCancel_Click();

void connectPlanWarningEvents();

} // namespace tarvik
