"""What stands in files: text that reads like text, logs that read like logs, property lists that are property lists."""

import plistlib

WORDS = (
    "the morning report came late and nobody asked why so the harbour office kept its copy in a blue folder with two"
    " maps a list of ships and the letter that began it all water salt paper rope lamp winter bread window garden"
).split()
PARTS = ("network", "index", "window", "sync", "render", "store", "update", "session")
HAPPENINGS = ("started", "finished", "retrying", "nothing to do", "took longer than expected", "skipped", "resumed")


def prose(chance, words):
    """`words` words in lines of twelve."""
    picked = [chance.choice(WORDS) for _ in range(words)]
    return "\n".join(" ".join(picked[i : i + 12]) for i in range(0, words, 12)) + "\n"


def log(chance, lines):
    second = chance.randrange(86400)
    text = []
    for _ in range(lines):
        second += chance.randrange(90)
        clock = "%02d:%02d:%02d" % (second // 3600 % 24, second // 60 % 60, second % 60)
        text.append("%s [%s] %s" % (clock, chance.choice(PARTS), chance.choice(HAPPENINGS)))
    return "\n".join(text) + "\n"


def crash_report(chance, process):
    frames = "\n".join(
        "%d   %s   0x%016x %s + %d" % (i, process, chance.getrandbits(40), chance.choice(WORDS), chance.randrange(4096))
        for i in range(chance.randrange(12, 90))
    )
    return "Process:  %s [%d]\nException Type:  EXC_BAD_ACCESS\n\n%s\n" % (process, chance.randrange(200, 9000), frames)


def property_list(values, binary=False):
    return plistlib.dumps(values, fmt=plistlib.FMT_BINARY if binary else plistlib.FMT_XML)


def size_of_a_file(chance, typical, largest):
    """Most files are small and a few are large, as on any disk."""
    return min(largest, int(chance.lognormvariate(0, 1.3) * typical))
