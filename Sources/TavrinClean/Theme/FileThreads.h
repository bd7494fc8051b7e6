// The threads on which the look reads the files of others: thumbnails, whole pictures, what the preview tells.
#pragma once

#include <QThreadPool>
#include <chrono>

namespace tavrin {

/// A few threads of their own: decoding a folder of photographs must not hold up other background work.
[[nodiscard]] QThreadPool& fileThreads();

/// For the end of the program: waits until nothing is read any more, for no longer than `patience`. False when
/// something still is, in a file system that doesn't answer: only the end of the process ends that.
[[nodiscard]] bool finishReadingFiles(std::chrono::milliseconds patience);

}  // namespace tavrin
