#include "property/RandomUserTest.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

namespace tarvik {
namespace {

/// What must have been counted of lines that come and go side by side and within each other, stated
/// apart from the program and with each line's own identity: every line that ended counts what a
/// tick last saw of it, the last of those that are up what it has carried so far; what a line
/// carried within another does not count again.
struct LinesTally {
    struct Line {
        std::int64_t seen = 0; ///< by the last tick that read it
        std::int64_t left = 0; ///< of it, what does not count
    };

    std::map<std::uint32_t, Line> lines;
    std::uint32_t last = 0;
    std::int64_t finished = 0;

    std::int64_t counted() const {
        const auto shown = lines.find(last);
        return finished + (shown == lines.end() ? 0 : shown->second.seen - shown->second.left);
    }
};

/// A random user on up to three lines at once.
class TwoLinesTest : public RandomUserTest {
protected:
    TwoLinesTest() { begin({"Harbour", "Ridge", "Quay"}); }

    using Connection = ScriptedConnections::Connection;

    std::vector<Connection>& up() { return machine.connections.connections; }

    bool countsTheSession() override {
        const bool yes = below(2) == 0;
        if (!yes) {
            // Nothing counts that was up by then, whichever of them the question named.
            for (const Connection& one : up()) {
                reference_.lines[one.handle].left = reference_.lines[one.handle].seen;
            }
        }
        return yes;
    }

    const char* freeEntry() {
        for (const char* entry : {"Harbour", "Ridge", "Quay"}) {
            if (std::none_of(up().begin(), up().end(),
                             [&](const Connection& one) { return one.entryName == entry; }) &&
                std::none_of(gone_.begin(), gone_.end(),
                             [&](const std::string& one) { return one == entry; })) {
                return entry;
            }
        }
        return nullptr;
    }

    /// The list names what lies within others before them.
    void comeUp() {
        const char* const entry = freeEntry();
        if (entry == nullptr || up().size() == 3) {
            return;
        }
        const std::uint32_t carrier = up().empty() || below(2) == 0 ? 0 : up().back().handle;
        const std::uint32_t handle = machine.connections.connect(entry);
        machine.connections.connection(handle)->carrier = carrier;
        if (carrier != 0) {
            std::rotate(up().begin(), up().end() - 1, up().end());
        } else if (up().front().handle != handle && up().front().carrier == 0 && below(3) == 0) {
            up().front().carrier = handle; // what is up finds its way through the new one
        }
    }

    void goDown() {
        if (!up().empty()) {
            const auto one = up().begin() + below(static_cast<std::uint32_t>(up().size()));
            gone_.push_back(one->entryName);
            up().erase(one);
        }
    }

    /// What a line carries, whoever carries it carries too.
    void flow() {
        for (const Connection& each : std::vector<Connection>(up())) {
            const std::uint32_t bytes = below(100'000);
            for (const Connection* one = machine.connections.connection(each.handle);
                 one != nullptr; one = machine.connections.connection(one->carrier)) {
                machine.connections.transfer(one->handle, bytes, 0, 0);
            }
        }
    }

    void seeTick() {
        for (auto one = reference_.lines.begin(); one != reference_.lines.end();) {
            const bool ended = machine.connections.connection(one->first) == nullptr;
            reference_.finished += ended ? one->second.seen - one->second.left : 0;
            one = ended ? reference_.lines.erase(one) : std::next(one);
        }
        for (const Connection& one : up()) {
            LinesTally::Line& line = reference_.lines[one.handle];
            const std::int64_t before = std::exchange(line.seen, one.statistics.dwBytesRcved);
            if (machine.connections.connection(one.carrier) != nullptr) {
                line.left += line.seen - before;
            }
        }
        reference_.last = up().empty() ? 0 : up().back().handle;
        gone_.clear();
        tick();
    }

    void step() {
        switch (below(8)) {
        case 0:
            return comeUp();
        case 1:
            return goDown();
        case 2:
            if (below(20) == 0) {
                ResetTransfers(true);
                // Whole again from the next tick that reads it; until then nothing.
                reference_.finished = 0;
                for (auto& [handle, line] : reference_.lines) {
                    line = {};
                }
            }
            return;
        case 3:
        case 4:
            return flow();
        default:
            return seeTick();
        }
    }

    void expectConserved() {
        const State& s = state();
        ASSERT_EQ(Rcvd().overall().integralPart(), reference_.counted());
        ASSERT_GE(Rcvd().counted(), Currency(0));
        ASSERT_GE(s.BytesRcvdTotal, Currency(0));
        ASSERT_NE(frmMain().txtBytesRcvdTotal.text().substr(0, 1), "-");
    }

    LinesTally reference_;
    std::vector<std::string> gone_; ///< since the last tick: what follows it at once it might be
};

TEST_P(TwoLinesTest, NothingIsCountedTwiceNothingIsLostNothingIsNegative) {
    for (int i = 0; i < 2000; ++i) {
        step();
        expectConserved();
        if (HasFatalFailure()) {
            FAIL() << "after step " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, TwoLinesTest, testing::Range(1U, 13U));

} // namespace
} // namespace tarvik
