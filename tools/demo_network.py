"""The demonstration's network: this namespace is the host, with a router and an Internet behind it.

Addresses of the Internet are documentation addresses (RFC 5737, RFC 3849), which no private range
covers. The program that uses this must already be in a network namespace of its own.
"""
import subprocess
import sys
import time

SERVER = """
import socket, sys, threading, time
rate = int(sys.argv[1])
chunk = bytes(rate // 20)

def stream(connection):
    try:
        while True:
            connection.sendall(chunk)
            time.sleep(0.05)
    except OSError:
        connection.close()

def echo():
    server = socket.socket(socket.AF_INET6, socket.SOCK_DGRAM)
    server.bind(("::", 53))
    while True:
        data, peer = server.recvfrom(2048)
        server.sendto(data, peer)

threading.Thread(target=echo, daemon=True).start()
server = socket.create_server(("::", 8080), family=socket.AF_INET6, dualstack_ipv6=True)
print("ready", flush=True)
while True:
    connection, _ = server.accept()
    threading.Thread(target=stream, args=(connection,), daemon=True).start()
"""

PROBE = """
import socket, sys
kind, address = sys.argv[1:]
family = socket.AF_INET6 if ":" in address else socket.AF_INET
try:
    if kind == "tcp":
        with socket.create_connection((address, 8080), timeout=1.5):
            sys.exit(0)
    with socket.socket(family, socket.SOCK_DGRAM) as probe:
        probe.settimeout(1.5)
        # A DNS query for the root name servers (RFC 1035).
        probe.sendto(bytes.fromhex("1234010000010000000000000000020001"), (address, 53))
        probe.recvfrom(2048)
except OSError:
    sys.exit(1)
"""


def ip(*words):
    subprocess.run(["ip", *words], check=True)


INTERNET, INTERNET6 = "203.0.113.10", "2001:db8:113::10"


def give(device, addresses, *side):
    """Makes an interface usable; `side` are the words for another namespace than one's own."""
    for address in addresses:
        flags = ["nodad"] if ":" in address else []
        ip(*side, "address", "add", address, "dev", device, *flags)
    ip(*side, "link", "set", device, "up")


def start_server(bytes_per_second):
    """The Internet's, in the namespace of that name; answers when this returns."""
    server = subprocess.Popen(
        ["ip", "netns", "exec", "internet", sys.executable, "-c", SERVER, str(bytes_per_second)],
        stdout=subprocess.PIPE,
        text=True,
    )
    if server.stdout.readline().strip() != "ready":
        raise RuntimeError("the server on the Internet side did not start")
    return server


class Network:
    interface = "uplink"
    internet = INTERNET
    internet6 = INTERNET6

    def __init__(self, bytes_per_second):
        ip("link", "set", "lo", "up")
        for name in ("router", "internet"):
            ip("netns", "add", name)
            ip("-n", name, "link", "set", "lo", "up")
        self.connect()
        self.server = start_server(bytes_per_second)

    def connect(self):
        ip("link", "add", self.interface, "type", "veth", "peer", "name", "lan", "netns", "router")
        ip("-n", "router", "link", "add", "wan", "type", "veth", "peer", "name", "web",
           "netns", "internet")
        router, internet = ("-n", "router"), ("-n", "internet")
        give(self.interface, ("192.168.77.2/24", "2001:db8:77::2/64"))
        give("lan", ("192.168.77.1/24", "2001:db8:77::1/64"), *router)
        give("wan", ("203.0.113.1/24", "2001:db8:113::1/64"), *router)
        give("web", (f"{INTERNET}/24", f"{INTERNET6}/64"), *internet)
        subprocess.run(
            ["ip", "netns", "exec", "router", "sh", "-c",
             "echo 1 >/proc/sys/net/ipv4/ip_forward; echo 1 >/proc/sys/net/ipv6/conf/all/forwarding"],
            check=True,
        )
        ip("route", "add", "default", "via", "192.168.77.1")
        ip("-6", "route", "add", "default", "via", "2001:db8:77::1")
        ip(*internet, "route", "add", "default", "via", "203.0.113.1")
        ip(*internet, "-6", "route", "add", "default", "via", "2001:db8:113::1")
        self.await_path()

    def await_path(self):
        for address in (self.internet, self.internet6):
            for _ in range(20):
                if subprocess.run(ping(address), stdout=subprocess.DEVNULL, check=False).returncode == 0:
                    break
                time.sleep(0.2)
            else:
                raise RuntimeError(f"{address} cannot be reached")

    def close(self):
        self.server.kill()
        self.server.wait()


def ping(address):
    """Three packets: while open one may be lost to neighbour discovery; closed, none may pass."""
    return ["ping", "-c", "3", "-i", "0.2", "-W", "1", "-n", address]


def probes(network):
    """Which kinds of traffic reach the Internet and are answered, all tried at once."""
    running = {}
    for family, address in (("IPv4", network.internet), ("IPv6", network.internet6)):
        for name, kind in (("TCP", "tcp"), ("DNS over UDP", "udp")):
            words = [sys.executable, "-c", PROBE, kind, address]
            running[f"{name}, {family}"] = subprocess.Popen(words)
        running[f"ping, {family}"] = subprocess.Popen(ping(address), stdout=subprocess.DEVNULL)
    return {name: process.wait() == 0 for name, process in running.items()}


def probes_of_open_gate(network):
    """The same, but a packet may be lost: the gate of a service that starts opens, closes and opens."""
    for _ in range(3):
        seen = probes(network)
        if all(seen.values()):
            break
    return seen
