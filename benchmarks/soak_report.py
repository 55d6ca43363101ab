"""What soak.py has seen, minute by minute, as lines, and as a document with a picture."""
import machine

COLUMNS = {"rss": "VmRSS KiB", "anonymous": "RssAnon KiB", "threads": "threads", "files": "files",
           "sockets": "sockets"}
COUNTED = ("threads", "files", "sockets")

HEAD = """\
# A panel of everything, over time

Written by `./bench soak`: the gallery with sources on loopback at {rate:g} values a second each, a history, alarms,
two viewers of which one does not read, and a hand that works at a graph. It ran for {minutes:g} minutes. Memory is the
mean of the minute; of threads, files and sockets, which are among the files, the most.

![Memory, threads and files over time](pictures/{picture})
"""


def by_minute(samples):
    """Rows of the minute's number and the columns' values."""
    for minute in range(samples[-1]["seconds"] // 60 + 1):
        part = [one for one in samples if one["seconds"] // 60 == minute]
        if part:
            means = [sum(one[name] for one in part) / len(part) for name in ("rss", "anonymous")]
            yield [minute + 1, *means, *(max(one[name] for one in part) for name in COUNTED)]


def minutes(samples):
    return ["minute  VmRSS KiB  RssAnon KiB  threads  files  sockets   (mean of the minute; counts: most)",
            *("{:6}  {:9.0f}  {:11.0f}  {:7}  {:5}  {:7}".format(*row) for row in by_minute(samples))]


def table(samples):
    return "\n".join(["| minute | " + " | ".join(COLUMNS.values()) + " |", "|" + "---:|" * (1 + len(COLUMNS)),
                      *("| {} | {:,.0f} | {:,.0f} | {} | {} | {} |".format(*row) for row in by_minute(samples))])


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
    document.write_text(HEAD.format(rate=options.rate, minutes=options.minutes, picture=picture.name) +
                        "\n| | |\n|---|---|\n" + here + "\n" + "".join(f"- {line}\n" for line in lines) + "\n" +
                        table(samples) + "\n", encoding="utf-8")
