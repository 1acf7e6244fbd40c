#!/usr/bin/env python3
"""tables.py times FILE...             what the benchmark programs wrote, one JSON file for each
tables.py latencies NUMBER FILE     what BenchmarkFiles wrote, a JSON document a line, NUMBER for a row
tables.py compile COMPILER NUMBER   the time to compile compile/TenLines.cpp, NUMBER times

Writes a Markdown table to standard output, or nothing if no row was measured. For `compile`, each line of standard input is a name in the
table and the flags to compile with; the one named Empty is what the others are compared with.
"""

import json
import pathlib
import shlex
import statistics
import subprocess
import sys
import time


def documents(path):
    """The results in a file, one for each call of measure (Driver.h)."""
    text = pathlib.Path(path).read_text().strip()
    decoder = json.JSONDecoder()
    result = []
    try:
        while text:
            document, end = decoder.raw_decode(text)
            result.append(document)
            text = text[end:].lstrip()
    except json.JSONDecodeError:
        result.clear()
    if not result or result.pop() != {"complete": True}:
        sys.exit(f"tables.py: {path} is incomplete")
    return result


def measured_rows(paths):
    """{workload: {subject: (role, times in ns)}}, both in the order of the programs."""
    workloads = {}
    for path in paths:
        for document in documents(path):
            runs = [run for run in document["benchmarks"] if run["run_type"] == "iteration"]
            for run in sorted(runs, key=lambda run: run["family_index"]):
                workload, subject = run["run_name"].removesuffix("/real_time").split(" | ")
                rows = workloads.setdefault(workload, {})
                rows.setdefault(subject, (run["label"], []))[1].append(run["real_time"])
                if run["time_unit"] != "ns":
                    sys.exit(f"tables.py: {path} is not in nanoseconds")
            for run in runs:
                workload, subject = run["run_name"].removesuffix("/real_time").split(" | ")
                count = len(workloads[workload][subject][1])
                if count != run["repetitions"]:
                    sys.exit(f"tables.py: {path}: {run['run_name']} was measured {count} times")
    return workloads


def write_times(paths):
    workloads = measured_rows(paths)
    if not workloads:
        return
    print("| Work | Subject | ns, median | to the floor | to the best peer |")
    print("|---|---|--:|--:|--:|")
    for workload, rows in workloads.items():
        medians = {subject: statistics.median(times) for subject, (_, times) in rows.items()}

        def best(role):
            return min((medians[s] for s in rows if rows[s][0] == role), default=None)

        floor, peer = best("floor"), best("peer")
        for number, (subject, (role, _)) in enumerate(rows.items()):
            median = medians[subject]
            is_product = role == "product"
            mark = "**" if is_product else ""
            print(
                f"| {'' if number else workload} | {mark}{subject}{mark} "
                f"| {mark}{median:.{1 if median < 100 else 0}f}{mark} "
                f"| {f'{median / floor:.2f}' if floor else ''} "
                f"| {f'{median / peer:.2f}' if is_product and peer else ''} |"
            )


def write_latencies(repetitions, path):
    columns = ["p50", "p99", "p99.9", "max"]
    workloads = {}
    for line in pathlib.Path(path).read_text().splitlines():
        run = json.loads(line)
        workload, subject = run["row"].split(" | ")
        rows = workloads.setdefault(workload, {})
        rows.setdefault(subject, (run["role"], []))[1].append([run[column] for column in columns])
    if not workloads:
        return
    print(f"| Work | Subject | {' | '.join(columns)} | p50 to the floor |")
    print("|---|---|--:|--:|--:|--:|--:|")
    for workload, rows in workloads.items():
        medians = {}
        for subject, (_, runs) in rows.items():
            if len(runs) != repetitions:
                sys.exit(f"tables.py: {workload} | {subject} was measured {len(runs)} times")
            medians[subject] = [statistics.median(column) for column in zip(*runs)]
        floor = min((medians[s][0] for s in rows if rows[s][0] == "floor"), default=None)
        for number, (subject, (role, _)) in enumerate(rows.items()):
            mark = "**" if role == "product" else ""
            cells = [f"{mark}{median:.0f}{mark}" for median in medians[subject]]
            ratio = f"{medians[subject][0] / floor:.2f}" if floor else ""
            print(
                f"| {'' if number else workload} | {mark}{subject}{mark} "
                f"| {' | '.join(cells)} | {ratio} |"
            )


def write_compile_times(compiler, repetitions):
    source = pathlib.Path(__file__).parent / "compile" / "TenLines.cpp"
    libraries = [shlex.split(line) for line in sys.stdin]
    times = {name: [] for name, *_ in libraries}
    for _ in range(repetitions):
        for name, *flags in libraries:
            command = [compiler, "-O2", "-std=c++17", *flags, "-c", source, "-o", "/dev/null"]
            start = time.monotonic()
            subprocess.run(command, check=True)
            times[name].append((time.monotonic() - start) * 1000)
    medians = {name: statistics.median(measured) for name, measured in times.items()}
    print("| A source with ten lines of | ms to compile, median | more than an empty one |")
    print("|---|--:|--:|")
    for name, median in medians.items():
        print(f"| {name} | {median:.0f} | {median - medians['Empty']:.0f} |")


if sys.argv[1:2] == ["times"] and len(sys.argv) > 2:
    write_times(sys.argv[2:])
elif sys.argv[1:2] == ["latencies"] and len(sys.argv) == 4:
    write_latencies(int(sys.argv[2]), sys.argv[3])
elif sys.argv[1:2] == ["compile"] and len(sys.argv) == 4:
    write_compile_times(sys.argv[2], int(sys.argv[3]))
else:
    sys.exit(__doc__)
