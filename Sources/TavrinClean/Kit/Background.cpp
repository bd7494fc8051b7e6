#include "TavrinClean/Kit/Background.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QMetaObject>
#include <algorithm>
#include <initializer_list>

namespace tavrin {
namespace {

/// Fifteen modules may scan at once, and something be put back beside them.
constexpr int kWorkers = 17;
/// More than one, so that a row on a disk that sleeps doesn't keep those on another one waiting.
constexpr int kRowReaders = 8;

}  // namespace

Background::Background() : mainThread_(std::make_unique<QObject>()) {
    work_.setMaxThreadCount(kWorkers);
    rows_.setMaxThreadCount(kRowReaders);
    quick_.setMaxThreadCount(1);
}

Background::~Background() {
    work_.waitForDone();
    rows_.waitForDone();
    quick_.waitForDone();
}

void Background::start(Lane lane, std::function<void()> work) {
    poolOf(lane).start(std::move(work));
}

QThreadPool& Background::poolOf(Lane lane) {
    switch (lane) {
        case Lane::work:
            return work_;
        case Lane::rows:
            return rows_;
        case Lane::quick:
            break;
    }
    return quick_;
}

void Background::toMain(const QPointer<QObject>& owner, std::function<void()> call) {
    ++undelivered_;
    QMetaObject::invokeMethod(
        mainThread_.get(),
        [this, owner, call = std::move(call)] {
            --undelivered_;
            if (!owner.isNull()) call();
        },
        Qt::QueuedConnection);
}

void Background::drain() {
    while (!drain(std::chrono::hours(1))) {
    }
}

bool Background::drain(std::chrono::milliseconds patience) {
    const QDeadlineTimer deadline(patience);
    do {
        const std::initializer_list<QThreadPool*> pools{&work_, &rows_, &quick_};
        for (QThreadPool* pool : pools)
            (void)pool->waitForDone(static_cast<int>(deadline.remainingTime()));
        QCoreApplication::sendPostedEvents(mainThread_.get(), QEvent::MetaCall);
        // In this order: what a thread brings back is counted before the thread has ended.
        const bool allEnded = std::ranges::all_of(pools, [](auto* pool) { return pool->activeThreadCount() == 0; });
        if (allEnded && undelivered_ == 0) return true;
    } while (!deadline.hasExpired());
    return false;
}

}  // namespace tavrin
