"""A desktop to look at: a screen, a window manager and a panel with a notification area, and the
hands and eyes of the person before it (xdotool, scrot).

Everything is started with files of its own in a folder that is given, and ends with close(). Waiting
for a window has a limit; what does not come is a RuntimeError that names it.
"""
import os
import re
import subprocess
import time

SCREEN = "1280x800x24"
BACKGROUND = "#b4c4d8"
WAIT_SECONDS = 30.0
POLL_SECONDS = 0.1

OPENBOX_SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <theme><name>Clearlooks</name><titleLayout>NLC</titleLayout></theme>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <focus><focusNew>yes</focusNew></focus>
  <placement><policy>Smart</policy><center>yes</center></placement>
  <mouse>
    <context name="Titlebar">
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""

PANEL_SETTINGS = """
rounded = 0
border_width = 0
background_color = #e9ecf1 100
border_color = #c3c9d3 100
panel_items = FSC
panel_size = 100% 36
panel_position = bottom center horizontal
panel_background_id = 1
panel_padding = 8 0 10
panel_layer = top
wm_menu = 0
systray_padding = 4 6 6
systray_icon_size = 24
systray_monitor = 1
time1_format = %H:%M
time1_font = DejaVu Sans 10
clock_font_color = #2b3340 100
clock_padding = 10 0
"""

# Kinds of windows: what the window manager decorates, and what shows itself without it.
DIALOG = "dialog"
MENU = "menu"
BALLOON = "balloon"
ICON = "icon"
LARGEST_ICON = 48


def output(*words):
    return subprocess.run(words, capture_output=True, text=True, check=False).stdout


