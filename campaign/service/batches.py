"""A long run as batches: several side by side, each of which can be repeated alone; what was stopped goes on."""

import argparse
import json
import shutil
import signal
import sys
import tempfile
import time
from pathlib import Path

from plan import batch_seeds
from programs import Program
from report import table, total


def options(description, name, documents=20000, size=2000, jobs=3):
    """The options of all such runs; name is that of the run, and of the option that has the number of its documents."""
    parser = argparse.ArgumentParser(description=description)
    parser.set_defaults(name=name)
    parser.add_argument(f"--{name}", dest="documents", type=int, default=documents, metavar="N", help=f"documents ({documents})")
    parser.add_argument("--seed", default="1", help="of documents, clients and faults (1)")
    parser.add_argument("--batch", type=int, default=size, metavar="N",
                        help=f"documents that one start of service and registers gets ({size})")
    parser.add_argument("--jobs", type=int, default=jobs, metavar="N", help=f"batches side by side ({jobs})")
    parser.add_argument("--only", metavar="SEED", help="that batch alone, such as 1.7, which went wrong")
    parser.add_argument("--from", dest="first", metavar="SEED", help="begin with that batch, such as 1.7")
    parser.add_argument("--go-on", action="store_true", help="also behind a violation")
    parser.add_argument("--minutes", type=float, default=60, help="no batch begins later (60)")
    parser.add_argument("--folder", type=Path, help="where it works, and goes on when it was stopped")
    parser.add_argument("--anew", action="store_true", help="forget what a run that was stopped has left there")
    for program in ("frserver", "emulator", "plugin"):
        parser.add_argument(f"--{program}", type=Path, required=True)
    return parser


def result(folder, seed):
    """The file of what a batch that was finished came to."""
    return folder / f"{seed}.json"


def run_batch(given, folder, seed, size, make_batch):
    result(folder, seed).unlink(missing_ok=True)
    work = folder / seed
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    figures = make_batch(given, work, seed, size).run()
    result(folder, seed).write_text(json.dumps(figures, ensure_ascii=False, indent=1), encoding="utf-8")
    if not figures["violations"]:
        shutil.rmtree(work)


def read_batch(folder, seed):
    """Tells what a batch came to."""
    if not result(folder, seed).exists():
        return not_run(folder, seed)
    figures = json.loads(result(folder, seed).read_text(encoding="utf-8"))
    violations = figures["violations"]
    speed = figures["documents"] / figures["seconds"]
    print(f"{time.strftime('%H:%M:%S')} {seed}: {figures['documents']} documents, {figures['seconds']} s, {speed:.1f} a second, "
          f"{sum(figures['faults'].values())} faults, {len(violations)} violations", flush=True)
    for violation in violations:
        print(f"  VIOLATION {violation}", flush=True)
    if violations:
        print(f"  repeat it with --only {seed}; what was found is in {folder / seed}", flush=True)
    return figures


def not_run(folder, seed):
    print(f"  VIOLATION {seed} could not be run: see {log_of(folder, seed)}", flush=True)
    return {"documents": 0, "seconds": 0, "violations": ["could not be run"]}


def log_of(folder, seed):
    return folder / f"{seed}.log"


def started(folder, seed):
    """The batch in a process of its own: the threads of one process would take turns."""
    program = Program([sys.executable, *sys.argv, "--folder", folder, "--only", seed], log_of(folder, seed))
    program.start()
    return program


def wanted(given):
    """Seed and size of each batch."""
    all_ = list(batch_seeds(given.seed, given.documents, given.batch))
    seeds = [seed for seed, _ in all_]
    for named in (given.only, given.first):
        if named and named not in seeds:
            raise SystemExit(f"no batch is called {named}")
    return all_[seeds.index(given.first):] if given.first else all_


def run_only(given, folder, make_batch):
    size = dict(wanted(given))[given.only]
    run_batch(given, folder, given.only, size, make_batch)
    return [read_batch(folder, given.only)]


def run_all(given, folder):
    """As many side by side as are wanted, none behind a violation unless that is wanted, or when the time is over."""
    end = time.monotonic() + 60 * given.minutes
    waiting = [seed for seed, _ in wanted(given)]
    batches = [read_batch(folder, seed) for seed in waiting if result(folder, seed).exists()]
    waiting = [seed for seed in waiting if not result(folder, seed).exists()]
    running = {}
    try:
        while running or waiting:
            if not given.go_on and any(one["violations"] for one in batches):
                waiting = []
            elif waiting and time.monotonic() >= end:
                print(f"the time is over: the same command goes on at {waiting[0]}", flush=True)
                waiting = []
            while waiting and len(running) < given.jobs:
                seed = waiting.pop(0)
                running[seed] = started(folder, seed)
            for seed in [one for one, program in running.items() if not program.is_alive()]:
                del running[seed]
                batches.append(read_batch(folder, seed))
            time.sleep(0.1)
    finally:
        for program in running.values():
            program.end()
    return batches


def interrupt(*_):
    raise KeyboardInterrupt


def run(given, rows, make_batch):
    """Exit status of the program. rows are those of the table at the end."""
    for ending in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(ending, interrupt)
    folder = given.folder or Path(tempfile.gettempdir()) / f"frspf-{given.name}-campaign-{given.seed}-{given.documents}"
    if given.anew and not given.only:
        shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True, exist_ok=True)
    try:
        batches = run_only(given, folder, make_batch) if given.only else run_all(given, folder)
    except KeyboardInterrupt:
        print("stopped: the same command goes on", flush=True)
        return 130
    print(table(total(batches), rows))
    is_whole = given.only or len(batches) == len(wanted(given))
    is_good = is_whole and not any(one["violations"] for one in batches)
    if is_good and not given.folder:
        shutil.rmtree(folder)
    return 0 if is_good else 1
