#pragma once

#include "common/FaceContext.h"
#include "common/HiddenCharacters.h"
#include "controls/Form.h"
#include "windows/face/AccessibleNames.h"

#include <functional>
#include <string>

namespace tarvik::face {

/// What all windows of the face share.
struct WindowContext : FaceContext {
    /// `ownCodePage` is the one in which the program's texts are bytes.
    explicit WindowContext(const CodePage& ownCodePage) : codePage(ownCodePage) {}

    /// A text for the eye: what cannot be seen, or turns the direction of writing, is told by its
    /// number, as names from outside stand in many texts. The text itself remains in the model, and
    /// nothing takes it back from what is shown.
    std::string shown(const std::string& text) const { return withHiddenTold(text, codePage); }

    CodePage codePage;
    /// How many messages are being handled, one within the other. A window that was withdrawn may
    /// be the one whose handler is running: it goes when this is 0.
    int depth = 0;
    /// A call runs on another thread: only painting goes on.
    bool blocking = false;
    /// The program must end now, for that reason.
    std::function<void(UnloadMode)> end;
    AccessibleNames accessibleNames;
};

/// Counts as handling a message for its own lifetime.
class HandlingScope {
public:
    explicit HandlingScope(WindowContext& context) : context_(context) { ++context_.depth; }
    ~HandlingScope() { --context_.depth; }
    HandlingScope(const HandlingScope&) = delete;
    HandlingScope& operator=(const HandlingScope&) = delete;

private:
    WindowContext& context_;
};

} // namespace tarvik::face
