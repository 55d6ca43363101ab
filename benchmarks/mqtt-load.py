#!/usr/bin/python3
"""Measures what a panel with 200 readouts costs that shows 10,000 values a second from a broker.

Called as: benchmarks/mqtt-load.py [BUILD-FOLDER]. It starts a broker on loopback and norvo-panel
off-screen, publishes 50 values a second on each of 200 topics, and prints the processor time that the
panel takes within 10 s.
"""
import os
import socket
import struct
import subprocess
import sys
import tempfile
import time

COUNT, RATE, SECONDS, WARM_UP = 200, 10000, 10, 5
build = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else "build/release")


def panel_text(port):
    lines = ["devices:", "  broker:", "    device: mqtt",
             f'    params: {{broker: "mqtt://127.0.0.1:{port}"}}', "    outputs:"]
    lines += [f"      v{i}: bench/{i}" for i in range(COUNT)]
    lines += [f"  r{i}: {{device: output_digital, params: {{widget: {{row: {i // 20}, column: {i % 20}}}}}}}"
              for i in range(COUNT)]
    lines += ["connections:"] + [f"  - broker.v{i}(double) -> r{i}.input(double)" for i in range(COUNT)]
    return "\n".join(lines) + "\n"


def packet(kind, body):
    assert len(body) < 128
    return bytes([kind, len(body)]) + body


def connect(port):
    for _ in range(100):
        try:
            line = socket.create_connection(("127.0.0.1", port))
            break
        except ConnectionRefusedError:
            time.sleep(0.05)
    line.sendall(packet(0x10, b"\0\4MQTT\4\2\0\0\0\0"))
    line.recv(4)
    return line


def publish(line, until):
    """Every millisecond what is due."""
    begin, sent = time.monotonic(), 0
    while time.monotonic() < until:
        due = int((time.monotonic() - begin) * RATE)
        batch = b""
        for number in range(sent, due):
            topic = b"bench/%d" % (number % COUNT)
            batch += packet(0x30, struct.pack(">H", len(topic)) + topic + b"%.2f" % (number / 100))
        line.sendall(batch)
        sent = due
        time.sleep(0.001)
    return sent


def processor_seconds(pid):
    with open(f"/proc/{pid}/stat") as file:
        fields = file.read().rsplit(") ", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


with tempfile.TemporaryDirectory() as folder:
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        port = probe.getsockname()[1]
    with open(folder + "/broker.conf", "w") as file:
        file.write(f"listener {port} 127.0.0.1\nallow_anonymous true\nlog_dest none\n")
    with open(folder + "/panel.yaml", "w") as file:
        file.write(panel_text(port))
    broker = subprocess.Popen(["/usr/sbin/mosquitto", "-c", folder + "/broker.conf"])
    panel = subprocess.Popen([build + "/bin/norvo-panel", "--no-state", folder + "/panel.yaml"],
                             env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
    try:
        line = connect(port)
        publish(line, time.monotonic() + WARM_UP)
        before, begin = processor_seconds(panel.pid), time.monotonic()
        sent = publish(line, begin + SECONDS)
        took, passed = processor_seconds(panel.pid) - before, time.monotonic() - begin
        print(f"{sent / passed:.0f} values a second on {COUNT} readouts: "
              f"{100 * took / passed:.1f} % of a core")
    finally:
        panel.terminate()
        panel.wait()
        broker.terminate()
        broker.wait()
