"""The walk through the program: what is done at each stop, what must appear there, and what must
be true of the traffic meanwhile.
"""
import time

from demo_network import probes
from service_lab import Download, check, digest, say
from tour_settings import SettingsStops
from tour_statistics import OTHERS, StatisticsStops, write_log
from tour_texts import interface_texts
from tour_wizard import WizardStops

BYTES_PER_SECOND = 400_000
CYCLE_SECONDS = 20
DOWNLOAD_LIMIT_MEGABYTES = 8
MEGABYTE = 1 << 20
HELP_TITLES = {"en": "Quillgate - Help", "sv": "Quillgate - Handbok"}
LANGUAGE_SETTINGS = {"en": "9", "sv": "29"}
CONTROL_LOGGING_OFF = 129
ALLOWED_EVERY_HOUR = "0" * 168
WINDOWS_USER = "karin"
PASSWORDS = {"anna": "nightingale", "bo": "harbour", "Admin": "lighthouse"}


def user_row(table, name, megabytes=None, administrator=False):
    limited, limit = ("YES", megabytes) if megabytes else ("NO", 1)
    password = digest(PASSWORDS[name]) if name in PASSWORDS else ""
    return (
        f"INSERT INTO {table} VALUES ('{name}', '{password}', 'YES', '90', '0', '{limited}', "
        f"'{limit}', '0', '{ALLOWED_EVERY_HOUR}', '{int(administrator)}');"
    )


def users_and_settings(language):
    return (
        "DELETE FROM Settings;",
        *(f"DELETE FROM Users_{system};" for system in ("None", "Quillgate", "Windows")),
        "INSERT INTO Settings VALUES ('85298', '0');",
        "INSERT INTO Settings VALUES ('845', 'QUILLGATE');",
        f"INSERT INTO Settings VALUES ('5820', '{LANGUAGE_SETTINGS[language]}');",
        user_row("Users_Quillgate", "anna", megabytes=DOWNLOAD_LIMIT_MEGABYTES),
        user_row("Users_Quillgate", "bo", administrator=True),
        *(user_row("Users_Quillgate", name) for name in OTHERS),
        user_row("Users_None", "User"),
        user_row("Users_None", "Admin", administrator=True),
        user_row("Users_Windows", WINDOWS_USER, administrator=True),
        "CREATE TABLE IF NOT EXISTS WlNpData (Key, Value);",
        f"INSERT INTO WlNpData VALUES ('UserName', '{WINDOWS_USER}');",
    )


