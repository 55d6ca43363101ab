#!/usr/bin/python3
"""Runs benchmarks of the release build and writes docs/performance.md: measure.py [--quick] [NAME...].

Each result stays in build/bench, so that a run of some programs keeps what the others have measured. A name may be
without its "bench_". With --quick each benchmark takes little time, and those of large panels and curves are left out.
"""
import argparse
import os
import pathlib
import subprocess
import sys

import machine
import performance
import results

PROJECT = pathlib.Path(__file__).resolve().parents[1]
PROGRAMS = PROJECT / "build/release/benchmarks"
RESULTS = PROJECT / "build/bench"
QUICK = ["--benchmark_min_time=0.01", "--benchmark_context=quick=true",
         "--benchmark_filter=-/(1000000|600000|100000|10000|5000)(/|$)"]
LONGEST = 3600  # s


def programs():
    """The command of each, by its name."""
    built = {file.name: [str(file)] for file in sorted(PROGRAMS.glob("bench_*")) if file.is_file()}
    return {**built, "bench_pyqtgraph": [sys.executable, str(PROJECT / "benchmarks/bench_pyqtgraph.py")]}


def chosen(all_programs, names):
    """The commands of those that are named; all when none is."""
    wanted = ["bench_" + name.removeprefix("bench_") for name in names] or list(all_programs)
    unknown = [name for name in wanted if name not in all_programs]
    if unknown:
        sys.exit(f"There is no {', '.join(unknown)}. There are: {', '.join(all_programs)}")
    return {name: all_programs[name] for name in wanted}


def run(name, command, options):
    """Whether it succeeded; what it has measured takes the place of what it had."""
    print(f"--- {name}", flush=True)
    RESULTS.mkdir(parents=True, exist_ok=True)
    fresh = RESULTS / f"{name}.unfinished"
    environment = {"QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8", **os.environ}
    try:
        done = subprocess.run([*command, f"--benchmark_out={fresh}", "--benchmark_out_format=json", *options],
                              cwd=PROJECT, env=environment, check=False, timeout=LONGEST)
    except subprocess.TimeoutExpired:
        return False
    if done.returncode == 0 and fresh.exists() and fresh.stat().st_size:
        fresh.replace(RESULTS / f"{name}.json")
        return True
    return done.returncode == 0  # Nothing to measure here.


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--document", type=pathlib.Path, default=PROJECT / "docs/performance.md")
    parser.add_argument("names", nargs="*", metavar="NAME")
    options = parser.parse_args()
    failed = [name for name, command in chosen(programs(), options.names).items()
              if not run(name, command, QUICK if options.quick else [])]
    performance.write(results.read_folder(RESULTS), machine.describe(), options.document)
    print(f"Written: {options.document}")
    if failed:
        sys.exit(f"These have failed, and what they had measured before stands: {', '.join(failed)}")


if __name__ == "__main__":
    main()
