#!/usr/bin/env python3
"""Turns kelm_bench JSON output into a Markdown table of ratios and a plot.

usage: report.py OUTDIR RESULT.json [RESULT.json ...]
writes OUTDIR/bench-report.md and OUTDIR/bench-4x4.png
"""
import json
import os
import sys

WORKLOADS = ["Add_mama", "Mul_mama", "Mul_mava", "Mul_mac", "Det_ma", "LU_solve", "Invert_ma", "Chol_solve", "Copy_ma", "Transpose_ma", "QR_solve"]
PEERS = ["plain", "eigen", "plain_nat", "eigen_nat"]
SHORT = {"plain": "pl", "eigen": "eg", "plain_nat": "pl/n", "eigen_nat": "eg/n"}
COUNTS = [1000, 10000, 100000, 1000000]
# Targets at order 4, 10^6 objects, one thread, contiguous.
COMPUTE_BOUND = {"Det_ma", "LU_solve", "Invert_ma", "Chol_solve", "QR_solve"}
BANDWIDTH_TARGET = {"Add_mama": 0.9, "Mul_mama": 0.9}


def load(paths):
    cases, copy, context = {}, {}, None
    for path in paths:
        with open(path) as f:
            doc = json.load(f)
        context = context or doc.get("context", {})
        for b in doc["benchmarks"]:
            parts = b["name"].split("/")
            if parts[0] == "Copy":
                copy[int(parts[1].split(":")[1])] = b.get("bytes_per_second", 0)
                continue
            if len(parts) < 6 or b.get("error_occurred"):
                continue
            wl, ty, n, layout, count, threads = parts[:6]
            key = (wl, ty, int(n.split(":")[1]), layout, int(count.split(":")[1]), int(threads.split(":")[1]))
            b["best"] = b.get("label", "").replace("best peer: ", "")
            cases[key] = b
    return cases, copy, context


def fmt(x, digits=2):
    return "—" if x is None else f"{x:.{digits}f}"


def si(x):
    for unit, scale in (("G", 1e9), ("M", 1e6), ("k", 1e3)):
        if x >= scale:
            return f"{x / scale:.3g}{unit}"
    return f"{x:.3g}"


def ratio_cell(b):
    if b is None:
        return ""
    cell = f"{b['vs_best']:.2f} {SHORT.get(b['best'], '?')}"
    if b.get("mismatch"):
        cell += " (MISMATCH)"
    return cell


