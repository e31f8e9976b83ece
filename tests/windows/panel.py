#!/usr/bin/python3
"""The panel's server on Windows: one whole way of a page, over HTTP and a WebSocket, with a camera.

usage: panel.py NATIVE-CAMERA telvo.exe"""

from __future__ import annotations

import contextlib
import http.client
import json
import os
import signal
import socket
import struct
import subprocess
import sys
import tempfile
from collections import deque
from collections.abc import Iterator
from pathlib import Path

ADDRESS = "127.0.0.11"
MAC = "02:54:45:00:00:0b"
WIDTH, HEIGHT = 320, 240
NEW_WIDTH = 256
HEADER_BYTES = 16  # of a frame; the pixels of the row below stand in for it in pictures
PATIENCE = 60  # seconds; a test beside this one may take the machine's time
TEXT, BINARY, CLOSE = 1, 2, 8  # kinds of WebSocket frames
GOING_AWAY = 1001


class Page:
    """What a browser's tab is to the panel: a WebSocket."""

    def __init__(self, port: int) -> None:
        self._last_id = 0
        self._events: deque[dict] = deque()
        self._socket = socket.create_connection(("127.0.0.1", port), PATIENCE)
        self._stream = self._socket.makefile("rb")
        host = f"127.0.0.1:{port}"
        self._socket.sendall(
            f"GET /socket HTTP/1.1\r\nHost: {host}\r\nOrigin: http://{host}\r\n"
            "Connection: Upgrade\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
            "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\n".encode())
        head = [line.strip() for line in iter(self._stream.readline, b"\r\n")]
        assert head[0].split()[1] == b"101", head
        # The answer that the protocol's standard gives for this key.
        assert b"Sec-WebSocket-Accept: s3pPLMBiTxaQ9kYGzzhZRbK+xOo=" in head, head

    def send(self, do: str, **values: object) -> int:
        self._last_id += 1
        text = json.dumps({"id": self._last_id, "do": do, **values}).encode()
        mask = b"\x11\x22\x33\x44"
        masked = bytes(byte ^ mask[i % 4] for i, byte in enumerate(text))
        size = bytes([0x80 | len(text)] if len(text) < 126 else [0x80 | 126, *divmod(len(text), 256)])
        self._socket.sendall(bytes([0x80 | TEXT]) + size + mask + masked)
        return self._last_id

    def receive(self) -> tuple[int, bytes]:
        kind, size = self._read(2)
        if size == 126:
            size, = struct.unpack(">H", self._read(2))
        elif size == 127:
            size, = struct.unpack(">Q", self._read(8))
        return kind & 0xF, self._read(size)

    def _read(self, size: int) -> bytes:
        data = self._stream.read(size)
        assert len(data) == size, "the panel has closed the connection"
        return data

    def _next(self) -> tuple[dict, bytes]:
        """An answer or event, or what is said of a picture and the picture. Events are kept."""
        kind, data = self.receive()
        assert kind != CLOSE, data
        if kind == TEXT:
            message = json.loads(data)
            if "event" in message:
                self._events.append(message)
            return message, b""
        size, = struct.unpack(">I", data[:4])
        return json.loads(data[4:4 + size]), data[4 + size:]

    def picture(self, **values: object) -> tuple[dict, bytes]:
        """The next picture of which that is said."""
        while True:
            about, pixels = self._next()
            assert about.get("ok", True), about
            if pixels and values.items() <= about.items():
                return about, pixels

    def event(self, name: str, **values: object) -> dict:
        """The next one; those before it are done with."""
        while True:
            while self._events:
                found = self._events.popleft()
                if found["event"] == name and values.items() <= found.items():
                    return found
            self._next()

    def ask(self, do: str, **values: object) -> dict:
        asked = self.send(do, **values)
        while True:
            answer, picture = self._next()
            if not picture and answer.get("id") == asked:
                assert answer["ok"], (do, answer)
                return answer

    def camera(self, do: str, **values: object) -> dict:
        return self.ask(do, camera=MAC, **values)

    def close_code(self) -> int:
        while True:
            kind, data = self.receive()
            if kind == CLOSE:
                return struct.unpack(">H", data[:2])[0]


@contextlib.contextmanager
def camera(program: str, recordings: Path) -> Iterator[subprocess.Popen]:
    """What it has recorded is in the folder when it has ended."""
    process = subprocess.Popen(
        [program, "--address", ADDRESS, "--user-sets-prepared", "--memory", "32MB",
         "--set", "AcquisitionFrameRateRaw=200", "--set", f"Width={WIDTH}",
         "--set", f"Height={HEIGHT}", "--save-recordings", str(recordings)],
        stdout=subprocess.PIPE, text=True)
    try:
        assert "listens on" in process.stdout.readline()
        yield process
    finally:
        process.terminate()
        process.wait(PATIENCE)


@contextlib.contextmanager
def panel(program: str, folder: Path) -> Iterator[tuple[subprocess.Popen, int]]:
    """With the port at which it serves."""
    process = subprocess.Popen(["wine", program, "panel", "--port", "0", "--folder", str(folder)],
                               stdout=subprocess.PIPE, text=True)
    try:
        line = process.stdout.readline()
        assert line.startswith("the panel is at http://127.0.0.1:"), line
        yield process, int(line.rsplit(":", 1)[1].rstrip("/\n"))
    finally:
        process.kill()
        process.wait()


