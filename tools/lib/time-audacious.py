"""Usage: time-audacious.py FOLDER, on a display and a session bus of its own. Prints two medians in
milliseconds: from starting Audacious until its window is on the screen, and from handing it the
playlist FOLDER/mixed.m3u until it says that it has all entries."""

import os
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from gi.repository import Gio, GLib

RUNS = 9
NAME = "org.atheme.audacious"


def wait_until(condition):
    """Polls without a pause, because it is timed."""
    end = time.monotonic() + 30
    while not condition():
        if time.monotonic() > end:
            sys.exit("Audacious does not get ready")


def timed(work):
    start = time.monotonic()
    work()
    return (time.monotonic() - start) * 1000


def seen():
    return subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "audacious"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout


def main(folder, home):
    lines = (folder / "mixed.m3u").read_text().splitlines()
    playlist = home / "mixed.m3u"
    playlist.write_text("".join(f"{folder}/{line}\n" for line in lines).replace("\\", "/"))
    env = {k: v for k, v in os.environ.items() if not k.startswith("XDG_")} | {"HOME": str(home)}
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)

    def call(method, kind="()", *values):
        return bus.call_sync(NAME, "/org/atheme/audacious", NAME, method,
                             GLib.Variant(kind, values), None, 0, 30_000, None).unpack()

    def has(entries):
        try:
            return call("Length") == (entries,)
        except GLib.Error:  # it does not answer yet
            return False

    def open_playlist():
        call("AddList", "(as)", [playlist.as_uri()])
        wait_until(lambda: has(len(lines)))

    def run():
        time.sleep(1)  # the one before has come to its end
        begin = time.monotonic()
        process = subprocess.Popen(["audacious"], env=env, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        try:
            wait_until(seen)
            start = (time.monotonic() - begin) * 1000
            wait_until(lambda: has(0))
            opening = timed(open_playlist)
            call("Clear")  # it would come back with the next start
            wait_until(lambda: has(0))
            call("Quit")
            process.wait(30)
        finally:
            process.kill()
        return start, opening

    run()  # makes its settings and warms the caches
    starts, openings = zip(*(run() for _ in range(RUNS)))
    print(statistics.median(starts), statistics.median(openings))


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as place:
        main(Path(sys.argv[1]), Path(place))
