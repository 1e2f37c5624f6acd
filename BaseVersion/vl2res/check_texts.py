#!/usr/bin/python3
"""check_texts.py string_ids.h strings.rc: every language has every text, and every text is fit for use.

The identifiers, the room of each text and what else is asked of it stand in string_ids.h. The languages
are the files that strings.rc includes, one each. Prints one line for each fault."""
import re
import sys
from pathlib import Path

# The code page in which the A functions give the texts of a language. English is what the users of every
# other language see: it has to be the same in all code pages.
CODE_PAGES = {"en": "ascii", "de": "cp1252", "fr": "cp1252", "es": "cp1252", "zh": "cp936", "ja": "cp932"}

DEFINE = re.compile(r"#define (IDS_\w+) +(\d+)  // (\d+)((?: (?:file|%\w+))*)")
TEXT = re.compile(r'    (IDS_\w+) +"(.*)"')
CONVERSION = re.compile(r"%[-+#0-9.*]*[A-Za-z%]?")
FORBIDDEN_IN_FILES = re.compile(r'[\x00-\x1f<>:"/\\|?*.]')
DEVICES = re.compile(r"(con|prn|aux|nul|com\d|lpt\d)$", re.IGNORECASE)


class Identifier:
    def __init__(self, name, number, room, rules):
        self.name, self.number, self.room = name, int(number), int(room)
        words = rules.split()
        self.names_files = "file" in words
        self.conversions = [word for word in words if word != "file"]


def read_identifiers(header):
    """The identifiers of the header by name, and the faults of the list."""
    found, faults = {}, []
    for line in header.read_text("utf-8").splitlines():
        if not line.startswith("#define"):
            continue
        match = DEFINE.fullmatch(line)
        if not match:
            faults.append(f"{header.name}: no number, room or known rule: {line}")
            continue
        row = Identifier(*match.groups())
        if row.name in found or row.number in {other.number for other in found.values()}:
            faults.append(f"{header.name}: twice: {line}")
        found[row.name] = row
    return found, faults


def read_texts(file):
    """The texts of one language by identifier, and the faults of the file's form."""
    lines = file.read_text("utf-8").splitlines()
    texts, faults = {}, []
    if "#pragma code_page(65001)" not in lines:
        faults.append(f"{file.name}: does not say that it is UTF-8")
    for line in lines[lines.index("BEGIN") + 1 : lines.index("END")]:
        match = TEXT.fullmatch(line)
        if match and '"' not in match[2] and "\\" not in match[2]:
            if match[1] in texts:
                faults.append(f"{file.name}: {match[1]} twice")
            texts[match[1]] = match[2]
        elif line.strip():
            faults.append(f"{file.name}: not an identifier and a plain text: {line.strip()}")
    return texts, faults


def in_code_page(text, code_page):
    """The text's bytes, or None when the code page lacks a character."""
    try:
        return text.encode(code_page)
    except UnicodeEncodeError:
        return None


def faults_of_file_name(text, encoded):
    if FORBIDDEN_IN_FILES.search(text) or DEVICES.match(text):
        yield "is no file name"
    if b"\\" in encoded:  # the second byte of some characters: a path is cut there when taken bytewise
        yield "has a byte that reads as a backslash"


def faults_of_text(row, text, code_page):
    encoded = in_code_page(text, code_page)
    if encoded is None:
        yield f"has a character that {code_page} lacks"
        return
    if not text or text != text.strip() or not text.replace("\u00a0", "").isprintable():
        yield "is empty, or has blanks around it or characters that cannot be seen"
    length = max(len(text.encode("utf-16-le")) // 2, len(encoded)) + 1
    if length > row.room:
        yield f"needs {length} of {row.room} characters"
    if CONVERSION.findall(text) != row.conversions:
        yield f"converts {CONVERSION.findall(text)}, not {row.conversions}"
    if row.names_files:
        yield from faults_of_file_name(text, encoded)


def equal_file_names(identifiers, texts):
    """Names that would meet in one folder."""
    seen = {}
    for row in identifiers.values():
        name = texts.get(row.name, "").casefold()
        if row.names_files and name:
            if name in seen:
                yield f"{row.name} and {seen[name]} name the same file"
            seen[name] = row.name


def faults_of_language(identifiers, file, code_page):
    texts, faults = read_texts(file)
    faults += [f"{file.name}: {name} has no text" for name in identifiers if name not in texts]
    for name, text in texts.items():
        if name not in identifiers:
            faults.append(f"{file.name}: {name} is no identifier")
            continue
        found = faults_of_text(identifiers[name], text, code_page)
        faults += [f'{file.name}: {name} "{text}" {fault}' for fault in found]
    return faults + [f"{file.name}: {fault}" for fault in equal_file_names(identifiers, texts)]


def faults_of_library(header, main_file):
    identifiers, faults = read_identifiers(header)
    included = re.findall(r'#include "strings_(\w+)\.rc"', main_file.read_text("utf-8"))
    if sorted(included) != sorted(CODE_PAGES):
        return faults + [f"{main_file.name}: languages {sorted(included)}, expected {sorted(CODE_PAGES)}"]
    for language, code_page in CODE_PAGES.items():
        faults += faults_of_language(identifiers, main_file.with_name(f"strings_{language}.rc"), code_page)
    return faults


def main():
    header, main_file = (Path(argument) for argument in sys.argv[1:])
    faults = faults_of_library(header, main_file)
    print("\n".join(faults) or f"texts in {len(CODE_PAGES)} languages")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
