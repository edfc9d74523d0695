"""Drives the finished program from outside, the way a person does: real mouse and keys on a virtual
display, ears on a sound sink that nobody hears. Coordinates are the screen's pixels.

A journey is a function that takes an App; its script ends with driver.main(journey).
"""

import array
import math
import os
import shutil
import subprocess
import sys
import time
import traceback
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
BUILD = TOP / "build"
SCREENSHOTS = BUILD / "screenshots"
RATE = 44100


class Failed(Exception):
    """What a person would complain about."""


def wait_until(condition, seconds=10, what="the expected state"):
    """Polls until the condition gives something true and returns that."""
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise Failed(f"{seconds} s passed without {what}")
        time.sleep(0.02)


def check(condition, what):
    if not condition:
        raise Failed(what)


class Probe:
    """The helper inside Wine; see probe.cpp for what it can be asked."""

    def __init__(self, path, env):
        self.process = subprocess.Popen([TOP / "tools/wine-run", path], env=env, encoding="utf-8",
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def ask(self, command, window=0):
        """Rows of fields."""
        print(command, window, file=self.process.stdin, flush=True)
        rows = []
        while (line := self.process.stdout.readline()) != "\n":
            check(line, "the probe has ended")
            rows.append(line.split("\t")[:-1])
        return rows


class Place:
    """Something on the screen that the mouse can reach, as it was when it was asked for: a control,
    with its name in the code, a node of a tree or a row of a list, with its text."""

    def __init__(self, app, name, rect):
        self.app, self.name, self.rect = app, name, [int(edge) for edge in rect]

    def point(self, across=0.5, down=0.5):
        """The point at these shares of its width and height."""
        left, top, right, bottom = self.rect
        return int(left + (right - 1 - left) * across), int(top + (bottom - 1 - top) * down)

    def click(self, button=1, across=0.5, down=0.5):
        self.app.xdotool("mousemove", *self.point(across, down), "click", button)

    def double_click(self):
        self.app.xdotool("mousemove", *self.point(), "click", "--repeat", 2, "--delay", 50, 1)


class Control(Place):
    """A window of the program."""

    def __init__(self, app, row):
        super().__init__(app, row[3], row[5:])
        self.hwnd, self.root, self.kind, self.visible = row[0], row[1], row[2], row[4] != "0"

    @property
    def text(self):
        """The window's text now."""
        return self.app.probe.ask("text", self.hwnd)[0][0]

    def items(self):
        """All nodes of a tree but those in collapsed ones, or all rows of a list, now."""
        return [Place(self.app, row[0], row[1:]) for row in self.app.probe.ask("items", self.hwnd)]

    def item(self, name, seconds=10):
        """The first node or row of that text; waits for it."""
        return wait_until(lambda: next((i for i in self.items() if i.name == name), None), seconds,
                          f"{name!r} in {self.name}")


class App:
    """The program, running on a stage with `folder` as drive E:."""

    def __init__(self, program, probe, folder):
        self.dpi = int(os.environ.get("TUNOVKA_STAGE", 96))
        self.scale = self.dpi / 96
        env = dict(os.environ, TUNOVKA_STAGE=str(self.dpi), TUNOVKA_DRIVE_E=str(folder))
        started = subprocess.run([TOP / "tools/stage", "start"], env=env, check=True,
                                 stdout=subprocess.PIPE, text=True).stdout
        env.update(line.split("=", 1) for line in started.splitlines())
        self.env = env
        self.probe = Probe(probe, env)
        self._process = subprocess.Popen([TOP / "tools/wine-run", program], env=env)

    # Windows

    def windows(self):
        """All windows that are shown, the front ones first, each followed by its children."""
        windows = [Control(self, row) for row in self.probe.ask("windows")]
        return [window for window in windows if window.visible]

    def find(self, name, within=None):
        """The first window of that code name, or None. `within`: a control of that window."""
        # Windows keeps the names as atoms, which know no letter case.
        return next((w for w in self.windows() if w.name.lower() == name.lower() and
                     (within is None or within.hwnd == w.root)), None)

    def of_kind(self, kind):
        """The windows of a class of the system's."""
        return [w for w in self.windows() if w.kind == kind]

    def control(self, name, seconds=10, within=None):
        """The window of that code name, say "Tview" or "frmBox"; waits for it."""
        return wait_until(lambda: self.find(name, within), seconds, f"a window {name!r}")

    def wait_gone(self, name, seconds=5):
        wait_until(lambda: not self.find(name), seconds, f"{name!r} gone")

    def has_focus(self, word):
        """Whether the control that has the keyboard is one of that name or text."""
        hwnd = self.probe.ask("focus")[0][0]
        return any(w.hwnd == hwnd and word in (w.name, w.text) for w in self.windows())

    # Mouse and keys

    def xdotool(self, *words):
        subprocess.run(["xdotool", *map(str, words)], env=self.env, check=True,
                       stdout=subprocess.DEVNULL)

    def drag(self, start, end, arrived=None):
        """Presses on one point, moves in steps as a hand does, and releases near the other; a window,
        which follows from when it has seen the pointer move, once it has arrived."""
        (x1, y1), (x2, y2) = start, end
        self.xdotool("mousemove", x1, y1, "mousedown", 1, "mousemove", x1 + 1, y1)
        try:
            if arrived:
                wait_until(lambda: self.probe.ask("focus")[0][1] != "0", 5, "the window drawn")
            for step in range(1, 13):
                self.xdotool("mousemove", x1 + 1 + (x2 - x1) * step // 12,
                             y1 + (y2 - y1) * step // 12, "sleep", 0.03)
            if arrived:
                wait_until(arrived, 5, "the window in its place")
        finally:
            self.xdotool("mouseup", 1)

    def key(self, *names):
        """Keys by their X names: "Return", "ctrl+a", "Down"."""
        self.xdotool("key", *names)

    def choose(self, number):
        """Chooses an entry of the open pop-up menu by keys. Separators do not count; the first entry
        is 1. (A menu's texts cannot be read from another program here: look at a picture.)"""
        wait_until(lambda: self.of_kind("#32768"), 5, "a menu")
        self.key(*["Down"] * number, "Return")
        wait_until(lambda: not self.of_kind("#32768"), 5, "the menu gone")

    # Eyes and ears

    def screenshot(self, name):
        """The whole screen, into build/screenshots/NAME.png; NAME-DPI.png when that is not 96."""
        SCREENSHOTS.mkdir(parents=True, exist_ok=True)
        path = SCREENSHOTS / (f"{name}.png" if self.dpi == 96 else f"{name}-{self.dpi}.png")
        subprocess.run(["import", "-window", "root", path], env=self.env, check=True)
        return path

    def record(self, seconds):
        """One channel of what the program plays during that time, RATE samples a second."""
        words = ["parec", "-d", "null.monitor", "--raw", "--format=s16le", f"--rate={RATE}",
                 "--channels=1", "--latency-msec=20"]
        with subprocess.Popen(words, env=self.env, stdout=subprocess.PIPE) as process:
            data = process.stdout.read(int(seconds * RATE) * 2)
            process.kill()
        return array.array("h", data)

    def level(self, seconds=0.5):
        """How loud it is: decibels below full scale (root mean square); -100 for silence."""
        samples = self.record(seconds)
        power = sum(s * s for s in samples) / len(samples) / 32768 ** 2
        return 10 * math.log10(power + 1e-10)

    def pitch(self, seconds=0.25):
        """Frequency of a plain tone in hertz, 0 for silence."""
        samples = self.record(seconds)
        rises = [at for at in range(1, len(samples)) if samples[at - 1] < 0 <= samples[at]]
        return (len(rises) - 1) * RATE / (rises[-1] - rises[0]) if len(rises) > 1 else 0.0

    # The end

    def running(self):
        return self._process.poll() is None

    def close_main(self):
        """Closes the first window and gives back the program's exit code."""
        self.control("Ikoniec", within=self.control("frmPrieskumnik")).click()
        return self.wait_end()

    def wait_end(self, seconds=10):
        wait_until(lambda: not self.running(), seconds, "the program's end")
        return self._process.returncode

    def stop(self):
        """Ends everything that this object started, whatever its state."""
        for process in (self._process, self.probe.process):
            if process.poll() is None:
                process.kill()
                process.wait()


def collection(name):
    """A fresh copy of the samples that a journey may change."""
    folder = BUILD / "collections" / name
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(TOP / "samples", folder)
    return folder


def main(journey, folder=None):
    """Runs one journey on the stage that TUNOVKA_STAGE names (96): its script's arguments are the
    program and the probe. On failure leaves a screenshot and exits with 1."""
    name = Path(sys.argv[0]).stem.removesuffix("_journey")
    program, probe = sys.argv[1:3] if len(sys.argv) > 2 else (
        BUILD / "windows/src/app/tunovka.exe", BUILD / "windows/tests/journeys/probe.exe")
    app = App(program, probe, folder or collection(name))
    try:
        journey(app)
        if app.running():
            code = app.close_main()
            check(code == 0, f"the program ended with {code}")
    except Exception:
        traceback.print_exc()
        print("Screenshot:", app.screenshot(f"failed-{name}"), file=sys.stderr)
        sys.exit(1)
    finally:
        app.stop()
