"""A display of its own that nobody sees, and pictures of what is on it."""

import mmap
import os
import pathlib
import struct
import subprocess
import tempfile
import time
import zlib

WIDTH, HEIGHT = 1120, 740


class Screen:
    """An X server with one screen, as large as the window."""

    def __enter__(self):
        self._folder = tempfile.TemporaryDirectory()
        read, write = os.pipe()
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "%dx%dx24" % (WIDTH, HEIGHT), "-nolisten", "tcp", "-noreset",
             "-fbdir", self._folder.name],
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as answer:
            number = answer.readline().strip()
        if not number:
            raise RuntimeError("Xvfb doesn't start")
        self.name = ":" + number
        self.frame = os.path.join(self._folder.name, "Xvfb_screen0")
        return self

    def __exit__(self, *_):
        self._server.terminate()
        self._server.wait()
        self._folder.cleanup()


def wait_until_still(frame):
    """Until an animation has come to its end; one that has none isn't waited for longer than a second."""
    end, before, now = time.monotonic() + 1, None, pathlib.Path(frame).read_bytes()
    while now != before and time.monotonic() < end:
        time.sleep(0.15)
        before, now = now, pathlib.Path(frame).read_bytes()


def take_picture(frame, path):
    """Writes what stands in `frame`, the memory of an Xvfb screen in the format of xwd, as a PNG."""
    with open(frame, "rb") as file, mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as memory:
        header_size, = struct.unpack(">I", memory[0:4])
        width, height = struct.unpack(">II", memory[16:24])
        bytes_per_line, = struct.unpack(">I", memory[48:52])
        colors, = struct.unpack(">I", memory[76:80])
        start = header_size + 12 * colors
        lines = [memory[start + y * bytes_per_line:start + y * bytes_per_line + 4 * width] for y in range(height)]
    pathlib.Path(path).write_bytes(png(width, height, [rgb(line) for line in lines]))


def rgb(line):
    """Blue, green, red, nothing: turned round."""
    result = bytearray(len(line) // 4 * 3)
    result[0::3], result[1::3], result[2::3] = line[2::4], line[1::4], line[0::4]
    return bytes(result)


def png(width, height, lines):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    pixels = zlib.compress(b"".join(b"\0" + line for line in lines), 9)
    head = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", pixels) + chunk(b"IEND", b"")
