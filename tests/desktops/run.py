#!/usr/bin/python3
"""Tries the built program on whole desktops, one after the other, prints a summary, and writes docs/desktops.md
when every one of them has had its turn.

usage: run.py BUILD [DESKTOP...]   (names of the test_*.py here; all if none is given)
"""
import argparse
import json
import os
import platform
import shutil
import subprocess
import sys
import time
from collections import Counter

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
DOCUMENT = f"{ROOT}/docs/desktops.md"
# The title of each desktop, the packages whose versions say which one it was, and what private-desktop leaves out.
DESKTOPS = {
    "xfce": ("Xfce on X11", "xfwm4 xfce4-panel xfce4-settings thunar xfce4-screenshooter rofi mousepad", ("--no-wm",)),
    "mate": ("MATE on X11", "marco mate-panel mate-settings-daemon caja maim rofi pluma", ("--no-wm",)),
    "cinnamon": ("Cinnamon on X11", "cinnamon cinnamon-settings-daemon nemo maim gedit", ("--no-wm",)),
    "gnome": ("GNOME on X11", "gnome-shell nautilus gnome-screenshot gedit libadwaita-1-0", ("--no-wm",)),
    "gnome_wayland": ("GNOME on Wayland", "gnome-shell xwayland nautilus libadwaita-1-0", ("--no-x",)),
    "plasma": ("KDE Plasma on X11", "kwin-x11 plasma-desktop dolphin kde-spectacle kwrite", ("--no-wm",)),
    "plasma_wayland": ("KDE Plasma on Wayland", "kwin-wayland xwayland plasma-desktop dolphin", ("--no-x",)),
}
MARKS = {"passed": "✔", "failed": "**failed**", "not possible": "not possible here"}
INTRODUCTION = """\
# The program on whole desktops

Written by `./dev test desktops`, which builds the program, starts it on each desktop in turn, presses its
shortcuts, and asks the desktop's own programs what came of it. The file tells what happened at the last run:
{when}, {where}. {counts}

Every desktop runs without hardware: on Xvfb, or headless where it says Wayland, as root in a container, and with
a stand-in for the login manager where the desktop wants one. No session manager runs. On X11 a press is made by
the server's XTEST extension; on Wayland in the same way inside XWayland, since the program's shortcuts live there.
"""


def versions(packages):
    told = subprocess.run(("dpkg-query", "-W", "-f", "${Package} ${Version}\n", *packages.split()),
                          capture_output=True, text=True).stdout
    return ", ".join(told.splitlines())


def system():
    names = platform.freedesktop_os_release()
    return f"{names.get('PRETTY_NAME', 'Linux')}, {os.cpu_count()} processors"


def revision():
    told = subprocess.run(("git", "-C", ROOT, "describe", "--always", "--dirty", "--exclude=*"), capture_output=True,
                          text=True)
    return told.stdout.strip() or "unknown"


def run(name, build):
    """The checks of one desktop, in order: check, outcome, detail."""
    # Where a failure leaves what the desktop's programs printed.
    folder = f"{build}/desktops/{name}"
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    results = f"{folder}/results"
    environment = os.environ | {"TAVRIN": f"{build}/Tavrin", "TAVRIN_BUILD": build, "TAVRIN_DESKTOPS_LOGS": folder,
                                "TAVRIN_DESKTOPS_RESULTS": results}
    status = subprocess.run((f"{ROOT}/tests/support/private-desktop", *DESKTOPS[name][2], "--", "/usr/bin/python3",
                             "-B", f"{HERE}/test_{name}.py"), env=environment).returncode
    checks = []
    if os.path.exists(results):
        with open(results) as file:
            checks = [json.loads(line) for line in file]
    # A desktop that ends before its last check says nothing about it.
    if status and not any(check["outcome"] == "failed" for check in checks):
        checks.append({"check": "The desktop ran to its end", "outcome": "failed", "detail": f"status {status}"})
    return checks


def summary(results):
    counts = Counter(check["outcome"] for checks in results.values() for check in checks)
    return ", ".join(f"{counts[outcome]} {outcome}" for outcome in MARKS)


def print_summary(results):
    print("\n== Summary")
    for name, checks in results.items():
        print(f"{DESKTOPS[name][0]}:")
        for check in checks:
            detail = f" ({check['detail']})" if check["detail"] else ""
            print(f"  {check['outcome']:13}{check['check']}{detail}")
    print(summary(results))


def cell(text):
    return text.replace("|", "\\|").replace("\n", " ")


def write_document(results):
    parts = [INTRODUCTION.format(when=time.strftime("%Y-%m-%d %H:%M UTC", time.gmtime()),
                                 where=f"revision {revision()}, {system()}",
                                 counts=f"Checks: {summary(results)}.")]
    for name, checks in results.items():
        title, packages, _ = DESKTOPS[name]
        rows = "\n".join(f"| {cell(check['check'])} | {MARKS[check['outcome']]}"
                         f"{': ' + cell(check['detail']) if check['detail'] else ''} |" for check in checks)
        parts.append(f"## {title}\n\n{versions(packages)}\n\n| check | result |\n|---|---|\n{rows}\n")
    with open(DOCUMENT, "w") as file:
        file.write("\n".join(parts))
    print(f"Written: {os.path.relpath(DOCUMENT)}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build")
    parser.add_argument("desktop", nargs="*", choices=[[], *DESKTOPS])
    options = parser.parse_args()
    results = {}
    for name in options.desktop or DESKTOPS:
        print(f"\n== {DESKTOPS[name][0]}", flush=True)
        results[name] = run(name, os.path.abspath(options.build))
    print_summary(results)
    if results.keys() == DESKTOPS.keys():
        write_document(results)
    sys.exit(any(check["outcome"] == "failed" for checks in results.values() for check in checks))


if __name__ == "__main__":
    main()
