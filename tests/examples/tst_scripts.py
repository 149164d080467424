"""Tests of run.sh, test.sh and tools/*.sh: the programs that they start are replaced by ones that write down their call."""

import os
import pathlib
import shutil
import stat
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
# what the scripts use and what is left as it is
PLAIN = ("bash env sed cat dirname head tail sort grep mkdir rm find tee mktemp sleep timeout id").split()


class ScriptTest(unittest.TestCase):
    """A copy of the scripts in a folder with a space in its name, and a PATH with only the programs of the test."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="norvane scripts "))
        self.addCleanup(shutil.rmtree, self.folder)
        self.root = self.folder / "clone"
        (self.root / "tools").mkdir(parents=True)
        for name in ("run.sh", "test.sh"):
            shutil.copy(ROOT / name, self.root)
        for script in (ROOT / "tools").glob("*.sh"):
            shutil.copy(script, self.root / "tools")
        self.programs = self.folder / "programs"
        self.programs.mkdir()
        for name in PLAIN:
            (self.programs / name).symlink_to(shutil.which(name))
        self.calls = self.folder / "calls"

    def program(self, name, body="", folder=None):
        """A program that writes down its name and arguments, one call a line, and then does what body says."""
        path = (folder or self.programs) / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.unlink(missing_ok=True)
        path.write_text(f"#!/bin/bash\nprintf '%s' {name} >>'{self.calls}'\n"
                        f"printf '|%s' \"$@\" >>'{self.calls}'\nprintf '\\n' >>'{self.calls}'\n{body}\n")
        path.chmod(path.stat().st_mode | stat.S_IXUSR | stat.S_IXGRP | stat.S_IXOTH)

    def run_script(self, script, *arguments, cwd=None, **environment):
        clean = {"PATH": str(self.programs), "HOME": str(self.folder), **environment}
        return subprocess.run([str(self.root / script), *arguments], cwd=cwd or self.folder, env=clean,
                              capture_output=True, text=True, timeout=60)

    def called(self, name):
        lines = self.calls.read_text().splitlines() if self.calls.exists() else []
        return [line.split("|")[1:] for line in lines if line.split("|")[0] == name]


class InstallPackages(ScriptTest):
    def setUp(self):
        super().setUp()
        self.there = self.folder / "there"
        # a package is installed when a file of its name stands in the folder "there"
        self.there.mkdir()
        self.program("dpkg-query", f"[ -e '{self.there}'/\"${{@: -1}}\" ] && echo installed")
        self.program("cmake", "echo cmake version 3.25.1")
        self.program("id", "echo 0")
        self.program("apt-get", f"""
            [ "$DEBIAN_FRONTEND" = noninteractive ] || exit 9
            for argument; do case $argument in -*|*::*|install|update) ;; *) >'{self.there}'/"$argument" ;; esac; done""")

    def install(self, *groups, **environment):
        return self.run_script("tools/install-packages.sh", *groups, **environment)

    def test_installs_only_what_is_missing(self):
        (self.there / "git").touch()
        (self.there / "clazy").touch()
        run = self.install("lint")
        self.assertEqual(run.returncode, 0, run.stderr)
        update, install = self.called("apt-get")
        self.assertEqual(update[-1], "update")
        self.assertIn("--no-install-recommends", install)
        self.assertEqual(install[-2:], ["clang-format", "clang-tidy"])

    def test_calls_nothing_when_all_is_there(self):
        self.install("lint")
        self.calls.unlink()
        self.assertEqual(self.install("lint").returncode, 0)
        self.assertEqual(self.called("apt-get"), [])

    def test_goes_through_sudo_when_not_root(self):
        self.program("id", "echo 1000")
        self.program("sudo", '"$@"')
        run = self.install("test")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual(len(self.called("sudo")), 2)
        self.assertEqual(len(self.called("apt-get")), 2)

    def test_names_the_packages_when_it_cannot_become_root(self):
        self.program("id", "echo 1000")
        run = self.install("lint")
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("no sudo", run.stderr)
        self.assertIn("missing packages: clang-format clang-tidy clazy git", run.stderr)

    def test_names_the_packages_when_there_is_no_apt(self):
        (self.programs / "apt-get").unlink()
        run = self.install("test")
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("missing packages: desktop-file-utils git", run.stderr)

    def test_names_the_packages_when_there_is_no_dpkg(self):
        (self.programs / "dpkg-query").unlink()
        run = self.install("test")
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("missing packages: desktop-file-utils git", run.stderr)
        self.assertEqual(self.install("test", NORVANE_SKIP_PACKAGES="1").returncode, 0)

    def test_fails_when_apt_fails(self):
        for body in ("exit 100", "[ \"${@: -1}\" = update ] || exit 100", ""):
            with self.subTest(body=body):
                self.program("apt-get", body)
                run = self.install("test")
                self.assertNotEqual(run.returncode, 0)
                self.assertIn("missing packages: desktop-file-utils git", run.stderr)

    def test_refuses_an_old_cmake(self):
        for version, good in (("3.24.4", False), ("3.9.0", False), ("3.25.0", True), ("4.0.1", True)):
            with self.subTest(version=version):
                self.program("cmake", f"echo cmake version {version}")
                run = self.install("build")
                self.assertEqual(run.returncode == 0, good, run.stderr)

    def test_refuses_an_unknown_group(self):
        self.assertNotEqual(self.install("nonsense").returncode, 0)
        self.assertNotEqual(self.install().returncode, 0)


class Run(ScriptTest):
    def setUp(self):
        super().setUp()
        self.program("install-packages.sh", folder=self.root / "tools")
        self.program("cmake")
        self.program("norvane", f'echo "$QT_QPA_PLATFORM" >"{self.folder}/platform"; exit "${{NORVANE_STATUS:-0}}"',
                     folder=self.root / "build/release/bin")

    def platform(self):
        return (self.folder / "platform").read_text().strip()

    def test_plays_the_tour_where_there_is_no_display(self):
        run = self.run_script("run.sh")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual(self.called("norvane"), [["--tour", f"{self.folder}/tour"]])
        self.assertEqual(self.platform(), "offscreen")
        self.assertIn(f"pictures of the tour are in {self.folder}/tour", run.stdout)

    def test_uses_a_virtual_display_if_it_can_be_had(self):
        for name in ("Xvfb", "openbox", "xdotool"):
            self.program(name)
        self.program("virtual-display.sh", '"$@"', folder=self.root / "tools")
        run = self.run_script("run.sh", "a.png")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual(self.called("norvane"), [["--tour", f"{self.folder}/tour", f"{self.folder}/a.png"]])
        self.assertEqual(self.platform(), "xcb")

    def test_hands_on_the_status_of_the_tour(self):
        run = self.run_script("run.sh", NORVANE_STATUS="3")
        self.assertEqual(run.returncode, 3)
        self.assertIn("status 3", run.stderr)

    def test_a_display_that_nobody_serves_is_none(self):
        self.program("xdotool", "exit 1")
        run = self.run_script("run.sh", DISPLAY=":77", WAYLAND_DISPLAY="wayland-9", XDG_RUNTIME_DIR=str(self.folder))
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual(len(self.called("norvane")), 1)
        self.assertEqual(self.called("norvane")[0][0], "--tour")

    def test_starts_the_editor_on_a_display(self):
        self.program("xdotool")
        run = self.run_script("run.sh", "a.png", DISPLAY=":0", NORVANE_STATUS="4")
        self.assertEqual(run.returncode, 4)
        self.assertEqual(self.called("norvane"), [[f"{self.folder}/a.png"]])

    def test_takes_any_name_from_any_folder(self):
        elsewhere = self.folder / "some where"
        elsewhere.mkdir()
        for name in ("a picture.png", "-rf", "--tour", "ümläut $HOME*.png", "sub/-x.png"):
            with self.subTest(name=name):
                self.calls.unlink(missing_ok=True)
                run = self.run_script("run.sh", name, cwd=elsewhere)
                self.assertEqual(run.returncode, 0, run.stderr)
                self.assertEqual(self.called("norvane"), [["--tour", f"{elsewhere}/tour", f"{elsewhere}/{name}"]])

    def test_leaves_an_absolute_name_alone(self):
        self.run_script("run.sh", "/pictures/a.png")
        self.assertEqual(self.called("norvane")[0][-1], "/pictures/a.png")

    def test_does_not_start_what_was_not_built(self):
        self.program("cmake", '[ "$1" != --build ]')
        self.assertNotEqual(self.run_script("run.sh").returncode, 0)
        self.assertEqual(self.called("norvane"), [])

    def test_refuses_two_images(self):
        self.assertNotEqual(self.run_script("run.sh", "a", "b").returncode, 0)
        self.assertEqual(self.called("norvane"), [])
        self.assertEqual(self.run_script("run.sh", "--help").returncode, 0)


class Test(ScriptTest):
    GOOD = "mkdir -p build/dev; echo '100% tests passed, 0 tests failed out of 7'"

    def setUp(self):
        super().setUp()
        self.program("install-packages.sh", folder=self.root / "tools")
        self.program("cmake", "mkdir -p build/dev build/asan build/release build/tsan")
        self.program("ctest", self.GOOD)
        for name in ("format.sh", "tidy.sh", "clazy.sh", "benchmarks.sh", "virtual-display.sh", "build-tsan-qt.sh",
                     "run-tsan.sh", "batch-scan-instructions.py", "package.sh"):
            self.program(name, folder=self.root / "tools")
        self.program("virtual-display.sh", '"$@"', folder=self.root / "tools")
        self.program("embedded.sh", folder=self.root / "tests/examples")
        self.program("with-print-server.sh", '"$@"', folder=self.root / "tests/printing")
        self.program("norvane", 'echo x >"$2/index.html"; echo x >"$2/1.png"', folder=self.root / "build/release/bin")
        self.program("Xvfb")

    def test_ends_with_the_count_of_the_tests(self):
        run = self.run_script("test.sh")
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        self.assertIn("dev: 100% tests passed, 0 tests failed out of 7", run.stdout.split("==== summary")[1])
        self.assertEqual(self.called("tidy.sh"), [])
        self.assertEqual(self.called("build-tsan-qt.sh"), [])

    def test_fails_when_a_test_fails(self):
        self.program("ctest", "echo '86% tests passed, 1 tests failed out of 7'; exit 8")
        run = self.run_script("test.sh")
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("1 tests failed", run.stdout.split("==== summary")[1])

    def test_does_not_test_what_was_not_built(self):
        self.program("cmake", '[ "$1" != --build ]')
        run = self.run_script("test.sh")
        self.assertNotEqual(run.returncode, 0)
        self.assertEqual(self.called("ctest"), [])

    def test_full_runs_every_stage(self):
        self.program("ctest", self.GOOD + f"; echo \"$2 $NORVANE_MONKEY_EVENTS\" >>'{self.folder}/events'")
        run = self.run_script("test.sh", "--full")
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        for name in ("format.sh", "tidy.sh", "clazy.sh", "benchmarks.sh", "embedded.sh", "virtual-display.sh",
                     "batch-scan-instructions.py", "package.sh"):
            self.assertEqual(len(self.called(name)), 1, name)
        self.assertEqual(len(self.called("norvane")), 2)
        self.assertEqual(len(self.called("with-print-server.sh")), 2 * os.access("/usr/sbin/cupsd", os.X_OK))
        self.assertEqual((self.folder / "events").read_text().splitlines(), ["build/dev ", "build/asan 20000"])
        self.assertEqual(self.called("run-tsan.sh"), [])

    def test_full_fails_with_any_stage(self):
        stages = {name: self.root / "tools" for name in ("format.sh", "tidy.sh", "clazy.sh", "benchmarks.sh",
                                                         "batch-scan-instructions.py", "package.sh",
                                                         "virtual-display.sh")}
        stages["embedded.sh"] = self.root / "tests/examples"
        stages["norvane"] = self.root / "build/release/bin"
        for name, folder in stages.items():
            with self.subTest(stage=name):
                kept = (folder / name).read_text()
                self.program(name, "exit 1", folder=folder)
                run = self.run_script("test.sh", "--full")
                self.assertNotEqual(run.returncode, 0)
                self.assertIn("FAILED", run.stdout.split("==== summary")[1])
                (folder / name).write_text(kept)

    def test_full_fails_with_the_sanitized_tests_alone(self):
        self.program("ctest", '[ "$2" = build/dev ]')
        self.assertNotEqual(self.run_script("test.sh", "--full").returncode, 0)

    def test_a_tour_without_pictures_fails(self):
        self.program("norvane", folder=self.root / "build/release/bin")
        run = self.run_script("test.sh", "--full")
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("no index.html", run.stderr)

    def test_thread_fails_with_any_of_its_stages(self):
        self.assertEqual(self.run_script("test.sh", "--thread").returncode, 0)
        for name in ("build-tsan-qt.sh", "run-tsan.sh"):
            with self.subTest(stage=name):
                self.program(name, "exit 1", folder=self.root / "tools")
                self.assertNotEqual(self.run_script("test.sh", "--thread").returncode, 0)

    def test_refuses_an_unknown_option(self):
        self.assertNotEqual(self.run_script("test.sh", "--fulll").returncode, 0)
        self.assertEqual(self.called("cmake"), [])


class Package(ScriptTest):
    def setUp(self):
        super().setUp()
        for name in ("realpath", "cp"):
            (self.programs / name).symlink_to(shutil.which(name))
        self.program("dpkg-shlibdeps")
        self.program("file")
        # CPack writes into the folder behind -B
        self.program("cpack", '>"$4/norvane.deb" >"$4/libgeneraltoolsgui0.deb"')
        (self.root / "build/release").mkdir(parents=True)
        (self.root / "build/release/CPackConfig.cmake").touch()

    def test_packages_come_beside_what_is_there(self):
        folder = self.folder / "my packages"
        folder.mkdir()
        (folder / "letter").write_text("dear")
        run = self.run_script("tools/package.sh", "my packages")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual(sorted(path.name for path in folder.iterdir()),
                         ["letter", "libgeneraltoolsgui0.deb", "norvane.deb"])

    def test_goes_to_the_build_by_itself(self):
        self.assertEqual(self.run_script("tools/package.sh").returncode, 0)
        self.assertTrue((self.root / "build/packages/norvane.deb").exists())

    def test_failed_packing_is_told(self):
        self.program("cpack", "echo no space left; exit 1")
        run = self.run_script("tools/package.sh")
        self.assertEqual(run.returncode, 1)
        self.assertIn("no space left", run.stderr)

    def test_tells_what_is_missing(self):
        (self.programs / "file").unlink()
        self.assertIn("install-packages.sh package", self.run_script("tools/package.sh").stderr)
        (self.root / "build/release/CPackConfig.cmake").unlink()
        run = self.run_script("tools/package.sh")
        self.assertEqual(run.returncode, 1)
        self.assertIn("Build first", run.stderr)

    def test_refuses_what_is_no_folder(self):
        for arguments in (["--chek"], ["a", "b"], ["--check", "-x"]):
            self.assertEqual(self.run_script("tools/package.sh", *arguments).returncode, 1, arguments)
        self.assertEqual(self.run_script("tools/package.sh", "--help").returncode, 0)
        self.assertEqual(self.called("cpack"), [])


class Translations(ScriptTest):
    def setUp(self):
        super().setUp()
        for name in ("cp", "cmp", "diff"):
            (self.programs / name).symlink_to(shutil.which(name))
        self.texts = self.root / "translations"
        self.texts.mkdir()
        for name in ("generaltoolsgui_de.ts", "norvane_de.ts"):
            (self.texts / name).write_text("old\n")
        self.lupdate("old")

    def lupdate(self, text):
        self.program("lupdate", f'[ ! -e "${{@: -1}}" ] || [ -s "${{@: -1}}" ] || exit 1; echo {text} >"${{@: -1}}"')

    def test_check_passes_where_nothing_is_new(self):
        run = self.run_script("tools/translations.sh", "--check")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertEqual([call[call.index("-target-language") + 1] for call in self.called("lupdate")], ["de", "de"])

    def test_check_names_what_is_stale_and_leaves_it(self):
        self.lupdate("new")
        run = self.run_script("tools/translations.sh", "--check")
        self.assertEqual(run.returncode, 1)
        self.assertIn("translations/norvane_de.ts is not in line", run.stderr)
        self.assertEqual((self.texts / "norvane_de.ts").read_text(), "old\n")

    def test_rewrites_all_languages_and_begins_empty_ones(self):
        self.lupdate("new")
        (self.texts / "norvane_fr.ts").touch()
        run = self.run_script("tools/translations.sh")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual({path.read_text() for path in self.texts.iterdir()}, {"new\n"})

    def test_refuses_an_unknown_option(self):
        self.assertEqual(self.run_script("tools/translations.sh", "--chek").returncode, 2)
        self.assertEqual(self.called("lupdate"), [])


class VirtualDisplay(unittest.TestCase):
    @unittest.skipUnless(shutil.which("Xvfb") and shutil.which("openbox"), "no Xvfb or no openbox")
    def test_gives_a_managed_display_and_hands_on_the_status(self):
        run = subprocess.run([ROOT / "tools/virtual-display.sh", "bash", "-c",
                              "xdotool getdisplaygeometry && xdotool get_num_desktops >&2; exit 7"],
                             capture_output=True, text=True, timeout=60,
                             env={**os.environ, "NORVANE_VIRTUAL_SCREEN": "640x480x24"})
        self.assertEqual((run.returncode, run.stdout), (7, "640 480\n"), run.stderr)


if __name__ == "__main__":
    unittest.main()
