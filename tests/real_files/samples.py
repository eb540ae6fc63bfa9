"""Files to identify: those of the prepared Wine, those of the compilers, and those made here."""
import glob
import os
import shutil
import struct
import subprocess
import zipfile

import expected as ex

TOOLS = {"i686": "i686-w64-mingw32-", "x86_64": "x86_64-w64-mingw32-"}

PROGRAM = """
#include <windows.h>
void entry(void)
{
    MessageBoxA(NULL, "", "", MB_OK);
    ExitProcess(0);
}
"""

LIBRARY = """
#include <windows.h>
__declspec(dllexport) int Answer(void)
{
    return (int)GetTickCount();
}
int entry(HINSTANCE module, DWORD reason, void* reserved)
{
    return module != NULL || reason != 0 || reserved != NULL;
}
"""

DRIVER = """
unsigned long DbgPrint(const char* format, ...);
long entry(void* driver, void* path)
{
    (void)driver;
    (void)path;
    DbgPrint("here");
    return 0;
}
"""

MANY_IMPORTS = """
#include <winsock2.h>
#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <oleauto.h>
#include <shellapi.h>
int OddName(void);
void entry(void)
{
    MessageBeep(0);
    GetStockObject(0);
    RegCloseKey(NULL);
    DragFinish(NULL);
    CoUninitialize();
    InitCommonControls();
    WSACleanup();
    timeGetTime();
    GetFileVersionInfoSizeA("", NULL);
    CommDlgExtendedError();
    SysFreeString(NULL);
    OddName();
    ExitProcess(0);
}
"""
MANY_LIBRARIES = ("kernel32 user32 gdi32 advapi32 shell32 ole32 comctl32 ws2_32 winmm version comdlg32 "
                  "oleaut32").split()

LONG = "0123456789" * 12
LETTERS = "Gr\u00f6\u00dfe \u2013 \u20ac 5 \u65e5\u672c \u00a9"


def run(*command, **options):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, **options)


# Version resources ------------------------------------------------------------------------------------------


def version_resource(blocks, translations=(), language="9, 1", number=1):
    """One of a resource script. blocks: [(key, {name: text})], translations: [(language, code page)]."""
    lines = [f"LANGUAGE {language}", f"{number} VERSIONINFO", "FILEVERSION 1, 2, 3, 4", "BEGIN"]
    if blocks:
        lines += ['BLOCK "StringFileInfo"', "BEGIN"]
        for key, texts in blocks:
            lines += [f'BLOCK "{key}"', "BEGIN"]
            lines += [f'VALUE "{name}", "{text}"' for name, text in texts.items()]
            lines += ["END"]
        lines += ["END"]
    if translations:
        pairs = ", ".join(f"0x{language:x}, {page}" for language, page in translations)
        lines += ['BLOCK "VarFileInfo"', "BEGIN", f'VALUE "Translation", {pairs}', "END"]
    return "\n".join(lines + ["END", ""])


def texts(description, version="1.2.3.4", company="The Makers"):
    return {"CompanyName": company, "FileDescription": description, "FileVersion": version,
            "ProductName": "A product"}


