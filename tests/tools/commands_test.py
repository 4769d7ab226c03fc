#!/usr/bin/env python3
"""What tells people of the commands against the commands: manual pages and completions."""
import re
import subprocess
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# Where a program tells its words apart, and how.
SOURCES = {
    "qgserv": ("src/service/command_line.cpp", r'\{L"(\w+)", CommandWord'),
    "winsc": ("platform/tools/winsc/main.cpp", r'command == L"(\w+)"'),
    "qggate": ("components/qggate/main.cpp", r'words == Words\{"(\w+)"'),
}


def words_of(command):
    """The words that the program takes, in lower case."""
    source, pattern = SOURCES[command]
    return set(re.findall(pattern, (ROOT / source).read_text(encoding="utf-8")))


def completed(command, *typed):
    """What bash offers for the last word of the line."""
    line = " ".join(f"'{word}'" for word in typed)
    script = (
        f"source {ROOT}/linux/completions/{command}; COMP_WORDS=({line});"
        f" COMP_CWORD={len(typed) - 1}; _{command} {command} '{typed[-1]}' '{typed[-2]}';"
        ' printf "%s\\n" "${COMPREPLY[@]}"'
    )
    run = subprocess.run(["bash", "-c", script], capture_output=True, text=True, check=True)
    return run.stderr + run.stdout.strip().replace("\n", " ")


class Commands(unittest.TestCase):
    def test_no_page_is_malformed_or_leaves_out_a_word(self):
        for command in SOURCES:
            page = ROOT / f"linux/man/{command}.8"
            run = subprocess.run(
                ["env", "LC_ALL=C.UTF-8", "MANWIDTH=80", "man", "--warnings", "-E", "UTF-8", "-l",
                 "-Tutf8", "-Z", page],
                capture_output=True, text=True, check=True,
            )
            self.assertEqual(run.stderr, "")
            described = re.findall(r"^\.It Cm (\w+)", page.read_text(encoding="utf-8"), re.MULTILINE)
            self.assertEqual({word.lower() for word in described}, words_of(command))

    def test_no_word_is_left_out_of_the_completion(self):
        for command in SOURCES:
            offered = completed(command, command, "").lower().split()
            self.assertEqual(set(offered), words_of(command))

    def test_the_completion_knows_what_follows(self):
        cases = {
            ("qgserv", "Set"): "SetupWizard",
            ("qgserv", "Install", ""): "",
            ("winsc", "st"): "start stop",
            ("winsc", "stop", ""): "qgserv",
            ("winsc", "autostart", ""): "",
            ("winsc", "control", "qgserv", ""): "128 129",
            ("winsc", "query", "qgserv", ""): "",
            ("qggate", "boot", "c"): "closed",
            ("qggate", "open", ""): "",
        }
        for typed, offered in cases.items():
            self.assertEqual(completed(typed[0], *typed), offered, typed)


if __name__ == "__main__":
    unittest.main()
