// giflib, line by line: the first frame, on the canvas that it belongs to.
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"
#include "TavrinCore/Platform/Linux/Pictures/PixelTable.h"

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

bool readColours(const GifFileType& gif, int transparent, PixelTable& table) {
    const ColorMapObject* colours = gif.Image.ColorMap != nullptr ? gif.Image.ColorMap : gif.SColorMap;
    if (colours == nullptr) return false;
    for (int i = 0; i < std::min(colours->ColorCount, 256); ++i) {
        const GifColorType& colour = colours->Colors[i];
        const std::uint8_t alpha = i == transparent ? 0 : 255;
        table.set(static_cast<std::size_t>(i), {colour.Red, colour.Green, colour.Blue, alpha});
    }
    return true;
}

bool readRows(GifFileType* gif, const PictureInput& input, PixelTable& table, PictureSink& sink) {
    struct Pass {
        std::size_t first;
        std::size_t step;
    };
    constexpr std::array<Pass, 4> interlaced{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
    constexpr std::array<Pass, 1> plain{{{0, 1}}};
    std::vector<GifPixelType> row(static_cast<std::size_t>(gif->Image.Width));
    const auto left = static_cast<std::size_t>(gif->Image.Left);
    const auto top = static_cast<std::size_t>(gif->Image.Top);
    const auto height = static_cast<std::size_t>(gif->Image.Height);
    for (const Pass& pass : gif->Image.Interlace ? std::span<const Pass>(interlaced) : std::span<const Pass>(plain)) {
        for (std::size_t y = pass.first; y < height; y += pass.step) {
            if (input.isCancelled()) return false;
            if (::DGifGetLine(gif, row.data(), static_cast<int>(row.size())) != GIF_OK) return false;
            sink.add(table.row(left, top + y, row));
        }
    }
    return true;
}

}  // namespace

bool readGIF(PictureInput& input, PictureSink& sink) {
    const auto read = [](GifFileType* gif, GifByteType* to, int count) {
        return static_cast<int>(
            static_cast<PictureInput*>(gif->UserData)->read(to, static_cast<std::size_t>(std::max(count, 0))));
    };
    const OpenGIF gif(::DGifOpen(&input, read, nullptr));
    int transparent = NO_TRANSPARENT_COLOR;
    if (gif == nullptr || !findFrame(gif.get(), transparent)) return false;
    const GifImageDesc& frame = gif->Image;
    if (frame.Width <= 0 || frame.Height <= 0 || frame.Left < 0 || frame.Top < 0) return false;
    // Some files claim a canvas smaller than what stands on it.
    const auto width = static_cast<std::size_t>(std::max(gif->SWidth, frame.Left + frame.Width));
    const auto height = static_cast<std::size_t>(std::max(gif->SHeight, frame.Top + frame.Height));
    if (!hasPixels(width, height, frame.Interlace ? kMostPixelsAtOnce : kMostPixels)) return false;
    PixelTable table(sink);
    if (!readColours(*gif, transparent, table)) return false;
    sink.begin({.width = width, .height = height});
    return readRows(gif.get(), input, table, sink);
}

}  // namespace tavrin
