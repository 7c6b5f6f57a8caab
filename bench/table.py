"""Reads Google Benchmark's JSON and prints the medians, nanoseconds for each item, as Markdown tables.

Names are "row|column" or "row|column|size"; rows whose columns are among those of the row before share its table.
"""
import json
import sys


def main():
    rows = {}
    for run in sorted(json.load(sys.stdin)["benchmarks"], key=lambda run: run["family_index"]):
        if run.get("aggregate_name") == "median" and "each" in run:
            row, *column = run["run_name"].split("|")
            rows.setdefault(row, {})[" ".join(column)] = run["each"] * 1e9
    header = []
    for row, figures in rows.items():
        if not set(figures) <= set(header):
            header = list(figures)
            print("\n| ns | " + " | ".join(header) + " |\n|---|" + "--:|" * len(header))
        cells = (format(figures[c], ".0f" if figures[c] >= 100 else ".1f") if c in figures else "" for c in header)
        print(f"| {row} | " + " | ".join(cells) + " |")


if __name__ == "__main__":
    main()
