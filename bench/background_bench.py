#!/usr/bin/env python3
"""The background's whole cost: `background_bench.py FOLDER-OF-PROGRAMS [SECONDS]`.

The terminal program writes its lines for a minute in a network of its own, and the processor time of it and of every
tool that it ran is counted: at four seconds a poll and at half a second, beside 0 and 1,000 sockets. The start stands
by itself. The peer is a shell loop that runs ping, dig, ss and ip as often as Tolvo polled; it looks for no portal.
Half a second is to stay below 0.8 % of a core, four below 0.1 %. Needs root, and openssl for the HTTPS probe's server.
"""
import ctypes
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


# Percent of a core.
GOALS = {4.0: 0.1, 0.5: 0.8}
START = 3
PR_SET_CHILD_SUBREAPER = 36


def children():
    with open(f"/proc/self/task/{os.getpid()}/children") as file:
        return {int(pid) for pid in file.read().split()}


def used(start, seconds):
    """Processor seconds that the started process and all below it took, also what it leaves behind to end by itself."""
    others = children()
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    process = start()
    time.sleep(seconds)
    process.terminate()
    process.wait()
    while left := children() - others:
        for pid in left:
            os.waitpid(pid, 0)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def cost(start, seconds):
    """What the first seconds took, and percent of a core after these, as the difference to a run that ends there."""
    first = used(start, START)
    return first, 100 * (used(start, START + seconds) - first) / seconds


def authority(network):
    """A certificate for the HTTPS probe, to be trusted; a server with it runs from now on."""
    path = os.path.join(network.folder, "certificate.pem")
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                    "-subj", "/CN=lab", "-addext", "subjectAltName=DNS:detectportal.firefox.com",
                    "-keyout", path + ".key", "-out", path], check=True, stderr=subprocess.DEVNULL)
    network.start("secure-web")
    return path


def tolvo(program, folder, is_battery_friendly, certificate):
    settings = os.path.join(folder, f"battery-{is_battery_friendly}")
    os.makedirs(os.path.join(settings, "tolvo"), exist_ok=True)
    with open(os.path.join(settings, "tolvo", "settings.json"), "w") as file:
        json.dump({"batteryFriendly": is_battery_friendly, "internetPingTarget": TARGET}, file)
    environment = {**os.environ, "XDG_CONFIG_HOME": settings, "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=/run/none",
                   "SSL_CERT_FILE": certificate}
    return subprocess.Popen([program], env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)


def connections(count):
    listener = socket.create_server(("127.0.0.1", 0), backlog=4096)
    ends = []
    for _ in range(count // 2):
        ends += [socket.create_connection(listener.getsockname()), listener.accept()[0]]
    return ends


def adopt_orphans():
    if ctypes.CDLL(None, use_errno=True).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0) != 0:
        raise OSError(ctypes.get_errno(), "prctl")


def main():
    enter_sandbox()
    adopt_orphans()
    program = os.path.join(sys.argv[1], "tolvo-terminal")
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 60
    network = Network()
    certificate = authority(network)
    resource.setrlimit(resource.RLIMIT_NOFILE, (4096, 4096))
    for sockets in (0, 1000):
        held = connections(sockets)
        for pause, is_battery_friendly in ((4.0, True), (0.5, False)):
            first, ours = cost(lambda: tolvo(program, network.folder, is_battery_friendly, certificate), seconds)
            _, peer = cost(lambda: subprocess.Popen(["sh", "-c", PEER, "sh", str(pause)]), seconds)
            print(f"{sockets:5} sockets, a poll each {pause} s, peer: shell loop | {ours:.3f} % of a core | {peer:.3f} % | "
                  f"below {GOALS[pause]} and at most 0.334 of the peer", flush=True)
            print(f"{sockets:5} sockets, a poll each {pause} s, the first {START} s | {1e3 * first:.0f} ms | |", flush=True)
        for end in held:
            end.close()


main()
