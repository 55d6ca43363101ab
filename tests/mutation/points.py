"""Finds places of a C++ file where a small change must be noticed by a test, and writes both ways into it.

Works on text as the project's clang-format lays it out: functions of a file begin with "{" and end with "}" in the
first column, operators stand between blanks, and what an if guards stands in braces.
"""
import dataclasses
import re

BOUNDARIES = {" < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ", " == ": " != ", " != ": " == "}
OPENING, CLOSING = "([{", ")]}"
NO_STATEMENT = r"(return|break|continue|delete|throw|case|default|else|if|for|while|do|switch|using|goto|const|auto|static)\b"


@dataclasses.dataclass(frozen=True)
class Point:
    start: int
    end: int
    kind: str
    changed: str  # With %d for its number; as it stands in the file, both ways.

    def overlaps(self, other):
        return self.start < other.end and other.start < self.end


def masked(text):
    """The text with comments, literals of text and preprocessor lines blanked, at the same places."""
    pattern = re.compile(r'R"\((?:.|\n)*?\)"|//[^\n]*|/\*(?:.|\n)*?\*/|"(?:\\.|[^"\\\n])*"'
                         r"|(?<![0-9a-zA-Z])'(?:\\.|[^'\\\n])+'|^#(?:[^\n]*\\\n)*[^\n]*", re.M)
    return pattern.sub(lambda found: re.sub(r"[^\n]", "~" if found[0][0] in "\"R'" else " ", found[0]), text)


def end_of(text, start):
    """Behind the bracket that closes the one at `start`; None without one."""
    depth = 0
    for place in range(start, len(text)):
        if text[place] in OPENING:
            depth += 1
        elif text[place] in CLOSING:
            depth -= 1
            if depth == 0:
                return place + 1
    return None


def parts(text, separators):
    """(start, end, the separator before) of what stands between such separators outside of brackets."""
    found, depth, begin, before, place = [], 0, 0, "", 0
    while place < len(text):
        here = next((s for s in separators if depth == 0 and text.startswith(s, place)), None)
        if here:
            found.append((begin, place, before))
            begin, before, place = place + len(here), here, place + len(here)
            continue
        depth += (text[place] in OPENING) - (text[place] in CLOSING)
        place += 1
    return found + [(begin, len(text), before)]


def of_condition(text, mask, start, end):
    """The changes of a condition between these places: the whole, its operators, its bounds."""
    code, points = mask[start:end], []
    if re.search(r";| [-+*/|&]?= |\?|\[[&=\w]*\]\s*[({]", code) or not code.strip():
        return []
    original = text[start:end]
    points.append(Point(start, end, "negated", f"(norvoMutant(%d) != bool({original}))"))
    clauses = parts(code, [" && ", " || ", "\n&& ", "\n|| "])
    if len(clauses) > 1 and len({separator for _, _, separator in clauses[1:]}) == 1:
        of_now = clauses[1][2]
        other = of_now.replace("&&", "##").replace("||", "&&").replace("##", "||")
        swapped = other.join(original[a:b] for a, b, _ in clauses)
        points.append(Point(start, end, "and/or", f"(norvoMutant(%d) ? bool({swapped}) : bool({original}))"))
    for a, b, _ in clauses:
        sides = parts(code[a:b], list(BOUNDARIES))
        if len(sides) == 2 and not code[a:b].lstrip().startswith("!"):
            left, right = original[a:b][:sides[0][1]], original[a:b][sides[1][0]:]
            changed = left + BOUNDARIES[sides[1][2]] + right
            points.append(Point(start + a, start + b, "bound",
                                f"(norvoMutant(%d) ? bool({changed}) : bool({original[a:b]}))"))
    return points


def conditions(text, mask, begin, end):
    points = []
    for found in re.finditer(r"\b(?:if|while) \(", mask[begin:end]):
        opening = begin + found.end() - 1
        closing = end_of(mask, opening)
        if closing and closing <= end:
            points += of_condition(text, mask, opening + 1, closing - 1)
    for found in re.finditer(r"\breturn ([^;{}]*?);", mask[begin:end]):
        if re.search(r" (&&|\|\||==|!=|<|>|<=|>=) |^!", found[1]):
            points += of_condition(text, mask, begin + found.start(1), begin + found.end(1))
    return points


def statements(text, mask, begin, end):
    """Calls and assignments that are left out."""
    points = []
    for found in re.finditer(r"[;{}]\s*\n\s+(?=[*+a-zA-Z_])", mask[begin:end]):
        start = begin + found.end()
        depth, place = 0, start
        while place < end and not (mask[place] == ";" and depth == 0):
            depth += (mask[place] in OPENING) - (mask[place] in CLOSING)
            if depth < 0:
                break
            place += 1
        code = mask[start:place]
        is_call = re.match(r"(emit )?(\*|\+\+|--)?[\w:]+(<[\w:*]+>)?(\+\+|--|\(| [-+*/|&]?= |\[|->|\.)", code)
        if depth == 0 and is_call and not re.match(NO_STATEMENT, code):
            points.append(Point(start, place + 1, "left out",
                                f"if (!norvoMutant(%d)) {{ {text[start:place + 1]} }}"))
    return points


def literals(text, mask, begin, end):
    points = []
    for found in re.finditer(r"(?<=[-+*/<>=] )(\d+)(?=[;)\] ,])(?!\))|\b(true|false)\b", mask[begin:end]):
        start, stop = begin + found.start(), begin + found.end()
        line = mask[mask.rfind("\n", 0, start) + 1:mask.find("\n", start)]
        if re.search(r"constexpr|\bstatic\b|\bcase\b|template|noexcept|static_assert|enum", line):
            continue
        word = found[0]
        changed = {"true": "!norvoMutant(%d)", "false": "norvoMutant(%d)"}.get(
            word, f"(norvoMutant(%d) ? {word} + 1 : {word})")
        points.append(Point(start, stop, "literal", f"({changed})"))
    for found in re.finditer(r"\bstd::(min|max)\(", mask[begin:end]):
        start = begin + found.start()
        stop = end_of(mask, begin + found.end() - 1)
        if stop and stop <= end:
            call, other = text[start:stop], "max" if found[1] == "min" else "min"
            points.append(Point(start, stop, "min/max",
                                f"(norvoMutant(%d) ? std::{other}{call[8:]} : {call})"))
    return points


def points_of(text):
    """All of a file, in the order of their places."""
    mask, points = masked(text), []
    for body in re.finditer(r"^\{\n(?:.*\n)*?\}$", mask, re.M):
        for finder in (conditions, statements, literals):
            points += finder(text, mask, body.start(), body.end())
    return sorted(points, key=lambda point: (point.start, point.end, point.kind))


def written(text, chosen):
    """The text with these points, a dict by number, both ways in it; they must not overlap."""
    for number, point in sorted(chosen.items(), key=lambda item: -item[1].start):
        # Line ends stay where they are, so that a compiler's line is a line of the file.
        text = text[:point.start] + point.changed.replace("%d", str(number), 1) + text[point.end:]
    return text