VERSIONS = {
    "plain": version_resource([("040904E4", texts("A program"))], [(0x409, 1252)]),
    "no_translation": version_resource([("040904E4", texts("Taken for American"))]),
    "no_translation_german": version_resource([("040704B0", texts("Never found"))]),
    "stored_order": version_resource([("04E40409", texts("The code page first"))], [(0x409, 1252)]),
    "both_orders": version_resource([("040904E4", texts("Language first")), ("04E40409", texts("Page first"))],
                                    [(0x409, 1252)]),
    "several_blocks": version_resource([("040704B0", texts("Ein Programm", company="Wir")),
                                        ("040904B0", texts("A program", company="Us"))],
                                       [(0x407, 1200), (0x409, 1200)]),
    "second_block": version_resource([("040704B0", texts("Ein Programm")), ("040904B0", texts("A program"))],
                                     [(0x409, 1200), (0x407, 1200)]),
    "other_block": version_resource([("040C04B0", texts("Un programme"))], [(0x409, 1200)]),
    "small_letters": version_resource([("040904e4", {"filedescription": "Small letters", "FILEVERSION": "7",
                                                     "companyname": "small"})], [(0x409, 1252)]),
    "no_description": version_resource([("040904E4", {"CompanyName": "No description", "FileVersion": "5.0"})],
                                       [(0x409, 1252)]),
    # Without a description the prefix is turned round, and nothing is found under the first one any more.
    "no_description_stored_order": version_resource([("04E40409", {"CompanyName": "Lost", "FileVersion": "5.0"})],
                                                    [(0x409, 1252)]),
    "empty_texts": version_resource([("040904E4", texts("", "", ""))], [(0x409, 1252)]),
    "long_texts": version_resource([("040904E4", texts(LONG, LONG, LONG))], [(0x409, 1252)]),
    "just_fitting": version_resource([("040904E4", texts(LONG[:79], LONG[:29], LONG[:39]))], [(0x409, 1252)]),
    "one_too_long": version_resource([("040904E4", texts(LONG[:80], LONG[:30], LONG[:40]))], [(0x409, 1252)]),
    "letters": version_resource([("040904B0", texts(LETTERS, LETTERS, LETTERS))], [(0x409, 1200)]),
    "long_letters": version_resource([("040904B0", texts("\u00e4" * 90, "\u65e5" * 40, "\u20ac" * 50))],
                                     [(0x409, 1200)]),
    "only_translation": version_resource([], [(0x409, 1252)]),
    "number_two": version_resource([("040904E4", texts("Of number two"))], [(0x409, 1252)], number=2),
    "german_and_american": version_resource([("040704E4", texts("Ein Programm"))], [(0x407, 1252)], "7, 1") +
    version_resource([("040904E4", texts("A program"))], [(0x409, 1252)]),
    "french_and_german": version_resource([("040C04E4", texts("Un programme"))], [(0x40c, 1252)], "12, 1") +
    version_resource([("040704E4", texts("Ein Programm"))], [(0x407, 1252)], "7, 1"),
    "american_and_neutral": version_resource([("040904E4", texts("A program"))], [(0x409, 1252)]) +
    version_resource([("000004E4", texts("Of no language"))], [(0, 1252)], "0, 0"),
    "two_numbers": version_resource([("040904E4", texts("Of number two"))], [(0x409, 1252)], number=2) +
    version_resource([("040904E4", texts("Of number one"))], [(0x409, 1252)]),
    "among_others": 'STRINGTABLE BEGIN 1, "one" 99, "another" END\nname RCDATA BEGIN 1, 2, 3 END\n' +
    version_resource([("040904E4", texts("Not alone"))], [(0x409, 1252)]) + "7 RCDATA BEGIN 4, 5 END\n",
}


