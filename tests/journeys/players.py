"""Stand-ins for external players: programs of their names that write down how they were started."""

import os
import shutil
import subprocess
from contextlib import contextmanager

import driver
from driver import wait_until

WINAMP = r"HKCU\Software\winamp"


def stand_in(path):
    """Puts one under that path and gives the path back."""
    path.parent.mkdir(exist_ok=True)
    return shutil.copy(driver.BUILD / "windows/tests/windows/command_line_recorder.exe", path)


def started(player):
    """How that stand-in was started, once: the show mode (1: normal, 2: minimised), a bar and the
    command line."""
    record = player.with_name(player.name + ".txt")
    wait_until(record.exists, 10, f"{player.name} started")
    text = record.read_bytes().decode("utf-16-le")
    record.unlink()
    return text


@contextmanager
def registered(drive, keys):
    """Registry keys that are there meanwhile and gone afterwards, with all below them; of each
    (path below it, name of the value or None for the default one, text). `drive`: what the program
    will have as drive E:, for the server that this starts knows it from then on."""
    def reg(*words):
        env = dict(os.environ, TUNOVKA_DRIVE_E=str(drive))
        subprocess.run([driver.TOP / "tools/wine-run", "reg", *words], env=env, check=True,
                       stdout=subprocess.DEVNULL)

    try:
        for key, (below, name, text) in keys.items():
            reg("add", key + below, *(["/v", name] if name else ["/ve"]), "/d", text, "/f")
        yield
    finally:
        for key in keys:
            reg("delete", key, "/f")
