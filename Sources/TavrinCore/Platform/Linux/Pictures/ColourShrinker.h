// Makes a picture of an asked size of pixels as a codec hands them on, without ever holding the whole picture.
#pragma once

#include "TavrinCore/Models/RGBAPicture.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureSink.h"
#include "TavrinCore/Platform/PictureDecoder.h"

#include <vector>

namespace tavrin {

/// How the pixels along one side of the stored picture share in those of the smaller one: each of those is the mean of
/// what it covers.
class PixelShares {
  public:
    PixelShares() = default;
    /// `count` pixels of the `length` that begins `before` pixels behind the edge. Never more than it has.
    PixelShares(double before, double length, std::size_t count);

    /// Of one stored pixel: what it adds to `index`, and to the one behind it.
    struct Share {
        std::size_t index;
        float here;
        float next;
    };
    /// Of one that is in between begin() and end().
    [[nodiscard]] Share of(std::size_t pixel) const;

    [[nodiscard]] std::size_t begin() const { return begin_; }
    [[nodiscard]] std::size_t end() const { return end_; }
    [[nodiscard]] std::size_t count() const { return count_; }

  private:
    double before_ = 0;
    double length_ = 0;
    double scale_ = 1;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::size_t count_ = 0;
};

/// What is transparent stays so, and what never comes is transparent.
class ColourShrinker final : public PictureSink {
  public:
    explicit ColourShrinker(const PictureForm& form) : form_(form) {}

    [[nodiscard]] Wanted wanted() const override;
    void begin(const PictureFrame& frame) override;
    void add(const PixelRow& row) override;

    /// Once all was added; nothing can be added then.
    [[nodiscard]] RGBAPicture picture();

  private:
    /// A row of the result while its pixels come.
    struct Row {
        /// Four for each pixel; empty before the first of them and after the last.
        std::vector<float> sums;
        /// How many stored pixels are still to come.
        std::uint64_t missing = 0;
    };

    /// Adds pixels to line_.
    void squeeze(std::span<const std::uint8_t> samples, PixelKind kind, std::size_t x, std::size_t step);
    /// Adds line_ from `begin` to `end`, in which there are so many stored pixels, to a row of the result.
    void addLine(std::size_t index, float weight, std::size_t begin, std::size_t end, std::size_t pixels);
    void finish(std::size_t index);

    PictureForm form_;
    unsigned orientation_ = 1;
    PixelShares columns_;
    PixelShares lines_;
    /// Pixels of one stored row, as wide as the result.
    std::vector<float> line_;
    /// Codecs go from row to row, most of them, so that only one or two are under way at a time.
    std::vector<Row> rows_;
    /// The memory of a row that is finished, for the next one.
    std::vector<float> spare_;
    RGBAPicture picture_;
};

}  // namespace tavrin
