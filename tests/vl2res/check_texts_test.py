#!/usr/bin/python3
"""check_texts.py takes the shipped texts and refuses each kind of fault."""
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

FOLDER = Path(__file__).resolve().parents[2] / "BaseVersion" / "vl2res"

# Label, file, what is replaced in it by what, and what the check answers.
FAULTS = [
    ("a text is missing", "strings_ja.rc", '    IDS_SIZE_BYTES                 "バイト"\n', "",
     "strings_ja.rc: IDS_SIZE_BYTES has no text"),
    ("a text is listed nowhere", "string_ids.h", "#define IDS_SIZE_BYTES                  1217  // 128\n", "",
     "strings_de.rc: IDS_SIZE_BYTES is no identifier"),
    ("a text stands twice", "strings_fr.rc", '"octets"\n', '"octets"\n    IDS_SIZE_BYTES "octets"\n',
     "strings_fr.rc: IDS_SIZE_BYTES twice"),
    ("a text is empty", "strings_es.rc", '"Conectado"', '""', "is empty"),
    ("a text ends in a blank", "strings_es.rc", '"Conectado"', '"Conectado "', "has blanks around it"),
    ("a character cannot be seen", "strings_es.rc", '"Conectado"', '"Conec\ttado"', "characters that cannot be seen"),
    ("a code page lacks a character", "strings_de.rc", '"Drucken"', '"印刷"', "has a character that cp1252 lacks"),
    ("English is not plain", "strings_en.rc", '"Camera"', '"Caméra"', "has a character that ascii lacks"),
    ("a narrow text is too long", "strings_ja.rc", '"COM%d"', '"シリアルポート番号%d"', "needs 21 of 20"),
    ("a text is too long by one", "strings_de.rc", '"COM%d"', '"Serienanschluss 1 %d"', "needs 21 of 20"),
    ("another conversion", "strings_zh.rc", '"COM%d"', '"COM%s"', "converts ['%s'], not ['%d']"),
    ("one conversion more", "strings_zh.rc", '"COM%d"', '"COM%d %d"', "converts ['%d', '%d'], not ['%d']"),
    ("a conversion is lost", "strings_ja.rc", '"%s は接続中', '"接続中', "converts [], not ['%s']"),
    ("a conversion where none belongs", "strings_fr.rc", '"octets"', '"octets %d"', "converts ['%d'], not []"),
    ("a percent sign", "strings_fr.rc", '"octets"', '"100 % octets"', "converts ['%'], not []"),
    ("no name of a file", "strings_fr.rc", '"Appareil inconnu"', '"Appareil ?"', "is no file name"),
    ("the name of a device", "strings_zh.rc", '"蓝牙"', '"COM5"', "is no file name"),
    ("a name with a dot", "strings_zh.rc", '"蓝牙"', '"蓝牙."', "is no file name"),
    ("a byte that reads as a backslash", "strings_ja.rc", '"不明なデバイス"', '"予定表"', "reads as a backslash"),
    ("two equal names of files", "strings_de.rc", '"Anderes Bluetooth-Gerät"', '"unbekanntes gerät"',
     "name the same file"),
    ("an escape", "strings_de.rc", '"Drucken"', '"Druck\\ten"', "not an identifier and a plain text"),
    ("a stray line", "strings_de.rc", '"Drucken"', '"Drucken"\n    oops', "not an identifier and a plain text: oops"),
    ("another encoding", "strings_de.rc", "#pragma code_page(65001)\n", "", "does not say that it is UTF-8"),
    ("a language is left out", "strings.rc", '#include "strings_ja.rc"\n', "", "expected ['de', 'en'"),
    ("an identifier without a room", "string_ids.h", "1217  // 128", "1217", "no number, room or known rule"),
    ("a rule that nobody knows", "string_ids.h", "1217  // 128", "1217  // 128 path", "no number, room or known rule"),
    ("a number stands twice", "string_ids.h", "1217  // 128", "1216  // 128", "string_ids.h: twice"),
]


def check(folder):
    command = [FOLDER / "check_texts.py", folder / "string_ids.h", folder / "strings.rc"]
    return subprocess.run(command, stdout=subprocess.PIPE, encoding="utf-8", check=False)


class CheckTexts(unittest.TestCase):
    def test_takes_the_shipped_texts(self):
        result = check(FOLDER)
        self.assertEqual((result.returncode, result.stdout), (0, "texts in 6 languages\n"))

    def test_refuses_each_kind_of_fault(self):
        for label, file, old, new, answer in FAULTS:
            with self.subTest(label), tempfile.TemporaryDirectory() as work:
                folder = Path(work) / "texts"
                shutil.copytree(FOLDER, folder)
                text = (folder / file).read_text("utf-8")
                self.assertEqual(text.count(old), 1)
                (folder / file).write_text(text.replace(old, new), "utf-8")
                result = check(folder)
                self.assertEqual(result.returncode, 1)
                self.assertIn(answer, result.stdout)


if __name__ == "__main__":
    sys.exit(unittest.main())
