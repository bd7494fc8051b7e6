#!/usr/bin/env python3
"""MakeWords.py FOLDER TABLE...: writes Words.h and Words.cpp, the messages of the tables as one QObject for QML.

A static message becomes a constant property, a message with parameters an invokable of the same name and order. Files that
would not change are left alone, so that nothing is built again for nothing.
"""

import pathlib
import re
import sys

STATIC = re.compile(r"^TAVRIN_(?:MESSAGE|WINDOW_TEXT)\((\w+),", re.MULTILINE)
COUNTED = re.compile(r"^TAVRIN_FUNCTION_MESSAGE\((\w+),\s*\(([^)]*)\)", re.MULTILINE)
# How a parameter of the tables is taken from QML, and how it is handed on.
PARAMETERS = {"Count": ("qint64 {0}", "{0}"), "Text": ("const QString& {0}", "{0}.toStdString()")}

HEADER = """\
// Written by cmake/MakeWords.py from the tables of messages; edit those.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tavrin {{

/// Every word for people, in the language of this run. In QML: S.actionCancel, S.countItems(3).
class Words : public QObject {{
    Q_OBJECT
    QML_NAMED_ELEMENT(S)
    QML_SINGLETON
{properties}

  public:
    using QObject::QObject;

{getters}

{invokables}
}};

}}  // namespace tavrin
"""

SOURCE = """\
// Written by cmake/MakeWords.py from the tables of messages; edit those.
#include "Words.h"

#include "TavrinCore/Strings.h"

namespace tavrin {{
namespace {{

QString shown(std::string_view text) {{ return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }}

}}  // namespace

{bodies}

}}  // namespace tavrin
"""


def parameters(text):
    """The (type, name) pairs of "Count count, Text size"."""
    pairs = [tuple(part.split()) for part in text.split(",")]
    for kind, _ in pairs:
        if kind not in PARAMETERS:
            sys.exit(f"MakeWords.py knows no parameter of the type {kind}")
    return pairs


def write(path, text):
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def main():
    folder = pathlib.Path(sys.argv[1])
    tables = "\n".join(pathlib.Path(name).read_text(encoding="utf-8") for name in sys.argv[2:])
    static = ["appName", "privacyPolicyURL"] + STATIC.findall(tables)
    counted = [(key, parameters(rest)) for key, rest in COUNTED.findall(tables)]
    if len(static) < 3:
        sys.exit("MakeWords.py found no message")

    properties, getters, invokables, bodies = [], [], [], []
    for key in static:
        properties.append(f"    Q_PROPERTY(QString {key} READ {key} CONSTANT FINAL)")
        getters.append(f"    [[nodiscard]] QString {key}() const;")
        call = f"S::{key}" if key == "appName" else f"S::{key}()"
        bodies.append(f"QString Words::{key}() const {{ return shown({call}); }}")
    for key, pairs in counted:
        signature = ", ".join(PARAMETERS[kind][0].format(name) for kind, name in pairs)
        values = ", ".join(PARAMETERS[kind][1].format(name) for kind, name in pairs)
        invokables.append(f"    [[nodiscard]] Q_INVOKABLE QString {key}({signature}) const;")
        bodies.append(f"QString Words::{key}({signature}) const {{ return shown(S::{key}({values})); }}")

    join = "\n".join
    write(folder / "Words.h", HEADER.format(properties=join(properties), getters=join(getters), invokables=join(invokables)))
    write(folder / "Words.cpp", SOURCE.format(bodies=join(bodies)))


main()
