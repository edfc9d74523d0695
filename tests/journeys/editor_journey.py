"""Playlist editors: open, drag files in and out, move, clean, sort, save and read the bytes back."""

import driver
from driver import check, wait_until

FOLDER = driver.collection("editor")


def file_of(app, name):
    """A file of the folder in the explorer, not an entry of a playlist."""
    contents = app.control("Tview")
    found = lambda: next((i for i in contents.items() if i.text == name and i.level == 0), None)
    return wait_until(found, 5, f"{name!r} in the explorer")


def rows(window, app):
    return [item.text for item in app.control("Lview", within=window).items()]


def menu(app, place, *keys):
    """Opens the menu of a place by the right button and walks through it by keys."""
    place.click(3)
    wait_until(lambda: any(w.data["class"] == "#32768" for w in app.top_windows()), 5, "a menu")
    app.key(*keys)


def answer(app, button, text):
    """Answers the open message box, which is to say this."""
    box = app.control("frmBox")
    said = app.control("lblotazka", within=box).text
    check(text in said, f"the box says {said!r}, not {text!r}")
    app.control(f"Itlačítko{button}", within=box).click()
    wait_until(lambda: box.hwnd not in [w.hwnd for w in app.windows() if w.visible], 5, "no box")


def save(app, window, name, relative):
    menu(app, app.control("Lview", within=window).items()[0], "Down", "Down", "Return")
    dialog = wait_until(lambda: [w for w in app.top_windows() if w.data["class"] == "#32770"], 10,
                        "the save dialog")[0]
    check(dialog.text == "Uložiť playlist", f"the dialog is {dialog.text!r}")
    app.key("ctrl+a")
    app.type(f"E:\\{name}")
    app.key("Return")
    answer(app, 1 if relative else 2, "relatívne odkazy")
    answer(app, 1, "úspešne")
    return (FOLDER / name).read_bytes().decode("cp1250")


def journey(app):
    explorer = app.control("Zahlavie")
    app.drag((explorer.rect[0] + 200, explorer.center[1]), (210, 40))

    # Open a playlist from the explorer; beside it, so that both are seen.
    menu(app, file_of(app, "vitajte.m3u"), "Down", "Down", "Return")
    title = app.control("PicZahlavie", within=app.control("frmplejlist"))
    app.drag((title.rect[0] + 100, title.center[1]), (title.rect[0] + 480, title.center[1]))
    editor = app.control("frmplejlist")
    check(title.text == " Editor playlistov 0", f"the title is {title.text!r}")
    listed = ["Čerešňový sad.mp3", "ľúbezná.wma", "Kukučka v háji.mp3", "Tichý sneh.mp3",
              "Stratená pieseň.mp3", "Ozvena.wma"]
    wait_until(lambda: rows(editor, app) == listed, 5, "the playlist's entries")
    count, status = (app.control(name, within=editor) for name in ("lblpočet", "lblbar"))
    check(status.text == "E:\\Čerešňový sad.mp3", f"the status line is {status.text!r}")
    app.screenshot("editor")

    # Drag a file in, twice: it is there already.
    target = app.control("Lview", within=editor)
    app.drag(file_of(app, "ľúbezná.wma"), target)
    answer(app, 2, "už nachádza odkaz na tento súbor 'E:\\ľúbezná.wma'")
    check(rows(editor, app) == listed, "nothing is added")
    app.drag(file_of(app, "ľúbezná.wma"), target)
    answer(app, 1, "už nachádza odkaz")
    wait_until(lambda: rows(editor, app) == listed + ["ľúbezná.wma"], 5, "the file added")
    check(count.text == "Počet odkazov v playliste: 7", count.text)
    app.drag(file_of(app, "vitajte.m3u"), target)
    answer(app, 2, "všetky súbory, na ktoré odkazuje playlist")

    # Move the first row to the third place.
    items = target.items()
    app.drag(items[0], items[2])
    moved = ["ľúbezná.wma", "Kukučka v háji.mp3", "Čerešňový sad.mp3"]
    wait_until(lambda: rows(editor, app)[:3] == moved, 5, "the row moved")

    # Sorted lists refuse it.
    menu(app, target.items()[0], "Up", "Right", "Return")
    wait_until(lambda: rows(editor, app)[0] == "Čerešňový sad.mp3", 5, "the list sorted")
    items = target.items()
    app.drag(items[0], items[2])
    answer(app, 1, "Položky sú radené")
    menu(app, target.items()[0], "Up", "Right", "Up", "Return")
    wait_until(lambda: rows(editor, app)[:3] == moved, 5, "the order restored")

    # Clean up.
    menu(app, target.items()[0], "Up", "Up", "Right", "Down", "Return")
    answer(app, 1, "Boli odstránené 2 neplatné položky")
    menu(app, target.items()[0], "Up", "Up", "Right", "Up", "Return")
    answer(app, 1, "Bola nájdená jedna duplicitná položka")
    left = ["ľúbezná.wma", "Kukučka v háji.mp3", "Čerešňový sad.mp3", "Tichý sneh.mp3"]
    wait_until(lambda: rows(editor, app) == left, 5, "the duplicate gone")

    # Save with both kinds of links; the explorer shows the new file.
    check(save(app, editor, "nový.m3u", True) ==
          "ľúbezná.wma\r\nĽudové\\Kukučka v háji.mp3\r\nČerešňový sad.mp3\r\n"
          "Ľudové\\Vianočné\\Tichý sneh.mp3\r\n", "the list with relative links")
    check(save(app, editor, "nový.pls", False) ==
          "[playlist]\r\nFile1=E:\\ľúbezná.wma\r\nFile2=E:\\Ľudové\\Kukučka v háji.mp3\r\n"
          "File3=E:\\Čerešňový sad.mp3\r\nFile4=E:\\Ľudové\\Vianočné\\Tichý sneh.mp3\r\n"
          "NumberOfEntries=4\r\n", "the list in the other layout with absolute links")
    file_of(app, "nový.m3u")
    file_of(app, "nový.pls")
    app.screenshot("editor-saved")

    # A change is asked about, also when the explorer closes.
    target.items()[0].click()
    app.key("Delete")
    wait_until(lambda: len(rows(editor, app)) == 3, 5, "the row gone")
    app.control("Ikoniec").click()
    answer(app, 3, "chceš playlist uložiť teraz")
    check(app.find("frmplejlist") and app.find("frmPrieskumnik"), "both windows stay")
    app.control("IZavri", within=editor).click()
    answer(app, 2, "chceš playlist uložiť teraz")
    app.wait_gone("frmplejlist")


if __name__ == "__main__":
    driver.main(journey, FOLDER)
