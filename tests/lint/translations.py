#!/usr/bin/env python3
"""Translations that fit the texts that they stand for."""

import html
import re

import lintlib

MESSAGE = re.compile(r"<message(?P<kind>[^>]*)>(?P<body>.*?)</message>", re.DOTALL)
SOURCE = re.compile(r"<source>(.*?)</source>", re.DOTALL)
TRANSLATION = re.compile(r"<translation(?P<kind>[^>]*)>(?P<body>.*?)</translation>", re.DOTALL)
FORM = re.compile(r"<numerusform[^>]*>(.*?)</numerusform>", re.DOTALL)
PLACE = re.compile(r"%(?:L?\d+|n)")
KEY = re.compile(r"&(?=\w)")
TAG = re.compile(r"<[^<>]+>")
EDGE = re.compile(r"^(\s*).*?([:.…!?]*\s*)$", re.DOTALL)


def flaw(source, text):
    """What the translation lacks that its source has, or the other way round."""
    if not text:
        return "no translation"
    for pattern, what in ((PLACE, "other places for values"), (TAG, "other tags")):
        if sorted(pattern.findall(source)) != sorted(pattern.findall(text)):
            return what
    if bool(KEY.search(source)) != bool(KEY.search(text)):
        return "a key by which it is reached stands in one of the two only"
    if EDGE.match(source).groups() != EDGE.match(text).groups():
        return "begins or ends in another way"
    return None


def check(root):
    findings = []
    for path in lintlib.files(root, [".ts"], "translations/"):
        text = lintlib.text_of(root, path)
        for message in MESSAGE.finditer(text):
            source = html.unescape(SOURCE.search(message["body"])[1])
            translation = TRANSLATION.search(message["body"])
            line = text.count("\n", 0, message.start()) + 1
            if translation["kind"]:
                findings.append(lintlib.Finding(path, line, f'"{source}": {translation["kind"].strip()}'))
                continue
            forms = FORM.findall(translation["body"]) if "numerus" in message["kind"] else [translation["body"]]
            for form in forms or [""]:
                wrong = flaw(source, html.unescape(form))
                if wrong:
                    findings.append(lintlib.Finding(path, line, f'"{source}" is "{html.unescape(form)}": {wrong}'))
    return findings


def catalog(source, translation, kind="", mark=""):
    return {"translations/a_de.ts": f"<TS>\n<message{kind}>\n<source>{source}</source>\n"
                                    f"<translation{mark}>{translation}</translation>\n</message>\n</TS>\n"}


RULE = lintlib.Rule(
    name="translations",
    rule="Each text has a translation, with the same places for values, tags and signs at its ends, and a key if it had "
    "one.",
    reason="A place that is lost hides a number or a name from the person; an entry without its key is out of reach.",
    remedy="Translate the text, or mend its translation, in translations/*.ts.",
    check=check,
    bad={
        'translations/a_de.ts:2: "Open": type': catalog("Open", "", mark=' type="unfinished"'),
        'translations/a_de.ts:2: "Close" is ""': catalog("Close", ""),
        'translations/a_de.ts:2: "%1 of %2"': catalog("%1 of %2", "%1 von"),
        'translations/a_de.ts:2: "%n left"': catalog(
            "%n left", "<numerusform>%n</numerusform><numerusform>viele</numerusform>", ' numerus="yes"'),
        'translations/a_de.ts:2: "&File"': catalog("&amp;File", "Datei"),
        'translations/a_de.ts:2: "Size:"': catalog("Size:", "Größe"),
        'translations/a_de.ts:2: "<b>Tip</b>"': catalog("&lt;b&gt;Tip&lt;/b&gt;", "Rat"),
    },
    good=catalog("&amp;Undo %1...", "%1 &amp;zurück..."),
)

if __name__ == "__main__":
    RULE.main()
