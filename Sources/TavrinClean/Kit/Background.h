// Work off the main thread, and the way back to it.
#pragma once

#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace tavrin {

/// Runs work elsewhere and comes back on the main thread, or not at all if the owner is gone by then.
///
/// Made, used and destroyed on the main thread; only toMain is for every thread. Work must not throw, and captures by
/// value only: it may outlive whoever started it. It never outlives the Background, which waits for it.
class Background {
  public:
    enum class Lane {
        /// Scans, cleans, measuring: as long as it takes.
        work,
        /// What the rows of a list ask the disk for. A file system that doesn't answer holds up other rows, and never a
        /// scan or a clean.
        rows,
        /// What somebody waits for with a finger on a key. One after the other, and never behind the work.
        quick,
    };

    Background();
    /// Waits for what runs. What it brings back is dropped.
    ~Background();
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    /// Calls `work()` elsewhere, then `done(result)` on the main thread.
    template <class Work, class Done>
    void run(Lane lane, QObject* owner, Work work, Done done) {
        start(lane, [this, owner = QPointer<QObject>(owner), work = std::move(work), done = std::move(done)]() mutable {
            // Shared, since what is queued must be copyable and a result needn't be.
            auto result = std::make_shared<decltype(work())>(work());
            toMain(owner, [result = std::move(result), done = std::move(done)]() mutable { done(std::move(*result)); });
        });
    }

    /// Calls `work()` elsewhere, and that is all.
    template <class Work>
    void run(Lane lane, Work work) {
        start(lane, std::move(work));
    }

    /// Has the last holder of something big let go of it elsewhere: to free 200,000 findings takes a while.
    template <class T>
    void release(std::shared_ptr<T> thing) {
        if (thing != nullptr) run(Lane::work, [thing = std::move(thing)]() mutable { thing.reset(); });
    }

    /// Calls `call` on the main thread, soon, unless the owner is gone by then.
    void toMain(const QPointer<QObject>& owner, std::function<void()> call);

    /// Waits until nothing runs any more, and until all that came back was delivered, also what that started anew.
    void drain();
    /// The same, for no longer than that; whether it came to its end.
    [[nodiscard]] bool drain(std::chrono::milliseconds patience);

  private:
    [[nodiscard]] QThreadPool& poolOf(Lane lane);
    void start(Lane lane, std::function<void()> work);

    /// Lives on the main thread and outlives all work, so anybody can post to it.
    std::unique_ptr<QObject> mainThread_;
    std::atomic<int> undelivered_ = 0;
    QThreadPool work_;
    QThreadPool rows_;
    QThreadPool quick_;
};

}  // namespace tavrin
