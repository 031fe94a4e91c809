#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""From what a game publishes to the right clips and one notice, without a key being touched."""
import json
import math
import socket
import time

import clip
import desk
import games
import notices

# What the clips show is read back; how sharp it is does not matter here.
LIGHT = {"captureAudio": False, "captureMicrophone": False, "fps": 30, "resolution": "p720"}
SETTLING = 10


class Moments(desk.DeskTest):
    def setUp(self):
        self.home = desk.TEST_FOLDER / f"home-{time.monotonic_ns()}"
        self.data = self.home / "data"
        self.home.mkdir()
        self.notices = notices.Notices()
        self.addCleanup(self.notices.stop)

    def start(self, **settings):
        return self.quelto({"HOME": str(self.home), "QUELTO_DATA_DIR": str(self.data)}, autoStart=False, showOverlay=False,
                           **LIGHT, **settings)

    def league(self, **options):
        league = games.League(self.home, **options)
        self.addCleanup(league.stop)
        return league

    def dota(self):
        dota = games.Dota()
        self.addCleanup(dota.stop)
        return dota

    def next_flash(self, scene, seconds):
        """The first flash that is so far ahead; flash n is seen at scene.start + n."""
        return math.ceil(time.monotonic() + seconds - scene.start)

    def sleep_until_flash(self, scene, flash):
        time.sleep(max(0.0, scene.start + flash - time.monotonic()))

    def events_of(self, path):
        sidecar = json.loads((path.parent / f".{path.name}.json").read_text())
        return [(event["name"], event["t"]) for event in sidecar["events"]]

    def assert_markers_at_flashes(self, path, wanted, seconds=(-0.5, 0.5)):
        """`wanted` holds each marker's name and the flash at which it happened; `seconds`, how far a marker may lie
        from the picture of that flash."""
        result = clip.Clip(path)
        events = self.events_of(path)
        self.assertEqual([name for name, _ in events], [name for name, _ in wanted])
        for (name, marker), (_, flash) in zip(events, wanted):
            seen = result.time_of_flash(flash)
            self.assertIsNotNone(seen, f"{name}: flash {flash} is not in the clip")
            print(f"{name}: marker {marker - seen:+.2f} s from its flash")
            self.assertGreaterEqual(marker - seen, seconds[0], name)
            self.assertLessEqual(marker - seen, seconds[1], name)

    def stored_match(self):
        matches = json.loads((self.data / "matches.json").read_text())
        self.assertEqual(len(matches), 1)
        return matches[0]

    def assert_one_notice(self, ended, title, body):
        """So much time after the match's last sign of an end, and no other."""
        notice = self.notices.wait(SETTLING + 8)
        self.assertGreaterEqual(notice.time - ended, SETTLING - 0.5)
        self.assertLessEqual(notice.time - ended, SETTLING + 5)
        self.assertEqual((notice.title, notice.body), (title, body))
        self.assertIn("default", notice.actions)

    def assert_click_opens(self, program, match):
        desk.close_window()
        self.notices.click()
        desk.wait_until(lambda: desk.active_window() == "Quelto", 5, f"Quelto's window in front; page {program.get('Page')}")
        self.assertEqual(program.get("Page"), f"review {match['id']}")

    def test_league_match_with_a_raid_beside_it(self):
        scene = self.scene("--silent")
        logs = games.install_wow(self.home)
        program = self.start(autoClipBasic=False)
        program.wait_for_state("idle")
        # The watcher comes in mid-match: what was before is none of its business.
        league = self.league(game_time=900)
        league.pentakill([500, 501, 502, 503, 504])
        program.wait_for_state("recording")
        log = games.WowLog(logs)

        first = self.next_flash(scene, 2)
        flashes = range(first, first + 5)
        times = [league.clock(scene.start + flash) for flash in flashes]
        league.pentakill(times)
        league.add("Ace", times[-1], Acer=league.ME, AcingTeam=league.TEAM)
        league.kill(league.ME, times[-1] + 1, killer="R4")
        # A boss that is worth a clip of a kind that is switched off, and one that is worth the highest.
        boss_flash = first + 8
        self.sleep_until_flash(scene, boss_flash - 2)
        log.bustle()
        log.boss_kill("Küçük Boss", 17)
        self.sleep_until_flash(scene, boss_flash)
        log.boss_kill("Fyrakk, the Blazing", 16)
        boss, penta = program.wait_for_clips(2)
        desk.press()
        by_hand = program.wait_for_clips(3)[2]
        # A client that drops out for a moment comes back to the same match.
        league.is_failing = True
        league.wait_for_polls(1)
        league.is_failing = False
        league.wait_for_polls(2)
        league.end()
        time.sleep(1.2)
        league.stop()
        ended = time.monotonic()

        self.assertRegex(penta.name, r"^League of Legends - [\d. -]+ \[EFSANE 202\] PENTAKILL \+ Ace \(Ahri\)\.mp4$")
        self.assertRegex(boss.name, r"^World of Warcraft - [\d. -]+ \[EFSANE 110\] Boss- Fyrakk, the Blazing\.mp4$")
        kills = [("solo_kill", first)]
        for number, flash in enumerate(flashes[1:], start=2):
            kills += [("solo_kill", flash), (f"multikill_{number}", flash)]
        self.assert_markers_at_flashes(penta, [*kills, ("ace", flashes[-1]), ("my_death", flashes[-1] + 1)])
        self.assert_one_notice(ended, "Maç bitti • League of Legends • Ahri",
                               "3 klip • 2 Efsane • incelemek için tıkla — özeti görmek için tıkla")
        match = self.stored_match()
        self.assertEqual((match["game"], match["hero"]), ("League of Legends", "Ahri"))
        self.assertEqual(match["clips"], [str(path) for path in (boss, penta, by_hand)])
        self.assertLess(match["start"], match["end"])
        self.assert_click_opens(program, match)
        self.assertEqual(len(self.notices.all), 1)
        self.assertEqual(len(program.visible_clips()), 3)
        # The log is read once a second, and a boss's clip counts as ending two seconds after the kill.
        self.assert_markers_at_flashes(boss, [("boss_kill", boss_flash)], seconds=(-2, 0))

    def test_dota_match_in_bad_company(self):
        scene = self.scene("--silent")
        configuration = games.install_dota(self.home)
        program = self.start(autoClipMedium=False)
        program.wait_for_state("idle")
        desk.wait_until(configuration.exists, 3, "the configuration")
        self.assertIn('"http://127.0.0.1:37231/"', configuration.read_text())
        dota = self.dota()
        nuisance = games.Nuisance(dota)
        self.addCleanup(nuisance.stop)
        program.wait_for_state("recording")

        first = self.next_flash(scene, 2)
        for flash in range(first, first + 5):
            self.sleep_until_flash(scene, flash)
            dota.kill()
        rampage = program.wait_for_clips(1)[0]
        # The win alone is worth a clip of the kind that is switched off.
        dota.win()
        ended = time.monotonic()
        self.assertRegex(rampage.name, r"^Dota 2 - [\d. -]+ \[EFSANE 170\] RAMPAGE \(Pudge\)\.mp4$")
        self.assert_markers_at_flashes(
            rampage, [("kill", first), *((f"multikill_{number}", first + number - 1) for number in range(2, 6))])
        self.assert_one_notice(ended, "Maç bitti • Dota 2 • Pudge",
                               "1 klip • 1 Efsane • incelemek için tıkla — özeti görmek için tıkla")
        self.assertEqual(self.stored_match()["clips"], [str(rampage)])
        self.assertEqual(program.visible_clips(), [rampage])
        dota.stop()
        nuisance.stop()
        print(f"{len(dota.answers)} posts, median {dota.median_milliseconds():.1f} ms; {len(nuisance.page_answers)} posts by "
              f"a page; {nuisance.reconnections} slow sockets were cut off")
        self.assertEqual(set(dota.answers), {200})
        self.assertEqual(set(nuisance.page_answers), {200})
        self.assertLess(dota.median_milliseconds(), 20)
        self.assertGreater(nuisance.reconnections, 0, "no slow socket had to go")

    def test_switches_rule_the_watchers(self):
        self.scene("--silent", "--motion", "low")
        program = self.start(autoClipEnabled=False)
        program.wait_for_state("idle")
        league = self.league(game_time=60)
        # Longer than a watcher that ran would take to its next look.
        time.sleep(3.5)
        self.assertEqual(league.polls, 0)
        self.assertEqual(program.get("State"), "idle")
        with self.assertRaises(ConnectionRefusedError):
            socket.create_connection(("127.0.0.1", games.DOTA_PORT), timeout=1)
        program.set("autoClipEnabled", True)
        program.wait_for_state("recording", seconds=6)
        socket.create_connection(("127.0.0.1", games.DOTA_PORT), timeout=1).close()


if __name__ == "__main__":
    desk.main()
