"""damaged_files.py PROGRAM DIRECTORY

Has PROGRAM, identify_files, identify damaged copies of a file of each kind: cut off at every length, and with
every bit flipped of the headers and of what an executable says of itself. Makes the files in DIRECTORY. Type
and number of imports of each copy are compared with what is read here. In Wine, where the files are written
to the disk, a few are cut off, and no bits flipped.
"""
import os
import sys

import pefile

import expected
import program
import samples

LONGEST_CUT = 4096
HEADERS = 1024
MOST_OF_RESOURCES = 1536
IMPORT_DESCRIPTORS = 100
ARCHIVE_END = 160

# Of these the headers and what is behind them are damaged,
ALL_KINDS = """
    versioned32.exe library32.dll versioned64.exe zip_behind_versioned32.exe
    dos.exe windows16.exe windows16.dll os2.exe long_names.exe linear_le.exe linear_lx.exe
    deflated.zip comment.zip sfx_dos.exe zip_behind_windows16.exe
    szdd.tx_ 7z.7z text.txt wide.txt
""".split()

# of these, whose headers are like the others', only the resources and the imports.
OTHER_CONTENT = """
    version_several_blocks.exe version_german_and_american.exe driver32.sys many32.exe renamed32.exe
""".split()

CUT_IN_WINE = "versioned32.exe windows16.exe sfx_dos.exe szdd.tx_".split()


def pe_ranges(path):
    """Where the section .idata, the resources' directories and the version resource are in the file."""
    pe = pefile.PE(path, fast_load=True)
    ranges = []
    for section in pe.sections:
        if section.Name.startswith(b".idata"):
            ranges.append((section.PointerToRawData, IMPORT_DESCRIPTORS))
        elif section.Name.startswith(b".rsrc"):
            ranges.append((section.PointerToRawData, min(section.SizeOfRawData, MOST_OF_RESOURCES)))
    return ranges


def ranges_of(path):
    size = os.path.getsize(path)
    ranges = [(0, HEADERS)] if os.path.basename(path) not in OTHER_CONTENT else []
    with open(path, "rb") as file:
        kind = expected.short_facts(file.read())[0]
    if kind in (expected.WINDOWS32, expected.WINDOWS32_DLL):
        ranges += pe_ranges(path)
    if kind in (expected.ZIP, expected.SELF_EXTRACTING):
        ranges.append((max(size - ARCHIVE_END, 0), ARCHIVE_END))
    return [(offset, min(count, size - offset)) for offset, count in ranges]


def damaged_copies(data, ranges):
    """The copies that identify_files makes, in its order."""
    for size in range(min(len(data), LONGEST_CUT) + 1):
        yield f"cut at {size}", data[:size]
    copy = bytearray(data)
    for offset, count in ranges:
        for bit in range(offset * 8, (offset + count) * 8):
            copy[bit // 8] ^= 1 << bit % 8
            yield f"flipped bit {bit}", copy
            copy[bit // 8] ^= 1 << bit % 8


def compare(path, ranges, outcome, faults):
    """Adds what differs to faults; returns how many copies there are."""
    with open(path, "rb") as file:
        data = file.read()
    said = outcome.split()
    copies = 0
    for damage, copy in damaged_copies(data, ranges):
        wanted = "%d:%d" % expected.short_facts(copy)
        if copies >= len(said) or said[copies] != wanted:
            faults.append(f"{path}, {damage}: {said[copies] if copies < len(said) else 'nothing'}, must be {wanted}")
        copies += 1
    if len(said) != copies:
        faults.append(f"{path}: {len(said)} copies, must be {copies}: {outcome[-200:]}")
    return copies


def main():
    identify = program.Program(sys.argv[1], sys.argv[2])
    made = samples.make(os.path.join(sys.argv[2], "samples"))
    by_name = {os.path.basename(path): path for path, _ in made}
    paths = [by_name[name] for name in (CUT_IN_WINE if identify.is_windows else ALL_KINDS + OTHER_CONTENT)]
    if not identify.is_windows:
        paths.append(min(samples.of_wine(identify.root), key=os.path.getsize))
    orders = []
    for path in paths:
        ranges = [] if identify.is_windows else ranges_of(path)
        orders.append((path, ranges))
    lines, well = identify.run(["\t".join([identify.path(path)] + [f"{offset}+{count}" for offset, count in ranges])
                                for path, ranges in orders], "--damage")
    faults = [] if well else ["the program ended with an error"]
    if [line[0] for line in lines] != [identify.path(path) for path in paths]:
        faults.append(f"{len(lines)} of {len(paths)} files")
    copies = sum(compare(path, ranges, line[-1], faults) for (path, ranges), line in zip(orders, lines))
    program.finish("damaged files", f"{len(paths)} files, {copies} copies", faults)


if __name__ == "__main__":
    main()
