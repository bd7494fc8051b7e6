// What hashing pictures costs, beside the codecs' libraries called straight; and what grouping the hashes costs.
//
//   SimilarImagesBenchmark [--large] [FOLDER]   makes its pictures in FOLDER (the current one) and keeps them; --large:
//   3,000 of 2 to 12 megapixels instead of 60.
#include "Measuring.h"
#include "PictureFloor.h"
#include "TavrinCore/Scanning/PerceptualHash.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>
// After cstdio, whose types it uses without including it.
#include <jpeglib.h>
#include <png.h>

namespace {

using namespace tavrin;
using namespace tavrin::benchmarks;
namespace fs = std::filesystem;

constexpr int kUsual = 60;
constexpr int kLarge = 3'000;
constexpr std::size_t kHashes = 100'000;

void require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

/// One row of a picture that is as hard to code as a photograph: slow waves and grain.
void drawRow(std::vector<unsigned char>& row, std::size_t y, unsigned number, std::mt19937& random) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        const auto x = static_cast<double>(i / 3);
        const double wave =
            std::sin(x / (90.0 + number % 50)) + std::cos(static_cast<double>(y) / (70.0 + number % 40));
        row[i] = static_cast<unsigned char>(110 + 45 * wave + static_cast<double>(random() % 24));
    }
}

void writeJPEG(std::FILE* file, unsigned number, unsigned width, unsigned height) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = ::jpeg_std_error(&errors);
    ::jpeg_create_compress(&info);
    ::jpeg_stdio_dest(&info, file);
    info.image_width = width;
    info.image_height = height;
    info.input_components = 3;
    info.in_color_space = JCS_RGB;
    ::jpeg_set_defaults(&info);
    ::jpeg_set_quality(&info, 88, TRUE);
    if (number % 10 == 0) ::jpeg_simple_progression(&info);
    ::jpeg_start_compress(&info, TRUE);
    std::mt19937 random(number);
    std::vector<unsigned char> row(std::size_t{3} * width);
    while (info.next_scanline < height) {
        drawRow(row, info.next_scanline, number, random);
        JSAMPROW start = row.data();
        ::jpeg_write_scanlines(&info, &start, 1);
    }
    ::jpeg_finish_compress(&info);
    ::jpeg_destroy_compress(&info);
}

void writePNG(std::FILE* file, unsigned number, unsigned width, unsigned height) {
    png_structp png = ::png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop information = ::png_create_info_struct(png);
    ::png_init_io(png, file);
    ::png_set_IHDR(png, information, width, height, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                   PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    ::png_set_compression_level(png, 1);
    ::png_write_info(png, information);
    std::mt19937 random(number);
    std::vector<unsigned char> row(std::size_t{3} * width);
    for (unsigned y = 0; y < height; ++y) {
        drawRow(row, y, number, random);
        ::png_write_row(png, row.data());
    }
    ::png_write_end(png, nullptr);
    ::png_destroy_write_struct(&png, &information);
}

std::vector<std::string> pictures(const fs::path& folder, int count) {
    fs::create_directories(folder);
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) {
        const auto number = static_cast<unsigned>(i);
        const bool isPNG = i % 12 == 5;
        const std::string path = folder / (std::to_string(i) + (isPNG ? ".png" : ".jpg"));
        paths.push_back(path);
        if (fs::exists(path)) continue;
        const auto width = static_cast<unsigned>(1'632 + i % 8 * 338);
        std::FILE* file = std::fopen((path + ".part").c_str(), "wb");
        require(file != nullptr, "no place for pictures");
        (isPNG ? writePNG : writeJPEG)(file, number, width, width * 3 / 4);
        std::fclose(file);
        fs::rename(path + ".part", path);
    }
    return paths;
}

void hashing(const std::vector<std::string>& paths) {
    const auto hashAll = [&] {
        for (const std::string& path : paths)
            require(PerceptualHash::dHash(URL::fromPath(path)).has_value(), "a picture has no hash");
    };
    const auto floorAll = [&] {
        for (const std::string& path : paths)
            require(pictureFloor(path) > 0, "the floor can't read a picture");
    };
    const std::vector<Cost> least = leastCosts(3, {[&] { return costOf(hashAll); }, [&] { return costOf(floorAll); }});
    report("a picture, hashed", least[0].clock / static_cast<double>(paths.size()) * 1e3, "ms");
    report("a picture, floor", least[1].clock / static_cast<double>(paths.size()) * 1e3, "ms");
    report("hashing / floor, clock", least[0].clock / least[1].clock, "ratio", "<= 1.15");
    report("hashing / floor, processor", least[0].processor / least[1].processor, "ratio", "<= 1.15");
    report("peak memory of hashing", static_cast<double>(memoryGrowth(hashAll)) / 1024, "MiB", "< 120");
}

void grouping() {
    std::mt19937_64 random(1);  // NOLINT(cert-msc51-cpp): the same in every run
    std::vector<std::uint64_t> hashes(kHashes);
    for (std::uint64_t& hash : hashes)
        hash = random();
    const Cost cost = costOf([&] {
        // A threshold that nothing reaches: each is compared with all before it.
        SimilarGroups groups(-1);
        for (const std::uint64_t hash : hashes)
            (void)groups.add(hash);
        require(groups.count() == kHashes, "some hashes matched");
    });
    report("100,000 hashes without a match, grouped", cost.clock, "s", "<= 6");
}

}  // namespace

int main(int argc, char** argv) {
    bool isLarge = false;
    fs::path base = fs::current_path();
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) == "--large")
            isLarge = true;
        else
            base = fs::absolute(argv[i]);
    }
    hashing(pictures(base / "pictures", isLarge ? kLarge : kUsual));
    grouping();
    return 0;
}
