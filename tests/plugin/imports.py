#!/usr/bin/python3
"""Says whether the plugin asks its host's library for nothing but what the list holds. Exit status 1 when it does."""

import subprocess
import sys
from pathlib import Path

# What comes with a class, however the compiler makes use of it.
OF_A_CLASS = ("typeinfo for ", "vtable for ", "typeinfo name for ")


def symbols(library, which):
    command = ["nm", "-D", which, "--demangle", "--format=posix", library]
    lines = subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()
    names = {line.rsplit(" ", 3)[0] if which == "--defined-only" else line.rsplit(" U", 1)[0] for line in lines}
    return {name for name in names if not name.startswith(OF_A_CLASS) and "::~" not in name}


def main():
    plugin, library, listed = sys.argv[1:]
    told = {line for line in Path(listed).read_text(encoding="utf-8").splitlines() if line and line[0] != "#"}
    asked = symbols(plugin, "--undefined-only") & symbols(library, "--defined-only")
    for name in sorted(asked - told):
        print(f"asked for, not in the list: {name}")
    for name in sorted(told - asked):
        print(f"in the list, not asked for: {name}")
    print(f"the plugin asks its host for {len(asked)} operations")
    return 0 if asked == told else 1


if __name__ == "__main__":
    sys.exit(main())
