#!/usr/bin/env python3
"""Writes docs/performance.md: `report.py FOLDER-OF-PROGRAMS BENCH...`, started by `bench/run --report`.

A bench of our own prints its figures as lines `figure | Tolvo's | peer's | goal`. Those over Google Benchmark are told
apart by the table below; one that isn't there stands in the report with its times. A goal reads "below 5", "at least
0.95 of the peer" and the like; "and" joins several.
"""
import datetime
import json
import os
import platform
import re
import subprocess
import sys
import tempfile

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")

# A run that keeps the whole report within a quarter of an hour.
SHORT_RUNS = {"transfer_bench": ["3", "250000000"]}

TITLES = {
    "background_bench": "Background monitoring, with all tools that it runs",
    "channel_scan_bench": "Channel scan: the result of three passes",
    "command_runner_bench": "Starting a tool, launch to outcome",
    "desktop_bench": "Desktop program",
    "poll_bench": "A poll's own cost on the main thread",
    "probe_parsing_bench": "Reading the tools' output",
    "radar_frame_bench": "Radar window",
    "report_view_bench": "Export window",
    "tolvo_tools_bench": "The tools, in processor time",
    "transfer_bench": "Speed test: four chunks at once",
}

# Google Benchmark's: figure, ours, peer, goal; a value is the name of a benchmark, or (name, counter).
SPAWN = "command run against bare spawn, parent of MiB:/{}/manual_time"
PICKED = {
    "channel_scan_bench": [
        ("2,000 networks", "analyze/channelsInUse/2000", None, "below 5 ms"),
        ("20,000 networks, peer: 2,000", "analyze/channelsInUse/20000", "analyze/channelsInUse/2000",
         "at most 12 of the peer"),
        ("2,000 networks on as many channels, which no radio does", "analyze/distinctChannels/2000", None, ""),
        ("20,000, peer: 2,000", "analyze/distinctChannels/20000", "analyze/distinctChannels/2000", ""),
    ],
    "command_runner_bench": [
        (f"from a process of {size}, peer: posix_spawn and waitpid", (SPAWN.format(mib), "run_us"),
         (SPAWN.format(mib), "bare_us"), "below 1.3 of the peer") for size, mib in (("few MiB", 0), ("1 GiB", 1024))
    ],
    "poll_bench": [
        ("router and internet ping, peer: two summaries with sscanf", "poll/router and internet ping",
         "peer/two summaries with scanf", "below 50 us"),
        ("look-up", "poll/look-up", None, "below 50 us"),
        ("40 sockets", "poll/40 sockets", None, "below 50 us"),
    ],
    "probe_parsing_bench": [
        ("20,000 rows of netstat, peer: string streams", "TCP table, ours/20000", "TCP table, with streams/20000", ""),
        ("the same, peer: finding the line ends", "TCP table, ours/20000", "TCP table, its lines alone/20000", ""),
        ("ping's summary, peer: sscanf", "ping summary, ours", "ping summary, with scanf", ""),
    ],
    "radar_frame_bench": [
        ("a frame of the face at 1080 by 680, peer: nothing kept", "keptLayers", "everythingAnew", "below 2.5 ms"),
        ("a frame of the whole window", "windowFrame", None, "below 2.5 ms"),
    ],
    "report_view_bench": [
        ("a report of 1 MB, peer: a bare text widget", "exportPage", "bareTextWidget", "below 200 ms"),
    ],
    "tolvo_tools_bench": [
        ("start, peer: an empty static program", "start/ours/iterations:500/manual_time",
         "start/nothing/iterations:500/manual_time", ""),
        ("look-up, peer: dig", "dig/ours/iterations:300/manual_time", "dig/installed/iterations:50/manual_time", ""),
        ("interfaces", "interfaces/ours/iterations:300/manual_time", None, ""),
        ("routes", "routes/ours/iterations:300/manual_time", None, ""),
        ("VPN services", "services/ours/iterations:300/manual_time", None, ""),
    ] + [
        (f"{count:,} sockets, peer: {peer}", f"sockets/ours/{count}/iterations:{times}/manual_time",
         f"sockets/{peer}/{count}/iterations:{times}/manual_time", "")
        for count, times in ((1000, 100), (18000, 20)) for peer in ("ss", "netstat")
    ],
}


def duration_text(value, unit):
    units = ["ns", "us", "ms", "s"]
    while value >= 1000 and unit != "s":
        value, unit = value / 1000, units[units.index(unit) + 1]
    return f"{value:.3g} {unit}"


def google_value(results, key):
    """As text; empty for what isn't there. Processor time, unless the bench measures by its own clock."""
    name, counter = key if isinstance(key, tuple) else (key, None)
    result = results.get(name)
    if result is None or "error_message" in result:
        return ""
    if counter:
        return duration_text(result[counter], counter.rsplit("_", 1)[1])
    return duration_text(result["real_time" if name.endswith("manual_time") else "cpu_time"], result["time_unit"])


