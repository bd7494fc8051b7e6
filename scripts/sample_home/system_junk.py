"""Caches, logs, crash reports, saved windows, and what the developer tools keep: all of it comes back by itself."""

from . import contents
from .names import APPS, DEVICES, PROJECTS, SYSTEM_PARTS
from .world import at

CACHES = at("Library", "Caches")


def app_caches(world):
    for identifier, _ in APPS:
        cache(world, at(CACHES, identifier), world.several(26))
    for identifier in SYSTEM_PARTS:
        cache(world, at(CACHES, identifier), world.several(20))


def cache(world, folder, files):
    """A request database, a flat store of blobs and a few nested ones."""
    chance = world.random(folder)
    world.file(at(folder, "Cache.db"), b"SQLite format 3\0" + chance.randbytes(4080))
    for number in range(files):
        images = "Images/%02x" % chance.randrange(6)
        kind = chance.choice(("fsCachedData", "fsCachedData", images, "WebKit/NetworkCache"))
        name = "%08X-%04X" % (chance.getrandbits(32), number)
        world.file(at(folder, kind, name), contents.size_of_a_file(chance, 14_000, 1_500_000))


def odd_caches(world):
    """What isn't a folder with files in it."""
    world.file(at(CACHES, "loose file.cache"), 9_000)
    world.file(at(CACHES, "empty file"), b"")
    for number in range(4):
        world.folder(at(CACHES, "com.example.empty-%d" % number))
    world.folder(at(CACHES, "com.example.empty-inside", "a", "b", "c"))
    for name in ("one", "two", "three"):
        world.file(at(CACHES, "com.example.zero-bytes", "locks", name), b"")
    world.file(at(CACHES, "com.example.hidden-inside", ".store", ".data"), 30_000)
    world.file(at(CACHES, ".DS_Store"), 6_148)
    world.file(at(CACHES, ".hidden-cache", "data"), 12_000)
    world.file(at(CACHES, "com.example.bundle", "Helper.app", "Contents", "MacOS", "Helper"), 20_000, mode=0o755)


def developer_cache(world):
    """One source of its own, although it lies in the caches too."""
    folder = at(CACHES, "com.apple.dt.Xcode")
    chance = world.random(folder)
    for number in range(world.several(50)):
        name = "%s-%03d.pack" % (chance.choice(contents.PARTS), number)
        world.file(at(folder, "Downloads", name), contents.size_of_a_file(chance, 20_000, 900_000))


def logs(world):
    for identifier, name in APPS[: world.several(24)]:
        chance = world.random("log of " + identifier)
        for day in range(1, chance.randrange(3, 9)):
            path = at("Library", "Logs", name, "%s-%02d.log" % (name, day))
            world.file(path, contents.log(chance, 120 * day), age=day * 3)
    chance = world.random("loose logs")
    world.file(at("Library", "Logs", "fsck_hfs.log"), contents.log(chance, 900))
    world.file(at("Library", "Logs", "DiscRecording.log"), contents.log(chance, 40), age=1_400)


def crash_reports(world):
    chance = world.random("crash reports")
    reports = at("Library", "Logs", "DiagnosticReports")
    for number in range(world.several(48)):
        name = chance.choice(APPS)[1]
        file = "%s-2026-0%d-%02d-%06d.ips" % (name, chance.randrange(1, 10), chance.randrange(1, 29), number)
        world.file(at(reports, file), contents.crash_report(chance, name))
    world.file(at(reports, "Retired", "Sailor-2024.crash"), contents.crash_report(chance, "Sailor"))
    for number in range(world.several(24)):
        _, name = APPS[number]
        values = {"BundleVersion": "%d.%d" % (number, number % 7), "Crashes": number, "Name": name}
        file = "%s_%012X.plist" % (name, chance.getrandbits(48))
        path = at("Library", "Application Support", "CrashReporter", file)
        world.file(path, contents.property_list(values, binary=number % 2 == 1))


def saved_windows(world):
    for identifier, name in APPS:
        folder = at("Library", "Saved Application State", identifier + ".savedState")
        chance = world.random(folder)
        world.file(at(folder, "data.data"), contents.size_of_a_file(chance, 4_000, 60_000))
        values = {"NSTitle": name, "NSWindowID": chance.randrange(99)}
        world.file(at(folder, "windows.plist"), contents.property_list(values, binary=True))
        for number in range(world.several(chance.randrange(1, 5))):
            world.file(at(folder, "window_%d.data" % number), contents.size_of_a_file(chance, 9_000, 200_000))


def derived_data(world):
    root = at("Library", "Developer", "Xcode", "DerivedData")
    for project in PROJECTS:
        chance = world.random("derived data of " + project)
        folder = at(root, "%s-%s" % (project, "".join(chance.choice("abcdefghijklmnopqrstuvwxyz") for _ in range(28))))
        values = {"WorkspacePath": "/Users/sample/Developer/" + project}
        world.file(at(folder, "info.plist"), contents.property_list(values))
        for number in range(world.several(95)):
            target = at("%s.build" % project, "Objects-normal", "arm64", "File%03d.o" % number)
            size = contents.size_of_a_file(chance, 9_000, 400_000)
            world.file(at(folder, "Build", "Intermediates.noindex", target), size)
        product = at(folder, "Build", "Products", "Debug", project + ".app", "Contents", "MacOS", project)
        world.file(product, 150_000, mode=0o755)
        world.file(at(folder, "Logs", "Build", "LogStoreManifest.plist"), contents.property_list({"logs": {}}))
    world.file(at(root, "ModuleCache.noindex", "Session.modulevalidation"), b"")
    world.file(at(root, "ModuleCache.noindex", "Foundation-2XG4.pcm"), 400_000)


def device_support(world):
    for device in DEVICES:
        folder = at("Library", "Developer", "Xcode", "iOS DeviceSupport", device)
        chance = world.random(folder)
        world.file(at(folder, "Info.plist"), contents.property_list({"OSArchitectures": ["arm64e"], "Device": device}))
        for number in range(world.several(60)):
            library = "lib%s_%02d.dylib" % (chance.choice(contents.WORDS), number)
            path = at(folder, "Symbols", "usr", "lib", library)
            world.file(path, contents.size_of_a_file(chance, 60_000, 3_000_000), mode=0o755)


def container_caches(world):
    root = at("Library", "Containers")
    for identifier, name in APPS[: world.several(24) + 2]:
        data = at(root, identifier, "Data")
        cache(world, at(data, "Library", "Caches", identifier), world.several(8))
        preferences = at(data, "Library", "Preferences", identifier + ".plist")
        world.file(preferences, contents.property_list({"Name": name}, binary=True))
        world.file(at(data, "Documents", "My %s notes.txt" % name), contents.prose(world.random(data), 90))
        world.link(at(data, "Desktop"), "../../../../Desktop")
    # A container without caches, a hidden one, one whose caches are a link to those of another.
    world.file(at(root, "com.example.no-caches", "Data", "Documents", "kept.txt"), "No caches here.\n")
    world.file(at(root, ".hidden-container", "Data", "Library", "Caches", "unseen"), 5_000)
    world.folder(at(root, "com.example.empty-caches", "Data", "Library", "Caches"))
