"""The real service in namespaces of its own, as the demonstration and the desktop tour drive it.

Nothing else on the machine is touched, and everything is gone when the program that uses this ends,
however it ends.
"""
import hashlib
import os
import signal
import socket
import subprocess
import sys
import threading
import time
from pathlib import Path

started = time.monotonic()
failures = []


def say(text):
    print(f"{time.monotonic() - started:6.1f} s  {text}", flush=True)


def check(holds, text):
    say(("   ok   " if holds else "  WRONG ") + text)
    if not holds:
        failures.append(text)
    return holds


def digest(password):
    """As the user tables store it."""
    return hashlib.md5(password.encode()).hexdigest().upper()


class Service:
    """The service, driven as an administrator would: through its command line and winsc."""

    def __init__(self, build, folder):
        self.folder = folder / "program"
        self.root = folder / "state"
        subprocess.run(
            ["cmake", "--install", build, "--prefix", self.folder],
            check=True,
            stdout=subprocess.DEVNULL,
        )
        os.environ["WIN_ROOT"] = str(self.root)
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"):
            os.environ.pop(name, None)
        self.database = self.folder / "quillgate.dat"

    def call(self, program, *words):
        return subprocess.run(
            [self.folder / program, *words], capture_output=True, text=True, timeout=60, check=False
        )

    def run(self, program, *words):
        run = self.call(program, *words)
        if run.returncode != 0:
            raise RuntimeError(f"{program} {' '.join(words)}: {run.stdout}{run.stderr}".strip())

    def sql(self, *statements, options=()):
        run = subprocess.run(
            ["sqlite3", "-cmd", ".timeout 5000", *options, self.database, " ".join(statements)],
            capture_output=True,
            text=True,
            check=False,
        )
        if run.returncode != 0:
            raise RuntimeError(f"sqlite3: {run.stderr}".strip())
        return run.stdout.strip()

    def state(self):
        """As winsc tells it; its exit status is that of the state."""
        return self.call("winsc", "query", "qgserv").stdout

    def process(self):
        """The identifier of the service's process."""
        for folder in Path("/proc").iterdir():
            if folder.name.isdigit():
                try:
                    if os.readlink(folder / "exe") == str(self.folder / "qgserv"):
                        return int(folder.name)
                except OSError:
                    continue
        raise RuntimeError("the service has no process")

    def start(self):
        self.run("winsc", "start", "qgserv")

    def stop(self):
        self.run("winsc", "stop", "qgserv")

    def kill(self):
        os.kill(self.process(), signal.SIGKILL)

    def watch_log(self):
        """Prints what the service writes to its event log, as it comes."""
        path = self.root / "services/qgserv.log"

        def follow():
            position = 0
            while True:
                if path.exists():
                    with path.open("rb") as log:
                        log.seek(position)
                        chunk = log.read()
                    complete = chunk[: chunk.rfind(b"\n") + 1]
                    position += len(complete)
                    for line in complete.decode("utf-8", "replace").splitlines():
                        say("service: " + line)
                time.sleep(0.2)

        threading.Thread(target=follow, daemon=True).start()


class Download:
    """A real download through the gate, in a thread of its own."""

    def __init__(self, address):
        self.received = 0
        self.last_byte = time.monotonic()
        self.stopping = False
        self.thread = threading.Thread(target=self.receive, args=(address,), daemon=True)
        self.thread.start()

    def receive(self, address):
        with socket.create_connection((address, 8080), timeout=5) as connection:
            connection.settimeout(0.5)
            while not self.stopping:
                try:
                    data = connection.recv(65536)
                except TimeoutError:
                    continue
                if not data:
                    return
                self.received += len(data)
                self.last_byte = time.monotonic()

    def silent_for(self):
        return time.monotonic() - self.last_byte

    def stop(self):
        self.stopping = True
        self.thread.join()


def enter_namespaces():
    """Starts this program again inside namespaces of its own; returns only inside them."""
    if os.environ.get("LAB_INSIDE") == "1":
        # Also where a shell in the background has left it ignored.
        signal.signal(signal.SIGINT, signal.default_int_handler)
        subprocess.run(["mount", "-t", "tmpfs", "tmpfs", "/run"], check=True)
        return
    words = ["--net", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc"]
    if os.geteuid() != 0:
        words = ["--user", "--map-root-user", *words]
    trial = subprocess.run(["unshare", *words, "true"], capture_output=True, text=True, check=False)
    if trial.returncode != 0:
        sys.exit(
            "This needs network namespaces, which this account may not make "
            f"({trial.stderr.strip()}). Run it as root, or allow user namespaces."
        )
    environment = {**os.environ, "LAB_INSIDE": "1"}
    # In a process group of its own, so that whatever ends this program reaches it once, as Ctrl-C
    # does: it then cleans up and takes its namespaces with it.
    child = subprocess.Popen(
        ["unshare", *words, sys.executable, *sys.argv], env=environment, process_group=0
    )
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, lambda *_: os.killpg(child.pid, signal.SIGINT))
    sys.exit(child.wait())
