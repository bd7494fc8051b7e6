"""Attachments: what mail programs keep copies of, and what people sent over messages."""

from . import contents
from .world import at

MAIL = at("Library", "Mail", "V10")
DOWNLOADS = at("Library", "Containers", "com.apple.mail", "Data", "Library", "Mail Downloads")
OUTLOOK = at("Library", "Group Containers", "UBF8T346G9.Office", "Outlook", "Outlook 15 Profiles", "Main Profile")
LEGACY = at("Documents", "Microsoft User Data", "Office 2011 Identities", "Main Identity")
STORE = at("Library", "Messages", "Attachments")
KINDS = ("invoice.pdf", "photo.jpg", "slides.pptx", "minutes.docx", "route.gpx")


def mail_stores(world):
    chance = world.random("mail attachments")
    for account in ("account-1", "account-2"):
        for number in range(world.several(30)):
            attach(world, at(MAIL, account, "Attachments", "%d" % number, "2"), chance)
    world.file(at(MAIL, "account-1", "Attachments", "7", "Attachments", "inside another.pdf"), 9_000)
    for number in range(world.several(12)):
        attach(world, at(DOWNLOADS, "%08X" % chance.getrandbits(32)), chance)
    world.file(at(DOWNLOADS, "loose.pdf"), 12_000)
    for number in range(world.several(16)):
        attach(world, at(OUTLOOK, "Files", "S0", "%d" % number, "Attachments"), chance)
        world.file(at(OUTLOOK, "Data", "Messages", "%d.olk15Message" % number), contents.prose(chance, 60))
    attach(world, at(LEGACY, "Saved", "Attachments"), chance)
    world.file(at(LEGACY, "Database"), 30_000)
    # No attachments: a package, a file of that name, an empty folder, a hidden one.
    attach(world, at(MAIL, "account-1", "Exported.mbox", "Attachments"), chance)
    world.file(at(MAIL, "account-2", "notes", "Attachments"), "a file\n")
    world.folder(at(MAIL, "account-2", "empty", "Attachments"))
    attach(world, at(MAIL, ".trashed", "Attachments"), chance)


def attach(world, folder, chance):
    name = chance.choice(KINDS)
    world.file(at(folder, name), contents.size_of_a_file(chance, 30_000, 400_000))


def messages(world):
    chance = world.random("messages")
    for number in range(world.several(48)):
        name = chance.choice(("IMG_%04d.HEIC", "IMG_%04d.MOV", "Document %d.pdf")) % number
        world.file(at(letters(chance), name), contents.size_of_a_file(chance, 60_000, 900_000))
    for number in range(world.several(8)):
        world.filled_file(at(letters(chance), "Film %d.mov" % number), 5_000_000 + 750_000 * number)
    # Small ones in the small home, where one film is much already.
    large = 300_000 if world.small else 6_000_000
    world.sparse(at(letters(chance), "only says that it is large.mov"), large)
    world.filled_file(at(letters(chance), ".hidden.mov"), large)
    world.file(at("Library", "Messages", "chat.db"), b"SQLite format 3\0" + chance.randbytes(60_000))


def letters(chance):
    """How the store spreads its files: two levels of folders, and one for each message."""
    return at(STORE, "%02x" % chance.randrange(256), "%02d" % chance.randrange(16), "%032X" % chance.getrandbits(128))
