"""Browsers: caches that come back by themselves, and beside them all that must never be lost."""

from . import contents
from .world import at

CACHES = at("Library", "Caches")
SUPPORT = at("Library", "Application Support")
PLAIN = (
    "com.apple.Safari/WebKitCache",
    "Google/Chrome/Default/Cache",
    "Microsoft Edge/Default/Cache",
    "BraveSoftware/Brave-Browser/Default/Cache",
    "Firefox/Profiles/abc.default/cache2",
    "company.thebrowser.Browser/Default",
)
TOO_SMALL = ("com.operasoftware.Opera", "Vivaldi")
SANDBOX = at("Library", "Containers", "com.apple.Safari", "Data", "Library", "Caches")
PROFILES = (
    at("Google", "Chrome", "Default"),
    at("Google", "Chrome", "Profile 1"),
    at("Microsoft Edge", "Default"),
    at("BraveSoftware", "Brave-Browser", "P"),
    at("Vivaldi", "Default"),
    at("company.thebrowser.Browser", "User Data"),
)
PROFILE_CACHES = ("Cache", "Code Cache", "GPUCache", "ShaderCache", "Service Worker/CacheStorage")
KEPT = ("History", "Cookies", "Login Data", "Bookmarks", "Preferences")


def plain_caches(world):
    for name in PLAIN[: world.several(16)]:
        fill(world, at(CACHES, name), 1_200_000)
    for name in TOO_SMALL:
        fill(world, at(CACHES, name), 60_000)
    for name in ("com.apple.Safari", "WebKit"):
        fill(world, at(SANDBOX, name), 1_300_000)


def profiles(world):
    for number, profile in enumerate(PROFILES[: world.several(16)]):
        for index, name in enumerate(PROFILE_CACHES):
            # Only the first two of each reach the size from which a cache is listed.
            fill(world, at(SUPPORT, profile, name), 1_100_000 + 50_000 * number if index < 2 else 30_000)
        for name in KEPT:
            world.file(at(SUPPORT, profile, name), 20_000, mode=0o600)
    chrome = at(SUPPORT, "Google", "Chrome")
    world.file(at(chrome, "Local State"), '{"profiles": 2}\n')
    world.file(at(chrome, "Guest", "Cache"), 9_000)
    fill(world, at(chrome, ".hidden", "Cache"), 1_050_000)
    world.link(at(chrome, "Linked"), "Default")


def fill(world, folder, size):
    """A folder that occupies a little more than `size` bytes."""
    chance = world.random(folder)
    while size > 0:
        piece = min(size, 350_000)
        world.filled_file(at(folder, "f_%06x" % chance.getrandbits(24)), piece)
        size -= piece
