#include "TavrinClean/Platform/EndRequests.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QSignalSpy>
#include <csignal>

namespace tavrin::test {
namespace {

struct sigaction dispositionOf(int signal) {
    struct sigaction current {};
    EXPECT_EQ(sigaction(signal, nullptr, &current), 0);
    return current;
}

bool wasAsked(const QSignalSpy& asked) {
    const QDeadlineTimer deadline(30'000);
    while (asked.isEmpty() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return asked.count() == 1;
}

/// Whoever runs the tests may ignore one or the other.
class EachEndRequest : public testing::TestWithParam<int> {
  protected:
    EachEndRequest() { std::signal(GetParam(), SIG_DFL); }
};

TEST_P(EachEndRequest, isToldToTheEventLoopInsteadOfEndingTheProcess) {
    const EndRequests requests;
    const QSignalSpy asked(&requests, &EndRequests::asked);
    std::raise(GetParam());
    EXPECT_TRUE(wasAsked(asked));
}

TEST_P(EachEndRequest, isObeyedAtOnceTheSecondTime) {
    const EndRequests requests;
    std::raise(GetParam());
    EXPECT_EQ(dispositionOf(GetParam()).sa_handler, SIG_DFL);
}

TEST_P(EachEndRequest, staysIgnoredWhereItWas) {
    std::signal(GetParam(), SIG_IGN);
    {
        const EndRequests requests;
        EXPECT_EQ(dispositionOf(GetParam()).sa_handler, SIG_IGN);
    }
    EXPECT_EQ(dispositionOf(GetParam()).sa_handler, SIG_IGN);
    std::signal(GetParam(), SIG_DFL);
}

TEST_P(EachEndRequest, isTheSystemsAgainAfterwards) {
    { const EndRequests requests; }
    EXPECT_EQ(dispositionOf(GetParam()).sa_handler, SIG_DFL);
}

INSTANTIATE_TEST_SUITE_P(Signals, EachEndRequest, testing::Values(SIGHUP, SIGINT, SIGTERM));

}  // namespace
}  // namespace tavrin::test
