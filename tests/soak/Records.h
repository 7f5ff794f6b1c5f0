#pragma once

#include "soak/Line.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace tarvik::soak {

/// Reads the file by itself and remembers each record's bytes as it first saw them.
class Records {
public:
    /// What is wrong with the text; empty when it holds these records, the earlier ones untouched.
    std::string check(const std::string& text, const std::vector<Amount>& expected);
    /// The file was moved aside: the next one begins anew.
    void forget() { seen_.clear(); }

private:
    using Section = std::vector<std::string>;

    std::string parse(const std::string& text);
    std::string setting(const std::string& key) const;
    std::string take(const std::string& name, const Section& lines, const Amount& expected,
                     bool replaced);
    void replaceEarlier(std::size_t count);
    std::string compare(std::size_t number, const Amount& expected);

    std::unordered_map<std::string, Section> sections_;
    std::unordered_map<std::string, std::string> settings_;
    std::vector<std::pair<std::string, Section>> seen_;
};

} // namespace tarvik::soak
