#pragma once

#include "scenarios/Driver.h"
#include "wiring/World.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>

namespace tarvik::monkey {

/// A user who does anything that the windows let him do, in front of one face, while the line, the
/// clock and the files do what they like. The same seed does the same again.
class Monkey {
public:
    explicit Monkey(std::uint32_t seed);
    ~Monkey();
    Monkey(const Monkey&) = delete;
    Monkey& operator=(const Monkey&) = delete;

    /// One action, and what must hold after it. What does not is told; empty when all is well.
    std::string step();

    /// What was done last, oldest first.
    std::string lastActions() const;
    /// How often the program was started, and how often it showed which box.
    int starts() const { return starts_; }
    const std::map<std::string, int>& boxes() const { return boxes_; }

private:
    using Action = void (Monkey::*)();
    struct Choice {
        int weight;
        Action action;
    };

    // What the user does.
    void workControl();
    void clickSomewhere();
    void pressKey();
    void closeWindow();
    void resizeWindow();
    void workIcon();
    void endSession();
    // What happens around him.
    void tick();
    void passTime();
    void useLine();
    void changeLine();
    void failLine();
    void changeFiles();
    void changeDesktop();

    void start();
    void restartIfEnded();
    /// Only the user's actions and the disturbances tick: a tick of the real clock would come at
    /// another step each time.
    void stopTheClock();
    void work(const std::string& path, Control& control);
    void typeInto(const std::string& path);
    void choose(const std::string& path, const ComboBox& combo);
    int answer(const std::string& text, int buttons);
    std::string whatIsWrong();
    std::string dialogElsewhere();
    std::string faceUnlikeModel(const Form& form);

    std::vector<Form*> windows();
    Form* anyWindow();
    int upTo(int most) { return static_cast<int>(chance_() % static_cast<unsigned>(most + 1)); }
    std::uint32_t anyNumber() { return static_cast<std::uint32_t>(chance_()); }
    bool oneIn(int times) { return upTo(times - 1) == 0; }
    void note(std::string action);

    ScriptedPlatform& machine() { return driver_->machine(); }

    std::mt19937 chance_;
    std::unique_ptr<scenarios::Driver> driver_;
    std::optional<World> world_;
    std::deque<std::string> actions_;
    std::map<std::string, int> boxes_;
    std::string trouble_;
    int starts_ = 0;
};

} // namespace tarvik::monkey
