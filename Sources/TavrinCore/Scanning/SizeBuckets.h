// The files of an index that may have a copy, by their sizes.
#pragma once

#include "TavrinCore/Scanning/FileIndex.h"
#include "TavrinCore/Scanning/Scanner.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tavrin {

/// A bucket is all the files of one size, where there is more than one. Buckets come largest first. Of those in it
/// only the ones that have company of their own length are held, in the order of their lengths and then of the index:
/// files that occupy the same differ in length as often as not, and with a length of its own, one needn't be opened.
///
/// At most 8 bytes a file of the index. Doesn't look at the index any more once it is made.
class SizeBuckets {
  public:
    using Number = FileIndex::Number;

    /// To sort millions of files takes its time: throws ScanError::cancelled.
    explicit SizeBuckets(const FileIndex& index, const CancellationCallback& isCancelled = neverCancelled);

    [[nodiscard]] std::size_t count() const { return ends_.size(); }
    /// May be empty: the bucket counts nevertheless.
    [[nodiscard]] std::span<const Number> bucket(std::size_t number) const;
    /// All buckets, one behind the other.
    [[nodiscard]] std::span<const Number> files() const { return files_; }

  private:
    std::vector<Number> files_;
    /// Where each bucket ends in files_.
    std::vector<std::uint32_t> ends_;
};

/// Calls `each` with every run of elements that `isSame` holds for.
template <class Element, class IsSame, class Each>
void forEachRun(std::span<Element> elements, const IsSame& isSame, const Each& each) {
    for (std::size_t begin = 0, end = 0; begin < elements.size(); begin = end) {
        ++end;
        while (end < elements.size() && isSame(elements[begin], elements[end]))
            ++end;
        each(elements.subspan(begin, end - begin));
    }
}

}  // namespace tavrin
