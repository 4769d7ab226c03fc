"""The settings sheet on the desktop of the tour: every page for those who see it, what is refused, a
password, and the hours of a user that shut the gate when they are applied.
"""
import time

from service_lab import Download, check
from tour_hours import HOURS, middle

CAPTION = 1052
BOX = 100
PASSWORD_CAPTION = 1030
HOURS_CAPTION = 1017
# In the sheet, in pixels.
WINDOWS_CHOICE = (318, 72)
PASSWORD_BUTTON = (335, 120)
HOURS_BUTTON = (335, 182)
DOWNLOAD_LIMIT = (45, 301)
DOWNLOAD_AMOUNT = (160, 326)
MEGABYTE = 1 << 20


class SettingsStops:
    def __init__(self, desktop, album, service, network, texts):
        self.desktop = desktop
        self.album = album
        self.service = service
        self.network = network
        self.texts = texts
        self.title = texts[CAPTION]

    def administrator(self, check_gate):
        self.desktop.await_window(self.title)
        self.album.add("settings-general", "The settings", "Logon system, warnings and language.")
        self.point_at(WINDOWS_CHOICE)
        time.sleep(1.5)
        self.album.add("settings-hint", "A choice that is not available", "The hint says why.")
        self.desktop.rest_pointer()
        self.desktop.keys("Tab", "Tab")
        self.desktop.type("0")
        self.desktop.keys("Return")
        self.desktop.await_window(self.texts[BOX])
        self.album.add("settings-refused", "A number out of its range",
                       "Nothing is stored, and the number is selected.")
        self.desktop.keys("Return")
        self.desktop.await_closed(self.texts[BOX])
        self.desktop.type("15")
        self.desktop.keys("ctrl+Tab")
        self.album.add("settings-users", "The users", "Limits, hours and passwords of each one.")
        self.password()
        self.limit(check_gate)
        self.hours()
        check_gate(opened=False)
        self.desktop.keys("ctrl+Tab")
        self.album.add("settings-advanced", "Calendar, network and restrictions", "For all users.")
        self.desktop.keys("Return")
        self.desktop.await_closed(self.title)
        minutes = self.service.sql("SELECT Value FROM Settings WHERE Key = '6113';")
        check(minutes == "15", "the threshold is stored")

    def password(self):
        self.click_at(PASSWORD_BUTTON)
        title = self.texts[PASSWORD_CAPTION]
        self.desktop.await_window(title)
        self.desktop.type("lark")
        self.desktop.keys("Tab")
        self.desktop.type("Lark")
        self.desktop.keys("Return")
        self.desktop.await_window(self.texts[BOX])
        self.album.add("settings-password", "Two different passwords", "The dialog stays open.")
        self.desktop.keys("Return")
        self.desktop.await_closed(self.texts[BOX])
        self.desktop.keys("Escape")
        self.desktop.await_closed(title)

    def limit(self, check_gate):
        """Below what the administrator is downloading, then off again."""
        download = Download(self.network.internet)
        self.desktop.wait("a megabyte", lambda: download.received > 1.5 * MEGABYTE, 30)
        self.click_at(DOWNLOAD_LIMIT)
        self.click_at(DOWNLOAD_AMOUNT)
        self.desktop.keys("ctrl+a")
        self.desktop.type("1")
        self.apply()
        self.desktop.wait("the limit", lambda: download.silent_for() > 1.5, 6)
        download.stop()
        self.album.add("settings-limit", "A limit that has been passed already",
                       "Applied, it ends the download at once.")
        check_gate(opened=False)
        self.click_at(DOWNLOAD_LIMIT)
        self.apply()
        time.sleep(1)
        check_gate(opened=True)

    def apply(self):
        self.desktop.keys("alt+a" if self.texts[CAPTION] == "Settings" else "alt+v")

    def hours(self):
        """The administrator's own: this hour and the next are blocked, on every day."""
        self.click_at(HOURS_BUTTON)
        title = self.texts[HOURS_CAPTION]
        self.desktop.await_window(title)
        hour = time.localtime().tm_hour
        for row in range(1, 8):
            self.desktop.move_in(title, *middle(row, hour + 1))
            self.desktop.hold()
            if hour + 1 < HOURS:
                self.desktop.move_in(title, *middle(row, hour + 2))
            self.desktop.let_go()
        self.album.add("settings-hours", "The hours of a user", "Two are blocked now, every day.")
        self.desktop.keys("Tab", "Return")
        self.desktop.await_closed(title)
        self.apply()
        self.desktop.await_balloon()
        self.album.add("settings-applied", "Applied", "The gate is shut at once, and says why.")

    def look(self, name, title, line, pages=("",)):
        """The pages from the first on, by what comes behind the picture's name."""
        self.desktop.await_window(self.title)
        for page in pages:
            self.album.add(name + page, title, line)
            self.desktop.keys("ctrl+Tab")
        self.desktop.keys("Escape")
        self.desktop.await_closed(self.title)

    def point_at(self, place):
        self.desktop.move_in(self.title, place[0] - 8, place[1])
        self.desktop.move_in(self.title, *place)

    def click_at(self, place):
        self.point_at(place)
        self.desktop.click()
        self.desktop.rest_pointer()
