#!/usr/bin/env python3
"""Completion of the command line in the shells themselves, as they ship, with files made from the program's help."""

import os
import pty
import select
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "golden"))
import golden  # noqa: E402

PROGRAM = Path(sys.argv.pop(1)).resolve()
MAKE = Path(__file__).resolve().parent.parent.parent / "packaging/make_pages.py"
SHOW = "quillon() { for each; do printf '<%s>' \"$each\"; done; echo '<end>'; }"

# What is typed, with a tab for the key, and the words that then reach the program.
TYPED = [("quillon conv\t--skip-d\t", ["convert", "--skip-done"]),
         ("quillon convert --sha\t2/8 --repo\tled\t", ["convert", "--shard", "2/8", "--report", "ledger one.txt"]),
         ("quillon convert --quote so\t--enc\tcp4\t", ["convert", "--quote", "sometimes", "--encoding", "cp437"]),
         ("quillon convert led\t-o out.csv --mark\t", ["convert", "ledger one.txt", "-o", "out.csv", "--markup"]),
         ("quillon check led\t--reci\tled\t", ["check", "ledger one.txt", "--recipe", "ledger one.txt"]),
         ("quillon job --lo\tled\t", ["job", "--log", "ledger one.txt"])]


class Terminal:
    """A shell at a terminal of its own."""

    def __init__(self, folder, *command, **env):
        self.pid, self.line = pty.fork()
        if self.pid == 0:
            os.chdir(folder)
            os.execve(command[0], command, {"PATH": "/usr/bin:/bin", "HOME": str(folder), "TERM": "dumb", "LC_ALL": "C.UTF-8", **env})

    def say(self, text, until, seconds=20):
        """Types and returns what the shell shows up to the text `until`."""
        os.write(self.line, text.encode())
        shown, end = b"", time.monotonic() + seconds
        while until.encode() not in shown:
            if not select.select([self.line], [], [], max(0, end - time.monotonic()))[0]:
                raise AssertionError(f"{text!r}: {shown!r}")
            shown += os.read(self.line, 4096)
        return shown.decode(errors="replace")

    def close(self):
        os.close(self.line)
        os.waitpid(self.pid, 0)


class CompletionTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Path(tempfile.mkdtemp(prefix="quillon-completion-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        (cls.folder / "ledger one.txt").touch()
        profiles = cls.folder / ".config/Brindlemark, Inc/Quillon/Profiles"
        profiles.mkdir(parents=True)
        (profiles / "Zebra.txt").touch()
        cls.pages = cls.folder / "pages"
        subprocess.run([sys.executable, MAKE, PROGRAM, "1.0.0", cls.pages], check=True)

    def terminal(self, name, *arguments):
        if not shutil.which(name, path="/usr/bin:/bin"):
            golden.skip_loudly(self, f"{name} is not installed (scripts/setup.sh tests)")
        for end in golden.pseudo_terminal(self):
            os.close(end)
        shell = Terminal(self.folder, shutil.which(name, path="/usr/bin:/bin"), *arguments)
        self.addCleanup(shell.close)
        return shell

    def check_typed(self, shell):
        for typed, words in TYPED:
            shown = shell.say(typed + "\n", "<end>").replace("=", "><")  # zsh writes --option=value
            self.assertIn("".join(f"<{word}>" for word in words) + "<end>", shown, typed)

    def test_bash(self):
        shell = self.terminal("bash", "--norc", "-i")
        shell.say(f"{SHOW}; . pages/quillon.bash; echo re''ady\n", "ready")
        self.check_typed(shell)
        self.assertIn("<--quote=always>", shell.say("quillon convert --quote=al\t\n", "<end>"))
        self.assertIn("<--profile><Zebra>", shell.say("quillon convert --profile Ze\t\n", "<end>"))

    def test_zsh(self):
        shell = self.terminal("zsh", "-f", "-i")
        shell.say(f"unsetopt zle_bracketed_paste; fpath=($PWD/pages $fpath); autoload -Uz compinit; "
                  f"compinit -u -D; {SHOW}; echo re''ady\n", "ready")
        self.check_typed(shell)
        self.assertIn("<--quote=always>", shell.say("quillon convert --quote=al\t\n", "<end>"))

    def test_fish(self):
        if not shutil.which("fish", path="/usr/bin"):
            golden.skip_loudly(self, "fish is not installed (scripts/setup.sh tests)")
        for typed, offered in [("quillon ", ["check", "convert", "job", "preview", "suggest", "watch"]),
                               ("quillon convert --skip", ["--skip-done"]), ("quillon convert --quote so", ["sometimes"]),
                               ("quillon convert --report led", ["ledger one.txt"]), ("quillon convert --shard ", []),
                               ("quillon check led", ["ledger one.txt"])]:
            done = subprocess.run(["/usr/bin/fish", "--no-config", "-c", f'source pages/quillon.fish; complete -C "{typed}"'],
                                  cwd=self.folder, env={"HOME": str(self.folder), "PATH": "/usr/bin:/bin"}, text=True,
                                  capture_output=True, timeout=60, check=True)
            self.assertEqual([line.split("\t")[0] for line in done.stdout.splitlines()], offered, typed)


if __name__ == "__main__":
    unittest.main()
