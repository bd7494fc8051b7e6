#include "TavrinCore/Scanning/SizeBuckets.h"

#include "TavrinCore/Scanning/CancellationPoll.h"

#include <algorithm>
#include <numeric>

namespace tavrin {

SizeBuckets::SizeBuckets(const FileIndex& index, const CancellationCallback& isCancelled) : files_(index.count()) {
    CancellationPoll poll(isCancelled);
    std::iota(files_.begin(), files_.end(), Number{0});
    std::ranges::sort(files_, [&](Number a, Number b) {
        poll();
        if (index.size(a) != index.size(b)) return index.size(a) > index.size(b);
        if (index.length(a) != index.length(b)) return index.length(a) < index.length(b);
        return a < b;
    });
    std::size_t kept = 0;
    // They move to the front, over what was looked at already.
    const auto keep = [&](std::span<const Number> sameLength) {
        if (sameLength.size() < 2) return;
        std::ranges::copy(sameLength, files_.begin() + static_cast<std::ptrdiff_t>(kept));
        kept += sameLength.size();
    };
    const auto isSameSize = [&index](Number a, Number b) { return index.size(a) == index.size(b); };
    const auto isSameLength = [&](Number a, Number b) {
        poll();
        return index.length(a) == index.length(b);
    };
    forEachRun(std::span<const Number>(files_), isSameSize, [&](std::span<const Number> sameSize) {
        if (sameSize.size() < 2) return;
        forEachRun(sameSize, isSameLength, keep);
        ends_.push_back(static_cast<std::uint32_t>(kept));
    });
    files_.resize(kept);
}

std::span<const FileIndex::Number> SizeBuckets::bucket(std::size_t number) const {
    const std::size_t begin = number == 0 ? 0 : ends_[number - 1];
    return files().subspan(begin, ends_[number] - begin);
}

}  // namespace tavrin
