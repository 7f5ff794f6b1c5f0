#include "monkey/Monkey.h"

#include "controls/ListView.h"
#include "startup/mdlStartUp.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <numeric>

namespace tarvik::monkey {

namespace {

constexpr const char* iniPath = "C:\\Prog\\Tarvik.ini";
constexpr std::size_t actionsKept = 40;

/// Errors that the rules let a user bring about: numbers that are too large, figures without time,
/// a file that cannot be written, a log that is not well formed.
bool expectedError(const std::string& text) {
    const auto has = [&](const char* part) { return text.find(part) != std::string::npos; };
    return has("Error 6 (Overflow)") || has("Error 11 (Division") || has("Error 13 (Type") ||
           has("Error 70 (Permission") || (has("Error 5 (") && has("\"ImportHistory\"")) ||
           (has("Error 9 (") && has("\"UpdateStartStop\""));
}

/// The first line, up to the first number: boxes of one kind are counted together.
std::string firstLine(const std::string& text) {
    constexpr std::size_t numberOfError = 8;
    return text.substr(0, text.find_first_of("\r0123456789", numberOfError));
}

} // namespace

Monkey::Monkey(std::uint32_t seed) : chance_(seed), driver_(scenarios::makeDriver()) {
    driver_->answerEvery(
        [this](const std::string& text, int buttons) { return answer(text, buttons); });
    machine().connections.entries = {{.name = "Harbour"}, {.name = "Ridge"}};
    machine().files.setFile(iniPath, "[Settings]\r\nRefreshInterval=50000\r\n");
    start();
    restartIfEnded();
}

Monkey::~Monkey() {
    world_.reset();
}

void Monkey::start() {
    ++starts_;
    world_.reset();
    machine().instances.endProgram();
    machine().program.arguments =
        std::array{"", "/r", "/m", "/r /m", "/?", "/what"}.at(static_cast<std::size_t>(upTo(5)));
    world_.emplace(driver_->platform());
    Main();
    driver_->settle();
}

void Monkey::note(std::string action) {
    static const char* const trace = std::getenv("TARVIK_MONKEY_TRACE");
    if (trace != nullptr) {
        static std::ofstream file(trace);
        file << action << std::endl;
    }
    actions_.push_back(std::move(action));
    if (actions_.size() > actionsKept) {
        actions_.pop_front();
    }
}

std::string Monkey::lastActions() const {
    std::string all;
    for (const std::string& action : actions_) {
        all += action + "\n";
    }
    return all;
}

int Monkey::answer(const std::string& text, int buttons) {
    ++boxes_[firstLine(text)];
    const int chosen = upTo(buttons - 1);
    note("    box: " + text + " -> button " + std::to_string(chosen));
    if (text.starts_with("Error ") && text.find("occured in") != std::string::npos &&
        !expectedError(text)) {
        trouble_ += "An error that nobody brought about: " + text + "\n";
    }
    return chosen;
}

std::string Monkey::step() {
    static constexpr std::array<Choice, 14> choices{{
        {400, &Monkey::workControl},
        {80, &Monkey::clickSomewhere},
        {80, &Monkey::pressKey},
        {15, &Monkey::closeWindow},
        {20, &Monkey::resizeWindow},
        {30, &Monkey::workIcon},
        {1, &Monkey::endSession},
        {150, &Monkey::tick},
        {30, &Monkey::passTime},
        {120, &Monkey::useLine},
        {40, &Monkey::changeLine},
        {4, &Monkey::failLine},
        {15, &Monkey::changeFiles},
        {15, &Monkey::changeDesktop},
    }};
    static const int sum =
        std::accumulate(choices.begin(), choices.end(), 0,
                        [](int before, const Choice& one) { return before + one.weight; });
    int place = upTo(sum - 1);
    const auto* chosen = choices.begin();
    while (place >= chosen->weight) {
        place -= chosen++->weight;
    }
    (this->*chosen->action)();
    restartIfEnded();
    return whatIsWrong();
}

void Monkey::stopTheClock() {
    constexpr int longerThanAnyRun = 24 * 60 * 60 * 1000;
    world_->forms.frmMain.timUpdateStats.setInterval(longerThanAnyRun);
}

void Monkey::restartIfEnded() {
    driver_->settle();
    while (!world_->forms.frmMain.loaded()) { // a start may be given up at its first question
        note("start again");
        start();
    }
    stopTheClock();
}

std::vector<Form*> Monkey::windows() {
    Forms& all = world_->forms;
    std::vector<Form*> shown;
    for (Form* form : std::initializer_list<Form*>{&all.frmMain, &all.frmHistory, &all.frmOptions,
                                                   &all.frmStatistics, &all.frmWarning,
                                                   &all.frmPlan, &all.frmPlanWarning}) {
        if (form->loaded() && form->visible() && !form->minimised()) {
            shown.push_back(form);
        }
    }
    return shown;
}

Form* Monkey::anyWindow() {
    const std::vector<Form*> shown = windows();
    return shown.empty()
               ? nullptr
               : shown[static_cast<std::size_t>(upTo(static_cast<int>(shown.size()) - 1))];
}

std::string Monkey::whatIsWrong() {
    Form* const form = anyWindow();
    if (form != nullptr) {
        trouble_ += faceUnlikeModel(*form);
    }
    trouble_ += driver_->complaints() + dialogElsewhere();
    return std::exchange(trouble_, {});
}

std::string Monkey::dialogElsewhere() {
    const OPENFILENAMEA seen = std::exchange(machine().dialogs.seen, {});
    const auto owner = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(seen.hwndOwner));
    const FrmHistory& asks = world_->forms.frmHistory; // nobody else asks for files
    const bool opened = seen.lStructSize != 0;
    return opened && (owner == 0 || owner != asks.hWnd())
               ? "A dialog for files does not stand before the history\n"
               : std::string();
}

std::string Monkey::faceUnlikeModel(const Form& form) {
    const auto seen = driver_->controls(form.name());
    const auto meant = scenarios::modelControls(form);
    if (seen == meant) {
        return {};
    }
    for (std::size_t i = 0; i < std::min(seen.size(), meant.size()); ++i) {
        if (!(seen[i] == meant[i])) {
            return form.name() + "." + meant[i].name + " shows \"" + seen[i].text +
                   "\" instead of \"" + meant[i].text + "\"\n";
        }
    }
    return form.name() + " shows " + std::to_string(seen.size()) + " controls instead of " +
           std::to_string(meant.size()) + "\n";
}

} // namespace tarvik::monkey
