#!/usr/bin/python3
"""What a panel publishes is in PostgreSQL, whatever ends in between: scaling.py NORVO-PANEL.

Runs examples/scaling: its panel, its broker, its store.py and a PostgreSQL of its own, all in a
temporary folder, on a free port and a Unix socket. All of them end with this program.
"""
import glob
import os
import pathlib
import pwd
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest

import psycopg2

EXAMPLE = pathlib.Path(__file__).resolve().parents[2] / "examples/scaling"
POSTGRES = sorted(glob.glob("/usr/lib/postgresql/*/bin"))[-1]
PATIENCE = 60  # s, for a machine that has much else to do.

# In place of the example's: as quick, but each value says which it is.
LAST = 200
PRESS = f"""
import sys, time
for parts in range(1, {LAST + 1}):
    print(f"temperature {{parts / 8}}")
    print("running", "yes" if parts % 2 else "no")
    print(f"state made {{parts}}")
    print(f"parts {{parts}}", flush=True)
    time.sleep(0.02)
sys.stdin.read()  # Until the panel has ended.
"""


def start(*command, signal_at_end="KILL", as_user=None, **options):
    """A child that does not outlive this program, however that ends."""
    user = [f"--reuid={as_user}", f"--regid={as_user}", "--clear-groups"] if as_user else []
    return subprocess.Popen(["setpriv", *user, "--pdeathsig", signal_at_end, "--", *command], **options)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def stop(process, number=signal.SIGTERM):
    process.send_signal(number)
    process.wait(PATIENCE)


