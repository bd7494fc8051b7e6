// A question that is too dear to be asked at every step.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

namespace tavrin {

/// Called at each of very many small steps, such as the comparisons of a sort, it asks at every 4,096th whether the
/// scan was cancelled, and throws ScanError::cancelled. The callback must outlive it.
class CancellationPoll {
  public:
    explicit CancellationPoll(const CancellationCallback& isCancelled) : isCancelled_(isCancelled) {}

    void operator()() {
        if (++steps_ % 4'096 == 0 && isCancelled_()) throw ScanError::cancelled();
    }

  private:
    const CancellationCallback& isCancelled_;
    unsigned steps_ = 0;
};

}  // namespace tavrin
