#!/usr/bin/python3
"""functions_page.py DEF HEADER_FOLDER: the reference's page of all exported functions, by subsystem. An
exported function without subsystem or comment is an error."""
import pathlib
import re
import sys

from reference_sources import commented, exported, subsystems


def first_sentence(comment):
    text = " ".join(line.strip().lstrip("*").strip() for line in comment.split("\n")).strip()
    text = re.split(r"(?<=[.:])\s|\s@", text)[0].rstrip(":")
    return text.replace("|", "\\|").replace("<", "\\<").replace("#", "\\#")


def described(folder):
    """Function -> (header, first sentence)."""
    return {name: (header.name, first_sentence(comment))
            for header in sorted(folder.glob("*.h")) for name, comment in commented(header)}


def errors(names, functions, groups):
    for name in names:
        if name not in functions:
            yield f"{name}: no comment"
        elif functions[name][0] not in groups:
            yield f"{name}: subsystems.dox does not name {functions[name][0]}"


def page(names, functions, groups):
    yield "/**\n@page functions All exported functions\n"
    yield f"The {len(names)} functions that VlCommon.dll exports, by subsystem."
    for group in dict.fromkeys(groups.values()):
        yield f"\n@section functions_{group} @ref {group}\n"
        yield "| function | declared in | |\n|---|---|---|"
        for name in sorted(names):
            header, sentence = functions[name]
            if groups[header] == group:
                yield f"| @ref {name} | vlcm/{header} | {sentence} |"
    yield "*/"


def main():
    names = exported(sys.argv[1])
    functions = described(pathlib.Path(sys.argv[2]))
    groups = subsystems()
    found = list(errors(names, functions, groups))
    if found:
        sys.exit("\n".join(found))
    print("\n".join(page(names, functions, groups)))


if __name__ == "__main__":
    main()
