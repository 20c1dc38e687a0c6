#!/usr/bin/python3
"""Writes a picture of every view and state of the program to BUILD/shots: light and dark, at 100 % and 200 %. Ends
with an error, and says what it did not reach, where one is missing.

usage: run.py BUILD
"""
import concurrent.futures
import itertools
import os
import subprocess
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))
PRIVATE_DESKTOP = f"{HERE}/../support/private-desktop"
LIMIT_SECONDS = 110


def take(build, folder, look, scale, has_xtest):
    screen = f"{1280 * scale}x{800 * scale}"
    server = () if has_xtest else ("--without-extension", "XTEST")
    mode = () if has_xtest else ("--without-xtest",)
    return subprocess.run((PRIVATE_DESKTOP, "--screen", screen, *server, "--", "/usr/bin/python3", "-B",
                           f"{HERE}/take.py", look, str(scale), folder, *mode),
                          env=os.environ | {"TAVRIN": f"{build}/Tavrin", "TAVRIN_BUILD": build},
                          capture_output=True, text=True, timeout=LIMIT_SECONDS)


def main():
    build = os.path.abspath(sys.argv[1])
    folder = f"{build}/shots"
    os.makedirs(folder, exist_ok=True)
    for name in os.listdir(folder):
        os.remove(f"{folder}/{name}")
    started = time.monotonic()
    jobs = list(itertools.product((True, False), (2, 1), ("light", "dark")))
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = list(pool.map(lambda job: take(build, folder, job[2], job[1], job[0]), jobs))
    taken = sorted(name for run in runs for name in run.stdout.split())
    print(*taken, sep="\n")
    print(f"{len(taken)} pictures in {folder}, {time.monotonic() - started:.0f} s")
    for run in runs:
        if run.returncode:
            print(f"{run.stderr.strip() or run.stdout.strip()} (code {run.returncode})", file=sys.stderr)
    sys.exit(any(run.returncode for run in runs))


if __name__ == "__main__":
    main()