class Desktop:
    """With own_screen a virtual one, else the screen that this program was started on."""

    def __init__(self, folder, programs, own_screen):
        """Looks at the windows of these programs; the first one has the icon."""
        self.programs = programs
        self.has_own_screen = own_screen
        self.running = []
        self.home = folder / "home"
        self.home.mkdir(mode=0o700)
        # Where the toolkit keeps what lasts as long as a session.
        os.environ["XDG_RUNTIME_DIR"] = str(self.home)
        if own_screen:
            self.start_screen()
            self.start_window_manager()
            self.start_panel()

    def start(self, *words, **options):
        environment = {**os.environ, "HOME": str(self.home)}
        for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "DBUS_SESSION_BUS_ADDRESS"):
            environment.pop(name, None)
        process = subprocess.Popen(
            words, env=environment, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options
        )
        self.running.append(process)
        return process

    def start_screen(self):
        reading, writing = os.pipe()
        self.start(
            "Xvfb", "-displayfd", str(writing), "-screen", "0", SCREEN, "-nolisten", "tcp",
            pass_fds=(writing,), stdout=subprocess.DEVNULL,
        )
        os.close(writing)
        with os.fdopen(reading) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        os.environ["DISPLAY"] = ":" + number

    def start_window_manager(self):
        settings = self.home / "openbox.xml"
        settings.write_text(OPENBOX_SETTINGS)
        self.start("openbox", "--config-file", str(settings), stdout=subprocess.DEVNULL)
        self.wait("a window manager", lambda: "Openbox" in output("wmctrl", "-m"))
        subprocess.run(["xsetroot", "-solid", BACKGROUND], check=True)

    def start_panel(self):
        settings = self.home / "panel.conf"
        settings.write_text(PANEL_SETTINGS)
        self.start("tint2", "-c", str(settings), stdout=subprocess.DEVNULL)
        self.wait("a notification area", lambda: self.notification_area() is not None)

    @staticmethod
    def notification_area():
        """The panel's window."""
        found = output("xdotool", "search", "--onlyvisible", "--class", "^tint2$").split()
        return found[0] if found else None

    @staticmethod
    def wait(what, found, seconds=WAIT_SECONDS):
        deadline = time.monotonic() + seconds
        while time.monotonic() < deadline:
            result = found()
            if result:
                return result
            time.sleep(POLL_SECONDS)
        raise RuntimeError(f"{what} did not appear within {seconds:.0f} s")

    def tray_icon(self):
        """The middle of the program's icon in the notification area, in pixels; None without one."""
        for line in output("xwininfo", "-root", "-tree").splitlines():
            match = re.search(r'0x[0-9a-f]+.*\("%s".*?(\d+)x(\d+)\+-?\d+\+-?\d+\s+\+(\d+)\+(\d+)'
                              % re.escape(self.programs[0]), line)
            if not match:
                continue
            width, height, x, y = map(int, match.groups())
            if 8 <= width <= LARGEST_ICON and 8 <= height <= LARGEST_ICON:
                return x + width // 2, y + height // 2
        return None

    @staticmethod
    def kind(window, properties):
        if "_NET_WM_WINDOW_TYPE_TOOLTIP" in properties:
            return BALLOON
        information = output("xwininfo", "-id", window)
        width = re.search(r"Width: (\d+)", information)
        if width and int(width.group(1)) <= LARGEST_ICON:
            return ICON
        return MENU if "Override Redirect State: yes" in information else DIALOG

    def windows(self):
        """Kind and title of each visible window of the program."""
        found = []
        pattern = f"^({'|'.join(map(re.escape, self.programs))})$"
        for window in output("xdotool", "search", "--onlyvisible", "--class", pattern).split():
            # In the locale of the tour, which need not be installed, letters would be escaped.
            properties = output("env", "LC_ALL=C.UTF-8", "xprop", "-id", window, "_NET_WM_NAME",
                                "_NET_WM_WINDOW_TYPE")
            title = re.search(r'_NET_WM_NAME\(UTF8_STRING\) = "(.*)"', properties)
            found.append((self.kind(window, properties), title.group(1) if title else ""))
        return found

    def await_window(self, title, seconds=WAIT_SECONDS):
        self.wait(f"the window '{title}'", lambda: (DIALOG, title) in self.windows(), seconds)
        time.sleep(0.4)  # it is mapped; let it be painted and get the focus

    def await_closed(self, title):
        self.wait(f"the end of the window '{title}'", lambda: (DIALOG, title) not in self.windows())

    def count(self, kind):
        return [each for each, _ in self.windows()].count(kind)

    def await_menus(self, count):
        self.wait(f"menu {count}", lambda: self.count(MENU) == count)
        time.sleep(0.3)

    def await_balloon(self, seconds=WAIT_SECONDS):
        self.wait("a balloon", lambda: self.count(BALLOON) > 0, seconds)
        time.sleep(0.3)

    def click_tray(self, button, times=1):
        x, y = self.wait("the icon in the notification area", self.tray_icon)
        output("xdotool", "mousemove", str(x), str(y))
        time.sleep(0.2)
        output("xdotool", "click", "--repeat", str(times), "--delay", "80", str(button))

    @staticmethod
    def rest_pointer():
        """Where it covers nothing."""
        output("xdotool", "mousemove", "40", "400")

    def move_in(self, title, x, y):
        """To a position in a window, slowly enough to be noticed on the way."""
        search = ("xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$")
        # The search finds nothing when another window, such as a tip, goes meanwhile.
        window = self.wait(f"the window '{title}'", lambda: output(*search).split())[0]
        output("xdotool", "mousemove", "--window", window, str(x), str(y))
        time.sleep(0.15)

    @staticmethod
    def hold():
        output("xdotool", "mousedown", "1")
        time.sleep(0.15)

    @staticmethod
    def let_go():
        output("xdotool", "mouseup", "1")
        time.sleep(0.15)

    def click(self):
        self.hold()
        self.let_go()

    def keys(self, *names):
        for name in names:
            output("xdotool", "key", "--clearmodifiers", name)
            time.sleep(0.12)

    def type(self, text):
        output("xdotool", "type", "--delay", "30", text)
        time.sleep(0.15)

    @staticmethod
    def picture(path):
        subprocess.run(["scrot", "--overwrite", "--pointer", str(path)], check=True)

    def close(self):
        for process in reversed(self.running):
            process.terminate()
            process.wait()
