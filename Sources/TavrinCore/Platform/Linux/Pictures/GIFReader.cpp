// giflib, line by line: the first frame, on the canvas that it belongs to.
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureShrinker.h"

#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <memory>

namespace tavrin {
namespace {

struct CloseGIF {
    void operator()(GifFileType* gif) const { (void)::DGifCloseFile(gif, nullptr); }
};
using OpenGIF = std::unique_ptr<GifFileType, CloseGIF>;

/// Passes over what stands before the first frame and begins it. Notes which colour is transparent, -1 for none.
bool findFrame(GifFileType* gif, int& transparent) {
    GifRecordType record = UNDEFINED_RECORD_TYPE;
    while (::DGifGetRecordType(gif, &record) == GIF_OK) {
        if (record == IMAGE_DESC_RECORD_TYPE) return ::DGifGetImageDesc(gif) == GIF_OK;
        if (record != EXTENSION_RECORD_TYPE) return false;
        int code = 0;
        GifByteType* block = nullptr;
        if (::DGifGetExtension(gif, &code, &block) != GIF_OK) return false;
        GraphicsControlBlock control;
        if (code == GRAPHICS_EXT_FUNC_CODE && block != nullptr &&
            ::DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK)
            transparent = control.TransparentColor;
        while (block != nullptr) {
            if (::DGifGetExtensionNext(gif, &block) != GIF_OK) return false;
        }
    }
    return false;
}

using Palette = std::array<std::uint8_t, 256>;

std::optional<Palette> greyPalette(const GifFileType& gif, int transparent) {
    const ColorMapObject* colours = gif.Image.ColorMap != nullptr ? gif.Image.ColorMap : gif.SColorMap;
    if (colours == nullptr) return std::nullopt;
    Palette palette{};
    for (int i = 0; i < std::min(colours->ColorCount, 256); ++i) {
        const GifColorType& colour = colours->Colors[i];
        palette[static_cast<std::size_t>(i)] = i == transparent ? 0 : brightness(colour.Red, colour.Green, colour.Blue);
    }
    return palette;
}

bool readRow(GifFileType* gif, std::size_t y, const Palette& palette, std::vector<GifPixelType>& row,
             PictureShrinker& shrinker) {
    if (::DGifGetLine(gif, row.data(), static_cast<int>(row.size())) != GIF_OK) return false;
    for (GifPixelType& pixel : row)
        pixel = palette[pixel];
    shrinker.addRow(static_cast<std::size_t>(gif->Image.Left), static_cast<std::size_t>(gif->Image.Top) + y, row,
                    PixelKind::grey);
    return true;
}

bool readRows(GifFileType* gif, const PictureInput& input, const Palette& palette, PictureShrinker& shrinker) {
    struct Pass {
        std::size_t first;
        std::size_t step;
    };
    constexpr std::array<Pass, 4> interlaced{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
    constexpr std::array<Pass, 1> plain{{{0, 1}}};
    std::vector<GifPixelType> row(static_cast<std::size_t>(gif->Image.Width));
    const auto height = static_cast<std::size_t>(gif->Image.Height);
    for (const Pass& pass : gif->Image.Interlace ? std::span<const Pass>(interlaced) : std::span<const Pass>(plain)) {
        for (std::size_t y = pass.first; y < height; y += pass.step) {
            if (input.isCancelled() || !readRow(gif, y, palette, row, shrinker)) return false;
        }
    }
    return true;
}

}  // namespace

std::optional<GreyPicture> readGIF(PictureInput& input) {
    const auto read = [](GifFileType* gif, GifByteType* to, int count) {
        return static_cast<int>(
            static_cast<PictureInput*>(gif->UserData)->read(to, static_cast<std::size_t>(std::max(count, 0))));
    };
    const OpenGIF gif(::DGifOpen(&input, read, nullptr));
    int transparent = NO_TRANSPARENT_COLOR;
    if (gif == nullptr || !findFrame(gif.get(), transparent)) return std::nullopt;
    const GifImageDesc& frame = gif->Image;
    if (frame.Width <= 0 || frame.Height <= 0 || frame.Left < 0 || frame.Top < 0) return std::nullopt;
    // Some files claim a canvas smaller than what stands on it.
    const auto width = static_cast<std::size_t>(std::max(gif->SWidth, frame.Left + frame.Width));
    const auto height = static_cast<std::size_t>(std::max(gif->SHeight, frame.Top + frame.Height));
    if (!hasPixels(width, height, frame.Interlace ? kMostPixelsAtOnce : kMostPixels)) return std::nullopt;
    const std::optional<Palette> palette = greyPalette(*gif, transparent);
    PictureShrinker shrinker(width, height);
    if (!palette || !readRows(gif.get(), input, *palette, shrinker)) return std::nullopt;
    return shrinker.thumbnail(1);
}

}  // namespace tavrin
