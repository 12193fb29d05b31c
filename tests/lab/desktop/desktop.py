"""A throw-away desktop inside the lab's network: an X server without a screen, buses, a window manager, a tray, a person.

Everything ends with the process, whose children all are (see enter_sandbox).
"""
import json
import os
import shutil
import socket
import subprocess
import sys
import time
import warnings

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "net"))
from network import SKIPPED, SPEED_TEST_URL, TARGET, Network, enter_sandbox, sh, wait_until  # noqa: E402

NEEDED = "Xvfb dbus-daemon openbox xfce4-panel trayer dunst dunstctl xdotool xclip gdbus sway"
HOME = "/run/home"  # On the lab's own tmpfs.
WATCHER = "org.kde.StatusNotifierWatcher"
AREA = "^(wrapper-2.0|panel)$"
# One panel across the top that holds nothing but the status area, at its right.
PANEL = """<channel name="xfce4-panel" version="1.0"><property name="configver" type="int" value="2"/>
<property name="panels" type="array"><value type="int" value="1"/><property name="panel-1" type="empty">
<property name="position" type="string" value="p=6;x=0;y=0"/><property name="length" type="uint" value="100"/>
<property name="position-locked" type="bool" value="true"/><property name="size" type="uint" value="32"/>
<property name="icon-size" type="uint" value="24"/><property name="plugin-ids" type="array">
<value type="int" value="1"/><value type="int" value="2"/></property></property></property>
<property name="plugins" type="empty"><property name="plugin-1" type="string" value="separator">
<property name="expand" type="bool" value="true"/></property><property name="plugin-2" type="string" value="systray">
<property name="square-icons" type="bool" value="true"/></property></property></channel>"""


def enter():
    """Starts this script again inside the lab, or leaves with SKIPPED where no desktop can be had."""
    missing = [name for name in NEEDED.split() if not shutil.which(name)]
    try:
        warnings.simplefilter("ignore")
        import dbusmock  # noqa: F401
        import gi
        import Xlib  # noqa: F401
        gi.require_version("Atspi", "2.0")
    except (ImportError, ValueError) as error:
        missing.append(str(error))
    if missing:
        print("skipped: the desktop lab needs", *missing)
        sys.exit(SKIPPED)
    enter_sandbox()


