#pragma once

#include "contracts/FaceUnderTest.h"
#include "support/FormOn.h"
#include "support/ThrowAwayForm.h"

#include <gtest/gtest.h>

namespace tarvik {

/// A face with the window of a form that has one control of each kind.
class FaceContract : public testing::Test {
protected:
    FaceContract() { form.load(); }
    ~FaceContract() override {
        // What the handlers of the test wrote to is gone.
        form.QueryUnload.connect({});
        form.Unload.connect({});
        form.unload();
        face->settle();
    }

    void show() {
        form.setVisible(true);
        face->settle();
    }
    MsgBoxAnswer ask(MsgBoxButtons buttons) {
        return face->desktop().messageBox({.text = "?", .buttons = buttons, .caption = "T"});
    }

    std::unique_ptr<FaceUnderTest> face = faceUnderTest();
    FormOn<ThrowAwayForm> form{face->desktop()};
};

} // namespace tarvik
