#pragma once

#include "controls/Form.h"
#include "scripted/ScriptedPlatform.h"

#include <string>
#include <utility>
#include <vector>

namespace tarvik {

/// A form without a layout, for tests that add controls of their own to it.
class BareForm : public Form {
public:
    explicit BareForm(const char* name = "frmBare") : Form(name, "Bare") {}

    using Form::setCancelButton;
    using Form::setDefaultButton;
    using Form::setInitialFocus;
    using Form::setLayout;
};

/// Notes what it is told.
class RecordingView : public ControlView {
public:
    explicit RecordingView(Control& control) : control_(control) { control_.attach(this); }
    ~RecordingView() override { control_.attach(nullptr); }
    RecordingView(const RecordingView&) = delete;
    RecordingView& operator=(const RecordingView&) = delete;

    void refresh(Property changed) override { told.push_back(changed); }

    std::vector<Property> told;

private:
    Control& control_;
};

using Told = std::vector<Property>;

} // namespace tarvik
