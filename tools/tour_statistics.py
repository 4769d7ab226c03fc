"""The statistics on the desktop of the tour: a log of some months that looks like life, seen week by
week and month by month, and the top lists over all of it.
"""
import sqlite3
import time
from contextlib import closing
from datetime import date, datetime, timedelta

from session_habits import sessions

MONTHS = timedelta(days=150)
# Whose limits count what was used today, and who is here only to have a past.
LIMITED = ("anna", "bo")
OTHERS = ("cecilia", "david", "elsa")

CAPTION = 1090
# In the sheet, in pixels.
DOWNLOADS_HEADING = (440, 60)
FIRST_ROW = (200, 78)
MONTH = (328, 365)
CUSTOM = (328, 388)
STEP_BACK = (580, 344)
FIRST_PICKER_ARROW = (436, 421)
SECOND_USER = (48, 357)


def write_log(database):
    """The limited users have used nothing today."""
    today = date.today()
    yesterday = today - timedelta(days=1)
    now = f"{datetime.now():%Y-%m-%d %H:%M:%S}"
    log = [*sessions(LIMITED, today - MONTHS, yesterday, seed=3, with_holidays=False),
           *sessions(OTHERS, today - MONTHS, today, seed=4, with_holidays=False)]
    rows = [row for row in log if row[-1] <= now]
    with closing(sqlite3.connect(database)) as connection, connection:
        connection.executemany("INSERT INTO ConnLog VALUES (?, ?, ?, ?, ?);", rows)


class StatisticsStops:
    def __init__(self, desktop, album, texts):
        self.desktop = desktop
        self.album = album
        self.title = texts[CAPTION]

    def everything(self):
        self.desktop.await_window(self.title)
        self.look("week", "The statistics", "The sessions of this week, with their totals.")
        self.click_at(MONTH)
        self.look("month", "A month", "All of it in one list.")
        self.click_at(STEP_BACK)
        self.click_at(SECOND_USER)
        self.look("filter", "The month before, without one of the users",
                  "Intervals are stepped through, and users left out.")
        self.click_at(DOWNLOADS_HEADING)
        self.click_at(DOWNLOADS_HEADING)
        self.look("sorted", "By downloads", "A heading sorts, and again for the other direction.")
        self.click_at(FIRST_ROW)
        self.desktop.keys("shift+Down", "shift+Down", "shift+F10")
        self.desktop.await_menus(1)
        self.look("copy", "What is selected can be copied", "As a table, with Ctrl+C or the menu.")
        self.desktop.keys("Escape")
        self.desktop.await_menus(0)
        self.click_at(CUSTOM)
        self.click_at(FIRST_PICKER_ARROW)
        self.look("custom", "An interval of one's own", "Picked in a calendar with week numbers.")
        self.desktop.keys("Escape")
        self.desktop.keys("ctrl+Tab")
        self.look("top", "The top lists", "Of all sessions there are, whoever they are of.")
        self.desktop.keys("Escape")
        self.desktop.await_closed(self.title)

    def look(self, name, title, line):
        time.sleep(0.5)
        self.album.add(f"statistics-{name}", title, line)

    def click_at(self, place):
        self.desktop.move_in(self.title, *place)
        self.desktop.click()
        self.desktop.rest_pointer()
