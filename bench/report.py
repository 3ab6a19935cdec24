#!/usr/bin/env python3
"""Turns the JSON output of vorn_bench and vorn_bench_memory into Markdown tables.

Benchmarks are named "<workload>/<implementation>/<size>". For the timed workloads the
table shows the median of the repetitions and its ratio to the workload's baseline from
the same run (higher is better); the bars the library is held to follow the tables.

usage: report.py TIMING_JSON [MEMORY_JSON]
"""
import json
import sys

# workload: (label, size text, unit, baseline, implementations in display order)
TIMED = {
    "transform": ("Transform + envelope", "{:,} coords", "coord", "raw",
                  ["raw", "vorn", "geos", "boost"]),
    "add_range_fresh": ("AddRange, new container", "{:,} coords", "coord", "std_vector",
                        ["std_vector", "vorn"]),
    "add_range_reused": ("AddRange, reused container", "{:,} coords", "coord", "std_vector",
                         ["std_vector", "vorn"]),
    "add_fresh": ("Add one at a time, new container", "{:,} coords", "coord", "std_vector",
                  ["std_vector", "vorn"]),
    "add_reused": ("Add one at a time, reused container", "{:,} coords", "coord", "std_vector",
                   ["std_vector", "vorn"]),
    "multipolygon": ("Multi-polygon transform + envelopes", "{:,} rings x 20", "coord", "raw",
                     ["raw", "vorn", "geos", "boost"]),
    "treatment_map": ("Treatment map transform", "{:,} areas x 2 rings x 20", "coord", "raw",
                      ["raw", "vorn"]),
    "set_zones": ("Byte grid SetZones", "{0:,} x {0:,} cells", "byte", "memcpy",
                  ["memcpy", "vorn"]),
    "rate_grid": ("Rate grid InitGrid + fill", "{0:,} x {0:,} cells", "cell", "std_vector",
                  ["std_vector", "vorn_SetZoneInfo", "vorn_GetZonesInRow"]),
    "lookup_exact": ("Attribute lookup, exact", "{:,} names", "lookup", "std_vector",
                     ["std_vector", "vorn"]),
    "lookup_caseless": ("Attribute lookup, caseless", "{:,} names", "lookup", "std_vector",
                        ["std_vector", "vorn"]),
}

MEMORY = {
    "memory_add": ("Add one at a time", "{:,} coords", ["std_vector", "vorn", "geos"]),
    "memory_add_range": ("AddRange", "{:,} coords", ["std_vector", "vorn", "geos"]),
    "memory_multipolygon": ("Multi-polygon, built + transformed", "{:,} rings x 20",
                            ["vorn", "geos", "boost"]),
}

PEERS = {"geos": "GEOS (libgeos-dev, libgeos++-dev)", "boost": "Boost.Geometry (libboost-dev)"}


def load(path, aggregate):
    """{(workload, implementation): (size, record)} for the given aggregate or plain runs."""
    with open(path) as handle:
        data = json.load(handle)
    results = {}
    for record in data["benchmarks"]:
        if aggregate is not None and record.get("aggregate_name") != aggregate:
            continue
        if aggregate is None and record.get("run_type") == "aggregate":
            continue
        if record.get("error_occurred"):
            continue
        workload, implementation, size = record["run_name"].split("/")[:3]
        results[(workload, implementation)] = (int(size), record)
    return data["context"], results


def rate(record):
    return record.get("items_per_second") or record.get("bytes_per_second")


def throughput(unit, value):
    if unit == "byte":
        return "{:.1f} GB/s".format(value / 1e9)
    if unit == "lookup":
        return "{:.1f} ns/lookup".format(1e9 / value)
    return "{:.1f} M {}/s".format(value / 1e6, unit)


