"""Plays a small robot for panel.yaml. A real one would drive its motors and read its sensors here.

Writes lines such as "speed 0.35" (m/s), "heading 270" (degrees) and "battery 81" (percent), ten of each in a
second. Reads the words "forward", "back", "left" and "right"; each drives for a second.
"""
import os
import queue
import sys
import threading
import time

PERIOD = 0.1  # s
PUSH = 1.0  # s that one word drives
SPEED = 0.5  # m/s at most
TURN = 60.0  # degrees/s

speed, heading, battery = 0.0, 0.0, 100.0
wanted, turning, until = 0.0, 0.0, 0.0


def obey(word):
    global wanted, turning, until
    wanted = {"forward": SPEED, "back": -SPEED}.get(word, 0.0)
    turning = {"left": -TURN, "right": TURN}.get(word, 0.0)
    until = time.monotonic() + PUSH


def listen():
    for line in sys.stdin:
        commands.put(line.strip())
    os._exit(0)  # The panel has closed.


commands = queue.Queue()
threading.Thread(target=listen, daemon=True).start()
while True:
    time.sleep(PERIOD)
    while not commands.empty():
        obey(commands.get())
    if time.monotonic() > until:
        wanted, turning = 0.0, 0.0
    speed += 0.3 * (wanted - speed)
    heading = (heading + turning * PERIOD) % 360
    battery = max(0.0, battery - PERIOD * (0.02 + abs(speed) + abs(turning) / TURN) / 5)
    print(f"speed {speed:.2f}\nheading {heading:.0f}\nbattery {battery:.1f}", flush=True)
