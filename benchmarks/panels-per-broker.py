#!/usr/bin/python3
"""Measures how many panels a broker, store.py and PostgreSQL take.

Called as: benchmarks/panels-per-broker.py [--broker-alone] [PANELS RATE]...

Starts all three as tests/examples/scaling.py does. Each panel is a connection that publishes 20 values
with QoS 1, RATE times a second, for 10 s. Prints what came of it, and the share of a core of each.
"""
import os
import pathlib
import select
import socket
import struct
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests/examples"))
import scaling  # noqa: E402

VALUES, SECONDS = 20, 10


def packet(kind, body):
    length, rest = b"", len(body)
    while True:
        length += bytes([rest % 128 | (128 if rest > 127 else 0)])
        rest //= 128
        if not rest:
            return bytes([kind]) + length + body


class Panel:
    def __init__(self, port, number):
        self.line = socket.create_connection(("127.0.0.1", port))
        name = b"panel%d" % number
        self.line.sendall(packet(0x10, struct.pack(">6sBBHH", b"\0\4MQTT", 4, 2, 0, len(name)) + name))
        self.line.recv(4)
        self.topics = [b"plant/press%d/value%d" % (number, value) for value in range(VALUES)]
        self.acknowledged = 0

    def publish(self, turn):
        batch = b""
        for number, topic in enumerate(self.topics):
            key = (turn * VALUES + number) % 65535 + 1
            batch += packet(0x32, struct.pack(">H", len(topic)) + topic
                            + struct.pack(">H", key) + b"%.2f" % (turn + number / 100))
        self.line.sendall(batch)

    def read(self):
        self.acknowledged += len(self.line.recv(65536)) / 4


def processor_seconds(pid):
    """Of the process and its children."""
    with open(f"/proc/{pid}/stat", encoding="ascii") as file:
        fields = file.read().rsplit(") ", 1)[1].split()
    with open(f"/proc/{pid}/task/{pid}/children", encoding="ascii") as file:
        children = file.read().split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK") \
        + sum(processor_seconds(child) for child in children)


def publish(panels, rate):
    """How many values were sent. Each panel in its turn of the period; a late turn is not left out."""
    poll = select.epoll()
    by_line = {panel.line.fileno(): panel for panel in panels}
    for line in by_line:
        poll.register(line, select.EPOLLIN)
    begin, turns, all_turns = time.monotonic(), 0, int(len(panels) * rate * SECONDS)
    while turns < all_turns or sum(panel.acknowledged for panel in panels) < turns * VALUES:
        due = min(all_turns, int((time.monotonic() - begin) * rate * len(panels)))
        while turns < due:
            panels[turns % len(panels)].publish(turns // len(panels))
            turns += 1
        for line, _ in poll.poll(0.002):
            by_line[line].read()
    return turns * VALUES, time.monotonic() - begin


def measure(stand, count, rate):
    programs = {"broker": stand.broker, "PostgreSQL": stand.database}
    if stand.store:
        programs["store.py"] = stand.store
    stand.query("TRUNCATE reading")
    panels = [Panel(stand.port, number) for number in range(count)]
    before = {name: processor_seconds(program.pid) for name, program in programs.items()}
    begin = time.monotonic()
    sent, took = publish(panels, rate)
    while stand.store and stand.query("SELECT count(*) FROM reading")[0][0] < sent:
        time.sleep(0.1)
        if time.monotonic() > begin + 90:
            break
    stored_in = time.monotonic() - begin
    stored = stand.query("SELECT count(*) FROM reading")[0][0]
    shares = ", ".join(f"{name} {100 * (processor_seconds(program.pid) - before[name]) / stored_in:.0f} %"
                       for name, program in programs.items())
    print(f"{count} panels at {rate} Hz: {sent} values in {took:.1f} s, {sent / took:.0f} a second; "
          f"{stored} stored after {stored_in:.1f} s; {shares}; load {os.getloadavg()[0]:.1f}", flush=True)
    for panel in panels:
        panel.line.close()


stand = scaling.Scaling()
stand.FSYNC = "on"
options = [text for text in sys.argv[1:] if text == "--broker-alone"]
try:
    stand.setUp()
    if not options:
        stand.start_store()
    arguments = [float(text) for text in sys.argv[1 + len(options):]] or [50, 1, 500, 1, 50, 10, 100, 10]
    for count, rate in zip(arguments[::2], arguments[1::2]):
        measure(stand, int(count), rate)
finally:
    stand.doCleanups()
