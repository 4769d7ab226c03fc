"""A whole machine for tests: Debian 12 with systemd, booted in a container with its own network.

Its uplink leads to a router, which is this program's network namespace, and an "Internet" behind
that. Neither the network nor the services of the machine that the tests run on are touched, and
everything is gone when the program that uses this ends, however it ends.
"""
import ctypes
import os
import shlex
import shutil
import signal
import socket
import struct
import subprocess
import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from demo_network import INTERNET, INTERNET6, give, ip, start_server
from machine_tree import COPY, CannotRun, fresh_copy, run
from service_lab import enter_namespaces

PROGRAMS = ("systemd-nspawn", "debootstrap", "apt-get", "unshare", "nsenter", "ip", "ping")
NAMESPACES = ("--net", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc")
GROUPS = Path("/sys/fs/cgroup")
BOOT_SECONDS = 60
CLONE_NEWNET = 0x40000000


def refuse():
    """Finds out quickly whether this can work here."""
    if os.geteuid() != 0:
        raise CannotRun("only root can boot a machine")
    missing = [name for name in PROGRAMS if shutil.which(name) is None]
    if missing:
        raise CannotRun("these programs are missing: " + ", ".join(missing))
    try:
        run(["unshare", *NAMESPACES, "mount", "-t", "tmpfs", "tmpfs", "/run"])
    except RuntimeError as error:
        raise CannotRun(f"namespaces cannot be made here: {error}") from error


def hierarchy():
    """Where control groups of version 2 are mounted."""
    for line in Path("/proc/self/mounts").read_text().splitlines():
        _, place, kind, *_ = line.split()
        if kind == "cgroup2":
            return Path(place)
    raise CannotRun("there are no control groups of version 2")


def make_group():
    """A control group with two below: one for this program, one for the machine."""
    mounted = hierarchy()
    lines = Path("/proc/self/cgroup").read_text().splitlines()
    above = mounted / next(line[len("0::/"):] for line in lines if line.startswith("0::"))
    group = above / f"machine-lab-{os.getpid()}"
    try:
        for each in (group, group / "lab", group / "machine"):
            each.mkdir()
        (group / "lab/cgroup.procs").write_text(str(os.getpid()))
    except OSError as error:
        raise CannotRun(f"control groups cannot be made here: {error}") from error
    if "LAB_SCOPE" in os.environ:
        for each in (above, group):
            (each / "cgroup.subtree_control").write_text("+memory")
    os.environ["LAB_GROUP"] = str((group / "machine").relative_to(mounted))
    return group


def remove_group(group):
    """A scope's group goes with the scope, and cannot be left before."""
    try:
        (group.parent / "cgroup.procs").write_text(str(os.getpid()))
        for folder, _, _ in os.walk(group, topdown=False):
            os.rmdir(folder)
    except OSError:
        pass


def enter(package):
    """Makes the machine's files and starts this program again in namespaces; returns only there."""
    if "LAB_GROUP" in os.environ:
        enter_namespaces()
        if hierarchy() != GROUPS:
            run(["mount", "--bind", hierarchy(), GROUPS])
        return
    refuse()
    if Path("/run/systemd/system").is_dir() and "LAB_SCOPE" not in os.environ:
        # systemd lends a part of its control groups to nobody else.
        os.environ["LAB_SCOPE"] = "1"
        words = ["systemd-run", "--quiet", "--scope", "--property=Delegate=yes"]
        os.execvp(words[0], [*words, sys.executable, *sys.argv])
    group = make_group()
    try:
        with fresh_copy(package):
            enter_namespaces()
    finally:
        remove_group(group)


class Outside:
    """The router and the Internet behind it, with the addresses of the demonstration's network."""

    internet = INTERNET
    internet6 = INTERNET6

    def __init__(self, bytes_per_second):
        ip("link", "set", "lo", "up")
        ip("netns", "add", "internet")
        ip("-n", "internet", "link", "set", "lo", "up")
        ip("link", "add", "wan", "type", "veth", "peer", "name", "web", "netns", "internet")
        give("wan", ("203.0.113.1/24", "2001:db8:113::1/64"))
        give("web", (f"{INTERNET}/24", f"{INTERNET6}/64"), "-n", "internet")
        for family, gateway in (("-4", "203.0.113.1"), ("-6", "2001:db8:113::1")):
            ip("-n", "internet", family, "route", "add", "default", "via", gateway)
        for name in ("ipv4/ip_forward", "ipv6/conf/all/forwarding"):
            Path("/proc/sys/net", name).write_text("1")
        self.server = start_server(bytes_per_second)

    def connect(self):
        """The machine's cable, which it brings along when it boots."""
        give("lan", ("192.168.77.1/24", "2001:db8:77::1/64"))


class Pulse:
    """Asks the Internet every 10 ms, in a thread of its own, and notes what was answered."""

    def __init__(self, address):
        self.answers = []  # when it was asked, when it was answered; seconds of the monotonic clock
        self.stopping = False
        self.thread = threading.Thread(target=self.ask, args=(address,), daemon=True)
        self.thread.start()

    def ask(self, address):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as probe:
            while not self.stopping:
                due = time.monotonic() + 0.01
                try:
                    probe.sendto(struct.pack("d", time.monotonic()), (address, 53))
                    while (left := due - time.monotonic()) > 0:
                        probe.settimeout(left)
                        asked, = struct.unpack("d", probe.recv(64))
                        self.answers.append((asked, time.monotonic()))
                except OSError:
                    time.sleep(max(due - time.monotonic(), 0))

    def is_silent(self, since):
        return not any(asked >= since for asked, _ in reversed(self.answers))

    def opened(self, since, seconds):
        """Seconds until something was answered that was asked since that moment."""
        await_true(lambda: not self.is_silent(since), seconds, "the Internet answers")
        return min(answered for asked, answered in self.answers if asked >= since) - since

    def closed(self, since, seconds):
        """Seconds until the last question was let out, after a second of silence."""
        await_true(lambda: time.monotonic() > since + 1 and self.is_silent(time.monotonic() - 1),
                   seconds, "the Internet is silent")
        return max([asked - since for asked, _ in self.answers if asked >= since], default=0.0)

    def longest_silence(self, since):
        """Seconds between two questions that were answered, until now."""
        asked = [since, *(each for each, _ in self.answers if each >= since), time.monotonic()]
        return max(after - before for before, after in zip(asked, asked[1:]))

    def stop(self):
        self.stopping = True
        self.thread.join()


def await_true(holds, seconds, what):
    deadline = time.monotonic() + seconds
    while not holds():
        if time.monotonic() > deadline:
            raise RuntimeError(f"not within {seconds} s: {what}")
        time.sleep(0.02)


class Machine:
    """Driven as its administrator and its users would; `log` has what every command has printed."""

    environment = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LANG": "C.UTF-8",
                   "DEBIAN_FRONTEND": "noninteractive"}

    def __init__(self, outside):
        self.outside = outside
        self.log = []

    def boot(self):
        group = GROUPS / os.environ["LAB_GROUP"] / "cgroup.procs"
        words = ["sh", "-c", 'echo $$ >"$0" && exec "$@"', group, "systemd-nspawn", "--quiet",
                 "--boot", f"--directory={COPY}", "--network-veth-extra=lan:uplink",
                 "--register=no", "--keep-unit", "--console=read-only", "--link-journal=no",
                 "--resolv-conf=off", "--timezone=off"]
        with (COPY / "srv/console").open("ab") as console:
            self.process = subprocess.Popen(words, stdin=subprocess.DEVNULL, stdout=console,
                                            stderr=subprocess.STDOUT)
        await_true(self.has_booted, BOOT_SECONDS, "the machine has booted")
        self.outside.connect()
        self.network = ThreadPoolExecutor(1, initializer=self.join_network)
        self.pulse = self.in_network(Pulse, self.outside.internet)

    def has_booted(self):
        if self.process.poll() is not None:
            raise RuntimeError("the machine does not boot:\n" + (COPY / "srv/console").read_text())
        state = self.run("systemctl", "is-system-running", "--wait", check=False)
        return state.strip() in ("running", "degraded")

    def leader(self):
        """Its first process; 0 while there is none."""
        children = Path(f"/proc/{self.process.pid}/task/{self.process.pid}/children").read_text()
        for child in children.split():
            try:
                status = Path(f"/proc/{child}/status").read_text()
            except OSError:
                continue  # one that only prepared the machine, and has ended
            if status.partition("NSpid:")[2].splitlines()[0].split()[1:] == ["1"]:
                return int(child)
        return 0

    def join_network(self):
        with open(f"/proc/{self.leader()}/ns/net", "rb") as network:
            if ctypes.CDLL(None, use_errno=True).setns(network.fileno(), CLONE_NEWNET) != 0:
                raise OSError(ctypes.get_errno(), "setns")

    def in_network(self, call, *arguments):
        """Calls it in the machine's network; threads and processes that it starts are there too."""
        return self.network.submit(call, *arguments).result()

    def run(self, *words, check=True):
        self.log.append(f"$ {shlex.join(words)}")
        enter = [f"--{each}" for each in ("mount", "uts", "ipc", "net", "pid", "cgroup")]
        ran = subprocess.run(
            ["nsenter", f"--target={self.leader()}", *enter, "--", *words], check=False, text=True,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
            env=self.environment,
        )
        self.log.append(ran.stdout)
        if check and ran.returncode != 0:
            raise RuntimeError(f"{shlex.join(words)} ends with status {ran.returncode}")
        return ran.stdout.strip()

    def log_on(self, user, at_screen=True):
        """Opens a session through PAM, which logind makes the screen's; its identifier."""
        # Without a class such a session counts as one in the background, which nobody sits at.
        place = ["--setenv=XDG_SEAT=seat0", "--setenv=XDG_SESSION_CLASS=user"] if at_screen else []
        self.run("systemd-run", "--quiet", "--collect", f"--unit={user}-{at_screen}",
                 f"--property=User={user}", "--property=PAMName=login", *place, "sleep", "infinity")
        await_true(lambda: self.session(user, at_screen), 20, f"a session of {user}")
        return self.session(user, at_screen)

    def session(self, user, at_screen):
        """Its identifier; nothing while there is none."""
        for line in self.run("loginctl", "list-sessions", "--no-legend").splitlines():
            identifier, _, name, *seat = line.split()
            if name == user and ("seat0" in seat) == at_screen:
                return identifier
        return None

    def log_off(self, user, at_screen=True):
        self.run("systemctl", "stop", f"{user}-{at_screen}")

    def began(self, session):
        """When logind made the session; seconds of the monotonic clock."""
        moment = self.run("loginctl", "show-session", session, "--property=TimestampMonotonic",
                          "--value")
        return int(moment) / 1e6

    def power_off(self):
        self.run("systemctl", "poweroff", check=False)
        self.end()

    def crash(self):
        os.kill(self.leader(), signal.SIGKILL)
        self.end()

    def end(self):
        self.process.wait(BOOT_SECONDS)
        self.pulse.stop()
        self.network.shutdown()
        # Whatever of the machine's network is still held by somebody, its cable is gone.
        subprocess.run(["ip", "link", "delete", "lan"], stderr=subprocess.DEVNULL, check=False)

    def journal(self):
        """Of all its runs, also when it does not run."""
        return run(["chroot", COPY, "journalctl", "--directory=/var/log/journal", "--no-pager",
                    "--lines=300", "--output=short-monotonic"])
