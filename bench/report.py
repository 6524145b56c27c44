#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tells from the results of geometry_bench how kvgeom stands beside the other libraries.

report.py RESULTS.json [DOCUMENT.md PICTURE.svg LIMITS.md]

The document and the picture are for those who choose a library. What we want of ourselves goes into
the limits, between two marks there; the rest of that page is written by hand.
"""

import json
import math
import pathlib
import sys

IN_CACHE, OUT_OF_CACHE = 4096, 1_000_000
PLACES = {IN_CACHE: "in cache", OUT_OF_CACHE: "out of cache"}
LIBRARIES = {"eigen": "Eigen", "imath": "Imath", "occt": "Open CASCADE", "cgal": "CGAL"}
LEVELS = ["L1", "L2", "L3", "memory"]

# Work: title, bytes an element takes, and how many times as fast as the fastest other library kvgeom
# is to be: in cache compiled for the machine and as distributed, and out of cache.
COMPARISONS = {
    "map_points_by_transf": ("Map points by GTransf", 48, 0.9, 2, 1.4),
    "map_points_by_affine": ("Map points by an affine G4x4", 48, 0.9, 2, 1.4),
    "map_points_by_projective": ("Map points by a projective G4x4", 48, 1.3, 3, 1.0),
    "box_of_points": ("Box of points", 24, 2.5, 3.5, 1.5),
    "bore_line_against_boxes": ("One bore line against boxes", 49, 3, 3, 2),
    "clip_volume_against_boxes": ("Six-plane clip volume against boxes", 49, 2.2, 3, 2),
    "map_boxes_by_transf": ("Map boxes by GTransf", 96, 2.5, 3.5, 1.3),
    "map_boxes_by_affine": ("Map boxes by an affine G4x4", 96, 2.5, 3.5, 1.3),
    "points_in_fence": ("Points in a six-plane fence", 25, 2.5, 3, 2),
    "compose_transfs": ("Compose GTransf, flags included", 336, 1.2, 1.5, 1.0),
}
ALL_WORK = COMPARISONS | {"invert_matrices": ("Invert G4x4",)}
# Quotients of two times: title, work, the contenders, and the bound that it may not exceed, or
# must reach.
QUOTIENTS = [
    ("Compose GTransf, single call, to Eigen's product of Affine3d", "compose_transfs",
     "kvgeom_single", "eigen_transform_native", "at most", 1.5),
    ("Compose GTransf, single call, to Eigen's product of Matrix4d", "compose_transfs",
     "kvgeom_single", "eigen_native", "at most", 1.5),
    ("Invert G4x4, single call, to Imath's gjInverse", "invert_matrices",
     "kvgeom_single", "imath_native", "at most", 1),
    ("Invert G4x4, single call to batch", "invert_matrices",
     "kvgeom_single", "kvgeom", "at least", 2),
]
DIFFERENCES = [
    ("Map a point", "map_points_by_transf"),
    ("Bore line against a box", "bore_line_against_boxes"),
]
# Why another library may be faster at a work.
WAITING_FOR_MEMORY = "so many elements come from memory, and whoever waits for it is as fast as it"
# Cycles an element, with AVX2: the least that the units or the instructions of the loop allow, and what
# llvm-mca simulates for it (None: not a loop without branches). How they were found, the limits tell.
FLOORS = {
    "map_points_by_transf": (2.06, 3.79),
    "map_points_by_affine": (2.1, None),
    "map_points_by_projective": (2.58, None),
    "box_of_points": (0.75, 0.75),
    "bore_line_against_boxes": (4.25, None),
    "clip_volume_against_boxes": (5.97, None),
    "map_boxes_by_transf": (5.9, 9.0),
    "map_boxes_by_affine": (5.6, None),
    "points_in_fence": (3.87, None),
}
# Why another library may be faster, where we know it: by the work and by the library or its build.
ROUNDED_TWICE = ("for one processor, a product and a sum become one operation that rounds once; the results of kvgeom are "
                 "stated with two roundings, the same on every platform")
HALF_THE_SIZE = "from centre and half-extent half the arithmetic is needed, but the extremes aren't exact"
REASONS = {
    ("map_points_by_transf", "native"): ROUNDED_TWICE,
    ("map_points_by_affine", "native"): ROUNDED_TWICE,
    ("map_points_by_projective", "native"): ROUNDED_TWICE,
    ("map_boxes_by_transf", "eigen"): HALF_THE_SIZE,
    ("map_boxes_by_affine", "eigen"): HALF_THE_SIZE,
    ("compose_transfs", "eigen"): "it multiplies two 4x4 matrices; kvgeom keeps the scaling apart, and finds out whether "
                                  "the composition rotates",
    ("compose_transfs", "imath"): "it multiplies two 4x4 matrices; kvgeom keeps the scaling apart, and finds out whether "
                                  "the composition rotates",
    ("invert_matrices", "eigen"): "from cofactors, without looking for pivots, an inverse takes fewer operations, but is "
                                  "less exact where the matrix is nearly singular; kvgeom eliminates by the largest pivot "
                                  "of all",
}
WAITING_FOR_MEMORY = "so many elements come from memory, for which all wait alike"
LARGEST_CALL = 2  # ns
LARGEST_GROWTH = 1.2


class Results:
    def __init__(self, path):
        data = json.loads(pathlib.Path(path).read_text())
        self.context = data["context"]
        runs = [run for run in data["benchmarks"] if run["run_type"] == "iteration"]
        self.repetitions = min(run["repetitions"] for run in runs)
        # ns an element, by (work, elements, contender): the least, for what disturbs only adds to it.
        self.times = {}
        self.disagreements = {}
        for run in runs:
            work, count, contender = run["run_name"].split("/")
            key = (work, int(count), contender)
            self.times[key] = min(run["cpu_time"] / int(count), self.times.get(key, math.inf))
            if run.get("disagreements"):
                self.disagreements[key] = int(run["disagreements"])

    def of(self, work, contender, count=IN_CACHE):
        return self.times[work, count, contender]

    def fastest(self, work, count, build):
        """(ns, library) of the other libraries' builds of this kind."""
        return min((ns, LIBRARIES[contender.split("_")[0]])
                   for (w, n, contender), ns in self.times.items()
                   if (w, n) == (work, count) and contender.endswith("_" + build))

    def builds(self, work, count, library, build):
        """ns of what the library does in this build; a work may be done in several ways."""
        return [ns for (w, n, contender), ns in self.times.items()
                if (w, n) == (work, count) and contender.split("_")[0] == library and contender.endswith("_" + build)]

    def bandwidth(self, kind, count):
        """GB/s; a copy reads and writes."""
        [(_, ns)] = [(n, ns) for (w, n, _), ns in self.times.items()
                     if w == "memory_" + kind and n == 48 * count]
        return (2 if kind == "copy" else 1) / ns

    def level(self, size):
        """Where so many bytes lie; None near the size of a cache."""
        caches = {cache["level"]: cache["size"] for cache in self.context["caches"]
                  if cache["type"] != "Instruction"}
        for level in sorted(caches):
            if size <= 0.75 * caches[level]:
                return f"L{level}"
            if size < (3 if level == max(caches) else 1.5) * caches[level]:
                return None
        return "memory"