class Scaling(unittest.TestCase):
    FSYNC = "off"  # Nothing here outlives the test.

    def setUp(self):
        self.folder = pathlib.Path(self.enterFolder())
        self.user = pwd.getpwnam("nobody").pw_uid if os.getuid() == 0 else None
        self.port = free_port()
        self.store = None
        self.log = open(self.folder / "log", "w+", encoding="utf-8")
        self.addCleanup(self.log.close)
        self.make_database()
        self.start_database()
        self.query((EXAMPLE / "schema.sql").read_text())
        self.start_broker()

    def wait_until(self, condition, what):
        end = time.monotonic() + PATIENCE
        while not condition():
            if time.monotonic() > end:
                self.fail(f"not within {PATIENCE} s: {what}; the log says:\n{self.logged()}")
            time.sleep(0.05)

    def enterFolder(self):
        folder = tempfile.mkdtemp(prefix="norvo-scaling-")
        self.addCleanup(shutil.rmtree, folder)
        os.chmod(folder, 0o711)  # The database's user has to pass.
        return folder

    def run_child(self, *command, **options):
        child = start(*command, stdout=self.log, stderr=self.log, cwd=self.folder, **options)
        self.addCleanup(child.wait)
        self.addCleanup(child.kill if options.get("signal_at_end", "KILL") == "KILL"
                        else lambda: child.send_signal(signal.SIGQUIT))
        return child

    def make_database(self):
        data = self.folder / "database"
        data.mkdir(mode=0o700)
        if self.user is not None:
            os.chown(data, self.user, self.user)
        child = self.run_child(f"{POSTGRES}/initdb", "-D", str(data), "-U", "store", "-A", "trust",
                               "-E", "UTF8", "--locale=C", "--no-sync", as_user=self.user)
        self.assertEqual(child.wait(), 0, self.logged())

    def start_database(self):
        data = self.folder / "database"
        self.database = self.run_child(
            f"{POSTGRES}/postgres", "-D", str(data), "-k", str(data), "-c", "listen_addresses=",
            "-c", f"fsync={self.FSYNC}", as_user=self.user, signal_at_end="QUIT")
        self.address = f"host={data} user=store dbname=postgres"
        self.wait_until(self.is_database_up, "the database starts")

    def is_database_up(self):
        try:
            self.query("SELECT 1")
            return True
        except psycopg2.OperationalError:
            return False

    def query(self, text):
        connection = psycopg2.connect(self.address)
        try:
            with connection, connection.cursor() as cursor:
                cursor.execute(text)
                return cursor.fetchall() if cursor.description else []
        finally:
            connection.close()

    def start_broker(self):
        settings = (EXAMPLE / "mosquitto.conf").read_text().replace("18831", str(self.port))
        (self.folder / "broker.conf").write_text(settings + "user root\n")
        self.broker = self.run_child("/usr/sbin/mosquitto", "-c", "broker.conf")

    def start_store(self):
        before = self.logged().count("topic plant/#: Granted QoS 1")
        self.store = self.run_child(
            "/usr/bin/python3", str(EXAMPLE / "store.py"), "--broker", "127.0.0.1",
            "--port", str(self.port), "--database", self.address)
        self.wait_until(lambda: self.logged().count("topic plant/#: Granted QoS 1") > before,
                        "store.py has subscribed")

    def start_panel(self):
        panel = (EXAMPLE / "panel.yaml").read_text().replace("18831", str(self.port))
        (self.folder / "panel.yaml").write_text(panel)
        (self.folder / "press.py").write_text(PRESS)
        return self.run_child(sys.argv[1], "--no-state", str(self.folder / "panel.yaml"),
                              env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})

    def logged(self):
        return (self.folder / "log").read_text(encoding="utf-8")

    def parts(self):
        return {int(number) for number, in self.query(
            "SELECT number FROM reading WHERE topic = 'plant/press1/parts'")}

    def wait_for_parts(self, count):
        self.wait_until(lambda: len(self.parts()) >= count, f"{count} parts in the table")

    def wait_for_the_last(self):
        self.wait_until(lambda: LAST in self.parts(), "the last part in the table")

    def expect_no_gap(self):
        parts = self.parts()
        self.assertEqual(sorted(set(range(min(parts), max(parts) + 1)) - parts), [])

    def test_values_are_those_of_the_panel(self):
        began = time.time()
        self.start_store()
        self.start_panel()
        self.wait_for_parts(20)
        self.expect_no_gap()
        wrong = self.query("""SELECT * FROM reading WHERE NOT CASE topic
            WHEN 'plant/press1/parts' THEN number >= 1 AND number = floor(number) AND text IS NULL
            WHEN 'plant/press1/temperature' THEN number >= 0.125 AND number * 8 = floor(number * 8)
            WHEN 'plant/press1/running' THEN number IN (0, 1) AND text IS NULL
            WHEN 'plant/press1/state' THEN number IS NULL AND text ~ '^made [0-9]+$'
            WHEN 'plant/press1/panel' THEN text = 'online' END""")
        self.assertEqual(wrong, [])
        self.assertEqual(self.query("SELECT count(DISTINCT topic) FROM reading"), [(5,)])
        times = self.query("SELECT extract(epoch FROM min(time)), extract(epoch FROM max(time)) FROM reading")
        self.assertGreater(times[0][0], began - 1)
        self.assertLess(times[0][1], time.time() + 1)
        self.assertEqual(self.query("""
            SELECT sum(values) = (SELECT count(number) FROM reading WHERE topic = 'plant/press1/parts'),
                max(greatest) = (SELECT max(number) FROM reading WHERE topic = 'plant/press1/parts')
            FROM reading_minute WHERE topic = 'plant/press1/parts'"""), [(True, True)])

    def test_no_value_is_lost_while_the_database_is_away(self):
        self.start_store()
        self.start_panel()
        self.wait_for_parts(20)
        before = len(self.logged())
        stop(self.database, signal.SIGINT)
        self.wait_until(lambda: "database: " in self.logged()[before:], "store.py misses the database")
        time.sleep(3)  # Much is published meanwhile.
        self.start_database()
        self.wait_for_the_last()
        self.expect_no_gap()

    def test_no_value_is_lost_when_the_bridge_is_killed(self):
        self.start_store()
        self.start_panel()
        self.wait_for_parts(20)
        stop(self.database, signal.SIGINT)  # So that it holds values that are in no table yet.
        time.sleep(1)
        stop(self.store, signal.SIGKILL)
        time.sleep(1)
        self.start_database()
        self.start_store()
        self.wait_for_the_last()
        self.expect_no_gap()


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
