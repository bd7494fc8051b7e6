// The library's own writer, and the boxes of a grid around what it wrote (ISO/IEC 14496-12 and 23008-12).
#include "Support/Pictures.h"

#include <libheif/heif.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace tavrin::test {
namespace {

void require(const heif_error& error, const char* what) {
    if (error.code != heif_error_Ok) throw std::runtime_error(what);
}

struct Free {
    void operator()(heif_context* context) const { ::heif_context_free(context); }
    void operator()(heif_encoder* encoder) const { ::heif_encoder_release(encoder); }
    void operator()(heif_image* image) const { ::heif_image_release(image); }
    void operator()(heif_encoding_options* options) const { ::heif_encoding_options_free(options); }
    void operator()(heif_color_profile_nclx* profile) const { ::heif_nclx_color_profile_free(profile); }
};
template <class Thing>
using Owned = std::unique_ptr<Thing, Free>;

Owned<heif_image> imageOf(const ColourPicture& picture) {
    heif_image* image = nullptr;
    const auto width = static_cast<int>(picture.width);
    const auto height = static_cast<int>(picture.height);
    require(::heif_image_create(width, height, heif_colorspace_RGB, heif_chroma_interleaved_RGB, &image),
            "heif_image_create");
    Owned<heif_image> owned(image);
    require(::heif_image_add_plane(image, heif_channel_interleaved, width, height, 8), "heif_image_add_plane");
    int stride = 0;
    std::uint8_t* plane = ::heif_image_get_plane(image, heif_channel_interleaved, &stride);
    for (std::size_t y = 0; y < picture.height; ++y)
        std::copy_n(picture.at(0, y), 3 * picture.width, plane + y * static_cast<std::size_t>(stride));
    return owned;
}

std::string bigEndian(std::size_t value, unsigned count) {
    std::string bytes;
    for (unsigned i = count; i > 0; --i)
        bytes.push_back(static_cast<char>(value >> (8 * (i - 1))));
    return bytes;
}
std::string four(std::size_t value) {
    return bigEndian(value, 4);
}
std::string two(std::size_t value) {
    return bigEndian(value, 2);
}
std::string box(std::string_view type, std::initializer_list<std::string_view> parts) {
    std::string content;
    for (const std::string_view part : parts)
        content += part;
    return four(8 + content.size()).append(type) + content;
}

/// The first box of this type, wherever it is; with its head.
std::string boxIn(const std::string& file, std::string_view type) {
    const std::size_t at = file.find(type);
    if (at == std::string::npos || at < 4) throw std::runtime_error("no such box");
    std::size_t size = 0;
    for (std::size_t i = at - 4; i < at; ++i)
        size = size << 8U | static_cast<unsigned char>(file[i]);
    return file.substr(at - 4, size);
}

/// Item 1 is the grid, the others are its tiles.
struct Grid {
    std::uint16_t columns;
    std::uint16_t rows;
    std::size_t tileWidth;
    std::size_t tileHeight;
    std::string configuration;
    std::string tileData;

    [[nodiscard]] std::size_t tiles() const { return std::size_t{columns} * rows; }
    [[nodiscard]] std::string data() const {
        return std::string("\0\0", 2) + bigEndian(rows - 1U, 1) + bigEndian(columns - 1U, 1) +
               two(columns * tileWidth) + two(rows * tileHeight);
    }

