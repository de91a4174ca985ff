"""The folder that is packed contains everything it should and everything it needs."""

import fnmatch
import re
import shutil
import unittest

from Packaging import PACKAGING, ROOT, VERSION, StagedTest, run

EXPECTED = (
    "kelvara", "kelvara-cli", "install", "qt.conf", "LICENSE", "README.txt", "Help/index.htm",
    "examples/recorded-session.txt", "lib/libQt6Core.so.6", "plugins/platforms/libqxcb.so",
    "plugins/platforms/libqoffscreen.so", "plugins/platforms/libqwayland-generic.so",
    "plugins/imageformats/libqsvg.so", "licenses/LIBRARIES.txt", "licenses/LGPL-3",
    "licenses/libqt6core6.txt", "share/applications/kelvara.desktop", "share/icons/kelvara.svg",
    "share/man/kelvara.1", "share/man/kelvara-cli.1", "share/completion/kelvara.bash",
    "share/completion/kelvara-cli.bash", "share/udev/70-kelvara-serial-adapters.rules",
)
PROGRAMS = ("kelvara", "kelvara-cli", "install")


def plain_desktop():
    lines = (PACKAGING / "plain-desktop.txt").read_text().splitlines()
    return [line.split()[0] for line in lines if line and not line.startswith("#")]


def is_elf(path):
    with path.open("rb") as file:
        return file.read(4) == b"\x7fELF"


def files_below(folder):
    return [path for path in sorted(folder.rglob("*")) if path.is_file()]


def archive_faults(folder):
    faults = [f"{name} is missing" for name in EXPECTED if not (folder / name).is_file()]
    packed = {path.name for path in (folder / "lib").iterdir()}
    for path in files_below(folder):
        name = str(path.relative_to(folder))
        if path.is_symlink():
            faults.append(f"{name} is a link")
        if bool(path.stat().st_mode & 0o111) != (name in PROGRAMS):
            faults.append(f"{name} has the wrong mode")
        if is_elf(path):
            faults += [f"{name} needs {library}" for library in unmet(path, packed)]
            if name in PROGRAMS and "(RPATH) Library rpath: [$ORIGIN/lib]" not in dynamic(path):
                faults.append(f"{name} does not search lib")
    return faults


def dynamic(path):
    return re.sub(r" +", " ", run("readelf", "-dW", path).stdout)


def unmet(path, packed):
    """The libraries that a file needs and neither a plain desktop nor the folder has."""
    plain = plain_desktop()
    needed = re.findall(r"\(NEEDED\).*\[(.+)\]", dynamic(path))
    return [name for name in needed
            if name not in packed and not any(fnmatch.fnmatch(name, known) for known in plain)]


def licence_faults(folder):
    """Packed libraries and plugins without a notice, and missing licences that notices refer to."""
    notices = folder / "licenses"
    listed = (notices / "LIBRARIES.txt").read_text()
    faults = []
    for path in [*files_below(folder / "lib"), *files_below(folder / "plugins")]:
        found = re.search(rf"^(\S+) \(.*\b{re.escape(path.name)}(?:,|$)", listed, re.MULTILINE)
        if found is None or not (notices / f"{found.group(1)}.txt").is_file():
            faults.append(f"{path.name} has no notice")
    for notice in notices.glob("*.txt"):
        text = notice.read_text(errors="replace")
        for name in re.findall(r"/usr/share/common-licenses/([\w.-]*\w)", text):
            if not (notices / name).is_file():
                faults.append(f"{notice.name} refers to {name}")
    return faults


def rule_faults(text):
    """Lines of the udev rules that are neither comments nor well formed."""
    term = r'(?:\w+|ATTRS\{\w+\}|ENV\{\w+\})(?:==|!=|=)"[^"]*"'
    rule = re.compile(rf"(?:#.*|{term}(?:, {term})*)?")
    return [line for line in text.splitlines() if not rule.fullmatch(line)]


