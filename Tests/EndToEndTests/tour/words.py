"""The program's own words, read from the tables that it is built from, so that the tour looks for what people read."""

import ast
import pathlib
import re

TABLES = pathlib.Path(__file__).resolve().parents[3] / "Sources" / "TavrinCore" / "Strings"
STRING = r'"(?:\\.|[^"\\])*"'
STATIC = re.compile(r"^TAVRIN_(?:MESSAGE|WINDOW_TEXT|SYSTEM_REFUSAL)\((\w+),\s*(%s),\s*(%s)\)" % (STRING, STRING), re.MULTILINE)
COUNTED = re.compile(r"^TAVRIN_FUNCTION_MESSAGE\((\w+),\s*\(([^)]*)\),\s*((?:%s,?\s*)+)\)" % STRING, re.MULTILINE)


class Words:
    """words.actionScan is a text, words.EALREADY a reason; words("countItems", 3) fills one in."""

    def __init__(self, language):
        self._spanish = language == "es"
        self._static, self._counted = {}, {}
        for table in TABLES.glob("*.def"):
            text = table.read_text(encoding="utf-8")
            for key, english, spanish in STATIC.findall(text):
                self._static[key] = unquoted(spanish if self._spanish else english)
            for key, parameters, texts in COUNTED.findall(text):
                names = [part.split()[1] for part in parameters.split(",")]
                self._counted[key] = (names, [unquoted(part) for part in re.findall(STRING, texts)])

    def __getattr__(self, key):
        try:
            return self._static[key]
        except KeyError:
            raise AttributeError(key) from None

    def __call__(self, key, *values):
        names, texts = self._counted[key]
        if self._spanish:
            text = texts[-1]
        else:
            text = texts[0] if len(texts) < 3 or 1 in values else texts[1]
        for name, value in zip(names, values):
            text = text.replace("{%s}" % name, str(value))
        return text

    def values(self, key, text, begins=False):
        """The figures and texts that fill in `text`, in its order; None where it is another message. With `begins`, more
        may follow."""
        names, wordings = self._counted[key]
        for wording in wordings[-1:] if self._spanish else wordings[:-1]:
            pattern = re.escape(wording)
            for name in names:
                pattern = pattern.replace(re.escape("{%s}" % name), r"(\d+)" if name in ("n", "count") else "(.+?)")
            if match := re.match(pattern, text) if begins else re.fullmatch(pattern, text):
                return match.groups()
        return None


def unquoted(literal):
    """The text of a C++ string literal, whose escapes are those of Python."""
    return ast.literal_eval(literal)
