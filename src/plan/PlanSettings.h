#pragma once

#include "plan/Plan.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tarvik {

class PrivateProfile;

/// What is kept of a plan under one key of its section, and how.
struct PlanSetting {
    std::string_view key;
    std::string (*text)(const Plan& plan);
    /// False for a text that is no value; the plan is then as it was.
    bool (*read)(Plan& plan, std::string_view text);
};

/// All of them, in the order in which they are written.
std::span<const PlanSetting> planSettings();

/// "Plan 1"
std::string planSection(int number);

/// Whether the file has a plan of that number.
bool hasPlan(PrivateProfile& profile, const std::string& file, int number);

/// The plan of that number (1 to 9); nothing where the file has none. What has no value, or one
/// that is none, is as in a new plan.
std::optional<Plan> readPlan(PrivateProfile& profile, const std::string& file, int number);

/// Writes it to the section of its number; keys that are none of a plan's stay. False where that
/// cannot be written.
bool writePlan(PrivateProfile& profile, const std::string& file, const Plan& plan);

/// Takes the section's keys away, if it has any. False where that cannot be written.
bool erasePlan(PrivateProfile& profile, const std::string& file, int number);

} // namespace tarvik
