#!/usr/bin/python3
"""Measures what a panel of everything holds of memory, threads and files over time.

Called as: benchmarks/soak.py [--minutes N] [--rate X] [--speed X] [--panel PROGRAM] [--csv FILE] [--document FILE]
[--keep FOLDER] [--display :N]

Runs norvo-panel on a screen of its own (Xvfb) on the gallery with all types, sources on loopback, a history, alarms
and two viewers, one of which does not read. A hand opens the tools of a graph again and again, stops it, drags it
back to what only the history still has, saves that, and goes live. Writes a CSV, prints what each minute had, and
whether the memory was flat in the second half; the exit status is 1 if it was not, or if the hand or the viewer
missed. With `--speed` the panel and its children live by a clock that runs so many times as fast, and minutes and
rates are by that clock; what the panel speaks to, and the hand, are as quick as ever. `--keep` leaves the panel's folder there, with the screen as Xvfb_screen0: docs/screen.py makes a picture of it.
"""
import argparse
import contextlib
import csv
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import threading
import time

import soak_panel
import soak_report
import soak_servers

SAMPLED_EVERY = 5  # s
WARM_UP = 60       # s of our own clock, as the one above, before the hand works and samples are taken: the history must reach further back than a window
FLAT_BELOW = 100   # KiB a minute of our own clock
FIELDS = {"VmRSS": "rss", "RssAnon": "anonymous", "Threads": "threads"}
COLUMNS = ["seconds", "rss", "anonymous", "threads", "files", "sockets"]


class Viewer:
    """Looks at the served panel and counts what it is shown."""

    def __init__(self, port):
        self.frames = 0
        self.line = soak_servers.open_view(port)
        self.thread = threading.Thread(target=self.look, daemon=True)
        self.thread.start()

    def look(self):
        with contextlib.suppress(OSError):
            while True:
                self.line.read()
                self.frames += 1


def opened(pid):
    """What each file descriptor stands for; one may have gone meanwhile."""
    for number in os.listdir(f"/proc/{pid}/fd"):
        with contextlib.suppress(FileNotFoundError):
            yield os.readlink(f"/proc/{pid}/fd/{number}")


def sample(pid, seconds):
    files = list(opened(pid))
    values = {"seconds": round(seconds), "files": len(files),
              "sockets": sum(file.startswith("socket:") for file in files)}
    for line in pathlib.Path(f"/proc/{pid}/status").read_text().splitlines():
        name, _, value = line.partition(":")
        if name in FIELDS:
            values[FIELDS[name]] = int(value.split()[0])
    return values


def slope(samples, column):
    """By least squares, per minute."""
    times = [one["seconds"] / 60 for one in samples]
    values = [one[column] for one in samples]
    time_mean, mean = sum(times) / len(times), sum(values) / len(values)
    spread = sum((at - time_mean) ** 2 for at in times)
    return sum((at - time_mean) * (value - mean) for at, value in zip(times, values)) / spread


def grew(samples, column):
    """Whether there is more all the time at the end than there ever was before."""
    quarter = len(samples) // 4
    return min(one[column] for one in samples[-quarter:]) > max(one[column] for one in samples[:-quarter])


