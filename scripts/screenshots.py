#!/usr/bin/python3
"""Makes the pictures of the documentation: `screenshots.py FOLDER-OF-PROGRAMS FOLDER-OF-PICTURES [light|dark]`.

Everything is real but the air: a desktop without a screen, in a network of its own with an internet 14 ms away.
"""
import json
import os
import socket
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "lab", "desktop"))
from desktop import TARGET, Desktop, enter  # noqa: E402

enter()
programs, folder, *appearances = sys.argv[1:]
desk = Desktop(programs, size="1400x1000", delay=(6.5, 0.4))
desk.set_tray("notifier")


BACKGROUND = "#ff00ff"  # What shows at the popover's round corners, and nowhere else.


def paint_background():
    import Xlib.display
    display = Xlib.display.Display()
    root = display.screen().root
    root.change_attributes(background_pixel=int(BACKGROUND[1:], 16))
    root.clear_area()
    display.sync()


def take(name, window="Tolvo"):
    """A picture of that window in few colours, once nothing slides any more."""
    desk.move(5, 995)
    time.sleep(0.6)
    path = os.path.join(folder, f"{name}-{appearance}.png")
    # The popover from the screen, which shows through at its corners.
    left, top, width, height = desk.geometry(window)
    source = (["root", "-crop", f"{width}x{height}+{left}+{top}", "+repage"] if window == "Tolvo" else
              [desk.windows(window)[0]])
    subprocess.run(["import", "-silent", "-window", *source, "-strip", "-transparent", BACKGROUND, "+dither",
                    "-colors", "200", "-define", "png:format=png8", path], check=True)
    print(path, os.path.getsize(path), flush=True)


def started(**environment):
    """The program with its popover open and a history that tells something."""
    desk.write("config/tolvo/settings.json",
               json.dumps({"batteryFriendly": False, "internetPingTarget": TARGET, "colorfulIcon": True}))
    desk.start(TOLVO_APPEARANCE=appearance, TOLVO_SPEED_TEST_URL="http://speed.example.org:8080/well/both", **environment)
    desk.until("the icon", desk.icon)
    desk.click(desk.icon())
    desk.until("the popover", lambda: desk.windows("Tolvo"))


def walk(*names):
    for name in names:
        desk.press(name)


def panels():
    """The panels of a network that is well, and then of one that isn't."""
    started()
    desk.until("a good state", lambda: desk.find("Good"))
    time.sleep(7)
    take("dashboard")
    # Some of what a browser would hold.
    pages = [socket.create_connection((TARGET, 80)) for _ in range(24)]
    walk("Open Toolbox")
    take("toolbox")
    walk("Connection Monitor")
    time.sleep(2)
    take("connection-monitor")
    for page in pages:
        page.close()
    walk("Back to Toolbox", "Captive Portal")
    take("captive-portal")
    walk("Back to Toolbox", "Back to Main", "Open Settings")
    take("settings-general")
    walk("About")
    take("settings-about")
    walk("Back to Main")
    health()


def health():
    desk.network.answer_names_after(0.07)
    desk.until("a warning", lambda: desk.find("Warning"), 20)
    take("dashboard-warning")
    desk.network.answer_names_after(0)
    desk.network.cut()
    desk.until("a poor state", lambda: desk.find("Poor"), 20)
    time.sleep(2)
    take("dashboard-poor")
    desk.network.cut(False)
    desk.network.portal("redirect")
    desk.until("the portal", lambda: desk.find("Captive portal detected. Login may be required at", is_part=True), 20)
    take("dashboard-portal")
    walk("Open Toolbox", "Captive Portal")
    desk.until("its reason", lambda: desk.find("Reason", "HTTP redirect detected"))
    take("captive-portal-found")
    walk("Back to Toolbox", "Back to Main")
    desk.network.portal("clean")
    walk("Enabled")
    desk.until("the pause", lambda: desk.find("Paused"))
    take("dashboard-paused")
    desk.end()


def offline():
    started(TOLVO_AIR="")
    time.sleep(3)
    take("dashboard-offline")
    desk.end()


def tools():
    """Each tool's window before, while and after it does its work."""
    for title, name, start, running, over in (
            ("Speed Test", "speed-test", "Run Test", 0.8, "Retest"),
            ("Channel Scan", "channel-scan", "Scan Now", 4, "Scan Again"),
            ("Wi-Fi Radar", "wifi-radar", None, 12, None),
            ("Diagnostics Export", "diagnostics-export", None, 3, "Regenerate")):
        started()
        walk("Open Toolbox", title)
        desk.until(title, lambda: desk.windows(title))
        if start:
            take(name + "-ready", title)
            walk(start)
        time.sleep(running)
        if over:
            take(name + "-running", title)
            desk.until(over, lambda: desk.find(over), 120)
        take(name, title)
        desk.end()


paint_background()
for appearance in appearances or ("light", "dark"):
    panels()
    offline()
    tools()
