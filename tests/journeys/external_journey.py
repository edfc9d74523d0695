"""Every entry of the play sub-menu, with stand-ins for the external players; then a player that is
gone."""

import shutil
import sys

import driver
import hands
import players
from driver import check
from players import started

FOLDER = driver.collection("external")
PLAYERS = FOLDER / "Prehrávače"
# A kind of music that no program of the system is known for, so that the journey can say which.
SONG = "žltý kôň.vrtilko-mp3"
LINE = rf'1|E:\Prehrávače\{{}}.exe "E:\{SONG}"'

MULTIMEDIA, CLASSES = r"HKLM\SOFTWARE\Microsoft\Multimedia", r"HKLM\Software\Classes"
REGISTRY = {
    players.WINAMP: ("", None, r"E:\Prehrávače"),
    rf"{MULTIMEDIA}\WMPlayer": ("", "Player.Path", r"E:\Prehrávače\wmplayer.exe"),
    rf"{MULTIMEDIA}\MPlayer2": ("", "Player.Path", r"E:\Prehrávače\mplayer2.exe"),
    rf"{CLASSES}\.vrtilko-mp3": ("", None, "vrtilko.zvuk"),
    rf"{CLASSES}\vrtilko.zvuk": (r"\shell\open\command", None, r'"E:\Prehrávače\hudba.exe" "%1"'),
}


def play(app, entry):
    hands.menu(app, hands.file_of(app, SONG), hands.PLAY, entry)


def journey(app):
    play(app, hands.HERE)
    hands.plays(app)
    heard = app.record(0.5).level()
    check(heard > -40, f"the explorer is heard at {heard:.1f} dB")

    for entry, name in ((hands.WINAMP, "winamp"), (hands.WMP, "wmplayer"), (hands.MP2, "mplayer2")):
        play(app, entry)
        line = started(PLAYERS / f"{name}.exe")
        check(line == LINE.format(name), f"{name} was started by {line!r}")

    play(app, hands.DEFAULT)
    line = started(PLAYERS / "hudba.exe")
    # The shell writes the program's path its own way: quoted or not, with letters of any case.
    words = line.replace('"', "").lower()
    check(words == LINE.format("hudba").replace('"', "").lower() and line.endswith(f'"E:\\{SONG}"'),
          f"the default program was started by {line!r}")

    play(app, hands.CHOSEN)
    line = started(app.program.with_name("rundll32.exe"))
    check(line == f"2|rundll32.exe shell32.dll, OpenAs_RunDLL E:\\{SONG}",
          f"Open With was started by {line!r}")

    # A player that is gone is told; the next one plays.
    (PLAYERS / "wmplayer.exe").unlink()
    play(app, hands.WMP)
    hands.box(app, r"E:\Prehrávače\wmplayer.exe")
    app.screenshot("external-missing")
    hands.answer(app, 1)
    play(app, hands.MP2)
    started(PLAYERS / "mplayer2.exe")


if __name__ == "__main__":
    (FOLDER / "Čerešňový sad.mp3").rename(FOLDER / SONG)
    for name in "winamp", "wmplayer", "mplayer2", "hudba":
        players.stand_in(PLAYERS / f"{name}.exe")
    # The program looks for the system's helper beside itself first: there the stand-in lies, so the
    # program needs a folder of its own.
    program = driver.BUILD / "collections/external-program/tunovka.exe"
    program.parent.mkdir(parents=True, exist_ok=True)
    shutil.copy(sys.argv[1], program)
    players.stand_in(program.with_name("rundll32.exe"))
    sys.argv[1] = str(program)
    with players.registered(FOLDER, REGISTRY):
        driver.main(journey, FOLDER)
