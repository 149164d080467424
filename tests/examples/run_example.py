"""Runs an example with --quit and compares what it prints: run_example.py PROGRAM LINE..."""

import os
import subprocess
import sys
import tempfile

# what the offscreen platform says of every window
EXPECTED_ERRORS = {"This plugin does not support propagateSizeHints()"}

program, *lines = sys.argv[1:]
with tempfile.TemporaryDirectory() as runtime:
    run = subprocess.run([program, "--quit"], capture_output=True, text=True, timeout=120,
                         env={**os.environ, "XDG_RUNTIME_DIR": runtime})
printed = run.stdout.splitlines()
errors = [line for line in run.stderr.splitlines() if line not in EXPECTED_ERRORS]
if run.returncode != 0 or printed != lines or errors:
    sys.exit(f"status {run.returncode}\nprinted  {printed}\nexpected {lines}\nerrors   {errors}")
