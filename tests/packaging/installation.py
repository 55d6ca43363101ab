#!/usr/bin/python3
"""What an installation holds, and that it serves those who build on it:
installation.py CMAKE BUILD-FOLDER COMPILER LIBRARIES.

Installs into a temporary folder, without root and network, and uses nothing but what lies there.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]
EXAMPLE = SOURCES / "tests/fixtures/example"
CMAKE, BUILD, COMPILER, LIBRARIES = sys.argv[1:]


def run(*command, **options):
    """What the command writes; it must succeed."""
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, encoding="utf-8", **options)
    if done.returncode != 0:
        raise AssertionError(f"{command} ends with {done.returncode}:\n{done.stdout}")
    return done.stdout


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="norvo-installation-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        run(CMAKE, "--install", BUILD, "--prefix", cls.folder / "first")
        # Nothing may depend on where it was installed to.
        cls.prefix = (cls.folder / "first").rename(cls.folder / "moved")
        cls.libraries = cls.prefix / LIBRARIES
        cls.documents = cls.prefix / "share/doc/norvo-panel"
        cls.program = cls.prefix / "bin/norvo-panel"

    def check_example(self, plugins):
        """The plug-in's panel, which knows its types from it alone."""
        panel = EXAMPLE / "panel.yaml"
        run(self.program, "--plugins", plugins, "--check", panel)
        without = subprocess.run([self.program, "--check", panel], stdout=subprocess.PIPE, encoding="utf-8")
        self.assertEqual(without.returncode, 1)
        self.assertIn("tally", without.stdout)

    def test_everyHeaderOfTheContractIsThere(self):
        private = {"LibraryPart.h", "Truncation.h"}
        contract = {header.name for header in (SOURCES / "plugin/norvo").glob("*.h")} - private
        installed = {header.name for header in (self.prefix / "include/norvo").iterdir()}
        self.assertEqual(installed, contract)

    def test_headersOfTheContractNeedNoOther(self):
        flags = run("pkg-config", "--cflags", "norvogui", "Qt5Qml", env=self.package_environment()).split()
        headers = sorted((self.prefix / "include/norvo").iterdir())
        text = "".join(f'#include "norvo/{header.name}"\n' for header in headers)
        run(COMPILER, "-std=c++17", "-fPIC", "-fsyntax-only", "-x", "c++", *flags, "-", input=text)

    def test_plugInIsBuiltByFindPackage(self):
        build = self.folder / "by-cmake"
        run(CMAKE, "-S", EXAMPLE, "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}",
            f"-DCMAKE_CXX_COMPILER={COMPILER}", "-DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF")
        found = re.search("^Norvo_DIR:PATH=(.*)$", (build / "CMakeCache.txt").read_text(), re.MULTILINE)
        self.assertEqual(pathlib.Path(found[1]), self.libraries / "cmake/Norvo")
        run(CMAKE, "--build", build)
        self.check_example(build)

    def package_environment(self):
        return {**os.environ, "PKG_CONFIG_PATH": str(self.libraries / "pkgconfig")}

    def test_plugInIsBuiltByPkgConfig(self):
        environment = self.package_environment()
        build = self.folder / "by-pkg-config"
        build.mkdir()
        moc = run("pkg-config", "--variable=host_bins", "Qt5Core", env=environment).strip() + "/moc"
        flags = run("pkg-config", "--cflags", "--libs", "norvogui", env=environment).split()
        self.assertIn(f"-L{self.libraries}", [os.path.normpath(flag) for flag in flags])
        includes = [flag for flag in flags if flag.startswith("-I")]
        for name in ("ScaleDevice.h", "TallyDevice.h", "TallyWidget.h", "ExamplePlugin.cpp"):
            made = "ExamplePlugin.moc" if name.endswith(".cpp") else f"moc_{name}.cpp"
            run(moc, *includes, EXAMPLE / name, "-o", build / made)
        sources = [*EXAMPLE.glob("*.cpp"), *build.glob("moc_*.cpp")]
        hiding = ["-fvisibility=hidden", "-fvisibility-inlines-hidden"]
        run(COMPILER, "-std=c++17", "-shared", "-fPIC", *hiding, "-I", build, "-I", EXAMPLE, *sources, *flags,
            "-o", build / "libexample.so")
        self.check_example(build)

    def test_packageNamesItsPlugInFolder(self):
        folder = run("pkg-config", "--variable=plugindir", "norvo", env=self.package_environment()).strip()
        self.assertTrue((pathlib.Path(folder) / "libnorvoguidevices.so").is_file(), folder)

    def test_everyInstalledExampleIsWithoutError(self):
        panels = sorted(self.documents.glob("examples/*/panel.yaml"))
        here = sorted(SOURCES.glob("examples/*/panel.yaml"))
        self.assertEqual([panel.parent.name for panel in panels], [panel.parent.name for panel in here])
        self.assertGreater(len(panels), 0)
        for panel in panels:
            with self.subTest(panel=panel.parent.name):
                run(self.program, "--check", panel)

    def test_installedProgramKnowsTheTypesOfTheBuild(self):
        self.assertEqual(run(self.program, "--types"), run(pathlib.Path(BUILD) / "bin/norvo-panel", "--types"))

    def test_documentsReachWhatTheyNameAmongThemselves(self):
        documents = [self.documents / "README.md", *sorted(self.documents.glob("docs/*.md"))]
        self.assertGreater(len(documents), 10)
        for document in documents:
            for place in re.findall(r"\]\(([^)#:]+)[)#]", document.read_text()):
                with self.subTest(document=document.name, place=place):
                    self.assertTrue((document.parent / place).exists())

    def test_manualPageNamesEveryOption(self):
        page = (self.prefix / "share/man/man1/norvo-panel.1").read_text().replace("\\-", "-")
        options = set(re.findall("--[a-z][a-z-]*", run(self.program, "--help")))
        self.assertIn("--kiosk", options)
        self.assertEqual(options - set(re.findall("--[a-z][a-z-]*", page)), set())
        for heading in ("NAME", "SYNOPSIS", "OPTIONS", "EXIT STATUS"):
            self.assertIn(f"\n.SH {heading}\n", page)

    def complete(self, *words):
        completions = self.prefix / "share/bash-completion/completions/norvo-panel"
        line = " ".join(f"'{word}'" for word in (self.program, *words))
        text = run("bash", "--norc", "-c", f"shopt -s extglob; source '{completions}'; COMP_WORDS=({line}); "
                   f"COMP_CWORD={len(words)}; _norvo_panel; printf '%s\\n' \"${{COMPREPLY[@]}}\"",
                   cwd=self.documents / "examples/bench")
        return text.split()

    def test_bashCompletesOptionsTypesAndPanels(self):
        self.assertEqual(self.complete("--fu"), ["--fullscreen"])
        self.assertEqual(self.complete("--describe", "output_v"), ["output_vector"])
        self.assertEqual(self.complete("--theme", "d"), ["dark"])
        self.assertEqual(self.complete("--check", "pa"), ["panel.yaml"])
        self.assertEqual(self.complete("--check", "be"), [])  # bench.py is no panel.

    def test_desktopFindsProgramAndIcon(self):
        share = self.prefix / "share"
        entry = (share / "applications/norvo-panel.desktop").read_text()
        icon = re.search("^Icon=(.*)$", entry, re.MULTILINE)[1]
        self.assertTrue((share / f"icons/hicolor/scalable/apps/{icon}.svg").is_file())
        for command in re.findall(r"^Exec=(\S+)", entry, re.MULTILINE):
            self.assertTrue(os.access(self.prefix / "bin" / command, os.X_OK), command)
        data = (share / "metainfo/norvo-panel.metainfo.xml").read_text()
        self.assertIn('<launchable type="desktop-id">norvo-panel.desktop</launchable>', data)

    def test_serviceRunsTheInstalledProgram(self):
        unit = (self.prefix / "lib/systemd/user/norvo-panel@.service").read_text()
        command, option = re.search(r"^ExecStart=(\S+) (\S+) %h/%I$", unit, re.MULTILINE).groups()
        self.assertTrue(os.access(self.prefix / "bin" / command, os.X_OK), command)
        self.assertIn(option, run(self.program, "--help"))

    def test_licencesAreThere(self):
        self.assertIn("GENERAL PUBLIC LICENSE", (self.documents / "LICENSE").read_text())
        self.assertIn("LESSER GENERAL PUBLIC", (self.documents / "LICENSE.LGPL").read_text())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
