"""Files: cut and paste, copy to, move to and both drops, each with what it leaves on the disk and in
the tree. A long copy shows its window and is stopped."""

import driver
import hands
from driver import check, wait_until
from hands import file_of

FOLDER = driver.collection("files")
FOLK = FOLDER / "Ľudové"
SONG = (FOLDER / "Čerešňový sad.mp3").read_bytes()


def operation(app, name, entry):
    hands.menu(app, file_of(app, name), hands.OPERATIONS, entry)


def pick_folder(app, name):
    """Chooses a folder below the one that the shell's window opens with."""
    wait_until(lambda: hands.find_dialog(app), 10, "the shell's window")
    tree = wait_until(lambda: next((w for w in app.windows() if "TreeView" in w.data["class"] and
                                    w.name == "" and w.visible), None), 5, "the folders")
    start = wait_until(lambda: next((i for i in tree.items() if i.selected), None), 5, "a selection")
    if not start.expanded:
        app.key("Right")
    place = lambda: next((i for i in tree.items() if i.text == name and i.rect), None)
    wait_until(place, 5, f"the folder {name!r}").click()
    wait_until(lambda: place().selected, 5, f"{name!r} selected")
    app.key("Return")
    hands.no_dialog(app)


def cut_and_paste(app):
    operation(app, "ľúbezná.wma", hands.CUT)
    hands.menu(app, app.control("strom").item("Ľudové"), hands.PASTE_HERE)
    hands.save_as(app, "Uložiť súbor ako ...", "Vložená – ňú.wma", "ľúbezná.wma")
    file_of(app, "vložená – ňú.wma")
    check((FOLK / "Vložená – ňú.wma").stat().st_size > 1000, "the pasted file is whole")
    check(not (FOLDER / "ľúbezná.wma").exists(), "the cut file has gone")
    operation(app, "vložená – ňú.wma", hands.PASTE)  # the clipboard is empty: the entry is off
    app.key("Escape", "Escape")
    check(not hands.find_dialog(app), "no second paste")


def copy_to(app):
    (FOLK / "čerešňový sad.mp3").write_bytes(b"old")
    operation(app, "čerešňový sad.mp3", hands.COPY_TO)
    pick_folder(app, "Ľudové")
    wait_until(lambda: (FOLK / "čerešňový sad.mp3").read_bytes() == SONG, 5, "the file replaced")
    check((FOLDER / "Čerešňový sad.mp3").read_bytes() == SONG, "the source stays")


def move_to(app):
    target = FOLK / "hudba.wma"
    target.write_bytes(b"old")
    target.chmod(0o444)
    moved = (FOLDER / "hudba.wma").read_bytes()
    operation(app, "hudba.wma", hands.MOVE_TO)
    pick_folder(app, "Ľudové")
    wait_until(lambda: not (FOLDER / "hudba.wma").exists(), 5, "the file moved")
    check(target.read_bytes() == moved, "the moved file is whole")
    wait_until(lambda: not hands.listed(app, "hudba.wma"), 5, "the tree without it")


def drops(app):
    folk = app.control("strom").item("Ľudové")
    (FOLK / "čerešňový sad.mp3").unlink()
    question = "Chceš prekopírovať súbor 'E:\\čerešňový sad.mp3' do adresára E:\\Ľudové\\ ?"
    for button in 2, 1:
        app.drag(file_of(app, "čerešňový sad.mp3"), folk)
        hands.box(app, question)
        app.screenshot("files-drop")
        check(not (FOLK / "čerešňový sad.mp3").exists(), "a refused drop copies nothing")
        hands.answer(app, button)
    wait_until(lambda: (FOLK / "čerešňový sad.mp3").is_file() and
               (FOLK / "čerešňový sad.mp3").read_bytes() == SONG, 5, "the file copied")

    # An entry of the playlist lies in another folder; onto the contents it is copied here.
    contents = app.control("Tview")
    contents.expand("vitajte.m3u")
    empty = contents.rect[2] - 60, contents.rect[3] - 60
    app.drag(contents.item("Kukučka v háji.mp3"), empty)
    hands.answer(app, 1, "Naozaj chceš prekopírovať súbor 'E:\\Ľudové\\Kukučka v háji.mp3' "
                         "do adresára 'E:\\' ?")
    file_of(app, "kukučka v háji.mp3")
    check((FOLDER / "Kukučka v háji.mp3").read_bytes() ==
          (FOLK / "Kukučka v háji.mp3").read_bytes(), "the entry's file is copied")

    # A file onto its own folder stays as it is.
    app.drag(file_of(app, "kukučka v háji.mp3"), empty)
    hands.answer(app, 1, "Naozaj chceš prekopírovať")
    hands.answer(app, 1, "(č. 70)")
    check((FOLDER / "Kukučka v háji.mp3").stat().st_size > 1000, "the file is whole")


def long_copy(app):
    big = FOLDER / "Dlhá.mp3"
    with open(big, "wb") as file:
        file.truncate(3 << 30)
    app.key("F5")
    app.drag(file_of(app, "dlhá.mp3"), app.control("strom").item("Ľudové"))
    hands.answer(app, 1, "Chceš prekopírovať súbor")
    app.control("frmkopirovanie")
    wait_until(lambda: app.control("lblpercenta").text not in ("", "0 %"), 10, "some of it copied")
    app.screenshot("files-progress")
    app.control("Izastavit").click()
    app.wait_gone("frmkopirovanie")
    left = [f.name for f in FOLK.iterdir() if "dlh" in f.name.lower() or f.name.startswith("~")]
    check(not left, f"a stopped copy leaves {left}")
    big.unlink()


def journey(app):
    file_of(app, "čerešňový sad.mp3")
    cut_and_paste(app)
    app.control("strom").item("E:").click()
    copy_to(app)
    move_to(app)
    drops(app)
    long_copy(app)


if __name__ == "__main__":
    (FOLDER / "hudba.wma").write_bytes((FOLDER / "ľúbezná.wma").read_bytes())
    driver.main(journey, FOLDER)
