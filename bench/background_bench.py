#!/usr/bin/env python3
"""The background's whole cost: `background_bench.py FOLDER-OF-PROGRAMS [SECONDS]`.

The terminal program writes its lines for a minute in a network of its own, and the processor time of it and of every
tool that it ran is counted: at four seconds a poll and at half a second, beside 0 and 1,000 sockets. The peer is a shell
loop that runs ping, dig, ss and ip as often as Tolvo polled. Half a second is to stay below 0.8 % of a core. Needs root.
"""
import json
import os
import resource
import socket
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "lab", "net"))
from network import ROUTER, TARGET, Network, enter_sandbox  # noqa: E402

PEER = f"""
exec >/dev/null 2>&1
while sleep "$1"; do
    ip route get {TARGET} & ping -n -c 2 -W 1.5 {ROUTER} & ping -n -c 2 -W 1.5 {TARGET} & wait
done & pings=$!
while sleep "$1"; do dig +time=2 +tries=1 example.test; done & lookups=$!
while sleep "$1"; do ss -tan; done & sockets=$!
trap 'kill $pings $lookups $sockets; wait; exit' TERM
wait
"""


def cost(start, seconds):
    """Percent of a core that the started process and all that it reaped took."""
    before, begin = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
    process = start()
    time.sleep(seconds)
    process.terminate()
    process.wait()
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    used = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    return 100 * used / (time.monotonic() - begin)


def tolvo(program, folder, is_battery_friendly):
    settings = os.path.join(folder, f"battery-{is_battery_friendly}")
    os.makedirs(os.path.join(settings, "tolvo"), exist_ok=True)
    with open(os.path.join(settings, "tolvo", "settings.json"), "w") as file:
        json.dump({"batteryFriendly": is_battery_friendly, "internetPingTarget": TARGET}, file)
    environment = {**os.environ, "XDG_CONFIG_HOME": settings, "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=/run/none"}
    return subprocess.Popen([program], env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)


def connections(count):
    listener = socket.create_server(("127.0.0.1", 0), backlog=4096)
    ends = []
    for _ in range(count // 2):
        ends += [socket.create_connection(listener.getsockname()), listener.accept()[0]]
    return ends


def main():
    enter_sandbox()
    program = os.path.join(sys.argv[1], "tolvo-terminal")
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 60
    network = Network()
    resource.setrlimit(resource.RLIMIT_NOFILE, (4096, 4096))
    for sockets in (0, 1000):
        held = connections(sockets)
        for pause, is_battery_friendly in ((4.0, True), (0.5, False)):
            ours = cost(lambda: tolvo(program, network.folder, is_battery_friendly), seconds)
            peer = cost(lambda: subprocess.Popen(["sh", "-c", PEER, "sh", str(pause)]), seconds)
            print(f"{sockets:5} sockets, {pause} s: Tolvo {ours:.3f} % of a core, shell loop {peer:.3f} %", flush=True)
        for end in held:
            end.close()


main()
