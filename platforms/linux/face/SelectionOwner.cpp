#include "linux/face/SelectionOwner.h"

#include "linux/services/Xcb.h"

#include <QString>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <poll.h>
#include <string_view>

namespace tarvik::face {

namespace {

using Clock = std::chrono::steady_clock;

/// What is asked for: first what there is, as the toolkit asks where it looks itself, then the
/// text, in its best form first.
constexpr std::array<const char*, 4> targets{"TARGETS", "UTF8_STRING", "text/plain;charset=utf-8",
                                             "STRING"};

/// The numbers of names, all for one answer of the display.
template <std::size_t Count>
std::array<xcb_atom_t, Count> atomsOf(xcb_connection_t* display,
                                      const std::array<const char*, Count>& names) {
    std::array<xcb_intern_atom_cookie_t, Count> asked{};
    std::array<xcb_atom_t, Count> atoms{};
    for (std::size_t i = 0; i < Count; ++i) {
        const std::string_view name = names[i];
        asked[i] =
            xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.data());
    }
    for (std::size_t i = 0; i < Count; ++i) {
        const xcb::Owned<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(display, asked[i], nullptr));
        atoms[i] = reply == nullptr ? xcb_atom_t{XCB_ATOM_NONE} : reply->atom;
    }
    return atoms;
}

/// Somebody holds it. `tookTime` gets how long the display took for the answer.
bool isHeld(xcb_connection_t* display, xcb_atom_t selection, std::chrono::microseconds& tookTime) {
    const Clock::time_point begin = Clock::now();
    const xcb::Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        display, xcb_get_selection_owner(display, selection), nullptr));
    tookTime = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - begin);
    return reply != nullptr && reply->owner != XCB_WINDOW_NONE;
}

/// The questions to the holder of a selection, all at once: the way to it may be long.
class Questions {
public:
    Questions(xcb_connection_t* display, xcb_atom_t selection)
        : display_(display), selection_(selection) {
        const auto names = atomsOf<2>(display, {"TARVIK_SELECTION", "INCR"});
        place_ = names[0];
        inPieces_ = names[1];
    }

    void ask() {
        const auto atoms = atomsOf(display_, targets);
        for (std::size_t i = 0; i < targets.size(); ++i) {
            questions_[i].window = newWindow();
            xcb_convert_selection(display_, questions_[i].window, selection_, atoms[i], place_,
                                  XCB_CURRENT_TIME);
        }
        xcb_flush(display_);
    }

    /// Nothing when it has not come by then. All answers are waited for: whoever answers somebody
    /// who has gone may not survive it.
    std::optional<std::string> textUntil(Clock::time_point end) {
        while (!allAreAnswered() && Clock::now() < end && xcb_connection_has_error(display_) == 0) {
            wait(end);
            takeAnswers();
        }
        return questions_.front().isAnswered ? text() : std::nullopt;
    }

private:
    /// Each has a window of its own, by which its answer is known.
    struct Question {
        xcb_window_t window = XCB_WINDOW_NONE;
        bool isAnswered = false;
        bool isRefused = false;
    };

    xcb_window_t newWindow() {
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(display_)).data;
        const xcb_window_t window = xcb_generate_id(display_);
        xcb_create_window(display_, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, screen->root_visual, 0, nullptr);
        return window;
    }

    void takeAnswers() {
        while (const xcb::Owned<xcb_generic_event_t> event{xcb_poll_for_event(display_)}) {
            constexpr unsigned sentByAProgram = 0x80;
            if ((event->response_type & ~sentByAProgram) != XCB_SELECTION_NOTIFY) {
                continue;
            }
            const auto& notice =
                reinterpret_cast<const xcb_selection_notify_event_t&>(*event.get());
            for (Question& question : questions_) {
                if (question.window == notice.requestor) {
                    question.isAnswered = true;
                    question.isRefused = notice.property == XCB_ATOM_NONE;
                }
            }
        }
    }

    bool allAreAnswered() const {
        return std::all_of(questions_.begin(), questions_.end(),
                           [](const Question& question) { return question.isAnswered; });
    }

    void wait(Clock::time_point end) const {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd waiting{.fd = xcb_get_file_descriptor(display_), .events = POLLIN, .revents = 0};
        poll(&waiting, 1, std::max(0, static_cast<int>(left)));
    }

    /// The first that there is; nothing where a better one may still come.
    std::optional<std::string> text() const {
        for (auto question = questions_.begin() + 1; question != questions_.end(); ++question) {
            if (!question->isAnswered) {
                return std::nullopt;
            }
            if (!question->isRefused) {
                return given(question->window);
            }
        }
        return "";
    }

    std::optional<std::string> given(xcb_window_t window) const {
        constexpr std::uint32_t mostWords = 1U << 20U;
        const xcb::Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            display_, xcb_get_property(display_, 1, window, place_, XCB_ATOM_ANY, 0, mostWords),
            nullptr));
        if (reply == nullptr || reply->type == inPieces_) {
            return std::nullopt;
        }
        const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
        const int size = xcb_get_property_value_length(reply.get());
        return reply->type == XCB_ATOM_STRING ? QString::fromLatin1(bytes, size).toStdString()
                                              : std::string(bytes, static_cast<std::size_t>(size));
    }

    xcb_connection_t* display_;
    xcb_atom_t selection_;
    xcb_atom_t place_ = XCB_ATOM_NONE;
    xcb_atom_t inPieces_ = XCB_ATOM_NONE;
    std::array<Question, targets.size()> questions_;
};

} // namespace

std::chrono::milliseconds longestSilence(std::chrono::microseconds roundTrip) {
    using std::chrono::milliseconds;
    // One way and back for the questions, one for the answers; a holder far away asks some itself.
    constexpr int roundTrips = 4;
    const auto ways = std::chrono::duration_cast<milliseconds>(roundTrips * roundTrip);
    return std::min(milliseconds(100) + ways, milliseconds(1000));
}

std::optional<std::string> textOfSelection(const char* selection) {
    // A connection of its own: the toolkit's would take the answer away.
    const xcb::Display display(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(display.get()) != 0) {
        return "";
    }
    const xcb_atom_t atom = xcb::atomOf(display.get(), selection);
    std::chrono::microseconds roundTrip{};
    if (!isHeld(display.get(), atom, roundTrip)) {
        return "";
    }
    Questions holder(display.get(), atom);
    holder.ask();
    return holder.textUntil(Clock::now() + longestSilence(roundTrip));
}

} // namespace tarvik::face
