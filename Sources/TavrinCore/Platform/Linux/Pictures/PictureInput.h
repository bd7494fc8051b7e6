// A picture's file as the codecs read it.
#pragma once

#include "TavrinCore/Models/Models.h"
#include "TavrinCore/Platform/FileReader.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tavrin {

/// Both must outlive this. Once cancelled, the file is at its end for whoever reads it: so every codec stops by itself.
class PictureInput {
  public:
    PictureInput(FileReader& file, const CancellationCallback& isCancelled);

    /// Fewer than wanted at the end only.
    [[nodiscard]] std::size_t read(void* to, std::size_t count);
    /// False at the end.
    [[nodiscard]] bool readAll(void* to, std::size_t count) { return read(to, count) == count; }
    /// The bytes that come next, however many are at hand; they count as read. Empty at the end. They stand until the
    /// next call of anything here.
    [[nodiscard]] std::span<const unsigned char> next();
    /// Past the end too: there is nothing to read then.
    void seek(std::uint64_t position);
    void skip(std::uint64_t count) { seek(position() + count); }
    [[nodiscard]] std::uint64_t position() const { return bufferOffset_ + used_; }
    /// For codecs that compute for long before they read on.
    [[nodiscard]] bool isCancelled() const { return isCancelled_(); }
    /// As it was when the file was opened.
    [[nodiscard]] std::uint64_t size() const { return size_; }

  private:
    bool refill();

    FileReader& file_;
    const CancellationCallback& isCancelled_;
    std::uint64_t size_ = 0;
    std::vector<unsigned char> buffer_;
    std::uint64_t bufferOffset_ = 0;
    std::size_t filled_ = 0;
    std::size_t used_ = 0;
};

}  // namespace tavrin
