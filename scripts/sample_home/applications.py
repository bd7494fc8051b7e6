"""The owner's apps in ~/Applications, with their languages, and what they leave in the Library besides their caches.

The same names stand in the caches, logs and preferences that other generators make: those are their leftovers too.
"""

import struct

from . import contents, hostile_lists
from .names import APPS
from .world import DAY, at

APPLICATIONS = at("Applications")
LANGUAGES = (
    "Base en de fr it es pt_BR pt-PT ja ko zh-Hans zh_TW nl sv da nb fi pl tr ar he cs hu th uk ca ru el en_GB es-419"
).split()
# What languages were called before there were codes, and what nobody knows.
OLD_AND_UNKNOWN_LANGUAGES = ("English", "German", "TraditionalChinese", "xx", "Pirate talk")


def apps(world):
    for number, (identifier, name) in enumerate(APPS):
        app = bundle(world, at(APPLICATIONS, name + ".app"), identifier, name, binary=number % 2 == 1)
        chance = world.random("languages of " + identifier)
        for code in LANGUAGES[: world.several(chance.randrange(8, len(LANGUAGES))) + 2]:
            language(world, app, code, chance)
        if number % 5 == 0:
            world.file(at(app, "Contents", "_MASReceipt", "receipt"), 3_500)
        if number % 3 != 0:
            last_used(world, app, days=25 + 40 * number)


def bundle(world, app, identifier, name, binary=False):
    values = {"CFBundleIdentifier": identifier, "CFBundleName": name, "CFBundlePackageType": "APPL"}
    world.file(at(app, "Contents", "Info.plist"), contents.property_list(values, binary))
    chance = world.random(app)
    size = contents.size_of_a_file(chance, 90_000, 2_000_000)
    world.file(at(app, "Contents", "MacOS", name), b"\xcf\xfa\xed\xfe" + chance.randbytes(size), mode=0o755)
    world.file(at(app, "Contents", "Resources", "AppIcon.icns"), b"icns" + chance.randbytes(12_000))
    return app


def language(world, app, code, chance):
    folder = at(app, "Contents", "Resources", code + ".lproj")
    words = "".join('"%s" = "%s";\n' % (word, word[::-1]) for word in chance.sample(contents.WORDS, 24))
    world.file(at(folder, "Localizable.strings"), words * chance.randrange(1, 40))
    world.file(at(folder, "InfoPlist.strings"), '"CFBundleDisplayName" = "%s";\n' % code)


def last_used(world, app, days):
    """What the metadata index of a Mac writes on an app when it is opened."""
    moment = struct.pack("<qq", world.today - days * DAY, 250_000_000)
    world.attribute(app, "user.com.apple.lastuseddate#PS", moment)


def odd_apps(world):
    """What only looks like an app, and apps that are no ordinary ones."""
    world.file(at(APPLICATIONS, "Plain file.app"), 8_000)
    world.file(at(APPLICATIONS, "Loud.APP", "Contents", "Info.plist"), contents.property_list({}))
    world.file(at(APPLICATIONS, "Games", "Chess in a folder.app", "Contents", "MacOS", "Chess"), 9_000, mode=0o755)
    world.file(at(APPLICATIONS, ".Hidden.app", "Contents", "MacOS", "Hidden"), 9_000, mode=0o755)
    world.folder(at(APPLICATIONS, "Empty.app"))
    world.link(at(APPLICATIONS, "Linked.app"), "Papermill.app")
    world.link(at(APPLICATIONS, "Nowhere.app"), "no/such.app")
    # The system's own: one that may not go, one that was bought and may.
    bundle(world, at(APPLICATIONS, "Counter.app"), "com.apple.counter", "Counter")
    bought = bundle(world, at(APPLICATIONS, "Slides.app"), "com.apple.iWork.Slides", "Slides")
    world.file(at(bought, "Contents", "_MASReceipt", "receipt"), 3_500)
    old = bundle(world, at(APPLICATIONS, "Old Glory.app"), "org.oldglory.app", "Old Glory", binary=True)
    chance = world.random("old languages")
    for code in OLD_AND_UNKNOWN_LANGUAGES + ("en", "de"):
        language(world, old, code, chance)
    world.folder(at(old, "Contents", "Resources", "fr.lproj"))
    last_used(world, old, days=1_500)
    world.try_name(world.file, at(APPLICATIONS, b"caf\xe9 no text.app", "Contents", "Info.plist"), 40)


def hostile_apps(world):
    for name, lies in hostile_lists.LISTS:
        world.file(at(APPLICATIONS, "Hostile %s.app" % name, "Contents", "Info.plist"), lies())
    world.fifo(at(APPLICATIONS, "Hostile pipe.app", "Contents", "Info.plist"))


def leftovers(world):
    """Further traces, and folders that several apps share and none may take."""
    for identifier, name in APPS:
        chance = world.random("leftovers of " + identifier)
        world.file(at("Library", "HTTPStorages", identifier, "httpstorages.sqlite"), 4_096)
        world.file(at("Library", "WebKit", identifier, "WebsiteData", "Default", "salt"), chance.randbytes(32))
        world.file(at("Library", "Preferences", identifier + ".updates.plist"), contents.property_list({"n": name}))
    support = at("Library", "Application Support")
    for shared in ("Google", "Adobe", "Mozilla", "Steam"):
        world.file(at(support, shared, "shared between apps.db"), 20_000)
    world.file(at(support, "Plain file.settings.json"), "{}\n")
    world.file(at(support, "somebody else's", "data"), 6_000)
