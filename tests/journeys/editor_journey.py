"""Playlist editors: opened from the explorer, filled by drags, moved, cleaned, sorted, saved and
read back, closed with changes in them."""

import driver
from driver import check, wait_until

FOLDER = driver.collection("editor")
A, B, C, D = "ľúbezná.wma", "Kukučka v háji.mp3", "Čerešňový sad.mp3", "Tichý sneh.mp3"


def playlist(name, *lines):
    (FOLDER / name).write_bytes("".join(line + "\r\n" for line in lines).encode("cp1250"))


def file_of(app, name):
    """A file of the folder in the explorer, not an entry of a playlist."""
    contents = app.control("Tview")
    return wait_until(lambda: next((i for i in contents.items() if i.text == name and i.level == 0),
                                   None), 5, f"{name!r} in the explorer")


def menu(app, place, *numbers):
    place.click(3)
    app.choose(*numbers)


def answer(app, button, *texts):
    """Answers the open message box, which is to say these."""
    box = app.control("frmBox")
    said = app.control("lblotazka", within=box).text
    for text in texts:
        check(text in said, f"the box says {said!r}, not {text!r}")
    app.control(f"Itlačítko{button}", within=box).click()
    wait_until(lambda: box.hwnd not in [w.hwnd for w in app.windows() if w.visible], 5, "no box")


class Editor:
    """An editor window, drawn to a place where explorer and editor are both seen."""

    def __init__(self, app, left, top, number):
        self.app = app
        self.window = app.control("frmplejlist")
        title = self.control("PicZahlavie")
        check(title.text == f" Editor playlistov {number}", f"the title is {title.text!r}")
        app.drag((title.rect[0] + 100, title.center[1]), (left + 100, top + 13))
        hwnd = self.window.hwnd
        self.window = wait_until(lambda: next(
            (w for w in app.windows() if w.hwnd == hwnd and w.rect[0] > left - 100), None),
            5, "the editor at its new place")

    def control(self, name):
        return self.app.control(name, within=self.window)

    def items(self):
        return self.control("Lview").items()

    def wait_rows(self, *texts):
        try:
            wait_until(lambda: [item.text for item in self.items()] == list(texts), 5, f"{texts}")
        except driver.Failed as failed:
            raise driver.Failed(f"{failed}, but {[item.text for item in self.items()]}")

    def menu(self, *numbers):
        menu(self.app, self.items()[0], *numbers)

    def remove_invalid(self, text):
        self.menu(4, 2)
        answer(self.app, 1, text)

    def remove_duplicates(self, button, text):
        self.menu(4, 3)
        answer(self.app, button, text)

    def merge(self, name, *reported):
        self.app.drag(file_of(self.app, name), self.control("Lview"))
        answer(self.app, 1, "Chceš pridať všetky súbory", name)
        answer(self.app, 1, *reported)

    def save(self, name, relative):
        """Saves under a name and gives back the file's text."""
        self.menu(2)
        dialog = wait_until(lambda: next((w for w in self.app.top_windows()
                                          if w.data["class"] == "#32770"), None), 10, "a dialog")
        check(dialog.text == "Uložiť playlist", f"the dialog is {dialog.text!r}")
        self.app.key("ctrl+a")
        self.app.type(f"E:\\{name}")
        self.app.key("Return")
        answer(self.app, 1 if relative else 2, "relatívne odkazy")
        answer(self.app, 1, "úspešne")
        return (FOLDER / name.replace("\\", "/")).read_bytes().decode("cp1250")


def add_and_move(app, editor):
    editor.wait_rows(C, A, B, D, "Stratená pieseň.mp3", "Ozvena.wma")
    count, status, target = map(editor.control, ("lblpočet", "lblbar", "Lview"))
    check(status.text == "E:\\Čerešňový sad.mp3", f"the status line is {status.text!r}")
    app.screenshot("editor")

    editor.items()[3].click()
    app.key("Up", "Return")
    check(status.text == "E:\\Ľudové\\Kukučka v háji.mp3", f"the status line is {status.text!r}")
    wait_until(lambda: app.control("lblušielčas").text not in ("", "0:00 min"), 10, "the song plays")

    app.drag(file_of(app, A), target)
    answer(app, 2, "už nachádza odkaz na tento súbor 'E:\\ľúbezná.wma'")
    app.drag(file_of(app, A), target)
    answer(app, 1, "už nachádza odkaz")
    editor.wait_rows(C, A, B, D, "Stratená pieseň.mp3", "Ozvena.wma", A)
    check(count.text == "Počet odkazov v playliste: 7", count.text)

    items = target.items()
    app.drag(items[0], items[2])
    editor.wait_rows(A, B, C, D, "Stratená pieseň.mp3", "Ozvena.wma", A)
    editor.menu(5, 1)
    editor.wait_rows(C, B, A, A, "Ozvena.wma", "Stratená pieseň.mp3", D)
    items = target.items()
    app.drag(items[0], items[2])
    answer(app, 1, "Položky sú radené")
    editor.menu(5, 3)
    editor.wait_rows(A, B, C, D, "Stratená pieseň.mp3", "Ozvena.wma", A)


