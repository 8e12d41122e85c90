"""tools/mutation/mutate on a project of two functions, whose tests notice some changes of them.

The arguments are those of unittest.
"""
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

TOOL = pathlib.Path(__file__).parent
PROJECT = {
    "CMakeLists.txt": """cmake_minimum_required(VERSION 3.21)
project(Sample LANGUAGES CXX)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_STANDARD 20)
enable_testing()
add_subdirectory(src)
add_subdirectory(tests/core)
""",
    "src/CMakeLists.txt": "add_library(sample core/Fare.cpp core/Zone.cpp)\n",
    "src/core/Fare.h": "constexpr int adultAge = 18;\nint fare(int age);\n",
    # Nobody asks for the price at the limit, nor what is printed.
    "src/core/Fare.cpp": """#include "Fare.h"
#include <cstdio>
static_assert(sizeof(char) == 1);
static void greet()
{
    std::puts("Welcome");
}
int fare(int age)
{
    greet();
    if (age < 0)
        return 0;
    return age > 64 ? 7 : 10;
}
""",
    # Comes after the others, of which nothing may be left then.
    "src/core/Zone.cpp": "int zones() { return 4; }\n",
    "tests/core/CMakeLists.txt": """add_executable(tst_Fare tst_Fare.cpp)
target_include_directories(tst_Fare PRIVATE ../../src/core)
target_link_libraries(tst_Fare sample)
add_test(NAME Fare COMMAND tst_Fare)
""",
    "tests/core/tst_Fare.cpp": """#include "Fare.h"
#include <cstdio>
static_assert(adultAge == 18);
int main()
{
    if (fare(-1) == 0 && fare(-20) == 0 && fare(1) == 10 && fare(30) == 10 && fare(80) == 7)
        return 0;
    std::puts("FAIL!  : tst_Fare::price() Compared values are not the same");
    return 1;
}
""",
    "tools/mutation/equivalents.md": """## src/core/Fare.cpp, greet

- `std::puts("Welcome");` → `std::puts("Welcomex");`: nobody reads it.
""",
    "scripts/install-packages": "#!/bin/sh\n",
}
RESULTS = {
    "constexpr int adultAge = 18; -> constexpr int adultAge = 19;": "killed",  # by the compiler
    "static_assert(sizeof(char) == 1); -> static_assert(sizeof(char) != 1);": "uncompilable",
    "static_assert(sizeof(char) == 1); -> static_assert(sizeof(char) == 2);": "uncompilable",
    'std::puts("Welcome"); -> std::puts("Welcomex");': "equivalent",
    'std::puts("Welcome") -> removed': "survived",
    "greet() -> removed": "survived",
    "if (age < 0) -> if (!(age < 0))": "killed",
    "if (age < 0) -> if (age <= 0)": "survived",
    "if (age < 0) -> if (age < 1)": "survived",
    "return 0; -> return 1;": "killed",
    "return age > 64 ? 7 : 10; -> return age >= 64 ? 7 : 10;": "survived",
    "return age > 64 ? 7 : 10; -> return !(age > 64) ? 7 : 10;": "killed",
    "return age > 64 ? 7 : 10; -> return age > 65 ? 7 : 10;": "survived",
    "return age > 64 ? 7 : 10; -> return age > 64 ? 8 : 10;": "killed",
    "return age > 64 ? 7 : 10; -> return age > 64 ? 7 : 11;": "killed",
    "int zones() { return 4; } -> int zones() { return 5; }": "survived",
}


class Mutate(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        for name, text in PROJECT.items():
            path = cls.folder / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        (cls.folder / "scripts/install-packages").chmod(0o755)
        for name in ("mutate", "mutate.cmake", "mutate.py", "mutants.py"):
            shutil.copy(TOOL / name, cls.folder / "tools/mutation")

    def mutate(self, *arguments):
        done = subprocess.run([self.folder / "tools/mutation/mutate", *arguments], text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        return done.returncode, done.stdout

    def results(self):
        lines = (self.folder / "build/mutation/results.tsv").read_text().splitlines()
        fields = [line.split("\t") for line in lines]
        return {f"{each[5]} -> {each[6]}": each[0] for each in fields}

    def test_1_changes_are_killed_or_survive(self):
        status, output = self.mutate("--all")
        tried = {key: value for key, value in RESULTS.items() if value != "equivalent"}
        self.assertEqual(self.results(), tried, output)
        self.assertIn("Killed: 6 of 13, 46.2 %", output)
        self.assertEqual(status, 1)

    def test_2_the_sources_are_left_as_they_were(self):
        status, output = self.mutate("--resume", "--minimum", "50", "--match", "return 0")
        self.assertEqual(status, 0, output)
        for name, text in PROJECT.items():
            self.assertEqual((self.folder / name).read_text(encoding="utf-8"), text)

    def test_3_the_same_seed_chooses_the_same(self):
        lists = [self.mutate("--list", "--sample", "5", "--seed", seed) for seed in "1121"]
        self.assertEqual(lists[0], lists[1])
        self.assertNotEqual(lists[0], lists[2])
        self.assertIn("of 16 changes", lists[0][1])
        changes = re.findall(r"^src/core/\S+?:\d+  [a-z ]+  (.*)  →  (.*)$", lists[0][1], re.M)
        self.assertLessEqual({" -> ".join(each) for each in changes}, RESULTS.keys())

    def test_4_an_entry_for_code_that_is_gone_fails(self):
        with open(self.folder / "tools/mutation/equivalents.md", "a", encoding="utf-8") as file:
            file.write("- `gone();` → removed: it is gone.\n")
        status, output = self.mutate("--resume", "--minimum", "0", "--file", "src/core/Fare.h")
        self.assertIn("no change of src/ any more: - `gone();`", output)
        self.assertEqual(status, 1)


if __name__ == "__main__":
    unittest.main()
