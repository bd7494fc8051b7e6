"""Files that are large, and files that nobody has opened for a long time."""

from . import contents
from .world import at

LARGE = 100 * 1024 * 1024


def large_files(world):
    """One, and one that only says so. Neither is large in the small home."""
    large = LARGE // 100 if world.small else LARGE
    world.filled_file(at("Documents", "Archive of 2011.tar"), large, age=2_000)
    world.sparse(at("Documents", "only says that it is large.img"), large)


def old_files(world):
    chance = world.random("old files")
    for number in range(world.several(24)):
        path = at("Pictures", "Scans", "Scan %03d.txt" % number)
        world.file(path, contents.prose(chance, 90), age=370 + 60 * number)
    world.file(at("Public", "long ago.txt"), "nobody reads this\n", age=3_000)
    world.file(at("Public", "long ago, but read.txt"), "somebody reads this\n", age=3_000, last_use=10)
    world.file(at("Public", "a year less a day.txt"), "not yet\n", age=363)
    world.file(at("Public", ".hidden and old.txt"), "unseen\n", age=3_000)
