#!/usr/bin/env python3
"""The package on a machine of its own, from its installation to its removal: machine_test.py FOLDER

FOLDER holds the package. A Debian 12 is booted in a container; people log on and off at its screen
through PAM and logind, and what they may is seen from real traffic. Ends with status 77, and says
why, where such a machine cannot run.
"""
import signal
import sys
import time
from contextlib import contextmanager
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from demo_network import probes, probes_of_open_gate  # noqa: E402
from machine_lab import BOOT_SECONDS, Machine, Outside, await_true, enter  # noqa: E402
from machine_tree import COPY, PACKAGE, CannotRun  # noqa: E402
from service_lab import Download, say  # noqa: E402

SKIPPED = 77
MEGABYTE = 1 << 20
BYTES_PER_SECOND = 1_000_000
LIMIT_MEGABYTES = 4
IDLE_SECONDS = 60
# A cycle of enforcement and what the monitor and a slow machine add to it.
CYCLE_SECONDS = 40
HOURS = "0" * 168
# The user rows' columns: limits, hours, rights.
RULES = f"""
DELETE FROM Settings WHERE Key = '845';
INSERT INTO Settings VALUES ('845', 'WINDOWS');
DELETE FROM Users_Windows;
INSERT INTO Users_Windows
VALUES ('anna','','NO','5','0','YES','{LIMIT_MEGABYTES}','0','{HOURS}','0');
INSERT INTO Users_Windows VALUES ('bo','','NO','5','0','NO','1','0','{HOURS}','0');
"""
PROPERTIES = ("Id", "MainPID", "ControlGroup", "CPUUsageNSec", "MemoryCurrent",
              "InactiveExitTimestampMonotonic", "ActiveEnterTimestampMonotonic")
PROGRAM = "/usr/lib/quillgate/qgserv"
WAY_OUT = "this opens it: /usr/lib/quillgate/qggate open"
UNITS = "grep -ls lib/quillgate/ /etc/systemd/system/*.service /lib/systemd/system/*.service; true"
DATABASE = """find -L /usr/lib/quillgate /var/lib/quillgate -name quillgate.dat -print -quit \
  2>/dev/null; true"""
OLDER_PACKAGE = "/srv/older.deb"
# The same with a lower version, so that there is one to upgrade from.
OLDER = f"""dpkg-deb --raw-extract $1 /srv/older &&
sed -i 's/^Version: .*/Version: 0.1/' /srv/older/DEBIAN/control &&
dpkg-deb --root-owner-group --build /srv/older {OLDER_PACKAGE} && rm -r /srv/older"""
MEMORY = """for group; do for process in $(cat /sys/fs/cgroup$group/cgroup.procs); do
  grep ^Pss: /proc/$process/smaps_rollup
done; done"""
LEFT = r"""ls -l /proc/[0-9]*/exe 2>/dev/null | grep lib/quillgate/
find / -xdev \( -path /proc -o -path /sys -o -path /srv -o -path /var/log \) -prune -o \
  \( -iname '*quillgate*' -o -iname '*qgserv*' -o -iname '*winlogon*' \) -print"""


def expect(holds, text):
    if not holds:
        raise RuntimeError("not so: " + text)


