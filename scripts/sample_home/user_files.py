"""The owner's own files. No cleaning may touch any of them unless the owner picks it."""

from . import contents
from .names import APPS
from .world import at

YEARS = ("2019", "2021", "2023", "2024", "2025", "2026")
TOPICS = ("Taxes", "House", "Letters", "Recipes", "School", "Travel plans")


def documents(world):
    for topic in TOPICS:
        chance = world.random("documents on " + topic)
        for number in range(world.several(60)):
            path = at("Documents", topic, chance.choice(YEARS), "%s %03d.txt" % (topic, number))
            world.file(path, contents.prose(chance, chance.randrange(20, 1500)))
    contract = b"%PDF-1.7\n" + world.bytes_for(b"contract", 240_000)
    world.file(at("Documents", "Contract (signed).pdf"), contract, mode=0o400)
    world.file(at("Documents", "Caches", "a folder of mine with this name.txt"), "Not a cache.\n")


def pictures_music_and_films(world):
    chance = world.random("media")
    for number in range(world.several(150)):
        path = at("Pictures", chance.choice(YEARS), "IMG_%04d.JPG" % number)
        world.file(path, b"\xff\xd8\xff\xe0" + chance.randbytes(contents.size_of_a_file(chance, 30_000, 800_000)))
    library = at("Pictures", "Photos Library.photoslibrary")
    for number in range(world.several(60)):
        world.file(at(library, "originals", "%X" % (number % 16), "%08X.heic" % chance.getrandbits(32)), 22_000)
    world.file(at(library, "database", "Photos.sqlite"), 300_000)
    for number in range(world.several(70)):
        album = "Album %d" % (number // 10 + 1)
        world.file(at("Music", "The Lamplighters", album, "%02d Song.m4a" % (number % 10 + 1)), 60_000)
    for name in ("Holiday.mov", "Graduation.mp4", "Untitled.mov"):
        world.file(at("Movies", name), 200_000 if world.small else 4_000_000)


def desktop_downloads_and_public(world):
    chance = world.random("desktop and downloads")
    for number in range(world.several(24)):
        world.file(at("Desktop", "note %d.txt" % number), contents.prose(chance, 60))
    for number in range(world.several(40)):
        suffix = chance.choice(("pdf", "dmg", "zip", "docx", "csv"))
        size = contents.size_of_a_file(chance, 50_000, 2_000_000)
        world.file(at("Downloads", "download-%02d.%s" % (number, suffix)), size, age=7 * number)
    world.file(at("Public", "For the neighbours.txt"), "The bins go out on Tuesday.\n")
    world.folder(at("Public", "Drop Box"), mode=0o733)


def library_of_apps(world):
    for identifier, name in APPS:
        chance = world.random("library of " + identifier)
        support = at("Library", "Application Support", name)
        world.file(at(support, "settings.json"), '{"name": "%s", "launches": %d}\n' % (name, chance.randrange(900)))
        world.file(at(support, "Licence.key"), "%032X\n" % chance.getrandbits(128), mode=0o600)
        for number in range(world.several(7)):
            world.file(at(support, "Data", "record-%02d.db" % number), contents.size_of_a_file(chance, 9_000, 300_000))
        preferences = at("Library", "Preferences", identifier + ".plist")
        world.file(preferences, contents.property_list({"first": name}, binary=True))
    for number in range(world.several(60)):
        name = "com.apple.part-%02d.plist" % number
        world.file(at("Library", "Preferences", name), contents.property_list({"value": number}))


def secrets_and_mail(world):
    chance = world.random("secrets and mail")
    world.folder(at("Library", "Keychains"), mode=0o700)
    world.file(at("Library", "Keychains", "login.keychain-db"), b"kych" + chance.randbytes(60_000), mode=0o600)
    world.file(at("Library", "Keychains", "metadata.keychain-db"), b"kych" + chance.randbytes(9_000), mode=0o600)
    for number in range(world.several(140)):
        box = at("Library", "Mail", "V10", "account-1", chance.choice(("INBOX.mbox", "Sent.mbox")), "Messages")
        world.file(at(box, "%d.emlx" % number), "Subject: %d\n\n" % number + contents.prose(chance, 80))
    world.folder(at(".ssh"), mode=0o700)
    world.file(at(".ssh", "id_ed25519"), "not a key, only a sample\n", mode=0o600)
    world.file(at(".zshrc"), "export EDITOR=nano\n")
    world.file(at(".local", "share", "papermill", "state.json"), "{}\n")
