#!/usr/bin/python3
"""Stores what panels publish: from an MQTT broker into PostgreSQL; see docs/scaling.md.

A message of QoS 1 is acknowledged only when the database has it. Until then it waits here, and behind
the first 30,000 at the broker; what comes twice after a break of the connection is stored twice.
"""
import argparse
import collections
import itertools
import math
import os
import re
import signal
import sys
import threading
import time

import paho.mqtt.client as mqtt
from paho.mqtt.packettypes import PacketTypes
import psycopg2
from psycopg2.extras import execute_values

WAITING = 30000  # Messages that may wait here. mosquitto sends as many as its max_inflight_messages.
BATCH = 5000     # Rows of one transaction.
Message = collections.namedtuple("Message", "id row")  # id: to acknowledge it by; 0: nothing to be.


def report(text):
    print(text, file=sys.stderr, flush=True)


def row(message, now):
    """Time, topic, number or None, text or None: what PostgreSQL takes whatever the message is."""
    text = message.payload.decode("utf-8", "replace").replace("\0", "\ufffd")
    number = {"true": 1.0, "false": 0.0}.get(text)
    if number is None and re.fullmatch(r"[-+]?[0-9.]+([eE][-+]?[0-9]+)?", text):
        try:
            number = float(text)
        except ValueError:
            pass
    if number is not None and math.isfinite(number):
        return now, message.topic[:500], number, None
    return now, message.topic[:500], None, text


class Inbox(mqtt.Client):
    """What has come from the broker and is not in the database yet."""

    def __init__(self, arguments):
        super().__init__(arguments.client_id, protocol=mqtt.MQTTv5)
        self.waiting = collections.deque()
        self.lock = threading.Lock()
        self.lost = 0
        self.topics = arguments.topic
        if arguments.user:
            with open(arguments.password_file, encoding="utf-8") as file:
                self.username_pw_set(arguments.user, file.readline().rstrip("\n"))
        if arguments.ca:
            self.tls_set(arguments.ca)
        self.reconnect_delay_set(1, 10)
        session = mqtt.Properties(PacketTypes.CONNECT)
        session.SessionExpiryInterval = 7 * 24 * 3600  # The broker keeps messages for so long, s.
        session.ReceiveMaximum = WAITING
        self.connect_async(arguments.broker, arguments.port, clean_start=False, properties=session)
        self.loop_start()

    def on_connect(self, _client, _data, flags, code, _properties):
        report(f"broker: {code}")
        with self.lock:  # The broker sends again what was not acknowledged, or knows nothing of it.
            kept = ([message for message in self.waiting if not message.id] if flags["session present"]
                    else [Message(0, message.row) for message in self.waiting])
            self.waiting = collections.deque(kept)
        # What the broker has retained is older than now: it is not stored.
        options = mqtt.SubscribeOptions(1, retainHandling=mqtt.SubscribeOptions.RETAIN_DO_NOT_SEND)
        self.subscribe([(topic, options) for topic in self.topics])

    def on_subscribe(self, _client, _data, _id, codes, _properties):
        for topic, code in zip(self.topics, codes):
            report(f"topic {topic}: {code}")

    def on_disconnect(self, _client, _data, code, _properties=None):
        report(f"broker: disconnected, {code}")

    def on_message(self, _client, _data, message):
        with self.lock:
            if message.qos or len(self.waiting) < WAITING:
                self.waiting.append(Message(message.mid, row(message, time.time())))
            else:
                self.lost += 1

    def _send_puback(self, mid):
        """paho 1.6 would acknowledge on arrival. Later ones have manual_ack for this."""
        return mqtt.MQTT_ERR_SUCCESS

    def next(self):
        with self.lock:
            return list(itertools.islice(self.waiting, BATCH))

    def stored(self, batch):
        with self.lock:
            for message in batch:
                if self.waiting and self.waiting[0] is message:  # Not after a new connection.
                    self.waiting.popleft()
                    if message.id:
                        super()._send_puback(message.id)


def end_at_once(failure):
    """Whoever started this starts it again; half of it would look alive."""
    threading.__excepthook__(failure)
    os._exit(1)


def store(inbox, address, end):
    """A transaction five times a second, or at once while more waits; one more after `end` is set."""
    database, said = None, ""
    while True:
        is_last = end.is_set()
        batch = inbox.next()
        try:
            if batch and not database:
                database = psycopg2.connect(address, connect_timeout=5, tcp_user_timeout=10000,
                                            client_encoding="utf8")
                report(f"database: reached; {len(inbox.waiting)} wait, {inbox.lost} of QoS 0 were lost")
            if batch:
                with database, database.cursor() as cursor:
                    execute_values(
                        cursor, "INSERT INTO reading (time, topic, number, text) VALUES %s",
                        [message.row for message in batch], "(to_timestamp(%s), %s, %s, %s)", BATCH)
                inbox.stored(batch)
                said = ""
        except psycopg2.Error as error:
            if str(error) != said:  # Not again and again.
                report(f"database: {str(error).strip()}")
            database, said = None, str(error)
            end.wait(1)
        if is_last:
            return
        if len(batch) < BATCH:
            end.wait(0.2)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--broker", default="localhost")
    parser.add_argument("--port", type=int, default=1883)
    parser.add_argument("--user")
    parser.add_argument("--password-file", help="its first line is the password")
    parser.add_argument("--ca", help="certificates to check the broker's with; encrypts")
    parser.add_argument("--client-id", default="store", help="the broker keeps messages for it")
    parser.add_argument("--database", default="", help="as psql takes it, such as 'dbname=plant'")
    parser.add_argument("topic", nargs="*", default=["plant/#"])
    arguments = parser.parse_args()
    threading.excepthook = end_at_once
    end = threading.Event()
    for number in (signal.SIGINT, signal.SIGTERM):
        signal.signal(number, lambda *_: end.set())
    inbox = Inbox(arguments)
    store(inbox, arguments.database, end)
    inbox.disconnect()
    inbox.loop_stop()


if __name__ == "__main__":
    main()
