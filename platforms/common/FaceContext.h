#pragma once

namespace tarvik {
class ControlList;
}

namespace tarvik::face {

/// What all windows of the face share.
struct FaceContext {
    /// How many message boxes and blocking calls are under way. While there is one, neither what
    /// the user does elsewhere nor timers reach the models.
    int busy = 0;
    /// How many dialogs of the desktop are open. While there is one, what the user does elsewhere
    /// does not reach the models; timers go on.
    int dialogs = 0;
    /// The user's session is ending: nobody is asked any more.
    bool ending = false;
    /// The form whose user is being answered: before its window stand the boxes that come of it.
    /// Null for what no user has begun.
    const ControlList* asking = nullptr;
    /// The form whose window was the active one last. Right after a box no window is active, and
    /// the next box may come before the desktop has made one so.
    const ControlList* active = nullptr;

    bool takesInput() const { return busy == 0 && dialogs == 0; }
    bool timersRun() const { return busy == 0; }
};

/// Counts as busy for its own lifetime.
class BusyScope {
public:
    explicit BusyScope(FaceContext& context) : context_(context) { ++context_.busy; }
    ~BusyScope() { --context_.busy; }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

private:
    FaceContext& context_;
};

/// Answers the user of a form, or does what nobody has asked for, for its own lifetime.
class AskingScope {
public:
    AskingScope(FaceContext& context, const ControlList* form)
        : context_(context), before_(context.asking) {
        context_.asking = form;
    }
    ~AskingScope() { context_.asking = before_; }
    AskingScope(const AskingScope&) = delete;
    AskingScope& operator=(const AskingScope&) = delete;

private:
    FaceContext& context_;
    const ControlList* before_;
};

/// Counts as an open dialog for its own lifetime.
class DialogScope {
public:
    explicit DialogScope(FaceContext& context) : context_(context) { ++context_.dialogs; }
    ~DialogScope() { --context_.dialogs; }
    DialogScope(const DialogScope&) = delete;
    DialogScope& operator=(const DialogScope&) = delete;

private:
    FaceContext& context_;
};

} // namespace tarvik::face