class Story:
    """What the steps share. The figures are what, value, unit and the bound that must hold."""

    def __init__(self, machine):
        self.machine = machine
        self.figures = []

    def figure(self, what, value, unit, bound):
        self.figures.append((what, value, unit, bound))
        expect(value <= bound, f"{what}: {value:.2f} {unit} is at most {bound} {unit}")

    def sql(self, statement):
        database = self.machine.run("sh", "-c", DATABASE)
        expect(database, "there is a database")
        return self.machine.run("sqlite3", "-cmd", ".timeout 5000", database, statement)

    def await_name(self, user):
        """Of the person at the screen; empty: nobody is there."""
        name = "SELECT Value FROM WlNpData WHERE Key = 'UserName';"
        await_true(lambda: self.sql(name) == user, 20, f"the name at the screen is '{user}'")

    def services(self):
        """Ours by their identifiers, with their properties."""
        names = [Path(each).name for each in self.machine.run("sh", "-c", UNITS).split()]
        if not names:
            return {}
        shown = self.machine.run("systemctl", "show", *names, "--property=" + ",".join(PROPERTIES))
        services = [dict(line.split("=", 1) for line in block.splitlines())
                    for block in shown.split("\n\n")]
        return {each["Id"]: each for each in services}

    def await_services(self):
        def run():
            return sum(each["MainPID"] != "0" for each in self.services().values()) >= 2
        await_true(run, 30, "the service and the logon process run")

    def expect_traffic(self, is_open):
        probe = probes_of_open_gate if is_open else probes
        reached = self.machine.in_network(probe, self.machine.outside)
        expect(set(reached.values()) == {is_open}, f"open is {is_open} for every kind: {reached}")

    def log_on(self, user, what):
        session = self.machine.log_on(user)
        spent = self.machine.pulse.opened(self.machine.began(session), CYCLE_SECONDS)
        self.figure(f"from {what} to the open gate", spent, "s", 5)
        self.await_name(user)
        return session

    # The steps, in the order in which they happen.

    def install(self):
        self.machine.run("sh", "-c", OLDER, "sh", str(PACKAGE))
        self.machine.run("apt-get", "install", "-y", "--no-install-recommends", OLDER_PACKAGE)
        self.await_services()
        self.machine.pulse.opened(time.monotonic(), CYCLE_SECONDS)

    def give_rules(self):
        self.machine.run("systemctl", "stop", "qgserv")
        self.sql(RULES)

    def restart(self):
        self.machine.power_off()
        self.machine.boot()
        self.await_services()
        self.machine.pulse.closed(time.monotonic(), CYCLE_SECONDS)
        self.expect_traffic(is_open=False)
        began, done = "InactiveExitTimestampMonotonic", "ActiveEnterTimestampMonotonic"
        added = sum(int(each[done]) - int(each[began]) for each in self.services().values()
                    if int(each[done]))
        self.figure("added to the boot at most", added / 1e6, "s", 10)

    def anna_logs_on(self):
        self.anna = self.log_on("anna", "anna's logon")
        self.expect_traffic(is_open=True)

    def anna_downloads(self):
        download = self.machine.in_network(Download, self.machine.outside.internet)
        await_true(lambda: download.received and download.silent_for() > 2.5, 2 * CYCLE_SECONDS,
                   "the running download stands still")
        expect(download.received > LIMIT_MEGABYTES * MEGABYTE, "it has passed the limit")
        self.expect_traffic(is_open=False)
        download.stop()
        logged = int(self.sql("SELECT SUM(BytesRecv) FROM ConnLog WHERE User = 'anna';") or 0)
        expect(logged >= download.received, f"{logged} bytes are logged of {download.received}")

    def bo_logs_on(self):
        self.bo = self.log_on("bo", "bo's logon at the screen of anna")

    def switch(self):
        for user, session in (("anna", self.anna), ("bo", self.bo)):
            since = time.monotonic()
            self.machine.run("loginctl", "activate", session)
            pulse = self.machine.pulse
            watch = pulse.closed if user == "anna" else pulse.opened
            self.figure(f"from the switch to {user} to their rules", watch(since, CYCLE_SECONDS),
                        "s", 5)
            self.await_name(user)

    def bo_logs_off(self):
        self.machine.log_on("anna", at_screen=False)
        self.machine.log_off("bo")
        self.machine.pulse.closed(time.monotonic(), CYCLE_SECONDS)
        self.await_name("")
        self.expect_traffic(is_open=False)

    def kill(self):
        since = time.monotonic()
        killed = self.services()["qgserv.service"]["MainPID"]
        self.machine.run("sh", "-c", f"kill -KILL {killed}")
        await_true(lambda: self.services()["qgserv.service"]["MainPID"] not in ("0", killed), 10,
                   "the service is back")
        time.sleep(3)
        expect(self.machine.pulse.is_silent(since), "the gate was closed all the time")

    def upgrade(self):
        since = time.monotonic()
        self.machine.run("apt-get", "install", "-y", str(PACKAGE))
        self.await_services()
        time.sleep(3)
        expect(self.machine.pulse.is_silent(since), "the gate was closed all the time")

    def crash(self):
        self.machine.log_on("bo")
        self.machine.pulse.opened(time.monotonic(), CYCLE_SECONDS)
        download = self.machine.in_network(Download, self.machine.outside.internet)
        received = "SELECT BytesRecv FROM CrashLog WHERE User = 'bo' AND BytesRecv + 0 > 1000000;"
        await_true(lambda: self.sql(received), 2 * CYCLE_SECONDS, "the session stands in CrashLog")
        at_least = int(self.sql(received))
        logged = int(self.sql("SELECT COUNT(*) FROM ConnLog WHERE User = 'bo';"))
        self.machine.crash()
        download.stop()
        self.machine.boot()
        self.await_services()
        self.machine.pulse.closed(time.monotonic(), CYCLE_SECONDS)
        rows = self.sql("SELECT BytesRecv FROM ConnLog WHERE User = 'bo' ORDER BY rowid;").split()
        expect(len(rows) == logged + 1 and int(rows[-1]) >= at_least,
               f"the session of {at_least} bytes or more is recovered once: {rows}")
        expect(self.sql("PRAGMA integrity_check;") == "ok", "the database is whole")
        self.await_name("")
        self.expect_traffic(is_open=False)

    def log_on_again(self):
        since = time.monotonic()
        self.machine.log_on("anna")
        self.await_name("anna")
        time.sleep(3)
        expect(self.machine.pulse.is_silent(since), "the gate stays closed for anna")
        self.log_on("bo", "bo's logon after the crash")

    def idle(self):
        before = self.services()
        time.sleep(IDLE_SECONDS)
        after = self.services()
        spent = sum(int(after[each]["CPUUsageNSec"]) - int(before[each]["CPUUsageNSec"])
                    for each in after if before[each]["MainPID"] == after[each]["MainPID"] != "0")
        self.figure("processor time of an idle hour", spent / 1e9 * 3600 / IDLE_SECONDS, "s", 30)
        groups = [each["ControlGroup"] for each in after.values() if each["ControlGroup"]]
        listed = self.machine.run("sh", "-c", MEMORY, "sh", *groups)
        kilobytes = sum(int(line.split()[1]) for line in listed.splitlines())
        self.figure("memory of our processes", kilobytes / 1024, "MB", 100)
        counted = [int(each["MemoryCurrent"]) for each in after.values()
                   if each["MemoryCurrent"].isdigit()]
        if counted:
            self.figure("memory of our control groups, file cache too", sum(counted) / MEGABYTE,
                        "MB", 300)

    def upgrade_open(self):
        since = time.monotonic()
        self.machine.run("apt-get", "install", "-y", "--reinstall", str(PACKAGE))
        self.await_services()
        time.sleep(3)
        self.figure("longest silence while the package is upgraded with the gate open",
                    self.machine.pulse.longest_silence(since), "s", 2)

    def start_without_service(self):
        self.machine.run("qggate", "boot", "closed")
        self.machine.run("chmod", "-x", PROGRAM)
        self.machine.power_off()
        self.machine.boot()
        before = self.machine.run("journalctl", "--boot=-1", "--identifier=qgserv")
        expect("Service started" in before and "Service stopped" not in before,
               "the shutdown has not opened the gate: " + before)
        self.machine.log_on("bo")
        time.sleep(3)
        expect(self.machine.pulse.is_silent(0), "the gate is closed from the boot on")
        expect(WAY_OUT in (COPY / "srv/console").read_text(), "the console says why")
        expect(WAY_OUT in self.machine.run("journalctl", "--boot", "--unit=quillgate-closed"),
               "the journal says why")
        self.machine.run("qggate", "open")
        self.machine.pulse.opened(time.monotonic(), 1)
        self.machine.run("chmod", "+x", PROGRAM)
        self.machine.run("qggate", "boot", "open")
        self.await_services()
        self.machine.pulse.opened(time.monotonic(), CYCLE_SECONDS)

    def purge(self):
        self.machine.run("apt-get", "purge", "-y", "quillgate")
        self.machine.pulse.opened(time.monotonic(), 10)
        expect(self.machine.run("nft", "list", "tables") == "", "no packet filter is left")
        left = self.machine.run("sh", "-c", LEFT)
        expect(left == "", "no process and no file is left: " + left)


