"""What is to be found out about a file, read from its bytes alone.

Nothing here is shared with the program: the rules are written down a second time, and what a PE file's
resources hold is read by the pefile package.
"""
import struct
from dataclasses import dataclass, field

import pefile

NOT_RECOGNISED, WINDOWS16, WINDOWS16_DLL, VXD, WINDOWS32_DLL, WINDOWS32 = range(6)
OS2, OS2_VERSION_2, DOS, SELF_EXTRACTING, ZIP, COMPRESSED = range(6, 12)

PAGE = 4096
NEUTRAL, AMERICAN_ENGLISH = 0, 0x409
TEXTS = (("FileDescription", 79), ("FileVersion", 29), ("CompanyName", 39))


@dataclass
class Facts:
    size: int
    type: int = NOT_RECOGNISED
    zip_end: int = 0
    machine: int = 0
    import_count: int = 0
    texts: list = field(default_factory=lambda: [b"", b"", b""])
    imports: list = field(default_factory=list)


class View:
    """A file's bytes as a mapped view shows them: zeros follow up to the end of the last page."""

    def __init__(self, data):
        self.data = data
        self.size = len(data)
        self.end = (self.size + PAGE - 1) // PAGE * PAGE

    def readable(self, offset, count):
        return offset + count <= self.end

    def take(self, offset, count):
        return bytes(self.data[offset:offset + count]).ljust(count, b"\0")

    def u16(self, offset):
        return struct.unpack_from("<H", self.data, offset)[0] if offset + 2 <= self.size else \
            struct.unpack("<H", self.take(offset, 2))[0]

    def u32(self, offset):
        return struct.unpack_from("<I", self.data, offset)[0] if offset + 4 <= self.size else \
            struct.unpack("<I", self.take(offset, 4))[0]

    def text(self, offset):
        end = self.data.find(b"\0", offset)
        return bytes(self.data[offset:end if end >= 0 else self.size])


def zip_end(view):
    """Position of the end record of an archive on one disk, in the last 2048 bytes; 0 = none."""
    start = max(view.size - 2048, 0)
    tail = bytes(view.data[start:view.size])
    at = tail.rfind(b"PK\5\6", 0, max(len(tail) - 22 + 4, 0))
    if at < 0 or tail[at + 4:at + 8] != b"\0\0\0\0":
        return 0
    return start + at


def header_type(view):
    """The type that the headers tell, and where the new header is; 0 = there is none."""
    if view.size < 64:
        return NOT_RECOGNISED, 0
    if view.take(0, 4) == b"SZDD":
        return COMPRESSED, 0
    if view.take(0, 2) != b"MZ":
        return NOT_RECOGNISED, 0
    new = view.u32(60)
    if view.u16(24) < 64 or new == 0:
        return DOS, 0
    if new > view.size - 64:
        return NOT_RECOGNISED, 0
    mark = view.take(new, 2)
    if mark == b"NE":
        target = view.take(new + 54, 1)[0]
        if target & 2:
            return (WINDOWS16_DLL if view.take(new + 13, 1)[0] & 0x80 else WINDOWS16), new
        return (OS2 if target & 1 else DOS), new
    if mark == b"PE":
        return (WINDOWS32_DLL if view.u16(new + 22) & 0x2000 else WINDOWS32), new
    return {b"LE": VXD, b"LX": OS2_VERSION_2}.get(mark, DOS), new


def final_type(type_of_headers, end):
    if end == 0:
        return type_of_headers
    return SELF_EXTRACTING if type_of_headers == DOS else ZIP


def pe_imports(view):
    """Count and names of the modules that the section .idata imports."""
    header = view.u32(60)
    if not view.readable(header, 248) or view.take(header, 4) != b"PE\0\0":
        return 0, []
    # Where the sections start in a 32-bit file; in a 64-bit one that is 16 bytes too early.
    entry = header + 248
    for _ in range(view.u16(header + 6)):
        if not view.readable(entry, 40):
            return 0, []
        if view.take(entry, 8) == b".idata\0\0":
            break
        entry += 40
    else:
        return 0, []
    address, position = view.u32(entry + 12), view.u32(entry + 20)
    names = []
    while view.readable(position, 20):
        stamp, name = view.u32(position + 4), view.u32(position + 12)
        if stamp == 0 and name == 0:
            return len(names), names
        name = (name - address + view.u32(entry + 20)) % 2**32
        if not view.readable(name, 12):
            break
        names.append(view.text(name))
        position += 20
    return 0, []


def counted(view, offset, most):
    """A name behind its length byte, as far as the file and a zero byte let it go."""
    length = min(view.data[offset], most)
    return bytes(view.data[offset + 1:offset + 1 + length]).split(b"\0")[0]


def ne_description(view, new):
    length, position = view.u16(new + 32), view.u32(new + 44)
    length = min(length, 256)
    if length == 0 or position >= view.size - length:
        return b""
    text = counted(View(view.data[position:position + length]), 0, 79)
    return text if b" " in text else b""


