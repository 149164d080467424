#!/usr/bin/env python3
"""Compares the scan of a batch's input with other programs that list the same files, in turns, on generated trees.

    tools/batch-scan-ratios.py [--rounds N] [--trees 20k,200k,flat,deep] [--folder DIR]

Prints a table. Against others stand ratios of wall times, taken in one run and pair by pair: their median and, in
brackets, the smallest and the largest; on a machine with other work the ratio of the smallest times says more. The
"limit" reads the folders and asks the system once for each matching file, on one thread, and keeps nothing; it also
runs before each of the programs, unmeasured, so that the cache is warm on machines that soon give up theirs. Paths are
about 80 characters long, but for those of "deep". The trees are made in a temporary folder.
Build first: cmake --build build/release --target bench_batch_scan
"""

import argparse
import os
import random
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

# The chain of folders is taken down by recursion.
sys.setrecursionlimit(5000)

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PROGRAM = os.path.join(ROOT, "build/release/bin/bench_batch_scan")
WALK = """
import os, sys, time
sys.setrecursionlimit(5000)
wanted = tuple("." + suffix for suffix in sys.argv[2:])
start = time.perf_counter()
count = 0
for folder, folders, files in os.walk(sys.argv[1]):
    count += sum(name.lower().endswith(wanted) for name in files)
print("nodes=%d ms=%.1f" % (count, (time.perf_counter() - start) * 1000))
"""


def make_files(folder, first, count, suffixes, chance):
    os.makedirs(folder, exist_ok=True)
    for i in range(first, first + count):
        suffix = chance.choice(suffixes) if chance.random() < 0.6 else "txt"
        with open(os.path.join(folder, f"IMG_20240713_{i:06} ({i % 97}).{suffix}"), "w"):
            pass


def make_wide(root, folders, suffixes, chance):
    for i in range(folders):
        make_files(os.path.join(root, f"Pictures of group {i // 50}", f"Journey {i}"), i * 20, 20, suffixes, chance)


def make_deep(root, suffixes, chance):
    # A path that long cannot be opened in one piece: step down instead.
    here = os.open(root, os.O_RDONLY)
    for i in range(1000):
        for j in range(10):
            suffix = chance.choice(suffixes) if chance.random() < 0.6 else "txt"
            os.close(os.open(f"IMG_20240713_{j:06} ({i}).{suffix}", os.O_CREAT | os.O_WRONLY, dir_fd=here))
        os.mkdir("in", dir_fd=here)
        below = os.open("in", os.O_RDONLY, dir_fd=here)
        os.close(here)
        here = below
    os.close(here)


FOLDERS = {"2k": 100, "20k": 1_000, "200k": 10_000, "1M": 50_000}
FILES = {"2k": 2_000, "20k": 20_000, "200k": 200_000, "1M": 1_000_000, "flat": 100_000, "deep": 10_000}


def make(name, root, suffixes):
    chance = random.Random(7)
    os.makedirs(root)
    if name == "deep":
        make_deep(root, suffixes, chance)
    elif name == "flat":
        make_files(root, 0, FILES[name], suffixes, chance)
    else:
        make_wide(root, FOLDERS[name], suffixes, chance)


def commands(root, suffixes):
    names = []
    for suffix in suffixes:
        names += ["-o", "-iname", "*." + suffix]
    return {
        "scan": [PROGRAM, "--scan", root],
        "dialog": [PROGRAM, "--dialog", root],
        "find": ["find", root, "-type", "f", "("] + names[1:] + [")"],
        "limit": [PROGRAM, "--limit", root],
        "QDirIterator": [PROGRAM, "--walk", root],
        "os.walk": [sys.executable, "-S", "-c", WALK, root] + suffixes,
    }


# What starting a program takes is no part of a scan in a running editor: those that can, tell their time themselves.
def known_suffixes():
    return subprocess.run([PROGRAM, "--suffixes"], env=dict(os.environ, QT_QPA_PLATFORM="offscreen"),
                          stdout=subprocess.PIPE, check=True).stdout.decode().split()