def judge(samples, hand, viewer, bound):
    """What is to be said, in lines, and whether all is well."""
    half = samples[len(samples) // 2:]
    slopes = {name: slope(half, name) for name in ("rss", "anonymous")}
    faults = [f"{name} grow" for name in ("threads", "files", "sockets") if grew(half, name)]
    if slopes["anonymous"] >= bound:
        faults.append("the memory grows")
    if hand.missed():
        faults.append("the hand missed")
    if viewer.frames == 0:
        faults.append("the viewer saw nothing")
    lines = [f"second half, by least squares: RssAnon {slopes['anonymous']:+.3g} KiB a minute (bound {bound:.3g}), "
             f"VmRSS {slopes['rss']:+.3g}",
             f"the hand: {hand.rounds} rounds, {hand.tables} tables from before the window; "
             f"the viewer: {viewer.frames} frames",
             "flat" if not faults else "NOT WELL: " + "; ".join(faults)]
    return lines, not faults


@contextlib.contextmanager
def child(*command, **options):
    process = soak_servers.start(*command, **options)
    try:
        yield process
    finally:
        soak_servers.stop(process)


@contextlib.contextmanager
def screen(folder, display):
    """The name of the display. Without a given one the server chooses a free one."""
    reader, writer = os.pipe()
    named = [display] if display else []
    with child("Xvfb", *named, "-displayfd", str(writer), "-screen", "0", "%dx%dx24" % soak_panel.SCREEN,
               "-nolisten", "tcp", "-fbdir", str(folder), pass_fds=[writer]):
        os.close(writer)
        with open(reader, encoding="ascii") as answer:
            number = answer.readline().strip()
        if not number:
            sys.exit("Xvfb does not start")
        yield ":" + number


def prepare(folder, servers, options):
    gallery = soak_panel.PROJECT / "examples/gallery"
    for file in gallery.iterdir():
        if file.is_file():
            shutil.copy(file, folder)
    (folder / "panel.yaml").write_text(soak_panel.panel_text(servers, options.rate, options.speed))
    (folder / "panel.alarms.jsonl").write_text("".join(soak_panel.alarm_history()))
    if subprocess.run([options.panel, "--check", "panel.yaml"], cwd=folder, check=False).returncode:
        sys.exit("the panel has errors")


def watch(panel, options, table):
    """The samples, which it writes as they come."""
    begin, samples, seconds = time.monotonic(), [], 0
    writer = csv.DictWriter(table, COLUMNS)
    writer.writeheader()
    while seconds < options.minutes * 60:
        time.sleep(SAMPLED_EVERY)
        if panel.poll() is not None:
            sys.exit(f"the panel ended with {panel.returncode}")
        seconds = (time.monotonic() - begin) * options.speed
        samples.append(sample(panel.pid, seconds))
        writer.writerow(samples[-1])
        table.flush()
    return samples


def soak(folder, options):
    with contextlib.ExitStack() as running:
        servers = running.enter_context(soak_servers.Servers(folder, options.rate * options.speed))
        prepare(folder, servers, options)
        display = running.enter_context(screen(folder, options.display))
        servers.wait_for_broker()
        port = soak_servers.free_port()
        clock = soak_panel.Clock(options.speed)
        panel = running.enter_context(child(
            options.panel, "--fullscreen", "--serve", str(port), "panel.yaml", cwd=folder,
            env={**os.environ, **clock.environment, "DISPLAY": display, "QT_QPA_PLATFORM": "xcb",
                 "LC_ALL": "C.UTF-8"}))
        time.sleep(WARM_UP)
        viewer = Viewer(port)
        idle = soak_servers.open_view(port, buffer_size=4096)  # Which nobody reads.
        table = running.enter_context(open(options.csv, "w", newline="", encoding="utf-8"))
        with soak_panel.Hand(folder, display, clock) as hand:
            samples = watch(panel, options, table)
        idle.line.close()
    lines, is_well = judge(samples, hand, viewer, FLAT_BELOW / options.speed)
    print("\n".join(soak_report.minutes(samples, options.speed) + lines))
    if options.document:
        soak_report.write(samples, lines, options, pathlib.Path(options.document))
    return is_well


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--minutes", type=float, default=10)
    parser.add_argument("--rate", type=float, default=20, help="values a second of each source")
    parser.add_argument("--speed", type=float, default=1, help="of the panel's clock")
    parser.add_argument("--panel", default=soak_panel.PROJECT / "build/release/bin/norvo-panel")
    parser.add_argument("--csv", default=os.devnull)
    parser.add_argument("--document", help="written, with a picture beside it")
    parser.add_argument("--keep")
    parser.add_argument("--display", help="such as :81; else one that is free")
    options = parser.parse_args()
    options.panel = os.path.abspath(options.panel)
    if options.minutes * 60 < 8 * SAMPLED_EVERY * options.speed:
        parser.error("too short to tell anything")
    with contextlib.ExitStack() as stack:
        folder = options.keep or stack.enter_context(tempfile.TemporaryDirectory())
        os.makedirs(folder, exist_ok=True)
        return 0 if soak(pathlib.Path(folder).resolve(), options) else 1


if __name__ == "__main__":
    sys.exit(main())