def ne_imports(view, count, references, names):
    found = []
    for i in range(min(count, 256)):
        name = names + view.u16(references + 2 * i)
        if references + 2 * i + 2 <= view.size and name < view.size:
            found.append(counted(view, name, 19))
    return found


def chosen_language(entries):
    for language in (NEUTRAL, AMERICAN_ENGLISH):
        for entry in entries:
            if entry.id == language:
                return entry
    return entries[0] if entries else None


def version_entry(pe):
    """The resource entry of version resource 1 in the language that suits an American best."""
    if not hasattr(pe, "DIRECTORY_ENTRY_RESOURCE"):
        return None
    for kind in pe.DIRECTORY_ENTRY_RESOURCE.entries:
        if kind.id == pefile.RESOURCE_TYPE["RT_VERSION"]:
            for number in kind.directory.entries:
                if number.id == 1:
                    return chosen_language(number.directory.entries)
    return None


def string_tables(parts):
    """Of a version block: {key of the language: {name: text}}, keys and names in small letters."""
    tables = {}
    for part in parts:
        for table in getattr(part, "StringTable", []):
            named = {name.decode().lower(): text.decode() for name, text in table.entries.items()}
            tables.setdefault(table.LangID.decode().lower(), named)
    return tables


def first_translation(block):
    """Language and code page of the first translation; pefile keeps only the last one."""
    key = "Translation\0".encode("utf-16-le")
    at = block.find(key)
    if at < 6:
        return None
    value = (at + len(key) + 3) // 4 * 4
    return struct.unpack_from("<HH", block, value) if struct.unpack_from("<H", block, at - 4)[0] >= 4 else None


def version_texts(pe, encoding):
    entry = version_entry(pe)
    if entry is None:
        return [b"", b"", b""]
    pe.FileInfo = []
    pe.parse_version_information(entry.data.struct)
    tables = string_tables(pe.FileInfo[0] if pe.FileInfo else [])
    data = entry.data.struct
    translation = first_translation(pe.get_data(data.OffsetToData, data.Size))
    if translation is None:
        texts = tables.get("040904e4", {})
    else:
        language, page = translation
        texts = tables.get(f"{page:04x}{language:04x}", {})
        if "filedescription" not in texts:
            texts = tables.get(f"{language:04x}{page:04x}", {})
    return [texts.get(key.lower(), "")[:most].encode(encoding, "replace") for key, most in TEXTS]


def loaded_modules(pe):
    """What a loader imports, as pefile reads the import directory."""
    pe.parse_data_directories([pefile.DIRECTORY_ENTRY["IMAGE_DIRECTORY_ENTRY_IMPORT"]], import_dllnames_only=True)
    return [entry.dll for entry in getattr(pe, "DIRECTORY_ENTRY_IMPORT", [])]


def imports_at_section_start(pe):
    """Whether this is a 32-bit file whose import directory is the start of its section .idata."""
    directory = pe.OPTIONAL_HEADER.DATA_DIRECTORY[pefile.DIRECTORY_ENTRY["IMAGE_DIRECTORY_ENTRY_IMPORT"]]
    return pe.PE_TYPE == pefile.OPTIONAL_HEADER_MAGIC_PE and directory.VirtualAddress != 0 and any(
        section.Name == b".idata\0\0" and section.VirtualAddress == directory.VirtualAddress for section in pe.sections)


def pe_facts(view, facts, encoding):
    pe = pefile.PE(data=view.data, fast_load=True)
    pe.parse_data_directories([pefile.DIRECTORY_ENTRY["IMAGE_DIRECTORY_ENTRY_RESOURCE"]])
    facts.machine = pe.FILE_HEADER.Machine
    facts.texts = version_texts(pe, encoding)
    facts.import_count, facts.imports = pe_imports(view)
    if facts.imports and imports_at_section_start(pe) and loaded_modules(pe) != facts.imports:
        raise ValueError(f"two readings of the imports: {loaded_modules(pe)}, {facts.imports}")


def facts_of(data, encoding):
    """All facts about a whole file; encoding: of the texts that the program prints."""
    view = View(data)
    facts = Facts(view.size)
    headers, new = header_type(view)
    facts.zip_end = zip_end(view)
    facts.type = final_type(headers, facts.zip_end)
    if headers in (WINDOWS32, WINDOWS32_DLL):
        pe_facts(view, facts, encoding)
    elif new and view.take(new, 2) == b"NE":
        facts.import_count = view.u16(new + 30)
        facts.texts[0] = ne_description(view, new)
        facts.imports = ne_imports(view, facts.import_count, new + view.u16(new + 40), new + view.u16(new + 42))
    return facts


def short_facts(data):
    """Type and number of imports, also of a damaged file."""
    view = View(data)
    headers, new = header_type(view)
    count = 0
    if headers in (WINDOWS32, WINDOWS32_DLL):
        count = pe_imports(view)[0]
    elif new and view.take(new, 2) == b"NE":
        count = view.u16(new + 30)
    return final_type(headers, zip_end(view)), count
