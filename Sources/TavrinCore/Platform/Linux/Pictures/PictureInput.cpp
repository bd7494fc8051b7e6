#include "TavrinCore/Platform/Linux/Pictures/PictureInput.h"

#include <algorithm>
#include <cstring>

namespace tavrin {
namespace {

constexpr std::size_t kBuffer = std::size_t{64} * 1024;

}  // namespace

PictureInput::PictureInput(FileReader& file, const CancellationCallback& isCancelled)
    : file_(file), isCancelled_(isCancelled), buffer_(kBuffer) {
    if (file.status().size) size_ = static_cast<std::uint64_t>(*file.status().size);
}

bool PictureInput::refill() {
    bufferOffset_ += used_;
    used_ = 0;
    filled_ = 0;
    if (isCancelled_()) return false;
    filled_ = file_.readAt(bufferOffset_, buffer_).value_or(0);
    return filled_ > 0;
}

std::size_t PictureInput::read(void* to, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        if (used_ == filled_ && !refill()) break;
        const std::size_t piece = std::min(count - done, filled_ - used_);
        std::memcpy(static_cast<unsigned char*>(to) + done, buffer_.data() + used_, piece);
        used_ += piece;
        done += piece;
    }
    return done;
}

std::span<const unsigned char> PictureInput::next() {
    if (used_ == filled_ && !refill()) return {};
    const std::span<const unsigned char> bytes(buffer_.data() + used_, filled_ - used_);
    used_ = filled_;
    return bytes;
}

void PictureInput::seek(std::uint64_t position) {
    if (position >= bufferOffset_ && position - bufferOffset_ <= filled_) {
        used_ = static_cast<std::size_t>(position - bufferOffset_);
        return;
    }
    // No file is longer than this, and the system's own offsets have a sign.
    bufferOffset_ = std::min<std::uint64_t>(position, INT64_MAX / 2);
    used_ = 0;
    filled_ = 0;
}

}  // namespace tavrin