def timed_table(results):
    lines = ["| Workload | Size | Implementation | Median throughput | vs baseline |",
             "|---|---|---|---|---|"]
    for workload, (label, size_text, unit, baseline, order) in TIMED.items():
        base = results.get((workload, baseline))
        for implementation in order:
            found = results.get((workload, implementation))
            if found is None:
                continue
            size, record = found
            ratio = "{:.2f}".format(rate(record) / rate(base[1])) if base else "n/a"
            lines.append("| {} | {} | {} | {} | {} |".format(
                label, size_text.format(size), implementation, throughput(unit, rate(record)),
                ratio))
    return lines


def memory_table(results):
    lines = ["| Workload | Size | Implementation | Bytes per coordinate | Peak | Retained |",
             "|---|---|---|---|---|---|"]
    for workload, (label, size_text, order) in MEMORY.items():
        for implementation in order:
            found = results.get((workload, implementation))
            if found is None:
                continue
            size, record = found
            lines.append("| {} | {} | {} | {:.1f} | {:.1f} MB | {:.1f} MB |".format(
                label, size_text.format(size), implementation, record["bytes_per_coord"],
                record["peak_bytes"] / 1e6, record["retained_bytes"] / 1e6))
    return lines


def bars(results):
    def value(workload, implementation):
        found = results.get((workload, implementation))
        return rate(found[1]) if found else None

    checks = []

    def at_least(workload, implementation, baseline, bar):
        a, b = value(workload, implementation), value(workload, baseline)
        if a is None or b is None:
            return
        checks.append(("{} {} >= {} x {}".format(workload, implementation, bar, baseline),
                       a / b >= bar, "{:.2f}".format(a / b)))

    def faster(workload, implementation, peer):
        a, b = value(workload, implementation), value(workload, peer)
        if b is None:
            checks.append(("{} {} faster than {}".format(workload, implementation, peer), None,
                           "peer not built"))
            return
        checks.append(("{} {} faster than {}".format(workload, implementation, peer), a > b,
                       "{:.2f}x".format(a / b)))

    at_least("transform", "vorn", "raw", 0.9)
    faster("transform", "vorn", "geos")
    faster("transform", "vorn", "boost")
    for workload in ("add_range_fresh", "add_range_reused"):
        at_least(workload, "vorn", "std_vector", 0.9)
    for workload in ("add_fresh", "add_reused"):
        at_least(workload, "vorn", "std_vector", 0.7)
    at_least("multipolygon", "vorn", "raw", 0.8)
    faster("multipolygon", "vorn", "geos")
    faster("multipolygon", "vorn", "boost")
    at_least("set_zones", "vorn", "memcpy", 0.9)
    exact, caseless = value("lookup_exact", "vorn"), value("lookup_caseless", "vorn")
    if exact and caseless:
        checks.append(("lookup_caseless vorn within 1.5 x the time of lookup_exact vorn",
                       exact / caseless <= 1.5, "{:.2f}x".format(exact / caseless)))
    lines = []
    for text, held, figure in checks:
        verdict = "skipped" if held is None else ("holds" if held else "MISSED")
        lines.append("- {}: {} ({})".format(text, verdict, figure))
    return lines


def main(argv):
    if len(argv) < 2:
        sys.exit(__doc__)
    context, timed = load(argv[1], "median")
    print("Machine: {} CPUs at {:.0f} MHz, load average {} at start; {} repetitions, medians."
          .format(context["num_cpus"], context["mhz_per_cpu"],
                  ", ".join("{:.2f}".format(x) for x in context.get("load_avg", [])),
                  next((r["repetitions"] for _, r in timed.values()), "?")))
    for peer, name in PEERS.items():
        if not any(implementation == peer for _, implementation in timed):
            print("Peer skipped: {} was not found at configure time.".format(name))
    print()
    print("\n".join(timed_table(timed)))
    if len(argv) > 2:
        _, memory = load(argv[2], None)
        print()
        print("\n".join(memory_table(memory)))
    print()
    print("Bars:")
    print("\n".join(bars(timed)))


if __name__ == "__main__":
    main(sys.argv)
