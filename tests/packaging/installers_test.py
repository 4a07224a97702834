#!/usr/bin/env python3
"""The archives' shell installers against `felspar install`: the same folder, the same list, the same words.

Usage: installers_test.py FELSPAR INSTALLERS      the command, and the folder of the installers
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

command, installers = (pathlib.Path(word).resolve() for word in sys.argv[1:])
shared = command.parent.parent / "share/felspar"
library = command.parent.parent / "lib/libreaper_MERIDEK_FELSPAR_for_6.x.so"
ours = pathlib.PurePath("Scripts/MERIDEK_FELSPAR")
plugin = pathlib.PurePath("UserPlugins/reaper_MERIDEK_FELSPAR.so")


def tree(folder):
    """Bytes by path; None for folders, the target for links."""
    return {path.relative_to(folder).as_posix():
            os.readlink(path) if path.is_symlink() else path.read_bytes() if path.is_file() else None
            for path in sorted(folder.rglob("*"))}


class Installers(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="felspar installers ")
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        self.archive = self.folder / "an archive"
        shutil.copytree(installers, self.archive)
        shutil.copytree(shared / "scripts", self.archive / "scripts")
        shutil.copytree(shared / "luals", self.archive / "stubs")
        shutil.copyfile(library, self.archive / plugin.name)
        self.by_command, self.by_script = self.folder / "command" / "R", self.folder / "script" / "R"
        for resources in (self.by_command, self.by_script):
            (resources / "UserPlugins").mkdir(parents=True)

    def run_program(self, words, resources, **environment):
        done = subprocess.run([*words, "--resource-path", "R"], cwd=resources.parent, capture_output=True, text=True,
                              env={**os.environ, **environment}, check=False)
        return done.returncode, done.stdout, done.stderr

    def script(self, *options, name="install.sh", resources=None):
        return self.run_program(["bash", self.archive / name, *options], resources or self.by_script)

    def felspar(self, *words, resources=None):
        return self.run_program([command, *words], resources or self.by_command)

    def both(self, change=lambda resources: None, options=(), removes=False):
        """Runs both on folders that were changed in the same way. @returns their common status and output"""
        for resources in (self.by_command, self.by_script):
            change(resources)
        by_command = self.felspar("uninstall" if removes else "install", *options)
        by_script = self.script(*(["--uninstall"] if removes else []), *options)
        self.assertEqual(by_script, by_command)
        self.assertEqual(tree(self.by_script), tree(self.by_command))
        return by_command[:2]

    def test_agree_from_the_first_installation_to_the_last_removal(self):
        def foreign(resources):
            (resources / "UserPlugins/reaper_sws-x86_64.so").write_text("the user's")
            (resources / ours).mkdir(parents=True)
            (resources / ours / "plot_levels.lua").write_text("the user's")
            (resources / ours / "colour_tracks.lua").symlink_to("elsewhere.lua")

        def changed(resources):
            (resources / plugin).write_text("the user's")
            (resources / ours / "stubs/mine.lua").write_text("")

        before = tree(self.by_script)
        self.assertEqual(self.both(options=["--dry-run"])[0], 0)
        self.assertEqual(tree(self.by_script), before)
        status, output = self.both(foreign)
        self.assertEqual(status, 1)
        self.assertIn("kept      Scripts/MERIDEK_FELSPAR/plot_levels.lua: it was not installed", output)
        self.assertEqual(self.both(changed)[0], 1)
        status, output = self.both(options=["--replace"])
        self.assertEqual(status, 0)
        self.assertIn("plot_levels.lua.saved", output)
        self.assertEqual(self.both(changed, options=["--replace"])[0], 0)
        self.assertEqual(self.both(removes=True, options=["--dry-run"])[0], 0)
        self.assertEqual(self.both(changed, removes=True)[0], 1)
        self.assertIn("Nothing is installed there.", self.both(removes=True)[1])
        self.assertIn("UserPlugins/reaper_MERIDEK_FELSPAR.so.saved-2", tree(self.by_script))

    def test_agree_on_an_upgrade_and_on_one_that_was_cut_off(self):
        old = "a" * 64
        abandoned = ".felspar-4999999-0.tmp"  # no process has such a number
        vanished = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"  # of an empty file

        def older(resources):
            self.felspar("install", resources=resources)
            listed = resources / ours / "installed.txt"
            listed.write_text(listed.read_text() + f"{vanished}  Scripts/MERIDEK_FELSPAR/gone.lua\n"
                              f"{vanished}  Scripts/MERIDEK_FELSPAR/mine now.lua\n{old}  {plugin}\n"
                              f"{vanished}  {plugin}\n")
            (resources / ours / "gone.lua").write_text("")
            (resources / ours / "mine now.lua").write_text("changed")
            (resources / plugin).write_text("")
            for folder in (ours, ours / "stubs", plugin.parent):
                (resources / folder / abandoned).write_text("left by an installer that was killed")
            (resources / ours / ".felspar-1-notes.tmp").write_text("the user's")

        status, output = self.both(older)
        self.assertEqual(status, 1)
        self.assertNotIn(f"UserPlugins/{abandoned}", tree(self.by_script))
        for line in ("replaced  UserPlugins/reaper_MERIDEK_FELSPAR.so", "removed   Scripts/MERIDEK_FELSPAR/gone.lua",
                     "kept      Scripts/MERIDEK_FELSPAR/mine now.lua: it has been changed"):
            self.assertIn(line, output)
        self.both(older, removes=True)
        self.assertEqual(list(tree(self.by_script)), [
            "Scripts", "Scripts/MERIDEK_FELSPAR", "Scripts/MERIDEK_FELSPAR/.felspar-1-notes.tmp",
            "Scripts/MERIDEK_FELSPAR/mine now.lua", "UserPlugins"])  # fmt: skip

    def test_remove_what_the_other_installed(self):
        empty = tree(self.by_script)
        self.assertEqual(self.script(name="install.command")[0], 0)
        self.assertEqual((self.by_script / plugin).read_bytes(), library.read_bytes())
        self.assertEqual(self.felspar("uninstall", resources=self.by_script)[0], 0)
        self.assertEqual(tree(self.by_script), empty)
        self.assertEqual(self.felspar("install")[0], 0)
        self.assertEqual(self.script("--uninstall", resources=self.by_command)[0], 0)
        self.assertEqual(tree(self.by_command), empty)

    def test_install_on_macos_with_the_tools_it_has(self):
        """With a `uname` that names macOS, without sha256sum, and with nothing beyond its tools."""
        tools = self.folder / "tools"
        tools.mkdir()
        for name in "awk basename bash cat cut dirname head mkdir mv rm rmdir sed sort".split():
            (tools / name).symlink_to(shutil.which(name))
        for name, text in (("uname", "echo Darwin"), ("shasum", f"exec {shutil.which('sha256sum')}"),
                           ("xattr", 'printf "%s\\n" "$@" >>"$HOME/released"')):
            (tools / name).write_text(f"#!{shutil.which('bash')}\n{text}\n")
            (tools / name).chmod(0o755)
        (self.archive / plugin.name).rename(self.archive / "reaper_MERIDEK_FELSPAR.dylib")
        home = self.folder / "home"
        resources = home / "Library/Application Support/REAPER"
        resources.mkdir(parents=True)
        installed = resources / "UserPlugins/reaper_MERIDEK_FELSPAR.dylib"

        def run(*options, status=0):
            done = subprocess.run(["bash", self.archive / "install.command", *options], capture_output=True, text=True,
                                  env={"PATH": str(tools), "HOME": str(home)}, check=False)
            self.assertEqual((done.returncode, done.stderr), (status, ""))
            return done.stdout

        run()
        self.assertEqual(installed.read_bytes(), library.read_bytes())
        self.assertEqual((home / "released").read_text().split("\n")[:3], ["-d", "com.apple.quarantine", str(installed)])
        (home / "released").unlink()
        installed.write_text("another's")
        self.assertIn("kept      UserPlugins/reaper_MERIDEK_FELSPAR.dylib", run(status=1))
        self.assertFalse((home / "released").exists())
        shutil.copyfile(library, installed)
        self.assertIn("unchanged UserPlugins/reaper_MERIDEK_FELSPAR.dylib", run())
        self.assertIn("removed   UserPlugins/reaper_MERIDEK_FELSPAR.dylib", run("--uninstall"))
        self.assertEqual(tree(resources), {})

    def test_refuse_a_damaged_list(self):
        self.script()
        listed = self.by_script / ours / "installed.txt"
        head = listed.read_text().split("\n")[0]
        paths = "../up", "UserPlugins/./mine", "UserPlugins//mine", "UserPlugins/mine|removed|"
        lines = [f"{'a' * 64}  {path}" for path in paths] + ["x", "# folder /", "a" * 63 + "  short"]
        for number, text in [(1, "# the user's notes"), *((2, f"{head}\n{line}") for line in lines)]:
            listed.write_text(text + "\n")
            before = tree(self.by_script)
            for program, *words in ([self.script], [self.script, "--uninstall"], [self.felspar, "install"],
                                    [self.felspar, "uninstall"]):
                with self.subTest(text=text, program=program.__name__, words=words):
                    status, _, errors = program(*words, resources=self.by_script)
                    self.assertEqual(status, 1)
                    self.assertIn(f"line {number} is damaged", errors)
                    self.assertEqual(tree(self.by_script), before)

    def test_read_a_list_with_line_ends_of_windows(self):
        self.both()
        empty = {"UserPlugins": None}

        def converted(resources):
            listed = resources / ours / "installed.txt"
            listed.write_bytes(listed.read_bytes().replace(b"\n", b"\r\n"))

        self.both(converted)
        self.both(converted, removes=True)
        self.assertEqual(tree(self.by_script), empty)

    def test_find_the_folder_and_what_it_tells_alike(self):
        home = self.folder / "home"
        own, portable = home / ".config/REAPER", home / "opt/REAPER"
        words = {"command": [command, "install", "--dry-run"],
                 "script": ["bash", self.archive / "install.sh", "--dry-run"]}

        def outputs(**environment):
            found = {}
            for name, program in words.items():
                done = subprocess.run(program, capture_output=True, text=True, check=False,
                                      env={"PATH": os.environ["PATH"], "HOME": str(home), **environment})
                found[name] = done.returncode, done.stdout, done.stderr.split(": ", 1)[-1]
            self.assertEqual(found["script"], found["command"])
            return found["command"]

        self.assertEqual(outputs()[0], 1)
        self.assertIn("was not found", outputs()[2])
        portable.mkdir(parents=True)
        self.assertIn("was not found", outputs()[2])
        (portable / "reaper.ini").write_text("")
        self.assertIn(f"Resource folder: {portable}\n", outputs()[1])
        own.mkdir(parents=True)
        project = home / "a project.rpp"
        project.write_text('<REAPER_PROJECT 0.1 "6.19/linux-x86_64" 1700000000\n')
        (own / "reaper.ini").write_text(f"[x]\nlastproject=y\n[REAPER]\r\nlastproject={project}\r\n")
        output = outputs()[1]
        self.assertIn(f"Resource folder: {own}\nThere is also {portable};", output)
        self.assertIn("version 6.19 saved the last project", output)
        (home / "xdg/REAPER").mkdir(parents=True)
        self.assertIn(f"Resource folder: {home}/xdg/REAPER\n", outputs(XDG_CONFIG_HOME=f"{home}/xdg")[1])

    def test_stop_at_what_cannot_be_done(self):
        for options, status in ((["--other"], 2), (["--resource-path"], 2)):
            done = subprocess.run(["bash", self.archive / "install.sh", *options], capture_output=True, check=False)
            self.assertEqual(done.returncode, status)
        (self.by_script / "Scripts").write_text("a file")
        self.assertNotEqual(self.script()[0], 0)
        self.assertEqual(tree(self.by_script), {"Scripts": b"a file", "UserPlugins": None})
        (self.by_script / "Scripts").unlink()
        (self.by_script / ours / "installed.txt").mkdir(parents=True)
        self.assertIn("installed.txt: is not a file", self.script()[2])
        (self.archive / plugin.name).unlink()
        self.assertIn("unpack the whole archive", self.script()[2])


unittest.main(argv=sys.argv[:1])
