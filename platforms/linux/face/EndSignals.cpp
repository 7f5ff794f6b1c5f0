#include "linux/face/EndSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tarvik::face {

namespace {

constexpr std::array<int, 3> endingSignals{SIGTERM, SIGINT, SIGHUP};

// A handler may only use what is safe at any moment: it writes a byte into this pipe.
std::array<int, 2> pipeEnds{-1, -1};

void onSignal(int) {
    const int before = errno;
    const char byte = 1;
    const ssize_t written = write(pipeEnds[1], &byte, 1);
    static_cast<void>(written); // a full pipe already tells the same
    errno = before;
}

void handleWith(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : endingSignals) {
        sigaction(signal, &action, nullptr);
    }
}

} // namespace

EndSignals::EndSignals(std::function<void()> ended) : ended_(std::move(ended)) {
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        pipeEnds = {-1, -1};
        return;
    }
    notifier_ = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        std::array<char, 16> bytes{};
        while (read(pipeEnds[0], bytes.data(), bytes.size()) > 0) {
        }
        ended_();
    });
    handleWith(onSignal);
}

EndSignals::~EndSignals() {
    handleWith(SIG_DFL);
    delete notifier_;
    for (int& end : pipeEnds) {
        if (end >= 0) {
            close(end);
            end = -1;
        }
    }
}

} // namespace tarvik::face