def verdict(met):
    return "met" if met else "NOT MET"


def sizes(results):
    """Work, title and number of elements of all that is compared."""
    for work, (title, *_) in ALL_WORK.items():
        for count in (IN_CACHE, OUT_OF_CACHE):
            if (work, count, "kvgeom") in results.times:
                yield work, title, count


def times_rows(results, build):
    """How many times as fast as each library, at each work and size."""
    for work, title, count in sizes(results):
        ours = results.of(work, "kvgeom", count)
        cells = [min(results.builds(work, count, library, build), default=None) for library in LIBRARIES]
        yield [title, f"{count:,}", f"{ours:.2f}", *("-" if ns is None else f"{ns / ours:.2f}" for ns in cells)]


def reason(results, work, count, library, build):
    """Why this library may be faster than kvgeom; None where we don't know."""
    if count == OUT_OF_CACHE:
        bandwidth = COMPARISONS[work][1] / results.of(work, "kvgeom", count)
        return WAITING_FOR_MEMORY if bandwidth > 0.7 * results.bandwidth("read", OUT_OF_CACHE) else None
    return REASONS.get((work, library)) or REASONS.get((work, build))


def faster_rivals(results):
    """A line for each library that was faster at a work and size."""
    for work, title, count in sizes(results):
        ours = results.of(work, "kvgeom", count)
        for build, how in (("native", "compiled for the machine"), ("distributed", "as distributed")):
            for library, name in LIBRARIES.items():
                ns = min(results.builds(work, count, library, build), default=ours)
                if ns < ours:
                    why = reason(results, work, count, library, build)
                    yield (f"- **{title}**, {count:,} elements: {name} {how} is {ours / ns:.2f} times as fast "
                           f"({ns:.2f} ns for {ours:.2f}){'' if why is None else ': ' + why}.")


