#!/usr/bin/env python3
"""Plays a press: its temperature, the parts it has made, and what it does, twice a second."""
import itertools
import math
import time

for parts in itertools.count(1):
    busy = parts % 20 < 15
    print(f"temperature {60 + 8 * math.sin(parts / 20):.2f}")
    print(f"running {'yes' if busy else 'no'}")
    print(f"state {'pressing' if busy else 'changing the tool'}")
    print(f"parts {parts}", flush=True)
    time.sleep(0.5)
