"""On what was measured: the machine, and the versions of what takes part."""
import datetime
import os
import pathlib
import re
import subprocess

PACKAGES = [("Qt", "qtbase5-dev"), ("Plot library (QCustomPlot)", "libqcustomplot-dev"),
            ("Google Benchmark", "libbenchmark-dev"), ("Qwt", "libqwt-qt5-dev"), ("Qt Charts", "libqt5charts5-dev"),
            ("pyqtgraph", "python3-pyqtgraph"), ("Taurus", "python3-taurus"), ("Broker (mosquitto)", "mosquitto")]


def first_line(*command):
    try:
        done = subprocess.run(command, capture_output=True, encoding="utf-8", check=False)
    except OSError:
        return ""
    return done.stdout.strip().split("\n")[0] if done.returncode == 0 else ""


def found(file, pattern):
    match = re.search(pattern, pathlib.Path(file).read_text(encoding="utf-8"), re.MULTILINE)
    return match.group(1).strip() if match else "unknown"


def describe():
    """Pairs of what it is and what it is here."""
    memory = int(found("/proc/meminfo", r"^MemTotal: *(\d+) kB"))
    rows = [("Date", datetime.datetime.now(datetime.timezone.utc).strftime("%Y-%m-%d %H:%M UTC")),
            ("Processor", found("/proc/cpuinfo", r"^model name\s*: (.*)$")),
            ("Cores", str(os.cpu_count())),
            ("Memory", f"{memory / 1024 ** 2:.1f} GiB"),
            ("Kernel", os.uname().release.split("-")[0]),
            ("Load when written", " ".join(f"{load:.2f}" for load in os.getloadavg())),
            ("Compiler", first_line("c++", "--version") or "absent")]
    return rows + [(name, first_line("dpkg-query", "-W", "-f=${Version}", package) or "absent")
                   for name, package in PACKAGES]
