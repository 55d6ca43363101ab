#!/usr/bin/python3
"""What a refresh of 4 curves costs pyqtgraph; writes what it measures as Google Benchmark does."""
import argparse
import datetime
import json
import os
import statistics
import time

FRAMES = 15
CURVES = 4


def refresh_ms(points):
    """The median of the processor time of a frame, with 33 new points of each curve."""
    import numpy
    import pyqtgraph
    application = pyqtgraph.mkQApp()
    pyqtgraph.setConfigOptions(antialias=True, background="w", foreground="k")
    plot = pyqtgraph.PlotWidget()
    plot.resize(800, 400)
    plot.showGrid(x=True, y=True)
    plot.addLegend()
    plot.setYRange(-1, 1)
    curves = [plot.plot(pen=pyqtgraph.intColor(curve), name=f"sender {curve}") for curve in range(CURVES)]
    plot.show()
    noise = numpy.random.default_rng(1)
    values = [0.8 * numpy.sin(numpy.arange(points) * 0.002 + curve) + noise.normal(0, 0.05, points)
              for curve in range(CURVES)]
    times = []
    for frame in range(FRAMES):
        begin = time.process_time()
        at = (numpy.arange(points) + 33 * frame) / 1000
        for index, curve in enumerate(curves):
            values[index] = numpy.roll(values[index], -33)
            curve.setData(at, values[index])
        plot.setXRange(at[0], at[-1], padding=0)
        application.processEvents()
        application.processEvents()
        times.append(1000 * (time.process_time() - begin))
    plot.close()
    return statistics.median(times)


def entry(points):
    taken = refresh_ms(points)
    print(f"growsByPoints/pyqtgraph/{points}: {taken:.1f} ms", flush=True)
    return {"name": f"growsByPoints/pyqtgraph/{points}", "run_type": "iteration", "real_time": taken,
            "time_unit": "ms", "x": points, "other_ms": taken}


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--benchmark_out", required=True)
    options, others = parser.parse_known_args()
    try:
        import pyqtgraph  # pylint: disable=unused-import
    except ImportError:
        print("left out: pyqtgraph is not here")
        return
    is_quick = "--benchmark_context=quick=true" in others
    context = {"date": datetime.datetime.now().astimezone().isoformat(timespec="seconds"),
               "load_avg": list(os.getloadavg()), "quick": "true" if is_quick else "false"}
    counts = [1000] if is_quick else [1000, 10000, 100000, 1000000]
    with open(options.benchmark_out, "w", encoding="utf-8") as file:
        json.dump({"context": context, "benchmarks": [entry(points) for points in counts]}, file)


if __name__ == "__main__":
    main()
