#include "Support/ReferenceHash.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tavrin::test {
namespace {

constexpr std::size_t kColumns = 9;
constexpr std::size_t kRows = 8;

/// In thousandths.
unsigned lightOf(const std::uint8_t* pixel) {
    return 299U * pixel[0] + 587U * pixel[1] + 114U * pixel[2];
}

/// The light in each equal piece of a row. A pixel that is cut by an edge counts on both sides, each by its part.
std::array<double, kColumns> lightInPieces(const std::uint8_t* row, std::size_t width) {
    std::array<double, kColumns> pieces{};
    std::uint64_t sum = 0;
    double before = 0;
    const std::uint8_t* pixel = row;
    for (std::size_t piece = 0; piece < kColumns; ++piece) {
        const std::size_t edge = width * (piece + 1);
        for (const std::uint8_t* end = row + 3 * (edge / kColumns); pixel < end; pixel += 3)
            sum += lightOf(pixel);
        auto upToHere = static_cast<double>(sum);
        if (edge % kColumns > 0) upToHere += lightOf(pixel) * static_cast<double>(edge % kColumns) / kColumns;
        pieces.at(piece) = upToHere - before;
        before = upToHere;
    }
    return pieces;
}

/// How much of line `y` lies in one of the equal pieces of all `height` lines.
double partOf(std::size_t y, std::size_t height, std::size_t piece) {
    const double perPiece = static_cast<double>(height) / kRows;
    const auto line = static_cast<double>(y);
    const auto begin = perPiece * static_cast<double>(piece);
    return std::max(0.0, std::min(line + 1, begin + perPiece) - std::max(line, begin));
}

}  // namespace

std::uint64_t referenceHash(const ColourPicture& picture) {
    std::array<std::array<double, kColumns>, kRows> grid{};
    for (std::size_t y = 0; y < picture.height; ++y) {
        const std::array<double, kColumns> pieces = lightInPieces(picture.at(0, y), picture.width);
        for (std::size_t row = 0; row < kRows; ++row) {
            const double part = partOf(y, picture.height, row);
            for (std::size_t column = 0; part > 0 && column < kColumns; ++column)
                grid.at(row).at(column) += part * pieces.at(column);
        }
    }
    const double area = 1000.0 * static_cast<double>(picture.width * picture.height) / (kColumns * kRows);
    std::uint64_t hash = 0;
    for (std::size_t bit = 0; bit < 64; ++bit) {
        const auto& row = grid.at(bit / 8);
        if (std::lround(row.at(bit % 8) / area) > std::lround(row.at(bit % 8 + 1) / area))
            hash |= std::uint64_t{1} << bit;
    }
    return hash;
}

}  // namespace tavrin::test
