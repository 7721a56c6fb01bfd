#!/usr/bin/python3
"""Sells through a rack of services while machines, registers and the database break, stand still and come back, and compares
registers, journal and clients at the end."""

import os
import sys
from pathlib import Path

sys.dont_write_bytecode = True
ROOT = Path(__file__).resolve().parents[2]
sys.path[1:1] = [str(ROOT / "campaign" / "service"), str(ROOT / "tests" / "server")]
# pylint: disable=wrong-import-position
import batches  # noqa: E402
from rackbatch import RackBatch  # noqa: E402
from rackreport import ROWS  # noqa: E402


def main():
    if os.geteuid() != 0:
        sys.exit("services get machines of their own, for which this has to be root")
    parser = batches.options(__doc__, "rack", jobs=1)
    parser.add_argument("--lease", type=int, default=3, metavar="S", help="seconds (3), more on a machine that has much to do")
    parser.add_argument("--no-takeover", dest="takeover", action="store_false",
                        help="each register stands in the configuration of one service alone")
    parser.add_argument("--believe-fenced", action="store_true",
                        help="say that a new connection ends the former one of registers where it does not: the run has to fail")
    return batches.run(parser.parse_args(), ROWS, RackBatch)


if __name__ == "__main__":
    sys.exit(main())
