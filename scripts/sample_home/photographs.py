"""Photographs that can be looked at, drawn here, with copies made smaller, turned, and stored in other forms."""

import struct
import zlib

from .world import at


class Drawing:
    """Hills of coloured light: rows of bytes, three a pixel."""

    def __init__(self, width, height, rows):
        self.width, self.height, self.rows = width, height, rows

    @staticmethod
    def of(chance, width, height):
        side = 7
        grid = [[[chance.randrange(256) for _ in range(3)] for _ in range(side)] for _ in range(side)]
        rows = []
        for y in range(height):
            j, below = divmod(y * (side - 1) / height, 1)
            row = bytearray()
            upper, lower = grid[int(j)], grid[int(j) + 1]
            line = [[a + (b - a) * below for a, b in zip(upper[i], lower[i])] for i in range(side)]
            for x in range(width):
                i, right = divmod(x * (side - 1) / width, 1)
                grain = (x * 7 + y * 13) % 5
                row += bytes(
                    min(255, int(a + (b - a) * right) + grain) for a, b in zip(line[int(i)], line[int(i) + 1])
                )
            rows.append(bytes(row))
        return Drawing(width, height, rows)

    def half(self):
        rows = [b"".join(row[6 * x : 6 * x + 3] for x in range(self.width // 2)) for row in self.rows[::2]]
        return Drawing(self.width // 2, len(rows), rows)

    def turned(self):
        """A quarter to the right, as it is stored when the camera says so: Exif's orientation 6 turns it back."""
        rows = [
            b"".join(self.rows[y][3 * x : 3 * x + 3] for y in range(self.height)) for x in reversed(range(self.width))
        ]
        return Drawing(self.height, self.width, rows)

    def png(self, orientation=None, level=6):
        chunks = [(b"IHDR", struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0))]
        if orientation is not None:
            chunks.append((b"eXIf", b"II*\0\x08\0\0\0\x01\0" + struct.pack("<HHIIi", 274, 3, 1, orientation, 0)))
        chunks.append((b"IDAT", zlib.compress(b"".join(b"\0" + row for row in self.rows), level)))
        chunks.append((b"IEND", b""))
        return b"\x89PNG\r\n\x1a\n" + b"".join(
            struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
            for kind, data in chunks
        )

    def bmp(self):
        padding = b"\0" * (-3 * self.width % 4)
        pixels = b"".join(
            b"".join(bytes((row[x + 2], row[x + 1], row[x])) for x in range(0, 3 * self.width, 3)) + padding
            for row in reversed(self.rows)
        )
        header = struct.pack("<IiiHHIIiiII", 40, self.width, self.height, 1, 24, 0, len(pixels), 2835, 2835, 0, 0)
        return b"BM" + struct.pack("<IHHI", 54 + len(pixels), 0, 0, 54) + header + pixels

    def tiff(self):
        pixels = b"".join(self.rows)
        entries = (
            (256, 4, 1, self.width),
            (257, 4, 1, self.height),
            (258, 3, 1, 8),
            (259, 3, 1, 1),
            (262, 3, 1, 2),
            (273, 4, 1, 8),
            (277, 3, 1, 3),
            (278, 4, 1, self.height),
            (279, 4, 1, len(pixels)),
        )
        directory = struct.pack("<H", len(entries)) + b"".join(struct.pack("<HHII", *entry) for entry in entries)
        return b"II*\0" + struct.pack("<I", 8 + len(pixels)) + pixels + directory + b"\0\0\0\0"


def photographs(world):
    """Each with copies that look the same: half the size, turned by the camera, in other forms, under a wrong name."""
    for number in range(world.several(8)):
        drawing = Drawing.of(world.random("photograph %d" % number), 240, 160)
        name = "Holiday %02d" % number
        world.file(at("Pictures", "Holidays", name + ".png"), drawing.png())
        world.file(at("Pictures", "Holidays", name + " small.png"), drawing.half().png())
        world.file(at("Pictures", "From the phone", name + ".PNG"), drawing.turned().png(orientation=6))
        world.file(at("Desktop", name + ".bmp"), drawing.bmp())
        world.file(at("Downloads", name + ".tif"), drawing.tiff())
        world.file(at("Downloads", name + " (sent).jpg"), drawing.tiff())


def broken_photographs(world):
    """Cut off, empty, of another kind, and one that claims to be larger than all memory."""
    whole = Drawing.of(world.random("broken photograph"), 240, 160).png()
    world.file(at("Pictures", "Recovered", "cut off.png"), whole[: len(whole) // 2])
    world.file(at("Pictures", "Recovered", "no picture.jpg"), "Dear all, the pictures are on the other disk.\n" * 400)
    header = struct.pack(">IIBBBBB", 60_000, 60_000, 8, 2, 0, 0, 0)
    claim = b"IHDR" + header
    bomb = b"\x89PNG\r\n\x1a\n" + struct.pack(">I", 13) + claim + struct.pack(">I", zlib.crc32(claim)) + whole[33:]
    world.file(at("Pictures", "Recovered", "huge.png"), bomb)
