"""Pictures and films of the screen, as systems in English and in Spanish name them."""

import math

from . import contents
from .photographs import Drawing
from .world import at

DESKTOP = at("Desktop")
CHOSEN = at("Pictures", "Capturas")


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
    """Some windows on a desktop. Not packed, which makes it as large as such files are."""
    size = contents.size_of_a_file(chance, 40_000, 500_000)
    width = max(160, int(math.sqrt(size / 3 * 1.6)))
    height = width * 10 // 16
    across = background(chance, width)
    rows = []
    for y in range(height):
        darker = bytes(value * (height + y) // (2 * height) for value in range(256))
        rows.append(bytearray(across.translate(darker)))
    fill(rows, 0, 0, width, height // 30 + 1, b"\x1e\x1e\x22")
    for _ in range(chance.randrange(1, 4)):
        window(chance, rows, width, height)
    return Drawing(width, height, [bytes(row) for row in rows]).png(level=0)


def background(chance, width):
    """One row of it: light that comes and goes from the left to the right, so that no two look alike."""
    parts = 8
    base = colour(chance, 50, 170)
    lights = []
    for _ in range(parts + 1):
        share = chance.randrange(40, 150)
        lights.append([value * share // 100 for value in base])
    row = bytearray()
    for x in range(width):
        part, rest = divmod(x * parts / width, 1)
        row += bytes(int(a + (b - a) * rest) for a, b in zip(lights[int(part)], lights[int(part) + 1]))
    return bytes(row)


def window(chance, rows, width, height):
    left, top = chance.randrange(width // 2), chance.randrange(height // 12, height // 2)
    right = chance.randrange(left + width // 4, width)
    bottom = chance.randrange(top + height // 4, height)
    fill(rows, left, top, right, bottom, colour(chance, 225, 255))
    fill(rows, left, top, right, top + height // 20 + 1, colour(chance, 120, 200))
    line = height // 30 + 2
    for y in range(top + 3 * line, bottom - line, 2 * line):
        end = chance.randrange(left + width // 8, right)
        fill(rows, left + width // 40, y, end, y + line // 2, b"\x60\x64\x70")


def colour(chance, least, most):
    return bytes(chance.randrange(least, most) for _ in range(3))


def fill(rows, left, top, right, bottom, colour_of_it):
    for row in rows[top:bottom]:
        row[3 * left : 3 * right] = colour_of_it * max(0, right - left)
