#!/usr/bin/env python3
"""Makes the compile commands that the clang tools can read out of those of the build, and names the sources to check.

    tools/lint_database.py BUILD_FOLDER OUT_FOLDER [SOURCE...]

Writes OUT_FOLDER/compile_commands.json with the product sources only (no tests, no generated files) and prints these
sources, one a line, or those of the named ones that are among them. The build is made by g++: what only g++ knows is
dropped, and so are precompiled headers, which one compiler cannot read from the other.
"""

import json
import pathlib
import shlex
import sys

PRODUCT_FOLDERS = ("siblings", "src", "editor", "gallery", "translations", "examples")
ONLY_GCC = ("-fno-gnu-unique", "-Winvalid-pch", "-Werror", "--coverage")
ONLY_GCC_PREFIXES = ("-fsanitize", "-fno-sanitize", "-Wno-error")
LAUNCHERS = ("ccache",)


def for_clang(arguments):
    """The same command without the compiler launcher and without what clang does not know."""
    if pathlib.PurePath(arguments[0]).name in LAUNCHERS:
        arguments = arguments[1:]
    kept = []
    rest = iter(arguments)
    for argument in rest:
        if argument == "-include":
            header = next(rest, "")
            if "cmake_pch" not in header:
                kept += [argument, header]
        elif argument not in ONLY_GCC and not argument.startswith(ONLY_GCC_PREFIXES):
            kept.append(argument)
    return kept + ["-Wno-unknown-warning-option"]


def main(build, out, *wanted):
    root = pathlib.Path(__file__).resolve().parent.parent
    build = pathlib.Path(build).resolve()
    database = build / "compile_commands.json"
    if not database.exists():
        sys.exit(f"lint_database: {database} is not there. Configure and build first: cmake --preset dev")

    wanted = {str(pathlib.Path(name).resolve()) for name in wanted}
    folders = tuple(f"{root}/{name}/" for name in PRODUCT_FOLDERS)
    entries = {}
    for entry in json.loads(database.read_text()):
        source = str((pathlib.Path(entry["directory"]) / entry["file"]).resolve())
        if source.startswith(folders) and not source.startswith(f"{build}/"):
            entries[source] = {"directory": entry["directory"], "file": source,
                               "arguments": for_clang(shlex.split(entry["command"]))}
    if not entries:
        sys.exit(f"lint_database: {database} names no product source")

    out = pathlib.Path(out)
    out.mkdir(parents=True, exist_ok=True)
    (out / "compile_commands.json").write_text(json.dumps(list(entries.values()), indent=1))
    for source in sorted(entries):
        if not wanted or source in wanted:
            print(source)


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
