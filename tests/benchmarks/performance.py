#!/usr/bin/python3
"""What becomes of the benchmarks' results in docs/performance.md."""
import pathlib
import sys
import tempfile
import time
import types
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parents[1] / "benchmarks"))
sys.dont_write_bytecode = True

import machine      # pylint: disable=wrong-import-position
import performance  # pylint: disable=wrong-import-position
import results      # pylint: disable=wrong-import-position
import soak_panel   # pylint: disable=wrong-import-position
import soak_report  # pylint: disable=wrong-import-position


class Performance(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.programs = results.read_folder(HERE / "results")
        cls.pictures = []
        with tempfile.TemporaryDirectory() as folder:
            document = pathlib.Path(folder) / "performance.md"
            performance.write(cls.programs, [("Processor", "A quick one"), ("Taurus", "absent")], document,
                              lambda series, file: cls.pictures.append((series.growth.key, file.name)))
            cls.lines = document.read_text(encoding="utf-8").splitlines()

    def test_machineAndVersionsStandInATable(self):
        self.assertIn("| Processor | A quick one |", self.lines)
        self.assertIn("| Taurus | absent |", self.lines)

    def test_eachGrowthIsSetAgainstTheOthersAndTheLimit(self):
        self.assertIn("| points of each of 4 curves | ours | plot library | ours : plot library | limit | ours : limit "
                      "| pyqtgraph | ours : pyqtgraph |", self.lines)
        self.assertIn("| 1,000 | 2 | 4 | 0.5 | 1 | 3 | 8 | 0.25 |", self.lines)

    def test_whatWasNotMeasuredLeavesItsCellsEmpty(self):
        self.assertIn("| 1,000,000 | 9 | 18 | 0.5 | 2 | 4 |  |  |", self.lines)

    def test_distanceToTheLimitIsSaidAtBothEnds(self):
        text = "\n".join(self.lines)
        self.assertIn("Ours is 3 times that at 1,000, 4 times that at 1,000,000.", text)

    def test_picturesAreOfWhatWasMeasuredAlone(self):
        self.assertEqual(self.pictures, [("Points", "growth-points.svg")])
        text = "\n".join(self.lines)
        self.assertIn("(pictures/growth-points.svg)", text)
        self.assertNotIn("growth-devices", text)

    def test_goalsAreReachedMissedOrNotMeasured(self):
        self.assertIn("| ms, 99 of 100 presses to their lamp | 16 | 17.5 | **no** |", self.lines)
        self.assertIn("| ms, 99 of 100 lines of a child program to their pixels | 16 | 1.5 | yes |", self.lines)
        self.assertIn("| ms, 99 of 100 MQTT messages to their pixels | 16 | not measured |  |", self.lines)

    def test_latencyIsToldByQuantiles(self):
        self.assertIn("| a press to its lamp | 0.5 | 17.5 | 18 | 19 | 2,000 |", self.lines)

    def test_repeatedMeasurementsCountByTheirMedian(self):
        self.assertIn("| text | 5 us |  |", self.lines)

    def test_whatCouldNotBeMeasuredSaysWhy(self):
        self.assertIn("| growsByPoints/Qwt/1000 |  | left out |", self.lines)

    def test_eachProgramSaysWhenAndHowItRan(self):
        self.assertIn("2024-05-06T07:08:09+00:00, load 0.25, quick", self.lines)
        self.assertIn("2024-05-07T07:08:09+00:00, load 1.50", self.lines)


class Machine(unittest.TestCase):
    def test_everythingOfThisMachineIsKnown(self):
        rows = dict(machine.describe())
        self.assertGreaterEqual(int(rows["Cores"]), 1)
        self.assertRegex(rows["Memory"], r"^\d+\.\d GiB$")
        self.assertNotIn("", rows.values())

    def test_whatIsNotInstalledIsAbsent(self):
        self.assertEqual(machine.first_line("dpkg-query", "-W", "-f=${Version}", "no-such-package"), "")
        self.assertEqual(machine.first_line("no-such-command"), "")


class Soak(unittest.TestCase):
    SAMPLES = [{"seconds": second, "rss": 1000 + second, "anonymous": 500, "threads": 7 + second // 60, "files": 30,
                "sockets": 9}
               for second in range(0, 120, 30)]

    def test_documentHasTheMinutesAndWhatIsSaid(self):
        drawn = []
        with tempfile.TemporaryDirectory() as folder:
            document = pathlib.Path(folder) / "soak.md"
            options = types.SimpleNamespace(rate=20, minutes=2, speed=1)
            soak_report.write(self.SAMPLES, ["flat"], options, document, lambda _, file: drawn.append(file.name))
            lines = document.read_text(encoding="utf-8").splitlines()
        self.assertIn("| 1 | 1,015 | 500 | 7 | 30 | 9 |", lines)
        self.assertIn("| 2 | 1,075 | 500 | 8 | 30 | 9 |", lines)
        self.assertIn("- flat", lines)
        self.assertEqual(drawn, ["soak.svg"])
        self.assertIn("![Memory, threads and files over time](pictures/soak.svg)", lines)

    def test_timesAreByThePanelsClock(self):
        samples = [dict(one, seconds=one["seconds"] * 24) for one in self.SAMPLES]
        rows = list(soak_report.by_minute(samples, 24))
        self.assertEqual([row[0] for row in rows], [24, 48])
        self.assertEqual(rows[1][3], 8)
        options = types.SimpleNamespace(minutes=48, speed=24)
        self.assertIn("0.8 hours by its own clock, which ran 24 times as fast", soak_report.duration(options))

    def test_thePanelsClockRunsAsFastAsItIsTold(self):
        clock = soak_panel.Clock(1)
        self.assertEqual(clock.environment, {})
        clock.begin, clock.speed = time.time() - 10, 24
        self.assertAlmostEqual(clock.now() - clock.begin, 240, delta=48)


if __name__ == "__main__":
    unittest.main()
