#pragma once

#include "types/Moment.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvik {

// The words of a ledger's line, with a blank between each two.

class LedgerWriter {
public:
    std::string text;

    void word(std::string_view value);
    void number(std::uint64_t value);
    /// 2026-11-16
    void day(LocalDay value);
    /// 2026-11-16T07:15Z
    void minute(Moment value);
    /// 2026-11-16T07:15:22Z
    void second(Moment value);
    /// +01:00
    void ahead(std::chrono::minutes value);
    /// The last word: any bytes, controls and the per cent sign as %0A.
    void name(std::string_view value);

private:
    void digits(unsigned value, int count);
    void date(std::chrono::year_month_day value);
};

/// Takes what a writer has put there; `good` is false once nobody can have meant it so.
class LedgerReader {
public:
    explicit LedgerReader(std::string_view text) : rest_(text) {}

    bool good = true;
    bool done() const { return good && !more_; }
    void demand(bool holds) { good = good && holds; }

    std::uint64_t number();
    /// Whether it is the second of the two.
    bool oneOf(std::string_view first, std::string_view second);
    LocalDay day();
    Moment minute();
    Moment second();
    std::chrono::minutes ahead();
    std::string name();

private:
    std::string_view word();
    unsigned digits(std::string_view text, std::size_t at, std::size_t count, unsigned most);
    std::chrono::year_month_day date(std::string_view text);
    std::chrono::minutes clock(std::string_view text, std::size_t at, unsigned mostHours);

    std::string_view rest_;
    bool more_ = true; ///< a word follows, the last one perhaps an empty one
};

} // namespace tarvik
