#include "history/mdlHistoryWork.h"

#include "forms/Forms.h"
#include "ports/Desktop.h"
#include "ports/Platform.h"

namespace tarvik {

namespace {

/// Shorter work is over before anybody could read how far it is.
constexpr std::int32_t fewestShown = 5 * HistoryWork::stride;

FrmHistory& window() {
    return forms().frmHistory;
}

bool takesOrders(const Control& control) {
    const bool ofWork = &control == &window().cmdStop || &control == &window().cmdCancel;
    return !ofWork && control.kind() != ControlKind::Frame &&
           control.kind() != ControlKind::Label && control.kind() != ControlKind::ProgressBar;
}

} // namespace

HistoryWork::HistoryWork(Long total) : total_(total) {
    window().data.working = true;
    window().data.stopped = false;
    if (total_ < fewestShown) {
        return;
    }
    showProgress(true);
    for (Control* control : window().controls()) {
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
    window().data.working = false;
}

void HistoryWork::showProgress(bool shown) {
    window().prgWork.setValue(0);
    window().prgWork.setVisible(shown);
    window().cmdStop.setVisible(shown);
}

bool HistoryWork::goOn(Long done) {
    if (total_ >= fewestShown) {
        const std::int64_t percent = std::int64_t{ProgressBar::complete} * done.value();
        window().prgWork.setValue(static_cast<int>(percent / total_.value()));
        platform().desktop.processEvents();
    }
    return !wasStopped();
}

void HistoryWork::stop() {
    window().data.stopped = window().data.working;
}

bool HistoryWork::wasStopped() {
    return window().data.stopped;
}

} // namespace tarvik