def report(outdir, cases, copy, context):
    lines = ["# kelm benchmark report", ""]
    if context:
        lines += [f"{context.get('date', '')}, {context.get('host_name', '')}, {context.get('num_cpus', '?')} CPUs, "
                  f"load average {', '.join(f'{x:.2f}' for x in context.get('load_avg', []))}.", ""]
    lines += ["Copy bandwidth (STREAM-style copy of 10^8 bytes, bytes read + written): " +
              ", ".join(f"{t} thread{'s' if t > 1 else ''}: {si(v)}B/s" for t, v in sorted(copy.items())), ""]
    lines += ["Ratios are library / best peer in objects per second (median of per-round ratios; "
              "above 1 the library is faster); the letters name the best peer: pl plain loops, eg Eigen, "
              "/n built with -march=native.", ""]

    present = [w for w in WORKLOADS if any(k[0] == w for k in cases)]
    # --- targets
    lines += ["## Targets: order 4, 10^6 objects, contiguous", "",
              "| Workload | Type | lib objects/s | best peer | lib / best peer (1 thread) | lib / best same-flags peer "
              "| of copy bandwidth (1 thread) "
              "| 2 threads / 1 thread | plain loops 2 / 1 thread | lib / best peer (2 threads) |",
              "|---|---|---|---|---|---|---|---|---|---|"]
    shortfalls = []
    for wl in present:
        for ty in ("32f", "64f"):
            one = cases.get((wl, ty, 4, "contig", 1000000, 1))
            two = cases.get((wl, ty, 4, "contig", 1000000, 2))
            if not one:
                continue
            ratio = one.get("vs_best")
            frac = one.get("copy_frac")
            scale = two.get("x_1t") if two else None
            marks = []
            if ratio is not None and ratio < 1.0:
                marks.append(f"{wl} {ty}: lib / best peer {ratio:.2f} < 1.0")
            if wl in BANDWIDTH_TARGET and frac is not None and frac < BANDWIDTH_TARGET[wl]:
                marks.append(f"{wl} {ty}: {frac:.2f} of copy bandwidth < {BANDWIDTH_TARGET[wl]}")
            if wl in COMPUTE_BOUND and scale is not None and scale < 1.8:
                marks.append(f"{wl} {ty}: 2 threads / 1 thread {scale:.2f} < 1.8")
            shortfalls += marks
            same = max(one.get("plain", 0), one.get("eigen", 0))
            same = one["items_per_second"] / same if same else None
            lines.append(f"| {wl} | {ty} | {si(one['items_per_second'])} | {one['best']} | {fmt(ratio)} | {fmt(same)} "
                         f"| {fmt(frac)} "
                         f"| {fmt(scale)} | {fmt(two.get('plain_x_1t') if two else None)} "
                         f"| {fmt(two.get('vs_best') if two else None)} |")
    lines += ["", "Targets: lib / best peer ≥ 1.0 everywhere; Add and Mul mama ≥ 0.9 of copy bandwidth; "
              "2 threads ≥ 1.8 × 1 thread on the compute-bound workloads (Det, LU). "
              "The same-flags column leaves out the -march=native peers (a ratio of medians, not paired). "
              "The plain loops' own speed-up from 1 to 2 threads, measured in the same rounds, shows how much "
              "of the second core the machine gave at the time.", ""]
    lines += (["Short of target:", ""] + [f"- {m}" for m in shortfalls] if shortfalls else ["All targets met."]) + [""]

    # --- full ratio tables
    lines += ["## Library / best peer by count", ""]
    for ty in ("32f", "64f"):
        for layout in ("contig", "stride2"):
            for threads in (1, 2):
                rows = []
                for wl in present:
                    for n in (3, 4, 5, 6):
                        cells = [ratio_cell(cases.get((wl, ty, n, layout, c, threads))) for c in COUNTS]
                        if any(cells):
                            rows.append(f"| {wl} | {n} | " + " | ".join(cells) + " |")
                if not rows:
                    continue
                lines += [f"### {ty}, {layout}, {threads} thread{'s' if threads > 1 else ''}", "",
                          "| Workload | Order | " + " | ".join(f"10^{len(str(c)) - 1}" for c in COUNTS) + " |",
                          "|---|---|" + "---|" * len(COUNTS)] + rows + [""]

    # --- bandwidth fractions
    rows = []
    for wl in present:
        for n in (3, 4, 5, 6):
            cells = []
            for ty in ("32f", "64f"):
                for threads in (1, 2):
                    for c in (100000, 1000000):
                        b = cases.get((wl, ty, n, "contig", c, threads))
                        cells.append(fmt(b.get("copy_frac")) if b and "copy_frac" in b else "")
            if any(cells):
                rows.append(f"| {wl} | {n} | " + " | ".join(cells) + " |")
    if rows:
        heads = [f"{ty} {t}T 10^{e}" for ty in ("32f", "64f") for t in (1, 2) for e in (5, 6)]
        lines += ["## Streaming workloads as a fraction of copy bandwidth (contiguous)", "",
                  "Bytes are the operands and results (e.g. 3 matrices per object for Add and Mul mama), "
                  "paired round by round with the copy probe at the same thread count.", "",
                  "| Workload | Order | " + " | ".join(heads) + " |", "|---|---|" + "---|" * len(heads)] + rows + [""]

    path = os.path.join(outdir, "bench-report.md")
    with open(path, "w") as f:
        f.write("\n".join(lines))
    print(f"report: {path}")


def plot(outdir, cases):
    try:
        import matplotlib
        matplotlib.use("Agg")
        import matplotlib.pyplot as plt
    except ImportError:
        print("report: no matplotlib, plot skipped")
        return
    present = [w for w in WORKLOADS if any(k[0] == w and k[2] == 4 for k in cases)]
    if not present:
        return
    fig, axes = plt.subplots(2, len(present), figsize=(3.6 * len(present), 6.5), squeeze=False)
    styles = {"lib": ("k", "-", 2.5), "plain": ("tab:blue", "--", 1.2), "eigen": ("tab:orange", "--", 1.2),
              "plain_nat": ("tab:blue", ":", 1.2), "eigen_nat": ("tab:orange", ":", 1.2)}
    for row, ty in enumerate(("32f", "64f")):
        for col, wl in enumerate(present):
            ax = axes[row][col]
            for who, (colour, dash, width) in styles.items():
                xs, ys = [], []
                for c in COUNTS:
                    b = cases.get((wl, ty, 4, "contig", c, 1))
                    if b:
                        xs.append(c)
                        ys.append(b["items_per_second"] if who == "lib" else b.get(who, 0))
                if xs:
                    ax.plot(xs, ys, color=colour, linestyle=dash, linewidth=width, marker="o", markersize=3,
                            label=who)
            ax.set_xscale("log")
            ax.set_yscale("log")
            ax.set_title(f"{wl} 4x4 {ty}", fontsize=9)
            ax.grid(True, which="both", alpha=0.3)
            if col == 0:
                ax.set_ylabel("objects / s (1 thread)")
            if row == 1:
                ax.set_xlabel("count")
    axes[0][0].legend(fontsize=7)
    fig.tight_layout()
    path = os.path.join(outdir, "bench-4x4.png")
    fig.savefig(path, dpi=110)
    print(f"report: {path}")


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    cases, copy, context = load(sys.argv[2:])
    report(sys.argv[1], cases, copy, context)
    plot(sys.argv[1], cases)


if __name__ == "__main__":
    main()