def clean(app, editor):
    editor.remove_invalid("Boli odstránené 2 neplatné položky")
    editor.remove_invalid("Neboli zistené neplatné odkazy.")
    editor.merge("jedna.m3u", "Počet pridaných súborov: 1", "neplatných odkazov: 1")
    editor.remove_invalid("Bola odstránená jedna neplatná položka.")
    editor.merge("päť.m3u", "Počet pridaných súborov: 5", "neplatných odkazov: 5")
    editor.remove_invalid("Bolo odstránených 5 neplatných položiek")

    editor.remove_duplicates(2, "Bola nájdená jedna duplicitná položka")
    editor.remove_duplicates(1, "Bola nájdená jedna duplicitná položka")
    editor.wait_rows(A, B, C, D)
    editor.merge("trikrát.m3u", "Počet pridaných súborov: 3")
    editor.remove_duplicates(2, "Boli nájdené 3 duplicitné položky")
    editor.merge("trikrát.m3u", "Počet pridaných súborov: 3")
    editor.remove_duplicates(1, "Bolo nájdených 6 duplicitných položiek")
    editor.remove_duplicates(1, "Neboli nájdené žiadne duplicitné v zozname.")
    editor.wait_rows(A, B, C, D)


def save(app, editor):
    relative = [A, f"Ľudové\\{B}", C, f"Ľudové\\Vianočné\\{D}"]
    absolute = [f"E:\\{path}" for path in relative]
    lines = lambda paths: "".join(path + "\r\n" for path in paths)
    pls = lambda paths: lines(["[playlist]"] + [f"File{i}={path}" for i, path in enumerate(paths, 1)]
                              + [f"NumberOfEntries={len(paths)}"])
    check(editor.save("nový.m3u", True) == lines(relative), "M3U with relative links")
    check(editor.save("nový2.m3u", False) == lines(absolute), "M3U with absolute links")
    check(editor.save("nový.pls", True) == pls(relative), "PLS with relative links")
    check(editor.save("nový2.pls", False) == pls(absolute), "PLS with absolute links")
    check(editor.save("nový.txt", True) == lines(relative), "a text with relative links")
    below = lines(["..\\" + A, B, "..\\" + C, f"Vianočné\\{D}"])
    check(editor.save("Ľudové\\nový.m3u", True) == below, "a list in another folder")
    for name in "nový.m3u", "nový2.m3u", "nový.pls", "nový2.pls":
        file_of(app, name)
    check(not any(i.text == "nový.txt" for i in app.control("Tview").items()), "texts are not listed")
    app.screenshot("editor-saved")


def drag_between_editors(app, editor):
    """A new editor beside the first one: a row dragged across is never added."""
    menu(app, app.control("strom").items()[0], 1)
    new = Editor(app, 790, 540, 1)
    app.drag(editor.items()[1], new.control("Lview"))
    app.drag(file_of(app, "čerešňový sad.mp3"), new.control("Lview"))
    new.wait_rows("čerešňový sad.mp3")
    check(new.control("lblpočet").text == "Počet odkazov v playliste: 1", "one row, not two")
    app.screenshot("editors")
    return new


def close(app, editor, new):
    editor.items()[0].click()
    app.key("Delete")
    editor.wait_rows(B, C, D)
    app.control("Ikoniec").click()
    answer(app, 3, "chceš playlist uložiť teraz")
    check(app.running() and len([w for w in app.windows() if w.name == "frmplejlist"]) == 2,
          "a refusal keeps all windows")
    editor.control("IZavri").click()
    answer(app, 2, "chceš playlist uložiť teraz")
    new.control("IZavri").click()
    answer(app, 1, "chceš playlist uložiť teraz")
    wait_until(lambda: any(w.data["class"] == "#32770" for w in app.top_windows()), 10, "a dialog")
    app.key("Escape")
    app.wait_gone("frmplejlist")


def journey(app):
    title = app.control("Zahlavie")
    app.drag((title.rect[0] + 200, title.center[1]), (210, 40))
    menu(app, file_of(app, "vitajte.m3u"), 2)
    editor = Editor(app, 790, 60, 0)
    add_and_move(app, editor)
    clean(app, editor)
    save(app, editor)
    close(app, editor, drag_between_editors(app, editor))


if __name__ == "__main__":
    playlist("jedna.m3u", "nikde.mp3")
    playlist("päť.m3u", *(f"nikde{i}.mp3" for i in range(5)))
    playlist("trikrát.m3u", C, A, f"Ľudové\\{B}")
    driver.main(journey, FOLDER)