    [[nodiscard]] std::string items() const {
        const auto entry = [](std::size_t item, std::string_view type) {
            return box("infe", {four(0x0200'0000), two(item), two(0), type, std::string_view("\0", 1)});
        };
        std::string entries = entry(1, "grid");
        for (std::size_t i = 0; i < tiles(); ++i)
            entries += entry(2 + i, "hvc1");
        return box("iinf", {four(0), two(1 + tiles()), entries});
    }

    [[nodiscard]] std::string references() const {
        std::string to;
        for (std::size_t i = 0; i < tiles(); ++i)
            to += two(2 + i);
        return box("iref", {four(0), box("dimg", {two(1), two(tiles()), to})});
    }

    [[nodiscard]] std::string properties() const {
        const auto extent = [](std::size_t width, std::size_t height) {
            return box("ispe", {four(0), four(width), four(height)});
        };
        std::string ofItems = two(1) + std::string("\x01\x03", 2);
        for (std::size_t i = 0; i < tiles(); ++i)
            ofItems += two(2 + i) + std::string("\x02\x81\x02", 3);
        return box("iprp", {box("ipco", {configuration, extent(tileWidth, tileHeight),
                                         extent(columns * tileWidth, rows * tileHeight)}),
                            box("ipma", {four(0), four(1 + tiles()), ofItems})});
    }

    /// `begin` is where the data of the grid stands in the file; that of the one tile is behind it.
    [[nodiscard]] std::string places(std::size_t begin) const {
        const auto place = [](std::size_t item, std::size_t offset, std::size_t length) {
            return two(item) + two(0) + two(0) + two(1) + four(offset) + four(length);
        };
        std::string entries = place(1, begin, data().size());
        for (std::size_t i = 0; i < tiles(); ++i)
            entries += place(2 + i, begin + data().size(), tileData.size());
        return box("iloc", {four(0x0100'0000), std::string_view("\x44\0", 2), two(1 + tiles()), entries});
    }

    [[nodiscard]] std::string head(std::size_t begin) const {
        const std::string handler =
            box("hdlr", {four(0), four(0), "pict", std::string(12, '\0'), std::string_view("\0", 1)});
        return box("ftyp", {"heic", four(0), "mif1heic"}) +
               box("meta", {four(0), handler, box("pitm", {four(0), two(1)}), items(), references(), properties(),
                            places(begin)});
    }

    [[nodiscard]] std::string file() const {
        // A place is as long whatever it says.
        const std::size_t begin = head(0).size() + 8;
        return head(begin) + box("mdat", {data(), tileData});
    }
};

}  // namespace

std::string asHEIC(const ColourPicture& picture, unsigned orientation, HEICColours colours) {
    const Owned<heif_context> context(::heif_context_alloc());
    heif_encoder* found = nullptr;
    require(::heif_context_get_encoder_for_format(context.get(), heif_compression_HEVC, &found), "no encoder of HEIC");
    const Owned<heif_encoder> encoder(found);
    ::heif_encoder_set_lossy_quality(found, 90);
    ::heif_encoder_set_parameter_string(found, "preset", "ultrafast");
    const Owned<heif_encoding_options> options(::heif_encoding_options_alloc());
    options->image_orientation = static_cast<heif_orientation>(orientation);
    const Owned<heif_image> image = imageOf(picture);
    const Owned<heif_color_profile_nclx> profile(::heif_nclx_color_profile_alloc());
    if (colours == HEICColours::video) {
        profile->matrix_coefficients = heif_matrix_coefficients_ITU_R_BT_709_5;
        profile->full_range_flag = 0;
        options->macOS_compatibility_workaround_no_nclx_profile = 0;
        require(::heif_image_set_nclx_color_profile(image.get(), profile.get()), "heif_image_set_nclx_color_profile");
    }
    require(::heif_context_encode_image(context.get(), image.get(), found, options.get(), nullptr),
            "heif_context_encode_image");
    std::string bytes;
    heif_writer writer{};
    writer.writer_api_version = 1;
    writer.write = [](heif_context*, const void* data, std::size_t size, void* to) {
        static_cast<std::string*>(to)->append(static_cast<const char*>(data), size);
        return heif_error{heif_error_Ok, heif_suberror_Unspecified, nullptr};
    };
    require(::heif_context_write(context.get(), &writer, &bytes), "heif_context_write");
    return bytes;
}

std::string asTiledHEIC(const ColourPicture& tile, std::uint16_t columns, std::uint16_t rows) {
    const std::string file = asHEIC(tile);
    const Grid grid{.columns = columns,
                    .rows = rows,
                    .tileWidth = tile.width,
                    .tileHeight = tile.height,
                    .configuration = boxIn(file, "hvcC"),
                    .tileData = boxIn(file, "mdat").substr(8)};
    return grid.file();
}

}  // namespace tavrin::test

/// LeakSanitizer asks for this by its name. The encoder of HEIC pictures, which the program itself never calls, keeps
/// some of its memory at the end.
extern "C" const char* __lsan_default_suppressions();   // NOLINT(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
    return "leak:libx265\n";
}
