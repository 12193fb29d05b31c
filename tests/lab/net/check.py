"""Runs the terminal program in a network that gets worse and better again: `check.py FOLDER-OF-PROGRAMS`."""
import fcntl
import json
import os
import signal
import socket
import subprocess
import sys
import time

from network import ROUTER, TARGET, Network, enter_sandbox, wait_until
from screen import Screen

enter_sandbox()
program = os.path.join(sys.argv[1], "tolvo-terminal")
network = Network()
settings_folder = os.path.join(network.folder, "config", "tolvo")
settings = {"batteryFriendly": False, "internetPingTarget": TARGET}
environment = {**os.environ, "XDG_CONFIG_HOME": os.path.dirname(settings_folder), "LANG": "C.UTF-8",
               "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=/run/none"}
os.makedirs(settings_folder)
with open(os.path.join(settings_folder, "settings.json"), "w") as file:
    json.dump(settings, file)


class Lines:
    """The program with a pipe for output, and the latest line of it."""

    def __init__(self):
        self.process = subprocess.Popen([program], stdout=subprocess.PIPE, stdin=subprocess.DEVNULL, env=environment)
        os.set_blocking(self.process.stdout.fileno(), False)
        self.rest, self.latest = b"", {}

    def read(self):
        self.rest += self.process.stdout.read() or b""
        *lines, self.rest = self.rest.split(b"\n")
        if lines:
            self.latest = json.loads(lines[-1])
        return self.latest

    def shows(self, condition, seconds=12):
        def holds():
            try:
                return condition(self.read())
            except KeyError:
                return False
        return wait_until(holds, seconds)


lines = Lines()
results = []


def check(name, is_true):
    results.append(bool(is_true))
    print("ok    " if is_true else "FAILED", name, "" if is_true else json.dumps(lines.latest), flush=True)


def pings_succeed(line):
    return line["routerPing"]["didSucceed"] and line["internetPing"]["didSucceed"]


def children():
    with open(f"/proc/{lines.process.pid}/task/{lines.process.pid}/children") as file:
        return file.read().split()


check("finds the router and pings both", lines.shows(lambda l: pings_succeed(l) and l["routerIPAddress"] == ROUTER))
check("measures a quick and whole path", lines.latest["internetPing"]["latencyMilliseconds"] < 20
      and lines.latest["internetPing"]["packetLossPercent"] == 0)
check("looks names up", lines.shows(lambda l: l["dns"]["didSucceed"]))
check("sees no portal", lines.shows(lambda l: l["captivePortal"]["isCaptivePortal"] is False))

hung = children()[0]
os.kill(int(hung), signal.SIGSTOP)
check("gives up a tools' server that hangs", wait_until(lambda: hung not in children(), 12))

network.cut()
check("a cut path fails the internet's ping alone",
      lines.shows(lambda l: not l["internetPing"]["didSucceed"] and l["internetPing"]["packetLossPercent"] == 100))
network.cut(False)
check("and succeeds again once it is whole", lines.shows(pings_succeed))

network.router_answers_pings(False)
check("a router that ignores pings is ignored", lines.shows(lambda l: l["isRouterIgnored"], 30))
network.router_answers_pings(True)
check("until it answers again", lines.shows(lambda l: not l["isRouterIgnored"] and l["routerPing"]["didSucceed"]))

network.stop("dns")
check("a dead name server fails look-ups while pings go on",
      lines.shows(lambda l: not l["dns"]["didSucceed"] and pings_succeed(l)))
network.start("dns")
check("until it is back", lines.shows(lambda l: l["dns"]["didSucceed"]))

for mode, reason, leads in (("redirect", "redirect", "http://portal.test/login"),
                            ("inject", "contentInjection", "http://captive.apple.com/hotspot-detect.html"),
                            ("clean", "none", None)):
    network.portal(mode)
    check(f"tells a network that is {mode}", lines.shows(lambda l: l["captivePortal"]["reason"] == reason)
          and lines.latest["captivePortal"].get("portalURL") == leads)

listener = socket.create_server(("127.0.0.1", 0), backlog=4096)
pairs = []
for _ in range(450):
    pairs.append(socket.create_connection(listener.getsockname()))
    pairs.append(listener.accept()[0])
check("counts the sockets", lines.shows(
    lambda l: l["connections"]["established"] == 900 and l["connections"]["quality"] == "poor"))
for connection in pairs:
    connection.close()

lines.process.send_signal(signal.SIGTERM)
check("ends cleanly on request", wait_until(lambda: lines.process.poll() == 0, 5))
closed = Lines()
closed.process.stdout.close()
check("ends when its output is closed", wait_until(lambda: closed.process.poll() is not None, 8))
unread = Lines()
fcntl.fcntl(unread.process.stdout, fcntl.F_SETPIPE_SZ, 4096)
time.sleep(10)  # More lines than that pipe holds.
unread.process.send_signal(signal.SIGTERM)
check("ends on request while nobody reads its output", wait_until(lambda: unread.process.poll() == 0, 5))


screen = Screen(program, environment)
check("draws its screen", screen.shows("Internet Ping"))
screen.type(b"m")
check("obeys its keys", screen.shows("Monitoring is paused."))
screen.type(b"\x03")
check("gives the terminal back", screen.wrote("\x1b[?1049l"))
check("and ends well", os.waitstatus_to_exitcode(os.waitpid(screen.child, 0)[1]) == 0)
with open(os.path.join(settings_folder, "settings.json")) as file:
    check("keeps the switch", json.load(file) == {**settings, "monitoringEnabled": False})

print(f"{sum(results)} passed, {len(results) - sum(results)} failed")
sys.exit(0 if all(results) else 1)