class Walk:
    def __init__(self, desktop, service, network, album, language, hours):
        self.desktop = desktop
        self.service = service
        self.network = network
        self.album = album
        self.language = language
        self.texts = interface_texts(language)
        self.hours = hours
        self.settings = SettingsStops(desktop, album, service, network, self.texts)
        self.statistics = StatisticsStops(desktop, album, self.texts)
        self.wizard = WizardStops(desktop, album, service, self.texts)

    def everything(self):
        self.wizard.everything()
        self.service.sql(*users_and_settings(self.language))
        write_log(self.service.database)
        self.own_logon_system()
        self.override()
        self.hours.everything()
        self.windows_logon_system()
        if self.desktop.has_own_screen:
            self.screen_goes()

    # Users of the program's own: logging on, and a limit that is reached.

    def own_logon_system(self):
        self.start_service()
        self.album.add("icon", "The icon in the notification area",
                       "Nobody has logged on, so the gate is shut.")
        self.check_gate(opened=False)
        self.menu("menu-logged-off", "The menu when nobody is logged on",
                  "Logging on is what a double click does, too, so it is shown in bold.")
        self.choose(0)
        self.log_on_after_a_mistake()
        self.live_download()
        self.open_menu()
        self.choose(3)
        self.settings.look("settings-user", "The settings of a user",
                           "The own password, and nothing else.")
        self.open_menu()
        self.choose(0)
        time.sleep(1)
        self.check_gate(opened=False)
        self.administrator()
        self.service.stop()

    def log_on_after_a_mistake(self):
        title = self.texts[1041]
        self.desktop.await_window(title)
        self.album.add("log-on", "Logging on", "The users of the computer, in a list.")
        self.enter_password("sparrow")
        self.desktop.await_window(self.texts[100])
        self.album.add("wrong-password", "A wrong password", "Two more attempts are left.")
        self.desktop.keys("Return")
        self.desktop.await_closed(self.texts[100])
        time.sleep(1.5)  # nothing can be entered in the first second
        self.desktop.type(PASSWORDS["anna"])
        self.desktop.keys("Return")
        self.desktop.await_closed(title)
        self.desktop.await_balloon()
        self.album.add("logged-on", "Logged on", "A balloon tells what has changed.")
        last = self.service.sql("SELECT Value FROM Settings WHERE Key = '24646';")
        check(last == "anna", "anna is logged on")
        self.check_gate(opened=True)
        self.menu("menu-user", "The menu of a user", "Log off, the statistics, this connection.")
        self.dismiss_menu()

    def live_download(self):
        title = self.texts[1064]
        download = Download(self.network.internet)
        say(f"a download begins; anna may download {DOWNLOAD_LIMIT_MEGABYTES} MB a day")
        self.open_menu()
        self.choose(2)
        self.desktop.await_window(title)
        time.sleep(9)  # the rates are averages of eight seconds
        self.album.add("connection", "A running session",
                       "Bytes and rates follow the download, second by second.")
        self.desktop.wait("the limit", lambda: download.received and download.silent_for() > 1.5,
                          3 * CYCLE_SECONDS)
        self.desktop.await_balloon()
        self.album.add("limit", "The download limit is reached",
                       "The gate is shut in the middle of the download, and a balloon says why.")
        download.stop()
        check(download.received > DOWNLOAD_LIMIT_MEGABYTES * MEGABYTE, "the limit was passed")
        self.check_gate(opened=False)
        self.desktop.keys("ctrl+Tab")
        time.sleep(0.5)
        self.album.add("details", "The network adapter", "What the session is measured on.")
        self.desktop.keys("Escape")
        self.desktop.await_closed(title)

    def administrator(self):
        title = self.texts[1041]
        self.desktop.click_tray(1, times=2)
        self.desktop.rest_pointer()
        self.desktop.await_window(title)
        self.desktop.keys("shift+Tab")  # the last user is chosen already, the password comes next
        self.desktop.type("b")
        self.enter_password(PASSWORDS["bo"])
        self.desktop.await_closed(title)
        time.sleep(1)
        self.check_gate(opened=True)
        self.menu("menu-administrator", "The menu of an administrator",
                  "Settings and Exit are for administrators.")
        self.desktop.keys("Up", "Up", "Right")
        self.desktop.await_menus(2)
        self.album.add("menu-help", "The help menu", "Opened from the menu of the icon.")
        self.desktop.keys("Return")
        self.desktop.rest_pointer()
        self.help_topics()
        self.open_menu()
        self.desktop.keys("Up", "Up", "Right")
        self.desktop.await_menus(2)
        self.desktop.keys("Down", "Return")
        self.desktop.rest_pointer()
        self.desktop.await_window(self.texts[1106])
        self.album.add("about", "About the program", "Name and version.")
        self.desktop.keys("Return")
        self.desktop.await_closed(self.texts[1106])
        self.open_menu()
        self.choose(1)
        self.statistics.everything()
        self.open_menu()
        self.choose(3)
        self.settings.administrator(self.check_gate)

    def help_topics(self):
        self.desktop.await_window(HELP_TITLES[self.language])
        self.album.add("help", "Help", "Contents on the left, a topic on the right.")
        self.desktop.keys("ctrl+f")
        self.desktop.type("4095")
        self.desktop.keys("Return", "Return")
        time.sleep(0.5)
        self.album.add("help-search", "A search in all topics", "The first occurrence is selected.")
        self.desktop.keys("Escape")
        self.desktop.await_closed(HELP_TITLES[self.language])

    # Nobody logs on: one set of restrictions, and a password that lifts them.

    def override(self):
        self.service.sql("UPDATE Settings SET Value = 'NONE' WHERE Key = '845';")
        self.start_service()
        self.menu("menu-shared", "The menu where nobody logs on",
                  "One set of restrictions for everybody; a password lifts them.")
        self.choose(1)
        title = self.texts[1041]
        self.desktop.await_window(title)
        self.album.add("override", "The security override", "Its password alone is asked.")
        self.desktop.type(PASSWORDS["Admin"])
        self.desktop.keys("Return")
        self.desktop.await_closed(title)
        time.sleep(0.5)
        self.menu("menu-override", "The menu while the override is active",
                  "Everything is open to who knows the password, until it is taken back.")
        self.choose(1)
        self.settings.look("settings-shared", "The settings of the override",
                           "The common restrictions, and the password that lifts them.",
                           pages=("", "-users"))
        self.open_menu()
        self.choose(2)
        time.sleep(0.5)
        self.menu("menu-restored", "The override is taken back", "As before.")
        self.dismiss_menu()
        self.service.stop()

    # The user of the computer's session is the user.

    def windows_logon_system(self):
        self.service.sql("UPDATE Settings SET Value = 'WINDOWS' WHERE Key = '845';")
        self.start_service()
        self.check_gate(opened=True)
        self.menu("menu-session-user", "The menu of the session's user",
                  "Who is logged on to the computer needs no second logon.")
        self.choose(2)
        self.settings.look("settings-session-user", "The settings where Windows knows the user",
                           "No passwords here, and accounts are not removed.",
                           pages=("", "-users"))

    # The user's screen ends under the service, which goes on without.

    def screen_goes(self):
        process = self.service.process()
        self.desktop.close()
        time.sleep(1)
        self.service.run("winsc", "control", "qgserv", str(CONTROL_LOGGING_OFF))
        check(self.service.process() == process, "the service outlives the screen")
        self.check_gate(opened=False)

    # Hands.

    def start_service(self):
        self.service.start()
        self.desktop.wait("the icon in the notification area", self.desktop.tray_icon)
        time.sleep(2)  # the first decision about the gate

    def open_menu(self):
        self.desktop.click_tray(3)
        self.desktop.await_menus(1)

    def menu(self, name, title, line):
        self.open_menu()
        self.album.add(name, title, line)

    def choose(self, position):
        """The item of the open menu at this position; separators do not count."""
        self.desktop.keys(*["Down"] * (position + 1), "Return")
        self.desktop.rest_pointer()
        self.desktop.await_menus(0)

    def dismiss_menu(self):
        self.desktop.keys("Escape")
        self.desktop.rest_pointer()
        self.desktop.await_menus(0)

    def enter_password(self, password):
        """In the logon dialog, whose list of users has the focus."""
        self.desktop.keys("Tab")
        self.desktop.type(password)
        self.desktop.keys("Return")

    def check_gate(self, opened):
        answered = probes(self.network)
        if opened:
            check(all(answered.values()), "the Internet answers")
        else:
            check(not any(answered.values()), "nothing passes the gate")