class Maker:
    def __init__(self, directory):
        self.directory = directory
        self.made = []  # (path, type)

    def path(self, name):
        return os.path.join(self.directory, name)

    def add(self, name, kind, content=None):
        if content is not None:
            self.write(name, content)
        self.made.append((self.path(name), kind))

    def write(self, name, content):
        with open(self.path(name), "wb") as file:
            file.write(content)

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    # Windows programs ---------------------------------------------------------------------------------------

    def compile(self, source, name):
        self.write(name + ".c", source.encode())
        for target, prefix in TOOLS.items():
            run(prefix + "gcc", "-Os", "-fno-asynchronous-unwind-tables", "-c", self.path(name + ".c"), "-o",
                self.path(f"{name}.{target}.o"))

    def resource(self, target, name, script):
        self.write(name + ".rc", script.encode("utf-8"))
        result = self.path(f"{name}.{target}.res.o")
        run(TOOLS[target] + "windres", "-c", "65001", self.path(name + ".rc"), result)
        return result

    def link(self, target, name, kind, objects, *options):
        entry = "_entry" if target == "i686" else "entry"
        run(TOOLS[target] + "gcc", "-s", "-nostdlib", "-Wl,-e," + entry, *[self.path(part) for part in objects],
            "-o", self.path(name), *options)
        self.add(name, kind)

    def windows_programs(self):
        self.compile(PROGRAM, "program")
        self.compile(LIBRARY, "library")
        self.compile(DRIVER, "driver")
        self.compile(MANY_IMPORTS, "many")
        # 64-bit files have no types of their own.
        for target, short in (("i686", "32"), ("x86_64", "64")):
            standard = ("-luser32", "-lkernel32")
            version = self.resource(target, "plain", VERSIONS["plain"])
            self.link(target, f"program{short}.exe", ex.WINDOWS32, [f"program.{target}.o"], *standard)
            self.link(target, f"versioned{short}.exe", ex.WINDOWS32, [f"program.{target}.o", version], *standard)
            self.link(target, f"library{short}.dll", ex.WINDOWS32_DLL, [f"library.{target}.o", version], "-shared",
                      *standard)
            self.link(target, f"driver{short}.sys", ex.WINDOWS32, [f"driver.{target}.o", version],
                      "-Wl,--subsystem,native", "-lntoskrnl")
            self.link(target, f"aligned{short}.exe", ex.WINDOWS32, [f"program.{target}.o", version],
                      "-Wl,--file-alignment,4096", *standard)
            self.link(target, f"many{short}.exe", ex.WINDOWS32, [f"many.{target}.o", self.odd_library(target)],
                      *["-l" + library for library in reversed(MANY_LIBRARIES)])
            run(TOOLS[target] + "objcopy", "--rename-section", ".idata=.imports", self.path(f"versioned{short}.exe"),
                self.path(f"renamed{short}.exe"))
            self.add(f"renamed{short}.exe", ex.WINDOWS32)
        self.name_at_end("name_just_readable.exe", 12)
        self.name_at_end("name_not_readable.exe", 11)
        for name, script in VERSIONS.items():
            self.link("i686", f"version_{name}.exe", ex.WINDOWS32,
                      ["program.i686.o", self.resource("i686", name, script)], "-luser32", "-lkernel32")

    def name_at_end(self, name, left):
        """A program whose first imported name begins left bytes before the last page of the file ends."""
        image = bytearray(self.read("program32.exe"))
        section = image.index(b".idata\0\0")
        address, _, position = struct.unpack_from("<III", image, section + 12)
        image += bytes(-len(image) % ex.PAGE)
        struct.pack_into("<I", image, section + 8, len(image) - position)
        struct.pack_into("<I", image, section + 16, len(image) - position)
        struct.pack_into("<I", image, position + 12, address + len(image) - left - position)
        image[len(image) - left:] = b"LAST.dll".ljust(left, b"\0")
        self.add(name, ex.WINDOWS32, bytes(image))

    def odd_library(self, target):
        """An import library for a module of a name that is long, and spelt in both cases."""
        self.write("odd.def", b"LIBRARY " + b"OddName" + b"_of_many_letters" * 6 + b".DLL\nEXPORTS\nOddName\n")
        result = f"libodd.{target}.a"
        run(TOOLS[target] + "dlltool", "-d", self.path("odd.def"), "-l", self.path(result))
        return result

    # Older executables --------------------------------------------------------------------------------------

    def older_programs(self):
        self.add("dos.exe", ex.DOS, dos_program())
        self.add("dos_no_new_header.exe", ex.DOS, dos_stub(0) + bytes(64))
        self.add("dos_odd_mark.exe", ex.DOS, dos_stub(64) + b"ZM" + bytes(200))
        self.add("new_header_fits.exe", ex.DOS, dos_stub(64) + bytes(64))
        self.add("new_header_too_far.exe", ex.NOT_RECOGNISED, dos_stub(65) + bytes(64))
        self.add("new_header_negative.exe", ex.NOT_RECOGNISED, dos_stub(0xFFFFFFF0) + bytes(640))
        self.add("stub_alone.exe", ex.NOT_RECOGNISED, dos_stub(64))
        self.add("short_stub.exe", ex.NOT_RECOGNISED, dos_program()[:63])
        modules = ["KERNEL", "GDI", "USER"]
        self.add("windows16.exe", ex.WINDOWS16, ne_program(2, 0, modules, "A Windows program"))
        self.add("windows16.dll", ex.WINDOWS16_DLL, ne_program(2, 0x80, modules, "A library of it"))
        self.add("windows16_both.exe", ex.WINDOWS16, ne_program(3, 0x7F, modules, "Of both systems"))
        self.add("os2.exe", ex.OS2, ne_program(1, 0x80, ["DOSCALLS"], "For the other system"))
        self.add("european_dos.exe", ex.DOS, ne_program(4, 0, modules, "For yet another one"))
        self.add("one_word.exe", ex.WINDOWS16, ne_program(2, 0, modules, "PROGRAM"))
        self.add("no_modules.exe", ex.WINDOWS16, ne_program(2, 0, [], "Needs nobody"))
        self.add("long_names.exe", ex.WINDOWS16, ne_program(2, 0, ["M" * 8, "M" * 19, "M" * 20, "M" * 200],
                                                           "many words " * 20))
        self.add("many_modules.exe", ex.WINDOWS16, ne_program(2, 0, [f"MOD{i:03}" for i in range(300)], "300 of them"))
        self.add("names_at_end.exe", ex.WINDOWS16, ne_program(2, 0, modules, "Not to be read", behind=0))
        self.add("names_just_before_end.exe", ex.WINDOWS16, ne_program(2, 0, modules, "To be read", behind=1))
        for mark, kind in ((b"LE", ex.VXD), (b"LX", ex.OS2_VERSION_2)):
            self.add(f"linear_{mark.decode().lower()}.exe", kind, linear_program(mark))

    # Archives and compressed files --------------------------------------------------------------------------

    def archives(self):
        content = self.path("content")
        os.mkdir(content)
        for i in range(12):
            self.write(f"content/text{i}.txt", f"line {i}\r\n".encode() * (i * 40 + 1))
        self.write("content/noise.bin", bytes(i * i * 7919 >> 5 & 255 for i in range(150000)))
        names = sorted(os.listdir(content))
        run("zip", "-q", "-X", self.path("zip.zip"), *names, cwd=content)
        run("zip", "-q", "-X", "-0", self.path("zip_stored.zip"), *names[1:], cwd=content)
        run("zip", "-q", "-X", "-z", self.path("zip_comment.zip"), *names[1:], cwd=content,
            input=b"what is in here\n")
        run("zip", "-q", "-X", "-0", "-s", "64k", self.path("zip_split.zip"), *names, cwd=content)
        run("7z", "a", "-tzip", self.path("7z.zip"), *names, cwd=content)
        run("7z", "a", self.path("7z.7z"), *names[1:], cwd=content)
        for name in ("zip.zip", "zip_stored.zip", "zip_comment.zip", "7z.zip"):
            self.add(name, ex.ZIP)
        for name in ("zip_split.zip", "zip_split.z01", "7z.7z", "content/noise.bin"):
            self.add(name, ex.NOT_RECOGNISED)
        self.add("szdd.tx_", ex.COMPRESSED, szdd(b"The quick brown fox jumps over the lazy dog.\r\n" * 4, b"t"))
        self.add("szdd_short.tx_", ex.NOT_RECOGNISED, szdd(b"short", b"t"))
        self.add("kwaj.tx_", ex.NOT_RECOGNISED, b"KWAJ\x88\xf0\x27\xd1" + bytes(100))
        self.written_archives()
        self.behind_programs()

    def archive(self, name, kind, members, comment=b"", method=zipfile.ZIP_DEFLATED, mode="w"):
        with zipfile.ZipFile(self.path(name), mode, method) as archive:
            for i in range(members):
                archive.writestr(zipfile.ZipInfo(f"member{i}.txt"), f"content {i} " * 9, method)
            archive.comment = comment
        self.add(name, kind)

    def written_archives(self):
        self.archive("stored.zip", ex.ZIP, 1, method=zipfile.ZIP_STORED)
        self.archive("deflated.zip", ex.ZIP, 3)
        self.archive("many.zip", ex.ZIP, 2500)
        self.archive("comment.zip", ex.ZIP, 3, b"a comment")
        # The end record has to lie in the last 2048 bytes.
        self.archive("longest_comment.zip", ex.ZIP, 3, b"c" * 2026)
        self.archive("comment_too_long.zip", ex.NOT_RECOGNISED, 3, b"c" * 2027)
        self.archive("much_too_long.zip", ex.NOT_RECOGNISED, 3, b"c" * 30000)
        # The last such mark counts, also in a comment.
        self.archive("mark_in_comment.zip", ex.NOT_RECOGNISED, 3, b"PK\5\6" + b"x" * 40)
        self.archive("mark_at_end.zip", ex.ZIP, 3, b"x" * 40 + b"PK\5\6" + b"x" * 17)
        # Position 0 is as good as none.
        self.archive("empty.zip", ex.NOT_RECOGNISED, 0)

    def behind_programs(self):
        archive = self.read("deflated.zip")
        for program in ("dos.exe", "european_dos.exe", "dos_odd_mark.exe"):
            self.add("sfx_" + program, ex.SELF_EXTRACTING, self.read(program) + archive)
        for program in ("versioned32.exe", "program64.exe", "library32.dll", "windows16.exe", "linear_le.exe",
                        "os2.exe", "new_header_negative.exe", "szdd.tx_"):
            self.add("zip_behind_" + program, ex.ZIP, self.read(program) + archive)
        self.add("empty_zip_behind_dos.exe", ex.SELF_EXTRACTING, self.read("dos.exe") + self.read("empty.zip"))
        # Written by a packer rather than glued on: positions count from the program's start.
        shutil.copy(self.path("versioned32.exe"), self.path("packed_behind.exe"))
        self.archive("packed_behind.exe", ex.ZIP, 2, mode="a")

    # Other files --------------------------------------------------------------------------------------------

    def others(self):
        self.add("nothing.txt", ex.NOT_RECOGNISED, b"")
        self.add("byte.txt", ex.NOT_RECOGNISED, b"M")
        self.add("text.txt", ex.NOT_RECOGNISED, b"MZ is how DOS programs begin.\r\n")
        self.add("long_text.txt", ex.NOT_RECOGNISED, b"The quick brown fox.\r\n" * 5000)
        self.add("wide.txt", ex.NOT_RECOGNISED, "\ufeffText of two bytes a letter.\r\n".encode("utf-16-le") * 9)


