"""Runs a program where another file stands in the place of the shell; nobody else sees it."""
import os
import shutil
import subprocess

ZSH, SH = "/bin/zsh", "/bin/sh"


def instead(replacements):
    """Words before a command that give it a mount namespace with {path: file that is there instead}."""
    if not replacements:
        return []
    own = [] if os.geteuid() == 0 else ["--map-current-user", "--keep-caps"]
    steps = 'while [ "$1" != -- ]; do mount --bind "$2" "$1" || exit; shift 2; done; shift; exec "$@"'
    pairs = [word for path, file in replacements.items() for word in (path, file)]
    return ["unshare", "--mount", *own, "sh", "-c", steps, "sh", *pairs, "--"]


def why_not(replacements):
    """Why instead() does not work here; nothing if it does."""
    if not shutil.which("unshare"):
        return "unshare is not installed"
    tried = subprocess.run([*instead(replacements), "true"], capture_output=True, text=True)
    if tried.returncode == 0:
        return None
    said = tried.stderr.strip().splitlines() or [f"unshare ended with {tried.returncode}"]
    return f"no private mount namespace here ({said[0]})"
