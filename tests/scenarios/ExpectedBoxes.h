#pragma once

#include "ports/Desktop.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvik::scenarios {

/// The boxes that a story announces, and what went wrong with those that came.
class ExpectedBoxes {
public:
    void announce(std::string text, MsgBoxButtons buttons, MsgBoxAnswer answer) {
        expected_.push_back({std::move(text), buttons, answer});
    }

    /// What the user answers to a box that has come, of which a face that can tell them names the
    /// buttons; nothing, which is trouble, when another one is expected or none.
    std::optional<MsgBoxAnswer> answerTo(const std::string& text,
                                         std::optional<MsgBoxButtons> buttons = {}) {
        const bool due = !expected_.empty() && expected_.front().text == text &&
                         expected_.front().buttons == buttons.value_or(expected_.front().buttons);
        if (!due) {
            note("Unexpected box: " + text);
            return {};
        }
        const MsgBoxAnswer answer = expected_.front().answer;
        expected_.erase(expected_.begin());
        return answer;
    }

    void note(const std::string& trouble) { trouble_ += trouble + "\n"; }
    void noteMissingButton(const std::string& text) { note("The box has no such button: " + text); }

    /// Everything that went wrong since the last call; empty when nothing did.
    std::string trouble() {
        for (const Expected& box : expected_) {
            note("This box did not come: " + box.text);
        }
        expected_.clear();
        return std::exchange(trouble_, {});
    }

private:
    struct Expected {
        std::string text;
        MsgBoxButtons buttons;
        MsgBoxAnswer answer;
    };

    std::vector<Expected> expected_;
    std::string trouble_;
};

} // namespace tarvik::scenarios
