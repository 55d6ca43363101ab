#!/usr/bin/python3
"""Building for boards on another machine: boards.py CMAKE.

Fetches and installs nothing. What needs a compiler for arm64 is skipped where there is none.
"""
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCES = pathlib.Path(__file__).resolve().parents[2]
COMPILER = "aarch64-linux-gnu-g++"
CMAKE, = sys.argv[1:]
ARM64 = 183  # EM_AARCH64 of <elf.h>.

PROJECT = """
cmake_minimum_required(VERSION 3.22)
project(Probe LANGUAGES CXX)
find_package(OfTheBoard REQUIRED)
find_package(OfTheInstallation REQUIRED)
find_package(OfThisMachine QUIET PATHS ${CMAKE_SOURCE_DIR}/machine)
find_package(PkgConfig REQUIRED)
pkg_check_modules(PROBE REQUIRED probe)
message(STATUS "Seen: ${CMAKE_SYSTEM_PROCESSOR} ${CMAKE_CROSSCOMPILING} ${PROBE_INCLUDE_DIRS}")
message(STATUS "Found: board ${OfTheBoard_FOUND}, machine ${OfThisMachine_FOUND}")
add_library(probe MODULE probe.cpp)
"""


def packages(text):
    return [line for line in text.splitlines() if line and not line.startswith("#")]


def write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)


class Boards(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="norvo-boards-"))
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.copytree(SOURCES / "cmake", self.folder / "cmake")

    def target_packages(self):
        """Those that the script would unpack for the board."""
        (self.folder / "packaging").mkdir(exist_ok=True)
        shutil.copy(SOURCES / "packaging/cross-arm64", self.folder / "packaging")
        done = subprocess.run([self.folder / "packaging/cross-arm64", "--packages"],
                              stdout=subprocess.PIPE, encoding="utf-8", check=True)
        return done.stdout.split()

    def test_everyLibraryOfTheBuildIsUnpackedForTheBoard(self):
        listed = packages((SOURCES / "cmake/debian-packages.txt").read_text())
        taken = self.target_packages()
        self.assertEqual([name for name in taken if name not in listed], [])
        self.assertEqual([name for name in listed if name.endswith("-dev") and name not in taken], [])
        for tool in ("cmake", "ninja-build", "qttools5-dev-tools"):
            self.assertNotIn(tool, taken)

    def test_packageThatIsAddedToTheListIsUnpackedToo(self):
        with open(self.folder / "cmake/debian-packages.txt", "a", encoding="utf-8") as listed:
            listed.write("libprobe-dev\nprobe-tool\n")
        taken = self.target_packages()
        self.assertIn("libprobe-dev", taken)
        self.assertNotIn("probe-tool", taken)

    def test_presetTakesTheToolsForTheBoard(self):
        presets = json.loads((SOURCES / "CMakePresets.json").read_text())
        arm64, = [preset for preset in presets["configurePresets"] if preset["name"] == "arm64"]
        toolchain = pathlib.Path(arm64["toolchainFile"].replace("${sourceDir}", str(SOURCES)))
        self.assertTrue(toolchain.is_file(), toolchain)
        self.assertIn("arm64", [preset["configurePreset"] for preset in presets["buildPresets"]])

    @unittest.skipUnless(shutil.which(COMPILER), f"There is no {COMPILER}")
    def test_librariesAreOfTheBoardAndNoneOfThisMachine(self):
        sysroot = self.folder / "build/arm64-sysroot/usr/lib/aarch64-linux-gnu"
        write(sysroot / "cmake/OfTheBoard/OfTheBoardConfig.cmake", "")
        installation = self.folder / "build/arm64/norvo/lib/cmake/OfTheInstallation"
        write(installation / "OfTheInstallationConfig.cmake", "")
        write(sysroot / "pkgconfig/probe.pc", "Name: probe\nDescription: -\nVersion: 1\nCflags: -I/opt/probe\n")
        write(self.folder / "machine/OfThisMachineConfig.cmake", "")
        write(self.folder / "CMakeLists.txt", PROJECT)
        write(self.folder / "probe.cpp", 'extern "C" int probe() { return 1; }\n')
        build = self.folder / "build/probe"
        done = subprocess.run(
            [CMAKE, "-S", self.folder, "-B", build, "-G", "Ninja",
             f"--toolchain={self.folder}/cmake/aarch64-linux-gnu.cmake"],
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, encoding="utf-8", check=False)
        self.assertEqual(done.returncode, 0, done.stdout)
        self.assertIn(f"Seen: aarch64 TRUE {self.folder}/build/arm64-sysroot/opt/probe\n", done.stdout)
        self.assertIn("Found: board 1, machine 0\n", done.stdout)
        subprocess.run([CMAKE, "--build", build], stdout=subprocess.DEVNULL, check=True)
        library = (build / "libprobe.so").read_bytes()
        self.assertEqual(int.from_bytes(library[18:20], "little"), ARM64)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
