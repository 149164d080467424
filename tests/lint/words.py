#!/usr/bin/env python3
"""No loose ends, and no talk about how the project came to be."""

import re

import lintlib


def joined(*pieces):
    """Words are put together here so that this file does not offend against itself."""
    return "".join(pieces)


MARKS = re.compile(r"\b(?:" + "|".join([joined("TO", "DO"), joined("FIX", "ME"), joined("X", "XX")]) + r")\b")
STORY = re.compile(
    r"\b(?:"
    + "|".join(
        [
            joined("specifi", "cations?"),
            joined("spec", r"\.md"),
            joined("Par", r"ts? \d+\.\d+"),
            joined("iss", r"ues? #?\d+"),
            joined("(?:this|previous|next|earlier|last) ses", "sion"),
            joined("sub-?ag", "ents?"),
            joined("(?:AI|coding) ag", "ents?"),
            joined("language mo", "dels?"),
            joined("work", "place"),
            joined("measured-", "facts"),
            joined("performance-", "facts"),
        ]
    )
    + r")\b|(?<![\w.])"
    + joined("/wor", "k/")
    + r"|(?<![\w.])"
    + joined("/tm", r"p/s\b"),
    re.IGNORECASE,
)


def check(root):
    findings = []
    for path in lintlib.files(root):
        for pattern, what in ((MARKS, "loose end"), (STORY, "not about the system itself")):
            for _, match in lintlib.lines_matching(pattern, path):
                findings.append(lintlib.Finding(path, 0, f'file name: {what}: "{match.group(0)}"'))
            for number, match in lintlib.lines_matching(pattern, lintlib.text_of(root, path) or ""):
                findings.append(lintlib.Finding(path, number, f'{what}: "{match.group(0)}"'))
    return findings


RULE = lintlib.Rule(
    name="words",
    rule="No file holds a mark of unfinished work, or tells of the papers, places and errands of its making.",
    reason="A mark in a file is forgotten; and who reads the code later has only the code: it must explain itself.",
    remedy="Finish the work. Say what is so and why, in the words of the system.",
    check=check,
    bad={
        "src/a.cpp:2:": {"src/a.cpp": "\nint x; // " + joined("TO", "DO") + ": later\n"},
        "README.md:1:": {"README.md": "as the " + joined("speci", "fication") + " says"},
        "b.py:1:": {"b.py": "# see " + joined("Par", "t 5.1")},
        "c.sh:1:": {"c.sh": "cd " + joined("/wor", "k/main")},
        "d.h:3:": {"d.h": "\n\n// " + joined("FIX", "ME")},
        "e.txt:1:": {"e.txt": "closes " + joined("iss", "ue 2")},
        joined("measured-", "facts.md:0:"): {joined("measured-", "facts.md"): ""},
    },
    # Words and places that only look like those.
    good={
        "a.md": joined("The editor restores the ses", "sion, and work goes on. A pa", "rt 3 inches wide. Iss", "ues.")
        + " Specific parts.",
        "b.sh": joined("mktemp /tm", "p/a.") + "X" * 6 + joined("\nls /ho", "me/a/wo", "rk/x"),
        "c.png": "\0" + joined("TO", "DO"),
    },
)

if __name__ == "__main__":
    RULE.main()
