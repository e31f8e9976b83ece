#!/usr/bin/python3
"""What Python costs: 1 GB read in blocks beside the same from C, live views, and two cameras.

usage: python_readout.py BUILD_FOLDER [ROUNDS]

In a network of its own (scripts/in-own-network.sh). C and Python take turns in one process, on one
connection, so that whatever else the machine does hits both.
"""

from __future__ import annotations

import contextlib
import ctypes
import os
import statistics
import subprocess
import sys
import tempfile
import threading
import time
from collections.abc import Callable, Iterator
from pathlib import Path

import numpy as np

PROJECT = Path(__file__).resolve().parents[1]
BUILD = Path(sys.argv[1]).resolve()
ROUNDS = int(sys.argv[2]) if len(sys.argv) > 2 else 25
LIBRARY = BUILD / "lib/libTelvoDll.so"

os.environ["TELVO_LIBRARY"] = str(LIBRARY)
sys.path.insert(0, str(PROJECT / "python/src"))
import telvo  # noqa: E402, after the path is set

FRAMES = 763  # of 1280x1024: 1 GB
LIVE_SECONDS = 5.0
PACKETS = telvo.LinkSettings(packet_size=9000, default_inter_packet_delay=0, output_data_rate=0)


@contextlib.contextmanager
def camera(address: str, *options: str) -> Iterator[telvo.Camera]:
    program = subprocess.Popen(
        [BUILD / "bin/telvo-camera", "--address", address, "--user-sets-prepared", *options],
        stdout=subprocess.PIPE,
    )
    assert program.stdout is not None
    program.stdout.readline()  # it listens
    try:
        with telvo.Camera(address, link=PACKETS) as connected:
            yield connected
    finally:
        program.kill()
        program.wait()


def host_in_c(folder: str) -> ctypes.CDLL:
    made = Path(folder) / "host.so"
    compiler = ["cc", "-O2", "-shared", "-fPIC", f"-I{PROJECT / 'include'}"]
    source = [PROJECT / "bench/python_readout.c", LIBRARY, f"-Wl,-rpath,{LIBRARY.parent}"]
    subprocess.run([*compiler, "-o", made, *source], check=True)
    loaded = ctypes.CDLL(str(made))
    number = ctypes.c_uint32
    loaded.readOut.argtypes = [ctypes.c_int32, number, number, ctypes.c_size_t, ctypes.c_void_p]
    loaded.watchLive.argtypes = [ctypes.c_int32, ctypes.c_double]
    return loaded


def seconds(work: Callable[[], None]) -> float:
    start = time.perf_counter()
    work()
    return time.perf_counter() - start


def compare(name: str, in_c: Callable[[], None], in_python: Callable[[], None]) -> None:
    times: dict[Callable[[], None], list[float]] = {in_c: [], in_python: []}
    for round in range(ROUNDS):
        # Each goes first every other time.
        for work in (in_c, in_python) if round % 2 else (in_python, in_c):
            times[work].append(seconds(work))
    c, python = times.values()
    # Of the two of a round, since what else the machine does changes from round to round.
    more = statistics.median(100 * (of_python / of_c - 1) for of_c, of_python in zip(c, python))
    print(
        f"{name}: C {statistics.median(c):.3f} s, Python {statistics.median(python):.3f} s, "
        f"{more:+.1f} % (medians of {ROUNDS} rounds; best {min(c):.3f} s and {min(python):.3f} s)"
    )


def compare_readouts(one: telvo.Camera, c: ctypes.CDLL) -> None:
    one.frame_rate = 1000
    recording = one.record(FRAMES)
    memory = np.ones((FRAMES, recording.height, recording.width), np.uint8)
    block = len(next(recording.blocks()))
    recording[:1]  # a transfer is under way, and at rest
    size = recording.width * recording.height

    def in_c(out: int | None) -> None:
        assert c.readOut(one._session._id, FRAMES, block, size, out) == 0

    def views() -> None:
        for block in recording.blocks(0, FRAMES):
            assert block.view.shape[1:] == memory.shape[1:]

    compare("1 GB, views ", lambda: in_c(None), views)
    address = memory.ctypes.data
    compare("1 GB, copied", lambda: in_c(address), lambda: recording.read_into(memory))


def live_views(one: telvo.Camera, c: ctypes.CDLL, width: int, height: int) -> None:
    one.width, one.height = width, height
    one.frame_rate = 1000
    frames = 0
    live = one.live()
    next(live)
    in_c = c.watchLive(one._session._id, LIVE_SECONDS)
    end = time.perf_counter() + LIVE_SECONDS
    for frame in live:
        frame.view[::64, ::64].mean()
        frames += 1
        if time.perf_counter() > end:
            break
    live.close()
    print(
        f"live views of 1000 frames/s, {width}x{height}: "
        f"C {in_c / LIVE_SECONDS:.0f}, Python {frames / LIVE_SECONDS:.0f}"
    )


def rate(recordings: list[telvo.Recording]) -> float:
    """MB/s of all of them, each read by a thread of its own."""

    def read(recording: telvo.Recording) -> None:
        for block in recording.blocks():
            assert len(block.view)

    threads = [threading.Thread(target=read, args=(recording,)) for recording in recordings]

    def run() -> None:
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()

    return sum(len(r) * r.width * r.height for r in recordings) / seconds(run) * 1e-6


def two_cameras() -> None:
    cable = ("--link-rate", "1G")
    with camera("127.0.0.62", *cable) as first, camera("127.0.0.63", *cable) as second:
        recordings = [one.record(200) for one in (first, second)]
        for recording in recordings:
            recording[:1]  # a transfer is under way
        alone = rate(recordings[:1])
        both = rate(recordings)
    print(f"cameras on cables of 1 Gbit/s: one {alone:.0f} MB/s, two in two threads {both:.0f} MB/s")


def main() -> None:
    with tempfile.TemporaryDirectory() as folder:
        c = host_in_c(folder)
        with camera("127.0.0.61", "--unpaced", "--memory", "2GB") as one:
            compare_readouts(one, c)
        with camera("127.0.0.64") as one:
            live_views(one, c, 1280, 1024)
            live_views(one, c, 640, 480)
    two_cameras()


main()
