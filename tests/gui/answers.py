#!/usr/bin/env python3
"""What the desktop program answers where it opens no window: one line, never a signal.

answers.py PROGRAM
"""
import os
import subprocess
import sys
import tempfile
import unittest

PROGRAM = sys.argv.pop(1)


class Answers(unittest.TestCase):
    def run_program(self, *arguments, **more):
        kept = {name: value for name, value in os.environ.items()
                if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
        with tempfile.TemporaryDirectory() as home:
            done = subprocess.run([PROGRAM, *arguments], env=kept | {"HOME": home} | more, capture_output=True, text=True,
                                  timeout=60)
        return done.returncode, done.stdout, done.stderr

    def test_says_in_one_line_that_no_window_can_be_opened(self):
        for more, said in [({}, "there is no display"), ({"DISPLAY": ":4711"}, ":4711"),
                           ({"DISPLAY": "nowhere.invalid:0"}, "nowhere.invalid:0"),
                           ({"QT_QPA_PLATFORM": "stone"}, '"stone"')]:
            status, out, err = self.run_program(**more)
            self.assertEqual((status, out, err.count("\n")), (2, "", 1), err)
            self.assertTrue(err.startswith("quillon-gui: "), err)
            self.assertIn(said, err)
            self.assertIn("quillon --help", err)

    def test_help_version_and_wrong_options_need_no_display(self):
        self.assertIn("Usage: quillon-gui", self.run_program("--help")[1])
        status, out, err = self.run_program("--version")
        self.assertEqual((status, out.split()[0], err), (0, "quillon-gui", ""))
        status, out, err = self.run_program("--recpie")
        self.assertEqual((status, out, err.count("\n")), (2, "", 1))


if __name__ == "__main__":
    unittest.main()
