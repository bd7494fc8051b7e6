"""What piles up in Downloads."""

from . import contents
from .world import at

DOWNLOADS = at("Downloads")


def installers(world):
    chance = world.random("installers")
    suffixes = ("dmg", "pkg", "iso", "zip", "tar.gz", "tar", "tgz", "rar", "DMG")
    for number in range(world.several(2 * len(suffixes))):
        name = "%s %d.%s" % (chance.choice(contents.WORDS).capitalize(), number, suffixes[number % len(suffixes)])
        world.file(at(DOWNLOADS, name), contents.size_of_a_file(chance, 80_000, 900_000), age=40 * number)
    world.file(at(DOWNLOADS, "came today.dmg"), 120_000, age=0)
    world.file(at(DOWNLOADS, "nothing in it.dmg"), b"")
    world.file(at(DOWNLOADS, ".half of it.zip"), 30_000)
    # Folders are left alone, whatever they are called and however old they are.
    world.file(at(DOWNLOADS, "unpacked.zip", "inside.zip"), 9_000, age=900)
    world.file(at(DOWNLOADS, "Old App.app", "Contents", "MacOS", "Old App"), 30_000, mode=0o755, age=900)
    world.link(at(DOWNLOADS, "elsewhere.zip"), "../Documents/Contract (signed).pdf")


def documents(world):
    chance = world.random("downloaded documents")
    for number in range(world.several(24)):
        name = "%s %d.pdf" % (chance.choice(contents.WORDS), number)
        contents_of_it = b"%PDF-1.7\n" + chance.randbytes(contents.size_of_a_file(chance, 30_000, 200_000))
        world.file(at(DOWNLOADS, name), contents_of_it, age=20 * number)
    world.file(at(DOWNLOADS, "old but read lately.pdf"), 30_000, age=900, last_use=5)
    world.file(at(DOWNLOADS, "eighty-nine days.txt"), "still there\n", age=88)
    world.file(at(DOWNLOADS, "ninety-one days.txt"), "still there\n", age=91)
