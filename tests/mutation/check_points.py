#!/usr/bin/env python3
"""What tests/mutation/points.py changes of a text, what it leaves alone, and what sample.py finds again."""
import json
import pathlib
import tempfile
import unittest

import points
import sample


def body(*lines):
    return "int f(int a, int b)\n{\n" + "".join(f"    {line}\n" for line in lines) + "}\n"


def changes(*lines):
    """{kind: [what stands there]} of a function's body."""
    text = body(*lines)
    found = {}
    for point in points.points_of(text):
        found.setdefault(point.kind, []).append(text[point.start:point.end])
    return found


class Points(unittest.TestCase):
    def test_condition_is_negated_and_its_bound_moved(self):
        self.assertEqual(changes("if (a < b) {", "    return a;", "}"), {"negated": ["a < b"], "bound": ["a < b"]})

    def test_operators_are_swapped_together(self):
        text = body("if (a < b && isOpen()) {", "    return a;", "}")
        swapped = [point for point in points.points_of(text) if point.kind == "and/or"]
        self.assertEqual([point.changed for point in swapped],
                         ["(norvoMutant(%d) ? bool(a < b || isOpen()) : bool(a < b && isOpen()))"])

    def test_condition_that_declares_is_left_alone(self):
        self.assertEqual(changes("if (const int c = g()) {", "    return c;", "}"), {})
        self.assertEqual(changes("if (int c = g(); c > 0) {", "    return c;", "}"), {})

    def test_call_and_assignment_are_left_out(self):
        self.assertEqual(changes("start();", "m_count += a;", "emit done(a);", "m_map[a].clear();")["left out"],
                         ["start();", "m_count += a;", "emit done(a);", "m_map[a].clear();"])

    def test_declaration_and_jump_are_no_statement_to_leave_out(self):
        self.assertNotIn("left out", changes("int c = g();", "const auto d = g();", "Type other(a);", "return c;",
                                             "delete pointer;"))

    def test_call_with_a_function_in_it_is_one_statement(self):
        self.assertEqual(changes("connect(a, b, [this] {", "    close();", "});")["left out"],
                         ["connect(a, b, [this] {\n        close();\n    });", "close();"])

    def test_text_comment_and_directive_are_left_alone(self):
        self.assertEqual(changes('// if (a < b) { start(); }', 'const QString c = "x = 3; start();";',
                                 "#if A > 2", "#endif", "/* true */"), {})

    def test_numbers_and_truths_are_changed(self):
        self.assertEqual(changes("m_end = a + 1;")["literal"], ["1"])
        self.assertEqual(changes("m_open = true;")["literal"], ["true"])
        self.assertNotIn("literal", changes("constexpr int kMost = 3;", "static const int c = 4;"))

    def test_least_and_greatest_change_places(self):
        self.assertEqual(changes("const int c = std::min(a, g(b));"), {"min/max": ["std::min(a, g(b))"]})

    def test_only_bodies_of_functions_are_searched(self):
        self.assertEqual(points.points_of("struct S\n{\n    int a = 1 + 2;\n};\nconst bool kOn = true;\n"), [])

    def test_both_ways_are_written(self):
        text = body("start();", "if (a < b) {", "    stop();", "}")
        found = points.points_of(text)
        left_out = next(point for point in found if point.kind == "left out")
        negated = next(point for point in found if point.kind == "negated")
        self.assertEqual(points.written(text, {7: left_out, 8: negated}),
                         body("if (!norvoMutant(7)) { start(); }", "if ((norvoMutant(8) != bool(a < b))) {",
                              "    stop();", "}"))

    def test_points_that_share_a_place_overlap(self):
        one, other, apart = (points.Point(start, end, "", "") for start, end in ((0, 4), (3, 6), (4, 6)))
        self.assertTrue(one.overlaps(other))
        self.assertFalse(one.overlaps(apart))


def function(name, *lines):
    return f"void {name}()\n" + body(*lines).split("\n", 1)[1]


class Sample(unittest.TestCase):
    GATE = function("openGate", "m_gate.unlock();", "if (m_height < kMost) {", "    m_motor.start();", "}")
    LAMP = function("showLamp", "m_lamp = true;", "emit lampChanged(m_lamp);", "update();")

    def kept(self, files, which):
        """The written sample of these places: (file, what stands there)."""
        chosen = [(name, point) for name, text in files.items() for point in points.points_of(text)
                  if (name, text[point.start:point.end]) in which and point.kind != "negated"]
        self.assertEqual(len(chosen), len(which))
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "sample.json"
            sample.write(path, dict(enumerate(chosen)), files)
            return json.loads(path.read_text())

    def found(self, entries, files):
        """{number: (file, the function that it stands in, what stands there)}"""
        def above(text, place):
            return text[:place].rsplit("void ", 1)[1].split("(")[0]

        return {number: (name, above(files[name], point.start), files[name][point.start:point.end])
                for number, (name, point) in sample.found_again(entries, files).items()}

    def test_unchanged_product_has_all_places(self):
        files = {"a.cpp": self.GATE + "\n" + self.LAMP}
        entries = self.kept(files, [("a.cpp", "m_height < kMost"), ("a.cpp", "update();")])
        self.assertEqual(self.found(entries, files), {0: ("a.cpp", "openGate", "m_height < kMost"),
                                                      1: ("a.cpp", "showLamp", "update();")})

    def test_place_is_found_behind_new_lines_and_in_another_layout(self):
        entries = self.kept({"a.cpp": self.GATE}, [("a.cpp", "m_height < kMost")])
        moved = self.GATE.replace("m_height < kMost", "m_height\n        < kMost")
        files = {"a.cpp": function("closeGate", "if (m_height < kMost) {", "    return;", "}") + "\n" + moved}
        self.assertEqual(self.found(entries, files), {0: ("a.cpp", "openGate", "m_height\n        < kMost")})

    def test_place_that_was_removed_is_gone(self):
        entries = self.kept({"a.cpp": self.LAMP}, [("a.cpp", "update();")])
        elsewhere = function("setUnit", "m_text = unit;", "m_width = textWidth(m_text);", "update();", "adjustSize();")
        files = {"a.cpp": self.LAMP.replace("    update();\n", "") + "\n" + elsewhere}
        self.assertEqual(self.found(entries, files), {})

    def test_place_that_was_changed_is_gone(self):
        entries = self.kept({"a.cpp": self.GATE}, [("a.cpp", "m_height < kMost")])
        self.assertEqual(self.found(entries, {"a.cpp": self.GATE.replace("kMost", "m_most")}), {})

    def test_place_moves_with_its_function_to_another_file(self):
        entries = self.kept({"a.cpp": self.GATE}, [("a.cpp", "m_height < kMost")])
        self.assertEqual(self.found(entries, {"a.cpp": self.LAMP, "b.cpp": self.GATE})[0][0], "b.cpp")

    def test_place_counts_once(self):
        once = self.GATE + self.LAMP + self.GATE
        entries = self.kept({"a.cpp": once + once}, [("a.cpp", "update();")] * 2)
        self.assertEqual(len(self.found(entries, {"a.cpp": once + once})), 2)
        self.assertEqual(len(self.found(entries, {"a.cpp": once})), 1)


if __name__ == "__main__":
    unittest.main()
