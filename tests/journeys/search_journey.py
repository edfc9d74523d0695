"""Searches folders from the folder tree: the result, its order, playing, exporting, stopping, and
more files than the picture scroll bar can count."""

import os

import driver
from driver import check, wait_until


def large_collection():
    """The samples, folders enough to stop in, and more music than 32,767 in all."""
    folder = driver.collection("search")
    for name, albums, files, music in (("Veľké", 500, 40, 4), ("Ďalšie", 28, 1000, 1)):
        for number in range(albums):
            album = folder / name / f"Album {number:03}"
            album.mkdir(parents=True)
            for song in range(files):
                path = f"{album}/Pieseň {song:03}.{'txt' if song % music else 'mp3'}"
                os.close(os.open(path, os.O_CREAT | os.O_WRONLY))
    return folder


def open_folder_menu(app, name):
    node = app.control("strom").item(name)
    node.click()
    node.click(3)


def search(app, name):
    open_folder_menu(app, name)
    app.choose(3)
    wait_searched(app, name)


def wait_searched(app, name):
    wait_until(lambda: app.control("lbladresar").text.rstrip("\\").endswith(name), 10,
               "the folder's name in the search window")


def done(app):
    wait_until(lambda: "hudobné" in app.control("lblpočet", visible=False).text and
               not app.find("PicInfo"), 60, "the search's end")
    return app.control("lblpočet").text


def results(app):
    return app.control("Lview", within=app.control("frmhladanie"))


def names(app):
    return [row.text for row in results(app).items()]


def shown_path(app):
    return app.control("lblbar", within=app.control("frmhladanie")).text


def result_menu(app, row, *entries):
    results(app).items()[row].click(3)
    app.choose(*entries)


def export(app, name, answers):
    """Saves the result under a name and presses these buttons of the boxes that follow."""
    result_menu(app, 0, 4)
    wait_until(lambda: any(w.data["class"] == "#32770" for w in app.top_windows()), 10,
               "the save dialog")
    app.type(name)
    app.key("Return")
    for answer in answers:
        button = app.control(f"Itlačítko{answer}")
        button.click()
        wait_until(lambda: button.hwnd not in [w.hwnd for w in app.windows()], 5, "the box gone")


def result(app, folder):
    search(app, "Ľudové")
    check(done(app) == "  9, z toho hudobné:   9", app.control("lblpočet").text)
    found = names(app)
    check(len(found) == 9 and found[-1] != found[0], f"found {found}")
    app.screenshot("search-1-result")

    result_menu(app, 0, 5, 2)
    descending = wait_until(lambda: names(app) != found and names(app), 5, "another order")
    result_menu(app, 0, 5, 1)
    wait_until(lambda: names(app) == descending[::-1], 5, "the reverse order")
    check(results(app).items()[0].selected, "sorting selects the first row")

    results(app).item("tancovačka.wav" if "tancovačka.wav" in found
                              else "Tancovačka.wav").double_click()
    wait_until(lambda: app.control("lblčas").text not in ("", "0:00 min"), 10, "the song's length")


def opened(app):
    """Information, a found playlist in an editor, and a result dragged into it."""
    found = names(app)
    result_menu(app, found.index("Tichý sneh.mp3"), 1)
    path = app.control("lblPath", within=app.control("frminfo")).text
    check(path == "E:\\Ľudové\\Vianočné\\Tichý sneh.mp3", f"information on {path!r}")
    app.key("Escape")
    app.wait_gone("frminfo")

    result_menu(app, found.index("Veselica.pls"), 3)
    editor = app.control("frmplejlist")
    title = app.control("PicZahlavie", within=editor)
    app.drag((title.rect[0] + 60, title.center[1]), (80, title.center[1] + 60))
    title = app.control("PicZahlavie", within=app.control("frmhladanie"))
    app.drag((title.rect[0] + 100, title.center[1]), (740, title.center[1]))
    target = app.control("Lview", within=app.control("frmplejlist"))
    before = [row.text for row in wait_until(target.items, 5, "the playlist's entries")]
    app.screenshot("search-2-editor")
    app.drag(results(app).item("Kométa.wav"), target)
    wait_until(lambda: [row.text for row in target.items()] == before + ["Kométa.wav"], 10,
               "the dragged file in the editor")
    app.control("IZavri", within=app.control("frmplejlist")).click()
    app.control("Itlačítko2").click()
    app.wait_gone("frmplejlist")


def exports(app, folder):
    export(app, "všetko.m3u", [1, 1])
    target = folder / "Ľudové" / "všetko.m3u"
    lines = target.read_bytes().decode("cp1250").split("\r\n")
    check(lines[-1] == "" and len(lines) == 10, f"the file's lines are {lines}")
    check(all(line.startswith("E:\\Ľudové\\") for line in lines[:-1]), "the lines are full paths")
    export(app, "hudba.txt", [2, 1])
    music = (folder / "Ľudové" / "hudba.txt").read_bytes().decode("cp1250").split("\r\n")
    check(music == [line for line in lines if not line.endswith((".m3u", ".pls"))],
          f"without playlists: {music}")


def stopped(app):
    open_folder_menu(app, "Veľké")
    app.key("Down", "Down", "Down")
    # The stop button has the keyboard; the search may be over soon.
    app.xdotool("key", "Return", *["sleep", 0.06, "key", "space"] * 10)
    wait_searched(app, "Veľké")
    text = done(app)
    check(" - prerušené" in text, f"the search was not stopped: {text}")
    check(shown_path(app).startswith("E:\\Veľké\\"), "what was found is listed")


def overflown(app):
    search(app, "E:")
    app.control("frmBox", 60)
    check(app.control("lblotazka").text == "Chyba č. 6: Overflow", app.control("lblotazka").text)
    app.screenshot("search-3-overflow")
    app.control("Itlačítko1").click()
    app.wait_gone("frmBox")
    check(not app.find("PicPosuv") and not app.find("PicInfo"), "the bar and the panel are gone")
    results(app).click()
    app.key("End")
    wait_until(lambda: shown_path(app).endswith(".mp3"), 10, "the last row")
    app.screenshot("search-4-end")


def journey_in(folder):
    def journey(app):
        result(app, folder)
        opened(app)
        exports(app, folder)
        stopped(app)
        overflown(app)
    return journey


if __name__ == "__main__":
    place = large_collection()
    driver.main(journey_in(place), place)
