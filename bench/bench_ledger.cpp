// Prints what a ledger of three lines that are always up costs after ten years: the size of its
// file, the time to read and to fold it on the disk, and what nine plans take: to be told, in each
// tick, and until their window is open.
//
//     bench_ledger

#include "FaceUnderTest.h"
#include "Machine.h"
#include "ledger/Ledger.h"
#include "plan/Forecast.h"
#include "plan/PlanSettings.h"
#include "scripted/ScriptedPlatform.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tarvik {
namespace {

using namespace std::chrono_literals;

constexpr Moment today = std::chrono::sys_days(2026y / 11 / 16);
constexpr LocalDay todaysDay = std::chrono::local_days(2026y / 11 / 16);

double millisecondsOf(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
        .count();
}

std::vector<LedgerEntry> tenYears() {
    std::vector<LedgerEntry> entries;
    for (Moment at = today - 3653 * 24h; at < today; at += quarterHour) {
        const auto bytes = static_cast<std::uint64_t>(at.time_since_epoch().count()) % 99'999'999;
        for (const char* line : {"Ridge", "Harbour", "Office"}) {
            entries.push_back(
                {.at = at, .ahead = 60min, .line = line, .traffic = {bytes, bytes / 10, 900'000}});
        }
    }
    return entries;
}

std::vector<Plan> ninePlans() {
    std::vector<Plan> plans;
    for (int number = 1; number <= mostPlans; ++number) {
        Plan& plan = plans.emplace_back();
        plan.number = number;
        plan.name = "Plan " + std::to_string(number);
        plan.rollOver = RollOver::All;
        plan.allowance = DataSize{.thousandths = 500'000, .unit = SizeUnit::GB};
        plan.thresholds = {{.percent = 50}, {.percent = 80}, {.percent = 100}};
    }
    return plans;
}

void tellPlans(const Ledger& ledger) {
    const Zone zone = [](Moment) { return 60min; };
    const History history(ledger.contents());
    for (const Plan& plan : ninePlans()) {
        const auto standing = standingOf(plan, history, today, zone);
        budgetOf(plan, history, *standing, today, zone);
        forecastOf(plan, history, *standing, today, zone, {});
    }
}

void measure(const std::string& folder) {
    FaceFiles files;
    ScriptedPlatform machine;
    Platform platform = machine.withFiles(machine.profile, files);
    const PlatformScope scope(platform);
    const std::string path = folder + "/Tarvik.ledger";
    Ledger ledger;
    LedgerContents contents;
    contents.head = {.version = ledgerVersion, .begun = today - 3653 * 24h, .ahead = 60min};
    contents.entries = folded(tenYears(), todaysDay, std::chrono::months(13));
    writeAndFlush(path, textOf(contents));
    const double reading = millisecondsOf([&] { ledger.take(path); });
    std::printf("ten years, three lines: %zu entries, %zu bytes\n",
                ledger.contents().entries.size(), ledger.size());
    std::printf("to read it: %.1f ms\n", reading);
    std::printf("to find that it is folded: %.1f ms\n",
                millisecondsOf([&] { ledger.fold(todaysDay); }));
    ledger.add({{.at = today, .ahead = 60min, .line = "Ridge", .traffic = {1, 1, 1}}});
    ledger.add({{.at = today, .ahead = 60min, .line = "Ridge", .traffic = {1, 1, 1}}});
    std::printf("to fold it: %.1f ms\n", millisecondsOf([&] { ledger.fold(todaysDay); }));
    std::printf("one more entry, on the disk: %.2f ms\n", millisecondsOf([&] {
                    ledger.add({{.at = today, .ahead = 60min, .line = "Ridge"}});
                }));
    std::printf("nine plans: %.2f ms\n", millisecondsOf([&] { tellPlans(ledger); }));
}

/// Microseconds of one tick of three lines, without a face.
double tickOf(const std::string& folder) {
    constexpr int ticks = 20'000;
    constexpr double microseconds = 1000;
    Machine machine(folder);
    machine.goOnline({"Line", "Ridge", "Harbour"});
    machine.timer().fire();
    return milliseconds([&] {
               for (int i = 0; i < ticks; ++i) {
                   machine.transfer();
                   machine.timer().fire();
               }
           }) /
           ticks * microseconds;
}

void writePlans(const std::string& file) {
    FaceFiles files;
    ProfileEngine profile(files, endOfLine);
    for (const Plan& plan : ninePlans()) {
        writePlan(profile, file, plan);
    }
}

void measurePlans(const std::string& folder, const std::string& folderWithout) {
    const double without = tickOf(folderWithout);
    writePlans(folder + "/Tarvik.ini");
    std::printf("one tick of three lines, rules alone: %.1f us, with nine plans %.1f us\n", without,
                tickOf(folder));
    Machine machine(folder);
    machine.forms().frmMain.cmdOptions.press();
    std::printf("to open the plans' window, rules alone: %.1f ms\n", milliseconds([&] {
                    machine.forms().frmOptions.cmdPlan.press();
                    machine.forms().frmPlan.cmdCancel.press();
                }));
}

} // namespace
} // namespace tarvik

int main() {
    const auto folder =
        std::filesystem::temp_directory_path() /
        ("tarvik-bench-" +
         std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
    std::filesystem::create_directories(folder / "without");
    tarvik::measure(folder.string());
    tarvik::measurePlans(folder.string(), (folder / "without").string());
    std::filesystem::remove_all(folder);
}
