"""What the form compiler's wrapper writes for lists of texts, and that it leaves everything else alone."""
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

WRAPPER = sys.argv.pop(1)
FORMS = pathlib.Path(__file__).resolve().parents[2] / "forms"


def form(items):
    return f"""<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0"><class>Sample</class><widget class="QWidget" name="Sample">
<property name="windowTitle"><string>Title</string></property>
<layout class="QVBoxLayout" name="layout"><item>{items}</item></layout></widget></ui>"""


def combo(name, *items, extra=""):
    return f'<widget class="QComboBox" name="{name}">{extra}{"".join(items)}</widget>'


def text(value, attributes=""):
    return f'<item><property name="text"><string{attributes}>{value}</string></property></item>'


def compile_form(content, compiler=WRAPPER):
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder) / "sample.ui"
        target = pathlib.Path(folder) / "ui_sample.h"
        source.write_text(content, encoding="utf-8")
        subprocess.run([compiler, "-o", str(target), str(source)], check=True)
        return target.read_text(encoding="utf-8")


def plain_uic():
    for line in pathlib.Path(WRAPPER).read_text(encoding="utf-8").splitlines():
        if line.startswith("UIC = "):
            return line.split('"')[1]
    raise AssertionError("the wrapper names no form compiler")


class Wrapper(unittest.TestCase):
    def body(self, code, function):
        start = code.index(f"void {function}(")
        return code[start:code.index("} // " + function)]

    def test_translated_list_is_cleared_and_inserted_at_once(self):
        code = compile_form(form(combo("list", text("One"), text("Two"))))
        retranslate = self.body(code, "retranslateUi")
        self.assertNotIn("addItem", code)
        self.assertNotIn("setItemText", code)
        self.assertEqual(retranslate.count("list->clear();"), 1)
        self.assertLess(retranslate.index("list->clear()"), retranslate.index("list->insertItems(0, QStringList()"))
        self.assertLess(retranslate.index('"One"'), retranslate.index('"Two"'))

    def test_current_index_is_set_behind_the_texts(self):
        index = '<property name="currentIndex"><number>1</number></property>'
        code = compile_form(form(combo("list", text("One"), text("Two"), extra=index)))
        setup = self.body(code, "setupUi")
        self.assertLess(setup.index("retranslateUi("), setup.index("list->setCurrentIndex(1)"))

    def test_every_form_of_the_library_rebuilds_its_lists(self):
        forms = sorted(FORMS.glob("*.ui"))
        self.assertTrue(forms)
        for path in forms:
            content = path.read_text(encoding="utf-8")
            boxes = re.findall(r'<widget class="(?:KXCommonComboBox|QComboBox)".*?</widget>', content, re.S)
            lists = sum("<item>" in box for box in boxes)
            code = compile_form(content)
            with self.subTest(form=path.name):
                self.assertNotIn("setItemText", code)
                self.assertEqual(code.count("->clear();"), lists)
                self.assertEqual(code.count("->insertItems(0, QStringList()"), lists)

    def test_text_of_several_lines_does_not_keep_its_list_back(self):
        code = compile_form(form(combo("list", text("One\nTwo"), text("Three"))))
        self.assertEqual(code.count("insertItems"), 1)
        self.assertNotIn("setItemText", code)

    def test_texts_with_quotes_commas_and_brackets_survive(self):
        code = compile_form(form(combo("list", text("a, (b) &quot;c&quot; %1"), text("Ünï"))))
        self.assertIn('"a, (b) \\"c\\" %1"', code)
        self.assertEqual(code.count("insertItems"), 1)

    def test_list_with_an_untranslated_item_stays_as_it_was(self):
        content = form(combo("list", text("One"), text("2", ' notr="true"')))
        self.assertIn("list->addItem(QString())", compile_form(content, plain_uic()))
        self.assertEqual(compile_form(content), compile_form(content, plain_uic()))

    def test_two_lists_keep_their_own_items(self):
        code = compile_form(form("<widget class='QWidget' name='box'><layout class='QVBoxLayout' name='inner'><item>"
                                 + combo("first", text("One")) + "</item><item>"
                                 + combo("second", text("Two"), text("Three")) + "</item></layout></widget>"))
        retranslate = self.body(code, "retranslateUi")
        first = retranslate.index("first->insertItems")
        second = retranslate.index("second->insertItems")
        self.assertIn('"One"', retranslate[first:second])
        self.assertNotIn('"Two"', retranslate[first:second])
        self.assertIn('"Three"', retranslate[second:])

    def test_form_without_lists_is_handed_on_to_the_letter(self):
        content = form('<widget class="QLabel" name="label"><property name="text"><string>x</string></property></widget>')
        self.assertEqual(compile_form(content), compile_form(content, plain_uic()))

    def test_help_and_version_are_the_compilers_own(self):
        for option in ("--help", "--version"):
            wrapped = subprocess.run([WRAPPER, option], stdout=subprocess.PIPE, check=True).stdout
            plain = subprocess.run([plain_uic(), option], stdout=subprocess.PIPE, check=True).stdout
            self.assertEqual(wrapped.replace(b"uic-with-lists", b"uic"), plain)

    def test_broken_form_fails_and_writes_nothing(self):
        with tempfile.TemporaryDirectory() as folder:
            source = pathlib.Path(folder) / "broken.ui"
            target = pathlib.Path(folder) / "ui_broken.h"
            source.write_text("<ui version='4.0'><class>", encoding="utf-8")
            run = subprocess.run([WRAPPER, "-o", str(target), str(source)], stderr=subprocess.DEVNULL, check=False)
            self.assertNotEqual(run.returncode, 0)
            self.assertFalse(target.exists())


if __name__ == "__main__":
    unittest.main()
