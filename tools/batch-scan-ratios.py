#!/usr/bin/env python3
"""Compares the scan of a batch's input with other programs that list the same files, in turns, on generated trees.

    tools/batch-scan-ratios.py [--rounds N] [--trees 20k,200k,flat,deep] [--folder DIR]

Paths are about 80 characters long. All figures are ratios of wall times taken in one run, pair by pair; what is printed is their median and, in brackets,
the smallest and the largest. The trees are made in a temporary folder and read once before the first round, so that
the cache is warm. Build first: cmake --build build/release --target bench_batch_scan
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

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PROGRAM = os.path.join(ROOT, "build/release/bin/bench_batch_scan")
WALK = """
import os, sys
sys.setrecursionlimit(5000)
wanted = tuple("." + suffix for suffix in sys.argv[2:])
count = 0
for folder, folders, files in os.walk(sys.argv[1]):
    count += sum(name.lower().endswith(wanted) for name in files)
print("nodes=%d" % count)
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
            os.close(os.open(f"i{j}.{suffix}", os.O_CREAT | os.O_WRONLY, dir_fd=here))
        os.mkdir("d", dir_fd=here)
        below = os.open("d", os.O_RDONLY, dir_fd=here)
        os.close(here)
        here = below
    os.close(here)


def make(name, root, suffixes):
    chance = random.Random(7)
    os.makedirs(root)
    if name == "deep":
        make_deep(root, suffixes, chance)
    elif name == "flat":
        make_files(root, 0, 100_000, suffixes, chance)
    else:
        make_wide(root, {"2k": 100, "20k": 1_000, "200k": 10_000, "1M": 50_000}[name], suffixes, chance)


def commands(root, suffixes):
    names = []
    for suffix in suffixes:
        names += ["-o", "-iname", "*." + suffix]
    return {
        "scan": [PROGRAM, "--scan", root],
        "dialog": [PROGRAM, "--dialog", root],
        "find": ["find", root, "-type", "f", "("] + names[1:] + [")"],
        "QDirIterator": [PROGRAM, "--walk", root],
        "os.walk": [sys.executable, "-S", "-c", WALK, root] + suffixes,
    }


def run(command):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")
    start = time.perf_counter()
    output = subprocess.run(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                            check=True).stdout
    wall = (time.perf_counter() - start) * 1000
    if command[0] == "find":
        return wall, {}
    figures = dict(field.split("=") for field in output.decode().split())
    # What starting the program takes is no part of a scan in a running editor.
    return float(figures.get("ms", wall)), {key: float(value) for key, value in figures.items()}


def ratio(times, one, other):
    pairs = [a / b for a, b in zip(times[one], times[other])]
    return f"{statistics.median(pairs):.2f} [{min(pairs):.2f} {max(pairs):.2f}]"


def measure(name, root, suffixes, rounds):
    programs = commands(root, suffixes)
    for command in programs.values():
        run(command)
    times = {key: [] for key in programs}
    last = {key: [] for key in programs}
    for turn in range(rounds):
        for key in list(programs) if turn % 2 == 0 else reversed(list(programs)):
            wall, figures = run(programs[key])
            times[key].append(wall)
            last[key].append(figures)

    def median(key, figure):
        return statistics.median(figures[figure] for figures in last[key])

    nodes = median("scan", "nodes")
    scan = statistics.median(times["scan"])
    print(f"{name}: {nodes:.0f} nodes, {scan:.0f} ms, {1000 * scan / nodes:.1f} us a node")
    print(f"  against find          {ratio(times, 'scan', 'find')}")
    print(f"  against QDirIterator  {ratio(times, 'scan', 'QDirIterator')}")
    print(f"  against os.walk       {ratio(times, 'scan', 'os.walk')}")
    print(f"  with dialog / without {ratio(times, 'dialog', 'scan')}")
    print(f"  longest gap           {median('scan', 'gap_ms'):.1f} ms, with dialog {median('dialog', 'gap_ms'):.1f} ms")
    print(f"  memory                {median('scan', 'bytes_a_node'):.0f} bytes a node,"
          f" peak {median('scan', 'peak_kib') / 1024:.0f} MiB", flush=True)
    return scan / nodes


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--rounds", type=int, default=9)
    parser.add_argument("--trees", default="20k,200k,flat,deep", help="of 2k, 20k, 200k, 1M, flat, deep")
    parser.add_argument("--folder", help="where the trees are made, and kept for the next run")
    options = parser.parse_args()
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    suffixes = subprocess.run([PROGRAM, "--suffixes"], env=dict(os.environ, QT_QPA_PLATFORM="offscreen"),
                              stdout=subprocess.PIPE, check=True).stdout.decode().split()
    folder = options.folder or tempfile.mkdtemp(prefix="batch-scan-")
    try:
        costs = {}
        for name in options.trees.split(","):
            root = os.path.join(folder, name)
            if not os.path.exists(root):
                make(name, root, suffixes)
            costs[name] = measure(name, root, suffixes, options.rounds)
        sizes = [name for name in ("20k", "200k", "1M") if name in costs]
        if len(sizes) > 1:
            print(f"cost a node, {sizes[-1]} against {sizes[0]}: {costs[sizes[-1]] / costs[sizes[0]]:.2f}")
    finally:
        if not options.folder:
            shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main()
