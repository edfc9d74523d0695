"""The road through the whole program, from the drive to the end, with a numbered picture of each
stop. It walks over a copy of the samples; over a person's own folder (TUNOVKA_FOLDER) it only looks
and listens, and changes nothing."""

import os
import shutil

import driver
import hands
from driver import check, wait_until

MUSIC, PLAYLISTS = ("mp3", "wav", "wma"), ("m3u", "pls", "asx")
FOLK, PLAYLIST = "Ľudové", "veselica.pls"
SONG, ENTRY, FOUND = "žabky pri jazere.mp3", "Čerešňový sad.mp3", "Kométa.wav"

pictures = 0


def picture(app, name):
    global pictures
    pictures += 1
    app.screenshot(f"road-{pictures:02}-{name}")


# Stops that only look and listen

def drive(app):
    tree = app.control("strom")
    root = lambda: (tree.items() or [None])[0]
    wait_until(lambda: root() and root().text == "E:", 30, "drive E: in the folder tree")
    hands.move_window(app, app.control("frmPrieskumnik"), 20, 20)
    app.control("Drive1").click()
    wait_until(lambda: any(w.kind == "ComboLBox" and w.visible for w in app.windows()), 5,
               "the list of drives")
    picture(app, "drive")
    for letter, keys in ("C", ["c", "Return"]), ("E", ["e"]):
        app.key(*keys)
        wait_until(lambda: root().text == f"{letter}:", 30, f"drive {letter}: in the folder tree")


def folder(app, name):
    app.control("strom").expand(name)
    wait_until(lambda: app.control("LblBar").text.rstrip("\\").endswith(name), 10,
               f"{name!r} in the status line")
    picture(app, "folder")


def playlist(app, name):
    contents = app.control("Tview")
    contents.expand(name)
    picture(app, "playlist")


def play(app, name):
    hands.file_of(app, name).double_click()
    hands.plays(app)
    heard = app.record(0.5).level()
    check(heard > -40, f"{name} is heard at {heard:.1f} dB")
    picture(app, "playing")


def look_around(app):
    """The first stops over an unknown folder; what it does not have is left out."""
    drive(app)
    below = next((i for i in app.control("strom").items() if i.level == 1 and i.rect), None)
    if below:
        folder(app, below.text)
    for kinds, stop in (PLAYLISTS, playlist), (MUSIC, play):
        name = next((i.text for i in app.control("Tview").items() if i.level == 0 and i.rect and
                     i.text[-3:] in kinds and (kinds is MUSIC or i.has_children)), None)
        if name:
            stop(app, name)
        else:
            print(f"There is no {'/'.join(kinds)} here: that stop is left out")


# Stops that work on the collection

def search(app):
    app.control("strom").item("E:").click(3)
    app.choose(hands.SEARCH)
    window = app.control("frmhladanie")
    count = app.control("lblpočet", within=window)
    wait_until(lambda: "z toho hudobné" in count.text and not app.find("PicInfo"), 20, "a result")
    check(count.text == "  17, z toho hudobné:   16", f"the search counts {count.text!r}")
    window = hands.move_window(app, window, 760, 540)
    app.control("Lview", within=window).item(FOUND).click()
    status = app.control("lblbar", within=window).text
    check(status == f"E:\\{FOLK}\\Vianočné\\{FOUND}", f"the status line says {status!r}")
    picture(app, "search")
    return window


def fill_editor(app, found):
    """A new playlist takes a file, an entry of another playlist and a found file."""
    hands.menu(app, app.control("strom").item(FOLK), hands.NEW_PLAYLIST)
    editor = hands.Editor(app, 0, 780, 60)
    contents, target = app.control("Tview"), editor.control("Lview")
    app.drag(hands.file_of(app, SONG), target)
    editor.wait_rows(SONG)
    app.drag(contents.item(ENTRY), target)
    editor.wait_rows(SONG, ENTRY)
    app.drag(app.control("Lview", within=found).item(FOUND), target)
    editor.wait_rows(SONG, ENTRY, FOUND)
    picture(app, "editor")

    app.drag(hands.file_of(app, SONG), target)
    hands.box(app, f"už nachádza odkaz na tento súbor 'E:\\{FOLK}\\{SONG}'")
    picture(app, "duplicate")
    hands.answer(app, 2)
    editor.wait_rows(SONG, ENTRY, FOUND)
    return editor


def save(app, editor, collection):
    name = "Môj výber.m3u"
    editor.menu(hands.SAVE)
    hands.save_as(app, "Uložiť playlist", name)
    hands.box(app, "relatívne odkazy")
    picture(app, "links")
    hands.answer(app, 1)
    hands.answer(app, 1, "Playlist bol úspešne vytvorený (aktualizovaný).")
    lines = (collection / FOLK / name).read_bytes().decode("cp1250").split("\r\n")
    check(lines == [SONG, f"..\\{ENTRY}", f"Vianočné\\{FOUND}", ""], f"the file says {lines}")

    contents = app.control("Tview")
    hands.file_of(app, name.lower())
    contents.expand(name.lower())
    at = [i.text for i in contents.items()].index(name.lower())
    entries = [i.text for i in contents.items()[at + 1:at + 4]]
    check(entries == [SONG, ENTRY, FOUND], f"the new playlist has the entries {entries}")
    picture(app, "saved")


