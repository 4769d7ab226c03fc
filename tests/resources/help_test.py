#!/usr/bin/env python3
"""The help's projects beside the program's dialogs and texts, in both languages."""
import html
import posixpath
import re
import sys
import unittest
from html.parser import HTMLParser
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
RESOURCES = ROOT / "src/resources"
HELP = RESOURCES / "help"
sys.path.insert(0, str(ROOT / "tools"))
from tour_texts import interface_texts  # noqa: E402

# Names of the interface that are in no catalogue: what dialogs and the system's buttons say.
OTHER_NAMES = {
    "en": {"Windows", "Apply", "Back", "Next", "Finish"},
    "sv": {"Windows", "Verkställ", "Bakåt", "Nästa", "Slutför"},
}


class Topic(HTMLParser):
    """Title, links, pictures' attributes and interface names of a page."""

    def __init__(self, path):
        super().__init__()
        self.title, self.links, self.pictures, self.names = "", [], [], []
        self.inside = None
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.links += [given[each] for each in ("href", "src") if each in given]
        if tag == "img":
            self.pictures.append(given)
        if tag in ("title", "b"):
            self.inside = tag
        if tag == "b":
            self.names.append("")

    def handle_endtag(self, tag):
        if tag == self.inside:
            self.inside = None

    def handle_data(self, data):
        if self.inside == "title":
            self.title += data
        elif self.inside == "b":
            self.names[-1] += data


def bare(name):
    """Without what menus and labels add, and on one line."""
    name = " ".join(name.removesuffix("%0").replace("&", "").split())
    return re.sub(r"(\.\.\.|:)$", "", name)


class Project:
    def __init__(self, language):
        self.language = language
        self.folder = HELP / language
        text = (self.folder / "quillgate.hhp").read_text(encoding="ascii")
        self.listed = text.split("[FILES]\n")[1].split()
        pages = (each for each in self.listed if each.endswith(".html"))
        self.topics = {each: Topic(self.path(each)) for each in pages}
        self.contents = (self.folder / "contents.hhc").read_text(encoding="ascii")
        popups = (self.folder / "popups.txt").read_text(encoding="utf-8")
        self.popups = dict(re.findall(r"^\.topic (\d+)\n(.+)$", popups, re.MULTILINE))

    def path(self, name):
        """Files that all languages share lie above those of one."""
        own = self.folder / name
        return own if own.exists() else HELP / name

    def leads_to(self, topic):
        """The files that a topic links to."""
        folder = posixpath.dirname(topic)
        links = self.topics[topic].links
        return {posixpath.normpath(posixpath.join(folder, each)) for each in links}


def numbers_of_controls():
    """The help numbers of all controls in the dialog templates."""
    header = (RESOURCES / "resource.h").read_text()
    script = (RESOURCES / "dialogs.rc").read_text()
    values = dict(re.findall(r"#define (\w+) (0x\w+|\d+)", header + script))
    sums = re.findall(r"\b(HELP_\w+)\s*\+\s*(\w+)", script)
    return {str(int(values[page], 0) + int(values[control])) for page, control in sums}


class Checks:
    """What holds of each language's project."""

    def setUp(self):
        self.project = Project(self.language)

    def test_every_control_with_a_help_number_has_its_text(self):
        numbers = numbers_of_controls()
        self.assertGreaterEqual(len(numbers), 80)
        self.assertEqual(numbers - set(self.project.popups), set())

    def test_the_project_lists_every_file_and_none_that_is_missing(self):
        there = {
            str(path.relative_to(root))
            for root in (self.project.folder, HELP)
            for part in ("html/*", "images/*", "popups.txt", "style.css")
            for path in root.glob(part)
        }
        self.assertEqual(sorted(self.project.listed), sorted(there))

    def test_links_lead_to_listed_files_and_pictures_are_described(self):
        for name, topic in self.project.topics.items():
            self.assertEqual(self.project.leads_to(name) - set(self.project.listed), set(), name)
            for picture in topic.pictures:
                self.assertTrue(picture.get("alt") and picture.get("width"), picture)

    def test_every_file_but_the_popups_is_reached_from_the_index(self):
        reached, found = set(), {"html/index.html"}
        while found:
            reached |= found
            topics = found & set(self.project.topics)
            found = set().union(*map(self.project.leads_to, topics)) - reached
        self.assertEqual(set(self.project.listed) - reached, {"popups.txt"})

    def test_the_contents_name_every_topic_by_its_title(self):
        entry = re.compile(r'"Name" value="(.*)">\s*<param name="Local" value="(.*)">')
        self.assertEqual(
            {path: html.unescape(name) for name, path in entry.findall(self.project.contents)},
            {path: topic.title for path, topic in self.project.topics.items()},
        )

    def test_the_program_asks_for_topics_that_exist(self):
        asked = re.findall(r'L"(html/.*)"', (ROOT / "src/frame/help_topics.h").read_text())
        self.assertGreater(len(asked), 8)
        self.assertEqual(set(asked) - set(self.project.topics), set())

    def test_bold_names_are_texts_of_the_interface(self):
        texts = {bare(text) for text in interface_texts(self.language).values()}
        names = {bare(name) for topic in self.project.topics.values() for name in topic.names}
        self.assertEqual(names - texts - OTHER_NAMES[self.language], set())


class English(Checks, unittest.TestCase):
    language = "en"


class Swedish(Checks, unittest.TestCase):
    language = "sv"


class BothLanguages(unittest.TestCase):
    def test_they_have_the_same_files_and_popups(self):
        english, swedish = Project("en"), Project("sv")
        self.assertEqual(english.listed, swedish.listed)
        self.assertEqual(set(english.popups), set(swedish.popups))


if __name__ == "__main__":
    unittest.main()
