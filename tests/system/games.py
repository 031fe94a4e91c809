# SPDX-License-Identifier: GPL-3.0-or-later
"""Simulates the three games: their data, at the addresses and in the folders where they publish it."""
import copy
import datetime
import http.client
import http.server
import json
import socket
import ssl
import statistics
import subprocess
import threading
import time

import desktop

LEAGUE_PORT = 2999
DOTA_PORT = 37231


def wait_for_stored_matches(folder):
    """The matches in the program's data folder, newest first. The file is written in the background."""
    path = folder / "matches.json"
    desktop.wait_until(path.exists, 5, "the matches to be stored")
    return json.loads(path.read_text())


class League:
    """The HTTPS server of the League client during a match, with its own match clock.

    An event with a time in the future is not served before that time.
    """

    PATH = "/liveclientdata/allgamedata"
    ME, TAG, CHAMPION, TEAM = "Oyuncu Bir", "TR1", "Ahri", "ORDER"
    FRIENDS = {"Tank Abi": "Malphite", "orman": "Lee Sin", "Beta Bot": "Ziggs", "destek": "Thresh"}
    FOES = {"Rakip 1": "Yasuo", "rakip2": "Jinx", "Rakip Üç": "Sett", "R4": "Nami", "Gamma Bot": "Kha'Zix"}

    def __init__(self, folder, game_time=0.0):
        self._start = time.monotonic() - game_time
        self._events = []
        self._lock = threading.Lock()
        self.is_failing = False
        self.polls = 0
        self._server = _HttpsServer(LEAGUE_PORT, _certificate(folder), self)
        self._thread = threading.Thread(target=self._server.serve_forever, kwargs={"poll_interval": 0.05}, daemon=True)
        self._thread.start()

    def clock(self, monotonic=None):
        """The match clock now, or at a time on the clock of time.monotonic()."""
        return (time.monotonic() if monotonic is None else monotonic) - self._start

    def add(self, name, game_time, **fields):
        with self._lock:
            self._events.append({"EventID": len(self._events), "EventName": name, "EventTime": round(game_time, 6), **fields})

    def kill(self, victim, game_time, killer=ME):
        self.add("ChampionKill", game_time, KillerName=killer, VictimName=victim, Assisters=[])

    def multikill(self, streak, game_time):
        self.add("Multikill", game_time, KillerName=self.ME, KillStreak=streak)

    def pentakill(self, game_times):
        """Five kills at these times. From the second on, each comes with its multikill event."""
        for number, (victim, game_time) in enumerate(zip(self.FOES, game_times, strict=True), start=1):
            self.kill(victim, game_time)
            if number > 1:
                self.multikill(number, game_time)

    def end(self):
        self.add("GameEnd", self.clock(), Result="Win")

    def wait_for_polls(self, count):
        """Waits for that many further polls."""
        wanted = self.polls + count
        desktop.wait_until(lambda: self.polls >= wanted, 10, "a poll of the League client")

    def stop(self):
        """Closes the client; its port is closed too."""
        self._server.shutdown()
        self._server.server_close()
        self._thread.join()

    def body(self):
        now = self.clock()
        with self._lock:
            due = [event for event in self._events if event["EventTime"] <= now]
        return json.dumps({"activePlayer": self._active_player(), "allPlayers": self._all_players(),
                           "events": {"Events": due},
                           "gameData": {"gameMode": "CLASSIC", "gameTime": now, "mapName": "Map11", "mapNumber": 11,
                                        "mapTerrain": "Default"}}, ensure_ascii=False, indent=2).encode()

    def _active_player(self):
        return {"abilities": {key: {"abilityLevel": 3, "displayName": key, "id": f"Ahri{key}"} for key in "QWER"},
                "championStats": {"abilityPower": 311.5, "armor": 71.2, "attackSpeed": 0.84, "currentHealth": 1620.5,
                                  "maxHealth": 1800.0, "resourceType": "MANA"},
                "currentGold": 1325.6, "level": 14,
                "riotId": f"{self.ME}#{self.TAG}", "riotIdGameName": self.ME, "riotIdTagLine": self.TAG,
                "summonerName": f"{self.ME}#{self.TAG}"}

    def _all_players(self):
        sides = [("ORDER", {self.ME: self.CHAMPION, **self.FRIENDS}), ("CHAOS", self.FOES)]
        return [{"championName": champion, "isBot": name.endswith("Bot"), "isDead": False,
                 "items": [{"canUse": False, "count": 1, "displayName": "Item", "itemID": 3089 + slot, "slot": slot}
                           for slot in range(6)],
                 "level": 13, "position": "", "rawChampionName": f"game_character_displayname_{champion}",
                 "respawnTimer": 0.0, "riotId": f"{name}#{self.TAG}", "riotIdGameName": name, "riotIdTagLine": self.TAG,
                 "scores": {"assists": 2, "creepScore": 140, "deaths": 1, "kills": 3, "wardScore": 8.5},
                 "skinID": 0, "summonerName": name, "team": team}
                for team, players in sides for name, champion in players.items()]


