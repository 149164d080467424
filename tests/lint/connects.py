#!/usr/bin/env python3
"""Connections name functions, not strings."""

import os

import lintlib

# File -> why it has to connect by name.
ALLOWED = {
    "tests/auto/NVBrushToolbarWidget/tst_NVBrushToolbarWidget.cpp":
        "a private slot must meet a sender that it does not know, and a test has no other address for it",
}

STRING_CONNECT = r"\b(SIGNAL|SLOT)\s*\("


def check(root):
    findings = []
    used = set()
    for path in lintlib.files(root, lintlib.CXX):
        for number, match in lintlib.lines_matching(STRING_CONNECT, lintlib.code_of(lintlib.text_of(root, path) or "")):
            if path in ALLOWED:
                used.add(path)
            else:
                findings.append(lintlib.Finding(path, number, f"{match.group(1)}() binds by name"))
    present = [path for path in ALLOWED if os.path.isfile(os.path.join(root, path))]
    return findings + lintlib.stale_entries(present, used, "tests/lint/connects.py")


RULE = lintlib.Rule(
    name="connects",
    rule="No connection is made by SIGNAL() and SLOT() outside of the allow-list in tests/lint/connects.py.",
    reason="The compiler does not see a misspelled name or a changed argument; the connection just fails at run time.",
    remedy="connect(sender, &Sender::Signal, receiver, &Receiver::OnSignal), overloads through qOverload<int>. If a "
    "connection by name is required, put the file on the allow-list with the reason.",
    check=check,
    bad={
        "src/a.cpp:2:": {"src/a.cpp": "void f()\n{ connect(a, SIGNAL(clicked()), b, &B::g); }\n"},
        "tests/auto/A/tst_A.cpp:1:": {"tests/auto/A/tst_A.cpp": "connect(a, &A::f, b, SLOT (g()));\n"},
    },
    good={
        "src/a.cpp": '// SIGNAL(x)\n/* SLOT(y)\n*/\nauto s = "SIGNAL(z)";\nQ_SIGNALS:\nconnect(a, &A::f, b, &B::g);\n',
        "docs/style.md": "not SIGNAL(clicked())",
    },
)

if __name__ == "__main__":
    RULE.main()
