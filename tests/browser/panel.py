#!/usr/bin/python3
"""The page of the software register in a real browser, and real hosts at its line.

panel.py EMULATOR FRCTL PLUGINS SOURCES SCREENSHOTS [TEST ...]"""

import sys
import unittest
from pathlib import Path

import stage
from case import SCREENSHOTS
from looks import Guarded, Long, Looks
from work import Planned, Work

__all__ = ["Guarded", "Long", "Looks", "Planned", "Work"]


if __name__ == "__main__":
    stage.demand_browser()
    Path(SCREENSHOTS).mkdir(parents=True, exist_ok=True)
    unittest.main(argv=[sys.argv[0], *sys.argv[6:]], verbosity=2)
