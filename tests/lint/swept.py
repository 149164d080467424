#!/usr/bin/env python3
"""Each exported widget class takes part in the sweeps."""

import re

import lintlib
import tested

TABLE = "tests/sweep/Specimens.cpp"
DERIVED = re.compile(r"^\s*class\s+[A-Z]+_EXPORT\s+(\w+)(?:\s+final)?\s*:\s*public\s+(\w+)")
# The toolkit's classes that are no widgets though their names might suggest otherwise.
NO_WIDGETS = {"QObject", "QAbstractItemModel", "QStyledItemDelegate", "QGraphicsObject", "QGraphicsItem", "QStandardItemModel",
              "QUndoCommand", "QThread", "QEvent"}


def bases(root):
    """Exported class -> its first base, and where it stands."""
    found = {}
    for path in filter(tested.public, lintlib.files(root, [".h"])):
        for number, match in lintlib.lines_matching(DERIVED, lintlib.code_of(lintlib.text_of(root, path))):
            found[match.group(1)] = (match.group(2), path, number)
    return found


def is_widget(name, found):
    while name in found:
        name = found[name][0]
    return name.startswith("Q") and name not in NO_WIDGETS


def check(root):
    found = bases(root)
    table = lintlib.text_of(root, TABLE) if TABLE in lintlib.files(root, [".cpp"]) else ""
    return [
        lintlib.Finding(path, number, f"the widget {name} is not in the table of {TABLE}")
        for name, (_, path, number) in found.items()
        if is_widget(name, found) and f'{{"{name}",' not in table
    ]


RULE = lintlib.Rule(
    name="swept",
    rule=f"Each exported widget class has a specimen in {TABLE}.",
    reason="What must hold for all widgets (random input, deletion at bad moments, names for screen readers) is only "
    "tested for those that stand there.",
    remedy="Add a row with a function that makes the widget as a host does.",
    check=check,
    bad={
        "include/NVBar.h:1:": {"include/NVBar.h": "class GENERALTOOLSGUI_EXPORT NVBar : public NVBase\n",
                               "siblings/gui/include/NVBase.h": "class GUI_EXPORT NVBase : public QWidget\n",
                               TABLE: '    {"NVBase", make, true, {}},\n'},
    },
    good={
        "include/NVBar.h": "class GENERALTOOLSGUI_EXPORT NVBar : public QSpinBox\n",
        "siblings/gui/include/Model.h": "class GUI_EXPORT Model : public QObject\nclass GUI_EXPORT Value\n",
        TABLE: '    {"NVBar", make, true, {}},\n',
    },
)

if __name__ == "__main__":
    RULE.main()
