"""Searches folders from the folder tree: the result, its order, playing, exporting, stopping, a
picture of the search at work, and more files than the picture scroll bar can count."""

import os

import driver
import hands
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


def search(app, name, *keys):
    """Searches a folder from the tree; these keys follow at once."""
    app.control("strom").item(name).click(3)
    app.mark(hands.SEARCH)
    app.xdotool("key", "Return", *keys)
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


def result_menu(app, row, *entries):
    hands.menu(app, results(app).items()[row], *entries)


def result(app):
    search(app, "Ľudové")
    check(done(app) == "  9, z toho hudobné:   9", app.control("lblpočet").text)
    found = names(app)
    check(len(found) == 9, f"found {found}")
    app.screenshot("search-result")
    result_menu(app, 0, 5, 2)
    descending = wait_until(lambda: names(app) != found and names(app), 5, "another order")
    result_menu(app, 0, 5, 1)
    wait_until(lambda: names(app) == descending[::-1], 5, "the reverse order")
    check(results(app).items()[0].selected, "sorting selects the first row")
    results(app).item("Tancovačka.wav").double_click()
    hands.plays(app)


def opened(app):
    """Information on a result, and a found playlist in an editor."""
    found = names(app)
    result_menu(app, found.index("Tichý sneh.mp3"), 1)
    path = app.control("lblPath", within=app.control("frminfo")).text
    check(path == "E:\\Ľudové\\Vianočné\\Tichý sneh.mp3", f"information on {path!r}")
    app.key("Escape")
    app.wait_gone("frminfo")
    result_menu(app, found.index("Veselica.pls"), 3)
    editor = app.control("frmplejlist")
    rows = app.control("Lview", within=editor).items()
    check(len(rows) == 6, f"the editor shows {len(rows)} entries")
    app.control("IZavri", within=editor).click()
    app.wait_gone("frmplejlist")


def export(app, folder):
    """Saves the result with its playlists."""
    result_menu(app, 0, 4)
    hands.save_as(app, "Uložiť ako playlist...", "všetko.m3u")
    hands.answer(app, 1, "Zoznam obsahuje aj playlisty")
    hands.answer(app, 1)
    lines = (folder / "Ľudové" / "všetko.m3u").read_bytes().decode("cp1250").split("\r\n")
    check(lines[-1] == "" and len(lines) == 10, f"the file's lines are {lines}")
    check(all(line.startswith("E:\\Ľudové\\") for line in lines[:-1]), "the lines are full paths")


def stopped(app):
    # The stop button has the keyboard; the search may be over soon.
    search(app, "Veľké", *["sleep", 0.06, "key", "space"] * 10)
    text = done(app)
    check(" - prerušené" in text, f"the search was not stopped: {text}")
    path = app.control("lblbar", within=app.control("frmhladanie")).text
    check(path.startswith("E:\\Veľké\\"), "what was found is listed")


def overflown(app):
    """A search at work, and one that finds more than can be counted."""
    search(app, "E:")
    panel = app.control("PicInfo")
    wait_until(lambda: app.control("lblnajdene").text, 10, "a number of files")
    picture = app.screenshot("search-running")
    corner = panel.rect[0] + 3, panel.rect[3] - 3
    check(driver.pixel(picture, corner) == (204, 207, 249), "the picture shows the search at work")
    hands.box(app, "Chyba č. 6: Overflow")
    app.screenshot("search-overflow")
    hands.answer(app, 1)
    check(not app.find("PicPosuv") and not app.find("PicInfo"), "the bar and the panel are gone")
    results(app).click()
    app.key("End")
    bar = app.control("lblbar", within=app.control("frmhladanie"))
    wait_until(lambda: bar.text.endswith(".mp3"), 10, "the last row")
    app.screenshot("search-end")


def journey_in(folder):
    def journey(app):
        result(app)
        opened(app)
        export(app, folder)
        stopped(app)
        overflown(app)
    return journey


if __name__ == "__main__":
    place = large_collection()
    driver.main(journey_in(place), place)
