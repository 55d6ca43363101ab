"""The panel that soak.py runs, and a hand that works at it."""
import csv
import datetime
import glob
import json
import os
import pathlib
import re
import subprocess
import sys
import threading
import time

PROJECT = pathlib.Path(__file__).resolve().parents[1]
WINDOW = 20  # s of our own clock, of the graph that is driven
SCREEN = (1280, 1024)
ALARM_ENTRIES = 10000


class Clock:
    """The panel's, from now on `speed` times as fast as ours."""

    def __init__(self, speed):
        self.speed, self.begin = speed, time.time()
        self.environment = {}
        if speed != 1:
            library, = glob.glob("/usr/lib/*/faketime/libfaketimeMT.so.1")
            self.environment = {"LD_PRELOAD": library, "FAKETIME": f"+0 x{speed:g}", "NO_FAKE_STAT": "1"}

    def now(self):
        return self.begin + (time.time() - self.begin) * self.speed


def panel_text(servers, rate, speed):
    """The gallery, fed at `rate` values a second from everywhere, with a graph "recorded" of WINDOW seconds. The
    multiline is left out: it grows to 100,000 lines by rule. Times and rates are by the panel's clock."""
    text = (PROJECT / "examples/gallery/panel.yaml").read_text()
    interval = max(1, round(1000 / rate))
    poll = max(10, interval)  # The least that the device takes.
    changes = [(r"^rows: .*$", "rows: [0, 1, 0, 1, 1, 0, 0, 4]"),
               (r"interval: 100\b", f"interval: {interval}"),
               (r"^  - clock.output\(QString\) -> log.*\n", ""),
               (r"^connections:$", f"""\
  recorded:
    device: output_graph
    params:
      name: Recorded
      widget: {{row: 7, column: 0, colspan: 12, rowspan: 2, timePeriod: {round(WINDOW * speed)}}}
  modbus:
    device: modbus
    params: {{target: "tcp://127.0.0.1:{servers.modbus_port}", poll: {poll}}}
    outputs: {{first: holding 0, second: holding 1}}
  websocket:
    device: websocket
    params: {{url: "ws://127.0.0.1:{servers.websocket_port}"}}
    outputs: {{value: $.value}}
  scale: {{device: serial, params: {{port: {servers.serial_port}}}, outputs: {{weight: "([0-9.]+) kg"}}}}
  broker:
    device: mqtt
    params: {{broker: "mqtt://127.0.0.1:{servers.broker_port}"}}
    outputs: {{sent: soak/sent}}
    inputs: {{send: soak/sent}}

history:
  max: 20 MB
  signals: [wave.output(double), machine.memory, modbus.first(double), websocket.value(double), scale.weight(double)]

alarms:
  - {{signal: wave.output(double), above: 90, deadband: 2, priority: high, text: Level too high}}
  - {{signal: modbus.first(double), above: 500, priority: low, text: Register high}}

connections:
  - wave.output(double) -> recorded.input
  - modbus.first(double) -> recorded.input
  - websocket.value(double) -> level.input(double)
  - scale.weight(double) -> speed.input
  - wave.output(double) -> broker.send(double)
  - broker.sent(double) -> doubled.input(double)""")]
    for pattern, by in changes:
        text, count = re.subn(pattern, lambda _, by=by: by, text, flags=re.MULTILINE)
        if not count:
            sys.exit(f"The gallery has changed: nothing is like {pattern}")
    return text


def alarm_history():
    """As full as the panel keeps it, so that it does not grow meanwhile."""
    began = datetime.datetime.now(datetime.timezone.utc) - datetime.timedelta(days=1)
    for number in range(ALARM_ENTRIES):
        time_of_it = (began + datetime.timedelta(seconds=number)).isoformat(timespec="milliseconds")[:-6] + "Z"
        yield json.dumps({"alarm": "wave.output(double) above 90", "detail": "90.728044732", "device": "wave",
                          "event": "ended", "priority": "high", "since": time_of_it, "state": "normal",
                          "text": "Level too high", "time": time_of_it}) + "\n"


class Hand:
    """Opens the tools of the graph "recorded" and works with them, round by round, until it is stopped."""
    PERIOD = 15                # s of our own clock, of a round
    CORNER_KEY = (39, 937)     # The places of what it touches, on a screen of SCREEN.
    CURVES = (300, 850)
    KEYS = {"pause": (148, 945), "csv": (638, 945), "close": (1130, 945)}
    FURTHER_BACK = WINDOW / 2  # s before the window, that a table begins at least

    def __init__(self, folder, display, clock):
        self.folder, self.clock, self.rounds, self.tables = folder, clock, 0, 0
        self.environment = {**os.environ, "DISPLAY": display}
        self.ended = threading.Event()
        self.thread = threading.Thread(target=self.work)

    def __enter__(self):
        self.thread.start()
        return self

    def __exit__(self, *_):
        self.ended.set()
        self.thread.join()

    def missed(self):
        return self.rounds == 0 or self.tables < self.rounds

    def work(self):
        while not self.ended.wait(1):
            begin = time.monotonic()
            self.one_round()
            self.ended.wait(max(0, self.PERIOD - (time.monotonic() - begin)))

    def one_round(self):
        """A round that the end cuts short does not count."""
        known = self.saved()
        self.press(*self.CORNER_KEY)
        self.press(*self.KEYS["pause"])
        stopped = self.clock.now()
        for _ in range(3):
            self.drag(600)
            self.ended.wait(0.5)
        self.press(*self.KEYS["csv"])
        self.ended.wait(1)
        self.do("key", "Escape")  # The page that says where the table is.
        self.press(*self.KEYS["pause"])
        self.ended.wait(2)
        self.press(*self.KEYS["close"])
        if not self.ended.is_set():
            self.rounds += 1
            self.tables += sum(self.reaches_back(table, stopped) for table in self.saved() - known)

    def saved(self):
        return set(self.folder.glob("*-recorded-*.csv"))

    def reaches_back(self, table, stopped):
        """Whether it holds what was no longer in the graph, but in the history alone."""
        with open(table, newline="", encoding="utf-8") as file:
            times = [datetime.datetime.fromisoformat(row["time"]).timestamp() for row in csv.DictReader(file)]
        return bool(times) and min(times) < stopped - (WINDOW + self.FURTHER_BACK) * self.clock.speed

    def press(self, x, y):
        self.do("mousemove", x, y, "click", 1)

    def drag(self, by):
        x, y = self.CURVES
        self.do("mousemove", x, y, "mousedown", 1)
        for step in range(1, 6):
            self.do("mousemove", x + by * step // 5, y, pause=0.05)
        self.do("mouseup", 1)

    def do(self, *arguments, pause=0.3):
        subprocess.run(["xdotool", *map(str, arguments)], env=self.environment, check=True, timeout=30)
        self.ended.wait(pause)