class Desktop:
    """The desktop, and the one program on it that is tried."""

    def __init__(self, programs, size="1280x900", delay=None):
        self.width = int(size.partition("x")[0])
        self.programs, self.network, self.tray_host, self.program, self.begun = programs, Network(delay), None, None, []
        os.makedirs("/tmp/.X11-unix", exist_ok=True)  # A machine that never had a display lacks it.
        sh("mount -t tmpfs tmpfs /tmp/.X11-unix")
        self.log = open(os.path.join(self.network.folder, "desktop.log"), "w")
        os.environ.update(
            HOME=HOME, XDG_CONFIG_HOME=HOME + "/config", XDG_STATE_HOME=HOME + "/state", XDG_RUNTIME_DIR=HOME + "/run",
            DISPLAY=":7", DBUS_SESSION_BUS_ADDRESS=f"unix:path={HOME}/run/bus", XDG_CURRENT_DESKTOP="XFCE",
            DBUS_SYSTEM_BUS_ADDRESS=f"unix:path={HOME}/run/system-bus", GTK_A11Y="none", NO_AT_BRIDGE="1",
            LC_ALL="C.UTF-8", TZ="UTC", TOLVO_AIR="demo", TOLVO_UPDATE_API_URL=f"http://{TARGET}/v1/update",
            TOLVO_UPDATE_DOWNLOAD_BASE_URL=f"http://{TARGET}/releases", TOLVO_SPEED_TEST_URL=SPEED_TEST_URL + "/well/both")
        os.environ.pop("WAYLAND_DISPLAY", None)
        os.makedirs(HOME + "/run", 0o700)
        self.write("config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", PANEL)
        self.display = self.begin("Xvfb", ":7", "-nolock", "-noreset", "-screen", "0", size + "x24")
        self.bus = self.start_bus("bus")
        self.start_bus("system-bus")
        self.until("the X server", lambda: listens("/tmp/.X11-unix/X7"))
        self.begin(sys.executable, "-m", "dbusmock", "--system", "--template", "logind")
        self.begin("/usr/libexec/at-spi-bus-launcher", "--launch-immediately")
        self.begin("openbox", "--sm-disable")
        self.begin("dunst")
        self.until("the window manager", lambda: lines_of("xdotool", "get_num_desktops"))
        self.until("the accessibility bus", lambda: call(
            "org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled",
            "<true>") is not None)

    def write(self, name, text):
        path = os.path.join(HOME, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w") as file:
            file.write(text)
        return path

    def begin(self, *command, **more):
        self.begun.append(subprocess.Popen(command, env={**os.environ, **more}, stdin=subprocess.DEVNULL,
                                           stdout=self.log, stderr=self.log))
        return self.begun[-1]

    def state(self):
        """What helps to understand a failure: what has the focus, what has ended, and what was said last."""
        ended = [(process.args[0], process.returncode) for process in self.begun if process.poll() is not None]
        with open(self.log.name, errors="replace") as log:
            return lines_of("xdotool", "getwindowfocus", "getwindowname"), ended, log.read()[-1500:]

    def start_bus(self, name):
        path = f"{HOME}/run/{name}"
        bus = self.begin("dbus-daemon", "--session", "--nofork", f"--address=unix:path={path}")
        self.until(name, lambda: listens(path))
        return bus

    @staticmethod
    def until(what, condition, seconds=10):
        if not wait_until(condition, seconds):
            raise TimeoutError(what)

    def set_tray(self, kind):
        """"notifier" draws icons itself, "xembed" takes windows in, None is no status area."""
        if self.tray_host:
            self.tray_host.terminate()
            self.tray_host.wait()
            self.until("the area's end", lambda: not lines_of("xdotool", "search", "--name", AREA))
        commands = {"notifier": ("xfce4-panel", "--disable-wm-check"),
                    "xembed": ("trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "32")}
        self.tray_host = self.begin(*commands[kind]) if kind else None
        if kind == "notifier":
            self.until("the panel", self.has_notifier_host)

    @staticmethod
    def has_notifier_host():
        return "true" in str(call(WATCHER, "/StatusNotifierWatcher", "org.freedesktop.DBus.Properties.Get", WATCHER,
                                  "IsStatusNotifierHostRegistered"))

    def icon(self):
        """Where the icon is once it has come to rest, as x, y, width and height: no other is there."""
        def places():
            found = [place_of(window) for window in lines_of("xdotool", "search", "--onlyvisible", "--name", AREA)]
            return [place for place in found if 16 <= place[2] <= 48 and 0 <= place[0] <= self.width - place[2]]
        before = places()
        time.sleep(0.2)
        return before[0] if before and before == places() else None

    def geometry(self, title):
        return place_of(self.windows(title)[0])

    def start(self, **environment):
        self.program = self.begin(os.path.join(self.programs, "tolvo"), **environment)
        return self.program

    def end(self):
        self.program.terminate()
        return self.program.wait(10)

    def click(self, place, button=1):
        x, y, width, height = place
        self.move(x + width // 2, y + height // 2)
        subprocess.run(["xdotool", "click", str(button)], check=True)

    @staticmethod
    def move(x, y):
        # A panel has to see the pointer come before it is clicked.
        subprocess.run(["xdotool", "mousemove", str(x), str(y), "sleep", "0.15"], check=True)

    @staticmethod
    def key(*names):
        subprocess.run(["xdotool", "key", *names], check=True)

    def close(self, title):
        """What a title bar's button has the window manager say."""
        import Xlib.display
        import Xlib.protocol.event
        display = Xlib.display.Display()
        for window in (display.create_resource_object("window", int(number)) for number in self.windows(title)):
            window.send_event(Xlib.protocol.event.ClientMessage(
                window=window, client_type=display.intern_atom("WM_PROTOCOLS"),
                data=(32, [display.intern_atom("WM_DELETE_WINDOW"), 0, 0, 0, 0])))
        display.close()

    @staticmethod
    def pixels(place):
        """The colours (red, green, blue) of that part of the screen."""
        import Xlib.display
        import Xlib.X
        display = Xlib.display.Display()
        data = display.screen().root.get_image(*place, Xlib.X.ZPixmap, 0xFFFFFFFF).data
        display.close()
        return [(data[i + 2], data[i + 1], data[i]) for i in range(0, len(data), 4)]

    # What a person reads and presses, through the accessibility tree.

    def showing(self):
        """What is on the screen."""
        from gi.repository import Atspi, GLib

        def walk(node):
            node.clear_cache()
            if node.get_state_set().contains(Atspi.StateType.SHOWING):
                yield node
                for index in range(node.get_child_count()):
                    child = node.get_child_at_index(index)
                    yield from walk(child) if child else ()
        try:
            desktop = Atspi.get_desktop(0)
            programs = [desktop.get_child_at_index(index) for index in range(desktop.get_child_count())]
            return [node for program in programs if program and program.get_process_id() == self.program.pid
                    for node in walk(program)]
        except GLib.Error:
            return []  # Some of it went while we looked.

    def find(self, name, description=None, is_part=False):
        """What is on the screen and has that accessible name, and that description."""
        for node in self.showing():
            if (name in node.get_name() if is_part else name == node.get_name()) and (
                    description in (None, node.get_description())):
                return node
        return None

    def press(self, name):
        def act():
            # A label may have the name of the control that it stands beside.
            controls = [node.get_action_iface() for node in self.showing() if node.get_name() == name]
            control = next((control for control in controls if control and control.get_n_actions()), None)
            return control is not None and control.do_action(0)
        self.until(name, act)

    def focused(self):
        from gi.repository import Atspi
        return [node.get_name() for node in self.showing() if node.get_state_set().contains(Atspi.StateType.FOCUSED)]

    @staticmethod
    def windows(title):
        """Those with that title but the icon's own."""
        return [window for window in lines_of("xdotool", "search", "--onlyvisible", "--name", f"^{title}$")
                if place_of(window)[2] > 48]


def listens(path):
    """A socket's file is there before anyone listens."""
    with socket.socket(socket.AF_UNIX) as client:
        return client.connect_ex(path) == 0


def place_of(window):
    values = dict(line.split("=") for line in lines_of("xdotool", "getwindowgeometry", "--shell", window))
    return [int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT")] if values else [0, 0, 0, 0]


def call(service, path, method, *arguments, bus="--session"):
    """What the method gave, as text; None where nobody answered."""
    call = subprocess.run(["gdbus", "call", bus, "--dest", service, "--object-path", path, "--method", method,
                           *arguments], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    return call.stdout if call.returncode == 0 else None


def lines_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout.splitlines()