STORY = (
    ("the package is installed on a fresh Debian; it limits nobody", Story.install, 120),
    ("rules are given: anna may download 4 MB a day, bo what he likes", Story.give_rules, 60),
    ("the machine starts again; nobody is at the screen, the gate is closed", Story.restart, 180),
    ("anna logs on at the screen; the gate is open", Story.anna_logs_on, 90),
    ("her running download stops past her limit, and all else", Story.anna_downloads, 150),
    ("bo logs on at the same screen; the gate is open for him", Story.bo_logs_on, 90),
    ("the screen is switched to anna and back; each has their rules", Story.switch, 120),
    ("anna is on from afar and behind the screen, bo logs off; closed", Story.bo_logs_off, 90),
    ("the service is killed; the gate stays closed and it is back", Story.kill, 60),
    ("the package is upgraded; the gate stays closed", Story.upgrade, 120),
    ("the machine crashes while bo downloads; his session is recovered", Story.crash, 300),
    ("anna logs on and is still past her limit; bo logs on and is not", Story.log_on_again, 120),
    ("nothing happens for a minute", Story.idle, IDLE_SECONDS + 60),
    ("the package is upgraded; the gate stays open", Story.upgrade_open, 120),
    ("closed from the boot on, the service is broken; only root opens", Story.start_without_service,
     180),
    ("the package is purged; the gate is open and nothing is left", Story.purge, 90),
)


@contextmanager
def limit(seconds):
    def stop(*_):
        raise RuntimeError(f"its {seconds} s are over")
    signal.signal(signal.SIGALRM, stop)
    signal.alarm(seconds)
    try:
        yield
    finally:
        signal.alarm(0)


def tell(machine):
    story = Story(machine)
    for what, step, seconds in STORY:
        say(what)
        machine.log.clear()
        try:
            with limit(seconds):
                step(story)
        except Exception as error:  # whatever it is, the step has failed
            print("FAILED:", error, *machine.log, machine.journal(), sep="\n", flush=True)
            return 1
    for what, value, unit, bound in story.figures:
        print(f"{what}: {value:.2f} {unit} (at most {bound})")
    return 0


def find_package(folder):
    found = list(folder.glob("quillgate_*.deb"))
    if len(found) != 1:
        raise CannotRun(f"{folder} has not one package but {len(found)}; tools/package makes it")
    return found[0]


def main():
    try:
        enter(find_package(Path(sys.argv[1])))
        machine = Machine(Outside(BYTES_PER_SECOND))
        try:
            with limit(BOOT_SECONDS):
                machine.boot()
        except (OSError, RuntimeError) as error:
            raise CannotRun(f"a plain Debian does not boot here: {error}") from error
        return tell(machine)
    except CannotRun as reason:
        say(f"skipped: {reason}")
        return SKIPPED


if __name__ == "__main__":
    sys.exit(main())
