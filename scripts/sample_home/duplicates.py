"""Copies: some of them for good reason, some by accident. The oldest of each set is the one to keep."""

from . import contents
from .world import at


def copies(world):
    """Sets of two to four files with the same bytes, in folders that people have."""
    places = (at("Downloads"), at("Documents", "From the old computer"), at("Desktop"), at("Pictures", "Sorted"))
    chance = world.random("copies")
    for number in range(world.several(24)):
        size = contents.size_of_a_file(chance, 60_000, 3_000_000)
        bytes_ = world.bytes_for(b"copies %d" % number, size)
        for copy in range(chance.randrange(2, 5)):
            name = "report %02d%s.pdf" % (number, "" if copy == 0 else " (%d)" % copy)
            world.file(at(places[(number + copy) % len(places)], name), bytes_, age=600 - 40 * copy)


def near_copies(world):
    """The same size and the same beginning, but not the same file."""
    begin = world.bytes_for(b"near copies", 8192)
    for number in range(world.several(10)):
        path = at("Documents", "Measurements", "series %02d.dat" % number)
        world.file(path, begin + world.bytes_for(path, 30_000))


def linked_copies(world):
    """Names of one file: offering them would free nothing."""
    bytes_ = world.bytes_for(b"linked copies", 120_000)
    first = world.file(at("Documents", "Ledger", "2025.db"), bytes_, age=300)
    world.hard_link(at("Documents", "Ledger", "current.db"), first)
    world.file(at("Downloads", "2025 ledger from the backup.db"), bytes_, age=20)
    alone = world.file(at("Documents", "Ledger", "2024.db"), 90_000)
    world.hard_link(at("Documents", "Ledger", "last year.db"), alone)


def copies_that_are_none(world):
    """Hidden, inside of a bundle, reached through a link only: a copy of a copy that nobody may offer."""
    bytes_ = world.bytes_for(b"no copies", 50_000)
    world.file(at("Documents", "Letterhead.tpl"), bytes_)
    world.file(at("Documents", ".Letterhead.tpl.swp"), bytes_)
    world.file(at("Documents", "Slides.key", "Data", "Letterhead.tpl"), bytes_)
    world.link(at("Documents", "Letterhead link.tpl"), "Letterhead.tpl")
