"""The editor of connection hours on the desktop of the tour, opened by itself (hours_host): its
looks in both languages, and what a click and a drag do to the table that it prints.
"""
import shutil
import subprocess
import time

from service_lab import check
from tour_texts import interface_texts

PROGRAM = "hours_host"
LANGUAGE_IDS = {"en": 1033, "sv": 1053}
CAPTION = 1017
HOURS = 24
DAYS = 7
# Of the grid in the dialog, in pixels.
GRID_PLACE = 7
DAY_NAME_WIDTH = 60
HEADING_HEIGHT = 21
CELL_EDGE = 19


def allowed_when_people_work():
    """As hours_host begins: 1 is blocked."""
    digits = []
    for day in range(DAYS):
        begin, end = (8, 17) if 1 <= day <= 5 else (7, 12)
        digits += [not begin <= hour < end for hour in range(HOURS)]
    return digits


def middle(row, col):
    """Of a cell, in the dialog."""
    return (
        GRID_PLACE + DAY_NAME_WIDTH + (col - 1) * CELL_EDGE + CELL_EDGE // 2,
        GRID_PLACE + HEADING_HEIGHT + (row - 1) * CELL_EDGE + CELL_EDGE // 2,
    )


class HoursStops:
    def __init__(self, desktop, album, service, build, folder):
        """The program's folder is copied: the editor writes a setting beside itself."""
        self.desktop = desktop
        self.album = album
        self.folder = folder / "hours"
        shutil.copytree(
            service.folder, self.folder, ignore=shutil.ignore_patterns("quillgate.dat*")
        )
        shutil.copy(build / "bin" / PROGRAM, self.folder)

    def everything(self):
        with self.editor("en", first_day=1) as editor:
            self.album.add("hours-monday", "Connection hours",
                           "Green hours are allowed, red ones are blocked.")
            editor.click(1, 1)
            editor.drag((7, 20), (7, 23))
            editor.leave("Tab", "Return")  # the grid has the keyboard; OK comes next
        self.check_edited(editor)
        with self.editor("en", first_day=0) as editor:
            self.album.add("hours-sunday", "The week from Sunday", "As the settings have it.")
            editor.click(1, 1)
            editor.leave("Escape")
        check(editor.printed == ("Cancel", allowed_when_people_work()), "cancelled, nothing changed")
        with self.editor("sv", first_day=1) as editor:
            self.album.add("hours-swedish", "Connection hours in Swedish",
                           "Texts are those of the language chosen.")
            editor.leave("Return")
        check(editor.printed == ("OK", allowed_when_people_work()), "accepted as it was")

    @staticmethod
    def check_edited(editor):
        """From Monday: the first row is day 1, the last one day 0."""
        expected = allowed_when_people_work()
        for index in (1 * HOURS + 0, *range(19, 23)):
            expected[index] = not expected[index]
        check(editor.printed == ("OK", expected), "a click and a drag toggle what they should")

    def editor(self, language, first_day):
        return Editor(self.desktop, self.folder, language, first_day)


class Editor:
    """The editor while it is open; afterwards `printed` is how it ended and the table."""

    def __init__(self, desktop, folder, language, first_day):
        self.desktop = desktop
        self.words = [folder / PROGRAM, str(LANGUAGE_IDS[language]), str(first_day)]
        self.title = interface_texts(language)[CAPTION]
        self.process = None
        self.printed = None

    def __enter__(self):
        self.process = subprocess.Popen(self.words, stdout=subprocess.PIPE, text=True)
        self.desktop.await_window(self.title)
        return self

    def __exit__(self, kind, value, trace):
        if kind is not None:
            self.process.kill()
        printed = self.process.communicate(timeout=30)[0].split()
        if kind is None and len(printed) == 2:
            outcome, digits = printed
            self.printed = outcome, [digit == "1" for digit in digits]

    def leave(self, *keys):
        self.desktop.rest_pointer()
        self.desktop.keys(*keys)
        self.desktop.await_closed(self.title)

    def click(self, row, col):
        self.desktop.move_in(self.title, *middle(row, col))
        self.desktop.click()

    def drag(self, first, last):
        """Along a row, cell by cell, as a hand goes."""
        row, begin = first
        self.desktop.move_in(self.title, *middle(row, begin))
        self.desktop.hold()
        for col in range(begin + 1, last[1] + 1):
            self.desktop.move_in(self.title, *middle(row, col))
        self.desktop.let_go()
        time.sleep(0.2)
