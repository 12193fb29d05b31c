"""A small network in namespaces of its own: this process (192.0.2.10, eth0), a router and an internet behind it.

Nothing in it has a way to the machine's own network. It ends with the process.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import time

ROUTER, TARGET, DNS = "192.0.2.1", "203.0.113.10", "203.0.113.53"
ECHO_TARGET = "1.1.1.1"
SPEED_TEST_URL = f"http://{TARGET}:8080"
HERE = os.path.dirname(os.path.abspath(__file__))
SERVERS = {"dns": ["servers.py", "dns"], "web": ["servers.py", "web"], "speed": ["speed_server.py"]}
WIRE = os.path.join(HERE, "wire.py")
SKIPPED = 77


def sh(command, namespace=None):
    words = command.split()
    if namespace:
        words = ["ip", "netns", "exec", namespace] + words
    subprocess.run(words, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)


def enter_sandbox():
    """Starts this script again in namespaces of its own, or leaves with SKIPPED where that isn't allowed."""
    if os.environ.get("TOLVO_LAB") == "inside":
        return
    works = shutil.which("ip") and subprocess.run(
        ["unshare", "--net", "--mount", "--pid", "--fork", "true"], stderr=subprocess.DEVNULL).returncode == 0
    if os.geteuid() != 0 or not works:
        print("skipped: the network lab needs root, unshare and iproute2")
        sys.exit(SKIPPED)
    os.environ["TOLVO_LAB"] = "inside"
    os.execvp("unshare", ["unshare", "--net", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc",
                          sys.executable] + sys.argv)


class Network:
    """With `delay` milliseconds and their spread one way between the router and the internet, or with none."""

    def __init__(self, delay=None):
        self.folder = tempfile.mkdtemp(prefix="tolvo-lab-")
        self._mounts()
        self._wires(delay)
        self.servers = {}
        self.portal("clean")
        self.answer_names_after(0)
        self.offer_update("")
        for server in SERVERS:
            self.start(server)

    def _mounts(self):
        # The machine's own buses and name servers are not this network's.
        sh("mount -t tmpfs tmpfs /run")
        os.makedirs("/run/netns")
        sh("mount -t sysfs sysfs /sys")
        resolv = os.path.join(self.folder, "resolv.conf")
        with open(resolv, "w") as file:
            file.write(f"nameserver {DNS}\noptions timeout:1 attempts:1\n")
        sh(f"mount --bind {resolv} {os.path.realpath('/etc/resolv.conf')}")

    def _wires(self, delay):
        for namespace in ("router", "internet"):
            sh(f"ip netns add {namespace}")
            sh("ip link set lo up", namespace)
        sh("ip link set lo up")
        sh("ip link add eth0 type veth peer name lan netns router")
        self._long_wire(*delay) if delay else sh("ip link add wan netns router type veth peer name net netns internet")
        sh("ip addr add 192.0.2.10/24 dev eth0")
        sh(f"ip addr add {ROUTER}/24 dev lan", "router")
        sh("ip addr add 203.0.113.1/24 dev wan", "router")
        sh(f"ip addr add {TARGET}/24 dev net", "internet")
        sh(f"ip addr add {DNS}/24 dev net", "internet")
        sh(f"ip addr add {ECHO_TARGET}/32 dev net", "internet")
        for link, namespace in (("eth0", None), ("lan", "router"), ("wan", "router"), ("net", "internet")):
            sh(f"ip link set {link} up", namespace)
        self._write("/proc/sys/net/ipv4/ping_group_range", "0 2147483647")
        sh("sysctl -qw net.ipv4.ip_forward=1", "router")
        sh(f"ip route add {ECHO_TARGET} dev wan", "router")
        sh(f"ip route add default via {ROUTER}")
        sh("ip route add default via 203.0.113.1", "internet")

    def _long_wire(self, milliseconds, spread):
        for link, here, there in (("wan", "router", "internet"), ("net", "internet", "router")):
            subprocess.Popen(["ip", "netns", "exec", here, sys.executable, WIRE, link, str(milliseconds), str(spread),
                              os.path.join(self.folder, here), os.path.join(self.folder, there)])
            wait_until(lambda: subprocess.run(["ip", "-n", here, "link", "show", link], stderr=subprocess.DEVNULL,
                                              stdout=subprocess.DEVNULL).returncode == 0, 5)

    @staticmethod
    def _write(path, text):
        with open(path, "w") as file:
            file.write(text)

    def start(self, server):
        script, *words = SERVERS.get(server, ["servers.py", server])
        process = subprocess.Popen(["ip", "netns", "exec", "internet", sys.executable, os.path.join(HERE, script), *words,
                                    self.folder], stdout=subprocess.PIPE)
        process.stdout.readline()
        self.servers[server] = process

    def stop(self, server):
        process = self.servers.pop(server)
        process.kill()
        process.wait()

    def portal(self, mode):
        """What the web server answers: clean, redirect or inject."""
        self._write(os.path.join(self.folder, "portal"), mode)

    def answer_names_after(self, seconds):
        self._write(os.path.join(self.folder, "dns-delay"), str(seconds))

    def offer_update(self, reply):
        self._write(os.path.join(self.folder, "update"), reply)

    def cut(self, is_cut=True):
        sh(f"ip link set wan {'down' if is_cut else 'up'}", "router")
        if not is_cut:
            sh(f"ip route replace {ECHO_TARGET} dev wan", "router")

    def shape(self, megabits, buffer_milliseconds):
        """A bottleneck in each direction, with a buffer that drops at its end and is full within a second."""
        for namespace in (None, "internet"):
            sh("sysctl -qw net.ipv4.tcp_congestion_control=reno", namespace)
        for link in ("lan", "wan"):
            try:
                sh(f"tc qdisc add dev {link} root tbf rate {megabits}mbit burst 3000 "
                   f"limit {megabits * 125 * buffer_milliseconds}", "router")
            except (OSError, subprocess.CalledProcessError):
                print("skipped: a bottleneck needs tc and the kernel's token bucket filter")
                sys.exit(SKIPPED)

    def router_answers_pings(self, does):
        sh(f"sysctl -qw net.ipv4.icmp_echo_ignore_all={0 if does else 1}", "router")


def wait_until(condition, seconds):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if condition():
            return True
        time.sleep(0.05)
    return False
