"""real_files.py PROGRAM DIRECTORY

Has PROGRAM, identify_files, identify some thousand real files and compares what it says with what is read
here. Makes files of its own in DIRECTORY. Any difference is a failure, and so are files that are missing.
"""
import mmap
import os
import sys

import expected
import program
import samples

FEWEST_PE_FILES = 800
FEWEST_64_BIT_FILES = 10
FEWEST_VERSIONED_FILES = 220
FEWEST_IMPORTING_FILES = 780


def expected_line(path, encoding):
    if os.path.getsize(path) == 0:
        facts = expected.facts_of(b"", encoding)
    else:
        with open(path, "rb") as file, mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as data:
            facts = expected.facts_of(data, encoding)
    info = [str(facts.size), str(facts.type), str(facts.zip_end)]
    details = [str(facts.machine), str(facts.import_count)] + [program.escaped(text) for text in facts.texts]
    return facts, info + info + details + [program.escaped(name[:259]) for name in facts.imports]


def main():
    identify = program.Program(sys.argv[1], sys.argv[2])
    made = samples.make(os.path.join(sys.argv[2], "samples"))
    stated = dict(made)
    paths = list(stated) + samples.of_wine(identify.root) + samples.of_compilers() + samples.of_project(program.PROJECT)
    lines, well = identify.run([identify.path(path) for path in paths])
    faults = [] if well else ["the program ended with an error"]
    if len(lines) != len(paths):
        faults.append(f"{len(lines)} lines for {len(paths)} files")
    pe_files = of_64_bit = versioned = importing = 0
    for path, line in zip(paths, lines):
        facts, wanted = expected_line(path, identify.encoding)
        if line != [identify.path(path)] + wanted:
            faults.append(f"{path}\n  is      {line[1:]}\n  must be {wanted}")
        if stated.get(path, facts.type) != facts.type:
            faults.append(f"{path} was made to be of type {stated[path]}")
        pe_files += facts.machine != 0
        of_64_bit += facts.machine == 0x8664
        versioned += facts.texts[0] != b""
        importing += facts.import_count > 0
    for count, fewest, what in ((pe_files, FEWEST_PE_FILES, "PE files"), (of_64_bit, FEWEST_64_BIT_FILES, "of 64 bit"),
                                (versioned, FEWEST_VERSIONED_FILES, "with a description"),
                                (importing, FEWEST_IMPORTING_FILES, "with imports")):
        if count < fewest:
            faults.append(f"only {count} {what}, at least {fewest} there should be")
    program.finish("real files", f"{len(paths)} files, {pe_files} PE, {of_64_bit} of 64 bit, {versioned} described, "
                   f"{importing} importing", faults)


if __name__ == "__main__":
    main()
