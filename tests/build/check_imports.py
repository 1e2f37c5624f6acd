#!/usr/bin/python3
"""check_imports.py [--expected LIST] [--update LIST] DLL IMPORTS_FOLDER

What VlCommon.dll takes from other modules. The library is loaded into every program of the suite and
into Explorer: loading must stay cheap and work on 64-bit Windows XP, beside any build of the suite's
modules. LIST is the reviewed import table; --update writes it anew.
"""
import argparse
import pathlib
import re
import sys

import pefile

# Loaded together with the library: the kernel, the C runtime, the suite.
KERNEL_AND_RUNTIME = {"kernel32.dll", "msvcrt.dll"}
SUITE = {"vlsdk.dll", "vltrace.dll", "vlmobilesdk.dll"}
# Bound at the first call.
DELAYED = {"shell32.dll", "ole32.dll", "shlwapi.dll", "user32.dll", "advapi32.dll", "winspool.drv",
           "gdiplus.dll"}

# Well-known functions that came after 64-bit Windows XP. The list does not end here: whoever adds a
# line to the reviewed table looks up since when the function exists.
NEWER_THAN_XP = re.compile("|".join((
    r"InitOnce\w+", r"\w*ConditionVariable\w*", r"\w*SRWLock\w*", r"WaitOnAddress", r"WakeByAddress\w+",
    r"GetTickCount64", r"QueryUnbiasedInterruptTime", r"GetSystemTimePreciseAsFileTime",
    r"CreateFile2", r"CopyFile2", r"CreateSymbolicLink\w+", r"GetFinalPathNameByHandle\w+",
    r"GetFileInformationByHandleEx", r"SetFileInformationByHandle", r"FindFirstFileNameW", r"CancelIoEx",
    r"CancelSynchronousIo", r"CreateEventEx\w", r"CreateMutexEx\w", r"CreateSemaphoreEx\w",
    r"InitializeCriticalSectionEx", r"CreateThreadpool\w+", r"\w+ThreadpoolWait\w*",
    r"QueryFullProcessImageName\w", r"GetProcessIdOfThread", r"SetThreadDescription",
    r"InitializeProcThreadAttributeList", r"UpdateProcThreadAttribute", r"K32\w+", r"CreateRemoteThreadEx",
    r"SetDefaultDllDirectories", r"AddDllDirectory", r"RemoveDllDirectory", r"\w*Package\w*",
    r"CompareStringEx", r"CompareStringOrdinal", r"FindStringOrdinal", r"LCMapStringEx",
    r"GetLocaleInfoEx", r"GetUserDefaultLocaleName", r"GetSystemDefaultLocaleName", r"LCIDToLocaleName",
    r"LocaleNameToLCID", r"Get(Date|Time)FormatEx", r"GetNumberFormatEx", r"IdnTo\w+", r"NormalizeString",
    r"RegDeleteTree\w", r"RegCopyTree\w", r"RegSetKeyValue\w", r"RegDeleteKeyValue\w",
    r"RegLoadAppKey\w", r"RegDisableReflectionKey",
    r"ChangeWindowMessageFilter\w*", r"SetProcessDPIAware\w*", r"GetDpiFor\w+", r"\w*Touch\w*",
    r"IsProcessDPIAware", r"AddClipboardFormatListener", r"\w*Gesture\w*",
    r"SHGetKnownFolder\w+", r"SHGetStockIconInfo", r"SHCreateItem\w+", r"SHGetNameFromIDList",
    r"SHGetPropertyStore\w+", r"SetCurrentProcessExplicitAppUserModelID",
    r"SHCreateThreadWithHandle",
    r"GetDefaultPrinter2\w?", r"OpenPrinter2\w", r"GetPrinterDriverPackagePath\w", r"UploadPrinterDriver\w+",
    r"\w+_s", r"\w+_s_l", r"_\w+printf_p", r"_create_locale", r"_free_locale", r"_\w+_l", r"_difftime64",
    r"strnlen", r"wcsnlen",
)))


def table(pe):
    """The rows (kind, dll, function) of both import tables, sorted."""
    rows = []
    for kind, attribute in (("import", "DIRECTORY_ENTRY_IMPORT"), ("delay", "DIRECTORY_ENTRY_DELAY_IMPORT")):
        for entry in getattr(pe, attribute, []):
            for symbol in entry.imports:
                name = symbol.name.decode() if symbol.name else f"#{symbol.ordinal}"
                rows.append((kind, entry.dll.decode().lower(), name))
    return sorted(rows)


def interface_names(folder):
    """Per suite module the names that its interface lists; "ours == theirs" is a renamed one."""
    names = {}
    for path in pathlib.Path(folder).glob("*.def"):
        lines = [line.split(";")[0].strip() for line in path.read_text(encoding="utf-8").splitlines()]
        dll = next(line.split()[1] for line in lines if line.startswith("LIBRARY"))
        listed = lines[lines.index("EXPORTS") + 1:]
        names[dll.lower()] = {line.split("==")[-1].strip() for line in listed if line}
    return names


def broken_rules(rows, interfaces):
    for kind, dll, name in rows:
        where = f"{kind} {dll} {name}"
        if kind == "import" and dll not in KERNEL_AND_RUNTIME | SUITE:
            yield f"{where}: must be bound at its first call: list it in imports/{dll.split('.')[0]}.def"
        if kind == "delay" and dll not in DELAYED:
            yield f"{where}: not among the modules that are bound late"
        if dll in SUITE | DELAYED and name not in interfaces.get(dll, set()):
            yield f"{where}: not in imports/*.def"
        if dll not in SUITE and NEWER_THAN_XP.fullmatch(name):
            yield f"{where}: 64-bit Windows XP lacks it"
        if name.startswith("#"):
            yield f"{where}: imported by number"


def changes(rows, path):
    expected = set(pathlib.Path(path).read_text(encoding="utf-8").splitlines())
    actual = {" ".join(row) for row in rows}
    for line in sorted(actual - expected):
        yield f"new: {line}"
    for line in sorted(expected - actual):
        yield f"gone: {line}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--expected", metavar="LIST")
    parser.add_argument("--update", metavar="LIST")
    parser.add_argument("dll")
    parser.add_argument("imports_folder")
    args = parser.parse_args()

    rows = table(pefile.PE(args.dll))
    findings = list(broken_rules(rows, interface_names(args.imports_folder)))
    if not any(row[0] == "delay" for row in rows):
        findings.append("no delay imports: the header entry is missing")
    if args.update:
        pathlib.Path(args.update).write_text("".join(" ".join(row) + "\n" for row in rows), encoding="utf-8")
    if args.expected:
        differences = list(changes(rows, args.expected))
        findings += differences
        if differences:
            findings.append("reviewed and meant? cmake --build --preset win64 --target update_expected_imports")
    print("\n".join(findings) or f"{len(rows)} imports, as expected")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
