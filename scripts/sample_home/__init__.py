"""A sample home: a Mac-like home folder of some thousand files, the same in every run.

GENERATORS is its table of contents. To let the home hold something new, write a function that takes a World and add its
row; what the other rows make stays as it is, to the byte.
"""

import os
import shutil

from . import applications, browsers, developer_junk, device_backups, downloads, duplicates, large_and_old
from . import launch_agents, mail_and_messages, nasty_things, photographs, screenshots, system_junk, trash
from . import user_files
from .world import World

GENERATORS = (
    # What a clean takes away.
    (system_junk.app_caches, "Library/Caches: some forty apps and system parts, by their identifiers"),
    (system_junk.odd_caches, "the same: loose, hidden, empty and zero-byte things that no finding may come from"),
    (system_junk.developer_cache, "Library/Caches/com.apple.dt.Xcode, which is met twice and must count once"),
    (system_junk.logs, "Library/Logs: a folder an app, and loose files"),
    (system_junk.crash_reports, "Library/Logs/DiagnosticReports and Application Support/CrashReporter"),
    (system_junk.saved_windows, "Library/Saved Application State: a .savedState an app"),
    (system_junk.derived_data, "Library/Developer/Xcode/DerivedData: build trees of six projects"),
    (system_junk.device_support, "Library/Developer/Xcode/iOS DeviceSupport: symbols of four devices"),
    (system_junk.container_caches, "Library/Containers/*/Data/Library/Caches, beside documents that stay"),
    (applications.apps, "Applications: an app each, some from the store, with their languages and when they were used"),
    (applications.odd_apps, "the same: files, links, capitals, the system's own, languages by their old names"),
    (applications.hostile_apps, "the same: bundles whose property lists are traps"),
    (applications.leftovers, "Library/HTTPStorages, WebKit, Preferences of the apps, and folders that makers share"),
    (launch_agents.working_agents, "Library/LaunchAgents: startup items that work, as XML and binary lists"),
    (launch_agents.broken_agents, "the same: their program is gone"),
    (launch_agents.odd_agents, "the same: hardly anything in them, links, folders, other names"),
    (launch_agents.hostile_agents, "the same: property lists that are traps"),
    (duplicates.copies, "sets of equal files in Downloads, Documents, Desktop, Pictures"),
    (duplicates.linked_copies, "hard links, one of them beside a real copy"),
    (photographs.photographs, "photographs, with copies made smaller, turned and stored in other forms"),
    # What it must leave alone.
    (trash.thrown_away, ".local/share/Trash: what was thrown away before, with its notes; hidden and in a folder too"),
    (trash.left_without_a_note, "the same: a file of which nobody knows where it was"),
    (duplicates.near_copies, "files of one size and one beginning"),
    (duplicates.copies_that_are_none, "equal files that are hidden, in a bundle or linked"),
    (photographs.broken_photographs, "pictures cut off, of another kind, and too large to be true"),
    (user_files.documents, "Documents, with a folder that is only called Caches"),
    (user_files.pictures_music_and_films, "Pictures with a photo library, Music, Movies"),
    (user_files.desktop_downloads_and_public, "Desktop, Downloads old and new, Public"),
    (user_files.library_of_apps, "Library/Application Support and Preferences of the same apps"),
    (user_files.secrets_and_mail, "Library/Keychains, Library/Mail, .ssh, dot files"),
    # What its owner may pick from.
    (developer_junk.tool_caches, "the caches of developers' tools, in a dozen places; two of them without a byte"),
    (developer_junk.projects, "Developer, Code, src, Documents: projects with build folders, down to where nobody looks"),
    (developer_junk.odd_projects, "the same: files and links of such names, loops, hidden ones, one that is no text"),
    (mail_and_messages.mail_stores, "attachments of three mail programs, with mailboxes beside them"),
    (mail_and_messages.messages, "Library/Messages: photos and films that people sent, large ones among them"),
    (screenshots.desktop, "Desktop: pictures and films of the screen in both languages, and what only looks like them"),
    (screenshots.chosen_folder, "Pictures/Capturas: more of them, in the folder that is set for them"),
    (downloads.installers, "Downloads: installers and archives of any age"),
    (downloads.documents, "Downloads: documents that were read lately, and documents that were not"),
    (browsers.plain_caches, "Library/Caches and a container: caches of eight browsers, two of them too small to list"),
    (browsers.profiles, "Library/Application Support: profiles with caches, beside history and passwords that stay"),
    (device_backups.backups, "Library/Application Support/MobileSync: backups of devices, XML and binary lists"),
    (device_backups.damaged, "the same: without lists, with broken ones, with none of a backup's files"),
    (large_and_old.large_files, "Documents: a file of a hundred megabytes, and one that only says so"),
    (large_and_old.old_files, "Pictures, Public: files that nobody opened for years, and old ones that somebody did"),
    # What breaks careless programs, in both.
    (nasty_things.names, "names of any bytes"),
    (nasty_things.links, "links: relative, absolute, dangling, in a loop, and links that are findings"),
    (nasty_things.hard_links, "hard links within and across findings and documents"),
    (nasty_things.depth_and_breadth, "a chain of folders beyond PATH_MAX, a folder of many files"),
    (nasty_things.modes, "read-only files and folders, set-group-id, sticky"),
    (nasty_things.attributes, "extended attributes, on folders too"),
    (nasty_things.specials, "FIFOs and sockets"),
    (nasty_things.holes, "sparse files"),
    (nasty_things.times, "times before 1970 and after 2100"),
)

MARKER = b".tavrin-sample-home"
COMPLETE = b"A sample home of Tavrin Clean. It may be removed and made anew at any time.\n"
UNFINISHED = b"A sample home of Tavrin Clean, not finished.\n"


class Refused(Exception):
    """The folder isn't ours to fill."""


def make(folder, small, today, again):
    """Makes the home and gives the World it was made in. Raises Refused."""
    world = World(folder, small, today)
    _make_room(world.root, again)
    world.file(MARKER, UNFINISHED)
    for generate, _ in GENERATORS:
        generate(world)
    with open(world.absolute(MARKER), "wb") as marker:
        marker.write(COMPLETE)
    world.settle()
    return world


def _make_room(root, again):
    shown = os.fsdecode(root)
    if os.path.islink(root) or (os.path.lexists(root) and not os.path.isdir(root)):
        raise Refused("%s is no folder" % shown)
    if os.path.isdir(root) and os.listdir(root):
        if not _is_sample_home(root):
            raise Refused("%s exists and isn't a sample home; it is left alone" % shown)
        if not again:
            raise Refused("%s is a sample home already; --force makes it anew" % shown)
        _remove(root)
    os.makedirs(root, exist_ok=True)


def _is_sample_home(root):
    marker = os.path.join(root, MARKER)
    if os.path.islink(marker) or not os.path.isfile(marker):
        return False
    with open(marker, "rb") as file:
        return file.read(len(COMPLETE) + 1) in (COMPLETE, UNFINISHED)


def _remove(root):
    """The whole tree, read-only folders and what lies beyond PATH_MAX included. Links are not followed."""
    top = os.open(root, os.O_RDONLY | os.O_DIRECTORY | os.O_NOFOLLOW)
    for _, _, _, fd in os.fwalk(b".", dir_fd=top):
        os.fchmod(fd, 0o700)
    os.close(top)
    shutil.rmtree(root)