def information(app):
    hands.menu(app, hands.file_of(app, SONG), hands.INFORMATION)
    info = app.control("frminfo")
    said = {name: app.control(name, within=info).text
            for name in ("lblPath", "lblvelkosť", "lbltitul", "lblautor")}
    picture(app, "information")
    check(said == {"lblPath": f"E:\\{FOLK}\\{SONG}", "lblvelkosť": "26,45 kB ( 27 086 bajtov)",
                   "lbltitul": "Žabky pri jazere", "lblautor": "Gitara"}, f"it says {said}")
    app.control("Tview").find(SONG).click()
    check(not app.focused() or app.focused().name != "Tview", "the explorer waits for its end")
    app.key("Escape")
    app.wait_gone("frminfo")

    app.control("Tview").expand(PLAYLIST)  # the new listing has closed it
    hands.menu(app, app.control("Tview").item("File6=Odzemok.mp3"), hands.INFORMATION)
    warning = lambda: app.find("lblvystraha")
    for _ in range(2):
        wait_until(warning, 5, "the warning shown")
        wait_until(lambda: not warning(), 5, "the warning hidden")
    app.control("Tlacitko", within=app.control("frminfo")).click()
    app.wait_gone("frminfo")


def files(app, collection):
    """A file is copied, its copy renamed and deleted."""
    song = (collection / FOLK / "Žabky pri jazere.mp3").read_bytes()
    hands.menu(app, hands.file_of(app, SONG), hands.OPERATIONS, hands.COPY)
    hands.menu(app, hands.file_of(app, SONG), hands.OPERATIONS, hands.PASTE)
    hands.save_as(app, "Uložiť súbor ako ...", "Kópia.mp3", SONG)
    hands.file_of(app, "kópia.mp3").click()
    app.key("F2")
    field = app.control("txtodpoved", within=app.control("frmVstup"))
    app.type("Žabky naživo")  # over the name, which is selected without its extension
    wait_until(lambda: field.text == "Žabky naživo.mp3", 5, "the new name typed")
    picture(app, "rename")
    app.key("Return")
    copy = "Žabky naživo.mp3"
    hands.file_of(app, copy).click()
    check((collection / FOLK / copy).read_bytes() == song, "the renamed copy is whole")
    app.key("Delete")
    hands.box(app, f"Naozaj chceš nenávratne odstrániť súbor 'E:\\{FOLK}\\{copy.lower()}' ?")
    picture(app, "delete")
    hands.answer(app, 1)
    wait_until(lambda: not hands.listed(app, copy), 5, "the contents without it")
    left = sorted(f.name for f in (collection / FOLK).iterdir() if "abky" in f.name)
    check(left == ["Žabky pri jazere.mp3"], f"left are {left}")


def started(player):
    """How that stand-in for a player was started: the show mode (1: normal), a bar and the command
    line."""
    record = player.with_name(player.name + ".txt")
    wait_until(record.exists, 10, f"{player.name} started")
    return record.read_bytes().decode("utf-16-le")


def external(app, collection):
    hands.file_of(app, SONG).click(3)
    app.mark(hands.PLAY, hands.WINAMP)
    picture(app, "external")
    app.key("Return")
    line = started(collection / "winamp.exe")
    check(line == f'1|E:\\winamp.exe "E:\\{FOLK}\\{SONG}"', f"it was started by {line!r}")


def about(app):
    hands.menu(app, app.control("Zahlavie"), hands.ABOUT)
    window = app.control("frmOprograme")
    check(app.control("lblverzia", within=window).text.startswith("Verzia "), "the version shown")
    picture(app, "about")
    app.control("Tlacitko", within=window).click()
    app.wait_gone("frmOprograme")


def end(app, editor):
    editor.items()[1].click()
    app.key("Delete")
    editor.wait_rows(SONG, FOUND)
    app.control("Ikoniec").click()
    hands.box(app, "došlo k zmenám, chceš playlist uložiť teraz ?")
    picture(app, "unsaved")
    hands.answer(app, 3)
    check(app.running() and app.find("frmplejlist"), "the refusal keeps all windows")
    app.control("Ikoniec").click()
    hands.answer(app, 2)
    check(app.wait_end() == 0, "the program ends well")


def road(collection):
    def journey(app):
        drive(app)
        folder(app, FOLK)
        playlist(app, PLAYLIST)
        play(app, SONG)
        found = search(app)
        editor = fill_editor(app, found)
        save(app, editor, collection)
        app.control("Tlacitko", within=found).click()
        information(app)
        files(app, collection)
        external(app, collection)
        about(app)
        end(app, editor)
    return journey


if __name__ == "__main__":
    own = os.environ.get("TUNOVKA_FOLDER")
    if own:
        driver.main(look_around, own)
    else:
        place = driver.collection("road")
        recorder = driver.BUILD / "windows/tests/windows/command_line_recorder.exe"
        shutil.copy(recorder, place / "winamp.exe")
        with driver.registered(place, {r"HKCU\Software\winamp": "E:"}):
            driver.main(road(place), place)
