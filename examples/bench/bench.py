"""Plays a heated sample on a lab bench for panel.yaml. A real one would ask its instruments here.

Writes lines such as "temperature 21.53", 20 in a second, and "heating on" or "heating off" at the start
and at each change. Reads "set 40" and "switch heating". "log ..." says what it has done.
"""
import os
import queue
import random
import sys
import threading
import time

PERIOD = 0.05  # s from one temperature to the next
ROOM = 21.0  # °C
HEATER = 4.0  # °C/s at full power
LOSS = 0.05  # of the difference to the room, in a second

temperature, set_point, heating = ROOM, 20.0, False


def say(text):
    print(text, flush=True)


def obey(line):
    global set_point, heating
    word, _, value = line.partition(" ")
    if word == "set":
        set_point = float(value)
        say(f"log set-point {set_point:.1f} °C")
    elif word == "switch":
        heating = not heating
        say(f"heating {'on' if heating else 'off'}")
        say(f"log heating {'on' if heating else 'off'}")
    else:
        say(f"log not understood: {line}")


def listen():
    for line in sys.stdin:
        commands.put(line.strip())
    os._exit(0)  # The panel has closed.


commands = queue.Queue()
threading.Thread(target=listen, daemon=True).start()
say("heating off")
say("log bench ready")
while True:
    time.sleep(PERIOD)
    while not commands.empty():
        obey(commands.get())
    power = min(1.0, max(0.0, 0.5 * (set_point - temperature))) if heating else 0.0
    temperature += PERIOD * (HEATER * power - LOSS * (temperature - ROOM))
    say(f"temperature {temperature + random.gauss(0, 0.03):.2f}")