def call_rows(results):
    for work, (title, *_) in ALL_WORK.items():
        single = results.times.get((work, IN_CACHE, "kvgeom_single"))
        if single is not None:
            inlined = results.times.get((work, IN_CACHE, "kvgeom_inlined"))
            theirs, library = results.fastest(work, IN_CACHE, "distributed")
            yield [title, f"{single:.2f}", "-" if inlined is None else f"{inlined:.2f}",
                   f"{results.of(work, 'kvgeom'):.2f}", f"{theirs:.2f} ({library})"]


def million_rows(results):
    for work, (title, size, *_) in COMPARISONS.items():
        ns = results.of(work, "kvgeom", OUT_OF_CACHE)
        yield [title, f"{ns * OUT_OF_CACHE / 1e6:.2f}", f"{size / ns:.0f}"]


def comparison_rows(results):
    for work, (title, _, native, distributed, out_of_cache) in COMPARISONS.items():
        for count, bars in ((IN_CACHE, (native, distributed)), (OUT_OF_CACHE, (out_of_cache, None))):
            ours = results.of(work, "kvgeom", count)
            cells, met = [], True
            for build, bar in zip(("native", "distributed"), bars):
                theirs, library = results.fastest(work, count, build)
                ratio = theirs / ours
                met = met and (bar is None or ratio >= bar)
                cells += [f"{theirs:.2f} ({library})", f"{ratio:.2f}", "-" if bar is None else f"{bar:g}"]
            yield [title, f"{count:,}", f"{ours:.2f}", *cells, verdict(met)]


def quotient_rows(results):
    for title, work, a, b, sense, bound in QUOTIENTS:
        first, second = results.of(work, a), results.of(work, b)
        ratio = first / second
        met = ratio <= bound if sense == "at most" else ratio >= bound
        yield [title, f"{first:.2f}", f"{second:.2f}", f"{ratio:.2f}", f"{sense} {bound:g}", verdict(met)]
    for title, work in DIFFERENCES:
        call, inlined = results.of(work, "kvgeom_single"), results.of(work, "kvgeom_inlined")
        yield [f"{title}, one call, beyond the same arithmetic inlined", f"{call:.2f}", f"{inlined:.2f}",
               f"{call - inlined:.2f} ns", f"at most {LARGEST_CALL} ns", verdict(call - inlined <= LARGEST_CALL)]


def growth_rows(results):
    for work, (title, size, *_) in COMPARISONS.items():
        times = {n: ns for (w, n, contender), ns in sorted(results.times.items())
                 if (w, contender) == (work, "kvgeom")}
        levels = {}
        for n, ns in times.items():
            levels.setdefault(results.level(n * size), {})[n] = ns
        for level in LEVELS if len(times) > 2 else []:
            group = levels.get(level, {})
            if len(group) > 1:
                ratio = max(group.values()) / min(group.values())
                yield [f"{title}, in {level}", ", ".join(f"{n:,}: {ns:.2f}" for n, ns in group.items()),
                       f"{ratio:.2f}", verdict(ratio <= LARGEST_GROWTH)]
    for (work, count, contender), ns in sorted(results.times.items()):
        if contender == "kvgeom_sorted":
            shuffled = results.of(work, "kvgeom", count)
            ratio = max(ns, shuffled) / min(ns, shuffled)
            yield [f"{ALL_WORK[work][0]}, {count:,}", f"shuffled: {shuffled:.2f}, sorted: {ns:.2f}",
                   f"{ratio:.2f}", verdict(ratio <= LARGEST_GROWTH)]


def floor_rows(results):
    # Two additions begin in a cycle.
    cycle = 2 * next(ns for (work, *_), ns in results.times.items() if work == "machine_add")
    for work, (floor, simulated) in FLOORS.items():
        ours = results.of(work, "kvgeom")
        yield [COMPARISONS[work][0], f"{floor * cycle:.2f}", "-" if simulated is None else f"{simulated * cycle:.2f}",
               f"{ours:.2f}", f"{ours / (floor * cycle):.2f}"]


