// signal(7). Nearly nothing may be done in a handler, so it only writes a byte into a pipe that the event loop reads.
#include "TavrinClean/Platform/EndRequests.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>

namespace tavrin {
namespace {

constexpr std::array kSignals{SIGHUP, SIGINT, SIGTERM};

// Its end for writing, while there is somebody who reads; a handler has no other way to find it.
volatile std::sig_atomic_t writeEnd = -1;

extern "C" void tellOfSignal(int /*signal*/) {
    const int before = errno;
    const char byte = 0;
    // One that is full has told already.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = before;
}

void handle(int signal) {
    struct sigaction current {};
    if (::sigaction(signal, nullptr, &current) != 0 || current.sa_handler == SIG_IGN) return;
    struct sigaction ours {};
    ours.sa_handler = tellOfSignal;
    ours.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    ::sigaction(signal, &ours, nullptr);
}

void leaveToTheSystem(int signal) {
    struct sigaction current {};
    if (::sigaction(signal, nullptr, &current) == 0 && current.sa_handler == tellOfSignal) std::signal(signal, SIG_DFL);
}

}  // namespace

EndRequests::EndRequests(QObject* parent) : QObject(parent) {
    std::array<int, 2> ends{};
    // Without a pipe, requests end the process as they always did.
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    writeEnd = ends[1];
    told_ = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(told_, &QSocketNotifier::activated, this, [this, readEnd = ends[0]] {
        char byte = 0;
        if (::read(readEnd, &byte, 1) == 1) Q_EMIT asked();
    });
    for (const int signal : kSignals)
        handle(signal);
}

EndRequests::~EndRequests() {
    if (told_ == nullptr) return;
    for (const int signal : kSignals)
        leaveToTheSystem(signal);
    told_->setEnabled(false);
    ::close(static_cast<int>(told_->socket()));
    ::close(writeEnd);
    writeEnd = -1;
}

}  // namespace tavrin
