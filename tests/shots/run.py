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
LIMIT_SECONDS = 600


def take(build, folder, look, scale, has_xtest):
    screen = f"{1280 * scale}x{800 * scale}"
    server = () if has_xtest else ("--without-extension", "XTEST")
    mode = () if has_xtest else ("--without-xtest",)
    run = subprocess.Popen((PRIVATE_DESKTOP, "--screen", screen, *server, "--", "/usr/bin/python3", "-B",
                            f"{HERE}/take.py", look, str(scale), folder, *mode),
                           env=os.environ | {"TAVRIN": f"{build}/Tavrin", "TAVRIN_BUILD": build},
                           stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    try:
        taken, errors = run.communicate(timeout=LIMIT_SECONDS)
    except subprocess.TimeoutExpired:
        run.terminate()
        taken, errors = run.communicate()
        errors += f"{look}, {scale}00 %: not done within {LIMIT_SECONDS} s"
    return taken.split(), errors.strip(), run.returncode


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
    taken = sorted(name for names, _, _ in runs for name in names)
    print(*taken, sep="\n")
    print(f"{len(taken)} pictures in {folder}, {time.monotonic() - started:.0f} s")
    failed = [f"{errors} (code {code})" for _, errors, code in runs if code]
    print(*failed, sep="\n", file=sys.stderr)
    sys.exit(bool(failed))


if __name__ == "__main__":
    main()
