// Makes a grey thumbnail of pixels as a codec hands them on, without ever holding the whole picture.
#pragma once

#include "TavrinCore/Platform/Linux/Pictures/PictureSink.h"

#include <vector>

namespace tavrin {

/// Adds pixels up in cells of equal squares. What is transparent, and what never comes, is black.
class GreyShrinker final : public PictureSink {
  public:
    /// Enough pixels on each side for a good thumbnail. An eighth of a JPEG is the mean of each block, rounded, in a
    /// clear sky always the same way, and without its last bit in progressive files: the hashes of photographs of 2 to
    /// 4 megapixels lay up to 7 bits from those of their copies in other formats. Of larger ones there are more blocks,
    /// and it evens out.
    [[nodiscard]] Wanted wanted() const override { return {.isInColours = false, .onLongest = 352, .onShortest = 198}; }
    void begin(const PictureFrame& frame) override;
    void add(const PixelRow& row) override;

    /// Once all was added.
    [[nodiscard]] GreyPicture thumbnail() const;

  private:
    PictureFrame frame_;
    /// The side of a cell.
    std::size_t step_ = 1;
    std::size_t columns_ = 0;
    std::size_t rows_ = 0;
    std::vector<std::uint64_t> sums_;
};

}  // namespace tavrin
