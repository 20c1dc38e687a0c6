"""How much is measured in this run, and with which programs."""
import subprocess
from dataclasses import dataclass
from pathlib import Path


@dataclass
class Plan:
    build: Path
    quick: bool
    presses: int
    rounds: int
    hold_milliseconds: int
    # From the start of a program until it has done everything it does unasked: Tavrin checks for updates
    # after two seconds, and gives memory back after four.
    settle_seconds: float
    rest_seconds: float
    flood_presses: int
    starts: int
    registrations: int
    single_registrations: int
    stores: int
    texts: int
    windows: int

    @staticmethod
    def of(options):
        if options.quick:
            return Plan(options.build, True, options.presses or 4, 1, 900, 0.5, 4.5, 100, 2, 2, 1, 2, 2, 2)
        return Plan(options.build, False, options.presses or 200, 20, 1500, 2.5, 8.0, 10_000, 20, 20, 5, 10, 30, 20)

    def program(self, name):
        return str(self.build / "bench" / name)

    def run(self, name, *arguments, prefix=()):
        """The lines that one of our own programs prints."""
        command = [*prefix, self.program(name), *(str(argument) for argument in arguments)]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()

    def times(self, name, *arguments, prefix=()):
        """Its nanoseconds as milliseconds, and how often there was no answer."""
        lines = self.run(name, *arguments, prefix=prefix)
        return [int(line) / 1e6 for line in lines if line != "lost"], lines.count("lost")
