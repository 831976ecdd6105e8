#!/usr/bin/env python3
"""plot.py CSV SVG: draws what measure.py has written: the loaders' time and memory an entry, and our growth."""

import csv
import html
import math
import sys

WIDTH = 860
ROW = 24
LABELS = 150
OURS, THEIRS, FLOOR = "#c0392b", "#5d6d7e", "#b2babb"
COLORS = {"ours": OURS, "floor-map": FLOOR, "floor-cheap": FLOOR}


class Drawing:
    def __init__(self):
        self.parts = []

    def text(self, x, y, text, anchor="start", weight="normal", size=13):
        self.parts.append(f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" font-weight="{weight}" '
                          f'font-size="{size}">{html.escape(text)}</text>')

    def bar(self, x, y, width, height, color):
        self.parts.append(f'<rect x="{x:.1f}" y="{y:.1f}" width="{width:.1f}" height="{height:.1f}" fill="{color}"/>')

    def line(self, points, color, width=2):
        path = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
        self.parts.append(f'<polyline points="{path}" fill="none" stroke="{color}" stroke-width="{width}"/>')

    def written(self, name, height):
        with open(name, "w", encoding="utf-8") as file:
            file.write(f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
                       f'viewBox="0 0 {WIDTH} {height}" font-family="sans-serif">\n'
                       f'<rect width="{WIDTH}" height="{height}" fill="white"/>\n' + "\n".join(self.parts) +
                       "\n</svg>\n")


def bars(drawing, top, title, values):
    """Horizontal bars on a logarithmic scale, the shortest first."""
    drawing.text(10, top + 16, title, weight="bold", size=15)
    low = math.log10(min(values.values())) - 0.3
    scale = (WIDTH - LABELS - 90) / (math.log10(max(values.values())) - low)
    y = top + 30
    for name, value in sorted(values.items(), key=lambda item: item[1]):
        width = (math.log10(value) - low) * scale
        drawing.text(LABELS - 8, y + 15, name, "end", "bold" if name == "ours" else "normal")
        drawing.bar(LABELS, y + 3, width, ROW - 7, COLORS.get(name, THEIRS))
        drawing.text(LABELS + width + 6, y + 15, f"{value:,.0f}")
        y += ROW
    return y + 20


def curves(drawing, top, title, series):
    """A line for each series of (size, value), sizes on a logarithmic scale."""
    height = 240
    drawing.text(10, top + 16, title, weight="bold", size=15)
    sizes = sorted({size for points in series.values() for size, _ in points})
    highest = max(value for points in series.values() for _, value in points) * 1.05
    left, right, bottom = 70, WIDTH - 190, top + 40 + height

    def place(size, value):
        across = math.log(size / sizes[0]) / math.log(sizes[-1] / sizes[0])
        return left + across * (right - left), bottom - value / highest * height

    for size in sizes:
        x, _ = place(size, 0)
        drawing.line([(x, bottom), (x, bottom - height)], "#eaecee", 1)
        drawing.text(x, bottom + 18, f"{size:,}", "middle")
    step = 10 ** math.floor(math.log10(highest))
    for value in range(0, int(highest) + 1, int(step)):
        drawing.text(left - 8, place(sizes[0], value)[1] + 4, f"{value:,}", "end")
        drawing.line([place(sizes[0], value), place(sizes[-1], value)], "#eaecee", 1)
    hues = [OURS, "#2874a6", "#239b56", "#b7950b", "#7d3c98", "#566573", "#ca6f1e", "#17a589"]
    labels = []
    for (name, points), color in zip(sorted(series.items()), hues):
        drawing.line([place(*point) for point in sorted(points)], color)
        x, y = place(*max(points))
        labels.append((y, x, name, color))
    previous = -math.inf
    for y, x, name, color in sorted(labels):  # from the top, no label over another
        previous = max(y + 4, previous + 15)
        drawing.text(x + 8, previous, name)
    return bottom + 40


def draw(csv_name, svg_name):
    with open(csv_name, newline="", encoding="utf-8") as file:
        rows = list(csv.DictReader(file))
    measured = [(r["suite"], r["case"], r["loader"], int(r["entries"]), r["metric"], float(r["median"])) for r in rows]

    def peers(metric, size):
        return {loader: value for suite, case, loader, entries, name, value in measured
                if suite == "peers" and case == "plain" and entries == size and name == metric and value > 0}

    drawing = Drawing()
    top = bars(drawing, 10, "100,000 mounts, file to records: ns of processor time an entry (logarithmic)",
               peers("cpu_ns_per_entry", 100_000))
    top = bars(drawing, top, "The same: bytes of resident memory an entry, at the peak (logarithmic)",
               peers("resident_bytes_per_entry", 100_000))
    growth = {}
    for suite, case, loader, entries, _, value in measured:
        if suite == "growth" and loader == "ours":
            growth.setdefault(case, []).append((entries, value))
    top = curves(drawing, top, "Growth: our ns an entry against the number of entries", growth)
    drawing.written(svg_name, top)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    draw(sys.argv[1], sys.argv[2])
