#!/usr/bin/python3
"""Sells through frserver while all that can break does, and compares registers, journal and clients at the end."""

import argparse
import json
import shutil
import signal
import sys
import tempfile
import time
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).parent))
# pylint: disable=wrong-import-position
from batch import Batch  # noqa: E402
from plan import batch_seeds  # noqa: E402
from report import table, total  # noqa: E402

MOST_SILENCES = 200


def options():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--service", type=int, default=20000, metavar="N", help="documents (20000)")
    parser.add_argument("--seed", default="1", help="of documents, clients and faults (1)")
    parser.add_argument("--batch", type=int, default=2000, metavar="N",
                        help="documents that one start of service and registers gets (2000)")
    parser.add_argument("--only", metavar="SEED", help="that batch alone, such as 1.7, which went wrong")
    parser.add_argument("--silences", type=int, metavar="N",
                        help=f"lines that are silent for 15 to 75 s (1 of 100 documents, {MOST_SILENCES} at most)")
    parser.add_argument("--minutes", type=float, default=60, help="no batch begins later (60)")
    parser.add_argument("--folder", type=Path, help="where it works, and goes on when it was stopped")
    for program in ("frserver", "emulator", "plugin"):
        parser.add_argument(f"--{program}", type=Path, required=True)
    return parser.parse_args()


def run_batch(given, folder, seed, size):
    """What a batch that was finished before came to, or this one."""
    done = folder / f"{seed}.json"
    if done.exists():
        return json.loads(done.read_text(encoding="utf-8"))
    work = folder / seed
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    wanted = min(given.service // 100, MOST_SILENCES) if given.silences is None else given.silences
    figures = Batch(given, work, seed, size, wanted * size // given.service).run()
    done.write_text(json.dumps(figures, ensure_ascii=False, indent=1), encoding="utf-8")
    if not figures["violations"]:
        shutil.rmtree(work)
    return figures


def run(given, folder):
    end = time.monotonic() + 60 * given.minutes
    batches = []
    for seed, size in batch_seeds(given.seed, given.service, given.batch):
        if given.only not in (None, seed):
            continue
        if time.monotonic() >= end:
            print(f"the time is over: the same command goes on at {seed}", flush=True)
            break
        figures = run_batch(given, folder, seed, size)
        batches.append(figures)
        print(f"{seed}: {size} documents, {figures['seconds']} s, {len(figures['violations'])} violations", flush=True)
        for violation in figures["violations"]:
            print(f"  VIOLATION {violation}", flush=True)
        if figures["violations"]:
            print(f"  repeat it with --only {seed}; what was found is in {folder / seed}", flush=True)
            break
    print(table(total(batches)))
    return batches


def interrupt(*_):
    raise KeyboardInterrupt


def main():
    given = options()
    for ending in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(ending, interrupt)
    folder = given.folder or Path(tempfile.gettempdir()) / f"frspf-service-campaign-{given.seed}-{given.service}"
    folder.mkdir(parents=True, exist_ok=True)
    try:
        batches = run(given, folder)
    except KeyboardInterrupt:
        print("stopped: the same command goes on", flush=True)
        return 130
    is_whole = given.only or sum(one["documents"] for one in batches) == given.service
    is_good = is_whole and not any(one["violations"] for one in batches)
    if is_good and not given.folder:
        shutil.rmtree(folder)
    return 0 if is_good else 1


if __name__ == "__main__":
    sys.exit(main())
