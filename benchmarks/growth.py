"""How cost grows: what the benchmarks "growsBy..." say, as tables and pictures."""
import dataclasses


@dataclasses.dataclass(frozen=True)
class Growth:
    key: str      # Of the benchmark's name, and of the picture's.
    title: str
    across: str
    up: str
    counter: str
    limit: str    # What the least is.

    def picture(self):
        return f"growth-{self.key.lower()}.svg"


SPANS = "axes, grid and names by the plot library, and one span for each pixel column and curve"
GROWTHS = [
    Growth("Devices", "Devices", "labels on the panel", "ms from the text to the first picture", "ms",
           "the texts drawn by one widget"),
    Growth("Values", "Values a second", "values a second, on 100 labels", "% of a core", "percent",
           "the texts that changed drawn by one widget"),
    Growth("Points", "Points of a curve", "points of each of 4 curves", "ms for a refresh", "ms", SPANS),
    Growth("Curves", "Curves", "curves of 10,000 points", "ms for a refresh", "ms", SPANS),
    Growth("Size", "Window size", "pixels of width, twice the height; 4 curves of 10,000 points", "ms for a refresh",
           "ms", SPANS),
    Growth("Gauges", "Gauges", "gauges that share 1,920 x 1,080 pixels, with 30 values a second each", "% of a core",
           "percent", "two rectangles for each gauge that changed"),
]


class Series:
    """Of one growth: ours and the others', by what grows. Ours is what was measured in turns with each other."""

    def __init__(self, growth, programs):
        self.growth = growth
        self.ours, self.others = {}, {}
        for result in (result for program in programs for result in program.results):
            kind, _, rest = result.name.partition("/")
            if kind == "growsBy" + growth.key and not result.fault:
                self.take(rest.split("/")[0].replace("_", " "), result.counters)

    def take(self, other, counters):
        at = counters["x"]
        ours = counters.get("ours_" + self.growth.counter)  # None where the other runs alone.
        if ours is not None:
            self.ours.setdefault(at, ours)
        self.others.setdefault(other, {})[at] = (ours, counters["other_" + self.growth.counter])

    def ratio(self, other, at):
        """Of ours to the other's."""
        ours, theirs = self.others[other][at]
        return (self.ours[at] if ours is None else ours) / theirs if theirs else float("inf")

    def is_empty(self):
        return not self.ours

    def table(self):
        others = list(self.others)
        lines = ["| " + " | ".join([self.growth.across, "ours"] + [cell for other in others
                                                                  for cell in (other, f"ours : {other}")]) + " |",
                 "|" + "---:|" * (2 + 2 * len(others))]
        for at in sorted(self.ours):
            cells = [f"{at:,.0f}", number(self.ours[at])]
            for other in others:
                known = at in self.others[other]
                cells += [number(self.others[other][at][1]), number(self.ratio(other, at))] if known else ["", ""]
            lines.append("| " + " | ".join(cells) + " |")
        return "\n".join(lines)

    def how_far(self):
        """In words, at both ends."""
        if not self.others.get("limit"):
            return ""
        ends = sorted(self.others["limit"])
        distances = [f"{number(self.ratio('limit', at))} times that at {at:,.0f}" for at in {ends[0]: 0, ends[-1]: 0}]
        return f"The limit is {self.growth.limit}. Ours is {', '.join(distances)}."


def number(value):
    """With three digits that count."""
    return f"{value:,.0f}" if abs(value) >= 100 else f"{value:.3g}"


def draw(series, file):
    import matplotlib  # Not needed by who writes tables alone.
    matplotlib.use("svg")
    matplotlib.rcParams.update({"svg.fonttype": "none", "svg.hashsalt": "norvo", "font.size": 11,
                                "font.family": "sans-serif"})
    from matplotlib import pyplot, ticker
    figure, axes = pyplot.subplots(figsize=(7, 4), layout="constrained")
    curves = {"ours": series.ours, **{name: {at: pair[1] for at, pair in values.items()}
                                      for name, values in series.others.items()}}
    for name, values in curves.items():
        style = {"ours": {"linewidth": 2.5, "color": "black"}, "limit": {"linestyle": "--", "color": "gray"}}
        places = sorted(values)
        axes.plot(places, [values[at] for at in places], marker="o", markersize=4, label=name, **style.get(name, {}))
    axes.set(xscale="log", yscale="log", xlabel=series.growth.across, ylabel=series.growth.up)
    places = sorted(series.ours)
    axes.set_xticks(places, [f"{at:,.0f}" for at in places])
    axes.xaxis.set_minor_locator(ticker.NullLocator())
    axes.yaxis.set_major_formatter(ticker.FuncFormatter(lambda value, _: f"{value:,.4g}"))
    if max(max(values.values()) for values in curves.values()) < 100 * min(series.ours.values()):
        axes.yaxis.set_minor_locator(ticker.LogLocator(subs=(2, 5)))
        axes.yaxis.set_minor_formatter(axes.yaxis.get_major_formatter())
    axes.grid(alpha=0.3)
    axes.legend(frameon=False)
    figure.savefig(file, metadata={"Date": None})
    pyplot.close(figure)
