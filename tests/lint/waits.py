#!/usr/bin/env python3
"""Tests wait for something, not for a while."""

import lintlib

# qWait with a number, and whatever puts the thread to sleep.
FIXED_WAIT = (
    r"\b(?:qWait\s*\(\s*[\w:]*\d[\w:]*\s*\)|qSleep\s*\(|QThread::m?u?sleep\s*\(|sleep_(?:for|until)\s*\("
    r"|(?<!\w)u?sleep\s*\(|nanosleep\s*\()"
)


def check(root):
    findings = []
    for path in lintlib.files(root, lintlib.CXX, "tests/"):
        for number, match in lintlib.lines_matching(FIXED_WAIT, lintlib.code_of(lintlib.text_of(root, path) or "")):
            findings.append(lintlib.Finding(path, number, f"fixed wait: {match.group(0)}"))
    return findings


RULE = lintlib.Rule(
    name="waits",
    rule="No test waits for a fixed time.",
    reason="A wait that is long enough on one machine is too short on a busy one, and all of them together cost minutes.",
    remedy="Wait for what the test needs: QTRY_VERIFY, QTRY_COMPARE, QTest::qWaitFor, qWaitForWindowActive, QSignalSpy::wait.",
    check=check,
    bad={
        "tests/auto/A/tst_A.cpp:2:": {"tests/auto/A/tst_A.cpp": "\nQTest::qWait(100);\n"},
        "tests/a.cpp:1:": {"tests/a.cpp": "QThread::msleep(delay);\n"},
        "tests/b.cpp:1:": {"tests/b.cpp": "usleep(5);"},
        "tests/c.h:1:": {"tests/c.h": "std::this_thread::sleep_for(1s);"},
        "tests/d.cpp:1:": {"tests/d.cpp": "QTest::qSleep(delay);"},
    },
    good={
        "tests/a.cpp": "// qWait(100)\nQTRY_VERIFY(x);\nQTest::qWaitFor([] { return true; }, 50);\nspy.wait(500);\nqWaitForWindowActive(&w, 5000);\n",
        "src/a.cpp": "QThread::msleep(10);\n",
    },
)

if __name__ == "__main__":
    RULE.main()