def get(port: int, target: str, **headers: str) -> tuple[int, bytes]:
    connection = http.client.HTTPConnection("127.0.0.1", port, timeout=PATIENCE)
    connection.request("GET", target, headers=headers)
    answer = connection.getresponse()
    return answer.status, answer.read()


def is_free() -> bool:
    """Nobody controls the camera, says its bootstrap register."""
    command = struct.pack(">BBHHHI", 0x42, 1, 0x0080, 4, 1, 0x0A00)
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as asking:
        asking.settimeout(PATIENCE)
        asking.sendto(command, (ADDRESS, 3956))
        answer = asking.recv(64)
    assert answer[:8] == bytes.fromhex("0000008100040001"), answer
    return answer[8:] == bytes(4)


def check_site(port: int) -> None:
    status, page = get(port, "/")
    assert status == 200 and b"<!doctype html>" in page.lower(), (status, page)
    assert get(port, "/nothing")[0] == 404
    assert get(port, "/", Host="telvo.example")[0] == 403
    assert get(port, "/", Origin="http://telvo.example")[0] == 403


def check_second_server(program: str, port: int) -> None:
    """A port that is in use is not shared, which Windows would do."""
    second = subprocess.run(["wine", program, "panel", "--port", str(port)], capture_output=True,
                            text=True, timeout=PATIENCE)
    assert second.returncode == 1, second
    assert f"cannot serve at 127.0.0.1 port {port} (" in second.stderr, second


def check_connecting(page: Page) -> None:
    hello = page.ask("hello")
    cameras = hello["cameras"] or page.event("cameras")["cameras"]
    assert [(found["camera"], found["free"]) for found in cameras] == [(MAC, True)], cameras
    assert "mkv" not in hello["formats"] and "tiff" in hello["formats"], hello
    page.camera("open")
    page.event("state", camera=MAC, state="idle")
    assert not is_free()


def check_live(page: Page) -> None:
    page.camera("set", values={"width": NEW_WIDTH})
    page.camera("preview", width=NEW_WIDTH)
    page.camera("live", on=True)
    last = -1
    for _ in range(5):
        about, picture = page.picture(kind="live")
        assert (about["pictureWidth"], about["pictureHeight"]) == (NEW_WIDTH, HEIGHT), about
        assert picture[:2] == b"\xff\xd8" and picture[-2:] == b"\xff\xd9", "no JPEG"
        assert about["number"] > last
        last = about["number"]
        page.camera("seen", number=last)


def record(page: Page) -> int:
    """In a ring until the page's trigger; the number of frames."""
    page.camera("arm", mode="ring", trigger="key", post=20)
    page.event("state", camera=MAC, state="armed")
    page.camera("trigger")
    ended = page.event("state", camera=MAC, state="idle")
    assert "ended by the key" in ended["text"], ended
    sequence, = page.camera("recording")["sequences"]
    return sequence["frames"]


def frame(page: Page, number: int) -> bytes:
    """All its pixels."""
    asked = page.send("frame", camera=MAC, sequence=0, frame=number, raw=True)
    about, pixels = page.picture(id=asked)
    assert about["number"] == number and about["format"] == "gray8", about
    return pixels


def download(page: Page, port: int, first: int, count: int) -> bytes:
    """What the browser gets of it."""
    job = page.camera("download", sequence=0, first=first, count=count, format="raw",
                      name="run 1")["job"]
    while (end := page.event("download", job=job))["state"] == "running":
        pass
    assert end["state"] == "done" and end["verdict"]["whole"], end
    listed, = page.ask("downloads")["files"]
    assert listed["name"] == "run 1.raw" and listed["frames"] == count, listed
    status, file = get(port, "/download/run%201.raw")
    assert status == 200, (status, file)
    return file


def check_end(process: subprocess.Popen, page: Page) -> None:
    process.send_signal(signal.SIGINT)  # Ctrl-C: Wine hands it on
    page.event("end")
    assert page.close_code() == GOING_AWAY
    assert process.wait(PATIENCE) == 0, process.returncode
    assert is_free()


def main() -> None:
    camera_program, telvo = sys.argv[1:]
    folder = Path(tempfile.mkdtemp(dir=os.environ["WINEPREFIX"]))
    files = folder / "Aufnahmen \u00e4"
    files.mkdir()
    with camera(camera_program, folder), panel(telvo, files) as (process, port):
        check_site(port)
        check_second_server(telvo, port)
        page = Page(port)
        check_connecting(page)
        check_live(page)
        count = record(page)
        pixels = frame(page, 7)
        file = download(page, port, 5, 10)
        check_end(process, page)

    truth = (folder / f"{ADDRESS}-0.raw").read_bytes()
    size = NEW_WIDTH * HEIGHT
    assert len(truth) == count * size, (len(truth), count)
    assert pixels[HEADER_BYTES:] == truth[7 * size + HEADER_BYTES:8 * size]
    assert file == truth[5 * size:15 * size]
    assert (files / "run 1.raw").read_bytes() == file


main()
