#include "Support/Pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace tavrin::test {
namespace {

using Random = std::mt19937;

double between(Random& random, double least, double most) {
    return least + (most - least) * static_cast<double>(random()) / static_cast<double>(Random::max());
}

std::uint8_t byte(double value) {
    return static_cast<std::uint8_t>(std::clamp(value + 0.5, 0.0, 255.0));
}

struct Colour {
    std::array<double, 3> parts{};
};

Colour anyColour(Random& random) {
    return {{between(random, 10, 245), between(random, 10, 245), between(random, 10, 245)}};
}

/// Smooth noise: a grid of random values with straight lines between them.
class Noise {
  public:
    Noise(Random& random, double strength) {
        for (double& value : values_)
            value = between(random, -strength, strength);
    }
    /// Both from 0 to 1.
    [[nodiscard]] double at(double x, double y) const {
        const double column = x * (kSide - 1.001);
        const double row = y * (kSide - 1.001);
        const auto i = static_cast<std::size_t>(column);
        const auto j = static_cast<std::size_t>(row);
        const double right = column - static_cast<double>(i);
        const double below = row - static_cast<double>(j);
        const double* here = values_.data() + j * kSide + i;
        return (here[0] * (1 - right) + here[1] * right) * (1 - below) +
               (here[kSide] * (1 - right) + here[kSide + 1] * right) * below;
    }

  private:
    static constexpr std::size_t kSide = 12;
    std::array<double, kSide * kSide> values_{};
};

/// An ellipse of one colour that fades into what is behind it.
struct Shape {
    double x;
    double y;
    double width;
    double height;
    Colour colour;

    [[nodiscard]] double strengthAt(double atX, double atY) const {
        const double dx = (atX - x) / width;
        const double dy = (atY - y) / height;
        return std::clamp(3 * (1 - dx * dx - dy * dy), 0.0, 1.0);
    }
};

std::vector<Shape> anyShapes(Random& random) {
    std::vector<Shape> shapes;
    for (auto left = 2 + random() % 5; left > 0; --left) {
        shapes.push_back({between(random, 0, 1), between(random, 0, 1), between(random, 0.05, 0.35),
                          between(random, 0.05, 0.35), anyColour(random)});
    }
    return shapes;
}

}  // namespace

ColourPicture drawnScene(unsigned number, std::size_t width, std::size_t height) {
    Random random(number + 1);
    const Colour from = anyColour(random);
    const Colour to = anyColour(random);
    const double slant = between(random, -1, 1);
    const Noise noise(random, between(random, 20, 90));
    const std::vector<Shape> shapes = anyShapes(random);
    ColourPicture picture{.width = width, .height = height, .rgb = std::vector<std::uint8_t>(3 * width * height)};
    for (std::size_t j = 0; j < height; ++j) {
        for (std::size_t i = 0; i < width; ++i) {
            const double x = (static_cast<double>(i) + 0.5) / static_cast<double>(width);
            const double y = (static_cast<double>(j) + 0.5) / static_cast<double>(height);
            const double light = std::clamp(y + slant * (x - 0.5), 0.0, 1.0);
            // Grain comes from the place, not from the generator: a picture of another size has the same scene.
            const double grain = static_cast<double>((i * 7919 + j * 104'729) % 17) - 8;
            const double hills = noise.at(x, y) + grain;
            std::array<double, 3> colour{};
            for (std::size_t k = 0; k < 3; ++k)
                colour[k] = from.parts[k] * (1 - light) + to.parts[k] * light + hills;
            for (const Shape& shape : shapes) {
                const double strength = shape.strengthAt(x, y);
                for (std::size_t k = 0; strength > 0 && k < 3; ++k)
                    colour[k] = colour[k] * (1 - strength) + (shape.colour.parts[k] + hills / 2) * strength;
            }
            std::transform(colour.begin(), colour.end(), picture.at(i, j), byte);
        }
    }
    return picture;
}

ColourPicture uniform(std::uint8_t grey, std::size_t width, std::size_t height) {
    return {.width = width, .height = height, .rgb = std::vector<std::uint8_t>(3 * width * height, grey)};
}

ColourPicture storedFor(unsigned orientation, const ColourPicture& upright) {
    const bool isTurned = orientation >= 5;
    ColourPicture stored{.width = isTurned ? upright.height : upright.width,
                         .height = isTurned ? upright.width : upright.height,
                         .rgb = std::vector<std::uint8_t>(upright.rgb.size())};
    const std::size_t right = upright.width - 1;
    const std::size_t bottom = upright.height - 1;
    for (std::size_t y = 0; y < upright.height; ++y) {
        for (std::size_t x = 0; x < upright.width; ++x) {
            // Where Exif 2.3 says that row 0 and column 0 of the stored picture are seen, one by one.
            const std::array<std::array<std::size_t, 2>, 9> places{{{x, y},
                                                                    {x, y},
                                                                    {right - x, y},
                                                                    {right - x, bottom - y},
                                                                    {x, bottom - y},
                                                                    {y, x},
                                                                    {y, right - x},
                                                                    {bottom - y, right - x},
                                                                    {bottom - y, x}}};
            const auto [column, row] = places.at(orientation);
            std::copy_n(upright.at(x, y), 3, stored.at(column, row));
        }
    }
    return stored;
}

ColourPicture shrunk(const ColourPicture& picture, std::size_t factor) {
    ColourPicture small{.width = picture.width / factor, .height = picture.height / factor};
    small.rgb.resize(3 * small.width * small.height);
    for (std::size_t y = 0; y < small.height; ++y) {
        for (std::size_t x = 0; x < small.width; ++x) {
            for (std::size_t k = 0; k < 3; ++k) {
                unsigned sum = 0;
                for (std::size_t j = 0; j < factor; ++j) {
                    for (std::size_t i = 0; i < factor; ++i)
                        sum += picture.at(x * factor + i, y * factor + j)[k];
                }
                small.at(x, y)[k] = static_cast<std::uint8_t>(sum / (factor * factor));
            }
        }
    }
    return small;
}

}  // namespace tavrin::test