def machine_rows(results):
    for (work, *_), ns in sorted(results.times.items()):
        if work.startswith("machine_"):
            yield [work.removeprefix("machine_").replace("_", " "), f"{ns:.2f}"]


def table(head, rows):
    rows = list(rows)
    widths = [max(len(row[i]) for row in [head, *rows]) for i in range(len(head))]
    lines = ["| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |"
             for row in [head, ["-" * width for width in widths], *rows]]
    return "\n".join(lines)


def sections(parts):
    return "\n\n".join(f"{title}\n\n{text}" for title, text in parts)


def for_readers(results):
    """Title and text of each part of the page."""
    head = ["work", "elements", "kvgeom, ns", *LIBRARIES.values()]
    yield "## How many times as fast", (
        "As each library compiled for the machine (`-O3 -march=native`); below 1, that library is faster.\n\n" +
        table(head, times_rows(results, "native")) +
        "\n\nAs each library compiled the way programs are distributed (`-O3`), as kvgeom is:\n\n" +
        table(head, times_rows(results, "distributed")))
    lines = list(faster_rivals(results))
    yield "## Where another library is faster", "\n".join(lines) if lines else "Nowhere in this run."
    yield "## What one call costs", (
        "Nanoseconds for one element: by a call, by the same arithmetic in the caller's code, by a call for 4,096 of "
        "them at once, and by the fastest of the other libraries as distributed. Most of these are headers, and "
        "work on many elements without any call: who has one element at a time pays for it here.\n\n" +
        table(["work", "one call", "inlined", "of many", "another library"], call_rows(results)))
    yield "## What a million costs", (
        "By one call, on one core; with the memory that is read and written.\n\n" +
        table(["work", "ms", "GB/s"], million_rows(results)))


def for_us(results):
    """What we want of ourselves, and what was measured."""
    yield "### Beside other libraries", (
        "Nanoseconds an element, and how many times as fast kvgeom is as the fastest of the others.\n\n" +
        table(["work", "elements", "kvgeom", "fastest for the machine", "times", "wanted", "fastest as distributed",
               "times", "wanted", ""], comparison_rows(results)))
    if results.context["vectors"] == "AVX2":
        yield "### Floors", (
            "Nanoseconds an element, in cache.\n\n" +
            table(["work", "floor", "simulated", "measured", "times the floor"], floor_rows(results)))
    yield "### Single calls", table(["call", "first", "second", "", "wanted", ""], quotient_rows(results))
    yield "### Growth and order", (
        "The ratio of the slowest to the fastest; 1.2 at most is wanted.\n\n" +
        table(["work", "by elements", "ratio", ""], growth_rows(results)))
    machine = list(machine_rows(results))
    if machine:
        yield "### What the processor can do", (
            f"Nanoseconds for an operation on {results.context['machine_lanes']} numbers, of which eight are under way "
            "at a time; of two kinds in turns, for each.\n\n" + table(["operation", "ns"], machine))


def all_rows(results):
    for work, (title, *_) in ALL_WORK.items():
        for (w, count, contender), ns in sorted(results.times.items(), key=lambda item: (item[0][1], item[1])):
            if w == work and (contender.startswith("kvgeom") is False or count in (IN_CACHE, OUT_OF_CACHE)):
                yield [title, f"{count:,}", contender, f"{ns:.2f}",
                       str(results.disagreements.get((w, count, contender), 0))]


