#pragma once

#include "common/ProfileEngine.h"

#include <set>
#include <string>
#include <vector>

namespace tarvik {

/// The private-profile engine with writes that fail on demand.
class ScriptedProfile : public ProfileEngine {
public:
    using ProfileEngine::ProfileEngine;

    /// Keys of section "Settings" whose writing fails.
    std::set<std::string> failingKeys;
    /// Every section write fails.
    bool sectionsFail = false;

    /// "section/key" of each key written and "section" of each section written, in order, the
    /// failed ones too.
    std::vector<std::string> written;

    bool WritePrivateProfileStringA(std::string_view section, std::string_view key,
                                    std::string_view value, const std::string& file) override {
        written.push_back(std::string(section) + "/" + std::string(key));
        return !failingKeys.contains(std::string(key)) &&
               ProfileEngine::WritePrivateProfileStringA(section, key, value, file);
    }

    bool WritePrivateProfileSectionA(std::string_view section, std::string_view lines,
                                     const std::string& file) override {
        written.emplace_back(section);
        return !sectionsFail && ProfileEngine::WritePrivateProfileSectionA(section, lines, file);
    }
};

} // namespace tarvik
