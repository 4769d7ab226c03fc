"""The setup wizard on the desktop of the tour: by command along the simple path and cancelled, then as
the first thing that the service shows, along the path with users.
"""
import subprocess
import time

from service_lab import check, digest

CAPTION = 30038
LOG_ON_CAPTION = 1041
BOX = 100
WAIT_SECONDS = 30


class WizardStops:
    def __init__(self, desktop, album, service, texts):
        self.desktop = desktop
        self.album = album
        self.service = service
        self.texts = texts
        self.title = texts[CAPTION]

    def everything(self):
        self.simple()
        self.cancelled()
        self.first_start()

    def simple(self):
        command = self.command()
        self.look("welcome", "The setup wizard", "Started by command: qgserv SetupWizard.")
        self.desktop.keys("Return")
        self.look("type", "Simple or advanced", "The simple way has no users.")
        self.desktop.keys("Return")
        self.enter("lark", "Lark")
        self.desktop.keys("Return")
        self.desktop.await_window(self.texts[BOX])
        self.album.add("wizard-refused", "Two different passwords", "The page stays.")
        self.desktop.keys("Return")
        self.desktop.await_closed(self.texts[BOX])
        self.desktop.type("lark")
        self.look("override", "The security override", "A password that lifts all restrictions.")
        self.desktop.keys("Return")
        time.sleep(0.5)
        self.desktop.keys("F1")
        self.look("popup", "Help for a control", "F1 explains what has the focus.")
        self.desktop.keys("Escape")
        self.look("restrictions", "The restrictions of everybody", "Hours, and a time limit.")
        self.desktop.keys("alt+n")  # a button has the focus
        self.look("completion", "The last page", "The two states of the icon.")
        self.desktop.keys("Return")
        self.desktop.await_closed(self.title)
        check(command.wait(WAIT_SECONDS) == 0, "the wizard ends well")
        self.check_system("NONE")
        stored = self.service.sql("SELECT Password FROM Users_None WHERE Name = 'Admin';")
        check(stored == digest("lark"), "the override has its password")

    def cancelled(self):
        command = self.command()
        self.to_logon_system()
        self.desktop.keys("Escape")
        self.await_question(True)
        self.album.add("wizard-cancel", "Leaving the wizard", "Only after a question.")
        self.desktop.keys("Tab", "Return")
        self.await_question(False)
        self.look("system", "The logon system", "No keeps the wizard as it was.")
        self.desktop.keys("Escape")
        self.await_question(True)
        self.desktop.keys("Return")
        self.desktop.await_closed(self.title)
        check(command.wait(WAIT_SECONDS) == 0, "a cancelled wizard ends well")
        self.check_system("NONE")

    def first_start(self):
        self.service.start()
        self.desktop.await_window(self.title)
        self.to_logon_system()
        self.desktop.keys("Down", "Return")
        self.enter("bo", "harbour", "harbour")
        self.look("administrator", "The administrator", "Who may change the settings later.")
        self.desktop.keys("Return")
        time.sleep(0.5)
        self.desktop.keys("Tab", "space")
        self.enter("anna", "nightingale")
        self.look("users", "The users", "Each with hours and a time limit.")
        self.desktop.keys("Return")
        time.sleep(0.5)
        self.desktop.keys("Return")
        self.desktop.await_window(self.texts[LOG_ON_CAPTION])
        self.album.add("first-logon", "After the wizard", "The service goes on with the new users.")
        self.desktop.keys("Escape")
        self.desktop.await_closed(self.texts[LOG_ON_CAPTION])
        self.check_system("QUILLGATE")
        users = self.service.sql("SELECT group_concat(Name || Privileges) FROM Users_Quillgate;")
        check(users == "anna0,bo1", "both users are stored")
        self.service.stop()

    # Hands.

    def command(self):
        command = subprocess.Popen(
            [self.service.folder / "qgserv", "SetupWizard"], stdin=subprocess.DEVNULL
        )
        self.desktop.await_window(self.title)
        return command

    def to_logon_system(self):
        self.desktop.keys("Return")
        time.sleep(0.5)
        self.desktop.keys("Down", "Return")
        time.sleep(0.5)

    def enter(self, *texts):
        time.sleep(0.5)
        for number, text in enumerate(texts):
            if number > 0:
                self.desktop.keys("Tab")
            self.desktop.type(text)

    def look(self, name, title, line):
        time.sleep(0.5)
        self.album.add(f"wizard-{name}", title, line)

    def await_question(self, shown):
        """Its caption is the wizard's."""
        count = 2 if shown else 1
        self.desktop.wait("the question", lambda: len(self.desktop.windows()) == count)
        time.sleep(0.3)

    def check_system(self, word):
        stored = self.service.sql("SELECT Value FROM Settings WHERE Key = '845';")
        check(stored == word, f"the logon system is {word}")
