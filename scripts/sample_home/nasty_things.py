"""What breaks careless programs: names of any bytes, links of every kind, specials, modes, attributes, depth, holes.

They stand among the caches, where they are moved away and put back, and among the documents, where they must be left
alone.
"""

from .world import at

CACHES = at("Library", "Caches")
ODD = at("Documents", "Odd things")

# Each is a file or folder of its own, and of some length in bytes.
NAMES = (
    ("spaces", "  leading and trailing  "),
    ("accent, composed", "caf\u00e9 con leche"),
    ("accent, decomposed: another name for a file system of bytes", "cafe\u0301 con leche"),
    ("emoji with a joiner", "\U0001f469\u200d\U0001f680 logbook \U0001f5d1\ufe0f"),
    ("newline and tab", "two\nlines\tand a tab"),
    ("control characters that would colour a terminal", "\x1b[31mred\x1b[0m\x07"),
    ("right to left, with an override that turns the suffix round", "\u05e9\u05dc\u05d5\u05dd \u202egpj.exe"),
    ("not UTF-8", b"latin-1 \xe9\xff\xfe name"),
    ("half a character of UTF-8", b"cut \xf0\x9f\x97"),
    ("percent escapes that must not be decoded", "100%25 %2e%2e%2f%00"),
    ("leading dash", "-rf"),
    ("quotes and shell words", "it's \"$HOME\" `id` ; & | * ?"),
    ("backslash", "back\\slash\\n"),
    ("255 bytes, the longest there is", "L" * 251 + ".dat"),
    ("255 bytes of letters of three bytes each", "\u65e5" * 85),
    ("looks like the Trash's own note", "report.trashinfo"),
    ("dots", "..."),
    ("only a hash sign and a question mark", "#?"),
)


def names(world):
    for number, (_, name) in enumerate(NAMES):
        world.try_name(world.file, at(CACHES, "com.example.names", name), 700 + number)
        world.try_name(world.file, at(ODD, "names", name), 300 + number)
        # And as a finding of its own: every second one a folder, the others a file.
        own = at(CACHES, name) if number % 2 == 0 else at(CACHES, name, "inside")
        world.try_name(world.file, own, 5_000 + 100 * number)


def links(world):
    folder = at(CACHES, "com.example.links")
    world.file(at(folder, "real", "file"), 8_000)
    world.link(at(folder, "to a file"), "real/file")
    world.link(at(folder, "to a folder"), "real")
    world.link(at(folder, "to a document"), "../../../Documents/Contract (signed).pdf")
    world.link(at(folder, "absolute, in the home"), world.absolute(at("Pictures")))
    world.link(at(folder, "nowhere"), "no/such/place")
    world.link(at(folder, "itself"), "itself")
    world.link(at(folder, "up"), "..")
    world.try_name(world.link, at(folder, "to a name that is no text"), b"caf\xe9/\xff")
    # Findings that are links: the link goes, never what it points to.
    world.link(at(CACHES, "com.example.link-to-documents"), "../../Documents")
    world.link(at(CACHES, "com.example.link-long"), "../../" + "Documents/../" * 20 + "Documents")
    world.link(at(CACHES, "com.example.link-nowhere"), "/nowhere/at/all")
    world.link(at(ODD, "my caches"), "../../Library/Caches")


def hard_links(world):
    """One file under several names: within a finding, across findings, and across what is cleaned and what is kept."""
    first = world.file(at(CACHES, "com.example.hard-links", "first"), 40_000)
    world.hard_link(at(CACHES, "com.example.hard-links", "second"), first)
    world.hard_link(at(CACHES, "com.example.hard-links-elsewhere", "third"), first)
    kept = world.file(at(ODD, "kept"), 50_000)
    world.hard_link(at(CACHES, "com.example.hard-links", "also in the documents"), kept)


def depth_and_breadth(world):
    """Deeper than any path can name, and as many siblings as a careless listing takes at once."""
    world.chain(at(CACHES, "com.example.deep"), "eighteen more bytes", 260)
    wide = at(CACHES, "com.example.wide")
    for number in range(world.several(400)):
        world.file(at(wide, "%04d" % number), b"x" * (number % 3))


def modes(world):
    """What has no writing bit still belongs to its owner, and comes back as it was."""
    folder = world.folder(at(CACHES, "com.example.read-only"), mode=0o555)
    world.file(at(folder, "file"), 6_000, mode=0o444)
    world.file(at(folder, "below", "file"), 6_000, mode=0o400)
    world.folder(at(folder, "below"), mode=0o500)
    world.file(at(CACHES, "com.example.read-only-file"), 7_000, mode=0o400)
    world.file(at(CACHES, "com.example.modes", "runs"), 2_000, mode=0o755)
    world.file(at(CACHES, "com.example.modes", "everybody writes"), 2_000, mode=0o666)
    world.folder(at(CACHES, "com.example.modes", "set-group-id"), mode=0o2775)
    world.folder(at(CACHES, "com.example.modes", "sticky"), mode=0o1777)
    world.file(at(ODD, "read-only", "file"), 3_000, mode=0o400)
    world.folder(at(ODD, "read-only"), mode=0o500)


def attributes(world):
    folder = at(CACHES, "com.example.attributes")
    world.file(at(folder, "tagged"), 4_000)
    world.attribute(at(folder, "tagged"), "user.xdg.origin.url", b"https://example.com/a%20b")
    world.attribute(at(folder, "tagged"), "user.bytes", bytes(range(256)))
    world.attribute(at(folder, "tagged"), "user.empty", b"")
    world.attribute(folder, "user.on a folder", "\u00e9".encode())
    world.file(at(ODD, "tagged document"), 900)
    world.attribute(at(ODD, "tagged document"), "user.comment", b"keep me")


def specials(world):
    """A FIFO would block whoever opens it, and nothing can be read from a socket's name."""
    for folder in (at(CACHES, "com.example.specials"), at(ODD, "specials")):
        world.file(at(folder, "between them"), 1_000)
        world.fifo(at(folder, "fifo"))
        world.socket(at(folder, "socket"))


def holes(world):
    written = {0: b"begin", 1_500_000: b"middle" * 900}
    world.sparse_file(at(CACHES, "com.example.sparse", "disk.img"), 4_000_000, written)
    world.sparse_file(at(ODD, "sparse.img"), 2_000_000, {1_000_000: b"island"})


def times(world):
    """Before the epoch of our clocks, far in the future, and older than any rule for old files."""
    folder = at(CACHES, "com.example.times")
    world.file(at(folder, "before 1970"), 1_000, age=25_000)
    world.file(at(folder, "in the next century"), 1_000, age=-30_000)
    world.file(at(folder, "today"), 1_000, age=0)
    world.file(at("Documents", "Letters", "from long ago.txt"), "Dear all,\n", age=7_000)
