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
        self.process = subprocess.Popen([TOP / "tools/wine-run", path], env=env,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def ask(self, command, word=""):
        """Rows of fields."""
        self.process.stdin.write(f"{command}\t{word}\n".encode())
        self.process.stdin.flush()
        line = self.process.stdout.readline().decode()
        if not line:
            raise Failed("the probe has ended")
        return [row.split("\t") for row in line.rstrip("\n").split("\x1e") if line != "\n"]


class Place:
    """Something on the screen that the mouse can reach."""

    def __init__(self, app, rect):
        self.app, self.rect = app, rect

    @property
    def center(self):
        left, top, right, bottom = self.rect
        return (left + right) // 2, (top + bottom) // 2

    def click(self, button=1):
        self.app.click(self.center, button)

    def double_click(self):
        self.app.xdotool("mousemove", *self.center, "click", "--repeat", 2, "--delay", 50, 1)


class Item(Place):
    """A node of a tree or a row of a list, as it was when it was asked for; without a rectangle it
    lies in a collapsed node."""

    def __init__(self, app, row):
        self.text, numbers = row[0], [int(field) for field in row[1:]]
        self.level, self.expanded = numbers[:2]
        super().__init__(app, numbers[2:])


class Control(Place):
    """A window of the program, as it was when it was asked for."""

    def __init__(self, app, row):
        super().__init__(app, [int(field) for field in row[5:]])
        self.hwnd, self.root, self.kind, self.name = int(row[0]), int(row[1]), row[2], row[3]
        self.visible = row[4] != "0"

    @property
    def text(self):
        """The window's text now."""
        return (self.app.probe.ask("text", self.hwnd) or [[""]])[0][0]

    def items(self):
        """All nodes of a tree in their order, or all rows of a list, now."""
        return [Item(self.app, row) for row in self.app.probe.ask("items", self.hwnd)]

    def find(self, text):
        """The first node or row of that text, or None."""
        return next((item for item in self.items() if item.text == text), None)

    def item(self, text, seconds=5):
        """The node or row of that text; waits for it."""
        return wait_until(lambda: self.find(text), seconds, f"{text!r} in {self.name}")

    def expand(self, text):
        """Expands a node by its button, as the mouse does it."""
        self.item(text).click()
        self.app.key("Right")
        wait_until(lambda: self.item(text).expanded, 10, f"{text!r} expanded")


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
        """All windows of the program, the front ones first, each followed by its children."""
        return [Control(self, row) for row in self.probe.ask("windows")]

    def find(self, name, visible=True, within=None):
        """The first window of that code name, or None. `within`: a control of that window."""
        # Windows keeps the names as atoms, which know no letter case.
        return next((w for w in self.windows() if w.name.lower() == name.lower() and
                     (w.visible or not visible) and (within is None or within.hwnd == w.root)), None)

    def control(self, name, seconds=10, visible=True, within=None):
        """The window of that code name, say "Tview" or "frmBox"; waits for it."""
        return wait_until(lambda: self.find(name, visible, within), seconds, f"a window {name!r}")

    def top_windows(self):
        """Visible windows that are nobody's child: forms, menus, dialogs; front ones first."""
        return [w for w in self.windows() if w.visible and w.root == w.hwnd]

    def wait_gone(self, name, seconds=5):
        wait_until(lambda: not self.find(name), seconds, f"{name!r} gone")

    def focused(self):
        """The control that has the keyboard, or None when it is another program's."""
        hwnd = int(self.probe.ask("focus")[0][0])
        return next((w for w in self.windows() if w.hwnd == hwnd), None)

    # Mouse and keys

    def xdotool(self, *words):
        subprocess.run(["xdotool", *map(str, words)], env=self.env, check=True,
                       stdout=subprocess.DEVNULL)

    def click(self, point, button=1):
        self.xdotool("mousemove", *point, "click", button)

    def drag(self, start, end):
        """Presses on one place, moves in steps as a hand does, and releases on the other."""
        self.xdotool("mousemove", *start.center, "mousedown", 1,
                     *self._steps(start.center, end.center), "mouseup", 1)

    def drag_window(self, start, end, arrived):
        """The same between two points for a window, which follows from when it has seen the pointer
        move. Released when it has arrived."""
        x, y = start
        self.xdotool("mousemove", x, y, "mousedown", 1, "mousemove", x + 1, y)
        try:
            wait_until(lambda: self.probe.ask("focus")[0][1] != "0", 5, "the window being drawn")
            self.xdotool(*self._steps((x + 1, y), (end[0] + 1, end[1])))
            wait_until(arrived, 5, "the window in its place")
        finally:
            self.xdotool("mouseup", 1)

    @staticmethod
    def _steps(start, end):
        (x1, y1), (x2, y2) = start, end
        words = []
        for step in range(13):
            words += ["mousemove", x1 + (x2 - x1) * step // 12, y1 + (y2 - y1) * step // 12,
                      "sleep", 0.03]
        return words

    def key(self, *names):
        """Keys by their X names: "Return", "ctrl+a", "Down"; none for no names."""
        if names:
            self.xdotool("key", *names)

    def type(self, text):
        """Types exactly these letters into what has the focus."""
        check(self.probe.ask("type", text) == [["1"]], "typing was refused")

    def _menus(self):
        return len([w for w in self.top_windows() if w.kind == "#32768"])

    def choose(self, *numbers):
        """Chooses an entry of the open pop-up menu by keys: the entry's number, then that in its
        sub-menu, and so on. Separators do not count; the first entry is 1. (A menu's texts cannot
        be read from another program here: look at a picture.)"""
        for depth, number in enumerate(numbers, 1):
            wait_until(lambda: self._menus() == depth, 5, f"{depth} menus open")
            # A sub-menu opens with its first entry marked, a menu with none.
            self.key(*["Down"] * (number if depth == 1 else number - 1),
                     *["Right"] * (depth < len(numbers)))
        self.key("Return")
        wait_until(lambda: not self._menus(), 5, "the menu gone")

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
        power = sum(s * s for s in samples) / max(len(samples), 1)
        return max(-100.0, 10 * math.log10(power / 32768 ** 2)) if power else -100.0

    def pitch(self, seconds=0.25):
        """Frequency of a plain tone in hertz, 0 for silence. Counts rises through zero that come
        after a fall well below it, so that noise does not count."""
        samples = self.record(seconds)
        threshold = max(map(abs, samples), default=0) / 4
        rises, below = [], False
        for i, sample in enumerate(samples):
            if sample < -threshold:
                below = True
            elif below and sample > 0:
                rises.append(i)
                below = False
        if threshold < 8 or len(rises) < 2:
            return 0.0
        return (len(rises) - 1) * RATE / (rises[-1] - rises[0])

    # The end

    def running(self):
        return self._process.poll() is None

    def close_main(self):
        """Asks the first window to close and gives back the program's exit code."""
        self.probe.ask("close", self.control("frmPrieskumnik", visible=False).hwnd)
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
