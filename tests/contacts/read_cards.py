#!/usr/bin/python3
"""read_cards.py FOLDER: reads every card in the folder with a reader that is not ours and compares it
with the contact's details beside it (NAME.vcf, NAME.json; the form is that of docs/simulator.md).
"""
import json
import pathlib
import sys

import vobject

LIMIT = 259         # bytes of a value
NUMBER_LIMIT = 40
PHONES = (("cell", 6, ["CELL", "VOICE"]), ("home", 1, ["HOME", "VOICE"]), ("work", 2, ["WORK", "VOICE"]),
          ("voice", 0, ["VOICE"]))
ADDRESS = ("street", "locality", "region", "postalCode", "country")
# What must be among the cards: the scripts.
WANTED = ("王", "محمد", "😀")


def cut(value):
    return value.encode()[:LIMIT].decode()


def components(value, count):
    parts = value.split(";")
    return parts + [""] * (count - len(parts))


def expected_names(details):
    family, given, additional = (details.get(key, "") for key in ("family", "given", "additional"))
    structured = cut(";".join([family] + [name for name in (given, additional) if name]))
    yield "N", [], components(structured, 3)
    yield "FN", [], cut(family + given + additional)


def expected_work(details):
    organisation = details.get("department") or details.get("company")
    if organisation:
        yield "ORG", [], [organisation]
    if details.get("title"):
        yield "TITLE", [], details["title"]


def expected_phones(details):
    phones = details.get("phones", [])
    for name, number, kinds in PHONES:
        found = [phone["number"] for phone in phones if phone["type"] in (name, number) and phone["number"]]
        if found:
            yield "TEL", kinds, found[0][:NUMBER_LIMIT]


def expected_address(details, place):
    texts = [details.get(place, {}).get(key, "") for key in ADDRESS]
    if any(texts):
        yield "ADR", [place.upper(), "PREF"], components(cut(";" + ";".join(texts)), 6)[1:]


def expected_first(details, member, name, kinds):
    texts = details.get(member, [])
    if texts and texts[0]:
        yield name, kinds, texts[0]


def expected(details):
    yield "VERSION", [], "2.1"
    yield from expected_names(details)
    yield from expected_work(details)
    yield from expected_phones(details)
    yield from expected_address(details, "work")
    yield from expected_address(details, "home")
    yield from expected_first(details, "urls", "URL", ["WORK"])
    yield from expected_first(details, "emails", "EMAIL", ["PREF", "INTERNET"])


def value_of(line):
    if line.name == "N":
        return [line.value.family, line.value.given, line.value.additional]
    if line.name == "ADR":
        address = line.value
        assert not address.box and not address.extended, address
        return [address.street, address.city, address.region, address.code, address.country]
    return line.value


def told(card):
    for line in card.lines():
        yield line.name, line.singletonparams, value_of(line)


def check(path):
    text = path.read_bytes().decode("utf-8")
    cards = list(vobject.readComponents(text))
    wanted = sorted(map(repr, expected(json.loads(path.with_suffix(".json").read_bytes()))))
    found = [sorted(map(repr, told(card))) for card in cards]
    if found == [wanted]:
        return True
    print(f"{path.name}: expected\n  " + "\n  ".join(wanted) + f"\nread\n  {found}")
    return False


def main():
    paths = sorted(pathlib.Path(sys.argv[1]).glob("*.vcf"))
    wrong = [path for path in paths if not check(path)]
    everything = "".join(path.read_text("utf-8") for path in paths)
    missing = [text for text in WANTED if text not in everything]
    if missing:
        print(f"no card holds {missing}")
    print(f"{len(paths)} cards read, {len(wrong)} not as written")
    return 1 if wrong or missing else 0


if __name__ == "__main__":
    sys.exit(main())
