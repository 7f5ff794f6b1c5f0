#include "history/mdlHistoryWork.h"

#include "forms/Forms.h"
#include "ports/Desktop.h"
#include "ports/Platform.h"

namespace tarvik {

namespace {

/// Shorter work is over before anybody could read how far it is.
constexpr std::int32_t fewestShown = 5 * HistoryWork::stride;

bool takesOrders(const Control& control) {
    const bool ofWork =
        &control == &forms().frmHistory.cmdStop || &control == &forms().frmHistory.cmdCancel;
    return !ofWork && control.kind() != ControlKind::Frame &&
           control.kind() != ControlKind::Label && control.kind() != ControlKind::ProgressBar;
}

} // namespace

HistoryWork::HistoryWork(Long total) : total_(total) {
    forms().frmHistory.data.working = true;
    forms().frmHistory.data.stopped = false;
    if (total_ < fewestShown) {
        return;
    }
    showProgress(true);
    for (Control* control : forms().frmHistory.controls()) {
        if (control->enabled() && takesOrders(*control)) {
            control->setEnabled(false);
            disabled_.push_back(control);
        }
    }
}

HistoryWork::~HistoryWork() {
    for (Control* control : disabled_) {
        control->setEnabled(true);
    }
    showProgress(false);
    forms().frmHistory.data.working = false;
}

void HistoryWork::showProgress(bool shown) {
    forms().frmHistory.prgWork.setValue(0);
    forms().frmHistory.prgWork.setVisible(shown);
    forms().frmHistory.cmdStop.setVisible(shown);
}

bool HistoryWork::goOn(Long done) {
    if (total_ >= fewestShown) {
        const std::int64_t percent = std::int64_t{ProgressBar::complete} * done.value();
        forms().frmHistory.prgWork.setValue(static_cast<int>(percent / total_.value()));
        platform().desktop.processEvents();
    }
    return !wasStopped();
}

void HistoryWork::stop() {
    forms().frmHistory.data.stopped = forms().frmHistory.data.working;
}

bool HistoryWork::wasStopped() {
    return forms().frmHistory.data.stopped;
}

} // namespace tarvik
