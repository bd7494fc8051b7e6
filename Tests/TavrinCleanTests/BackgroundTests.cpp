#include "KitWorld.h"
#include "TavrinClean/Kit/Background.h"
#include "TavrinClean/Kit/ManagedAtomicFlag.h"
#include "TavrinClean/Kit/ProgressMailbox.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>

namespace tavrin::test {
namespace {

using Lane = Background::Lane;

TEST(Background, worksElsewhereAndComesBackOnTheMainThread) {
    Background background;
    QObject owner;
    const QThread* worker = nullptr;
    const QThread* back = nullptr;
    background.run(
        Lane::work, &owner, [] { return QThread::currentThread(); },
        [&](QThread* where) {
            worker = where;
            back = QThread::currentThread();
        });
    background.drain();
    EXPECT_NE(worker, nullptr);
    EXPECT_NE(worker, QThread::currentThread());
    EXPECT_EQ(back, QThread::currentThread());
}

TEST(Background, doesNotComeBackToAnOwnerThatIsGone) {
    Background background;
    auto owner = std::make_unique<QObject>();
    Gate gate;
    bool cameBack = false;
    background.run(
        Lane::quick, owner.get(),
        [&gate] {
            gate.pass();
            return 1;
        },
        [&cameBack](int) { cameBack = true; });
    owner.reset();
    gate.open();
    background.drain();
    EXPECT_FALSE(cameBack);
}

TEST(Background, bringsBackWhatCannotBeCopied) {
    Background background;
    QObject owner;
    int value = 0;
    background.run(
        Lane::work, &owner, [] { return std::make_unique<int>(7); },
        [&value](const std::unique_ptr<int>& result) { value = *result; });
    background.drain();
    EXPECT_EQ(value, 7);
}

TEST(Background, whatIsQuickDoesNotWaitForTheWork) {
    Background background;
    Gate gate;
    QObject owner;
    bool answered = false;
    for (int i = 0; i < 40; ++i)
        background.run(Lane::work, [&gate] { gate.pass(); });
    background.run(
        Lane::quick, &owner, [] { return true; }, [&answered](bool result) { answered = result; });
    while (!answered)
        QCoreApplication::processEvents();
    gate.open();
    background.drain();
    EXPECT_TRUE(answered);
}

TEST(Background, rowsThatGetNoAnswerHoldUpNoWork) {
    Background background;
    Gate gate;
    QObject owner;
    bool worked = false;
    for (int i = 0; i < 40; ++i)
        background.run(Lane::rows, [&gate] { gate.pass(); });
    background.run(
        Lane::work, &owner, [] { return true; }, [&worked](bool result) { worked = result; });
    while (!worked)
        QCoreApplication::processEvents();
    gate.open();
    background.drain();
    EXPECT_TRUE(worked);
}

TEST(Background, whatIsQuickIsDoneInItsOrder) {
    Background background;
    QObject owner;
    std::vector<int> order;
    for (int i = 0; i < 20; ++i)
        background.run(
            Lane::quick, &owner, [i] { return i; }, [&order](int number) { order.push_back(number); });
    background.drain();
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(order.at(static_cast<std::size_t>(i)), i);
}

TEST(Background, whoeverEndsItWaitsForTheWork) {
    std::atomic<bool> ended = false;
    bool cameBack = false;
    QObject owner;
    {
        Background background;
        background.run(
            Lane::work, &owner,
            [&ended] {
                ended = true;
                return 1;
            },
            [&cameBack](int) { cameBack = true; });
    }
    EXPECT_TRUE(ended);
    QCoreApplication::processEvents();
    EXPECT_FALSE(cameBack);
}

TEST(Background, drainingDeliversAlsoWhatAnAnswerStarted) {
    Background background;
    QObject owner;
    int last = 0;
    background.run(
        Lane::work, &owner, [] { return 1; },
        [&](int first) {
            background.run(
                Lane::quick, &owner, [first] { return first + 1; }, [&last](int second) { last = second; });
        });
    background.drain();
    EXPECT_EQ(last, 2);
}

TEST(Background, lastHoldersLetGoElsewhere) {
    Background background;
    std::atomic<QThread*> where = nullptr;
    int thing = 0;
    background.release(std::shared_ptr<int>(&thing, [&where](int*) { where = QThread::currentThread(); }));
    background.drain();
    EXPECT_NE(where, nullptr);
    EXPECT_NE(where, QThread::currentThread());
}

TEST(ManagedAtomicFlag, isFalseUntilItIsSet) {
    ManagedAtomicFlag flag;
    EXPECT_FALSE(flag.value());
    flag.set();
    EXPECT_TRUE(flag.value());
    flag.set(false);
    EXPECT_FALSE(flag.value());
}

TEST(ProgressMailbox, ofManyReportsWithinAFrameOnlyTheLastIsDelivered) {
    Background background;
    std::vector<std::int64_t> delivered;
    ProgressMailbox mailbox(background, [&](const ScanProgress& report) { delivered.push_back(report.itemsFound); });
    background.run(Lane::work, [report = mailbox.callback()] {
        for (int i = 1; i <= 1'000; ++i)
            report({.phase = "looking", .itemsFound = i});
    });
    background.drain();
    mailbox.flush();
    EXPECT_EQ(delivered, std::vector<std::int64_t>{1'000});
}

TEST(ProgressMailbox, whatComesWithinAFrameIsDeliveredAtItsEnd) {
    KitWorld world;
    std::vector<std::int64_t> delivered;
    ProgressMailbox mailbox(*world.services.background,
                            [&](const ScanProgress& report) { delivered.push_back(report.itemsFound); });
    const ProgressCallback report = mailbox.callback();
    report({.phase = "looking", .itemsFound = 1});
    world.waitUntil([&] { return delivered.size() == 1; });
    report({.phase = "looking", .itemsFound = 2});
    report({.phase = "looking", .itemsFound = 3});
    world.waitUntil([&] { return delivered.size() == 2; });
    EXPECT_EQ(delivered, (std::vector<std::int64_t>{1, 3}));
}

TEST(ProgressMailbox, aReportAfterItsEndHarmsNobody) {
    Background background;
    int delivered = 0;
    auto mailbox = std::make_unique<ProgressMailbox>(background, [&](const ScanProgress&) { ++delivered; });
    const ProgressCallback report = mailbox->callback();
    mailbox.reset();
    report({.phase = "late"});
    background.drain();
    EXPECT_EQ(delivered, 0);
}

}  // namespace
}  // namespace tavrin::test
