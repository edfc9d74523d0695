"""The main road: open a folder, expand a playlist, play a file."""

import driver
from driver import check, wait_until



def journey(app):
    tree, contents = app.control("strom"), app.control("Tview")
    wait_until(lambda: [i.text for i in contents.items() if i.level == 0] ==
               ["vitajte.m3u", "čerešňový sad.mp3", "ľúbezná.wma"], 10, "drive E: listed")

    contents.expand("vitajte.m3u")
    entries = [i.text for i in contents.items() if i.level == 1]
    check("Kukučka v háji.mp3" in entries and "Stratená pieseň.mp3" in entries,
          f"the playlist's entries are {entries}")

    tree.item("Ľudové").click()
    wait_until(lambda: contents.find("veselica.pls"), 10, "the folder Ľudové listed")
    check(app.control("LblBar").text == "E:\\Ľudové\\", "the status line names the folder")
    contents.expand("veselica.pls")

    contents.item("tancovačka.wav").double_click()
    wait_until(lambda: app.control("lblčas").text not in ("", "0:00 min"), 10, "the song's length")
    wait_until(lambda: app.control("lblušielčas").text not in ("", "0:00 min"), 10,
               "the time going on")
    heard = app.record(0.5)
    check(heard.level() > -40, f"the song is heard at {heard.level():.1f} dB")


if __name__ == "__main__":
    driver.main(journey)
