"""What a person does in this program beyond pointing and typing: menus, message boxes, dialogs."""

from driver import Failed, check, wait_until

# Entries of the pop-up menus by their numbers; separators do not count.
NEW_PLAYLIST, SEARCH = 1, 3                 # of a folder
INFORMATION, EDIT, PLAY, OPERATIONS = range(1, 5)  # of a file
COPY, PASTE = 1, 2                          # of a file's operations
WINAMP = 4                                  # of its ways to be played
ABOUT = 3                                   # of the title strip
SAVE = 2                                    # of an editor's row


def menu(app, place, *numbers):
    place.click(3)
    app.choose(*numbers)


def listed(app, name):
    """A file of the shown folder in the contents tree, not an entry of a playlist, or None."""
    files = (i for i in app.control("Tview").items() if i.level == 0)
    return next((i for i in files if i.text == name), None)


def file_of(app, name):
    return wait_until(lambda: listed(app, name), 10, f"{name!r} in the contents")


def plays(app):
    wait_until(lambda: app.control("lblušielčas").text not in ("", "0:00 min"), 20,
               "the time going on")


def move_window(app, window, left, top):
    """Drags a window by its title strip to a place, in 96ths of an inch from the screen's
    corner, and gives it back as it is there."""
    inside = int(100 * app.scale), int(13 * app.scale)
    goal = int(left * app.scale), int(top * app.scale)
    moved = lambda: next((w for w in app.windows() if w.hwnd == window.hwnd and
                          all(abs(a - b) < 4 for a, b in zip(w.rect, goal))), None)
    app.drag_window([a + b for a, b in zip(window.rect, inside)],
                    [a + b for a, b in zip(goal, inside)], moved)
    return moved()


def box(app, *texts):
    """The open message box, which is to say these."""
    window = app.control("frmBox")
    said = app.control("lblotazka", within=window).text
    for text in texts:
        check(text in said, f"the box says {said!r}, not {text!r}")
    return window


def answer(app, button, *texts):
    """Answers the open message box, which is to say these."""
    window = box(app, *texts)
    app.control(f"Itlačítko{button}", within=window).click()
    wait_until(lambda: window.hwnd not in [w.hwnd for w in app.top_windows()], 5, "the box gone")


def find_dialog(app):
    return next((w for w in app.top_windows() if w.kind == "#32770"), None)


def dialog(app, title):
    """The system's dialog of that title."""
    window = wait_until(lambda: find_dialog(app), 10, f"a dialog {title!r}")
    check(window.text == title, f"the dialog is {window.text!r}, not {title!r}")
    return window


def save_as(app, title, name, offered=None):
    """Takes the save dialog of that title, which is to offer a name, and saves under another."""
    dialog(app, title)
    fields = lambda: [w.text for w in app.windows() if w.kind == "Edit" and w.visible]
    wait_until(lambda: offered in fields() if offered else fields(), 5, f"{offered!r} offered")
    app.key("ctrl+a")
    app.type(name)
    app.key("Return")
    wait_until(lambda: not find_dialog(app), 5, "the dialog gone")


class Editor:
    """An editor window, drawn to a place where explorer and editor are both seen."""

    def __init__(self, app, number, left, top):
        self.app = app
        title = f" Editor playlistov {number}"
        strip = wait_until(lambda: next((w for w in app.windows() if w.name == "PicZahlavie" and
                                         w.text == title), None), 10, f"a title {title!r}")
        self.window = next(w for w in app.windows() if w.hwnd == strip.parent)
        wait_until(lambda: any(w.hwnd == self.window.hwnd for w in app.top_windows()), 10,
                   "the editor shown")
        self.window = move_window(app, self.window, left, top)

    def control(self, name):
        return self.app.control(name, within=self.window)

    def items(self):
        return self.control("Lview").items()

    def wait_rows(self, *texts):
        try:
            wait_until(lambda: [item.text for item in self.items()] == list(texts), 5, f"{texts}")
        except Failed as failed:
            raise Failed(f"{failed}, but {[item.text for item in self.items()]}")

    def menu(self, *numbers):
        menu(self.app, self.items()[0], *numbers)
