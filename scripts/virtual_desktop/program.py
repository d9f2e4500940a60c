"""The program under test or on show: its settings, its process and its log."""
import plistlib
import re
from pathlib import Path

from .session import wait_until
from .status_item import StatusItem

IDENTIFIER = "app.orvane.Kelpa"


class Program:
    def __init__(self, session, executable):
        self.session, self.executable = session, Path(executable).resolve()
        self.process = None
        self.printed = session.folder / "kelpa-output"

    def settings_file(self):
        return Path(self.session.environment["XDG_CONFIG_HOME"]) / f"{IDENTIFIER}.plist"

    def write_settings(self, settings):
        """Writes the settings file anew from keys and values."""
        self.settings_file().write_bytes(plistlib.dumps(settings))

    def start(self, *arguments, environment=None):
        with open(self.printed, "ab") as output:
            self.process = self.session.spawn([str(self.executable), *arguments], environment,
                                              stdout=output, stderr=output)
        return self.process

    def item(self, seconds=10):
        """The program's status item, once it is on the bus."""
        return wait_until(lambda: StatusItem.of_process(self.session, self.process.pid), seconds, "the status item")

    # The log

    def lines(self):
        """What the program printed so far; a line that is still being written is left out."""
        if not self.printed.exists():
            return []
        return self.printed.read_text(errors="replace").split("\n")[:-1]

    def log_files(self):
        folder = Path(self.session.environment["XDG_STATE_HOME"]) / IDENTIFIER / "Library/Caches/Logs"
        return sorted(folder.glob(f"{IDENTIFIER}.*.log"))

    def count(self, pattern):
        return sum(1 for line in self.lines() if re.search(pattern, line))

    def wait_for(self, pattern, seconds, times=1):
        """Waits until lines that match have come so often in the whole run; gives the last of them."""
        expression = re.compile(pattern)

        def enough():
            found = [line for line in self.lines() if expression.search(line)]
            return found[times - 1] if len(found) >= times else None

        return wait_until(enough, seconds, f"the log line {pattern!r} ({times} times)")

    def ended(self):
        return self.process.poll() is not None