def dos_stub(new_header):
    """The 64 bytes that a new header's offset ends."""
    return struct.pack("<2s13H", b"MZ", 0, 1, 0, 4, 0, 0xFFFF, 0, 0xB8, 0, 0, 0, 64, 0).ljust(60, b"\0") + \
        struct.pack("<I", new_header)


def dos_program():
    """Prints a dollar-terminated text and ends: a header of 32 bytes, the relocation table behind it."""
    code = b"\x0e\x1f\xba\x0e\x00\xb4\x09\xcd\x21\xb8\x00\x4c\xcd\x21" + b"Good day.\r\n$"
    image = code.ljust(96, b"\0")
    header = struct.pack("<2s13H", b"MZ", len(image) + 32, 1, 0, 2, 0, 0xFFFF, 0, 0x100, 0, 0, 0, 28, 0)
    return header.ljust(32, b"\0") + image


def counted(name):
    return bytes([len(name) & 255]) + name.encode()[:255]


def ne_program(target, flags, modules, description, behind=20):
    """A 16-bit program without segments. behind: bytes behind its non-resident names."""
    names, offsets = bytearray(1), []
    for module in modules:
        offsets.append(len(names))
        names += counted(module)
    references = struct.pack(f"<{len(offsets)}H", *offsets)
    resident = counted("PROGRAM") + b"\0\0\0"
    at = 64
    resident_at, references_at = at, at + len(resident)
    names_at = references_at + len(references)
    entries_at = names_at + len(names)
    non_resident = counted(description[:255]) + b"\0\0" + counted("EXPORT") + b"\1\0\0"
    position = 64 + entries_at + 2
    header = bytearray(64)
    struct.pack_into("<2sBBHH", header, 0, b"NE", 5, 10, entries_at, 2)
    struct.pack_into("<BB", header, 12, 0, flags)
    struct.pack_into("<HHH", header, 28, 0, len(modules), len(non_resident))
    struct.pack_into("<HHHHHI", header, 34, at, at, resident_at, references_at, names_at, position)
    header[54] = target
    return dos_stub(64) + bytes(header) + resident + references + bytes(names) + b"\0\0" + non_resident + bytes(behind)


