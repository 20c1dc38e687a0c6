"""Tavrin's main job on a private desktop: presses through the X server run a shortcut's script and put a prepared
text into a terminal.

Prints what came of it and leaves a picture of the desktop under build/.
"""
import os
import shutil
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
LOG = f"{os.environ['XDG_RUNTIME_DIR']}/tavrin-nhat-ky.txt"
TYPED = f"{os.environ['XDG_RUNTIME_DIR']}/typed.txt"
PICTURE = f"{ROOT}/build/tavrin.png"


def wait_for(condition, what):
    limit = time.monotonic() + 15
    while not condition():
        if time.monotonic() > limit:
            sys.exit(f"{what} did not happen within 15 s")
        time.sleep(0.02)


def shown():
    return subprocess.run(("xdotool", "search", "--onlyvisible", "--name", "^Tavrin - "), capture_output=True).stdout


def contents(path):
    try:
        with open(path, encoding="utf-8") as file:
            return file.read()
    except FileNotFoundError:
        return ""


def paste_into_a_terminal():
    with subprocess.Popen(("xterm", "-geometry", "60x8-16-16", "-fa", "DejaVu Sans Mono", "-fs", "11", "-T", "terminal",
                           "-e", f"cat > '{TYPED}'")) as terminal:
        try:
            subprocess.run(("xdotool", "search", "--sync", "--onlyvisible", "--name", "^terminal$", "windowactivate",
                            "--sync"), check=True, capture_output=True)
            print("Pressing Control+Alt+K in a terminal, bound to the text “Chữ ký email” …", flush=True)
            subprocess.run(("xdotool", "key", "ctrl+alt+k"), check=True)
            wait_for(lambda: "Nguyễn Văn A" in contents(TYPED), "the text")
            print("The terminal got:", " / ".join(contents(TYPED).splitlines()), flush=True)
            subprocess.run(("import", "-window", "root", PICTURE), check=True)
        finally:
            terminal.kill()


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
        paste_into_a_terminal()
        print("A picture of the desktop:", os.path.relpath(PICTURE))
    finally:
        program.terminate()
        program.wait()


if __name__ == "__main__":
    main()
