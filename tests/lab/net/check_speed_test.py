"""Runs speed tests with a server that keeps a log, good or bad: `check_speed_test.py FOLDER-OF-PROGRAMS`.

Each part has a network of its own; they run side by side.
"""
import contextlib
import json
import os
import re
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor

from network import ECHO_TARGET, SPEED_TEST_URL, TARGET, Network, enter_sandbox, wait_until
from screen import Screen

programs = sys.argv[1]
network = None
results = []


def check(name, is_true, seen=""):
    results.append(bool(is_true))
    sys.stdout.write(f"ok     {name}\n" if is_true else f"FAILED {name} {seen}\n")


def environment(path):
    return {**os.environ, "XDG_CONFIG_HOME": network.folder, "LANG": "C.UTF-8",
            "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=/run/none", "TOLVO_SPEED_TEST_URL": f"{SPEED_TEST_URL}/{path}"}


def transfers():
    with open(os.path.join(network.folder, "transfers")) as file:
        return [line.split() for line in file.read().splitlines()]


def near(value, expected, share, least):
    return abs(value - expected) <= max(share * expected, least)


def pings(text):
    """Pairs of when an echo was sent, and its milliseconds."""
    found = re.findall(r"^\[([\d.]+)\].* time=([\d.]+) ms", text, re.MULTILINE)
    return [(float(received) - float(taken) / 1000, float(taken)) for received, taken in found]


def truth(path, megabits=None, buffer_milliseconds=0):
    """The dozen echoes of a test are few in a buffer that fills and drains: a miss is measured once more."""
    if megabits:
        network.shape(megabits, buffer_milliseconds)
    outcomes = compared(path, megabits)
    if not all(is_true for _, is_true, _ in outcomes):
        outcomes = compared(path, megabits)
    for outcome in outcomes:
        check(*outcome)


def compared(path, megabits):
    """The figures of a report beside the server's log, and beside ten pings a second."""
    earlier, outcomes = len(transfers()), []
    ping = subprocess.Popen(["ping", "-n", "-D", "-i", "0.1", ECHO_TARGET], stdout=subprocess.PIPE, text=True)
    report = subprocess.run([os.path.join(programs, "tolvo-report")], env=environment(path), stdin=subprocess.DEVNULL,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=100)
    ping.terminate()
    echoes = pings(ping.communicate()[0])
    figures = json.loads(report.stdout)["speedTest"].get("data", {})
    for direction, name in (("down", "download"), ("up", "upload")):
        done = [list(map(float, words[2:])) for words in transfers()[earlier:] if words[:2] == ["done", direction]]
        start, end = min(words[1] for words in done), max(words[2] for words in done)
        taken = sum(words[0] for words in done) * 8 / 1e6 / figures[f"{name}Mbps"]
        outcomes.append((f"{name} is payload over time", len(done) == 4 and near(taken, end - start, 0.01, 0.02),
                         f"in {taken:.3f} s for {end - start:.3f}"))
        if megabits:
            latency = figures.get(f"{name}LoadedLatencyMilliseconds", 0.0)
            beside = [taken for sent, taken in echoes if start <= sent <= end]
            mean = sum(beside) / len(beside)
            outcomes.append((f"{name} has the latency of its load", near(latency, mean, 0.15, 10),
                             f"{latency:.1f} ms for {mean:.1f}"))
    return outcomes


