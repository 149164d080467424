#!/usr/bin/env python3
"""Each exported class has a test of its name."""

import os
import re

import lintlib

# Class -> why it needs no test of its own.
ALLOWED = {
    "IBrush": "a pure interface: nothing of it runs",
}

EXPORTED = re.compile(r"^\s*(?:class|struct)\s+[A-Z]+_EXPORT\s+(\w+)\b(?!\s*;)")


def public(path):
    parts = path.split("/")
    return parts[0] == "include" or (parts[0] == "siblings" and len(parts) == 4 and parts[2] == "include")


def check(root):
    findings = []
    used = set()
    seen = set()
    for path in filter(public, lintlib.files(root, [".h"])):
        for number, match in lintlib.lines_matching(EXPORTED, lintlib.code_of(lintlib.text_of(root, path))):
            name = match.group(1)
            seen.add(name)
            test = f"tests/auto/{name}/tst_{name}.cpp"
            if os.path.isfile(os.path.join(root, test)):
                continue
            if name in ALLOWED:
                used.add(name)
            else:
                findings.append(lintlib.Finding(path, number, f"{name} has no {test}"))
    present = [name for name in ALLOWED if name in seen]
    return findings + lintlib.stale_entries(present, used, "tests/lint/tested.py")


RULE = lintlib.Rule(
    name="tested",
    rule="Each exported class <Class> has tests/auto/<Class>/tst_<Class>.cpp.",
    reason="Who changes a class must find what it is held to by its name alone, and no class may go without.",
    remedy="Write the test. A pure interface may stand on the allow-list in tests/lint/tested.py with the reason.",
    check=check,
    bad={
        "include/NVBar.h:1:": {"include/NVBar.h": "class GENERALTOOLSGUI_EXPORT NVBar : public QWidget\n{\n};\n"},
        "siblings/gui/include/Two.h:3:": {
            "siblings/gui/include/Two.h": "class GUI_EXPORT One {};\n\nstruct GUI_EXPORT Two\n{\n};\n",
            "tests/auto/One/tst_One.cpp": "",
        },
        "tests/lint/tested.py:0:": {
            "include/IBrush.h": "class GUI_EXPORT IBrush {};\n",
            "tests/auto/IBrush/tst_IBrush.cpp": "",
        },
    },
    good={
        "include/NVBar.h": "class GENERALTOOLSGUI_EXPORT Other;\nclass GENERALTOOLSGUI_EXPORT NVBar\n{\n};\n",
        "tests/auto/NVBar/tst_NVBar.cpp": "",
        "siblings/gui/include/IBrush.h": "class GUI_EXPORT IBrush {};\n",
        "siblings/gui/src/Private_p.h": "class GUI_EXPORT Private {};\n",
        "siblings/gui/include/Free.h": "GUI_EXPORT int Free();\nclass Plain {};\n",
    },
)

if __name__ == "__main__":
    RULE.main()
