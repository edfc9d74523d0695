"""The file information window, for a song and for an entry without a file, and the about window."""

import driver
from driver import check, wait_until


def journey(app):
    contents = app.control("Tview")
    contents.item("čerešňový sad.mp3", 20).click(3)
    app.choose(1)
    info = app.control("frminfo")
    said = {name: app.control(name, within=info).text
            for name in ("lblPath", "lblvelkosť", "lbltitul", "lblautor", "lblalbum", "lblrok",
                         "lblpoznamka")}
    check(said == {"lblPath": "E:\\čerešňový sad.mp3", "lblvelkosť": "28,49 kB ( 29 176 bajtov)",
                   "lbltitul": "Čerešňový sad", "lblautor": "Hracia skrinka", "lblalbum": "Záhrada",
                   "lblrok": "2024", "lblpoznamka": "Kvitne v apríli"}, f"the window says {said}")
    check(not app.find("lblvystraha", within=info), "no warning for a file that is there")
    app.screenshot("info")
    contents.item("vitajte.m3u").click()
    check(contents.item("čerešňový sad.mp3").selected, "the explorer waits for the window's end")
    app.key("Escape")
    app.wait_gone("frminfo")

    contents.expand("vitajte.m3u")
    contents.item("Stratená pieseň.mp3").click(3)
    app.choose(1)
    warning = lambda: app.find("lblvystraha")
    for _ in range(2):
        wait_until(warning, 5, "the warning shown")
        wait_until(lambda: not warning(), 5, "the warning hidden")
    wait_until(warning, 5, "the warning shown again")
    app.screenshot("info-missing")
    app.control("Tlacitko", within=app.control("frminfo")).click()
    app.wait_gone("frminfo")

    for close in "Escape", "picture":
        app.click(app.control("Zahlavie"), 3)
        app.choose(3)
        about = app.control("frmOprograme")
        check(app.control("lblverzia", within=about).text.startswith("Verzia "), "the version shown")
        app.screenshot("about")
        if close == "Escape":
            app.key("Escape")
        else:
            app.control("Tlacitko", within=about).click()
        app.wait_gone("frmOprograme")


if __name__ == "__main__":
    driver.main(journey)
