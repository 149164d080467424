#!/usr/bin/env python3
"""Each header compiles alone, with the flags of its own target."""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile

import lintlib

# Where headers stand, and the source folder whose flags they are compiled with.
FOLDERS = [
    ("siblings/{}/include/", "siblings/{}/src/"),
    ("siblings/{}/src/", "siblings/{}/src/"),
    ("include/", "src/"),
    ("src/", "src/"),
    ("editor/", "editor/"),
    ("gallery/signals/", "gallery/signals/"),
    ("gallery/", "gallery/"),
    ("translations/", "translations/"),
    ("tests/support/editor/", "tests/support/editor/"),
    ("tests/support/", "tests/support/"),
]


def source_folder(path):
    parts = path.split("/")
    for headers, sources in FOLDERS:
        name = parts[1] if parts[0] == "siblings" and len(parts) > 2 else ""
        if path.startswith(headers.format(name)):
            return sources.format(name)
    return None


def flags_by_folder(root, build):
    """Relative folder of a compiled source -> compiler and flags, without input and output."""
    commands = json.loads(pathlib.Path(build, "compile_commands.json").read_text())
    flags = {}
    for entry in commands:
        source = os.path.relpath(entry["file"], root)
        if source.startswith(".."):
            continue
        words = entry.get("arguments") or shlex.split(entry["command"])
        flags.setdefault(os.path.dirname(source) + "/", (strip(words), entry["directory"]))
    return flags


def strip(words):
    """The command without launcher, input, output and precompiled headers, which would hide what is missing."""
    words = words[next(i for i, word in enumerate(words) if "ccache" not in word):]
    kept = []
    skip = 0
    for position, word in enumerate(words):
        if skip:
            skip -= 1
        elif word in ("-o", "-MF", "-MT", "-MQ"):
            skip = 1
        elif word == "-include" and "cmake_pch" in words[position + 1]:
            skip = 1
        elif word in ("-c", "-MD", "-Winvalid-pch") or word.endswith(".cpp"):
            continue
        else:
            kept.append(word)
    return kept


def flags_for(folder, flags):
    """Those of the folder itself or of one below it."""
    return next((flags[known] for known in sorted(flags) if known.startswith(folder)), None)


def compile_alone(root, header, command, directory):
    """None, or what the compiler says."""
    source = f'#include "{os.path.join(root, header)}"\n'
    result = subprocess.run(
        command + ["-fsyntax-only", "-x", "c++", "-"], cwd=directory, input=source, capture_output=True, text=True
    )
    return None if result.returncode == 0 else result.stderr


def included_by_name(root):
    """Header -> file names that it includes."""
    return {
        path: [match.group(1) for _, match in lintlib.lines_matching(r'#\s*include\s*[<"]([^">]+)', lintlib.text_of(root, path))]
        for path in lintlib.files(root, [".h"])
    }


def closure(header, included, by_name):
    """The header and all of the project's headers that it includes, directly or not."""
    seen = set()
    waiting = [header]
    while waiting:
        path = waiting.pop()
        if path not in seen:
            seen.add(path)
            for name in included[path]:
                waiting += by_name.get(os.path.basename(name), [])
    return sorted(seen)


def key_of(root, job, included, by_name):
    """Changes with the header, with what it includes, and with its flags."""
    digest = hashlib.sha256(repr(job).encode())
    for path in closure(job[0], included, by_name):
        digest.update(path.encode() + pathlib.Path(root, path).read_bytes())
    return digest.hexdigest()


def check_headers(root, build):
    flags = flags_by_folder(root, build)
    included = included_by_name(root)
    by_name = {}
    for path in included:
        by_name.setdefault(os.path.basename(path), []).append(path)
    jobs = []
    for path in included:
        found = flags_for(source_folder(path), flags) if source_folder(path) else None
        if found:
            jobs.append((path, *found))
    if not jobs:
        return [lintlib.Finding(str(build), 0, "no header could be matched with compile commands")]

    # What passed once is not tried again.
    stamp = pathlib.Path(build, "lint-headers.json")
    passed = json.loads(stamp.read_text()) if stamp.is_file() else {}
    keys = {job[0]: key_of(root, job, included, by_name) for job in jobs}
    todo = [job for job in jobs if passed.get(job[0]) != keys[job[0]]]
    findings = []
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, trouble in pool.map(lambda job: (job[0], compile_alone(root, *job)), todo):
            if trouble:
                findings.append(lintlib.Finding(path, 1, "does not compile alone:\n" + trouble))
                keys.pop(path)
    stamp.write_text(json.dumps(keys, indent=1))
    return findings


def check_planted(root):
    """The self-test's way: a build folder with one command for each source folder that is there."""
    with tempfile.TemporaryDirectory() as build:
        command = f"c++ -std=c++17 -Wall -Werror -I {root}/include -o x.o -c {root}/src/a.cpp"
        entries = [{"directory": build, "file": f"{root}/src/a.cpp", "command": command}]
        pathlib.Path(build, "compile_commands.json").write_text(json.dumps(entries))
        return check_headers(root, build)


RULE = lintlib.Rule(
    name="headers",
    rule="Each header compiles alone and without a warning.",
    reason="A header that needs another to come first breaks whoever sorts or drops an include.",
    remedy="Include or forward-declare what the header names.",
    check=check_planted,
    bad={
        "include/A.h:1:": {"src/a.cpp": "", "include/A.h": "#pragma once\nstd::string A();\n"},
        "src/B_p.h:1:": {"src/a.cpp": "", "src/B_p.h": "#pragma once\ninline int B() { int unused; return 1; }\n"},
    },
    good={
        "src/a.cpp": "",
        "include/A.h": '#pragma once\n#include "B.h"\n#include <string>\nstd::string A();\n',
        "include/B.h": "#pragma once\nclass B;\n",
        "tests/auto/odd.h": "not C++",
    },
)


def main():
    if "--self-test" in sys.argv:
        RULE.main()
    root, build = sys.argv[1:3]
    RULE.check = lambda _: check_headers(root, build)
    sys.argv = sys.argv[:2]
    RULE.main()


if __name__ == "__main__":
    main()