def run(command):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")
    start = time.perf_counter()
    output = subprocess.run(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                            check=True).stdout
    wall = (time.perf_counter() - start) * 1000
    if command[0] == "find":
        return wall, {"nodes": output.count(b"\n")}
    figures = dict(field.split("=") for field in output.decode().split())
    return float(figures["ms"]), {key: float(value) for key, value in figures.items()}


def measure(name, root, suffixes, rounds):
    programs = commands(root, suffixes)
    files = {key: run(command)[1]["nodes"] for key, command in programs.items()}
    if len({files[key] for key in ("find", "limit", "QDirIterator", "os.walk")}) != 1:
        sys.exit(f"{name}: the programs do not find the same files: {files}")
    times = {key: [] for key in programs}
    seen = {key: [] for key in programs}
    for turn in range(rounds):
        for key in list(programs) if turn % 2 == 0 else reversed(list(programs)):
            run(programs["limit"])
            wall, figures = run(programs[key])
            times[key].append(wall)
            seen[key].append(figures)

    def ratio(one, other):
        pairs = [a / b for a, b in zip(times[one], times[other])]
        return f"{statistics.median(pairs):.2f} [{min(pairs):.2f} {max(pairs):.2f}]"

    def figure(key, what):
        return statistics.median(figures[what] for figures in seen[key])

    def rate(key):
        return f"{FILES[name] / statistics.median(times[key]):,.0f},000"

    scan = statistics.median(times["scan"])
    return scan / figure("scan", "nodes"), {
        "nodes made": f"{figure('scan', 'nodes'):,.0f}",
        "scan, ms: median (smallest)": f"{scan:.0f} ({min(times['scan']):.0f})",
        "files a second: scan": rate("scan"),
        "files a second: find": rate("find"),
        "files a second: QDirIterator": rate("QDirIterator"),
        "files a second: os.walk": rate("os.walk"),
        "scan / find": ratio("scan", "find"),
        "scan / find, smallest times": f"{min(times['scan']) / min(times['find']):.2f}",
        "scan / limit": ratio("scan", "limit"),
        "scan / limit, smallest times": f"{min(times['scan']) / min(times['limit']):.2f}",
        "scan / QDirIterator": ratio("scan", "QDirIterator"),
        "scan / os.walk": ratio("scan", "os.walk"),
        "with dialog / without": ratio("dialog", "scan"),
        "with dialog / without, smallest times": f"{min(times['dialog']) / min(times['scan']):.2f}",
        "longest block of the GUI thread, ms": f"{figure('scan', 'gap_ms'):.1f}",
        "the same with dialog, ms": f"{figure('dialog', 'gap_ms'):.1f}",
        "longest wait for a cancel, ms": f"{run([PROGRAM, '--cancel', root])[0]:.1f}",
        "live bytes a node": f"{figure('scan', 'bytes_a_node'):.0f}",
        "peak memory a node, bytes": f"{figure('scan', 'peak_a_node'):.0f}",
        "time a node, us: median (smallest)":
            f"{1000 * scan / figure('scan', 'nodes'):.1f} ({1000 * min(times['scan']) / figure('scan', 'nodes'):.1f})",
    }


def print_table(columns):
    names = list(columns)
    print("| | " + " | ".join(names) + " |")
    print("|---" * (len(names) + 1) + "|")
    for row in columns[names[0]]:
        print(f"| {row} | " + " | ".join(columns[name][row] for name in names) + " |")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--rounds", type=int, default=9)
    parser.add_argument("--trees", default="20k,200k,flat,deep", help="of 2k, 20k, 200k, 1M, flat, deep")
    parser.add_argument("--folder", help="where the trees are made, and kept for the next run")
    options = parser.parse_args()
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    suffixes = known_suffixes()
    folder = options.folder or tempfile.mkdtemp(prefix="batch-scan-")
    try:
        costs = {}
        columns = {}
        for name in options.trees.split(","):
            root = os.path.join(folder, name)
            if not os.path.exists(root):
                make(name, root, suffixes)
            costs[name], columns[name] = measure(name, root, suffixes, options.rounds)
        print_table(columns)
        sizes = [name for name in ("20k", "200k", "1M") if name in costs]
        for name in sizes[1:]:
            print(f"time a node, {name} against {sizes[0]}: {costs[name] / costs[sizes[0]]:.2f}")
    finally:
        if not options.folder:
            shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main()