class ArchiveTest(StagedTest):
    def damaged(self, change):
        copy = self.scratch / "damaged"
        self.addCleanup(shutil.rmtree, copy)
        shutil.copytree(self.folder, copy)
        change(copy)
        return copy

    def test_it_is_complete(self):
        self.assertEqual(archive_faults(self.folder), [])

    def test_a_missing_file_is_found(self):
        for name, fault in (
            ("Help/index.htm", "Help/index.htm is missing"),
            ("lib/libicudata.so.72", "lib/libicuuc.so.72 needs libicudata.so.72"),
            ("lib/libQt6XcbQpa.so.6", "plugins/platforms/libqxcb.so needs libQt6XcbQpa.so.6"),
        ):
            with self.subTest(name=name):
                copy = self.damaged(lambda folder: (folder / name).unlink())
                self.assertIn(fault, archive_faults(copy))
                self.doCleanups()

    def test_a_program_that_does_not_search_lib_is_found(self):
        copy = self.damaged(lambda folder: run("patchelf", "--remove-rpath", folder / "kelvara"))
        self.assertEqual(archive_faults(copy), ["kelvara does not search lib"])

    def test_a_program_that_cannot_be_started_is_found(self):
        copy = self.damaged(lambda folder: (folder / "kelvara").chmod(0o644))
        self.assertIn("kelvara has the wrong mode", archive_faults(copy))

    def test_every_library_has_its_notice(self):
        self.assertEqual(licence_faults(self.folder), [])

    def test_a_library_without_a_notice_is_found(self):
        copy = self.damaged(lambda folder: (folder / "licenses/libicu72.txt").unlink())
        self.assertIn("libicuuc.so.72 has no notice", licence_faults(copy))
        (copy / "licenses/LGPL-3").unlink()
        self.assertIn("libqt6core6.txt refers to LGPL-3", licence_faults(copy))

    def test_the_programs_load_the_packed_libraries_and_print_the_version(self):
        self.assertEqual(self.folder.name, f"kelvara-{VERSION}-linux")
        for name in ("kelvara", "kelvara-cli"):
            with self.subTest(name=name):
                loaded = run("ldd", self.folder / name).stdout.replace("/./", "/")
                self.assertIn(f"{self.folder}/lib/libQt6Core.so.6", loaded)
                self.assertEqual(run(self.folder / name, "--version").stdout,
                                 f"Kelvara v{VERSION}\n")

    def test_the_readme_and_the_manuals_name_the_version(self):
        self.assertTrue((self.folder / "README.txt").read_text()
                        .startswith(f"Kelvara {VERSION} for Linux\n"))
        for page in (self.folder / "share/man").iterdir():
            self.assertIn(f'"Kelvara {VERSION}"', page.read_text().splitlines()[0])
        for path in files_below(self.folder / "share"):
            if path.suffix not in (".png", ".svg"):
                self.assertNotIn("@VERSION@", path.read_text())
        named = re.findall(r"kelvara-([\d.]+)-(linux|windows)", (ROOT / "README.md").read_text())
        self.assertEqual(set(named), {(VERSION, "linux"), (VERSION, "windows")})

    def test_the_readme_names_the_required_packages(self):
        text = (self.folder / "README.txt").read_text()
        self.assertNotIn("@", text)
        for package in ("libc6", "libegl1", "xkb-data", "zlib1g"):
            self.assertRegex(text, rf"\s{package}\s")

    def test_the_rules_for_adapters_are_well_formed(self):
        text = (PACKAGING / "70-kelvara-serial-adapters.rules").read_text()
        self.assertEqual(rule_faults(text), [])
        self.assertIn('ENV{ID_MM_DEVICE_IGNORE}="1"', text)
        self.assertEqual(rule_faults('ATTRS{idVendor}="0403"\nSUBSYSTEM!="usb" GOTO="end"\n'),
                         ['SUBSYSTEM!="usb" GOTO="end"'])


if __name__ == "__main__":
    unittest.main()
