#!/usr/bin/env python3
"""Plants one breach of each kind in a small tree and expects check_layers to name it."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOOL = Path(__file__).resolve().parents[2] / "tools/check_layers"
FLOORS = TOOL.parent / "layers.txt"


class CheckLayers(unittest.TestCase):
    def run_with(self, files):
        with tempfile.TemporaryDirectory() as name:
            root = Path(name)
            tree = {
                "tools/layers.txt": FLOORS.read_text(),
                "platform/include/windows.h": "#pragma once\n",
                "src/storage/a.h": "#pragma once\n#include <windows.h>\n#include <string>\n",
                "src/text/b.h": '#pragma once\n#include "storage/a.h"\n',
                **files,
            }
            for path, text in tree.items():
                target = root / path
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_text(text)
            run = subprocess.run(
                [sys.executable, TOOL, root], capture_output=True, text=True, check=False
            )
            return run.returncode, run.stdout

    def test_a_clean_tree_passes(self):
        self.assertEqual(self.run_with({}), (0, ""))

    def test_each_breach_is_named(self):
        cases = {
            "include from a higher floor": ("src/storage/c.h", '#include "text/b.h"', "floor below"),
            "include of a foreign file": ("src/text/c.h", '#include "no/such.h"', "not a file"),
            "POSIX header": ("src/text/c.h", "#include <unistd.h>", "neither Win32"),
            "engine header": ("src/storage/c.cpp", "#include <sqlite3.h>", "neither Win32"),
            "digest header elsewhere": ("src/text/c.cpp", "#include <openssl/evp.h>", "neither"),
            "conditional": ("src/text/c.h", "#ifdef ANY\n#endif", "conditional"),
            "folder without a floor": ("src/attic/c.h", "", "has no floor"),
            "self include": ("src/text/c.h", '#include "text/c.h"', "cycle"),
            "product in the layer": ("platform/user/c.h", "// Quill" + "gate", "names the product"),
            "Qt in the layer": ("platform/user/c.h", "#include <QTimer>", "Qt outside"),
            "program in the layer": ("platform/user/c.h", '#include "text/b.h"', "of the layer"),
            "family above": (
                "platform/gdi/c.h",
                '#include "platform/user/window.h"',
                "of a family below",
            ),
            "exception out of the layer": (
                "platform/user/c.cpp",
                "BOOL WINAPI FlashWindow(HWND window, BOOL invert) {\n  return FALSE;\n}",
                "lets exceptions out",
            ),
            "unlisted function": (
                "platform/include/winuser.h",
                "BOOL WINAPI FlashWindow(HWND window, BOOL invert);",
                "not in any SUBSET.md",
            ),
            "function without a caller": (
                "platform/include/winuser.h",
                "BOOL WINAPI FlashWindow(HWND window, BOOL invert);",
                "called by nobody but tests",
            ),
            "macro without a user": ("platform/include/a.h", "#define MB_HELP 1", "used by nobody"),
            "type without a user": ("platform/include/a.h", "using A = int;", "used by nobody"),
            "test that is gone": ("platform/user/SUBSET.md", "- Tests: user/gone_test", "there is no"),
            "layer's inside in a test": (
                "tests/platform/user/c.cpp",
                '#include "platform/user/queue.h"',
                "not public",
            ),
            "program in a component": ("components/x/c.cpp", '#include "text/b.h"', "belongs to"),
            "long file": ("src/text/c.h", "\n" * 601, "lines"),
        }
        for name, (path, text, expected) in cases.items():
            with self.subTest(name):
                code, output = self.run_with({path: text + "\n"})
                self.assertEqual(code, 1)
                self.assertIn(path, output)
                self.assertIn(expected, output)


if __name__ == "__main__":
    unittest.main()