def linear_program(mark):
    header = struct.pack("<2sBBIHHII", mark, 0, 0, 0, 2, 4, 0, 0).ljust(176, b"\0")
    return dos_stub(128).ljust(128, b"\0") + header + bytes(300)


def szdd(content, last):
    """Compressed with nothing but literals: eight of them behind each flag byte."""
    body = b"".join(b"\xff" + content[at:at + 8] for at in range(0, len(content), 8))
    return b"SZDD\x88\xf0\x27\x33A" + last + struct.pack("<I", len(content)) + body


def make(directory):
    """Makes all the files anew; returns [(path, type)]."""
    shutil.rmtree(directory, ignore_errors=True)
    os.makedirs(directory)
    maker = Maker(directory)
    maker.windows_programs()
    maker.older_programs()
    maker.archives()
    maker.others()
    return maker.made


def of_wine(root):
    """The modules of the prepared Wine: all of its Windows ones, and its Linux ones, which are no type."""
    return sorted(path for path in glob.glob(os.path.join(root, "usr/lib/*/wine/*/*")) if os.path.isfile(path))


def of_compilers():
    return sorted(glob.glob("/usr/lib/gcc/*-w64-mingw32/*/*.dll") + glob.glob("/usr/*-w64-mingw32/lib/*.dll"))


def of_project(project):
    return sorted(path for pattern in ("*.md", "LICENSE", "docs/**/*", "tests/**/*.*")
                  for path in glob.glob(os.path.join(project, pattern), recursive=True) if os.path.isfile(path))
