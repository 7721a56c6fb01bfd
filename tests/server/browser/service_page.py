#!/usr/bin/python3
"""The page of the service in a real browser, with two registers of software.

service_page.py EMULATOR FRCTL PLUGINS SOURCES SCREENSHOTS FRSERVER [TEST ...]"""

import sys
import unittest
from pathlib import Path

sys.path.insert(1, str(Path(__file__).resolve().parents[2] / "browser"))
# pylint: disable=wrong-import-position
import stage  # noqa: E402
from case import SCREENSHOTS  # noqa: E402
from service_looks import Guarded, Looks  # noqa: E402
from service_work import Persons, Work  # noqa: E402

__all__ = ["Guarded", "Looks", "Persons", "Work"]


if __name__ == "__main__":
    stage.demand_browser()
    Path(SCREENSHOTS).mkdir(parents=True, exist_ok=True)
    unittest.main(argv=[sys.argv[0], *sys.argv[7:]], verbosity=2)
