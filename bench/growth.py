"""Prints the figures of a benchmark run, and for each benchmark that ran at several sizes the slope of its growth:
1 is linear, 2 quadratic. Times are those of the processor: other work on the machine counts less. The slope is that of a straight line fitted to the logarithms of size and time."""
import json
import math
import re
import sys
from collections import defaultdict


def slope(points):
    logs = [(math.log(size), math.log(time)) for size, time in points]
    mean_x = sum(x for x, _ in logs) / len(logs)
    mean_y = sum(y for _, y in logs) / len(logs)
    spread = sum((x - mean_x) ** 2 for x, _ in logs)
    return sum((x - mean_x) * (y - mean_y) for x, y in logs) / spread


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    factor = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}
    groups = defaultdict(list)
    for run in runs:
        if run.get("run_type") == "aggregate" and run.get("aggregate_name") != "median":
            continue
        name = run["name"].removesuffix("_median")
        match = re.match(r"([^/]+)(?:/(\d+))?", name)
        size = int(match.group(2)) if match.group(2) else None
        groups[match.group(1)].append((size, run["cpu_time"] * factor[run["time_unit"]]))
    width = max(len(name) for name in groups)
    for name, points in groups.items():
        growth = f"   slope {slope(points):.2f}" if len(points) > 2 else ""
        figures = "  ".join(f"{time:10.3f} ms" + (f" at {size:>7}" if size else "") for size, time in points)
        print(f"{name:<{width}}  {figures}{growth}")


if __name__ == "__main__":
    main()
