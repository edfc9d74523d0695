"""Shows the program on any folder (TUNOVKA_FOLDER) and leaves a picture of each stop: the folder,
a playlist expanded, a file that plays. What the folder does not have is left out. The program is
left alone; nothing in the folder changes."""

import os

import driver
from driver import wait_until

PLAYLISTS = ("m3u", "pls", "asx")
MUSIC = ("mp3", "wav", "wma")


def first(contents, kinds):
    return next((i for i in contents.items() if i.level == 0 and i.text[-3:].lower() in kinds and
                 (kinds is MUSIC or i.data["has_children"])), None)


def tour(app):
    tree, contents = app.control("strom"), app.control("Tview")
    wait_until(tree.items, 30, "drive E: in the folder tree")
    app.screenshot("1-drive")

    folder = next((i for i in tree.items() if i.level == 1 and i.rect), None)
    if folder:
        before = [i.text for i in contents.items()]
        folder.click()
        wait_until(lambda: [i.text for i in contents.items()] not in ([], before), 30,
                   f"{folder.text} listed")
    for kinds, name in (PLAYLISTS, "2-playlist"), (MUSIC, "3-playing"):
        item = first(contents, kinds)
        if not item:
            print(f"There is no {'/'.join(kinds)} in this folder: no picture {name}")
            continue
        if kinds is PLAYLISTS:
            contents.expand(item.text)
        else:
            item.double_click()
            wait_until(lambda: app.control("lblušielčas").text not in ("", "0:00 min"), 20,
                       "the time going on")
        app.screenshot(name)


if __name__ == "__main__":
    driver.main(tour, os.environ["TUNOVKA_FOLDER"])
