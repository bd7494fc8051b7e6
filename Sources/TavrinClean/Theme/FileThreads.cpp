#include "FileThreads.h"

namespace tavrin {
namespace {

/// Two for thumbnails, and one that the preview finds free soon.
constexpr int threads = 3;

}  // namespace

QThreadPool& fileThreads() {
    static QThreadPool pool;
    pool.setMaxThreadCount(threads);
    return pool;
}

bool finishReadingFiles(std::chrono::milliseconds patience) {
    return fileThreads().waitForDone(static_cast<int>(patience.count()));
}

}  // namespace tavrin
