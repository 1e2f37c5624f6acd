"""What the reference is made of: the export list, the headers with their comments, the subsystems."""
import pathlib
import re

FOLDER = pathlib.Path(__file__).resolve().parent
# A comment and the export that it stands before.
EXPORT = re.compile(r"/\*\*((?:(?!\*/).)*)\*/\s*VLCM_API\b[^;(]*?\b(\w+)\s*\(", re.DOTALL)


def exported(definition):
    """The names in a .def file."""
    lines = [line.split(";")[0].strip() for line in pathlib.Path(definition).read_text(encoding="utf-8").splitlines()]
    return [line for line in lines[lines.index("EXPORTS") + 1:] if line]


def commented(header):
    """The exports of a header that stand behind a comment: (name, comment)."""
    return [(name, comment) for comment, name in EXPORT.findall(header.read_text(encoding="utf-8"))]


def subsystems():
    """Header -> subsystem, by the "Declared in" lines of subsystems.dox."""
    found = {}
    for part in (FOLDER / "subsystems.dox").read_text(encoding="utf-8").split("@defgroup ")[1:]:
        for header in re.findall(r"\bvlcm/(\w+\.h)", part):
            found[header] = part.split()[0]
    return found
