"""Reads Google Benchmark's JSON and prints the medians as Markdown tables.

Names are "what|of which|size": rows are what and of which, columns the sizes, one table for each set of sizes.
"""
import json
import sys


def main():
    rows = {}
    for run in sorted(json.load(sys.stdin)["benchmarks"], key=lambda run: run["family_index"]):
        if run.get("aggregate_name") != "median" or "each" not in run:
            continue
        name = run["run_name"].split("|")
        size = name[2] if len(name) > 2 else "each"
        rows.setdefault((name[0], name[1]), {})[size] = run["each"] * 1e9
    header = None
    for (what, which), figures in rows.items():
        sizes = sorted(figures, key=lambda s: int(s) if s.isdigit() else 0)
        if sizes != header:
            header = sizes
            print("\n| ns | | " + " | ".join(sizes) + " |\n|---|---|" + "--:|" * len(sizes))
        print(f"| {what} | {which} | " + " | ".join(f"{figures[s]:.4g}" for s in sizes) + " |")


if __name__ == "__main__":
    main()
