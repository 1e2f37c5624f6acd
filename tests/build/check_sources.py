#!/usr/bin/python3
"""check_sources.py LIBRARY_FOLDER: resources are closed by their owner types and nowhere else.

A close call outside frame/unique*.h is a path that a later change can forget.
"""
import pathlib
import re
import sys

CLOSING_CALL = re.compile(r"\b(" + "|".join((
    "CloseHandle", "FindClose", "FreeLibrary", "FreeLibraryAndExitThread", "UnmapViewOfFile", "RegCloseKey",
    "ClosePrinter", "FreeSid", "CoUninitialize", "CoTaskMemFree", "GlobalFree", "LocalFree", "HeapFree",
    "VirtualFree", "GdiplusShutdown", "GdipDisposeImage", "GdipFree", "DestroyWindow", "DestroyIcon", "DeleteObject",
    "Btsdk_CloseHandle", "Btsdk_FreeMemory", "Btsdk_RegCloseKey", "Btsdk_RegCloseKeyForX64Reg",
    r"Btsdk_EndEnum\w+", r"MB_EndEnum\w+", "free")) + r")\s*\(|(?:->|\.)\s*(Release)\s*\(|\b(delete)\b\s*(?:\[\])?\s*[\w*(]")

OWNERS = re.compile(r"frame/unique\w*\.h")

# (file, call): why it closes by hand.
ALLOWED = {
    ("frame/library.cpp", "CloseHandle"): "the semaphore lives from attach to detach, not in a scope",
    ("frame/operator_new.cpp", "free"): "this is the allocator",
    ("process/dialer.cpp", "FreeLibraryAndExitThread"): "the worker ends itself and its reference in one",
    ("process/task_memory.cpp", "CoTaskMemFree"): "the exported free call",
}

COMMENT_OR_TEXT = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"', re.DOTALL)
DELETED_FUNCTION = re.compile(r"=\s*delete\b|\boperator\s+delete\b[^({]*")


def code_of(path):
    """The text without comments and literals, line by line as it was."""
    text = COMMENT_OR_TEXT.sub(lambda found: "\n" * found.group().count("\n"), path.read_text(encoding="utf-8"))
    return DELETED_FUNCTION.sub("", text)


def closing_calls(root):
    for path in sorted(p for p in root.rglob("*") if p.suffix in (".h", ".cpp") and "include" not in p.parts):
        name = path.relative_to(root).as_posix()
        if OWNERS.fullmatch(name):
            continue
        for number, line in enumerate(code_of(path).splitlines(), 1):
            for call in CLOSING_CALL.finditer(line):
                yield name, number, next(group for group in call.groups() if group)


def main():
    root = pathlib.Path(sys.argv[1])
    found = list(closing_calls(root))
    wrong = [f"{name}:{number}: {call} outside the owner types (see frame/unique.h)"
             for name, number, call in found if (name, call) not in ALLOWED]
    unused = ALLOWED.keys() - {(name, call) for name, _, call in found}
    wrong += [f"{name}: {call} is allowed there but not called: take the row out" for name, call in sorted(unused)]
    print("\n".join(wrong) or f"{len(found)} closing calls outside the owner types, all allowed")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
