"""The install script installs into the user's folders and removes what it installed."""

import os
import pathlib
import shutil
import tempfile
import unittest
import zlib

from Packaging import VERSION, StagedTest, run


def tree(folder):
    """Every file, link and folder below a folder, with its content or a checksum."""
    found = {}
    for path in sorted(folder.rglob("*")):
        name = str(path.relative_to(folder))
        if path.is_symlink():
            found[name] = os.readlink(path)
        elif path.is_dir():
            found[name] = None
        else:
            data = path.read_bytes()
            found[name] = data if len(data) < 100 else zlib.crc32(data)
    return found


class InstallTest(StagedTest):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="kelvara-hôme of 100 % $x ")
        self.addCleanup(temporary.cleanup)
        self.home = pathlib.Path(temporary.name)
        self.environment = {"HOME": temporary.name, "PATH": os.environ["PATH"]}
        self.programs = self.home / ".local/share/kelvara"

    def install(self, *arguments, script=None, fails=False, **more):
        environment = {**self.environment, **{name: str(value) for name, value in more.items()}}
        result = run(script or self.folder / "install", *arguments, env=environment, cwd="/")
        self.assertEqual(result.returncode != 0, fails, result.stdout + result.stderr)
        return result

    def newer(self):
        """Another release: one file removed, one added, one changed."""
        folder = self.home.parent / f"{self.home.name}-newer"
        self.addCleanup(shutil.rmtree, folder)
        shutil.copytree(self.folder, folder)
        (folder / "Help/pictures/main.png").unlink()
        (folder / "Help/new").mkdir()
        (folder / "Help/new/page.htm").write_text("new")
        (folder / "README.txt").write_text("newer")
        return folder

    def test_removing_it_leaves_an_empty_home(self):
        self.install()
        self.assertGreater(len(tree(self.home)), 100)
        self.install("--remove")
        self.assertEqual(tree(self.home), {})

    def test_the_installed_copy_can_remove_itself(self):
        self.install()
        self.install("--remove", script=self.programs / "install", XDG_DATA_HOME="/elsewhere")
        self.assertEqual(tree(self.home), {})

    def test_everything_is_in_its_place(self):
        self.install()
        for name in tree(self.folder):
            with self.subTest(name=name):
                self.assertTrue((self.programs / name).exists())
        share = self.home / ".local/share"
        for name in ("icons/hicolor/16x16/apps/kelvara.png",
                     "icons/hicolor/256x256/apps/kelvara.png",
                     "icons/hicolor/scalable/apps/kelvara.svg", "man/man1/kelvara.1",
                     "man/man1/kelvara-cli.1", "bash-completion/completions/kelvara",
                     "bash-completion/completions/kelvara-cli",
                     "fish/vendor_completions.d/kelvara.fish", "applications/kelvara.desktop"):
            with self.subTest(name=name):
                self.assertTrue((share / name).is_file())

    def test_the_commands_start_the_programs(self):
        self.install()
        for name in ("kelvara", "kelvara-cli"):
            result = run(self.home / ".local/bin" / name, "--version", cwd="/")
            self.assertEqual(result.stdout, f"Kelvara v{VERSION}\n", result.stderr)

    def test_the_menu_entry_is_valid_and_starts_the_program(self):
        self.install()
        entry = self.home / ".local/share/applications/kelvara.desktop"
        result = run("desktop-file-validate", entry)
        self.assertEqual((result.returncode, result.stdout + result.stderr), (0, ""))
        lines = entry.read_text().splitlines()
        quoted = str(self.programs / "kelvara").replace("$", "\\\\$").replace("%", "%%")
        self.assertIn(f'Exec="{quoted}" %f', lines)
        self.assertIn(f'Exec="{quoted}" --demo', lines)
        self.assertIn(f"TryExec={self.programs / 'kelvara'}", lines)

    @unittest.skipUnless(shutil.which("update-mime-database")
                         and shutil.which("update-desktop-database"), "no tools for file types")
    def test_traces_are_files_that_the_program_opens(self):
        share = self.home / ".local/share"
        other = share / "mime/packages/other.xml"
        other.parent.mkdir(parents=True)
        other.write_text('<mime-info xmlns="http://www.freedesktop.org/standards/shared-mime-info"/>')
        self.install()
        self.assertIn("application/x-kelvara-trace:*.trace", (share / "mime/globs2").read_text())
        self.assertIn("application/x-kelvara-trace=kelvara.desktop",
                      (share / "applications/mimeinfo.cache").read_text())
        self.install("--remove")
        self.assertTrue(other.exists())
        self.assertNotIn("kelvara", (share / "mime/globs2").read_text())
        self.assertFalse((share / "applications").exists())

    def test_a_broken_menu_entry_is_found(self):
        broken = self.home / "kelvara.desktop"
        broken.write_text((self.folder / "share/applications/kelvara.desktop").read_text()
                          .replace("Type=Application", "Type=Apple"))
        self.assertNotEqual(run("desktop-file-validate", broken).returncode, 0)

    def test_the_data_folder_may_be_elsewhere(self):
        data = self.home / "my data"
        self.install(XDG_DATA_HOME=data)
        self.assertTrue((data / "kelvara/kelvara").is_file())
        self.assertTrue((data / "applications/kelvara.desktop").is_file())
        self.assertEqual(os.readlink(self.home / ".local/bin/kelvara"),
                         str(data / "kelvara/kelvara"))
        self.install("--remove", XDG_DATA_HOME=data)
        self.assertEqual(tree(self.home), {})

    def test_a_relative_data_folder_is_ignored(self):
        self.install(XDG_DATA_HOME="somewhere")
        self.assertTrue((self.programs / "kelvara").is_file())

    def test_an_upgrade_keeps_the_users_files_and_removes_old_ones(self):
        self.install()
        (self.programs / "rfields.ds").write_text("mine")
        (self.programs / "Help/note.txt").write_text("mine")
        newer = self.newer()
        self.install(script=newer / "install")
        found = tree(self.programs)
        self.assertEqual(found.pop("rfields.ds"), b"mine")
        self.assertEqual(found.pop("Help/note.txt"), b"mine")
        found.pop(".installed")
        self.assertEqual(found, tree(newer))
        self.install("--remove")
        self.assertEqual([name for name, text in tree(self.home).items() if text is not None],
                         [".local/share/kelvara/Help/note.txt", ".local/share/kelvara/rfields.ds"])

    def test_removing_keeps_the_users_files_unless_asked_to_remove_them(self):
        self.install()
        settings = self.home / ".config/CorvanaSync/CorvanaSync.ini"
        settings.parent.mkdir(parents=True)
        settings.write_text("[Settings]\n")
        sessions = self.home / ".local/share/CorvanaSync/sessions"
        sessions.mkdir(parents=True)
        (sessions / "2026-11-21-112800.trace").write_text("mine")
        (self.programs / "rfields.ds").write_text("mine")
        (self.programs / "site.html").write_text("mine")
        said = self.install("--remove").stdout
        for path in (settings, self.programs / "rfields.ds", self.programs / "site.html"):
            self.assertTrue(path.is_file())
            self.assertIn(f"Kept, as it is yours: {path}\n", said)
        self.assertTrue((sessions / "2026-11-21-112800.trace").is_file())
        self.assertIn(f"Kept, as it is yours: {sessions}\n", said)
        self.install()
        self.install("--remove", "--data")
        self.assertEqual([name for name, text in tree(self.home).items() if text is not None],
                         [".local/share/kelvara/site.html"])
        self.assertFalse(sessions.parent.exists())

    def test_existing_files_are_kept(self):
        (self.home / ".local/bin").mkdir(parents=True)
        (self.home / ".local/share/applications").mkdir(parents=True)
        (self.home / ".local/bin/other").write_text("other")
        before = tree(self.home)
        self.install()
        self.install("--remove")
        self.assertEqual(tree(self.home), before)

    def test_another_programs_command_is_not_replaced(self):
        (self.home / ".local/bin").mkdir(parents=True)
        (self.home / ".local/bin/kelvara").write_text("other")
        before = tree(self.home)
        said = self.install(fails=True).stderr
        self.assertIn(f"{self.home}/.local/bin/kelvara is there already", said)
        self.assertEqual(tree(self.home), before)

    def test_a_failed_copy_keeps_the_earlier_release(self):
        self.install()
        before = tree(self.home)
        newer = self.newer()
        shutil.rmtree(newer / "share/man")
        self.install(script=newer / "install", fails=True)
        after = tree(self.home)
        self.assertEqual({name: text for name, text in after.items() if ".installed" not in name},
                         {name: text for name, text in before.items() if ".installed" not in name})
        self.install("--remove")
        self.assertEqual(tree(self.home), {})

    def test_failures_are_reported(self):
        self.assertIn("not installed", self.install("--remove", fails=True).stderr)
        self.assertIn("HOME is not set", self.install(fails=True, HOME="").stderr)
        self.assertEqual(self.install("--purge", fails=True).returncode, 2)
        self.assertIn("--remove", self.install("--help").stdout)
        self.install()
        self.assertIn("newer archive",
                      self.install(script=self.programs / "install", fails=True).stderr)


if __name__ == "__main__":
    unittest.main()
