"""Pictures and films of the screen, as systems in English and in Spanish name them."""

from . import contents
from .world import at

DESKTOP = at("Desktop")
CHOSEN = at("Pictures", "Capturas")
PICTURE = b"\x89PNG\r\n\x1a\n"


def desktop(world):
    chance = world.random("screenshots")
    for number in range(world.several(24)):
        english = "Screenshot 2026-%02d-%02d at 10.%02d.00.png" % (number % 10 + 1, number % 28 + 1, number)
        spanish = "Captura de pantalla 2025-%02d-%02d a las 9.%02d.00.png" % (number % 12 + 1, number % 28 + 1, number)
        for age, name in ((3 * number, english), (300 + 3 * number, spanish)):
            world.file(at(DESKTOP, name), picture(chance), age=age)
    world.file(at(DESKTOP, "Screen Recording 2026-05-04 at 18.00.00.mov"), 300_000, age=180)
    world.file(at(DESKTOP, "Grabación de pantalla 2025-05-04 a las 18.00.00.mov"), 250_000, age=540)
    world.file(at(DESKTOP, "Grabacion de pantalla.MOV"), 90_000)
    world.file(at(DESKTOP, "Grabacio\u0301n de pantalla, accent apart.mov"), 80_000)
    world.file(at(DESKTOP, "SCREENSHOT OLD.JPG"), 40_000)
    world.file(at(DESKTOP, "Screenshot parts.png", "one.png"), 20_000)
    # None of them.
    world.file(at(DESKTOP, "My screenshot.png"), picture(chance))
    world.file(at(DESKTOP, "Screenshot notes.txt"), "what I wanted to show\n")
    world.file(at(DESKTOP, "Screen Recording.mp4"), 60_000)
    world.file(at(DESKTOP, ".Screenshot hidden.png"), picture(chance))
    world.file(at(DESKTOP, "shots", "Screenshot in a folder.png"), picture(chance))


def chosen_folder(world):
    """Set in the preferences of the Mac, and in the settings of a Linux desktop."""
    chance = world.random("chosen folder for screenshots")
    for number in range(world.several(16)):
        name = "Screenshot 2026-%02d-%02d at 12.00.00 (%d).png" % (number % 10 + 1, number % 28 + 1, number)
        world.file(at(CHOSEN, name), picture(chance), age=5 * number)
    world.file(at(CHOSEN, "holiday.png"), picture(chance))
    preferences = contents.property_list({"location": "~/Pictures/Capturas", "type": "png"}, binary=True)
    world.file(at("Library", "Preferences", "com.apple.screencapture.plist"), preferences)
    world.file(at(".config", "spectaclerc"), "[ImageSave]\nimageSaveLocation[$e]=file://$HOME/Pictures/Capturas\n")


def picture(chance):
    return PICTURE + chance.randbytes(contents.size_of_a_file(chance, 40_000, 500_000))
