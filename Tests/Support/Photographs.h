// Real photographs, which no package of the program brings: those of two packages of desktop backgrounds.
#pragma once

#include "Support/Pictures.h"

#include <array>
#include <ostream>
#include <string>
#include <vector>

namespace tavrin::test {

struct Photograph {
    const char* package;
    /// Of a JPEG below the folder in which systems keep backgrounds.
    const char* path;
};

/// Landscapes, animals, plants, rooms; by day and by night, sharp and blurred, from 1 to 16 megapixels.
inline constexpr std::array<Photograph, 25> kPhotographs{{
    {"lomiri-wallpapers-16.04", "aitzgorri_by_Aitzol_Berasategi.jpg"},
    {"lomiri-wallpapers-16.04", "Bridge_by_Sander_Klootwijk.jpg"},
    {"lomiri-wallpapers-16.04", "Dragonfly_by_Bolly.jpg"},
    {"lomiri-wallpapers-16.04", "free_by_Peter_Nerlich.jpg"},
    {"lomiri-wallpapers-16.04", "friends_by_Aitzol_Berasategi.jpg"},
    {"lomiri-wallpapers-16.04", "greentock_by_Peter_Nerlich.jpg"},
    {"lomiri-wallpapers-16.04", "life_by_Aitzol_Berasategi.jpg"},
    {"lomiri-wallpapers-16.04", "picosdeeuropa_by_Aitzol_Berasategi.jpg"},
    {"lomiri-wallpapers-16.04", "Picture_0B_by_freespace.jpg"},
    {"lomiri-wallpapers-16.04", "Picture_1A_by_freespace.jpg"},
    {"lomiri-wallpapers-16.04", "seeding_by_Clements_Engelhardt.jpg"},
    {"lomiri-wallpapers-16.04", "sunset_by_Aitzol_Berasategi.jpg"},
    {"lomiri-wallpapers-16.04", "Wine_by_Jakkub_Mede.jpg"},
    {"mate-backgrounds", "mate/nature/Aqua.jpg"},
    {"mate-backgrounds", "mate/nature/Blinds.jpg"},
    {"mate-backgrounds", "mate/nature/Dune.jpg"},
    {"mate-backgrounds", "mate/nature/FreshFlower.jpg"},
    {"mate-backgrounds", "mate/nature/Garden.jpg"},
    {"mate-backgrounds", "mate/nature/GreenMeadow.jpg"},
    {"mate-backgrounds", "mate/nature/LadyBird.jpg"},
    {"mate-backgrounds", "mate/nature/RainDrops.jpg"},
    {"mate-backgrounds", "mate/nature/Storm.jpg"},
    {"mate-backgrounds", "mate/nature/TwoWings.jpg"},
    {"mate-backgrounds", "mate/nature/Wood.jpg"},
    {"mate-backgrounds", "mate/nature/YellowFlower.jpg"},
}};

void PrintTo(const Photograph& photograph, std::ostream* out);
/// Letters and digits alone, as the names of tests must be.
[[nodiscard]] std::string nameOf(const Photograph& photograph);
/// Throws, and says which package is missing, when it isn't there.
[[nodiscard]] std::string fileOf(const Photograph& photograph);

/// A JPEG as somebody else might have taken it there, and what a person sees of it.
struct Shot {
    std::string description;
    std::string jpeg;
    /// Every pixel decoded, upright.
    ColourPicture seen;
};

/// The photograph itself, then cuts out of it: anywhere in it, upright and on their side, of 800 pixels and more, some
/// scaled down, some turned by Exif's orientation, of many qualities. The same in every run. Numbers from 0.
class ShotMaker {
  public:
    explicit ShotMaker(const Photograph& photograph);
    [[nodiscard]] Shot shot(unsigned number) const;

  private:
    [[nodiscard]] Shot cut(unsigned number) const;

    unsigned seed_;
    std::string file_;
    ColourPicture whole_;
};

}  // namespace tavrin::test
