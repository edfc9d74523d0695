"""Files: copy, cut, paste, copy to, move to, rename, delete and both drops, each with what it leaves
on the disk and in the tree. A long copy shows its window and is stopped."""

import driver
from driver import check, wait_until

FOLDER = driver.collection("files")
FOLK = FOLDER / "Ľudové"
SONG = (FOLDER / "Čerešňový sad.mp3").read_bytes()

# Numbers of the entries in "operácie so súborom", the fourth entry of the menu.
OPERATIONS = 4
COPY, PASTE, COPY_TO, MOVE_TO, RENAME, CUT, DELETE = range(1, 8)


def listed(app, name):
    """A file of the folder in the contents tree, not an entry of a playlist, or None."""
    files = (i for i in app.control("Tview").items() if i.level == 0)
    return next((i for i in files if i.text == name), None)


def file_of(app, name):
    return wait_until(lambda: listed(app, name), 5, f"{name!r} in the contents")


def operation(app, name, entry):
    file_of(app, name).click(3)
    app.choose(OPERATIONS, entry)


def answer(app, button, text):
    """Answers the open message box, which is to say this."""
    box = app.control("frmBox")
    said = app.control("lblotazka", within=box).text
    check(said == text, f"the box says {said!r}, not {text!r}")
    app.control(f"Itlačítko{button}", within=box).click()
    wait_until(lambda: box.hwnd not in [w.hwnd for w in app.windows() if w.visible], 5, "no box")


def dialog(app):
    return wait_until(lambda: next((w for w in app.top_windows() if w.data["class"] == "#32770"),
                                   None), 10, "a dialog")


def no_dialog(app):
    wait_until(lambda: not any(w.data["class"] == "#32770" for w in app.top_windows()), 5,
               "the dialog gone")


def pick_folder(app, name):
    """Chooses a folder below the one that the shell's window opens with."""
    window = dialog(app)
    tree = wait_until(lambda: next((w for w in app.windows() if "TreeView" in w.data["class"] and
                                    w.name == "" and w.visible), None), 5, "the folders")
    start = wait_until(lambda: next((i for i in tree.items() if i.selected), None), 5, "a selection")
    if not start.expanded:
        app.key("Right")
    place = lambda: next((i for i in tree.items() if i.text == name and i.rect), None)
    wait_until(place, 5, f"the folder {name!r}").click()
    wait_until(lambda: place().selected, 5, f"{name!r} selected")
    app.key("Return")
    no_dialog(app)


def save_as(app, offered, name):
    """Takes the save dialog, which is to offer that name, and saves under another."""
    window = dialog(app)
    check(window.text == "Uložiť súbor ako ...", f"the dialog is {window.text!r}")
    field = lambda: [w.text for w in app.windows() if w.data["class"] == "Edit" and w.visible]
    wait_until(lambda: offered in field(), 5, f"{offered!r} offered")
    app.key("ctrl+a")
    app.type(name)
    app.key("Return")
    no_dialog(app)


def folder_menu_paste(app, folder):
    app.control("strom").item(folder).click(3)
    app.choose(2)


def copy_and_paste(app):
    operation(app, "čerešňový sad.mp3", COPY)
    operation(app, "ľúbezná.wma", PASTE)
    save_as(app, "čerešňový sad.mp3", "Kópia – ňú.mp3")
    file_of(app, "kópia – ňú.mp3")
    check((FOLDER / "Kópia – ňú.mp3").read_bytes() == SONG, "the copy is whole")
    operation(app, "ľúbezná.wma", PASTE)  # the clipboard is empty: the entry is off
    app.key("Escape", "Escape")
    check(not any(w.data["class"] == "#32770" for w in app.top_windows()), "no second paste")


def cut_and_paste(app):
    operation(app, "kópia – ňú.mp3", CUT)
    folder_menu_paste(app, "Ľudové")
    save_as(app, "kópia – ňú.mp3", "Vložená.mp3")
    file_of(app, "vložená.mp3")
    check((FOLK / "Vložená.mp3").read_bytes() == SONG, "the pasted file is whole")
    check(not (FOLDER / "Kópia – ňú.mp3").exists(), "the cut file has gone")


def copy_to(app):
    (FOLK / "čerešňový sad.mp3").write_bytes(b"old")
    operation(app, "čerešňový sad.mp3", COPY_TO)
    pick_folder(app, "Ľudové")
    wait_until(lambda: (FOLK / "čerešňový sad.mp3").read_bytes() == SONG, 5, "the file replaced")
    check((FOLDER / "Čerešňový sad.mp3").read_bytes() == SONG, "the source stays")


def move_to(app):
    target = FOLK / "ľúbezná.wma"
    target.write_bytes(b"old")
    target.chmod(0o444)
    moved = (FOLDER / "ľúbezná.wma").read_bytes()
    operation(app, "ľúbezná.wma", MOVE_TO)
    pick_folder(app, "Ľudové")
    wait_until(lambda: not (FOLDER / "ľúbezná.wma").exists(), 5, "the file moved")
    check(target.read_bytes() == moved, "the moved file is whole")
    wait_until(lambda: not listed(app, "ľúbezná.wma"), 5, "the tree without it")


