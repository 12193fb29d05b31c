"""Makes reports in a network whose values are known: `check_report.py FOLDER-OF-PROGRAMS VALIDATOR SCHEMA`."""
import json
import os
import pty
import signal
import subprocess
import sys
import time

from network import SPEED_TEST_URL, TARGET, Network, enter_sandbox

enter_sandbox()
network = Network()
folder = os.path.join(network.folder, "reports")
os.makedirs(os.path.join(network.folder, "tolvo"))
os.mkdir(folder)
with open(os.path.join(network.folder, "tolvo", "settings.json"), "w") as file:
    json.dump({"batteryFriendly": False, "internetPingTarget": TARGET}, file)
environment = {**os.environ, "XDG_CONFIG_HOME": network.folder, "LANG": "C.UTF-8",
               "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=/run/none"}
results = []


def check(name, is_true, seen=""):
    results.append(bool(is_true))
    print("ok    " if is_true else f"FAILED {seen}", name, flush=True)


def start(output, speed="well"):
    return subprocess.Popen([os.path.join(sys.argv[1], "tolvo-report")], cwd=folder, stdout=output,
                            env={**environment, "TOLVO_SPEED_TEST_URL": f"{SPEED_TEST_URL}/{speed}/both"},
                            stdin=subprocess.DEVNULL, stderr=subprocess.PIPE)


network.portal("redirect")
run = start(subprocess.PIPE)
text, progress = run.communicate(timeout=200)
report = json.loads(text)
measured = {name: section.get("data", {}) for name, section in {**report, **report["latency"]}.items()
            if isinstance(section, dict)}
check("a report in a pipe", run.returncode == 0 and b"\nRunning speed test...\n" in progress, progress)
path = os.path.join(network.folder, "report.json")
with open(path, "wb") as file:
    file.write(text)
check("is valid", subprocess.run([sys.executable, sys.argv[2], sys.argv[3], path]).returncode == 0)
check("holds what the network is like", measured["routerPing"]["didSucceed"] and measured["dnsLookup"]["didSucceed"]
      and measured["internetPing"]["packetLossPercent"] == 0 and measured["speedTest"]["downloadMbps"] > 1
      and measured["captivePortal"]["portalURL"] == "http://portal.test/login"
      and report["channelScan"]["status"] == report["wifi"]["status"] == "unavailable", text)

full = start(os.open("/dev/full", os.O_WRONLY))
terminal, output = pty.openpty()
saved, interrupted = start(output), start(output, "slow")
time.sleep(5)  # It measures the download for sixteen seconds.
interrupted.send_signal(signal.SIGINT)
check("an interrupted collection leaves no file", interrupted.wait(5) == 130 and len(os.listdir(folder)) < 2)
check("a full device is told of", full.communicate(timeout=200)[1].endswith(b"standard output.\n")
      and full.returncode == 1)
saved.communicate(timeout=200)
files = os.listdir(folder)
check("a terminal gets a file", saved.returncode == 0 and len(files) == 1 and files[0].startswith("tolvo-diagnostics-"),
      files)
sys.exit(0 if all(results) else 1)
