// Which of some files of one size and length are copies of each other.
//
// A few are read side by side from the start: what differs shows in the first bytes, and nothing is opened or read
// twice. Of many, the hash of the first bytes tells first which of them are worth that.
#pragma once

#include "TavrinCore/Scanning/ContentComparison.h"
#include "TavrinCore/Scanning/FileIndex.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace tavrin {

/// Not shared between threads.
class CopyFinder {
  public:
    using Number = FileIndex::Number;

    /// `all` is what will be asked about, in that order, so that the disk can begin with what comes next. All of them
    /// must outlive this.
    CopyFinder(const FileIndex& index, std::span<const Number> all, const CancellationCallback& isCancelled)
        : index_(index), all_(all), isCancelled_(isCancelled) {}
    CopyFinder(const CopyFinder&) = delete;
    CopyFinder& operator=(const CopyFinder&) = delete;

    /// Groups of two files or more with the same contents among `alike`, a part of `all`. The names of one file are
    /// one file: it is read once, and the first name that can be opened stands for it. To offer the others would free
    /// nothing. What can't be opened, or isn't the file of the index any more, is left out. Throws
    /// ScanError::cancelled.
    [[nodiscard]] std::vector<EqualFiles> copies(std::span<const Number> alike);

  private:
    struct Candidate;

    [[nodiscard]] std::vector<Number> withOneNameEach(std::span<const Number> alike);
    [[nodiscard]] std::vector<EqualFiles> copiesAmongMany(std::span<const Number> files);
    [[nodiscard]] std::vector<Candidate> fingerprinted(std::span<const Number> files);
    [[nodiscard]] std::unique_ptr<FileReader> open(Number file);
    [[nodiscard]] std::unique_ptr<FileReader> openKnown(Number file) const;
    void fetchAhead();

    const FileIndex& index_;
    std::span<const Number> all_;
    const CancellationCallback& isCancelled_;
    ContentComparison::Open open_ = [this](Number file) { return open(file); };
    ContentComparison comparison_{open_, isCancelled_};
    /// Places in all_: what is being read, where the files that are asked for now end, what was fetched already, and
    /// how far it is worth it.
    std::size_t reached_ = 0;
    std::size_t end_ = 0;
    std::size_t fetched_ = 0;
    std::size_t fetchUntil_ = 0;
};

}  // namespace tavrin
