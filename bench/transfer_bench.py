#!/usr/bin/env python3
"""A speed test's transfers beside their peers: `transfer_bench.py FOLDER-OF-PROGRAMS [ROUNDS [CHUNK-BYTES]]`.

Four parallel chunks in each direction, over HTTP and HTTPS, in a network of its own: as Tolvo moves them, as a bare
libcurl program does, and with curl --parallel, in turns; the medians of the rounds stand side by side. Then four chunks
of 2 GB, whose memory is to be that of the small ones. Needs root, nginx-light and
libnginx-mod-http-lua; they are not installed for it, since that would start a web server on this machine.
"""
import os
import resource
import shutil
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "lab", "net"))
from network import TARGET, Network, enter_sandbox, sh, wait_until  # noqa: E402

PEERS = {"libcurl": "a bare libcurl program", "curl": "curl --parallel"}
MODULES = "/usr/lib/nginx/modules"
BUNDLE = "/etc/ssl/certs/ca-certificates.crt"
SERVER = """
load_module {modules}/ndk_http_module.so;
load_module {modules}/ngx_http_lua_module.so;
user root;
worker_processes 2;
pid {folder}/nginx.pid;
error_log {folder}/error.log;
events {{ worker_connections 256; }}
http {{
  access_log off;
  sendfile on;
  client_max_body_size 0;
  server {{
    listen {target}:8081;
    listen {target}:443 ssl;
    ssl_certificate {folder}/cert;
    ssl_certificate_key {folder}/key;
    location = /__down {{ root {folder}/sizes; rewrite ^ /$arg_bytes break; }}
    location = /__up {{ content_by_lua_block {{
      local rest, socket = tonumber(ngx.var.http_content_length), ngx.req.socket()
      while rest > 0 do
        local piece = socket:receive(math.min(rest, 262144))
        if not piece then return ngx.exit(499) end
        rest = rest - #piece
      end
      ngx.print("ok") }} }}
  }}
}}
"""


def serve(network, sizes):
    """Starts the server in the lab's internet, trusted by whatever reads the machine's certificates."""
    folder = network.folder
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-keyout",
                    f"{folder}/key", "-out", f"{folder}/cert", "-subj", "/CN=lab", "-addext",
                    f"subjectAltName=IP:{TARGET}"], check=True, stderr=subprocess.DEVNULL)
    with open(BUNDLE) as all_of_them, open(f"{folder}/cert") as own, open(f"{folder}/bundle", "w") as bundle:
        bundle.write(all_of_them.read() + own.read())
    sh(f"mount --bind {folder}/bundle {BUNDLE}")
    os.makedirs(f"{folder}/sizes")
    for size in sizes:
        with open(f"{folder}/sizes/{size}", "wb") as file:
            file.truncate(size)
    with open(f"{folder}/nginx.conf", "w") as file:
        file.write(SERVER.format(modules=MODULES, folder=folder, target=TARGET))
    sh(f"nginx -c {folder}/nginx.conf", "internet")
    wait_until(lambda: os.path.exists(f"{folder}/nginx.pid"), 5)


def program(way):
    def run(direction, url, size):
        line = subprocess.run([f"{sys.argv[1]}/transfer_run", way, direction, url, str(size), "4"], check=True,
                              capture_output=True, text=True).stdout
        return {name: float(value) for name, value in (field.split("=") for field in line.split())}
    return run


def curl(direction, url, size):
    moved = [f"{url}/__down?bytes={size}"] if direction == "down" else [f"{url}/__up", "--data-binary",
                                                                      f"@{network.folder}/sizes/{size}", "-H", "Expect:"]
    arguments = (["--next", "--http1.1", "-sf", "-o", "/dev/null"] + moved) * 4
    before, begin = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
    subprocess.run(["curl", "--parallel", "--parallel-immediate"] + arguments[1:], check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    seconds, after = time.monotonic() - begin, resource.getrusage(resource.RUSAGE_CHILDREN)
    cpu = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    return {"MB/s": 4 * size / 1e6 / seconds, "cpu_s/GB": cpu / (4 * size / 1e9)}


def compare(direction, url, size, rounds):
    ways = {"tolvo": program("ours"), "libcurl": program("bare"), "curl": curl}
    runs = {name: [] for name in ways}
    for _ in range(rounds):
        for name, way in ways.items():
            runs[name].append(way(direction, url, size))
    medians = {name: {figure: statistics.median(run[figure] for run in all_runs) for figure in all_runs[0]}
               for name, all_runs in runs.items()}
    ours = medians["tolvo"]
    for peer, figure, goal in (("libcurl", "MB/s", "at least 0.95 of the peer"), ("curl", "MB/s", "above 1 of the peer"),
                               ("libcurl", "cpu_s/GB", "at most 1.15 of the peer")):
        unit = figure.replace("_", " ")
        print(f"{direction} by {url.split(':')[0]}, peer: {PEERS[peer]} | {ours[figure]:.3f} {unit} | "
              f"{medians[peer][figure]:.3f} {unit} | {goal}")
    longest = max(run["longest_hold_ms"] for run in runs["tolvo"])
    print(f"{direction} by {url.split(':')[0]}, longest hold of the main thread | {longest:.2f} ms | | below 5 ms", flush=True)


missing = [name for name in ("nginx", "curl", "openssl") if not shutil.which(name)]
if not os.path.exists(f"{MODULES}/ngx_http_lua_module.so"):
    missing.append("libnginx-mod-http-lua")
if missing:
    print("skipped: needs", ", ".join(missing))
    sys.exit(0)
enter_sandbox()
rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 3
size = int(sys.argv[3]) if len(sys.argv) > 3 else 500_000_000
large = 2_000_000_000
network = Network()
serve(network, (size, large))
for direction in ("down", "up"):
    for url in (f"http://{TARGET}:8081", f"https://{TARGET}"):
        compare(direction, url, size, rounds)
for direction in ("down", "up"):
    figures = program("ours")(direction, f"http://{TARGET}:8081", large)
    print(f"4 chunks of 2 GB {direction}, memory | {figures['rss_MB']:.0f} MB | | below 64")
