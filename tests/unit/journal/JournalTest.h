#pragma once

#include "journal/Journal.h"
#include "scripted/ScriptedPlatform.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <utility>

namespace tarvik {

/// A journal on files in memory.
class JournalTest : public testing::Test {
protected:
    static constexpr const char* path = "C:\\Prog\\Tarvik.journal";
    static constexpr const char* ini = "C:\\Prog\\Tarvik.ini";

    ScriptedPlatform machine;
    PlatformScope scope{machine.platform};

    static JournalEntry entryOf(std::int32_t received) {
        JournalEntry entry;
        entry.moment = Date::fromCivil({2026, 11, 16});
        entry.totals.rcvd = received;
        return entry;
    }

    /// One that has looked at the file, as a start does.
    static Journal taken() {
        Journal journal;
        journal.take(path, ini);
        return journal;
    }
    /// A run that was killed has kept these entries, flushed or not.
    static void leaveEntries(std::initializer_list<std::pair<std::int32_t, bool>> entries) {
        Journal last = taken();
        for (const auto& [received, flushed] : entries) {
            last.keep(entryOf(received), flushed);
        }
        last.leave();
    }

    /// What the next start finds, as bytes received; -1 for no entry.
    std::int64_t found() {
        Journal next;
        const JournalFinding finding = next.take(path, ini);
        return finding.kind == JournalFinding::Kind::Entry
                   ? finding.entry.totals.rcvd.integralPart()
                   : -1;
    }
};

} // namespace tarvik