def document(results, picture):
    context = results.context
    versions = ", ".join(f"{name} {context[key]}" for key, name in LIBRARIES.items())
    memory = "; ".join(f"{kind} {results.bandwidth(kind, OUT_OF_CACHE):.1f} GB/s over 48 MB, "
                       f"{results.bandwidth(kind, 10 * OUT_OF_CACHE):.1f} GB/s over 480 MB"
                       for kind in ("read", "copy"))
    every = table(["work", "elements", "contender", "ns", "disagreements"], all_rows(results))
    return f"""# Performance

Written by `scripts/bench`. All figures are from one run: the least of {results.repetitions} repetitions in random
order (whatever else the machine does can only add to it), in nanoseconds of processor time an element, on
one core.

- Processor: {context.get("processor", "unknown")}, {context["num_cpus"]} cores
- Vector code that kvgeom chose: {context["vectors"]}
- Compiler: {context.get("compiler", "unknown")}
- Memory: {memory}
- Other libraries: {versions}

kvgeom is the shared library as it is installed: one build for all x86-64 processors, which chooses vector
code when it is loaded. Functions inside Open CASCADE's libraries are as Debian compiled them. Each
library works on arrays of its own types, made from the same records: 4,096 elements stay in the
caches, 1,000,000 don't. The answers are compared before anything is measured: coordinates agree
within 1e-9 of the largest, tests but for the disagreements counted below.

![How many times as fast kvgeom is]({picture})

What limits these figures, and what we want of them, is [a page of its own](performance-limits.md).

{sections(for_readers(results))}

## Every contender

`kvgeom` is the batch call, `kvgeom_single` a call for each element, `kvgeom_inlined` the arithmetic of such a
call without the call, `kvgeom_sorted` the batch call on elements in the order of x.

{every}
"""


BEGIN_MEASURED = "<!-- Measured: written by scripts/bench -->\n"
END_MEASURED = "<!-- End of what was measured -->\n"


def with_measured(text, measured):
    """The text with what is between the marks replaced."""
    before, rest = text.split(BEGIN_MEASURED)
    after = rest.split(END_MEASURED)[1]
    return f"{before}{BEGIN_MEASURED}\n{measured}\n\n{END_MEASURED}{after}"


BAR_COLOURS = {"native": "#2f7ed8", "distributed": "#e08a1e"}


def picture(results):
    """Bars of how many times as fast kvgeom is."""
    rows = [(f"{title}, {place}", {build: results.fastest(work, count, build)[0] /
                                   results.of(work, "kvgeom", count) for build in BAR_COLOURS})
            for work, title, count in sizes(results) for place in [PLACES[count]]]
    left, right, top, step, bar = 330, 60, 60, 38, 13
    width, height = 900, top + step * len(rows) + 20
    scale = (width - left - right) / max(1, *(ratio for _, bars in rows for ratio in bars.values()))
    shapes = []
    for i, (build, text) in enumerate((("native", "against the fastest compiled for the machine"),
                                       ("distributed", "against the fastest as distributed"))):
        shapes.append(f'<rect x="{left}" y="{12 + 20 * i}" width="12" height="12" fill="{BAR_COLOURS[build]}"/>'
                      f'<text x="{left + 18}" y="{22 + 20 * i}">times as fast {text}</text>')
    for i, (label, bars) in enumerate(rows):
        y = top + step * i
        shapes.append(f'<text x="{left - 8}" y="{y + bar + 4}" text-anchor="end">{label}</text>')
        for k, (build, ratio) in enumerate(bars.items()):
            # Not across the line.
            end = max(ratio, 1) if 0.8 < ratio else ratio
            shapes.append(f'<rect x="{left}" y="{y + k * bar}" width="{ratio * scale:.1f}" height="{bar - 1}" '
                          f'fill="{BAR_COLOURS[build]}"/><text x="{left + end * scale + 5:.1f}" '
                          f'y="{y + k * bar + 10}">{ratio:.2f}</text>')
    shapes.append(f'<line x1="{left + scale:.1f}" y1="{top - 8}" x2="{left + scale:.1f}" y2="{height - 12}"/>')
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" role="img" '
        f'aria-label="How many times as fast kvgeom is">',
        "<style>text { font: 12px sans-serif; fill: #24292f } line { stroke: #24292f; stroke-dasharray: 4 3 }",
        "@media (prefers-color-scheme: dark) { text { fill: #e6edf3 } line { stroke: #e6edf3 } }</style>",
        *shapes, "</svg>", ""])


def main(arguments):
    results = Results(arguments[0])
    print(f"The least of {results.repetitions} repetitions, ns an element\n\n{sections([*for_readers(results), *for_us(results)])}")
    if len(arguments) > 1:
        written, drawn, limits = map(pathlib.Path, arguments[1:])
        drawn.write_text(picture(results))
        written.write_text(document(results, drawn.name))
        limits.write_text(with_measured(limits.read_text(), sections(for_us(results))))


if __name__ == "__main__":
    main(sys.argv[1:])
