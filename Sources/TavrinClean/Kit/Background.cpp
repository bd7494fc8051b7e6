#include "TavrinClean/Kit/Background.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QMetaObject>

namespace tavrin {
namespace {

/// Fifteen modules may scan at once, and a row be opened beside them.
constexpr int kWorkers = 17;

}  // namespace

Background::Background() : mainThread_(std::make_unique<QObject>()) {
    work_.setMaxThreadCount(kWorkers);
    quick_.setMaxThreadCount(1);
}

Background::~Background() {
    work_.waitForDone();
    quick_.waitForDone();
}

void Background::start(Lane lane, std::function<void()> work) {
    QThreadPool& pool = lane == Lane::quick ? quick_ : work_;
    pool.start(std::move(work));
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
        for (QThreadPool* pool : {&work_, &quick_})
            (void)pool->waitForDone(static_cast<int>(deadline.remainingTime()));
        QCoreApplication::sendPostedEvents(mainThread_.get(), QEvent::MetaCall);
        // In this order: what a thread brings back is counted before the thread has ended.
        const bool allEnded = work_.activeThreadCount() == 0 && quick_.activeThreadCount() == 0;
        if (allEnded && undelivered_ == 0) return true;
    } while (!deadline.hasExpired());
    return false;
}

}  // namespace tavrin
