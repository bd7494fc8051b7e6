#include "Support/Photographs.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string_view>

namespace tavrin::test {
namespace {

using Random = std::mt19937;

/// Both ends are among them.
std::size_t between(Random& random, std::size_t least, std::size_t most) {
    return least + random() % (most - least + 1);
}

ColourPicture part(const ColourPicture& whole, std::size_t left, std::size_t top, std::size_t width,
                   std::size_t height) {
    ColourPicture picture{.width = width, .height = height, .rgb = {}};
    picture.rgb.reserve(3 * width * height);
    for (std::size_t y = top; y < top + height; ++y)
        picture.rgb.insert(picture.rgb.end(), whole.at(left, y), whole.at(left, y) + 3 * width);
    return picture;
}

/// What is seen of a stored picture: the way back from `storedFor`. Only the quarter turns aren't their own.
ColourPicture upright(unsigned orientation, const ColourPicture& stored) {
    return storedFor(orientation == 6 ? 8 : orientation == 8 ? 6 : orientation, stored);
}

unsigned seedOf(const Photograph& photograph) {
    const std::string_view path = photograph.path;
    std::seed_seq letters(path.begin(), path.end());
    return static_cast<unsigned>(Random(letters)());
}

}  // namespace

void PrintTo(const Photograph& photograph, std::ostream* out) {
    *out << photograph.path;
}

std::string nameOf(const Photograph& photograph) {
    std::string name = std::filesystem::path(photograph.path).stem();
    std::erase_if(name, [](char letter) { return letter == '_'; });
    return name;
}

std::string fileOf(const Photograph& photograph) {
    const std::filesystem::path path = std::filesystem::path("/usr/share/backgrounds") / photograph.path;
    std::ifstream file(path, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    if (bytes.empty())
        throw std::runtime_error(path.string() + " isn't there: the Debian package " + photograph.package +
                                 " brings it (scripts/install-packages test).");
    return bytes;
}

ShotMaker::ShotMaker(const Photograph& photograph)
    : seed_(seedOf(photograph)), file_(fileOf(photograph)), whole_(plainlyDecoded(file_)) {}

Shot ShotMaker::shot(unsigned number) const {
    if (number > 0) return cut(number);
    return {.description = "the photograph itself", .jpeg = file_, .seen = whole_};
}

Shot ShotMaker::cut(unsigned number) const {
    Random random(seed_ + number);
    const std::size_t least = std::min(whole_.width, whole_.height);
    // Most are small, which is quick.
    const std::size_t longest = number % 10 == 1 ? between(random, 1'700, 2'400) : between(random, 800, 1'250);
    const std::size_t shortest = longest * between(random, 50, 100) / 100;
    const std::size_t factor = number % 4 == 2 && least >= 1'600 ? between(random, 2, least / 800) : 1;
    const bool isOnItsSide = between(random, 0, 1) == 1;
    const std::size_t width = std::min(factor * (isOnItsSide ? shortest : longest), whole_.width);
    const std::size_t height = std::min(factor * (isOnItsSide ? longest : shortest), whole_.height);
    const std::size_t left = between(random, 0, whole_.width - width);
    const std::size_t top = between(random, 0, whole_.height - height);
    ColourPicture picture = part(whole_, left, top, width, height);
    if (factor > 1) picture = shrunk(picture, factor);
    JPEGForm form{.quality = static_cast<int>(between(random, 60, 98)), .isProgressive = number % 3 == 0};
    if (number % 5 == 4) form.orientation = static_cast<unsigned>(between(random, 2, 8));
    Shot shot{.description = "cut " + std::to_string(number), .jpeg = asJPEG(picture, form), .seen = {}};
    shot.seen = plainlyDecoded(shot.jpeg);
    if (form.orientation > 0) shot.seen = upright(form.orientation, shot.seen);
    return shot;
}

}  // namespace tavrin::test
