#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The file that stands for the registry where there is none: what counts as one, and that it survives
whatever happens while it is written.

registry_file_test.py SCENARIO SCENARIO_WITH_FAULTS [TEST...]

The first program does in one process what its arguments say and prints a line for each result (see
debug_scenario.cpp); the second one can also be made to fail or die at a system call.
"""

import concurrent.futures
import fcntl
import os
import pathlib
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest

SCENARIO, SCENARIO_WITH_FAULTS = sys.argv[1:3]
HEADER = b"Windows Registry Editor Version 5.00\n\n"
SECTION = b"[HKEY_LOCAL_MACHINE\\SOFTWARE\\Kestrine\\Veltor\\Core\\Debug]\n"
HEAD = HEADER + SECTION
REMOVED = b"[-" + SECTION[1:]
SKIP = b'"SkipCheckGeom3dBoundaries"=dword:00000001\n'
NEW = b'"New"=dword:00000007\n'


class Test(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.path = self.folder / "registry.reg"

    def run_scenario(self, *commands, path=None, program=SCENARIO, **environment):
        """What is printed, and what ends with another status than 0 with "failed"."""
        run = subprocess.run([program, *commands], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                             env=os.environ | {"KVGEOM_REGISTRY": str(path or self.path)} | environment)
        return run.stdout + ("" if run.returncode == 0 else "failed")

    def expect(self, expected, *commands, **where):
        self.assertEqual(self.run_scenario(*commands, **where), expected, commands)

class RegistryFile(Test):
    def test_is_read_as_the_registry_editor_writes_it(self):
        name = b'"SkipCheckGeom3dBoundaries"='
        found = {
            "plain": HEAD + SKIP,
            "no case": HEADER + b'[hkey_local_machine\\software\\KESTRINE\\veltor\\core\\debug]\n'
                                b'"skipcheckGEOM3DboundarieS"=DWORD:1\n',
            "mark and returns": b"\xEF\xBB\xBFWindows Registry Editor Version 5.00\r\n\r\n; comment \x01\xff\r\n"
                                + SECTION + name + b"dword:00000001\r\n",
            "blanks": HEAD + b'  "SkipCheckGeom3dBoundaries"  = dword: 1 \t\n',
            "bytes": HEAD + name + b"hex:01,ff\n",
            "typed bytes": HEAD + name + b"hex(4):01,00,00,00\n",
            "bytes in lines": HEAD + name + b"hex:\\\n  01,\\\n  02\n",
            "text": HEAD + name + b'"\x01"\n',
            "escaped": HEAD + b'"a\\"="="]\\\\"\n@="default"\n"Skip\\CheckGeom3dBoundaries"=dword:1\n',
            "the last counts": HEAD + name + b"dword:2\n" + SKIP,
            "also the last section": HEAD + name + b'dword:2\n[Other]\n"x"=""\n' + SECTION + SKIP,
            "no line end": HEAD + name + b"dword:00000001",
            "set after it was removed": HEAD + name + b"-\n" + SKIP,
            "set after its key was removed": HEADER + REMOVED + SECTION + SKIP,
            "another one removed": HEAD + SKIP + b'"x"=-\n"SkipCheckGeom3dBoundaries2"=-',
            "other keys removed": HEAD + SKIP + REMOVED[:-2] + b"\\x]\n" + REMOVED[:-3] + b"]\n[-x]\n",
        }
        not_found = {
            "five bytes": HEAD + name + b"hex:01,\\\n02,03,04,05\n",
            "no bytes": HEAD + name + b"hex:\n",
            "another section": HEADER + b"[HKEY_LOCAL_MACHINE\\SOFTWARE]\n" + SKIP,
            "removed": HEAD + SKIP + b'"sKIPCheckGeom3dBoundaries" = - ',
            "key removed": HEAD + SKIP + REMOVED.lower() + SKIP,
            "key above removed": HEAD + SKIP + b"[-HKEY_LOCAL_MACHINE\\SOFTWARE]",
            "a longer name": HEAD + b'"SkipCheckGeom3dBoundaries2"=dword:1\n',
            "a shorter name": HEAD + b'"SkipCheckGeom3dBoundarie"=dword:1\n',
            # What follows can't be parsed.
            "nothing": b"",
            "no header": SECTION + SKIP,
            "another header": b"REGEDIT4\n" + SECTION + SKIP,
            "no section": HEADER + b'"x"=dword:1\n' + SECTION + SKIP,
        } | {line.decode("latin1"): HEAD + SKIP + line + b"\n" for line in [
            b"word", b"\x00\xff\x1b", b"[Other", b"=dword:1", b'"x=dword:1', b'"x"=', b'"x"=--', b'"x"=- 1', b'"x"=dword:',
            b'"x"=dword:000000001', b'"x"=dword:12g', b'"x"=hex:01,2', b'"x"=hex:01,,02', b'"x"=hex:01,',
            b'"x"=hex():01', b'"x"="text\\"', b'"x"="text" more']}
        for contents, expected in ((found, "0\n"), (not_found, "1\n")):
            for what, content in contents.items():
                with self.subTest(what):
                    self.path.write_bytes(content)
                    self.expect(expected, "boundary")

    def test_gives_no_wrong_number_where_it_is_cut(self):
        content = HEAD + b'"MathValidateLevel"=hex:12,\\\n  01,02\n"ValidateReleaseMath"=dword:12345678'
        for length in range(len(content) + 1):
            self.path.write_bytes(content[:length])
            self.assertIn(self.run_scenario("level"), ("0\n", "18\n"), length)
        for length in range(len(content) - 8, len(content)):
            self.path.write_bytes(content[:length])
            self.expect("0\n", "entry=ValidateReleaseMath,3")
            self.assertEqual(self.path.read_bytes(), content[:length], "not to be written either")

    def test_keeps_all_that_it_held(self):
        before = HEADER + b'; a comment\n[Other]\n"x"=hex:01,\\\n 02\n'
        old = b'"old"="text"\n'
        after = b'\n; the end\n[More]\n@="y"\n'
        long = b'"nEW"=hex:01,02,03,\\\n  04,05\n'
        for content, expected in [
            (before, before + b"\n" + SECTION + NEW),
            (before + SECTION + old + after, before + SECTION + old + NEW + after),
            (before + SECTION + long + old + after, before + SECTION + NEW + old + after),
            (HEAD + old[:-1], HEAD + old + NEW),
            (HEAD + NEW + b'"new"=-\n' + old, HEAD + NEW + b'"new"=-\n' + old + NEW),
            (HEAD + NEW + REMOVED + old, HEAD + NEW + REMOVED + old + b"\n" + SECTION + NEW),
            (HEADER[:-2] + b"\r\n", HEAD.replace(b"\n", b"\r\n") + NEW[:-1] + b"\r\n")]:
            self.path.write_bytes(content)
            for value in "entry=New,7", "entry=New,8":
                self.expect("7\n", value)
                self.assertEqual(self.path.read_bytes(), expected)

    def test_takes_no_name_that_would_spoil_it(self):
        self.path.write_bytes(HEAD)
        self.expect("7\n", "entry=two\nlines,7")
        self.assertEqual(self.path.read_bytes(), HEAD)
        self.expect("7\n", "entry=,7")
        self.assertEqual(self.path.read_bytes(), HEAD + b"@=dword:00000007\n")
        self.expect("7\n", "entry=,8")

    def test_keeps_its_rights_and_the_link_that_leads_to_it(self):
        target = self.folder / "target.reg"
        target.write_bytes(HEAD)
        target.chmod(0o640)
        self.path.symlink_to(target)
        self.expect("7\n", "entry=New,7")
        self.assertTrue(self.path.is_symlink())
        self.assertEqual(target.read_bytes(), HEAD + NEW)
        self.assertEqual(stat.S_IMODE(target.stat().st_mode), 0o640)

    def test_is_made_where_links_lead_that_have_no_target_yet(self):
        self.path.symlink_to("second.reg")
        (self.folder / "second.reg").symlink_to("below/third.reg")
        self.expect("7\n", "entry=New,7")
        self.assertEqual((self.folder / "below/third.reg").read_bytes(), HEAD + NEW)
        self.assertTrue(self.path.is_symlink() and (self.folder / "second.reg").is_symlink())
        circle = self.folder / "circle.reg"
        circle.symlink_to(circle)
        self.expect("1\n0\n", "boundary", "entry=New,7", path=circle)
        self.assertTrue(circle.is_symlink())

    def test_is_made_with_its_folder(self):
        path = self.folder / "a/b/registry.reg"
        self.expect("1\n", "boundary", path=path)
        self.assertFalse((self.folder / "a").exists(), "reading makes nothing")
        self.expect("7\n", "entry=New,7", path=path)
        self.assertEqual(path.read_bytes(), HEAD + NEW)
        self.expect("1\n0\n", "boundary", "entry=New,7", path="/dev/null/registry.reg")

    def test_is_no_pipe_no_folder_and_no_device(self):
        os.mkfifo(self.path)
        self.expect("1\n0\n", "boundary", "entry=New,7")
        for path in "/", "/dev/zero":
            self.expect("1\n", "boundary", path=path)

    def test_may_be_huge(self):
        line = b'"filler"=hex:01,02,03,04,05,06,07,08,09,0a,0b,0c,0d,0e,0f,10,11\n'
        self.path.write_bytes(HEAD + line * (100_000_000 // len(line)) + SKIP)
        self.expect("0\n", "boundary")
        self.expect("7\n", "entry=New,7")
        self.assertTrue(self.path.read_bytes().endswith(SKIP + NEW))

    def test_takes_the_values_of_processes_that_write_at_once(self):
        with concurrent.futures.ThreadPoolExecutor(12) as pool:
            written = pool.map(lambda i: self.run_scenario(f"entry=Value{i},{i}"), range(12))
        self.assertEqual(list(written), [f"{i}\n" for i in range(12)])
        lines = self.path.read_text().splitlines()
        self.assertEqual(set(lines[3:]), {f'"Value{i}"=dword:{i:08x}' for i in range(12)})

    def test_is_not_waited_for_when_another_hangs_with_the_lock(self):
        self.path.write_bytes(HEAD)
        with open(f"{self.path}.lock", "w") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            self.expect("0\n", "entry=New,7")
        self.assertEqual(self.path.read_bytes(), HEAD)
        self.expect("7\n", "entry=New,7")


# Processes that may not write files, not even what coverage is measured by.
class RegistryFileInNeed(Test):
    def test_is_read_but_not_opened_to_create_without_rights(self):
        """Even where the value exists."""
        self.folder.chmod(0o755)
        folder = self.folder / "folder"
        for file_mode, folder_mode, expected in [(0o666, 0o777, "0\n1\n"), (0o444, 0o777, "0\n0\n"),
                                                 (0o666, 0o555, "0\n0\n"), (0o000, 0o777, "1\n0\n")]:
            folder.mkdir()
            path = folder / "registry.reg"
            path.write_bytes(HEAD + SKIP)
            path.chmod(file_mode)
            folder.chmod(folder_mode)
            self.expect(expected, "nobody", "boundary", "entry=SkipCheckGeom3dBoundaries,5", path=path)
            folder.chmod(0o700)
            shutil.rmtree(folder)

    def test_stays_as_it_is_on_a_full_disk(self):
        self.path.write_bytes(HEAD + SKIP)
        self.expect("7\n0\n", "limit=100", "entry=New,7", "boundary")
        self.assertEqual(self.path.read_bytes(), HEAD + SKIP)
        self.assertFalse(pathlib.Path(f"{self.path}.new").exists())

    def test_is_the_old_or_the_new_one_whole_after_any_fault(self):
        """Whichever call is the last of a process, or fails."""
        most_calls = 30  # more than there are
        before, after = HEAD + SKIP, HEAD + SKIP + NEW
        kept = 0
        for fault in "kill", "fail":
            for call in range(1, most_calls + 1):
                self.path.write_bytes(before)
                result = self.run_scenario("entry=New,7", program=SCENARIO_WITH_FAULTS,
                                           KVGEOM_TEST_FAULT=f"{fault}:{call}")
                content = self.path.read_bytes()
                self.assertIn(content, (before, after), f"{fault} {call}")
                kept += content == before
                if fault == "fail" or call == most_calls:
                    self.assertIn(result, ("7\n", "0\n"))
                elif call == 1:
                    self.assertIn("failed", result, "not killed")
                self.expect("7\n", "entry=New,7")  # all is well for the next one
                self.assertEqual(self.path.read_bytes(), after)
                for left in self.folder.iterdir():
                    left.unlink()
        self.assertGreater(kept, 20)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