def google_rows(bench, results):
    if bench not in PICKED:
        return [(name, google_value(results, name), "", "") for name, result in results.items()
                if result["run_type"] == "iteration"]
    return [(figure, google_value(results, ours), google_value(results, peer) if peer else "", goal)
            for figure, ours, peer, goal in PICKED[bench]]


def printed_rows(output):
    return [tuple(cell.strip() for cell in line.split("|")) for line in output.splitlines() if line.count(" |") == 3]


def run(folder, bench):
    """The rows of a bench, and what there is to say where it gave none."""
    script = os.path.join(ROOT, "bench", bench + ".py")
    with tempfile.TemporaryDirectory() as scratch:
        out = os.path.join(scratch, "out")
        if os.path.exists(script):
            command = [script, folder] + SHORT_RUNS.get(bench, [])
        else:
            command = [os.path.join(folder, "bench", bench), f"--benchmark_out={out}", "--benchmark_out_format=json"]
        ended = subprocess.run(command, stdout=subprocess.PIPE, text=True)
        if ended.returncode != 0:
            return [], f"failed with status {ended.returncode}"
        if os.path.exists(out):
            with open(out) as file:
                results = {result["name"]: result for result in json.load(file)["benchmarks"]}
            return google_rows(bench, results), ""
    rows = printed_rows(ended.stdout)
    return rows, "" if rows else ended.stdout.strip().splitlines()[-1] if ended.stdout.strip() else "printed nothing"


def number(text):
    """In the smallest of the units that the figures come in."""
    found = re.match(r"([\d.]+) ?(ns|us|ms|s)?\b", text)
    scale = {"us": 1e3, "ms": 1e6, "s": 1e9}
    return float(found[1]) * scale.get(found[2], 1) if found else None


def is_met(ours, peer, goal):
    """None where there is nothing to compare."""
    verdicts = []
    for word, bound, is_relative in re.findall(r"(below|above|at least|at most) ([\d.]+(?: [mnu]?s\b)?)( of the peer)?", goal):
        value, limit = number(ours), number(bound)
        if is_relative:
            limit = None if number(peer) is None else limit * number(peer)
        if value is None or limit is None:
            return None
        verdicts.append({"below": value < limit, "above": value > limit, "at least": value >= limit,
                         "at most": value <= limit}[word])
    return all(verdicts) if verdicts else None


def section(folder, bench):
    rows, problem = run(folder, bench)
    lines = [f"## {TITLES.get(bench, bench)}", ""]
    if problem:
        lines += [f"No figures: {bench} {problem}.", ""]
    if rows:
        lines += ["| figure | Tolvo | peer | of the peer | goal | |", "| --- | --- | --- | --- | --- | --- |"]
    for figure, ours, peer, goal in rows:
        share = f"{number(ours) / number(peer):.2f}" if number(ours) is not None and number(peer) else ""
        verdict = {True: "met", False: "**missed**", None: ""}[is_met(ours, peer, goal)]
        lines.append(f"| {figure} | {ours or 'not measured'} | {peer} | {share} | {goal} | {verdict} |")
    return "\n".join(lines) + "\n", not problem


def first_line(*command):
    return subprocess.run(command, cwd=ROOT, capture_output=True, text=True).stdout.strip().splitlines()[0]


def machine():
    with open("/proc/cpuinfo") as file:
        models = re.findall(r"model name\s*:\s*(.*)", file.read())
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") / 2**30
    return (f"{len(models)} x {models[0] if models else platform.machine()}, {memory:.0f} GiB, "
            f"{platform.freedesktop_os_release()['PRETTY_NAME']}, Linux {platform.release()}")


def header(load):
    changes = " with uncommitted changes" if subprocess.run(["git", "diff", "--quiet", "HEAD"], cwd=ROOT).returncode else ""
    return f"""# Figures

Written by `bench/run --report`; each figure beside its peer from the same run.

- Machine: {machine()}
- Date: {datetime.datetime.now(datetime.timezone.utc):%Y-%m-%d %H:%M} UTC, load before the start {load:.2f}
- Commit: {first_line("git", "rev-parse", "--short=12", "HEAD")}{changes}, {first_line("clang++-19", "--version")}
"""


def main():
    text, is_complete = header(os.getloadavg()[0]), True
    for bench in sys.argv[2:]:
        print(f"== {bench}", file=sys.stderr, flush=True)
        part, has_figures = section(sys.argv[1], bench)
        text += "\n" + part
        is_complete = is_complete and has_figures
    with open(os.path.join(ROOT, "docs", "performance.md"), "w") as file:
        file.write(text)
    return 0 if is_complete else 1


if __name__ == "__main__":
    sys.exit(main())
