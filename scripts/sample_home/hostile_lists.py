"""Property lists that no honest program writes. A careless reader dies of each."""

import struct


def bomb():
    """Arrays of ten references to the next: 114 bytes or so that stand for billions of values."""
    levels = 12
    objects = [b"\xaa" + bytes([level + 1] * 10) for level in range(levels)] + [b"\x09"]
    return binary(objects)


def cycle():
    return binary([b"\xa1\x00"])


def binary(objects):
    body, offsets = b"bplist00", []
    for entry in objects:
        offsets.append(len(body))
        body += entry
    table = len(body)
    body += b"".join(struct.pack(">H", offset) for offset in offsets)
    return body + bytes(6) + bytes((2, 1)) + struct.pack(">QQQ", len(objects), 0, table)


def nested():
    return xml("<array>" * 150_000 + "</array>" * 150_000)


def entities():
    definitions = '<!ENTITY a0 "lol">' + "".join(
        '<!ENTITY a%d "%s">' % (level + 1, ("&a%d;" % level) * 10) for level in range(9)
    )
    return ('<?xml version="1.0"?><!DOCTYPE plist [%s]><plist><string>&a9;</string></plist>' % definitions).encode()


def cut():
    return xml("<dict><key>Label</key><string>com.example.cut</string><key>Program</key><string>/no/such")[:-20]


def large():
    return xml("<dict><key>Label</key><string>%s</string></dict>" % ("x" * 1_200_000))


def xml(value):
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">%s</plist>\n' % value).encode()


LISTS = (
    ("bomb", bomb),
    ("cycle", cycle),
    ("nested", nested),
    ("entities", entities),
    ("cut", cut),
    ("large", large),
    ("empty", lambda: b""),
    ("json", lambda: b'{"CFBundleIdentifier": "com.example", "Program": "/no/such"}\n'),
    ("array", lambda: xml("<array><string>/no/such</string></array>")),
)
