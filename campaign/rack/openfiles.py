"""Which process has a connection or a line open, as Linux tells it."""

import contextlib
import os
from pathlib import Path


def connections():
    """Of this machine over TCP: the ports of both ends, by the name that the file of a process has."""
    found = {}
    for line in Path("/proc/net/tcp").read_text(encoding="ascii").splitlines()[1:]:
        words = line.split()
        found[f"socket:[{words[9]}]"] = (int(words[1].split(":")[1], 16), int(words[2].split(":")[1], 16))
    return found


def open_files(process):
    """Their names."""
    names = set()
    with contextlib.suppress(OSError):
        for one in Path(f"/proc/{process}/fd").iterdir():
            with contextlib.suppress(OSError):
                names.add(os.readlink(one))
    return names


def files_of(processes, known):
    """Files that any of them has open, and the ports that they are connected to."""
    names = set().union(*(open_files(one) for one in processes))
    return names | {known[one][1] for one in names if one in known}


def holder_of(port, processes):
    """Which of them has the connection that begins at that port of this machine."""
    wanted = {name for name, ends in connections().items() if ends[0] == port}
    return next((one for one in processes if wanted & open_files(one)), None)
