"""What all lint scripts share: which files there are, how a finding is told, and the self-test on a planted example."""

import argparse
import os
import pathlib
import re
import subprocess
import sys
import tempfile

CXX = (".h", ".cpp")


class Finding:
    """One offence against a rule."""

    def __init__(self, path, line, text):
        self.path = path
        self.line = line
        self.text = text

    def __str__(self):
        return f"{self.path}:{self.line}: {self.text}"


def files(root, suffixes=None, below=""):
    """Relative paths of the project's own files, in a fixed order; what git ignores is left out."""
    found = git_files(root)
    if found is None:
        found = walked_files(root)
    return [
        path
        for path in sorted(found)
        if path.startswith(below)
        and (suffixes is None or path.endswith(tuple(suffixes)))
        and os.path.isfile(os.path.join(root, path))
        and not os.path.islink(os.path.join(root, path))
    ]


def git_files(root):
    if not os.path.exists(os.path.join(root, ".git")):
        return None
    command = ["git", "-C", root, "-c", f"safe.directory={root}", "ls-files", "-coz", "--exclude-standard"]
    try:
        listed = subprocess.run(command, capture_output=True, check=True).stdout
    except (OSError, subprocess.CalledProcessError):
        return None
    return [os.fsdecode(name) for name in listed.split(b"\0") if name]


def walked_files(root):
    found = []
    for folder, folders, names in os.walk(root):
        folders[:] = [name for name in folders if name not in (".git", "build", "__pycache__")]
        found += [os.path.relpath(os.path.join(folder, name), root) for name in names]
    return found


def text_of(root, path):
    """The file's text, or None if it is binary."""
    data = pathlib.Path(root, path).read_bytes()
    return None if b"\0" in data else data.decode("utf-8", "replace")


TOKENS = re.compile(
    r'R"(?P<raw>[^(\s]{0,16})\(.*?\)(?P=raw)"|//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'', re.DOTALL
)


def code_of(text):
    """C++ text with comments and the contents of string literals blanked; the lines keep their numbers."""

    def blank(match):
        token = match.group(0)
        if token.startswith("'") and match.start() > 0 and text[match.start() - 1].isdigit():
            return token  # 1'000: a digit separator
        return re.sub(r"[^\n]", " ", token)

    return TOKENS.sub(blank, text)


def lines_matching(pattern, text):
    for number, line in enumerate(text.split("\n"), 1):
        for match in re.finditer(pattern, line):
            yield number, match


def stale_entries(allowed, used, script):
    """An allow-list must not outlive its reason."""
    return [Finding(script, 0, f"{entry} stands on the allow-list but is not needed there any more: remove it")
            for entry in allowed if entry not in used]


class Rule:
    """A rule with its reason and remedy, its check, and examples that the check must find or let pass."""

    def __init__(self, name, rule, reason, remedy, check, bad, good):
        self.name = name
        self.explanation = f"Rule:   {rule}\nReason: {reason}\nRemedy: {remedy}"
        self.check = check
        self.bad = bad
        self.good = good

    def main(self):
        parser = argparse.ArgumentParser(description=self.explanation)
        parser.add_argument("root", nargs="?", help="the project's folder")
        parser.add_argument("--self-test", action="store_true", help="check planted examples instead")
        arguments = parser.parse_args()
        if arguments.self_test:
            sys.exit(self.self_test())
        if not arguments.root:
            parser.error("the project's folder is missing")
        findings = self.check(arguments.root)
        for finding in findings:
            print(finding)
        if findings:
            print(f"\n{len(findings)} offence(s) against the rule \"{self.name}\".\n{self.explanation}")
        sys.exit(1 if findings else 0)

    def self_test(self):
        """Each bad example alone must be found, at its place; the good ones together must pass."""
        problems = []
        for place, planted in self.bad.items():
            found = [str(finding) for finding in self.planted(planted)]
            if not any(text.startswith(place) for text in found):
                problems.append(f"not found: {place} (found: {found})")
        problems += [f"wrongly found: {finding}" for finding in self.planted(self.good)]
        print("\n".join(problems) or f"{len(self.bad)} bad examples found, {len(self.good)} good files let pass")
        return 1 if problems else 0

    def planted(self, tree):
        with tempfile.TemporaryDirectory() as root:
            for path, text in tree.items():
                target = pathlib.Path(root, path)
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_text(text)
            return self.check(root)
