#pragma once

#include "linux/network/BusReplies.h"

#include <chrono>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace tarvik {

/// Does what fails only where the connection to the bus does, and says so: the library has many
/// names for that.
template <class Use>
auto throughBus(const Use& use) {
    try {
        return use();
    } catch (const sdbus::Error& error) {
        throw sdbus::Error(dbus::disconnected, error.getMessage());
    }
}

/// Calls to NetworkManager, or to the bus itself, that have a time limit together.
///
/// The library's own calls that wait do not look at the clock while anything at all comes in, and
/// whoever is on the bus may send to this program: here the signals that come meanwhile are
/// handled, one at a time, and the limit holds.
class BusCalls : public BusReplies {
public:
    using Clock = std::chrono::steady_clock;
    /// How long an operation may hold up the program.
    static constexpr std::chrono::seconds longest{2};

    BusCalls(sdbus::IConnection& bus, Clock::time_point end) : bus_(bus), end_(end) {}

    /// What NetworkManager's object on that path answers.
    template <class Answer, class... Arguments>
    Answer ask(const std::string& path, const std::string& interface, const std::string& method,
               const Arguments&... arguments) {
        return std::get<0>(call<Answer>(nm::service, path, interface, method, arguments...));
    }
    /// The same for what has no answer.
    template <class... Arguments>
    void order(const std::string& path, const std::string& interface, const std::string& method,
               const Arguments&... arguments) {
        call<>(nm::service, path, interface, method, arguments...);
    }

    /// Who owns that name on the bus; empty for nobody.
    std::string ownerOf(const std::string& name);

    Properties propertiesOf(const std::string& path, const std::string& interface) override;
    std::vector<sdbus::ObjectPath> profilePaths() override;
    ProfileSettings settingsOf(const std::string& profile) override;

private:
    template <class... Answers, class... Arguments>
    std::tuple<Answers...> call(const std::string& service, const std::string& path,
                                const std::string& interface, const std::string& method,
                                const Arguments&... arguments) {
        std::optional<std::tuple<Answers...>> answers;
        std::optional<sdbus::Error> failure;
        requireTime();
        // Goes before what it writes to: an answer that comes too late is not taken.
        const auto proxy = sdbus::createProxy(bus_, service, path);
        auto question = proxy->callMethodAsync(method);
        question.onInterface(interface).withArguments(arguments...);
        throughBus([&] {
            question.uponReplyInvoke([&](const sdbus::Error* error, const Answers&... given) {
                if (error != nullptr) {
                    failure = *error;
                } else {
                    answers = std::tuple(given...);
                }
            });
        });
        while (!answers && !failure) {
            requireTime();
            handleNext();
        }
        if (failure) {
            throw sdbus::Error(*failure);
        }
        return *std::move(answers);
    }

    void requireTime() const;
    void handleNext();

    sdbus::IConnection& bus_;
    Clock::time_point end_;
};

} // namespace tarvik
