"""The road through the whole program by mouse and keys, from the drive to the end, with a numbered picture of
each stop. It walks over a copy of the samples; over a person's own folder (TUNOVKA_FOLDER) it only
looks at the drives and changes nothing."""

import os
import shutil

import driver
from driver import check, wait_until

FOLK, PLAYLIST = "Ľudové", "veselica.pls"
SONG, ENTRY, FOUND = "žabky pri jazere.mp3", "Čerešňový sad.mp3", "Kométa.wav"
ON_DISK = "Žabky pri jazere.mp3"  # the song, as its file is called

# Entries of the pop-up menus by their numbers; separators do not count.
NEW_PLAYLIST, SEARCH = 1, 3  # of a folder
INFORMATION = 1              # of a file
SAVE = 2                     # of an editor's row
CLOSE = 2                    # of the title

pictures = 0


def picture(app, name):
    global pictures
    pictures += 1
    app.screenshot(f"road-{pictures:02}-{name}")


def move_window(app, window, left, top):
    """Drags a window by its title strip to a place, in 96ths of an inch from the screen's
    corner, and gives it back as it is there."""
    inside = int(100 * app.scale), int(13 * app.scale)
    goal = int(left * app.scale), int(top * app.scale)
    moved = lambda: next((w for w in app.windows() if w.hwnd == window.hwnd and
                          all(abs(a - b) < 4 for a, b in zip(w.rect, goal))), None)
    app.drag([a + b for a, b in zip(window.rect, inside)],
             [a + b for a, b in zip(goal, inside)], moved)
    return moved()


def answer(app, button, text, stop=None):
    """Waits for the message box that says this and answers it; takes a picture of it before."""
    asked = lambda: any(w.name == "lblotazka" and text in w.text for w in app.windows())
    wait_until(asked, 10, f"a box that says {text!r}")
    if stop:
        picture(app, stop)
    app.control(f"Itlačítko{button}").click()
    wait_until(lambda: not asked(), 5, "the box gone")


def save_as(app, title, name):
    """Takes the save dialog of that title."""
    dialogs = lambda: [w.text for w in app.of_kind("#32770")]
    wait_until(lambda: dialogs() == [title], 10, f"a dialog {title!r}")
    app.key("ctrl+a")
    app.xdotool("type", name)
    app.key("Return")
    wait_until(lambda: not dialogs(), 5, "the dialog gone")


def drive(app):
    tree = app.control("strom")
    shown = lambda: [item.name for item in tree.items()]
    wait_until(lambda: shown()[:1] == ["E:"], 30, "drive E: in the folder tree")
    move_window(app, app.control("frmPrieskumnik"), 20, 20)
    app.control("Drive1").click()
    wait_until(lambda: app.of_kind("ComboLBox"), 5, "the list of drives")
    picture(app, "drive")
    app.key("c", "Return")
    wait_until(lambda: shown()[:1] == ["C:"] and len(shown()) > 1, 30, "the folders of drive C:")
    app.key("e")
    wait_until(lambda: shown()[:1] == ["E:"], 30, "drive E: again")


def listen(app):
    for tree, name in ("strom", FOLK), ("Tview", PLAYLIST):
        app.control(tree).item(name).click()
        app.key("Right")
    wait_until(lambda: app.control("LblBar").text.lower().endswith(f"{FOLK}\\{PLAYLIST}".lower()),
               10, f"{PLAYLIST!r} in the status line")
    app.control("Tview").item(SONG).double_click()
    wait_until(lambda: app.control("lblušielčas").text not in ("", "0:00 min"), 20,
               "the time going on")
    picture(app, "playing")


def search(app):
    app.control("strom").item("E:").click(3)
    app.choose(SEARCH)
    window = app.control("frmhladanie")
    count = app.control("lblpočet", within=window)
    wait_until(lambda: "z toho hudobné" in count.text and not app.find("PicInfo"), 20, "a result")
    check(count.text == "  16, z toho hudobné:   16", f"the search counts {count.text!r}")
    window = move_window(app, window, 760, 540)
    app.control("Lview", within=window).item(FOUND).click()
    status = app.control("lblbar", within=window).text
    check(status == f"E:\\{FOLK}\\Vianočné\\{FOUND}", f"the status line says {status!r}")
    picture(app, "search")
    return window


