#!/usr/bin/env python3
"""Includes only point down the layers."""

import os
import re

import lintlib

# Each layer and those that it may include.
BELOW = {
    "utils": [],
    "resource": [],
    "geometryengine": [],
    "core": ["utils", "resource", "geometryengine"],
    "batchcore": ["core"],
    "document": ["core", "utils", "resource", "geometryengine"],
    "guicore": ["document", "core", "utils", "resource", "geometryengine"],
    "gui": ["guicore", "document", "core", "utils", "resource", "geometryengine"],
}
SIBLINGS = list(BELOW)
BELOW["generaltoolsgui"] = SIBLINGS
BELOW["theme"] = SIBLINGS
BELOW["translations"] = []
BELOW["gallery"] = SIBLINGS + ["generaltoolsgui", "theme", "translations"]
BELOW["editor"] = SIBLINGS + ["generaltoolsgui", "theme", "translations"]

INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')
FORM_HEADER = re.compile(r"<header[^>]*>([^<]+)</header>")


def layer_of(path):
    """The layer that a file belongs to; None for programs above all layers."""
    parts = path.split("/")
    if parts[0] == "siblings" and len(parts) > 2:
        return parts[1]
    if parts[0] in ("include", "src", "forms"):
        return "generaltoolsgui"
    if parts[:2] == ["editor", "theme"]:
        return "theme"
    return parts[0] if parts[0] in ("editor", "gallery", "translations") else None


def headers_by_name(root):
    """File name -> layers that have a header of this name."""
    known = {}
    for path in lintlib.files(root, [".h"]):
        layer = layer_of(path)
        if layer:
            known.setdefault(os.path.basename(path), set()).add(layer)
    return known


def judge(layer, name, known):
    """What is wrong with including `name` from `layer`, or None."""
    if name.startswith("opencv2/"):
        return None if layer == "editor" else f"{name}: only the editor may use this library"
    layers = known.get(os.path.basename(name), set())
    if not layers and name.endswith("_export.h"):
        layers = {name[: -len("_export.h")]}
    allowed = set(BELOW.get(layer, [])) | {layer}
    if layers and not layers & allowed:
        return f"{layer} includes {name} of {'/'.join(sorted(layers))}"
    return None


def check(root):
    known = headers_by_name(root)
    findings = []
    for path in lintlib.files(root, [".h", ".cpp", ".ui"]):
        layer = layer_of(path)
        if not layer:
            continue
        pattern = FORM_HEADER if path.endswith(".ui") else INCLUDE
        for number, match in lintlib.lines_matching(pattern, lintlib.text_of(root, path) or ""):
            wrong = judge(layer, match.group(match.lastindex), known)
            if wrong:
                findings.append(lintlib.Finding(path, number, wrong))
    return findings


RULE = lintlib.Rule(
    name="layers",
    rule="A file includes headers of its own layer and of lower ones only: utils, resource, geometryengine -> core -> "
    "document -> guicore -> gui -> generaltoolsgui -> editor, gallery; batchcore stands on core alone; editor/theme, which "
    "editor and gallery share, stands on siblings alone, and translations, which they share too, on nothing; OpenCV is for "
    "the editor.",
    reason="A host may put its own library in place of a sibling, and the product must build without the editor.",
    remedy="Move what is needed down a layer, or hand it in from above: a parameter, a signal, an interface.",
    check=check,
    bad={
        "siblings/core/src/a.cpp:1:": {
            "siblings/core/src/a.cpp": '#include "KXDialog.h"\n',
            "siblings/guicore/include/KXDialog.h": "",
        },
        "siblings/utils/src/a.cpp:2:": {
            "siblings/utils/src/a.cpp": '\n#include "KXResource.h"\n',
            "siblings/resource/include/KXResource.h": "",
        },
        "siblings/batchcore/include/b.h:1:": {
            "siblings/batchcore/include/b.h": "#include <KXDocumentModel.h>\n",
            "siblings/document/include/KXDocumentModel.h": "",
        },
        "src/NVBar.cpp:1:": {"src/NVBar.cpp": '  #  include "MainWindow.h"\n', "editor/MainWindow.h": ""},
        "forms/Bar.ui:1:": {"forms/Bar.ui": "<header>MainWindow.h</header>\n", "editor/MainWindow.h": ""},
        "siblings/gui/src/a.cpp:1:": {"siblings/gui/src/a.cpp": '#include "generaltoolsgui_export.h"\n'},
        "gallery/a.cpp:1:": {"gallery/a.cpp": '#include "MainWindow.h"\n', "editor/MainWindow.h": ""},
        "editor/theme/a.cpp:1:": {"editor/theme/a.cpp": '#include "MainWindow.h"\n', "editor/MainWindow.h": ""},
        "src/NVBar.cpp:2:": {"src/NVBar.cpp": '\n#include "Theme.h"\n', "editor/theme/Theme.h": ""},
        "translations/a.cpp:1:": {"translations/a.cpp": '#include "Theme.h"\n', "editor/theme/Theme.h": ""},
        "src/b.cpp:1:": {"src/b.cpp": '#include "Language.h"\n', "translations/Language.h": ""},
        "src/blur.cpp:1:": {"src/blur.cpp": "#include <opencv2/imgproc.hpp>\n"},
    },
    good={
        "siblings/gui/src/a.cpp": '#include "KXDialog.h"\n#include "own.h"\n#include <QWidget>\n#include "gui_export.h"\n',
        "siblings/gui/src/own.h": "",
        "siblings/guicore/include/KXDialog.h": "",
        "src/NVBar.cpp": '#include "KXDialog.h"\n#include "ui_Bar.h"\n',
        "editor/tools/Tool.cpp": '#include "NVBar.h"\n#include <opencv2/photo.hpp>\n',
        "editor/tools/Look.cpp": '#include "Theme.h"\n',
        "editor/theme/Theme.h": "",
        "gallery/Bars.cpp": '#include "NVBar.h"\n#include "KXDialog.h"\n#include "Theme.h"\n#include "Rows.h"\n',
        "gallery/Rows.h": "",
        "include/NVBar.h": "",
        "tests/auto/NVBar/tst_NVBar.cpp": '#include "NVBar.h"\n#include "MainWindow.h"\n',
        "editor/MainWindow.h": "",
    },
)

if __name__ == "__main__":
    RULE.main()
