"""Plays a plant of six tanks for panel.yaml: a Modbus TCP server on this machine, as a controller has one.

A 1 in one of the coils 0 to 5 switches the pump of a tank on or off; discrete inputs 0 to 5 say which run. Input
registers hold ten times the value: 0 to 5 the levels in percent; 10 to 25 four temperatures, pressures, flows and
powers, signed. An argument is another port than 15020.
"""
import math
import os
import random
import socketserver
import struct
import sys
import threading
import time

PORT = int(sys.argv[1]) if len(sys.argv) > 1 else 15020
PERIOD = 0.1  # s
INFLOW = (1.1, 0.9, 1.3, 0.7, 1.0, 1.2)  # %/s
PUMP = 4.0  # %/s
OFFSETS = (40, 50, 60, 70)

levels, pumps = [20.0, 35.0, 50.0, 65.0, 40.0, 75.0], [False] * 6
measured = [0.0] * 16


def run():
    start = time.monotonic()
    while True:
        time.sleep(PERIOD)
        for n in range(6):
            levels[n] = min(100.0, max(0.0, levels[n] + PERIOD * (INFLOW[n] - PUMP * pumps[n])))
        for n in range(16):
            wave = math.sin((time.monotonic() - start) * 2 * math.pi / (12 + 3 * n))
            measured[n] = OFFSETS[n % 4] + 8 * wave + random.gauss(0, 0.5)


def registers():
    return [round(10 * value) for value in levels + [0.0] * 4 + measured]


def answer(function, data):
    """The data of the answer, or the number of an exception."""
    address, value = struct.unpack(">HH", data[:4])
    if function in (1, 2):
        bits = (pumps if function == 2 else [False] * len(pumps))[address : address + value]
        return bytes([1, sum(on << n for n, on in enumerate(bits))]) if bits and len(bits) == value else 2
    if function == 4:
        words = registers()[address : address + value]
        return bytes([2 * value]) + struct.pack(f">{value}h", *words) if words and len(words) == value else 2
    if function == 5:
        if address >= len(pumps):
            return 2
        pumps[address] ^= value == 0xFF00
        return data
    return 1


class Connection(socketserver.StreamRequestHandler):
    def handle(self):
        while len(head := self.rfile.read(8)) == 8:
            transaction, _, length, unit, function = struct.unpack(">HHHBB", head)
            result = answer(function, self.rfile.read(length - 2))
            pdu = bytes([function | 0x80, result]) if isinstance(result, int) else bytes([function]) + result
            self.wfile.write(struct.pack(">HHHB", transaction, 0, len(pdu) + 1, unit) + pdu)


class Server(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True


def end_with_the_panel():
    sys.stdin.read()
    os._exit(0)


if __name__ == "__main__":
    with Server(("127.0.0.1", PORT), Connection) as server:
        threading.Thread(target=run, daemon=True).start()
        threading.Thread(target=end_with_the_panel, daemon=True).start()
        server.serve_forever()
