"""The hand that makes things in a sample home.

Every path is relative to the home and held as bytes, so that a name of any bytes can be made. What is made depends on
nothing but its name and the world's variant: contents come from a generator seeded with the path, times from a hash of
it, and modes are set outright, past the umask. So two runs give the same home, and a new group of files changes nothing
about the groups that were there before.
"""

import hashlib
import os
import random
import stat

DAY = 24 * 60 * 60
# What a file without an age of its own may be aged at most.
YOUNGEST_DAYS, OLDEST_DAYS = 2, 700


def at(*components):
    """The path of these components, each text or bytes."""
    return b"/".join(part.encode() if isinstance(part, str) else part for part in components)


class World:
    def __init__(self, root, small, today):
        self.root = os.path.abspath(os.fsencode(root))
        self.small = small
        self.today = today
        self.notes = []
        self._modes = {}
        self._ages = {}
        self._last_uses = {}
        self._twins = {}

    # Chance that is the same in every run.

    def random(self, name):
        """A generator of its own for `name`."""
        seed = name if isinstance(name, bytes) else name.encode()
        return random.Random(hashlib.sha256(seed).digest())

    def several(self, number):
        """`number` of something; an eighth of it, at least one, in the small home."""
        return max(1, number // 8) if self.small else number

    def bytes_for(self, path, size):
        return self.random(b"contents " + path).randbytes(size)

    # What can be made. Missing folders above come by themselves.

    def folder(self, path, mode=None, age=None):
        os.makedirs(self.absolute(path), exist_ok=True)
        self._remember(path, mode, age)
        return path

    def file(self, path, contents, mode=None, age=None, last_use=None):
        """`contents`: bytes, text, or a size for bytes of chance. Ages are days since it was changed, and since anybody
        looked into it: the same, unless said otherwise."""
        if isinstance(contents, int):
            contents = self.bytes_for(path, contents)
        elif isinstance(contents, str):
            contents = contents.encode()
        self._make_parent(path)
        with open(self.absolute(path), "xb") as file:
            file.write(contents)
        self._remember(path, mode, age)
        if last_use is not None:
            self._last_uses[path] = last_use
        return path

    def filled_file(self, path, size, **ages):
        """Of zeros, but all of its `size` bytes occupy the disk. Takes no longer for a large one."""
        self.file(path, b"", **ages)
        with open(self.absolute(path), "r+b") as file:
            os.posix_fallocate(file.fileno(), 0, size)
        return path

    def sparse(self, path, size, **ages):
        """`size` bytes long, and none of them on the disk."""
        self.file(path, b"", **ages)
        os.truncate(self.absolute(path), size)
        return path

    def sparse_file(self, path, size, written):
        """`size` bytes long, but only the bytes of `written`, offset to contents, occupy the disk."""
        self.file(path, b"")
        with open(self.absolute(path), "r+b") as file:
            for offset, contents in written.items():
                file.seek(offset)
                file.write(contents)
            file.truncate(size)
        return path

    def link(self, path, target):
        self._make_parent(path)
        os.symlink(target if isinstance(target, bytes) else target.encode(), self.absolute(path))
        return path

    def hard_link(self, path, existing):
        self._make_parent(path)
        os.link(self.absolute(existing), self.absolute(path), follow_symlinks=False)
        self._twins[path] = existing
        return path

    def fifo(self, path):
        self._make_parent(path)
        os.mkfifo(self.absolute(path))
        return path

    def socket(self, path):
        """A socket's name, as a program leaves it behind that ends without tidying up."""
        self._make_parent(path)
        os.mknod(self.absolute(path), stat.S_IFSOCK | 0o644)
        return path

    def attribute(self, path, name, value):
        try:
            os.setxattr(self.absolute(path), name, value, follow_symlinks=False)
        except OSError as error:
            self._without("extended attributes", error)

    def chain(self, path, name, depth):
        """A chain of folders that no path need reach; gives its depth back. Ends in a file."""
        self.folder(path)
        here = os.open(self.absolute(path), os.O_RDONLY | os.O_DIRECTORY)
        for _ in range(depth):
            os.mkdir(name, dir_fd=here)
            below = os.open(name, os.O_RDONLY | os.O_DIRECTORY | os.O_NOFOLLOW, dir_fd=here)
            os.close(here)
            here = below
        last = os.open("the end.txt", os.O_WRONLY | os.O_CREAT | os.O_EXCL, 0o644, dir_fd=here)
        os.write(last, b"You came a long way.\n")
        os.close(last)
        os.close(here)

    def try_name(self, make, path, *arguments):
        """Makes something whose name a file system may refuse; a note says so when it does."""
        try:
            return make(path, *arguments)
        except OSError as error:
            self._without("the name %r" % path, error)
            return None

    # Modes and times come last: making things would change them again.

    def settle(self):
        top = os.open(self.root, os.O_RDONLY | os.O_DIRECTORY)
        try:
            for folder, folders, files, fd in os.fwalk(b".", topdown=False, follow_symlinks=False, dir_fd=top):
                here = folder[2:]
                for name in files + [n for n in folders if _is_link(n, fd)]:
                    self._settle_entry(here + b"/" + name if here else name, name, fd)
                os.fchmod(fd, self._modes.get(here, 0o755))
                os.utime(fd, ns=self._times(here))
        finally:
            os.close(top)

    def _settle_entry(self, path, name, fd):
        path = self._twins.get(path, path)
        if not _is_link(name, fd):
            os.chmod(name, self._modes.get(path, 0o644), dir_fd=fd)
        os.utime(name, ns=self._times(path), dir_fd=fd, follow_symlinks=False)

    def _times(self, path):
        """Access and modification time, with a part below the second, as real files have it."""
        chance = int.from_bytes(hashlib.sha256(b"time " + path).digest()[:8], "big")
        age = self._ages.get(path)
        if age is None:
            age = YOUNGEST_DAYS + chance // DAY % (OLDEST_DAYS - YOUNGEST_DAYS)

        def days_ago(days):
            return (self.today - days * DAY - chance % DAY) * 1_000_000_000 + chance % 1_000_000_000

        return days_ago(self._last_uses.get(path, age)), days_ago(age)

    def absolute(self, path):
        return self.root + b"/" + path

    def _make_parent(self, path):
        os.makedirs(os.path.dirname(self.absolute(path)), exist_ok=True)

    def _remember(self, path, mode, age):
        if mode is not None:
            self._modes[path] = mode
        if age is not None:
            self._ages[path] = age

    def _without(self, what, error):
        self.notes.append("without %s: %s" % (what, error.strerror))


def _is_link(name, fd):
    return stat.S_ISLNK(os.stat(name, dir_fd=fd, follow_symlinks=False).st_mode)
