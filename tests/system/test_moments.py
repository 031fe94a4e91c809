#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A game's data leads to the right clips and one desktop notification, without a key press."""
import json
import math
import socket
import time

import clip
import desktop
import games
import notifications

SETTLING = 10


class Moments(desktop.DesktopTest):
    def setUp(self):
        self.home = desktop.TEST_FOLDER / f"home-{time.monotonic_ns()}"
        self.data = self.home / "data"
        self.home.mkdir()
        self.notifications = notifications.NotificationMonitor()
        self.addCleanup(self.notifications.stop)

    def start(self, autoClipEnabled=True, **settings):
        return self.quelto({"HOME": str(self.home), "QUELTO_DATA_DIR": str(self.data)}, autoStart=False, captureAudio=False,
                           captureMicrophone=False, autoClipEnabled=autoClipEnabled, **settings)

    def league(self, **options):
        league = games.League(self.home, **options)
        self.addCleanup(league.stop)
        return league

    def dota(self):
        dota = games.Dota()
        self.addCleanup(dota.stop)
        return dota

    def next_flash(self, scene, seconds):
        """The number of the first flash after that time. Flash n is shown at scene.start + n."""
        return math.ceil(time.monotonic() + seconds - scene.start)

    def sleep_until_flash(self, scene, flash):
        time.sleep(max(0.0, scene.start + flash - time.monotonic()))

    def events_of(self, path):
        sidecar = json.loads((path.parent / f".{path.name}.json").read_text())
        return [(event["name"], event["t"]) for event in sidecar["events"]]

    def assert_markers_at_flashes(self, path, wanted, seconds=(-0.5, 0.5)):
        """`wanted` holds each marker's name and the number of the flash at which its event happened. `seconds` is the
        permitted distance of a marker from that flash in the clip."""
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
        matches = games.wait_for_stored_matches(self.data)
        self.assertEqual(len(matches), 1)
        return matches[0]

    def assert_one_notification(self, ended, title, body):
        """The notification comes SETTLING seconds after the match's last sign of its end."""
        notification = self.notifications.wait(SETTLING + 8)
        self.assertGreaterEqual(notification.time - ended, SETTLING - 0.5)
        self.assertLessEqual(notification.time - ended, SETTLING + 5)
        self.assertEqual((notification.title, notification.body), (title, body))
        self.assertIn("default", notification.actions)

    def assert_click_opens(self, program, match):
        desktop.close_window()
        self.notifications.click()
        desktop.wait_until(lambda: desktop.active_window() == "Quelto", 5, f"Quelto's window to become active; page {program.get('Page')}")
        self.assertEqual(program.get("Page"), f"review {match['id']}")

    def test_league_match_beside_a_wow_raid(self):
        scene = self.scene("--silent")
        logs = games.install_wow(self.home)
        program = self.start(autoClipBasic=False)
        program.wait_for_state("idle")
        # The watcher starts during the match and ignores earlier events.
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
        # The first boss is worth a clip of a tier that is switched off, the second one of the highest tier.
        boss_flash = first + 8
        self.sleep_until_flash(scene, boss_flash - 2)
        log.write_noise()
        log.boss_kill("Küçük Boss", 17)
        self.sleep_until_flash(scene, boss_flash)
        log.boss_kill("Fyrakk, the Blazing", 16)
        boss, penta = program.wait_for_clips(2)
        desktop.press()
        by_hand = program.wait_for_clips(3)[2]
        # The match goes on after one failed poll.
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
        self.assert_one_notification(ended, "Maç bitti • League of Legends • Ahri",
                               "3 klip • 2 Efsane • incelemek için tıkla — özeti görmek için tıkla")
        match = self.stored_match()
        self.assertEqual((match["game"], match["hero"]), ("League of Legends", "Ahri"))
        self.assertEqual(match["clips"], [str(path) for path in (boss, penta, by_hand)])
        self.assertLess(match["start"], match["end"])
        self.assert_click_opens(program, match)
        self.assertEqual(len(self.notifications.all), 1)
        self.assertEqual(len(program.visible_clips()), 3)
        # The log is read once a second, and a boss's clip ends two seconds after the kill.
        self.assert_markers_at_flashes(boss, [("boss_kill", boss_flash)], seconds=(-2, 0))

    def test_dota_match_while_other_clients_disturb_the_listener(self):
        scene = self.scene("--silent")
        configuration = games.install_dota(self.home)
        program = self.start(autoClipMedium=False)
        program.wait_for_state("idle")
        desktop.wait_until(configuration.exists, 3, "the configuration")
        self.assertIn('"http://127.0.0.1:37231/"', configuration.read_text())
        dota = self.dota()
        disturbance = games.Disturbance(dota)
        self.addCleanup(disturbance.stop)
        program.wait_for_state("recording")

        first = self.next_flash(scene, 2)
        for flash in range(first, first + 5):
            self.sleep_until_flash(scene, flash)
            dota.kill()
        rampage = program.wait_for_clips(1)[0]
        # The win alone is worth a clip of a tier that is switched off.
        dota.win()
        ended = time.monotonic()
        self.assertRegex(rampage.name, r"^Dota 2 - [\d. -]+ \[EFSANE 170\] RAMPAGE \(Pudge\)\.mp4$")
        self.assert_markers_at_flashes(
            rampage, [("kill", first), *((f"multikill_{number}", first + number - 1) for number in range(2, 6))])
        self.assert_one_notification(ended, "Maç bitti • Dota 2 • Pudge",
                               "1 klip • 1 Efsane • incelemek için tıkla — özeti görmek için tıkla")
        self.assertEqual(self.stored_match()["clips"], [str(rampage)])
        self.assertEqual(program.visible_clips(), [rampage])
        dota.stop()
        disturbance.stop()
        print(f"{len(dota.answers)} posts, median {dota.median_milliseconds():.1f} ms; {len(disturbance.page_answers)} posts by "
              f"a web page; {disturbance.reconnections} slow sockets were closed")
        self.assertEqual(set(dota.answers), {200})
        self.assertEqual(set(disturbance.page_answers), {200})
        self.assertLess(dota.median_milliseconds(), 20)
        self.assertGreater(disturbance.reconnections, 0, "no slow socket was closed")

    def test_switch_starts_and_stops_the_watchers(self):
        self.scene("--silent", "--motion", "low")
        program = self.start(autoClipEnabled=False)
        program.wait_for_state("idle")
        league = self.league(game_time=60)
        # Longer than a running watcher waits for its next poll.
        time.sleep(3.5)
        self.assertEqual(league.polls, 0)
        self.assertEqual(program.get("State"), "idle")
        with self.assertRaises(ConnectionRefusedError):
            socket.create_connection(("127.0.0.1", games.DOTA_PORT), timeout=1)
        program.set("autoClipEnabled", True)
        program.wait_for_state("recording", seconds=6)
        socket.create_connection(("127.0.0.1", games.DOTA_PORT), timeout=1).close()


if __name__ == "__main__":
    desktop.main()
