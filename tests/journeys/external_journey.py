"""Every entry of the play sub-menu, with stand-ins for the external players that write down how they
were started; then a player that is gone."""

import os
import shutil
import subprocess
import sys
from contextlib import contextmanager
from pathlib import Path

import driver
from driver import check, wait_until

FOLDER = driver.collection("external")
PLAYERS = FOLDER / "Prehrávače"
# An extension of the journey's own, which the explorer takes for music and no program is known for.
SONG = "žltý kôň.vrtilko-mp3"
PATH = f"E:\\{SONG}"
QUOTED = f' "{PATH}"'
NORMAL, MINIMIZED = "1|", "2|"

WINAMP = r"HKCU\Software\winamp"
MULTIMEDIA = r"HKLM\SOFTWARE\Microsoft\Multimedia"
KIND, COMMAND = r"HKLM\Software\Classes\.vrtilko-mp3", r"HKLM\Software\Classes\vrtilko.zvuk"

HERE, DEFAULT, CHOSEN, IN_WINAMP, IN_WMP, IN_MP2 = range(1, 7)  # entries of the sub-menu


def recorder(path):
    """A stand-in of that name."""
    path.parent.mkdir(exist_ok=True)
    shutil.copy(driver.BUILD / "windows/tests/windows/command_line_recorder.exe", path)
    return path


def started(player):
    """How the stand-in was started: show mode and command line."""
    record = player.with_name(player.name + ".txt")
    wait_until(record.exists, 10, f"{player.name} started")
    text = record.read_bytes().decode("utf-16-le")
    record.unlink()
    return text


def reg(*words):
    # The same drive E: as the program will have, which the server then knows.
    env = dict(os.environ, TUNOVKA_STAGE="96", TUNOVKA_DRIVE_E=str(FOLDER))
    subprocess.run([driver.TOP / "tools/wine-run", "reg", *words], env=env, check=True,
                   stdout=subprocess.DEVNULL)


@contextmanager
def registered():
    """The players are in the registry, and gone from it afterwards."""
    try:
        reg("add", WINAMP, "/ve", "/d", r"E:\Prehrávače", "/f")
        for key, program in ("WMPlayer", "wmplayer.exe"), ("MPlayer2", "mplayer2.exe"):
            reg("add", rf"{MULTIMEDIA}\{key}", "/v", "Player.Path", "/d",
                rf"E:\Prehrávače\{program}", "/f")
        reg("add", KIND, "/ve", "/d", "vrtilko.zvuk", "/f")
        reg("add", rf"{COMMAND}\shell\open\command", "/ve", "/d",
            r'"E:\Prehrávače\hudba.exe" "%1"', "/f")
        yield
    finally:
        for key in WINAMP, rf"{MULTIMEDIA}\WMPlayer", rf"{MULTIMEDIA}\MPlayer2", KIND, COMMAND:
            reg("delete", key, "/f")


def play(app, entry):
    app.control("Tview").item(SONG, 20).click(3)
    app.choose(3, entry)


def journey(app):
    play(app, HERE)
    wait_until(lambda: app.record(0.3).level() > -40, 10, "the song heard in the explorer")
    app.control("Image2").click()

    for entry, name in (IN_WINAMP, "winamp"), (IN_WMP, "wmplayer"), (IN_MP2, "mplayer2"):
        play(app, entry)
        line = started(PLAYERS / f"{name}.exe")
        check(line == rf"{NORMAL}E:\Prehrávače\{name}.exe{QUOTED}", f"{name} was started by {line!r}")

    play(app, DEFAULT)
    line = started(PLAYERS / "hudba.exe")
    check(line.lower().startswith(rf"{NORMAL}e:\prehrávače\hudba.exe") and line.endswith(QUOTED),
          f"the default program was started by {line!r}")

    play(app, CHOSEN)
    line = started(app.program.with_name("rundll32.exe"))
    check(line == f"{MINIMIZED}rundll32.exe shell32.dll, OpenAs_RunDLL {PATH}",
          f"Open With was started by {line!r}")

    # A player that is gone is told; the next one plays.
    (PLAYERS / "wmplayer.exe").unlink()
    play(app, IN_WMP)
    box = app.control("frmBox")
    said = app.control("lblotazka", within=box).text
    check(r"E:\Prehrávače\wmplayer.exe" in said, f"the box says {said!r}")
    app.screenshot("external-missing")
    app.control("Itlačítko1", within=box).click()
    app.wait_gone("frmBox")
    play(app, IN_MP2)
    started(PLAYERS / "mplayer2.exe")


if __name__ == "__main__":
    (FOLDER / "Čerešňový sad.mp3").rename(FOLDER / SONG)
    for name in "winamp", "wmplayer", "mplayer2", "hudba":
        recorder(PLAYERS / f"{name}.exe")
    # The program looks for the system's helper beside itself first: there the stand-in lies, so the
    # program needs a folder of its own.
    program = driver.BUILD / "collections/external-program/tunovka.exe"
    program.parent.mkdir(parents=True, exist_ok=True)
    shutil.copy(sys.argv[1], program)
    recorder(program.with_name("rundll32.exe"))
    sys.argv[1] = str(program)
    with registered():
        driver.main(journey, FOLDER)
