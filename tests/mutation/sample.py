"""Keeps the places of a run, and finds them again in a product that has changed since."""
import collections
import difflib
import json
import re

import points

AROUND = 120  # Letters that are kept on each side of a place.
ALIKE_HERE, ALIKE_ELSEWHERE = 0.55, 0.8  # Of what stands around: in the same file, in another one.


def words(text):
    """A text without its layout."""
    return re.findall(r"\w+|[^\w\s]", text)


def entry_of(name, text, point):
    return {"file": name, "kind": point.kind, "before": text[point.start:point.end], "changed": point.changed,
            "context": text[max(0, point.start - AROUND):point.start], "after": text[point.end:point.end + AROUND]}


def likeness(one, other):
    """0 to 1: how much of what stands before and behind two places is the same."""
    sides = [(words(one[side])[at], words(other[side])[at])
             for side, at in (("context", slice(-20, None)), ("after", slice(0, 20)))]
    return sum(difflib.SequenceMatcher(None, *side, autojunk=False).ratio() for side in sides) / 2


def write(path, chosen, texts):
    """Keeps {number: (file, point)} of these {file: text}."""
    entries = [entry_of(name, texts[name], point) for _, (name, point) in sorted(chosen.items())]
    path.write_text(json.dumps(entries, indent=1) + "\n")


def found_again(entries, texts):
    """{number: (file, point)} of what is left of a kept sample in these {file: text}; a place counts once.

    What is to be changed must be the same, and most of what stands around it. A place that moved to another file needs
    more around it to be the same.
    """
    places = collections.defaultdict(list)
    for name, text in texts.items():
        for point in points.points_of(text):
            entry = entry_of(name, text, point)
            places[point.kind, *words(entry["before"])].append((entry, point))
    found, taken = {}, collections.defaultdict(list)
    for is_here, least in ((True, ALIKE_HERE), (False, ALIKE_ELSEWHERE)):
        pairs = []
        for number, kept in enumerate(entries):
            if number not in found:
                pairs += [(likeness(kept, entry), number, entry["file"], point)
                          for entry, point in places[kept["kind"], *words(kept["before"])]
                          if (entry["file"] == kept["file"]) == is_here]
        for alike, number, name, point in sorted(pairs, key=lambda pair: -pair[0]):
            if alike >= least and number not in found and not any(map(point.overlaps, taken[name])):
                found[number] = (name, point)
                taken[name].append(point)
    return found
