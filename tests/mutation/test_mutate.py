"""tools/mutation/mutate on a project whose tests notice some of its changes."""
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools/mutation"
PROJECT = {
    "CMakeLists.txt": """cmake_minimum_required(VERSION 3.21)
project(Sample LANGUAGES CXX)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_STANDARD 20)
enable_testing()
add_subdirectory(src)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY tests/core)
add_executable(tst_Fare tests/core/tst_Fare.cpp)
target_link_libraries(tst_Fare sample)
add_test(NAME Fare COMMAND tst_Fare)
""",
    "src/CMakeLists.txt": "add_library(sample STATIC core/Fare.cpp core/Zone.cpp)\n",
    "src/core/Fare.h": "constexpr int adult = 18;\nint fare(int age);\n",
    "src/core/Fare.cpp": """#include "Fare.h"
#include <cstdio>
static_assert(true);
static void greet() { std::puts("Hello"); }
int fare(int age)
{
    greet();
    if (age < 0)
        return 0;
    return 10;
}
""",
    # Of Fare.cpp, nothing may be left then.
    "src/core/Zone.cpp": "int zones() { return 4; }\nconstexpr int unused = 7;\n",
    "tests/core/tst_Fare.cpp": """#include "../../src/core/Fare.h"
#include <cstdio>
static_assert(adult == 18);
bool wrong() { return fare(-1) || fare(-9) || fare(1) != 10; }
int main() { return wrong() && std::puts("FAIL!  : FareTest::price() it is wrong"); }
""",
    "tools/mutation/equivalents.md": "## src/core/Fare.cpp\n\n"
    '- `static void greet() { std::puts("Hello"); }` → `static void greet() { ; }`: unread.\n',
    "scripts/install-packages": "#!/bin/sh\n",
}
RESULTS = """uncompilable	src/all does not compile	static_assert(true);	static_assert(false);
survived		static void greet() { std::puts("Hello"); }	static void greet() { std::puts("Hellox"); }
survived		greet();	;
killed	Fare: price	if (age < 0)	if (!(age < 0))
survived		if (age < 0)	if (age <= 0)
survived		if (age < 0)	if (age < 1)
killed	Fare: price	return 0;	return 1;
killed	Fare: price	return 10;	return 11;
killed	all does not compile	constexpr int adult = 18;	constexpr int adult = 19;
survived		int zones() { return 4; }	int zones() { return 5; }
equivalent	the code is the same	constexpr int unused = 7;	constexpr int unused = 8;
"""


class Mutate(unittest.TestCase):
    def mutate(self, *arguments):
        done = subprocess.run([self.folder / "tools/mutation/mutate", *arguments],
                              capture_output=True, text=True, check=False)
        return done.stdout, done.returncode

    def test_changes_end_as_the_tests_say(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        for path, text in PROJECT.items():
            (self.folder / path).parent.mkdir(parents=True, exist_ok=True)
            (self.folder / path).write_text(text, encoding="utf-8")
        (self.folder / "scripts/install-packages").chmod(0o755)
        for tool in ("mutate", "mutate.cmake", "mutants.py"):
            shutil.copy(TOOL / tool, self.folder / "tools/mutation")

        output, status = self.mutate("--all", "--minimum", "50")
        log = self.folder / "build/mutation/results.tsv"
        results = re.sub(r"\tsrc\S+\t[a-z ]+(\t.*)\t0\n", r"\1\n", log.read_text())
        self.assertEqual(results, RESULTS, output)
        self.assertEqual(status, 1)
        self.assertTrue((log.parent / "build/src/libsample.so").exists())

        # What survived is tried again.
        with open(self.folder / "tools/mutation/equivalents.md", "a", encoding="utf-8") as file:
            file.write("- `gone();` → `;`: it is gone.\n")
        output, status = self.mutate("--all", "--resume", "--minimum", "40")
        self.assertIn("Killed: 4 of 9, 44.4 %", output)
        self.assertEqual(log.read_text().count("survived"), 5 + 5)
        self.assertIn("lists no change of src/ any more: - `gone();`", output)
        self.assertEqual(status, 1)
        lists = [self.mutate("--list", "--sample", "3", "--seed", seed) for seed in "112"]
        self.assertIn("4 of 12 changes", lists[0][0])
        self.assertEqual(lists[0], lists[1])
        self.assertNotEqual(lists[0], lists[2])


if __name__ == "__main__":
    unittest.main()
