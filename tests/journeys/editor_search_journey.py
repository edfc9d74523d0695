"""From the search window: a found playlist opens in an editor, a found song is dragged into it."""

import driver
from driver import wait_until


def journey(app):
    app.control("strom").items()[0].click(3)
    app.choose(3)
    search = app.control("frmhladanie")
    title = app.control("PicZahlavie", within=search)
    app.drag((title.rect[0] + 100, title.center[1]), (110, 40))
    found = app.control("Lview", within=search)
    found.item("Veselica.pls").click(3)
    app.choose(3)
    editor = app.control("frmplejlist")
    rows = lambda: [item.text for item in app.control("Lview", within=editor).items()]
    listed = wait_until(rows, 5, "the playlist's entries")
    app.drag((editor.rect[0] + 100, editor.rect[1] + 13), (900, 40))
    app.drag(found.item("Kométa.wav"), app.control("Lview", within=editor))
    wait_until(lambda: rows() == listed + ["Kométa.wav"], 5, "the song added")
    app.screenshot("editor-search")
    app.control("IZavri", within=editor).click()
    app.control("Itlačítko2", within=app.control("frmBox")).click()
    app.wait_gone("frmplejlist")


if __name__ == "__main__":
    driver.main(journey)
