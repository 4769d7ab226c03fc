#!/usr/bin/env python3
"""The journal's catalogue against what writes the events that it explains."""
import importlib.util
import re
import sys
import unittest
from importlib.machinery import SourceFileLoader
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
loader = SourceFileLoader("catalogue", str(ROOT / "tools/make_catalogue"))
catalogue = importlib.util.module_from_spec(importlib.util.spec_from_loader("catalogue", loader))
loader.exec_module(catalogue)


class MakeCatalogue(unittest.TestCase):
    def setUp(self):
        texts = catalogue.read_messages(ROOT / "src/resources/messages.mc")
        self.entries = list(catalogue.entries(texts))

    def test_a_kind_has_the_number_that_the_event_log_gives_it(self):
        # The same text and number stand in tests/platform/service/layer/event_log_test.cpp.
        for text in ("two: lines\nOf what: \u00e5", "two", "two. Sentences"):
            self.assertEqual(catalogue.kind_id(text), "5714d319447c8709ba61669f0257536d")

    def test_every_kind_is_another_and_is_explained_in_each_language(self):
        heads = [entry.split("\n")[0] for _, entry in self.entries]
        self.assertEqual(len(set(heads)), len(heads))
        self.assertEqual(sum(head.endswith(" sv") for head in heads), len(heads) // 2)
        for _, entry in self.entries:
            self.assertNotRegex(entry, "[{}%]")

    def test_what_is_written_is_explained_and_nothing_else(self):
        sources = [p for folder in ("src", "components") for p in (ROOT / folder).rglob("*.cpp")]
        written = "\n".join(path.read_text(encoding="utf-8") for path in sources)
        for text in {text for text, _ in self.entries}:
            self.assertRegex(written, f'"{re.escape(text)}')
        kinds = {catalogue.kind_of(text) for text, _ in self.entries}
        logged = {catalogue.kind_of(t) for t in re.findall(r'LogEvent\(\s*L"([^"]+)"', written)}
        # It reaches the standard output alone.
        self.assertEqual(logged - kinds, {"StartServiceCtrlDispatcher Error="})


if __name__ == "__main__":
    unittest.main()