class _HttpsServer(http.server.ThreadingHTTPServer):
    daemon_threads = True
    block_on_close = False

    def __init__(self, port, certificate, league):
        self.league = league
        super().__init__(("127.0.0.1", port), _LeagueRequest)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate)
        # The handshake runs on the request's thread, so that a client that hangs in it does not block the others.
        self.socket = context.wrap_socket(self.socket, server_side=True, do_handshake_on_connect=False)

    def handle_error(self, request, client_address):
        """A client may disconnect during the answer."""


class _LeagueRequest(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        league = self.server.league
        league.polls += 1
        is_found = self.path == League.PATH and not league.is_failing
        body = league.body() if is_found else b'{"errorCode":"RESOURCE_NOT_FOUND","httpStatus":404,"message":"Invalid URI format"}'
        self.send_response(200 if is_found else 404)
        self.send_header("Content-Type", "application/json; charset=utf-8")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


def _certificate(folder):
    """Writes a key and a self-signed certificate to one file."""
    path = folder / "league.pem"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                    "-keyout", path, "-out", f"{path}.part", "-days", "2", "-subj", "/CN=game client"], check=True,
                   capture_output=True)
    with open(path, "ab") as file, open(f"{path}.part", "rb") as part:
        file.write(part.read())
    return path


class Dota:
    """The Dota client: posts its state ten times a second, and at once after a change."""

    MATCH = "7412398765"

    def __init__(self, hero="npc_dota_hero_pudge"):
        self._state = {
            "provider": {"name": "Dota 2", "appid": 570, "version": 47, "timestamp": 1_790_000_000},
            "map": {"name": "start", "matchid": self.MATCH, "game_time": 812, "clock_time": 640, "daytime": True,
                    "nightstalker_night": False, "radiant_score": 20, "dire_score": 11,
                    "game_state": "DOTA_GAMERULES_STATE_GAME_IN_PROGRESS", "paused": False, "win_team": "none",
                    "customgamename": ""},
            "player": {"steamid": "76561190000000001", "accountid": "1", "name": "Oyuncu", "activity": "playing",
                       "kills": 3, "deaths": 1, "assists": 4, "last_hits": 95, "denies": 6, "kill_streak": 0,
                       "team_name": "radiant", "player_slot": 0, "gold": 1311},
            "hero": {"xpos": -1203, "ypos": 344, "id": 14, "name": hero, "level": 16, "alive": True,
                     "respawn_seconds": 0, "health": 2100, "max_health": 2600, "health_percent": 80},
            "items": {f"slot{slot}": {"name": "empty"} for slot in range(9)},
        }
        self._changed = threading.Condition()
        self._number = 0
        self._is_ending = False
        self.answers, self.seconds = [], []
        self._thread = threading.Thread(target=self._post_continuously, daemon=True)
        self._thread.start()

    def change(self, **parts):
        """For example change(player={"kills": 4}). The next post holds the previous values too, as the game's does."""
        with self._changed:
            for name, fields in parts.items():
                self._state["previously"] = {name: {key: self._state[name].get(key) for key in fields}}
                self._state[name].update(fields)
            self._number += 1
            self._changed.notify()

    def kill(self):
        self.change(player={"kills": self._state["player"]["kills"] + 1})

    def win(self):
        self.change(map={"game_state": "DOTA_GAMERULES_STATE_POST_GAME", "win_team": "radiant"})

    def stop(self):
        with self._changed:
            self._is_ending = True
            self._changed.notify()
        self._thread.join()

    def median_milliseconds(self):
        return 1000 * statistics.median(self.seconds)

    def _post_continuously(self):
        posted = 0
        while True:
            with self._changed:
                self._changed.wait_for(lambda: self._is_ending or self._number != posted, timeout=0.1)
                if self._is_ending:
                    return
                posted = self._number
                body = json.dumps(self._state).encode()
                self._state.pop("previously", None)
            started = time.monotonic()
            self.answers.append(dota_post(body))
            self.seconds.append(time.monotonic() - started)

    def claiming(self, **player):
        """The current state with other counters, as a web page could forge it."""
        with self._changed:
            state = copy.deepcopy(self._state)
        state["player"].update(player)
        return state


def dota_post(body, headers=None):
    """Returns the status of the answer, or a description of the error."""
    connection = http.client.HTTPConnection("127.0.0.1", DOTA_PORT, timeout=5)
    try:
        connection.request("POST", "/", body, {"User-Agent": "Valve/Steam HTTP Client 1.0 (570)",
                                                "Content-Type": "application/json", **(headers or {})})
        return connection.getresponse().status
    except (OSError, http.client.HTTPException) as error:
        return repr(error)
    finally:
        connection.close()


