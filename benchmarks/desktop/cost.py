"""What processes cost: memory, processor time and wake-ups, as the kernel counts them."""
import re
from pathlib import Path

PROC = Path("/proc")


def read(path):
    """A file's text; "" when its process is gone."""
    try:
        return path.read_text(errors="replace")
    except OSError:
        return ""


def parents():
    """The parent of every process."""
    found = {}
    for entry in PROC.iterdir():
        if entry.name.isdigit():
            stat = read(entry / "stat")
            if stat:
                found[int(entry.name)] = int(stat[stat.rindex(")") + 2:].split()[1])
    return found


def marked(mark):
    """The processes that have a text in their environment."""
    found = set()
    for entry in PROC.iterdir():
        if entry.name.isdigit():
            try:
                if mark.encode() in (entry / "environ").read_bytes().split(b"\0"):
                    found.add(int(entry.name))
            except OSError:
                pass
    return found


def family(root, mark):
    """A process, its descendants, and whatever carries its mark."""
    members, tree = {root} | marked(mark), parents()
    while True:
        more = {pid for pid, parent in tree.items() if parent in members} - members
        if not more:
            return {pid for pid in members if pid in tree}
        members |= more


def memory(pids):
    """Resident, proportional and unshared memory of processes together, in KiB."""
    total = {"Rss": 0, "Pss": 0, "Uss": 0}
    for pid in pids:
        for key, value in re.findall(r"^(\w+): +(\d+) kB$", read(PROC / str(pid) / "smaps_rollup"), re.M):
            if key in ("Rss", "Pss"):
                total[key] += int(value)
            elif key in ("Private_Clean", "Private_Dirty"):
                total["Uss"] += int(value)
    return total


class Meter:
    """Counts from now on what processes use, those they start meanwhile included while they live."""

    def __init__(self, pids):
        self.start = self._read(pids)

    @staticmethod
    def _read(pids):
        """Nanoseconds on a processor and voluntary context switches of every thread."""
        found = {}
        for pid in pids:
            for task in (PROC / str(pid) / "task").glob("*"):
                spent = read(task / "schedstat").split()
                switches = re.search(r"^voluntary_ctxt_switches:\s+(\d+)", read(task / "status"), re.M)
                if spent and switches:
                    found[task] = (int(spent[0]), int(switches[1]))
        return found

    def used(self, pids):
        """Milliseconds on a processor and voluntary context switches since the start."""
        now = self._read(pids)
        spent = sum(value[0] - self.start.get(task, (0, 0))[0] for task, value in now.items())
        switches = sum(value[1] - self.start.get(task, (0, 0))[1] for task, value in now.items())
        return spent / 1e6, switches
