"""Writes docs/performance.md and its pictures from what the benchmarks wrote."""
import growth

# What is to be reached: the benchmark and its counter, the most that it may be, in words.
GOALS = [
    ("refreshAgainstBarePlot/4/600000", "ours_ms", 2.5, "ms, a refresh of 4 curves of 600,000 points"),
    ("refreshAgainstBarePlot/16/10000", "ours_ms", 3, "ms, a refresh of 16 curves of 10,000 points"),
    ("refreshAgainstBarePlot/4/1000", "ratio", 1, "times the bare plot library at 1,000 points"),
    ("filledNoise/1000", "time_ms", 3, "ms, a filled noisy array of 1,000 values"),
    ("filledNoise/100000", "time_ms", 10, "ms, a filled noisy array of 100,000 values"),
    ("distinctSenders/100000", "time_ms", 1000, "ms, 100,000 senders in one graph"),
    ("start/hello", "ratio", 1.25, "times a bare Qt hello of one word, from start to first picture"),
    ("start/helloByHand", "ratio", 1.25, "times the same hello made by hand, from start to first picture"),
    ("start/workstation", "ratio", 1.25, "times the workstation made by hand, from start to first picture"),
    ("offScreen/workstation", "percent_of_a_core", 1.5, "% of a core, the workstation at rest"),
    ("offScreen/workstation", "resident_MB", 60, "MB resident, the workstation"),
    ("underX/gallery", "percent_of_a_core", 6, "% of a core, the gallery under X without a graphics card"),
    ("fiveThousand/labels", "time_ms", 400, "ms, from the text to the first picture of 5,000 labels"),
    ("fiveThousand/readouts", "time_ms", 1000, "ms, from the text to the first picture of 5,000 readouts"),
    ("twoHundredReadouts", "ratio", 1.2, "times bare labels, 200 readouts at 10 Hz"),
    ("readoutFlips", "ratio", 2, "times a bare label with another palette, a readout that changes its colour"),
    ("lampFlips", "ratio", 2, "times a bare label with another palette, a lamp that goes on or off"),
    ("pressToLamp/2000", "p99_ms", 16, "ms, 99 of 100 presses to their lamp"),
    ("lineToLabel/2000", "p99_ms", 16, "ms, 99 of 100 lines of a child program to their pixels"),
    ("messageToLabel/2000", "p99_ms", 16, "ms, 99 of 100 MQTT messages to their pixels"),
]
LATENCIES = [("pressToLamp/2000", "a press to its lamp"), ("lineToLabel/2000", "a line of a child program"),
             ("messageToLabel/2000", "an MQTT message")]

HEAD = """\
# Performance

Written by `./bench`, which measures everything anew; `./bench NAME...` measures some and keeps the rest. Times are of
the processor where nothing else is said, without a display. What we compare with does the same visible work in the same
run, turn and turn about; pyqtgraph alone runs in a process of its own.
"""
LATENCY_HEAD = """
## From a value to its pixels

While the gallery runs beside it, with every device type and its sources at their usual rate: milliseconds of wall
clock until the paint is in the window's backing store. The next is sent, at a random time, once the one before is seen.

| | half | 99 of 100 | 999 of 1,000 | largest | samples |
|---|---:|---:|---:|---:|---:|
"""


def by_name(programs):
    return {result.name: result for program in programs for result in program.results if not result.fault}


def value_of(result, counter):
    return result.time_ms if counter == "time_ms" else result.counters.get(counter)


def machine_text(machine):
    return "\n## Where\n\n| | |\n|---|---|\n" + "".join(f"| {name} | {value} |\n" for name, value in machine)


def goals_text(programs):
    results, lines = by_name(programs), []
    for name, counter, most, words in GOALS:
        value = value_of(results[name], counter) if name in results else None
        said = ("not measured | " if value is None else
                f"{growth.number(value)} | {'yes' if value <= most else '**no**'}")
        lines.append(f"| {words} | {most:,} | {said} |\n")
    return "\n## Goals\n\n| | at most | measured | reached |\n|---|---:|---:|---|\n" + "".join(lines)


def growth_text(all_series):
    text = "\n## How cost grows\n"
    for series in all_series:
        kind = series.growth
        text += (f"\n### {kind.title}\n\n![{kind.up}, by {kind.across}](pictures/{kind.picture()})\n\n"
                 f"{kind.up}:\n\n{series.table()}\n\n{series.how_far()}\n")
    return text


def latency_text(programs):
    results, lines = by_name(programs), ""
    for name, words in LATENCIES:
        if name in results:
            counters = results[name].counters
            cells = [growth.number(counters[key]) for key in ("p50_ms", "p99_ms", "p99.9_ms", "largest_ms")]
            lines += f"| {words} | {' | '.join(cells)} | {counters['samples']:,.0f} |\n"
    return LATENCY_HEAD + lines if lines else ""


def time_text(milliseconds):
    for unit, factor in (("s", 1e-3), ("ms", 1), ("us", 1e3)):
        if milliseconds * factor >= 1:
            return f"{growth.number(milliseconds * factor)} {unit}"
    return f"{growth.number(milliseconds * 1e6)} ns"


def program_text(program):
    quick = ", quick" if program.is_quick else ""
    text = (f"\n### {program.name}\n\n{program.date}, load {program.load:.2f}{quick}\n\n"
            "| | time | besides |\n|---|---:|---|\n")
    for result in program.results:
        besides = result.fault or ", ".join(f"{name} {growth.number(value)}"
                                            for name, value in sorted(result.counters.items()))
        text += f"| {result.name} | {'' if result.fault else time_text(result.time_ms)} | {besides} |\n"
    return text


def write(programs, machine, document, draw=growth.draw):
    """The document and, below it, pictures/."""
    all_series = [series for series in (growth.Series(kind, programs) for kind in growth.GROWTHS)
                  if not series.is_empty()]
    (document.parent / "pictures").mkdir(parents=True, exist_ok=True)
    for series in all_series:
        draw(series, document.parent / "pictures" / series.growth.picture())
    document.write_text(HEAD + machine_text(machine) + goals_text(programs) + growth_text(all_series) +
                        latency_text(programs) + "\n## All that was measured\n" +
                        "".join(program_text(program) for program in programs), encoding="utf-8")
