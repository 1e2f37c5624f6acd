#!/usr/bin/python3
"""check_reference.py XML_FOLDER DEF: every exported function stands in the reference, in one subsystem, with
a description and one for each parameter."""
import pathlib
import sys
import xml.etree.ElementTree as ElementTree

from reference_sources import exported


def text_of(element):
    return "".join(element.itertext()).strip() if element is not None else ""


def groups_of(folder):
    """Function -> its definitions, one for each subsystem that holds it."""
    found = {}
    for path in sorted(folder.glob("group__*.xml")):
        for member in ElementTree.parse(path).iter("memberdef"):
            if member.get("kind") == "function":
                found.setdefault(member.findtext("name"), []).append(member)
    return found


def findings(name, definitions):
    if len(definitions) != 1:
        yield f"{name}: in {len(definitions)} subsystems"
        return
    member = definitions[0]
    if not text_of(member.find("briefdescription")):
        yield f"{name}: no description"
    described = {text_of(item) for item in member.iter("parametername")}
    for parameter in member.iter("declname"):
        if text_of(parameter) not in described:
            yield f"{name}: parameter {text_of(parameter)} is not described"


def main():
    folder = pathlib.Path(sys.argv[1])
    names = exported(sys.argv[2])
    groups = groups_of(folder)
    found = [line for name in names for line in findings(name, groups.get(name, []))]
    print("\n".join(found) or f"{len(names)} functions in {len(list(folder.glob('group__*.xml')))} subsystems")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