def make_playlist(app, found, collection):
    """A new playlist takes a file, an entry of another playlist and a found file, and is saved."""
    app.control("strom").item(FOLK).click()
    app.key("Menu")
    app.choose(NEW_PLAYLIST)
    editor = move_window(app, app.control("frmplejlist"), 780, 60)
    contents, target = app.control("Tview"), app.control("Lview", within=editor)
    rows = []
    for place in (contents.item(SONG), contents.item(ENTRY),
                  app.control("Lview", within=found).item(FOUND)):
        app.drag(place.point(), target.point())
        rows.append(ON_DISK if place.name == SONG else place.name)
        wait_until(lambda: [item.name for item in target.items()] == rows, 5, f"the rows {rows}")
    app.drag(contents.item(SONG).point(), target.point())
    answer(app, 2, f"už nachádza odkaz na tento súbor 'E:\\{FOLK}\\{ON_DISK}'", "duplicate")
    app.drag(target.items()[1].point(), target.items()[0].point())
    rows = [ENTRY, ON_DISK, FOUND]
    wait_until(lambda: [item.name for item in target.items()] == rows, 5, f"the rows {rows}")

    target.items()[0].click(3)
    app.choose(SAVE)
    save_as(app, "Uložiť playlist", "Vyber.m3u")
    answer(app, 1, "relatívne odkazy", "links")
    answer(app, 1, "Playlist bol úspešne vytvorený (aktualizovaný).")
    lines = (collection / FOLK / "Vyber.m3u").read_bytes().decode("cp1250").split("\r\n")
    check(lines == [f"..\\{ENTRY}", ON_DISK, f"Vianočné\\{FOUND}", ""], f"the file says {lines}")
    contents.item("vyber.m3u")
    app.control("Tlacitko", within=found).click()
    return target


def files(app, collection):
    """A file is renamed, and deleted when the person says so."""
    contents, folder = app.control("Tview"), collection / FOLK
    contents.item("tancovačka.wav").click()
    app.key("F2")
    field = app.control("txtodpoved")
    app.xdotool("type", "Nova")  # over the name, which is selected without its extension
    wait_until(lambda: field.text == "Nova.wav", 5, "the new name typed")
    picture(app, "rename")
    app.key("Return")
    contents.item("Nova.wav").click()
    app.key("Delete")
    wait_until(lambda: app.has_focus("NIE"), 5, "the refusing answer")
    app.key("Return")
    app.wait_gone("frmBox")
    check((folder / "Nova.wav").is_file(), "a stray Enter deletes nothing")
    app.key("Delete")
    answer(app, 1, f"Naozaj chceš nenávratne odstrániť súbor 'E:\\{FOLK}\\Nova.wav' ?")
    wait_until(lambda: "Nova.wav" not in [i.name for i in contents.items()], 5, "it gone")
    left = sorted(path.suffix for path in folder.glob("*.*"))
    check(left == [".m3u", ".mp3", ".mp3", ".pls", ".wma"], f"left are {left}")


def keys(app, collection):
    """What has no place on the mouse's road: the menu, a window's end, the folder listed again."""
    contents = app.control("Tview")
    contents.item(SONG).click()
    app.key("shift+F10")
    app.choose(INFORMATION)
    check(app.control("lblPath").text == f"E:\\{FOLK}\\{ON_DISK}", "the selected file's window")
    wait_until(lambda: app.has_focus("lblPath"), 5, "the focus")
    app.key("Escape")
    app.wait_gone("frminfo")
    shutil.copy(collection / FOLK / ON_DISK, collection / FOLK / "hotová.mp3")
    app.key("F5")
    contents.item("hotová.mp3")
    app.key("shift+Tab")
    wait_until(lambda: app.has_focus("Medzera"), 5, "the focus a place back")


def end(app, rows):
    rows.items()[1].click()
    app.key("Delete")
    wait_until(lambda: len(rows.items()) == 2, 5, "a row removed")
    app.control("Ikoniec").click()
    answer(app, 3, "došlo k zmenám, chceš playlist uložiť teraz ?", "unsaved")
    check(app.running() and app.find("frmplejlist"), "the refusal keeps all windows")
    app.control("Zahlavie").click(3)
    app.choose(CLOSE)
    answer(app, 2, "došlo k zmenám")
    check(app.wait_end() == 0, "the program ends well")


def road(app, collection):
    drive(app)
    listen(app)
    found = search(app)
    rows = make_playlist(app, found, collection)
    files(app, collection)
    keys(app, collection)
    end(app, rows)


if __name__ == "__main__":
    own = os.environ.get("TUNOVKA_FOLDER")
    place = own or driver.collection("road")
    driver.main(drive if own else lambda app: road(app, place), place)