class Test:
    """A speed test on a terminal, from its start until it has been stopped."""

    def __init__(self, name, path):
        self.name, self.fault = name, path.partition("/")[0]
        self.began, self.earlier = time.monotonic(), len(transfers())
        self.screen = Screen(os.path.join(programs, "tolvo-terminal"), environment(path))
        self.screen.shows("Internet Ping")
        self.screen.type(b"s")
        self.screen.shows("Run Test")
        self.screen.type(b"s")

    def is_moving(self, direction):
        return transfers()[self.earlier:].count(["begun", direction, self.fault]) == 4

    def ends(self, badge, message, earliest, latest, has_download):
        """At the earliest so many seconds after the test's beginning, at the latest so many from now."""
        has_ended = self.screen.shows(badge, latest)
        seconds = time.monotonic() - self.began
        text = self.screen.text()
        has_figure = re.search(r"Download +\d+\.\d Mbps", text) is not None
        check(self.name, has_ended and seconds >= earliest and message in text and "Enter Run Test" in text
              and has_figure == has_download and not re.search(r"Upload +\d+\.\d Mbps", text),
              f"after {seconds:.1f} s:\n{text}")


REFUSED, LOST, LATE = ("Speed test server returned an unexpected response.", "The connection was lost.",
                       "The request timed out.")
# What the server does, what the program says of it, and within which seconds.
FAULTS = [("429", REFUSED, 0, 6), ("500", REFUSED, 0, 6), ("headers", REFUSED, 0, 6), ("close", LOST, 0, 6),
          ("stall", LATE, 10, 16)]


def bad_servers():
    """Each test ends with its reason, in time, and keeps the download that it has measured."""
    cases = [(Test(f"{fault} in the {direction}load", f"{fault}/{direction}"), direction, *expected)
             for direction in ("down", "up") for fault, *expected in FAULTS]
    with ThreadPoolExecutor(len(cases)) as pool:
        list(pool.map(lambda case: case[0].ends("Failed", *case[2:], case[1] == "up"), cases))


def stopped():
    for direction in ("down", "up"):
        test = Test(f"cancelled in the {direction}load", f"slow/{direction}")
        check(f"{direction}load is under way", wait_until(lambda: test.is_moving(direction), 10))
        test.screen.type(b"\r")
        test.ends("Cancelled", "", 0, 2, direction == "up")
    cut = {direction: Test(f"cut in the {direction}load", f"slow/{direction}") for direction in ("down", "up")}
    check("both are under way", wait_until(lambda: all(map(Test.is_moving, cut.values(), cut)), 10))
    network.cut()
    waiting = Test("cancelled while idle", "well/both")
    check("echoes are waited for", waiting.screen.shows("Capturing baseline latency...", 2))
    waiting.screen.type(b"\r")
    waiting.ends("Cancelled", "", 0, 2, False)
    with ThreadPoolExecutor(2) as pool:
        list(pool.map(lambda direction: cut[direction].ends("Failed", LATE, 10, 16, direction == "up"), cut))


# A server that is slow, or answers with more or less than it is asked for, gives each test its length.
PARTS = {"slow server": lambda: truth("slow/both"), "20 Mbit/s, 10 ms": lambda: truth("more/down", 20, 10),
         "8 Mbit/s, 40 ms": lambda: truth("less/down", 8, 40), "8 Mbit/s, 400 ms": lambda: truth("less/down", 8, 400),
         "bad servers": bad_servers, "stopped": stopped}


def outcome_of(part):
    """Runs a part as a process of its own."""
    run = subprocess.run([sys.executable, *sys.argv, part], stdout=subprocess.PIPE, text=True)
    print(f"{part}:\n{run.stdout}", end="", flush=True)
    return run.returncode


if len(sys.argv) == 2:
    with ThreadPoolExecutor(len(PARTS)) as pool:
        outcomes = list(pool.map(outcome_of, PARTS))
    sys.exit(1 if 1 in outcomes else max(outcomes))

enter_sandbox()
with contextlib.suppress(PermissionError):
    os.nice(-15)  # The figures are to tell of the network, not of what else the machine does.
network = Network()
os.makedirs(os.path.join(network.folder, "tolvo"))
with open(os.path.join(network.folder, "tolvo", "settings.json"), "w") as file:
    json.dump({"monitoringEnabled": False, "internetPingTarget": TARGET}, file)
PARTS[sys.argv[2]]()
sys.exit(0 if all(results) else 1)
