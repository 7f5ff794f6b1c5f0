#include "soak/Records.h"

#include <algorithm>

namespace tarvik::soak {

namespace {

std::string valueOf(const std::vector<std::string>& lines, const std::string& key) {
    const auto line = std::find_if(lines.begin(), lines.end(), [&](const std::string& one) {
        return one.starts_with(key + "=");
    });
    return line == lines.end() ? std::string() : line->substr(key.size() + 1);
}

} // namespace

/// Every line is a section's name or a key with its value, and no section comes twice.
std::string Records::parse(const std::string& text) {
    sections_.clear();
    Section* section = nullptr;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = text.find("\r\n", begin);
        if (end == std::string::npos) {
            return "the file ends within a line";
        }
        const std::string line = text.substr(begin, end - begin);
        begin = end + 2;
        if (line.starts_with('[') && line.ends_with(']')) {
            const auto [place, isNew] = sections_.try_emplace(line.substr(1, line.size() - 2));
            if (!isNew) {
                return line + " comes twice";
            }
            section = &place->second;
        } else if (section != nullptr && line.find('=') != std::string::npos) {
            section->push_back(line);
        } else if (!line.empty()) {
            return "what is the line \"" + line + "\"?";
        }
    }
    // Each record is looked up there.
    settings_.clear();
    for (const std::string& line : sections_["Settings"]) {
        const std::size_t equals = line.find('=');
        settings_.try_emplace(line.substr(0, equals), line.substr(equals + 1));
    }
    return {};
}

std::string Records::setting(const std::string& key) const {
    const auto found = settings_.find(key);
    return found == settings_.end() ? std::string() : found->second;
}

/// A record not seen before: its figures, unless another of the same second took its place.
std::string Records::take(const std::string& name, const Section& lines, const Amount& expected,
                          bool replaced) {
    seen_.emplace_back(name, lines);
    const bool holds = valueOf(lines, "Rcvd") == std::to_string(expected.rcvd) &&
                       valueOf(lines, "Sent") == std::to_string(expected.sent) &&
                       valueOf(lines, "Duration") == std::to_string(expected.time);
    return holds || replaced ? std::string()
                             : "the record [" + name + "] is not " + expected.text();
}

/// A record of the same second takes an earlier one's place, also where the clock was set back
/// between them.
void Records::replaceEarlier(std::size_t count) {
    for (std::size_t number = seen_.size() + 1; number <= count; ++number) {
        const std::string name = setting("DateStamp" + std::to_string(number));
        for (auto& [earlier, its] : seen_) {
            its = earlier == name ? sections_[name] : its;
        }
    }
}

std::string Records::compare(std::size_t number, const Amount& expected) {
    const std::string name = setting("DateStamp" + std::to_string(number));
    const auto found = sections_.find(name);
    if (name.empty() || found == sections_.end()) {
        return "record " + std::to_string(number) + " is missing";
    }
    if (number > seen_.size()) {
        const bool replaced = setting("DateStamp" + std::to_string(number + 1)) == name;
        return take(name, found->second, expected, replaced);
    }
    return seen_[number - 1] == std::pair(name, found->second)
               ? std::string()
               : "record " + std::to_string(number) + " [" + name + "] is not what it was";
}

std::string Records::check(const std::string& text, const std::vector<Amount>& expected) {
    if (std::string problem = parse(text); !problem.empty()) {
        return problem;
    }
    const std::string count = setting("LastDateStamp");
    if (count != (expected.empty() ? std::string() : std::to_string(expected.size()))) {
        return "there are \"" + count + "\" records instead of " + std::to_string(expected.size());
    }
    replaceEarlier(expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (std::string problem = compare(i + 1, expected[i]); !problem.empty()) {
            return problem;
        }
    }
    if (!expected.empty() && setting("LastState") != seen_.back().first) {
        return "LastState is not the newest record";
    }
    return {};
}

} // namespace tarvik::soak
