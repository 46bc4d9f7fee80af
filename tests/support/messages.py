"""The texts that a user may see, read from the sources that hold them."""

import dataclasses
import pathlib
import re

SOURCES = pathlib.Path(__file__).resolve().parents[2] / "ctables" / "quillet"

STRING = re.compile(r'"((?:[^"\\]|\\.)*)"')
ROW = re.compile(r'^QUILLET_(\w+)\((k\w+)((?:,\s*"(?:[^"\\]|\\.)*")+)\)$', re.MULTILINE)

# Texts that nothing emits.
SILENT = {"Detailed error message", "A parsing error has occured."}


@dataclasses.dataclass(frozen=True)
class Reason:
    kind: str
    name: str
    message: str  # with %s for the name in question
    heading: str


def unescape(literal):
    return literal.encode().decode("unicode_escape")


def rows():
    """Each row of the list: its sort, its kind, its texts."""
    text = (SOURCES / "quillet-messages.def").read_text(encoding="utf-8")
    begun = len(re.findall(r"^QUILLET_", text, re.MULTILINE))
    found = [(sort, kind, [unescape(literal) for literal in STRING.findall(texts)])
             for sort, kind, texts in ROW.findall(text)]
    if len(found) != begun or not found:
        raise ValueError(f"{begun} rows begin, {len(found)} can be read")
    return found


def reasons():
    """Why a command cannot be converted."""
    return [Reason(kind, *texts) for sort, kind, texts in rows() if sort.endswith("REASON")]


def warnings():
    """What a conversion leaves out."""
    return [texts[0] for sort, _, texts in rows() if sort == "WARNING"]


def catalogue():
    """All other texts, without a final line end. Those that end in a blank are followed by the
    name of a file."""
    text = (SOURCES / "driver" / "messagecatalogue.h").read_text(encoding="utf-8")
    texts = [unescape("".join(STRING.findall(value))).removesuffix("\n")
             for value in re.findall(r"std::string_view k\w+ =\s*([^;]*);", text)]
    if len(texts) < 10:
        raise ValueError("no catalogue")
    return texts


def every_text():
    """What users may see, whole. Reasons of graphs begin with the asterisk of a comment."""
    yield from catalogue()
    yield from warnings()
    for sort, _, texts in rows():
        if sort.endswith("REASON") and texts[1]:
            yield "*" + texts[1] if sort == "IGRAPH_REASON" else texts[1]
