#!/usr/bin/env python3
"""The background half for an hour in a network that misbehaves: `soak.py FOLDER-OF-PROGRAMS [SECONDS [TABLE.md]]`.

The terminal program writes its lines with half a second between polls while one fault follows the other, each with a
rest behind it. It fails when the program ends or its lines stop, when a monitor has nothing new by the end of a rest or
the network isn't seen as well again, and when memory, descriptors, threads or children grow after the first minutes.
The Wi-Fi is the simulated one. Needs root.
"""
import json
import os
import signal
import statistics
import subprocess
import sys
import time

from surroundings import Surroundings, enter_sandbox

FAULT, REST, LONGEST_SILENCE = 15, 25, 10
MONITORS = ("wifi", "routerPing", "internetPing", "dns", "connections", "captivePortal")
MEASURES = ("memory", "descriptors", "threads", "children")
# Kilobytes, and numbers, that the last quarter may have more than the one behind the first minutes.
LEEWAY = {"memory": 1024, "descriptors": 1, "threads": 0, "children": 1}


def troubles(line):
    """The monitors that say that something is wrong."""
    found = {name for name in ("routerPing", "internetPing", "dns") if name in line and
             (not line[name]["didSucceed"] or line[name].get("packetLossPercent", 0) > 0)}
    failed = {name for name in ("connection", "captivePortal") if f"{name}ErrorMessage" in line}
    return found | failed | ({"portal"} if line.get("captivePortal", {}).get("reason", "none") != "none" else set())


class Program:
    """The running program: its lines, what each monitor last said, and what the process takes."""

    def __init__(self, programs, environment):
        self.process = subprocess.Popen([os.path.join(programs, "tolvo-terminal")], stdout=subprocess.PIPE,
                                        stdin=subprocess.DEVNULL, env=environment)
        os.set_blocking(self.process.stdout.fileno(), False)
        self.rest, self.line, self.silence, self.troubles = b"", {}, 0, set()
        self.heard, self.records, self.changed = time.monotonic(), dict.fromkeys(MONITORS, 0), {}

    def read(self):
        self.rest += self.process.stdout.read() or b""
        *lines, self.rest = self.rest.split(b"\n")
        now = time.monotonic()
        if lines:
            self.heard = now
        self.silence = max(self.silence, now - self.heard)
        for text in lines:
            line = json.loads(text)
            for monitor in MONITORS:
                if monitor in line and line[monitor] != self.line.get(monitor):
                    self.records[monitor] += 1
                    self.changed[monitor] = now
            self.line = line
            self.troubles |= troubles(line)
        if self.process.poll() is not None or now - self.heard > LONGEST_SILENCE:
            raise SystemExit(f"FAILED: the program ended ({self.process.poll()}) or is silent, after {self.line}")

    def is_well_since(self, moment):
        # A changed network drops the results, also those that were new.
        return all(monitor in self.line and self.changed[monitor] > moment for monitor in MONITORS) and all(
            self.line[monitor]["didSucceed"] for monitor in ("routerPing", "internetPing", "dns")) and \
            self.line["captivePortal"]["reason"] == "none"

    def takes(self):
        folder = f"/proc/{self.process.pid}"
        with open(f"{folder}/status") as file:
            status = dict(line.split(":", 1) for line in file)
        with open(f"{folder}/task/{self.process.pid}/children") as file:
            children = len(file.read().split())
        return {"memory": int(status["VmRSS"].split()[0]), "descriptors": len(os.listdir(f"{folder}/fd")),
                "threads": int(status["Threads"]), "children": children}


def watch(program, seconds, since=None):
    """The seconds until all was well again, if that was asked, and the least that the process took meanwhile."""
    end, recovered, samples = time.monotonic() + seconds, None, []
    while time.monotonic() < end:
        time.sleep(0.25)
        program.read()
        if since and recovered is None and program.is_well_since(since):
            recovered = time.monotonic() - since
        samples.append(program.takes())
    return recovered, {measure: min(sample[measure] for sample in samples) for measure in MEASURES}


def table(head, rows):
    lines = [head, ["---"] * len(head), *rows]
    return "\n".join("| " + " | ".join(str(cell) for cell in line) + " |" for line in lines) + "\n"


def growth(samples):
    """How much more of each the last quarter takes than the one behind the first sixth, in medians."""
    late = samples[len(samples) // 6:]
    quarter = max(1, len(late) // 4)
    return {m: statistics.median(s[1][m] for s in late[-quarter:]) - statistics.median(s[1][m] for s in late[:quarter])
            for m in MEASURES}


def run(programs, seconds):
    surroundings = Surroundings(programs)
    program = Program(programs, surroundings.environment)
    told = {}
    watch(program, REST)
    start, samples, recoveries, stuck = time.monotonic(), [], {}, []
    while time.monotonic() - start < seconds:
        for name, begin, end in surroundings.faults():
            program.troubles.clear()
            begin()
            watch(program, FAULT)
            told.setdefault(name, set()).update(program.troubles)
            end()
            recovered, least = watch(program, REST, time.monotonic())
            recoveries.setdefault(name, []).append(recovered)
            samples.append((time.monotonic() - start, least))
            if recovered is None:
                stuck.append(f"after \"{name}\": {json.dumps(program.line)}")
            print(f"{samples[-1][0]:6.0f} s  {name}: {recovered and round(recovered, 1)}  {least}", flush=True)
    program.process.send_signal(signal.SIGTERM)
    return program, samples, recoveries, told, stuck, program.process.wait(5)


def report(program, samples, recoveries, told):
    shown = samples[::max(1, len(samples) // 12)]
    spread = growth(samples)
    return f"""# Soak

`bench/soak SECONDS docs/soak.md` makes this page. The background half ran for {samples[-1][0] / 60:.0f} minutes with half a second between
polls, in a network of its own with a simulated Wi-Fi. One fault followed the other, {FAULT} seconds each with a rest of {REST} seconds
behind it. All is well when every monitor has a new result, pings and look-ups succeed and there is no portal.

{table(["Fault", "Times", "Told by", "Longest until all was well again (s)"],
       [[name, len(all), ", ".join(sorted(told[name])), f"{max(all):.1f}" if None not in all else "never"]
        for name, all in recoveries.items()])}
What the process took in the rests, at the least:

{table(["Minute", "Memory (kB)", "Descriptors", "Threads", "Children"],
       [[f"{moment / 60:.0f}", *(least[m] for m in MEASURES)] for moment, least in shown] +
       [["growth", *(f"{spread[m]:+.0f}" for m in MEASURES)]])}
Growth is that of the last quarter over the one behind the first minutes. The longest time without a line was
{program.silence:.1f} seconds. Results that the lines told of:

{table(list(MONITORS), [[program.records[monitor] for monitor in MONITORS]])}"""


def main():
    enter_sandbox()
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 3600
    program, samples, recoveries, told, stuck, status = run(os.path.abspath(sys.argv[1]), seconds)
    text = report(program, samples, recoveries, told)
    print(text)
    if len(sys.argv) > 3:
        with open(sys.argv[3], "w") as file:
            file.write(text)
    grown = [measure for measure, value in growth(samples).items() if value > LEEWAY[measure]]
    for fault in (*stuck, *(f"{measure} grew" for measure in grown), *([f"it ended with {status}"] if status else [])):
        print("FAILED", fault)
    sys.exit(1 if stuck or grown or status else 0)


main()
