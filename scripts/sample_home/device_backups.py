"""Backups of phones and tablets."""

import datetime

from . import contents
from .world import at

BACKUPS = at("Library", "Application Support", "MobileSync", "Backup")
# Name, model, day.
DEVICES = (
    ("Ana\u2019s iPhone", "iPhone 13", datetime.datetime(2026, 9, 30, 8, 15)),
    ("iPad de la cocina", "iPad Air", datetime.datetime(2024, 2, 29, 21, 0)),
    ("Old phone", "iPhone SE", datetime.datetime(2019, 12, 31, 23, 59)),
)


def backups(world):
    for number, (name, model, day) in enumerate(DEVICES):
        chance = world.random("backup of " + name)
        folder = at(BACKUPS, "%040x" % chance.getrandbits(160))
        info = {"Device Name": name, "Display Name": name, "Product Name": model, "Last Backup Date": day}
        info["Applications"] = {"org.example.app-%d" % i: {"PlaceholderIcon": chance.randbytes(9_000)} for i in range(9)}
        status = {"Date": day, "IsFullBackup": number == 0, "Version": "3.3"}
        world.file(at(folder, "Info.plist"), contents.property_list(info, binary=number == 1))
        world.file(at(folder, "Status.plist"), contents.property_list(status, binary=number != 1))
        world.file(at(folder, "Manifest.db"), b"SQLite format 3\0" + chance.randbytes(40_000))
        files(world, folder, chance, world.several(80))


def damaged(world):
    chance = world.random("damaged backups")
    bare = at(BACKUPS, "%040x" % chance.getrandbits(160))
    files(world, bare, chance, world.several(16))
    broken = at(BACKUPS, "00008110-000A1B2C3D4E5F60")
    world.file(at(broken, "Info.plist"), b"bplist00" + chance.randbytes(400))
    world.file(at(broken, "Status.plist"), contents.property_list({"Date": "yesterday"}))
    files(world, broken, chance, world.several(16))
    # Not backups.
    world.folder(at(BACKUPS, "%040x" % chance.getrandbits(160)))
    world.file(at(BACKUPS, "loose file"), 3_000)
    world.file(at(BACKUPS, ".hidden", "ab", "file"), 3_000)


def files(world, folder, chance, count):
    """Named by their hashes, in folders by the first two digits."""
    for _ in range(count):
        name = "%040x" % chance.getrandbits(160)
        world.file(at(folder, name[:2], name), contents.size_of_a_file(chance, 20_000, 300_000))
