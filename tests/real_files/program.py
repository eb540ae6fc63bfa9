"""Runs identify_files, on this machine or in the prepared Wine."""
import os
import subprocess
import sys

PROJECT = os.path.realpath(os.path.join(os.path.dirname(__file__), "..", ".."))


def wine_root():
    """The directory that the prepared Wine sees as its root."""
    script = 'source "$1/tools/lib.sh" && printf %s "$KV_ROOT"'
    return subprocess.run(["bash", "-c", script, "bash", PROJECT], check=True, stdout=subprocess.PIPE,
                          text=True).stdout


class Program:
    def __init__(self, executable, directory):
        self.executable = os.path.realpath(executable)
        self.directory = directory
        os.makedirs(directory, exist_ok=True)
        self.is_windows = executable.endswith(".exe")
        # The tests' port knows no code page but the first 256 characters.
        self.encoding = "cp1252" if self.is_windows else "latin-1"
        self.root = wine_root()

    def path(self, path):
        """The path of a file as the program is to be told it."""
        if not self.is_windows:
            return path
        if path.startswith(self.root + "/"):
            path = path[len(self.root):]
        elif not path.startswith((PROJECT + "/", "/tmp/")):
            path = "/host" + path
        return "Z:" + path.replace("/", "\\")

    def run(self, lines, *options):
        """Runs the program on lines; returns its lines, split at the tabs, and whether it says all is well."""
        listed = os.path.join(self.directory, "list.txt")
        with open(listed, "w", encoding="ascii") as file:
            file.writelines(line + "\n" for line in lines)
        command = [self.executable, *options, self.path(listed)]
        if self.is_windows:
            command.insert(0, os.path.join(PROJECT, "tools", "wine"))
        # Not a pipe: Wine's services, if this run starts them, would hold it open.
        printed = os.path.join(self.directory, "output.txt")
        with open(printed, "wb") as output:
            done = subprocess.run(command, cwd=self.directory, stdin=subprocess.DEVNULL, stdout=output, timeout=240,
                                  check=False)
        with open(printed, encoding="ascii") as output:
            return [line.rstrip("\n").split("\t") for line in output], done.returncode == 0


def escaped(text):
    """Bytes as the program prints them."""
    return "".join(chr(byte) if 32 <= byte < 127 and byte != 92 else f"\\x{byte:02x}" for byte in text)


def finish(name, checked, faults):
    for fault in faults[:40]:
        print(fault)
    print(f"{name}: {checked}, {len(faults)} wrong")
    sys.exit(1 if faults else 0)