class Disturbance:
    """Other clients of the listener: a web page that posts, invalid requests, and very slow sockets."""

    def __init__(self, dota, sockets=200):
        self._dota = dota
        self._sockets = [None] * sockets
        self._is_ending = threading.Event()
        self.page_answers = []
        self.reconnections = -sockets
        self._threads = [threading.Thread(target=target, daemon=True) for target in (self._stall, self._post_and_break)]
        for thread in self._threads:
            thread.start()

    def stop(self):
        self._is_ending.set()
        for thread in self._threads:
            thread.join()
        for each in self._sockets:
            if each:
                each.close()

    def _stall(self):
        """Each socket sends one byte of an endless header a second, and reconnects when it was closed. They take turns,
        because all at once would delay the Dota client in this process."""
        while True:
            for index, each in enumerate(self._sockets):
                if self._is_ending.wait(1 / len(self._sockets)):
                    return
                try:
                    if each is None:
                        raise ConnectionError
                    each.send(b"x")
                except OSError:
                    self._sockets[index] = self._connect(each)

    def _connect(self, before):
        if before:
            before.close()
        self.reconnections += 1
        try:
            each = socket.create_connection(("127.0.0.1", DOTA_PORT), timeout=1)
            each.send(b"POST / HTTP/1.1\r\nX-Slow: ")
            each.setblocking(False)
            return each
        except OSError:
            return None

    def _post_and_break(self):
        broken = [b"", b"\r\n\r\n", b"\x00\xff" * 500, b"GET / HTTP/1.1\r\n\r\n",
                  b"POST / HTTP/1.1\r\nContent-Length: 99999999999999999999\r\n\r\n{}",
                  b"POST / HTTP/1.1\r\nContent-Length: -5\r\n\r\n{}",
                  b"POST / HTTP/1.1\r\nContent-Length: 40000\r\n\r\n" + b"[" * 40000,
                  b"POST / HTTP/1.1\r\nContent-Length: 9\r\n\r\nnot JSON!"]
        number = 0
        while not self._is_ending.wait(0.5):
            number += 1
            page = {"Origin": "https://page.example", "Content-Type": "text/plain;charset=UTF-8"}
            body = json.dumps(self._dota.claiming(kills=1000 + 7 * number, deaths=number)).encode()
            self.page_answers.append(dota_post(body, page))
            try:
                with socket.create_connection(("127.0.0.1", DOTA_PORT), timeout=1) as each:
                    each.sendall(broken[number % len(broken)])
            except OSError:
                pass


def install_dota(home):
    """Makes a Steam library with Dota 2. Returns the path of Quelto's configuration file in it."""
    steam = home / ".local/share/Steam"
    game = steam / "steamapps/common/dota 2 beta/game"
    (game / "bin").mkdir(parents=True)
    (game / "dota/cfg").mkdir(parents=True)
    (steam / "steamapps/libraryfolders.vdf").write_text(
        f'"libraryfolders"\n{{\n\t"0"\n\t{{\n\t\t"path"\t\t"{steam}"\n\t\t"apps"\n\t\t{{\n\t\t\t"570"\t\t"1"\n\t\t}}\n\t}}\n}}\n')
    return game / "dota/cfg/gamestate_integration/gamestate_integration_quelto.cfg"


def install_wow(home):
    """Makes World of Warcraft in a Wine prefix. Returns its log folder."""
    folder = home / ".wine/drive_c/Program Files (x86)/World of Warcraft/_retail_/Logs"
    folder.mkdir(parents=True)
    return folder


class WowLog:
    """The combat log, written as the game does: in blocks that can end within a line."""

    ME = 'Player-1403-0A1B2C3D,"Oyuncu-Tarren Mill",0x511,0x0'
    WOLF = 'Creature-0-3770-2444-12-189901-00002D8F1A,"Wolf",0xa48,0x0'

    def __init__(self, folder):
        now = datetime.datetime.now()
        self.path = folder / f"WoWCombatLog-{now:%m%d%y_%H%M%S}.txt"
        self.write("COMBAT_LOG_VERSION,20,ADVANCED_LOG_ENABLED,1,BUILD_VERSION,10.2.5,PROJECT_ID,1")

    def write(self, *events):
        now = datetime.datetime.now()
        stamp = f"{now.month}/{now.day}/{now.year} {now:%H:%M:%S}.{now.microsecond // 1000:03}"
        text = "".join(f"{stamp}  {event}\r\n" for event in events).encode()
        with open(self.path, "ab", buffering=0) as file:
            # Two writes, which split the last line.
            file.write(text[:-9])
            file.write(text[-9:])

    def write_noise(self, lines=200):
        """Writes damage events, like most of a log."""
        self.write(*(f'SPELL_DAMAGE,{self.ME},{self.WOLF},133,"Fireball",0x4,{line},1000,0,0,0,-1,4,0,0,0,nil,nil,nil'
                     for line in range(lines)))

    def boss_kill(self, name, difficulty):
        self.write(f'ENCOUNTER_END,2688,"{name}",{difficulty},20,1,294812')
