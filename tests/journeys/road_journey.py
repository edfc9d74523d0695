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
NEW_PLAYLIST, SEARCH = 1, 3                 # of a folder
INFORMATION, OPERATIONS, COPY, PASTE = 1, 4, 1, 2  # of a file
SAVE = 2                                    # of an editor's row
CLOSE = 2                                   # of the title

pictures = 0


def picture(app, name):
    global pictures
    pictures += 1
    app.screenshot(f"road-{pictures:02}-{name}")


def menu(app, place, *numbers):
    place.click(3)
    app.choose(*numbers)


def listed(app, name):
    """A file of the shown folder in the contents tree, not an entry of a playlist, or None."""
    files = (i for i in app.control("Tview").items() if i.level == 0)
    return next((i for i in files if i.text == name), None)


def file_of(app, name):
    return wait_until(lambda: listed(app, name), 10, f"{name!r} in the contents")


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


def answer(app, button, text, stop=None):
    """Answers the open message box, which is to say this; takes a picture of it before."""
    window = app.control("frmBox")
    said = app.control("lblotazka", within=window).text
    check(text in said, f"the box says {said!r}, not {text!r}")
    if stop:
        picture(app, stop)
    app.control(f"Itlačítko{button}", within=window).click()
    wait_until(lambda: window.hwnd not in [w.hwnd for w in app.top_windows()], 5, "the box gone")


def save_as(app, title, name, offered=""):
    """Takes the save dialog of that title, which is to offer a name, and saves under another."""
    find = lambda: next((w for w in app.top_windows() if w.kind == "#32770"), None)
    window = wait_until(find, 10, f"a dialog {title!r}")
    check(window.text == title, f"the dialog is {window.text!r}, not {title!r}")
    fields = lambda: [w.text for w in app.windows() if w.kind == "Edit" and w.visible]
    wait_until(lambda: offered in fields(), 5, f"{offered!r} offered")
    app.key("ctrl+a")
    app.type(name)
    app.key("Return")
    wait_until(lambda: not find(), 5, "the dialog gone")


def drive(app):
    tree = app.control("strom")
    root = lambda: (tree.items() or [None])[0]
    wait_until(lambda: root() and root().text == "E:", 30, "drive E: in the folder tree")
    move_window(app, app.control("frmPrieskumnik"), 20, 20)
    app.control("Drive1").click()
    wait_until(lambda: any(w.kind == "ComboLBox" and w.visible for w in app.windows()), 5,
               "the list of drives")
    picture(app, "drive")
    for letter, keys in ("C", ["c", "Return"]), ("E", ["e"]):
        app.key(*keys)
        wait_until(lambda: root().text == f"{letter}:", 30, f"drive {letter}: in the folder tree")


def listen(app):
    app.control("strom").expand(FOLK)
    wait_until(lambda: app.control("LblBar").text.rstrip("\\").endswith(FOLK), 10,
               f"{FOLK!r} in the status line")
    app.control("Tview").expand(PLAYLIST)
    file_of(app, SONG).double_click()
    wait_until(lambda: app.control("lblušielčas").text not in ("", "0:00 min"), 20,
               "the time going on")
    heard = app.level()
    check(heard > -40, f"{SONG} is heard at {heard:.1f} dB")
    picture(app, "playing")


def search(app):
    menu(app, app.control("strom").item("E:"), SEARCH)
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
    for place in (file_of(app, SONG), contents.item(ENTRY),
                  app.control("Lview", within=found).item(FOUND)):
        app.drag(place, target)
        rows.append(ON_DISK if place.text == SONG else place.text)
        wait_until(lambda: [item.text for item in target.items()] == rows, 5, f"the rows {rows}")
    app.drag(file_of(app, SONG), target)
    answer(app, 2, f"už nachádza odkaz na tento súbor 'E:\\{FOLK}\\{ON_DISK}'", "duplicate")
    app.drag(target.items()[1], target.items()[0])
    rows = [ENTRY, ON_DISK, FOUND]
    wait_until(lambda: [item.text for item in target.items()] == rows, 5, f"the rows {rows}")

    name = "Môj výber.m3u"
    menu(app, target.items()[0], SAVE)
    save_as(app, "Uložiť playlist", name)
    answer(app, 1, "relatívne odkazy", "links")
    answer(app, 1, "Playlist bol úspešne vytvorený (aktualizovaný).")
    lines = (collection / FOLK / name).read_bytes().decode("cp1250").split("\r\n")
    check(lines == [f"..\\{ENTRY}", ON_DISK, f"Vianočné\\{FOUND}", ""], f"the file says {lines}")
    file_of(app, name.lower())
    app.control("Tlacitko", within=found).click()
    return target


def files(app, collection):
    """A file is copied, its copy renamed and deleted."""
    song = (collection / FOLK / ON_DISK).read_bytes()
    menu(app, file_of(app, SONG), OPERATIONS, COPY)
    menu(app, file_of(app, SONG), OPERATIONS, PASTE)
    save_as(app, "Uložiť súbor ako ...", "Kópia.mp3", ON_DISK)
    file_of(app, "kópia.mp3").click()
    app.key("F2")
    field = app.control("txtodpoved", within=app.control("frmVstup"))
    app.type("Žabky naživo")  # over the name, which is selected without its extension
    wait_until(lambda: field.text == "Žabky naživo.mp3", 5, "the new name typed")
    picture(app, "rename")
    app.key("Return")
    copy = "Žabky naživo.mp3"
    file_of(app, copy).click()
    check((collection / FOLK / copy).read_bytes() == song, "the renamed copy is whole")
    app.key("Delete")
    wait_until(lambda: app.focused() and app.focused().text == "NIE", 5, "the refusing answer")
    app.key("Return")
    app.wait_gone("frmBox")
    check((collection / FOLK / copy).is_file(), "a stray Enter deletes nothing")
    app.key("Delete")
    answer(app, 1, f"Naozaj chceš nenávratne odstrániť súbor 'E:\\{FOLK}\\{copy}' ?")
    wait_until(lambda: not listed(app, copy), 5, "the contents without it")
    left = sorted(f.name for f in (collection / FOLK).iterdir() if "abky" in f.name)
    check(left == [ON_DISK], f"left are {left}")


def keys(app, collection):
    """What has no place on the mouse's road: the menu, a window's end, the folder listed again."""
    file_of(app, SONG).click()
    app.key("shift+F10")
    app.choose(INFORMATION)
    check(app.control("lblPath").text == f"E:\\{FOLK}\\{ON_DISK}", "the selected file's window")
    wait_until(lambda: app.focused() and app.focused().name == "lblPath", 5, "the focus")
    app.key("Escape")
    app.wait_gone("frminfo")
    shutil.copy(collection / FOLK / ON_DISK, collection / FOLK / "hotová.mp3")
    wait_until(lambda: app.key("F5") or listed(app, "hotová.mp3"), 5, "the new file")
    app.key("shift+Tab")
    wait_until(lambda: app.focused().name == "Medzera", 5, "the focus a place back")


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


def road(collection):
    def journey(app):
        drive(app)
        listen(app)
        found = search(app)
        rows = make_playlist(app, found, collection)
        files(app, collection)
        keys(app, collection)
        end(app, rows)
    return journey


if __name__ == "__main__":
    own = os.environ.get("TUNOVKA_FOLDER")
    if own:
        driver.main(drive, own)
    else:
        place = driver.collection("road")
        driver.main(road(place), place)
