#pragma once

namespace tarvik {

/// Opens the window of the plans, as they are; one that is open comes to the front.
void ShowPlanWindow();

void cmdPlan_Click();
void frmPlan_cmdNew_Click();
void frmPlan_cmdCopy_Click();
void frmPlan_cmdDelete_Click();
void lstPlans_Click();
void cboPage_Click();
void cmdAddThreshold_Click();
void cmdRemoveThreshold_Click();
void lstThresholds_Click();
void optAllLines_Click();
void optTheseLines_Click();
void lstLines_Click();
void lstLines_DblClick();
void cmdProvider_Click();
void frmPlan_cmdExtend_Click();
void cmdTakeBack_Click();
void cmdLedger_Click();

/// Applies all plans, if each field can be what it says: they hold from here on, and stand in the
/// file of settings. The first one asks whether a ledger is to be begun.
void frmPlan_cmdOK_Click();
/// Leaves the plans as they were.
void frmPlan_cmdCancel_Click();

void connectPlanEvents();

} // namespace tarvik
