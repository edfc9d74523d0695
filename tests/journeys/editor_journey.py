"""Playlist editors: a playlist is opened, played, sorted, moved, cleaned, saved where that may not be
and where it may; two editors, closed with changes in them."""

import driver
import hands
from driver import check, wait_until

FOLDER = driver.collection("editor")
A, B, C, D = "ľúbezná.wma", "Kukučka v háji.mp3", "Čerešňový sad.mp3", "Tichý sneh.mp3"
GONE = "Stratená pieseň.mp3", "Ozvena.wma"
LOCKED = "Zamknuté"


def add_and_move(app, editor):
    editor.wait_rows(C, A, B, D, *GONE)
    count, status, target = map(editor.control, ("lblpočet", "lblbar", "Lview"))
    app.screenshot("editor")
    editor.items()[3].click()
    app.key("Up", "Return")
    check(status.text == f"E:\\Ľudové\\{B}", f"the status line is {status.text!r}")
    hands.plays(app)

    app.drag(hands.file_of(app, A), target)
    hands.answer(app, 1, f"už nachádza odkaz na tento súbor 'E:\\{A}'")
    editor.wait_rows(C, A, B, D, *GONE, A)
    check(count.text == "Počet odkazov v playliste: 7", count.text)

    items = target.items()
    app.drag(items[0], items[2])
    editor.wait_rows(A, B, C, D, *GONE, A)
    editor.menu(hands.SORT, 1)
    editor.wait_rows(C, B, A, A, "Ozvena.wma", "Stratená pieseň.mp3", D)
    items = target.items()
    app.drag(items[0], items[2])
    hands.answer(app, 1, "Položky sú radené")
    editor.menu(hands.SORT, 3)
    editor.wait_rows(A, B, C, D, *GONE, A)


def clean(app, editor):
    editor.menu(hands.REMOVE, 2)
    hands.answer(app, 1, "Boli odstránené 2 neplatné položky")
    app.drag(hands.file_of(app, "trikrát.m3u"), editor.control("Lview"))
    hands.answer(app, 1, "Chceš pridať všetky súbory", "trikrát.m3u")
    hands.answer(app, 1, "Počet pridaných súborov: 3")
    editor.menu(hands.REMOVE, 3)
    hands.answer(app, 1, "Boli nájdené 4 duplicitné položky")
    editor.wait_rows(A, B, C, D)


def save(app, editor):
    """A folder without rights is told and changes nothing; then both layouts and kinds of links."""
    (FOLDER / LOCKED).chmod(0o555)
    editor.save(f"E:\\{LOCKED}\\nový.m3u", True)
    hands.box(app, "Chyba č. 70: ", f"E:\\{LOCKED}\\nový.m3u")
    app.screenshot("editor-failed")
    hands.answer(app, 1)
    check(not list((FOLDER / LOCKED).iterdir()), "nothing is left where writing failed")

    def saved(name, relative):
        editor.save(f"E:\\{name}", relative)
        hands.answer(app, 1, "úspešne")
        return (FOLDER / name).read_bytes().decode("cp1250").split("\r\n")

    paths = [A, f"Ľudové\\{B}", C, f"Ľudové\\Vianočné\\{D}"]
    check(saved("nový.pls", True) ==
          ["[playlist]", *(f"File{i}={path}" for i, path in enumerate(paths, 1)),
           "NumberOfEntries=4", ""], "PLS with relative links")
    check(saved("nový.txt", False) == [f"E:\\{path}" for path in paths] + [""],
          "a text with absolute links")
    hands.file_of(app, "nový.pls")
    check(not hands.listed(app, "nový.txt"), "texts are not listed")


def drag_between_editors(app, editor):
    """A row dragged across is never added."""
    hands.menu(app, app.control("strom").items()[0], hands.NEW_PLAYLIST)
    new = hands.Editor(app, 1, 780, 540)
    app.drag(editor.items()[1], new.control("Lview"))
    app.drag(hands.file_of(app, "čerešňový sad.mp3"), new.control("Lview"))
    new.wait_rows("čerešňový sad.mp3")
    app.screenshot("editors")
    return new


def close(app, editor, new):
    question = "chceš playlist uložiť teraz"
    editor.items()[0].click()
    app.key("Delete")
    editor.wait_rows(B, C, D)
    app.control("Ikoniec").click()
    hands.answer(app, 3, question)
    check(app.running() and len([w for w in app.windows() if w.name == "frmplejlist"]) == 2,
          "a refusal keeps all windows")
    editor.control("IZavri").click()
    hands.answer(app, 2, question)
    new.control("IZavri").click()
    hands.answer(app, 1, question)
    hands.dialog(app, "Uložiť playlist")
    app.key("Escape")
    app.wait_gone("frmplejlist")


def journey(app):
    hands.file_of(app, "vitajte.m3u")
    hands.move_window(app, app.control("frmPrieskumnik"), 20, 20)
    hands.menu(app, hands.file_of(app, "vitajte.m3u"), hands.EDIT)
    editor = hands.Editor(app, 0, 780, 60)
    add_and_move(app, editor)
    clean(app, editor)
    save(app, editor)
    close(app, editor, drag_between_editors(app, editor))


if __name__ == "__main__":
    (FOLDER / "trikrát.m3u").write_bytes(f"{C}\r\n{A}\r\nĽudové\\{B}\r\n".encode("cp1250"))
    (FOLDER / LOCKED).mkdir()
    driver.main(journey, FOLDER)
