"""Developers' tools: their caches in fixed places, and build output inside projects."""

from . import contents
from .world import at

# Folder of the cache, then how its tool names what it keeps: {} is a number.
TOOLS = (
    (at("Library", "Caches", "Homebrew"), "downloads/{:02d}--formula.tar.gz"),
    (at(".npm", "_cacache"), "content-v2/sha512/{:02x}/blob"),
    (at("Library", "Caches", "Yarn"), "v6/npm-package-{:02d}.tgz"),
    (at("Library", "Caches", "pip"), "http-v2/{:x}/body"),
    (at("Library", "pnpm", "store"), "v3/files/{:02x}/blob-exec"),
    (at(".gradle", "caches"), "modules-2/files-2.1/org.example/part-{:02d}.jar"),
    (at(".m2", "repository"), "org/example/part-{:02d}/1.0/part-1.0.jar"),
    (at("Library", "Caches", "CocoaPods"), "Pods/Release/Pod{:02d}/Pod.m"),
    (at("Library", "Developer", "CoreSimulator", "Caches"), "dyld/{:02d}/cache.bin"),
    (at("Library", "Caches", "org.swift.swiftpm"), "repositories/Package-{:02d}/pack"),
    (at("go", "pkg", "mod", "cache"), "download/example.org/mod-{:02d}/@v/v1.0.0.zip"),
)
WEB, PHONE, BOTH = ("node_modules",), ("Pods", "DerivedData"), ("node_modules", "Pods")
PROJECTS = (
    (at("Developer", "Ledger"), PHONE),
    (at("Developer", "Sailor"), PHONE),
    (at("Developer", "work in progress", "Ferry Times"), BOTH),
    (at("Code", "harbour-map"), WEB),
    (at("Code", "tiny-parser"), ()),
    (at("src", "weather-station", "panel"), WEB),
    (at("Documents", "School", "Robotics"), WEB),
)


def tool_caches(world):
    for folder, pattern in TOOLS:
        chance = world.random(folder)
        for number in range(world.several(24)):
            world.file(at(folder, pattern.format(number)), contents.size_of_a_file(chance, 20_000, 900_000))
    world.folder(at("Library", "Caches", "org.carthage.CarthageKit"))
    world.file(at(".npm", "_locks", "kept"), "not part of the cache\n")


def projects(world):
    for folder, built in PROJECTS:
        chance = world.random(folder)
        for number in range(world.several(12)):
            world.file(at(folder, "source", "part%02d.txt" % number), contents.prose(chance, 60))
        world.file(at(folder, "package.json"), '{"private": true}\n')
        for name in built:
            build_folder(world, at(folder, name), chance)
    # The last one that is found, and one a level too deep.
    deep = at("src", *("level %d" % level for level in range(1, 7)))
    world.file(at(deep, "node_modules", "found", "index.js"), 4_000)
    world.file(at(deep, "level 7", "node_modules", "too deep", "index.js"), 4_000)


def build_folder(world, folder, chance):
    """With build folders of its own inside, which are part of it."""
    for number in range(world.several(30)):
        name = "%s-%02d" % (chance.choice(contents.WORDS), number)
        world.file(at(folder, name, "index.js"), contents.size_of_a_file(chance, 3_000, 200_000))
    world.file(at(folder, "nested", "node_modules", "inner", "index.js"), 3_000)
    world.link(at(folder, ".bin", "run"), "../nested/node_modules/inner/index.js")


def odd_projects(world):
    folder = at("src", "odd")
    world.file(at(folder, "a file", "Pods"), "a file of that name\n")
    world.folder(at(folder, "empty", "node_modules"))
    world.link(at(folder, "linked", "node_modules"), "../../weather-station/panel/node_modules")
    world.link(at(folder, "up"), "..")
    world.link(at(folder, "round", "and round"), ".")
    world.fifo(at(folder, "a fifo", "DerivedData"))
    for name in (".build", ".next", ".nuxt"):
        world.file(at(folder, "hidden", name, "output.js"), 6_000)
    world.file(at(folder, "other case", "Node_Modules", "index.js"), 3_000)
    world.try_name(world.file, at(folder, b"no text \xff", "Pods", "inside"), 5_000)
