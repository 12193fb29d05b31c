"""The lab's network, a bus, tools and a clock for one program, and what can go wrong with each of them."""
import json
import mmap
import os
import signal
import struct
import subprocess
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "lab", "net"))
from network import ROUTER, TARGET, Network, enter_sandbox, sh  # noqa: E402,F401


class Surroundings:
    """All that the program stands on. What goes wrong is a switch that takes whether it does."""

    def __init__(self, programs):
        self.network = Network()
        self.folder = self.network.folder
        self._clock()
        self._tools(programs)
        self._bus(programs)
        os.makedirs(os.path.join(self.folder, "tolvo"))
        with open(os.path.join(self.folder, "tolvo", "settings.json"), "w") as file:
            json.dump({"batteryFriendly": False, "internetPingTarget": TARGET}, file)
        self.environment = {
            **os.environ, "XDG_CONFIG_HOME": self.folder, "LANG": "C.UTF-8", "TOLVO_AIR": "demo",
            "TOLVO_TOOLS_DIR": self.tools, "REAL_TOOLS": self.real_tools, "HANGING": self.hanging,
            "DBUS_SYSTEM_BUS_ADDRESS": self.bus, "SHIFTED_CLOCK": self.clock_file, "LD_PRELOAD":
            os.path.join(programs, "libshifted_clock.so")}

    def _clock(self):
        self.clock_file = os.path.join(self.folder, "clock")
        with open(self.clock_file, "wb") as file:
            file.write(bytes(8))
        self.clock = mmap.mmap(os.open(self.clock_file, os.O_RDWR), 8)

    def _tools(self, programs):
        # What can hang is started anew each time; the others run within one process, as all do by default.
        self.tools, self.hanging = os.path.join(self.folder, "tools"), os.path.join(self.folder, "hanging")
        self.real_tools = os.path.join(programs, "tools")
        os.mkdir(self.tools)
        for tool in os.listdir(self.real_tools):
            can_hang = tool in ("dig", "ifconfig", "ipconfig")
            target = os.path.join(programs, "tolvo_hung") if can_hang else os.path.join(self.real_tools, tool)
            os.symlink(target, os.path.join(self.tools, tool))

    def _bus(self, programs):
        self.bus = f"unix:path={self.folder}/bus"
        config = os.path.join(self.folder, "bus.conf")
        with open(config, "w") as file:
            file.write(f"<busconfig><listen>{self.bus}</listen><policy context='default'><allow own='*'/>"
                       "<allow send_destination='*'/><allow receive_sender='*'/></policy></busconfig>")
        subprocess.run(["dbus-daemon", "--fork", f"--config-file={config}"], check=True)
        self.logind = subprocess.Popen([os.path.join(programs, "mock_logind"), self.bus], stdin=subprocess.PIPE,
                                       stdout=subprocess.PIPE, text=True)
        assert self.logind.stdout.readline() == "ready\n"

    def lose(self, does=True):
        # A queue for two packets, at the speed of every second one.
        sh("tc qdisc replace dev wan root tbf rate 2kbit burst 1600 limit 300" if does else "tc qdisc del dev wan root",
           "router")

    def silence_dns(self, is_silent=True):
        self.network.servers["dns"].send_signal(signal.SIGSTOP if is_silent else signal.SIGCONT)

    def kill_dns(self, is_dead=True):
        self.network.stop("dns") if is_dead else self.network.start("dns")

    def pull_cable(self, is_out=True):
        sh(f"ip link set eth0 {'down' if is_out else 'up'}")
        if not is_out:
            sh(f"ip route add default via {ROUTER}")

    def hang(self, does=True):
        if does:
            open(self.hanging, "w").close()
        else:
            os.unlink(self.hanging)

    def sleep(self, does=True):
        word = "sleep" if does else "wake"
        self.logind.stdin.write(word + "\n")
        self.logind.stdin.flush()
        # It holds one inhibitor while it is awake, and lets go of it.
        if self.logind.stdout.readline().split() != [word, str(int(does)), "released"]:
            raise SystemExit(f"FAILED: the inhibitor, at {word}")

    def shift_clock(self, seconds):
        self.clock[:8] = struct.pack("q", seconds)

    @staticmethod
    def signal_server(number):
        """Tells the server of tools, wherever it is."""
        for process in filter(str.isdigit, os.listdir("/proc")):
            try:
                with open(f"/proc/{process}/cmdline", "rb") as file:
                    if file.read().endswith(b"tolvo-tools\0serve\0"):
                        os.kill(int(process), number)
            except OSError:
                pass

    def faults(self):
        """Name, what starts it and what ends it."""
        network = self.network
        flags = (("packets are lost", self.lose), ("the way behind the router is cut", network.cut),
                 ("the router ignores pings", lambda does=True: network.router_answers_pings(not does)),
                 ("the name server is silent", self.silence_dns), ("the name server is gone", self.kill_dns),
                 ("the cable is out", self.pull_cable), ("some tools hang", self.hang),
                 ("the machine sleeps", self.sleep))
        for name, switch in flags:
            yield name, switch, lambda switch=switch: switch(False)
        for name, number in (("hangs", signal.SIGSTOP), ("dies", signal.SIGKILL)):
            yield f"the tools' server {name}", lambda number=number: self.signal_server(number), lambda: None
        for mode in ("redirect", "inject"):
            yield f"a portal says {mode}", lambda mode=mode: network.portal(mode), lambda: network.portal("clean")
        for name, seconds in (("a day ahead", 86400), ("a year back", -31536000)):
            yield f"the clock jumps {name}", lambda s=seconds: self.shift_clock(s), lambda: self.shift_clock(0)
