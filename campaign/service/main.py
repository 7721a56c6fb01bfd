#!/usr/bin/python3
"""Sells through frserver while all that can break does, and compares registers, journal and clients at the end."""

import sys
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).parent))
# pylint: disable=wrong-import-position
import batches  # noqa: E402
from batch import ServiceBatch  # noqa: E402
from report import ROWS  # noqa: E402

MOST_SILENCES = 200


def make_batch(given, folder, seed, size):
    wanted = min(given.documents // 100, MOST_SILENCES) if given.silences is None else given.silences
    return ServiceBatch(given, folder, seed, size, wanted * size // given.documents)


def main():
    parser = batches.options(__doc__, "service")
    parser.add_argument("--silences", type=int, metavar="N",
                        help=f"lines that are silent for 15 to 75 s (1 of 100 documents, {MOST_SILENCES} at most)")
    return batches.run(parser.parse_args(), ROWS, make_batch)


if __name__ == "__main__":
    sys.exit(main())
