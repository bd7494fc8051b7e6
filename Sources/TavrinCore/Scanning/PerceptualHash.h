// A picture as 64 bits that hardly change when it is resized or encoded anew: the difference hash.
#pragma once

#include "TavrinCore/Models/GreyPicture.h"
#include "TavrinCore/Models/Models.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tavrin {

class PerceptualHash {
  public:
    PerceptualHash() = delete;

    /// Lower case.
    static constexpr std::array<std::string_view, 10> imageExtensions{"jpg", "jpeg", "png", "heic", "heif",
                                                                      "gif", "tiff", "tif", "bmp",  "webp"};

    /// By the extension alone, whatever its case.
    [[nodiscard]] static bool isImage(const URL& url);

    /// Nil when the picture can't be read, and once cancelled.
    [[nodiscard]] static std::optional<std::uint64_t> dHash(const URL& url,
                                                            const CancellationCallback& isCancelled = neverCancelled);
    /// The picture is squeezed to 9 by 8 grey pixels. Bit 8r+c says whether the pixel at column c of row r is brighter
    /// than its right neighbour; rows count from the top, bit 0 is the least significant. The picture isn't empty.
    [[nodiscard]] static std::uint64_t dHash(const GreyPicture& picture);

    /// Bits in which they differ.
    [[nodiscard]] static int hammingDistance(std::uint64_t a, std::uint64_t b);

    /// The index of the first of `seeds` that is at most `threshold` bits away; seeds.size() when none is.
    [[nodiscard]] static std::size_t firstWithin(std::span<const std::uint64_t> seeds, std::uint64_t hash,
                                                 int threshold);
};

/// Groups of pictures that look alike. Whoever comes is compared with the first member of each group, in the order of
/// the groups, and joins the first that is near enough or opens one. So likeness isn't passed on from member to member,
/// and the order of coming matters.
class SimilarGroups {
  public:
    explicit SimilarGroups(int threshold) : threshold_(threshold) {}

    /// The number of the group that the next picture belongs to, from 0.
    std::size_t add(std::uint64_t hash);

    [[nodiscard]] std::size_t count() const { return seeds_.size(); }

  private:
    int threshold_;
    std::vector<std::uint64_t> seeds_;
};

}  // namespace tavrin