def rename(app):
    file_of(app, "čerešňový sad.mp3").click()
    app.key("F2")
    app.control("frmVstup")
    app.screenshot("files-1-rename")
    app.type("Nový : názov")  # over the name, which is selected without its extension
    app.key("Return")
    file_of(app, "Nový _ názov.mp3")
    check((FOLDER / "Nový _ názov.mp3").read_bytes() == SONG, "the file has its new name")
    check(app.control("LblBar").text == "E:\\nový _ názov.mp3", "the status line follows")

    operation(app, "Nový _ názov.mp3", RENAME)
    app.control("frmVstup")
    app.key("Return")
    answer(app, 1, "Názov súbor sa zhoduje s pôvodným názvom !")
    operation(app, "Nový _ názov.mp3", RENAME)
    app.control("frmVstup")
    app.key("ctrl+a")
    app.type("Čerešňový sad")
    app.control("Iano").click()
    file_of(app, "Čerešňový sad.mp3")


def drops(app):
    folk = app.control("strom").item("Ľudové")
    (FOLK / "čerešňový sad.mp3").unlink()
    app.drag(file_of(app, "Čerešňový sad.mp3"), folk)
    question = "Chceš prekopírovať súbor 'E:\\čerešňový sad.mp3' do adresára E:\\Ľudové\\ ?"
    answer(app, 2, question)
    check(not (FOLK / "čerešňový sad.mp3").exists(), "a refused drop copies nothing")
    app.drag(file_of(app, "Čerešňový sad.mp3"), folk)
    app.control("frmBox")
    app.screenshot("files-2-drop")
    answer(app, 1, question)
    wait_until(lambda: (FOLK / "čerešňový sad.mp3").is_file() and
               (FOLK / "čerešňový sad.mp3").read_bytes() == SONG, 5, "the file copied")

    # An entry of the playlist lies in another folder; onto the contents it is copied here.
    app.control("Tview").expand("vitajte.m3u")
    contents = app.control("Tview")
    entry = contents.item("Kukučka v háji.mp3")
    app.drag(entry, (contents.rect[2] - 60, contents.rect[3] - 60))
    answer(app, 1, "Naozaj chceš prekopírovať súbor 'E:\\Ľudové\\Kukučka v háji.mp3' "
                   "do adresára 'E:\\' ?")
    file_of(app, "kukučka v háji.mp3")
    check((FOLDER / "Kukučka v háji.mp3").read_bytes() ==
          (FOLK / "Kukučka v háji.mp3").read_bytes(), "the entry's file is copied")

    # A file onto its own folder stays as it is.
    app.drag(file_of(app, "kukučka v háji.mp3"), (contents.rect[2] - 60, contents.rect[3] - 60))
    app.control("frmBox")
    app.key("Tab", "Return")
    wait_until(lambda: app.find("lblotazka") and "(č. 70)" in app.find("lblotazka").text, 5,
               "the notice that it is refused")
    app.key("Escape")
    app.wait_gone("frmBox")
    check((FOLDER / "Kukučka v háji.mp3").stat().st_size > 1000, "the file is whole")


def delete(app):
    operation(app, "kukučka v háji.mp3", DELETE)
    question = "Naozaj chceš nenávratne odstrániť súbor 'E:\\kukučka v háji.mp3' ?"
    answer(app, 2, question)
    check((FOLDER / "Kukučka v háji.mp3").exists(), "refused, the file stays")
    (FOLDER / "Kukučka v háji.mp3").chmod(0o444)
    file_of(app, "kukučka v háji.mp3").click()
    app.key("Delete")
    app.control("frmBox")
    app.screenshot("files-3-delete")
    answer(app, 1, question)
    wait_until(lambda: not (FOLDER / "Kukučka v háji.mp3").exists(), 5, "the file deleted")
    wait_until(lambda: not listed(app, "kukučka v háji.mp3"), 5, "the tree without it")


def long_copy(app):
    big = FOLDER / "Dlhá.mp3"
    with open(big, "wb") as file:
        file.truncate(3 << 30)
    app.key("F5")
    app.drag(file_of(app, "dlhá.mp3"), app.control("strom").item("Ľudové"))
    app.control("frmBox")
    app.key("Tab", "Return")
    app.control("frmkopirovanie")
    wait_until(lambda: app.control("lblpercenta").text not in ("", "0 %"), 10, "some of it copied")
    app.screenshot("files-4-progress")
    app.control("Izastavit").click()
    app.wait_gone("frmkopirovanie")
    left = [f.name for f in FOLK.iterdir() if "dlh" in f.name.lower() or f.name.startswith("~")]
    check(not left, f"a stopped copy leaves {left}")
    big.unlink()


def journey(app):
    file_of(app, "čerešňový sad.mp3")
    copy_and_paste(app)
    cut_and_paste(app)
    app.control("strom").item("E:").click()
    copy_to(app)
    move_to(app)
    rename(app)
    drops(app)
    delete(app)
    long_copy(app)


if __name__ == "__main__":
    driver.main(journey, FOLDER)
