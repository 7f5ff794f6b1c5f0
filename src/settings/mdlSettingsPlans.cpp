#include "settings/mdlSettingsPlans.h"

#include "plan/PlanSettings.h"
#include "plan/Plans.h"
#include "ports/Platform.h"
#include "ports/PrivateProfile.h"
#include "settings/DatedName.h"
#include "settings/Setting.h"
#include "settings/mdlSettings.h"
#include "state/mdlConst.h"
#include "state/mdlTools.h"
#include "state/mdlVar.h"

#include <algorithm>
#include <utility>

namespace tarvik {

namespace {

/// Plans that the file has; `inFile` says whether they are to stay in it.
void load(const std::string& file, bool inFile) {
    PrivateProfile& profile = platform().profile;
    for (int number = 1; number <= mostPlans; ++number) {
        if (auto plan = readPlan(profile, file, number)) {
            PlanInUse one{.plan = std::move(*plan)};
            if (inFile) {
                one.inFile = one.plan;
            }
            plans().all.push_back(std::move(one));
        }
    }
}

bool write(const PlanInUse& one, const std::string& file) {
    PrivateProfile& profile = platform().profile;
    const bool isThere = one.inFile == one.plan && hasPlan(profile, file, one.plan.number);
    return isThere || writePlan(profile, file, one.plan);
}

} // namespace

void LoadPlans() {
    guarded("LoadPlans", [] {
        plans().all.clear();
        load(state().IniFileName, true);
    });
}

bool HasOnlyPlans() {
    const std::string file = usualIniFile();
    return plans().areThere() &&
           std::all_of(settings().begin(), settings().end(), [&](const Setting& setting) {
               return iniText(file, SettingsSection, setting.key).empty();
           });
}

void BringPlansBack(Date Day) {
    guarded("BringPlansBack", [&] {
        if (!plans().areThere()) {
            const std::string backup = nameOfBackup(usualIniFile(), dayText(Day));
            const ProfileReading reading(platform().profile, backup);
            load(backup, false);
        }
        if (plans().areThere()) {
            SavePlans();
        }
    });
}

bool WritePlans() {
    return guarded("WritePlans", false, [](bool& result) {
        const std::string& file = state().IniFileName;
        const Plans& kept = plans();
        result = std::all_of(kept.all.begin(), kept.all.end(),
                             [&](const PlanInUse& one) { return write(one, file); }) &&
                 std::all_of(kept.toErase.begin(), kept.toErase.end(), [&](int number) {
                     const bool isUsed = plans().withNumber(number) != nullptr;
                     return isUsed || erasePlan(platform().profile, file, number);
                 });
    });
}

void NotePlansWritten() {
    guarded("NotePlansWritten", [] {
        for (PlanInUse& one : plans().all) {
            one.inFile = one.plan;
        }
        plans().toErase.clear();
    });
}

bool SavePlans() {
    return guarded("SavePlans", false, [](bool& result) {
        SetIniFileName(true, false);
        result = UpdateIniFile([] { return WritePlans(); });
        if (result) {
            NotePlansWritten();
        }
    });
}

} // namespace tarvik
