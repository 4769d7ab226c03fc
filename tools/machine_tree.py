"""The files of a machine for tests: a small Debian 12, made once and kept in the user's cache.

What boots is a copy of it, so that the kept tree stays as debootstrap made it but for packages that
apt has fetched into it. Root's alone: everything in it belongs to root.
"""
import fcntl
import hashlib
import os
import shlex
import shutil
import subprocess
from contextlib import contextmanager
from pathlib import Path

RELEASE = "bookworm"
PACKAGES = ("systemd-sysv", "dbus", "libpam-systemd", "login", "util-linux", "iproute2", "nftables",
            "sqlite3")
CACHE = Path(os.environ.get("XDG_CACHE_HOME") or Path.home() / ".cache") / "quillgate-machine"
TREE = CACHE / hashlib.sha256(" ".join((RELEASE, *PACKAGES)).encode()).hexdigest()[:12]
COPY = CACHE / "running"
# The package that is tested, inside the tree.
PACKAGE = Path("/srv/package.deb")
USERS = ("anna", "bo")

FILES = {
    "etc/hostname": "machine\n",
    "etc/hosts": "127.0.0.1 localhost machine\n",
    "etc/default/locale": "LANG=C.UTF-8\n",
    # The kernel's virtual terminals are those of the machine that the tests run on. Without them
    # logind switches between the sessions of seat0 by itself.
    "etc/systemd/system/systemd-logind.service.d/seat.conf":
        "[Service]\nInaccessiblePaths=/sys/class/tty\n",
    "etc/systemd/network/uplink.network": """[Match]
Name=uplink
[Network]
Address=192.168.77.2/24
Address=2001:db8:77::2/64
Gateway=192.168.77.1
Gateway=2001:db8:77::1
IPv6AcceptRA=no
""",
}


class CannotRun(Exception):
    """Such a machine is not allowed here, or cannot be fetched; the text says why."""


def run(words, **options):
    """Its output; an error with all of it when it fails."""
    ran = subprocess.run(words, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True,
                         stderr=subprocess.STDOUT, check=False, **options)
    if ran.returncode != 0:
        raise RuntimeError(f"{shlex.join(map(str, words))}: {ran.stdout.strip()}")
    return ran.stdout


def fetch(words):
    """The same for what needs the network, through apt's proxy if it has one."""
    proxy = run(["apt-config", "shell", "proxy", "Acquire::http::Proxy"])
    environment = {**os.environ, "DEBIAN_FRONTEND": "noninteractive"}
    if proxy:
        environment["http_proxy"] = shlex.split(proxy.partition("=")[2])[0]
    return run(words, env=environment)


def sources():
    """Where this machine's apt has the release from: address, suite, component."""
    listing = run(["apt-get", "indextargets", "--format",
                   "$(ORIGIN) $(COMPONENT) $(REPO_URI) $(CODENAME)", "Created-By: Packages"])
    found = [line.split()[2:] for line in listing.splitlines() if line.startswith("Debian main ")]
    found = [pair for pair in found if pair[1:] and pair[1].startswith(RELEASE)]
    main = [address for address, suite in found if suite == RELEASE]
    if not main:
        raise CannotRun(f"apt has no packages of Debian's release {RELEASE} here")
    return main[0], "".join(f"deb {address} {suite} main\n" for address, suite in found)


def make_tree():
    mirror, listing = sources()
    made = TREE.with_suffix(".new")
    shutil.rmtree(made, ignore_errors=True)
    try:
        fetch(["debootstrap", "--variant=minbase", "--include=" + ",".join(PACKAGES), RELEASE, made,
               mirror])
        (made / "etc/apt/sources.list").write_text(listing)
        fetch(["chroot", made, "apt-get", "update"])
    except RuntimeError as error:
        raise CannotRun(f"Debian's packages could not be fetched: {error}") from error
    made.rename(TREE)


def fetch_dependencies():
    """Into apt's cache, so that the machine needs no network to install the package."""
    shutil.copyfile("/etc/resolv.conf", TREE / "etc/resolv.conf")
    words = ["chroot", TREE, "apt-get", "install", "-y", "--no-install-recommends",
             "--download-only", PACKAGE]
    try:
        fetch(words)
        return
    except RuntimeError:
        pass  # The lists may be older than what the archive still has.
    try:
        fetch(["chroot", TREE, "apt-get", "update"])
    except RuntimeError as error:
        raise CannotRun(f"Debian's packages could not be fetched: {error}") from error
    fetch(words)


def make_copy():
    shutil.rmtree(COPY, ignore_errors=True)
    run(["cp", "-a", "--reflink=auto", TREE, COPY])
    for name, text in FILES.items():
        (COPY / name).parent.mkdir(parents=True, exist_ok=True)
        (COPY / name).write_text(text)
    # With this folder the journal outlives the machine's runs.
    (COPY / "var/log/journal").mkdir(exist_ok=True)
    (COPY / "etc/machine-id").write_text("")
    run(["chroot", COPY, "systemctl", "enable", "systemd-networkd"])
    for user in USERS:
        run(["chroot", COPY, "useradd", "--create-home", user])


@contextmanager
def fresh_copy(package):
    """A machine's files, the package among them, for as long as this lasts; one at a time."""
    CACHE.mkdir(parents=True, exist_ok=True)
    with (CACHE / "lock").open("w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        if not TREE.exists():
            make_tree()
        shutil.copyfile(package, TREE / PACKAGE.relative_to("/"))
        fetch_dependencies()
        make_copy()
        try:
            yield
        finally:
            shutil.rmtree(COPY, ignore_errors=True)
