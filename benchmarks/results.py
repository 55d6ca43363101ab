"""What the benchmarks wrote: the files of Google Benchmark in one folder, one for each program."""
import dataclasses
import json
import pathlib
import re

OF_THE_TOOL = {"name", "run_name", "run_type", "repetitions", "repetition_index", "threads", "iterations", "real_time",
               "cpu_time", "time_unit", "family_index", "per_family_instance_index", "aggregate_name",
               "aggregate_unit", "error_occurred", "error_message", "label"}
MILLISECONDS = {"ns": 1e-6, "us": 1e-3, "ms": 1, "s": 1e3}


@dataclasses.dataclass
class Result:
    program: str
    name: str         # Without what says how often it was measured.
    time_ms: float    # The median where it was measured several times.
    counters: dict
    fault: str = ""   # Why there is nothing else.


@dataclasses.dataclass
class Program:
    name: str
    date: str
    load: float  # Of the machine, over the last minute before it began.
    is_quick: bool
    results: list


def plain_name(name):
    return re.sub(r"/(iterations|repeats|min_time):[0-9.]+|/manual_time|/real_time", "", name)


def result_of(program, entry):
    return Result(program, plain_name(entry.get("run_name", entry["name"])),
                  entry.get("real_time", 0) * MILLISECONDS[entry.get("time_unit", "ns")],
                  {key: value for key, value in entry.items()
                   if key not in OF_THE_TOOL and isinstance(value, (int, float))},
                  entry.get("error_message", ""))


def read_program(file):
    data = json.loads(file.read_text(encoding="utf-8"))
    results = {}
    for entry in data["benchmarks"]:
        if entry["run_type"] == "iteration" or entry["aggregate_name"] == "median":
            result = result_of(file.stem, entry)
            results[result.name] = result  # The median comes after what it is of.
    context = data.get("context", {})
    return Program(file.stem, context.get("date", ""), (context.get("load_avg") or [0])[0],
                   context.get("quick") == "true", list(results.values()))


def read_folder(folder):
    return [read_program(file) for file in sorted(pathlib.Path(folder).glob("*.json"))]
