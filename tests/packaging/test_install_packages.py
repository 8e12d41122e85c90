"""scripts/install-packages on systems that say they are another, with an apt that installs nothing.

The first argument is the script.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SCRIPT = sys.argv.pop(1)
UBUNTU = 'ID=ubuntu\nID_LIKE=debian\nVERSION_ID="24.04"\n'

# Writes down how it was called, and what it finds to read.
APT_GET = """#!/bin/bash
printf '%s %s < %s\\n' "$DEBIAN_FRONTEND" "$*" "$(readlink /proc/self/fd/0)" >>"$FAKES/calls"
if [[ " $* " = *" update "* && -e "$FAKES/locked" ]]; then
    rm "$FAKES/locked"
    printf 'E: Could not get lock /var/lib/apt/lists/lock.\\n' >&2
    exit 100
fi
"""


class InstallPackages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.write_command("apt-get", APT_GET)
        self.write_command("dpkg-query", "#!/bin/sh\nexit 1\n")  # nothing is installed
        self.write_command("sleep", "#!/bin/sh\n")
        self.write_command("sudo", '#!/bin/sh\nexec "$@"\n')
        self.set_qt("6.4.2+dfsg-21.1build5")

    def write_command(self, name, text):
        path = self.folder / name
        path.write_text(text, encoding="utf-8")
        path.chmod(0o755)

    def set_qt(self, version):
        self.write_command("apt-cache", f"#!/bin/sh\necho '  Candidate: {version}'\n")

    def install(self, release, path=os.environ["PATH"]):
        """Status and output; what apt-get was called with is in self.calls."""
        described = self.folder / "os-release"
        described.write_text(release, encoding="utf-8")
        done = subprocess.run(
            [shutil.which("bash"), SCRIPT, "run"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, text=True,
            env=os.environ | {"FAKES": str(self.folder), "PATH": f"{self.folder}:{path}",
                              "VELMORA_OS_RELEASE": str(described)})
        calls = self.folder / "calls"
        self.calls = calls.read_text(encoding="utf-8").splitlines() if calls.exists() else []
        return done.returncode, done.stdout

    def assert_installs(self, release):
        status, output = self.install(release)
        self.assertEqual(status, 0, output)
        self.assertEqual(len(self.calls), 2, self.calls)
        self.assertIn(" update ", self.calls[0])
        self.assertIn(" install ", self.calls[1])
        self.assertIn(" qt6-base-dev ", self.calls[1])

    def test_debian_and_what_derives_from_it_are_installed_on(self):
        for release in ('ID=debian\nVERSION_ID="12"\n', "ID=debian\n", UBUNTU,
                        'ID=linuxmint\nID_LIKE="ubuntu debian"\n',
                        "ID=elementary\nID_LIKE=ubuntu\n"):
            with self.subTest(release=release):
                (self.folder / "calls").unlink(missing_ok=True)
                self.assert_installs(release)

    def test_another_distribution_is_told_what_is_missing(self):
        status, output = self.install("ID=fedora\nID_LIKE=notdebian\n", path="")
        self.assertEqual(status, 1)
        self.assertEqual(self.calls, [])
        self.assertIn("neither Debian nor derived from it", output)
        self.assertIn("Not found: cmake c++ ninja", output)
        self.assertIn(" qt6-base-dev ", output)

    def test_nothing_asks(self):
        self.assert_installs(UBUNTU)
        for call in self.calls:
            self.assertTrue(call.startswith("noninteractive "), call)
            self.assertTrue(call.endswith(" < /dev/null"), call)
        self.assertIn("Dpkg::Options::=--force-confdef", self.calls[1])
        self.assertIn("Dpkg::Options::=--force-confold", self.calls[1])
        self.assertIn("DPkg::Lock::Timeout=600", self.calls[1])

    def test_an_older_qt_is_refused(self):
        for version in ("6.2.4+dfsg-2ubuntu1", "(none)"):
            with self.subTest(version=version):
                self.set_qt(version)
                status, output = self.install(UBUNTU)
                self.assertEqual(status, 1)
                self.assertIn("Velmora needs Qt 6.4 or newer", output)
                self.assertFalse([call for call in self.calls if " install " in call])

    def test_locked_lists_are_waited_for(self):
        (self.folder / "locked").touch()
        status, output = self.install(UBUNTU)
        self.assertEqual(status, 0, output)
        self.assertEqual([" update " in call for call in self.calls], [True, True, False])


if __name__ == "__main__":
    unittest.main()
