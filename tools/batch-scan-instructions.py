#!/usr/bin/env python3
"""Counts the instructions that the scan of a batch's input takes for a node, and fails above a limit.

    tools/batch-scan-instructions.py [--limit N]

A count of callgrind, user space: that of a larger tree less that of a smaller one, over the nodes that the larger one
has more. Other programs at work do not change it. Build first: cmake --build build/release --target bench_batch_scan
"""

import argparse
import importlib
import os
import random
import re
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
ratios = importlib.import_module("batch-scan-ratios")

# Folders of 20 files.
SMALL, LARGE = 100, 300


def count(folders, suffixes):
    """Instructions and nodes of a scan."""
    with tempfile.TemporaryDirectory() as root:
        ratios.make_wide(root, folders, suffixes, random.Random(1))
        command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", ratios.PROGRAM, "--scan", root]
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")
        done = subprocess.run(command, env=environment, capture_output=True, text=True, check=True)
        return (int(re.search(r"Collected : (\d+)", done.stderr).group(1)),
                int(re.search(r"nodes=(\d+)", done.stdout).group(1)))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--limit", type=int, default=40000)
    limit = parser.parse_args().limit
    if not shutil.which("valgrind"):
        sys.exit("batch-scan-instructions: there is no valgrind. Install it: tools/install-packages.sh measure")
    suffixes = ratios.known_suffixes()
    small, fewer = count(SMALL, suffixes)
    large, more = count(LARGE, suffixes)
    a_node = (large - small) / (more - fewer)
    print(f"{a_node:.0f} instructions a node, of {more - fewer} nodes; the limit is {limit}")
    return a_node > limit


if __name__ == "__main__":
    sys.exit(main())
