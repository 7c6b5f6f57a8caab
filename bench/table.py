"""Prints benchmark results as Markdown tables, or puts them into a page.

  table.py [--into PAGE SECTION]           Google Benchmark's JSON on standard input: medians, nanoseconds for each item
  table.py --lines --into PAGE SECTION     a table that is made already
  table.py --peers [--into PAGE SECTION]   the lines of peers_bench: medians of both and of their ratios

Names in the JSON are "row|column" or "row|column|size"; rows whose columns are among those of the row before share its
table. A section of a page stands between the lines <!-- SECTION --> and <!-- end of SECTION -->.
"""
import argparse
import json
import pathlib
import statistics
import sys


def number(value):
    return format(value, ".0f" if value >= 100 else ".1f")


def benchmarks(text):
    rows = {}
    for run in sorted(json.loads(text)["benchmarks"], key=lambda run: run["family_index"]):
        if run.get("aggregate_name") == "median" and "each" in run:
            row, *column = run["run_name"].split("|")
            rows.setdefault(row, {})[" ".join(column)] = run["each"] * 1e9
    lines, header = [], []
    for row, figures in rows.items():
        if not set(figures) <= set(header):
            header = list(figures)
            lines += ["", "| ns | " + " | ".join(header) + " |", "|---|" + "--:|" * len(header)]
        lines.append(f"| {row} | " + " | ".join(number(figures[c]) if c in figures else "" for c in header) + " |")
    return lines[1:]


def peers(text):
    runs = {}
    for line in text.splitlines():
        row, direction, own, other, _ = line.split("|")
        runs.setdefault(row, {}).setdefault(direction, []).append((float(own), float(other)))
    lines = ["| ns | forward | PROJ | ratio | inverse | PROJ | ratio |", "|---|" + "--:|" * 6]
    ratios = []
    for row, directions in runs.items():
        cells = []
        for direction in ("forward", "inverse"):
            pairs = directions[direction]
            ratio = statistics.median(other / own for own, other in pairs)
            ratios.append((ratio, f"{row}, {direction}"))
            cells += [number(statistics.median(pair[side] for pair in pairs)) for side in (0, 1)] + [format(ratio, ".1f")]
        lines.append(f"| {row} | " + " | ".join(cells) + " |")
    least, most = min(ratios), max(ratios)
    lines += ["", f"Of {len(ratios)} rows and directions the median ratio is {statistics.median(r for r, _ in ratios):.1f}, the least "
              f"{least[0]:.1f} ({least[1]}), the most {most[0]:.1f} ({most[1]})."]
    return lines


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--lines", action="store_true")
    parser.add_argument("--peers", action="store_true")
    parser.add_argument("--into", nargs=2, metavar=("PAGE", "SECTION"))
    arguments = parser.parse_args()
    make = str.splitlines if arguments.lines else peers if arguments.peers else benchmarks
    text = "\n".join(make(sys.stdin.read()))
    if not arguments.into:
        print(text)
        return
    page, (first, last) = pathlib.Path(arguments.into[0]), (f"<!-- {word}{arguments.into[1]} -->" for word in ("", "end of "))
    before, _, rest = page.read_text(encoding="utf-8").partition(first)
    _, found, after = rest.partition(last)
    if not found:
        sys.exit(f"{page} has no section {arguments.into[1]}")
    page.write_text(f"{before}{first}\n{text}\n{last}{after}", encoding="utf-8")


if __name__ == "__main__":
    main()
