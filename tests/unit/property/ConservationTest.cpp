#include "property/RandomUserTest.h"
#include "settings/mdlSettingsLog.h"
#include "state/mdlTransfers.h"
#include "state/mdlVar.h"

namespace tarvik {
namespace {

/// What should have been counted, stated apart from the program: of each session all that the ticks
/// saw, less what had passed when the user declined it. A reset forgets everything, also what was
/// declined, so that a session under way counts from its beginning again.
struct Reference {
    std::uint64_t finished = 0; ///< of sessions that a tick has found ended
    std::uint64_t seen = 0;     ///< of the session under way, at the last tick
    std::uint64_t declined = 0; ///< of it, what was declined
    std::uint64_t saved = 0;    ///< in the newest record

    std::uint64_t counted() const { return finished + seen - declined; }

    void seeOnline(std::uint64_t counter) { seen = counter; }
    void seeOffline() {
        finished = counted();
        seen = declined = 0;
    }
    void reset() { finished = seen = declined = 0; }
    void save() { saved = counted(); }
    /// The program starts anew on what it has saved.
    void restart() {
        finished = saved;
        seen = declined = 0;
    }
};

/// A random user on a random line. The line only changes sessions when a tick has seen it down:
/// what comes and goes between two ticks nobody can tell.
class ConservationTest : public RandomUserTest {
protected:
    ConservationTest() { begin({"Harbour"}); }

    bool countsTheSession() override {
        const bool yes = below(2) == 0;
        if (!yes) {
            rcvd_.declined = rcvd_.seen;
            sent_.declined = sent_.seen;
            time_.declined = time_.seen;
        }
        return yes;
    }

    bool up() const { return !machine.connections.connections.empty(); }

    void tickSeen() {
        if (up()) {
            const RAS_STATS& counters = machine.connections.connections[0].statistics;
            rcvd_.seeOnline(counters.dwBytesRcved);
            sent_.seeOnline(counters.dwBytesXmited);
            time_.seeOnline(counters.dwConnectDuration);
        } else {
            forEach([](Reference& each) { each.seeOffline(); });
            seenDown_ = true;
        }
        tick();
    }

    template <class Action>
    void forEach(Action&& action) {
        for (Reference* each : {&rcvd_, &sent_, &time_}) {
            action(*each);
        }
    }

    /// All zero is no record: the newest one stays.
    void saved() {
        if (rcvd_.counted() + sent_.counted() + time_.counted() > 0) {
            forEach([](Reference& each) { each.save(); });
        }
    }

    void endAndStartAgain() {
        frmMain().unload(UnloadMode::AppWindows);
        // The next run begins with what this one showed, also where no record tells of it.
        forEach([](Reference& each) {
            each.save();
            each.restart();
        });
        newWorld();
        start("/r");
        // What the saved file holds is all that a new run knows of an ended session.
        seenDown_ = !up();
    }

    void step() {
        switch (below(12)) {
        case 0:
            if (!up() && seenDown_) {
                machine.connections.connect("Harbour");
                seenDown_ = false;
            }
            break;
        case 1:
            if (!up() && seenDown_) {
                frmMain().cboConnections.setListIndex(0);
                frmMain().cmdConnect.press();
                seenDown_ = false;
            }
            break;
        case 2:
            frmMain().cmdDisconnect.press();
            break;
        case 3:
            frmMain().cmdMonitor.press();
            break;
        case 4:
            if (below(10) == 0) {
                ResetTransfers(true);
                forEach([](Reference& each) { each.reset(); });
                lastCounted_ = 0;
            }
            break;
        case 5:
            EXPECT_TRUE(SaveState());
            saved();
            machine.clock.advanceSeconds(below(3));
            break;
        case 6:
            if (below(5) == 0) {
                endAndStartAgain();
            }
            break;
        case 7:
        case 8:
            if (up()) {
                machine.connections.transfer(machine.connections.connections[0].handle,
                                             below(1'000'000), below(50'000), below(20'000));
            }
            break;
        default:
            if (state().MonitoringActive) {
                tickSeen();
            }
        }
    }

    void expectConserved() {
        const State& s = state();
        const auto shown = [](Currency total, const Counter& current, const Counter& offset) {
            return static_cast<std::uint64_t>(
                (total + current.figure() - offset.figure()).integralPart());
        };
        const std::uint64_t counted =
            shown(s.BytesRcvdTotal, s.BytesRcvdCurrent, s.BytesRcvdOffset);
        ASSERT_EQ(counted, rcvd_.counted());
        ASSERT_EQ(shown(s.BytesSentTotal, s.BytesSentCurrent, s.BytesSentOffset), sent_.counted());
        ASSERT_EQ(shown(s.DurationTotal, s.DurationCurrent, s.DurationOffset), time_.counted());
        ASSERT_GE(counted, lastCounted_) << "totals fall only by a reset";
        lastCounted_ = counted;
    }

    Reference rcvd_;
    Reference sent_;
    Reference time_;
    std::uint64_t lastCounted_ = 0;
    bool seenDown_ = true;
};

TEST_P(ConservationTest, EveryByteThatWasSeenIsCountedUnlessItWasDeclined) {
    for (int i = 0; i < 3000; ++i) {
        step();
        expectConserved();
        if (HasFatalFailure()) {
            FAIL() << "after step " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ConservationTest, testing::Range(1U, 13U));

} // namespace
} // namespace tarvik
