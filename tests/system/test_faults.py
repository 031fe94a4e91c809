#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Saves while file calls fail, and kills of the program during a save.

Tests a selection of faults. With QUELTO_ALL_FAULTS=1 it tests every fault of every call; tools/faults does that.
QUELTO_KILLS sets the number of kills, and QUELTO_FAULT_SEED repeats their moments.
"""
import errno
import json
import os
import random
import shutil
import time

import clip
import desktop
import file_faults
import games
from file_faults import SHORT, SLOW, rule

IS_COMPLETE = os.environ.get("QUELTO_ALL_FAULTS") == "1"
ERRORS = {
    errno.ENOSPC: "Diskte yer kalmadı. Yer açın veya başka bir kayıt klasörü seçin.",
    errno.EIO: "Diske ulaşılamıyor. Diskin bağlı olduğundan emin olun.",
    errno.EACCES: "Kayıt klasörüne yazma izniniz yok. Başka bir kayıt klasörü seçin.",
}
# The calls without which there is no clip. The other calls remove the files of dead programs, or free resources.
NECESSARY = {"stat", "mkdir", "create", "write", "lseek", "pread", "fdatasync", "renameat2", "linkat", "renameat"}
ABANDONED = ".quelto-1-0.part"


def hidden_files(folder):
    return [path for path in folder.glob(".quelto-*") if path.suffix == ".part"]


def is_necessary(call):
    return call.name in NECESSARY or (call.name == "open" and not call.path)


def faults_of(calls):
    """(call, fault) for all that can go wrong; a selection of them unless all are wanted."""
    chosen, names = [], set()
    for call in calls:
        faults = [errno.EINTR, *ERRORS, *([SHORT] if call.name == "write" else [])]
        if IS_COMPLETE:
            chosen += [(call, fault) for fault in faults]
        elif call.name not in names:
            names.add(call.name)
            # One error for each name of a call, in turn.
            chosen += [(call, fault) for fault in (errno.EINTR, list(ERRORS)[len(names) % len(ERRORS)], *faults[4:])]
    return chosen


class Faults(desktop.DesktopTest):
    def start(self, environment=None, hasScene=True, **settings):
        self.folder = desktop.TEST_FOLDER / f"clips-{time.monotonic_ns()}"
        self.folder.mkdir()
        self.faults = file_faults.FileFaults(self.folder)
        if hasScene:
            self.scene("--motion", "low", "--silent")
        self.program = self.quelto({**self.faults.environment, **(environment or {})}, clipLength=1, saveFolder=str(self.folder),
                                   **settings)
        self.program.record(1.5)
        self.tried = 0

    def clear_folder(self):
        for path in self.folder.iterdir():
            path.unlink()
        (self.folder / ABANDONED).touch()

    def save_clip(self):
        self.program.call("SaveClip")

    def save_with(self, *rules, save=None, prepare=None):
        """Saves into a folder with one abandoned file. Returns the clip's path or None, the message of the failure or None,
        and the calls."""
        (prepare or self.clear_folder)()
        self.program.saved.clear()
        self.program.failed.clear()
        self.faults.use(*rules)
        (save or self.save_clip)()
        desktop.wait_until(lambda: self.program.saved or self.program.failed, 20,
                           f"the end of a save with {rules}; {self.program.log_end()}")
        calls = self.faults.calls()
        self.faults.use()
        if self.program.saved:
            path, = (self.folder / os.path.basename(path) for path in self.program.saved)
            return path, None, calls
        return None, self.program.failed[0], calls

    def visible(self):
        return [path for path in self.folder.iterdir() if not path.name.startswith(".")]

    def assert_saved(self, path, message):
        self.assertIsNone(message)
        self.assertEqual(self.visible(), [path])
        self.assertGreaterEqual(clip.Clip(path).length, 1)

    def assert_next_save_is_good(self):
        # Does not clear the folder: the save removes what the failed one left.
        path, message, _ = self.save_with(prepare=lambda: None)
        self.assert_saved(path, message)
        self.assertEqual(list(self.folder.iterdir()), [path])

    def assert_fault_is_handled(self, call, fault, *others):
        with self.subTest(call=call.name, number=call.number, path=call.path, fault=errno.errorcode.get(fault, "short")):
            path, message, calls = self.save_with(rule(call.name, call.number, fault), *others)
            self.assertEqual(len([each for each in calls if (each.name, each.number, each.fault)
                                  == (call.name, call.number, fault)]), 1, "the fault did not happen")
            self.tried += 1
            if fault in ERRORS and is_necessary(call):
                self.assertEqual(message, f"Klip yazılamadı: {ERRORS[fault]}")
                self.assertEqual(self.visible(), [], "a failed save left a visible file")
            else:
                self.assert_saved(path, message)
            if fault in ERRORS:
                for each in self.visible():
                    each.unlink()
                self.assert_next_save_is_good()


class FileCalls(Faults):
    def test_every_call_of_a_save(self):
        self.start()
        path, message, calls = self.save_with()
        self.assert_saved(path, message)
        self.assertGreater(len(calls), 20)
        for call, fault in faults_of(calls):
            self.assert_fault_is_handled(call, fault)
        print(f"{self.tried} faults in {len(calls)} calls")

    def test_every_call_without_atomic_rename(self):
        # A file system without the rename that never replaces a file, and one without hard links as well.
        self.start()
        for others in ([rule("renameat2", 0, errno.EINVAL)],
                       [rule("renameat2", 0, errno.EINVAL), rule("linkat", 0, errno.EPERM)]):
            path, message, calls = self.save_with(*others)
            self.assert_saved(path, message)
            # The calls before have been tested.
            publishing = calls[[call.name for call in calls].index("renameat2") + 1:]
            for call, fault in faults_of([call for call in publishing if not call.fault]):
                self.assert_fault_is_handled(call, fault, *others)
        print(f"{self.tried} faults")

    def test_creating_the_folder(self):
        self.start()
        for fault in [errno.EINTR, *ERRORS] if IS_COMPLETE else [errno.EINTR, errno.EACCES]:
            for _ in range(5):
                path, message, calls = self.save_with(rule("mkdir", 1, fault), prepare=lambda: shutil.rmtree(self.folder))
                # The library creates the folder too, and may be faster.
                if any(call.fault for call in calls):
                    break
            self.assertTrue(any(call.fault for call in calls), "the fault did not happen")
            if fault == errno.EINTR:
                self.assert_saved(path, message)
            else:
                self.assertEqual(message, f"Klip yazılamadı: {ERRORS[fault]}")
                self.assert_next_save_is_good()

    def test_failed_save_that_cannot_be_removed_is_removed_by_the_next_one(self):
        self.start()
        path, message, _ = self.save_with(rule("write", 2, errno.ENOSPC), rule("unlinkat", 0, errno.EIO))
        self.assertIsNone(path)
        self.assertEqual(message, f"Klip yazılamadı: {ERRORS[errno.ENOSPC]}")
        self.assertEqual(self.visible(), [])
        self.assertEqual(len(hidden_files(self.folder)), 2)
        self.assert_next_save_is_good()


class Sidecars(Faults):
    def setUp(self):
        if not IS_COMPLETE:
            self.skipTest("tools/faults runs this")

    # Below the size of a block, which is written at once.
    LARGE = 300_000

    def empty_buffer(self):
        self.program.call("Stop")
        self.program.wait_for_state("idle")
        self.program.call("Start")
        self.program.record(1.5)

    @staticmethod
    def calls_for_sidecar(calls):
        """The calls from the time when the folder is opened again."""
        second = [index for index, call in enumerate(calls) if call.name == "open" and not call.path][1]
        return calls[second:]

    def test_every_call_of_a_sidecar(self):
        home = desktop.TEST_FOLDER / f"home-{time.monotonic_ns()}"
        log_folder = games.install_wow(home)
        # Nothing moves and nothing sounds, so clips are small and take the same number of writes.
        self.start({"HOME": str(home)}, hasScene=False, captureAudio=False, captureMicrophone=False, autoClipEnabled=True,
                   autoClipLeague=False, autoClipDota=False)
        log = games.WowLog(log_folder)

        def kill_boss():
            # Worth the highest tier.
            log.boss_kill("Fyrakk", 16)

        _, message, calls = self.save_with(save=kill_boss)
        self.assertIsNone(message)
        for call, fault in faults_of(self.calls_for_sidecar(calls)):
            with self.subTest(call=call.name, number=call.number, path=call.path, fault=errno.errorcode.get(fault, "short")):
                path, message, calls = self.save_with(rule(call.name, call.number, fault), save=kill_boss)
                self.assert_saved(path, message)
                self.assertTrue(any(each.fault for each in self.calls_for_sidecar(calls)), "the fault did not happen")
                # The clip is announced after its sidecar was written.
                sidecar = self.folder / f".{path.name}.json"
                if fault in ERRORS and is_necessary(call):
                    self.assertFalse(sidecar.exists())
                else:
                    self.assertEqual([event["name"] for event in json.loads(sidecar.read_text())["events"]], ["boss_kill"])
                self.tried += 1
                if path.stat().st_size > self.LARGE:
                    self.empty_buffer()
        path, _, _ = self.save_with(save=kill_boss)
        self.assertEqual({each.name for each in self.folder.iterdir()}, {path.name, f".{path.name}.json"})
        print(f"{self.tried} faults")


class Kills(desktop.DesktopTest):
    COUNT = int(os.environ.get("QUELTO_KILLS", 3))

    def test_kills_at_random_moments_of_a_save(self):
        seed = os.environ.get("QUELTO_FAULT_SEED") or str(random.randrange(10 ** 6))
        print(f"seed {seed}")
        moments = random.Random(seed)
        self.scene("--motion", "low")
        folder = desktop.TEST_FOLDER / "kills"
        faults = file_faults.FileFaults(folder)
        # A save lasts about as long as on a slow disk. Otherwise most kills would come before it or after it.
        faults.use(*(rule(call, 0, SLOW) for call in ("create", "write", "lseek", "fdatasync", "renameat2", "close")))
        program = self.quelto(faults.environment, clipLength=1, saveFolder=str(folder))
        caught = 0
        for number in range(self.COUNT):
            save_time = self.save(program)
            program.call("SaveClip")
            # Nothing is written in the first 0.25 s. The first kill is sure to come later.
            delay = moments.uniform(0.2, save_time)
            if number:
                time.sleep(delay)
            else:
                desktop.wait_until(lambda: hidden_files(folder), 5, "the file of the save")
            program.kill()
            caught += bool(hidden_files(folder))
            for path in program.visible_clips():
                self.assertGreaterEqual(clip.Clip(path).length, 1, f"kill {number + 1}, after {delay:.3f} s")
                path.unlink()
            program.start()
        self.save(program)
        print(f"{self.COUNT} kills, {caught} while a file was written")
        self.assertGreater(caught, 0, "no kill came while a file was written")

    def save(self, program):
        """Saves a clip, which also removes what a killed program left. Returns how long that took."""
        program.record(1.5)
        requested = time.monotonic()
        path = program.save()
        save_time = time.monotonic() - requested
        self.assertEqual(list(program.folder.iterdir()), [path])
        self.assertGreaterEqual(clip.Clip(path).length, 1)
        path.unlink()
        return save_time


if __name__ == "__main__":
    desktop.main()
