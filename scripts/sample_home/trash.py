"""What its owner threw away before: it lies in the Trash when the program comes, and must still lie there, to the byte,
when it has put back what it moved.
"""

import datetime
import urllib.parse

from .world import DAY, at

FILES, INFO = at(".local", "share", "Trash", "files"), at(".local", "share", "Trash", "info")
# Where they came from. A note tells the whole path, and the home may stand anywhere.
HOME = "/home/somebody"


def thrown_away(world):
    for folder in (at(".local", "share", "Trash"), FILES, INFO):
        world.folder(folder, mode=0o700)
    for name, origin, size, days in (
            ("old report.pdf", "Documents/old report.pdf", 40_000, 3),
            ("old report 2.pdf", "Downloads/old report.pdf", 41_000, 2),
            ("Película.mov", "Movies/Película.mov", 2_500_000, 40),
            (".hidden note", "Documents/.hidden note", 700, 12)):
        world.file(at(FILES, name), size, age=days)
        note(world, name, origin, days)
    for number in range(world.several(16)):
        world.file(at(FILES, "holiday plans", "plan %d.txt" % number), 3_000, age=20)
    note(world, "holiday plans", "Desktop/holiday plans", 15)


def left_without_a_note(world):
    """Some programs throw things away carelessly."""
    world.file(at(FILES, "nobody knows from where.txt"), "no note\n", age=8)


def note(world, name, origin, days):
    """As the desktops write it: the path percent-encoded, the time without its zone."""
    when = datetime.datetime.fromtimestamp(world.today - days * DAY, tz=datetime.timezone.utc)
    world.file(at(INFO, name + ".trashinfo"),
               "[Trash Info]\nPath=%s\nDeletionDate=%s\n" %
               (urllib.parse.quote("%s/%s" % (HOME, origin)), when.strftime("%Y-%m-%dT%H:%M:%S")), mode=0o600, age=days)
