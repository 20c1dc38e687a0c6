"""Tavrin's main job on a private desktop: a press through the X server runs a shortcut's script.

Prints what ran and leaves a picture of the desktop under build/.
"""
import os
import shutil
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
LOG = f"{os.environ['XDG_RUNTIME_DIR']}/tavrin-nhat-ky.txt"
PICTURE = f"{ROOT}/build/tavrin.png"


def wait_for(condition, what):
    limit = time.monotonic() + 15
    while not condition():
        if time.monotonic() > limit:
            sys.exit(f"{what} did not happen within 15 s")
        time.sleep(0.02)


def shown():
    return subprocess.run(("xdotool", "search", "--onlyvisible", "--name", "^Tavrin - "), capture_output=True).stdout


def main():
    folder = f"{os.environ['XDG_DATA_HOME']}/Tavrin"
    os.makedirs(folder)
    shutil.copy(f"{ROOT}/examples/shortcuts.json", f"{folder}/shortcuts.json")
    program = subprocess.Popen((f"{ROOT}/build/Tavrin",))
    try:
        wait_for(shown, "the window")
        print("Pressing Control+Shift+Super+L, bound to the script “Ghi nhật ký” …", flush=True)
        # Control and Super: ⌃ and ⌘ of the list; the position of L.
        subprocess.run(("xdotool", "key", "ctrl+shift+super+l"), check=True)
        wait_for(lambda: os.path.exists(LOG), "the script")
        with open(LOG) as log:
            print("The script wrote:", log.read().strip())
        time.sleep(0.3)  # the picture is for people; nothing depends on it
        subprocess.run(("import", "-window", "root", PICTURE), check=True)
        print("A picture of the desktop:", os.path.relpath(PICTURE))
    finally:
        program.terminate()
        program.wait()


if __name__ == "__main__":
    main()
