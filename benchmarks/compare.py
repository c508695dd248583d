#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the frame benchmarks and writes their figures as tables.

The programs print one line of JSON each. What is compared with each other runs in turns, and each figure
is the median of the programs' blocks of frames, so that a moment in which the machine was busy weighs
little. Every table stands below the command that made its figures.
"""

import argparse
import json
import os
import platform
import statistics
import subprocess
import sys
from pathlib import Path

ROUNDS = 3


class Failure(Exception):
    """One line that says what went wrong."""


class Programs:
    """The programs of one build, and what they have printed so far."""

    def __init__(self, folder, log):
        self.frame = Path(folder) / "frame" / "frame_benchmark"
        self.peer = Path(folder) / "peers" / "peer_benchmark"
        self.micro = Path(folder) / "micro" / "micro_benchmarks"
        for program in (self.frame, self.micro):
            if not os.access(program, os.X_OK):
                raise Failure(f"{program}: not there, build the benchmarks first")
        self.log = log

    @property
    def has_peer(self):
        return os.access(self.peer, os.X_OK)

    def run(self, program, arguments, timeout=600):
        command = [str(program), *arguments.split()]
        try:
            result = subprocess.run(command, capture_output=True, text=True, timeout=timeout)
        except subprocess.TimeoutExpired:
            raise Failure(f"{program.name} {arguments}: no end after {timeout} s") from None
        if result.returncode != 0:
            last = (result.stderr.strip().splitlines() or ["no message"])[-1]
            raise Failure(f"{program.name} {arguments}: exit code {result.returncode}, {last}")
        return result.stdout

    def line(self, program, arguments):
        text = self.run(program, arguments)
        try:
            line = json.loads(text)
        except json.JSONDecodeError:
            raise Failure(f"{program.name} {arguments}: not a line of JSON: {text[:80]!r}") from None
        self.log.write(json.dumps({"arguments": arguments, **line}) + "\n")
        self.log.flush()
        return line

    def in_turns(self, *runs, rounds=ROUNDS):
        """Runs each (program, arguments) once a round. Returns for each the median of every number."""
        lines = [[] for _ in runs]
        for _ in range(rounds):
            for known, (program, arguments) in zip(lines, runs):
                known.append(self.line(program, arguments))
        return [medians(known) for known in lines]


def medians(lines):
    merged = dict(lines[0])
    for key, value in merged.items():
        if isinstance(value, (int, float)) and not isinstance(value, bool):
            merged[key] = statistics.median(line[key] for line in lines)
    return merged


class Report:
    def __init__(self):
        self.parts = []

    def section(self, title, text=""):
        self.parts.append(f"### {title}\n")
        if text:
            self.parts.append(text + "\n")

    def table(self, header, rows):
        lines = ["| " + " | ".join(header) + " |",
                 "|" + "|".join(" --- " if i == 0 else " ---: " for i in range(len(header))) + "|"]
        lines += ["| " + " | ".join(row) + " |" for row in rows]
        self.parts.append("\n".join(lines) + "\n")

    def text(self):
        return "\n".join(self.parts)


def number(value, digits=2):
    return f"{value:,.{digits}f}".replace(",", " ")


def count(value):
    return f"{round(value):,}".replace(",", " ") if value == round(value) else number(value)


def ratio(own, least):
    """How much more; a difference below the noise of a measurement has none."""
    return number(own / least) if least > 0.05 else "–"


def frames_for(points, traces, fast):
    """So many frames that a run takes seconds, not minutes, where OpenGL is software."""
    if fast:
        return 100
    return max(5, min(50, 5_000_000 // max(points * traces, 1)))


# --- The sections


class Benchmarks:
    def __init__(self, programs, report, options):
        self.programs = programs
        self.report = report
        self.options = options
        self.fast = False
        self.empty = {}

    def machine(self):
        probe = self.programs.line(self.programs.frame, "--frames 5 --points 1000")
        software = ("llvmpipe", "softpipe", "swrast", "none", "SwiftShader")
        self.fast = not any(name in probe["renderer"] for name in software)
        self.report.section("Machine")
        self.report.table(["what", "which"], [
            ["processor", f"{cpu_name()}, {os.cpu_count()} cores"],
            ["system", f"{os_name()}, Linux {platform.release()}"],
            ["OpenGL", probe["renderer"]],
            ["samples granted", str(probe["samples"])],
            ["scene graph", "threaded" if probe["threaded"] else "on the GUI thread"],
        ])

    def over_floor(self):
        self.report.section(
            "A frame over the floor",
            "Processor time of the process in ms a frame, the empty window's own frame taken off. The "
            "floor is the same work in bare OpenGL calls, its empty window taken off, too.")
        rows = []
        works = [(mode, points, traces, samples)
                 for samples in ("on", "off") for mode in ("append", "static")
                 for points in (100_000, 1_000_000) for traces in (1, 8)]
        if not self.options.full and not self.fast:
            # Eight million vertices take a software renderer minutes.
            works = [work for work in works if work[1] * work[2] <= 1_000_000]
        for mode, points, traces, samples in works:
            rows.append(self.floor_row(mode, points, traces, samples))
        self.report.table(
            ["mode", "points", "traces", "samples", "chart", "floor", "ratio",
             "chart, wall"], rows)

    def floor_row(self, mode, points, traces, samples):
        frames = frames_for(points, traces, self.fast)
        work = (f"--mode {mode} --points {points} --traces {traces} --samples {samples} "
                f"--frames {frames}")
        frame = self.programs.frame
        # In turns with their own empty windows: what the machine does besides changes in minutes.
        chart, floor, empty, bare = self.programs.in_turns(
            (frame, work), (frame, work + " --floor"),
            (frame, "--empty --frames 50"), (frame, "--floor --empty --frames 50"),
            rounds=1 if points * traces > 1_000_000 and not self.fast else ROUNDS)
        own = chart["cpu_ms"] - empty["cpu_ms"]
        least = floor["cpu_ms"] - bare["cpu_ms"]
        return [mode, count(points), str(traces), samples, number(own), number(least),
                ratio(own, least), number(chart["wall_median_ms"])]

    def counters(self):
        self.report.section(
            "What is uploaded and drawn",
            "Bytes uploaded, draw calls, passes and pixel reads of the chart in a frame; counted, "
            "not timed.")
        rows = []
        for mode in ("append", "rewrite", "static", "pan", "hover", "idle"):
            for points, traces in ((10_000, 1), (10_000, 8), (200_000, 1)):
                line = self.programs.line(
                    self.programs.frame,
                    f"--mode {mode} --points {points} --traces {traces} --frames 10 --size 400x300")
                rows.append([mode, count(points), str(traces), count(line["uploaded_bytes"]),
                             count(line["draw_calls"]), count(line["passes"]),
                             count(line["read_backs"])])
        self.report.table(["mode", "points", "traces", "bytes", "draw calls", "passes", "reads"], rows)

    def resting(self):
        self.report.section(
            "Resting data",
            "100 000 points that do not change, while every tick asks for a frame. The scene graph "
            "draws the window again each time, and in it the chart's picture, which is one textured "
            "rectangle: the floor's is beside it. The share is that of the chart without traces.")
        frame = self.programs.frame
        idle, hover, without, empty, floor, bare = self.programs.in_turns(
            (frame, "--mode idle"), (frame, "--mode hover"), (frame, "--mode idle --traces 0"),
            (frame, "--empty"), (frame, "--mode idle --floor"), (frame, "--floor --empty"))
        rows = [[name, number(line["cpu_ms"]), number(line["cpu_ms"] / without["cpu_ms"]),
                 number(line["cpu_render_thread_ms"]), count(line["passes"]),
                 count(line["read_backs"])]
                for name, line in (
                    ("window without a chart", empty), ("chart without traces", without),
                    ("chart, data resting", idle), ("chart, pointer moving over it", hover),
                    ("floor: window cleared", bare), ("floor: picture shown", floor))]
        self.report.table(
            ["window", "CPU ms", "share", "of it, render thread", "passes", "reads"], rows)

    def many_traces(self):
        self.report.section(
            "Many traces", "A million points in many traces, then traces of two points. CPU in ms a "
                           "frame, the empty window's taken off.")
        rows = []
        frame = self.programs.frame
        for mode, points, traces in (("append", 1000, 1000), ("static", 1000, 1000),
                                     ("static", 100, 10_000), ("static", 2, 1000),
                                     ("static", 2, 10_000)):
            frames = 100 if self.fast else 10
            work = f"--mode {mode} --points {points} --traces {traces} --frames {frames}"
            chart, floor, empty, bare = self.programs.in_turns(
                (frame, work), (frame, work + " --floor"), (frame, "--empty --frames 50"),
                (frame, "--floor --empty --frames 50"))
            own = chart["cpu_ms"] - empty["cpu_ms"]
            least = floor["cpu_ms"] - bare["cpu_ms"]
            rows.append([mode, count(points), count(traces), number(own), number(least),
                         ratio(own, least), number(1000 * (own - least) / traces, 1)])
        self.report.table(
            ["mode", "points", "traces", "chart", "floor", "ratio", "difference, µs a trace"], rows)

    def large_data(self):
        self.report.section(
            "Ten million samples",
            "A trace that draws the smallest and the largest sample of each column of pixels, beside a "
            "plain trace of 4000 points that are all written anew; `append` takes 1000 samples a frame, "
            "`pan` shows a tenth of them.")
        frame = self.programs.frame
        works = [("plain, 4000 points", "--mode rewrite --points 4000")]
        works += [(f"{mode}, {count(points)} samples",
                   f"--mode {mode} --points {points} --decimated")
                  for mode in ("append", "pan") for points in (100_000, 1_000_000, 10_000_000)]
        lines = self.programs.in_turns(*((frame, work) for _, work in works))
        plain = lines[0]["cpu_ms"]
        self.report.table(
            ["trace", "CPU ms", "of the plain one's", "bytes uploaded", "wall ms"],
            [[name, number(line["cpu_ms"]), number(line["cpu_ms"] / plain),
              count(line["uploaded_bytes"]), number(line["wall_median_ms"])]
             for (name, _), line in zip(works, lines)])

    def memory(self):
        self.report.section(
            "Memory of a trace",
            "Bytes on the heap. The first two lines are the trace object with its domain and its data but "
            "without vertices, and its place in a chart. The others are what 500 more traces of two points "
            "add to a program that has drawn them, divided by 500: the renderer's and the driver's share "
            "is in it.")
        rows = []
        for result in self.micro_results("traceMemory"):
            traces = result["run_name"].split(":")[1].split("/")[0]
            rows.append([f"trace object, one of {traces}", count(round(result["objectBytes"]))])
            rows.append([f"place in a chart, one of {traces}", count(round(result["placeBytes"]))])
        frame = self.programs.frame
        for name, extra in (("drawn by a chart", ""), ("drawn by the floor", " --floor")):
            few, many = self.programs.in_turns(
                *((frame, f"--mode idle --points 2 --traces {traces} --frames 50 --size 64x64 "
                          f"--samples off" + extra) for traces in (10, 510)))
            rows.append([name, count(round((many["heap_bytes"] - few["heap_bytes"]) / 500))])
        points = self.programs.line(frame, "--mode append --points 100000 --frames 10")
        rows.append(["vertex buffer, of a point", count(points["buffer_bytes"] / points["points"])])
        self.report.table(["what", "bytes"], rows)

    def first_frame(self):
        self.report.section(
            "First frame", "From the beginning until the first frame is on the screen, in ms; a trace "
                           "of 1000 points, caches warm, medians of seven.")
        frame = self.programs.frame
        empty, chart, floor_empty, floor = self.programs.in_turns(
            (frame, "--empty --frames 5"), (frame, "--points 1000 --frames 5"),
            (frame, "--empty --floor --frames 5"), (frame, "--points 1000 --frames 5 --floor"),
            rounds=7)
        rows = [[name, number(line["first_frame_ms"], 1)]
                for name, line in (("empty window", empty), ("chart", chart),
                                   ("floor, empty", floor_empty), ("floor", floor))]
        rows.append(["chart beyond the empty window",
                     number(chart["first_frame_ms"] - empty["first_frame_ms"], 1)])
        rows.append(["floor beyond its empty window",
                     number(floor["first_frame_ms"] - floor_empty["first_frame_ms"], 1)])
        self.report.table(["window", "ms"], rows)

    def grid(self):
        self.report.section(
            "A grid of 100 lines that changes every frame", "ms of CPU a frame.")
        frame = self.programs.frame
        grid, empty = self.programs.in_turns((frame, "--mode grid"), (frame, "--empty"))
        self.report.table(
            ["window", "CPU ms", "of it, render thread", "draw calls"],
            [[name, number(line["cpu_ms"]), number(line["cpu_render_thread_ms"]),
              count(line["all_draw_calls"])] for name, line in
             (("grid", grid), ("empty", empty))]
            + [["the grid's", number(grid["cpu_ms"] - empty["cpu_ms"]),
                number(grid["cpu_render_thread_ms"] - empty["cpu_render_thread_ms"]), ""]])

    def peers(self):
        self.report.section(
            "Beside Qt Charts",
            "The same data, plot size and number of samples. CPU in ms a frame, the empty window's "
            "taken off; in the last column what lies beyond the floor, as a share of what Qt Charts "
            "with OpenGL needs beyond it. In `static`, which changes a colour, Qt Charts paints and uploads "
            "its raster image as well.")
        if not self.programs.has_peer:
            self.report.parts.append("Qt Charts was not installed when the benchmarks were built.\n")
            return
        rows = []
        frame, peer = self.programs.frame, self.programs.peer
        works = [("append", 100_000, 1), ("append", 10_000, 8), ("static", 100_000, 1),
                 ("rewrite", 100_000, 1), ("pan", 100_000, 1), ("idle", 100_000, 1),
                 ("hover", 100_000, 1)]
        if self.options.full:
            works += [("append", 1_000_000, 1), ("static", 1_000_000, 1), ("pan", 1_000_000, 1),
                      ("append", 100_000, 8), ("static", 1000, 1000), ("append", 1_000_000, 8)]
        for mode, points, traces in works:
            rows.append(self.peer_row(mode, points, traces))
        self.report.table(["mode", "points", "traces", "chart", "Qt Charts, OpenGL",
                           "Qt Charts, raster", "floor", "beyond the floor"], rows)

    def peer_row(self, mode, points, traces):
        frame, peer = self.programs.frame, self.programs.peer
        frames = min(frames_for(points, traces, self.fast), 30)
        work = f"--mode {mode} --points {points} --traces {traces} --frames {frames}"
        # A pointer that moves changes nothing in what is to be drawn.
        floor_work = work.replace("--mode hover", "--mode idle") + " --floor"
        lines = self.programs.in_turns(
            (frame, work), (peer, work + " --opengl"), (frame, "--empty --frames 50"),
            (frame, "--floor --empty --frames 50"), (frame, floor_work))
        empty = lines[2]["cpu_ms"]
        chart = lines[0]["cpu_ms"] - empty
        opengl = lines[1]["cpu_ms"] - empty
        # Seconds a frame: once is enough.
        raster_work = f"--mode {mode} --points {points} --traces {traces} --frames 5"
        raster = self.programs.line(peer, raster_work)["cpu_ms"] - empty
        floor = lines[4]["cpu_ms"] - lines[3]["cpu_ms"]
        beyond = opengl - floor
        share = f"{100 * max(chart - floor, 0) / beyond:.0f} %" if beyond > 0.05 else "–"
        return [mode, count(points), str(traces), number(chart), number(opengl), number(raster),
                number(floor), share]

    def micro(self):
        self.report.section(
            "Single functions",
            "Google Benchmark, medians of five, in ns.")
        rows = []
        for result in self.micro_results("-traceMemory"):
            scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[result["time_unit"]]
            speed = result.get("bytes_per_second")
            rows.append([f"`{result['run_name'].removesuffix('/real_time')}`",
                         number(result["cpu_time"] * scale, 1),
                         number(result["real_time"] * scale, 1),
                         f"{speed / 1e9:.2f} GB/s" if speed else ""])
        self.report.table(["function", "CPU of its thread", "wall", "speed"], rows)

    def micro_results(self, choice):
        text = self.programs.run(
            self.programs.micro,
            "--benchmark_repetitions=5 --benchmark_report_aggregates_only=true "
            f"--benchmark_min_time=0.02 --benchmark_format=json --benchmark_filter={choice}")
        try:
            return [result for result in json.loads(text)["benchmarks"]
                    if result["aggregate_name"] == "median"]
        except (json.JSONDecodeError, KeyError):
            raise Failure(f"{self.programs.micro.name}: not the JSON of its aggregates") from None


def cpu_name():
    for line in Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.machine()


def os_name():
    try:
        return platform.freedesktop_os_release()["PRETTY_NAME"]
    except OSError:
        return platform.system()


SECTIONS = ("machine", "over_floor", "counters", "resting", "many_traces", "large_data", "memory",
            "first_frame", "grid", "peers", "micro")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", help="folder of the built benchmarks")
    parser.add_argument("--output", default=".", help="folder for results.jsonl and results.md")
    parser.add_argument("--full", action="store_true", help="also what takes a software renderer long")
    parser.add_argument("--only", metavar="SECTION", choices=SECTIONS, action="append",
                        help="one of: " + ", ".join(SECTIONS))
    options = parser.parse_args()

    output = Path(options.output)
    try:
        output.mkdir(parents=True, exist_ok=True)
        # With the tables of another run they would be taken for one.
        (output / "results.md").unlink(missing_ok=True)
        with open(output / "results.jsonl", "w", encoding="utf-8") as log:
            report = Report()
            benchmarks = Benchmarks(Programs(options.build, log), report, options)
            for section in SECTIONS:
                if section == "machine" or not options.only or section in options.only:
                    print(section.replace("_", " "), flush=True)
                    getattr(benchmarks, section)()
        (output / "results.md").write_text(report.text(), encoding="utf-8")
    except (Failure, OSError) as failure:
        print(f"compare.py: {failure}", file=sys.stderr)
        return 1
    print(report.text())
    return 0


if __name__ == "__main__":
    sys.exit(main())
