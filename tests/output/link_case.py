"""What the workbook scripts share: the tools of other makers, the program that drives the link, a folder for each test."""

import argparse
import io
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile
import zlib

SOFFICE = shutil.which("soffice")
SSCONVERT = shutil.which("ssconvert")
PROGRAM = None


def main():
    """Runs the tests of the calling script with --program as the program that drives the link."""
    global PROGRAM
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", required=True)
    known, rest = parser.parse_known_args()
    PROGRAM = os.path.abspath(known.program)
    for tool, found in (("soffice", SOFFICE), ("ssconvert", SSCONVERT)):
        if not found:
            print(f"skipped where it is needed: {tool}")
    unittest.main(argv=[sys.argv[0], *rest])


def drive(path, script, mode="", **more):
    """Runs the script's lines on the workbook; gives an answer for each line."""
    done = subprocess.run([PROGRAM, path, script, mode], check=True, capture_output=True, text=True, **more)
    if done.stderr:
        raise AssertionError(done.stderr)
    return done.stdout.splitlines()


def content(data):
    """What the bytes of a workbook say. Of a package it is its parts: the packer finds now and then another way to the same."""
    if not data.startswith(b"PK"):
        return data
    try:
        with zipfile.ZipFile(io.BytesIO(data)) as package:
            return [(part.filename, package.read(part)) for part in package.infolist()]
    except (zipfile.BadZipFile, zlib.error, EOFError):
        return None


class XlsCase(unittest.TestCase):
    """A folder with one .xls that the test's lines make or change."""

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = os.path.join(self.folder.name, "a.xls")

    def run_link(self, *lines):
        script = os.path.join(self.folder.name, "script")
        with open(script, "w", encoding="utf-8") as file:
            file.write("\n".join(lines) + "\n")
        return drive(self.path, script)
