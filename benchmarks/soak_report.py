"""What soak.py has seen, minute by minute, as lines, and as a document with a picture."""
import textwrap

import machine

COLUMNS = {"rss": "VmRSS KiB", "anonymous": "RssAnon KiB", "threads": "threads", "files": "files",
           "sockets": "sockets"}
COUNTED = ("threads", "files", "sockets")

HOW = """Written by `./bench {command}`: the gallery with sources on loopback at {rate:g} values a second each, a history,
alarms, two viewers of which one does not read, and a hand that works at a graph. {duration} Memory is the mean of the
time up to then; of threads, files and sockets, which are among the files, the most."""

HEAD = """\
# A panel of everything, over time

{how}

![Memory, threads and files over time](pictures/{picture})
"""


def by_minute(samples, speed):
    """Rows of the minute at whose end they are, by the panel's clock, and the columns' values: one for each of ours."""
    length = 60 * speed
    for number in range(int(samples[-1]["seconds"] // length) + 1):
        part = [one for one in samples if one["seconds"] // length == number]
        if part:
            means = [sum(one[name] for one in part) / len(part) for name in ("rss", "anonymous")]
            yield [round((number + 1) * speed), *means, *(max(one[name] for one in part) for name in COUNTED)]


def minutes(samples, speed):
    return ["minute  VmRSS KiB  RssAnon KiB  threads  files  sockets   (mean of the minute; counts: most)",
            *("{:6}  {:9.0f}  {:11.0f}  {:7}  {:5}  {:7}".format(*row) for row in by_minute(samples, speed))]


def table(samples, speed):
    return "\n".join(["| minute | " + " | ".join(COLUMNS.values()) + " |", "|" + "---:|" * (1 + len(COLUMNS)),
                      *("| {} | {:,.0f} | {:,.0f} | {} | {} | {} |".format(*row) for row in by_minute(samples, speed))])


def duration(options):
    if options.speed == 1:
        return f"It ran for {options.minutes:g} minutes."
    return (f"It ran for {options.minutes / 60:g} hours by its own clock, which ran {options.speed:g} times as fast as "
            "any other (libfaketime); minutes and rates are by that clock.")


def draw(samples, file):
    import matplotlib  # Not needed by who writes tables alone.
    matplotlib.use("svg")
    matplotlib.rcParams.update({"svg.fonttype": "none", "svg.hashsalt": "norvo", "font.size": 11})
    from matplotlib import pyplot
    figure, (above, below) = pyplot.subplots(2, 1, sharex=True, figsize=(7, 5), layout="constrained")
    times = [one["seconds"] / 60 for one in samples]
    for axes, names, factor in ((above, ("rss", "anonymous"), 1 / 1024), (below, COUNTED, 1)):
        for name in names:
            label = COLUMNS[name].removesuffix(" KiB")
            axes.plot(times, [one[name] * factor for one in samples], label=label)
        axes.set_ylim(bottom=0)
        axes.grid(alpha=0.3)
        axes.legend(frameon=False, loc="lower right")
    above.set_ylabel("MiB")
    below.set_ylabel("count")
    below.set_xlabel("minutes")
    figure.savefig(file, metadata={"Date": None})
    pyplot.close(figure)


def write(samples, lines, options, document, draw_into=draw):
    picture = document.parent / "pictures" / (document.stem + ".svg")
    picture.parent.mkdir(parents=True, exist_ok=True)
    draw_into(samples, picture)
    here = "".join(f"| {name} | {value} |\n" for name, value in machine.describe()[:7])
    command = "soak" if options.speed == 1 else "soak-hours"
    how = textwrap.fill(HOW.format(command=command, rate=options.rate, duration=duration(options)), 118)
    document.write_text(HEAD.format(how=how, picture=picture.name) +
                        "\n| | |\n|---|---|\n" + here + "\n" + "".join(f"- {line}\n" for line in lines) + "\n" +
                        table(samples, options.speed) + "\n", encoding="utf-8")
