"""A person without a mouse: menus, dialogs, renaming, searching and playing by keys alone."""

import shutil

import driver
from driver import check, wait_until

FOLDER = driver.collection("keys")


def focus_on(app, name, key="Tab"):
    """Presses a key until the focus is there."""
    at = wait_until(app.focused, 5, "the focus back from a window that has closed").name
    for _ in range(20):
        if at == name:
            return
        app.key(key)
        at = wait_until(lambda: (now := app.focused()) and now.name != at and now, 5,
                        "the focus moved").name
    raise driver.Failed(f"{key} never reaches {name}")


def dialogs(app):
    song = "čerešňový sad.mp3"
    contents = app.control("Tview")
    contents.item(song).click()  # no window manager is here to give a new window the keyboard
    app.key("Up", "Down")
    wait_until(lambda: contents.item(song).selected, 5, "the song selected by keys")
    for key in "shift+F10", "Menu":
        app.key(key)
        app.choose(1)
        check(app.control("lblPath").text == "E:\\Čerešňový sad.mp3", "the selected file's window")
        wait_until(lambda: app.focused() and app.focused().name == "lblPath", 5, "the focus")
        app.key("Escape")
        app.wait_gone("frminfo")

    app.key("F2")
    app.control("frmVstup")
    app.type("Nový sad")  # over the name, whose extension stays
    app.key("Return")
    app.control("Tview").item("Nový sad.mp3")
    check((FOLDER / "Nový sad.mp3").is_file(), "the file has its new name")

    app.key("Delete")
    box = app.control("frmBox")
    wait_until(lambda: app.focused() and app.focused().text == "NIE", 5, "the refusing answer")
    app.screenshot("keys-box")
    app.key("Return")
    app.wait_gone("frmBox")
    check((FOLDER / "Nový sad.mp3").is_file(), "a stray Enter deletes nothing")

    wait_until(lambda: app.focused() and app.focused().name == "Tview", 5, "the tree's focus")
    shutil.copy(FOLDER / "Nový sad.mp3", FOLDER / "Hotová.mp3")
    wait_until(lambda: app.key("F5") or contents.find("hotová.mp3"), 5, "the new file")


def title_menu(app):
    focus_on(app, "Image3")
    app.screenshot("keys-focus")
    app.key("Menu")
    app.choose(3)
    app.control("frmOprograme")
    app.key("Return")  # on its close picture, the only place for the focus
    app.wait_gone("frmOprograme")


def search_and_play(app):
    focus_on(app, "strom", "shift+Tab")
    app.key("Menu")
    app.choose(3)
    wait_until(lambda: app.find("Lview") and app.focused() and app.focused().name == "Lview", 15,
               "the result with the focus")
    app.key("End", "Home", "Return")
    wait_until(lambda: app.control("lblnapis").text != "", 10, "the first result plays")
    app.key("alt+F4")
    app.wait_gone("frmhladanie")


def journey(app):
    dialogs(app)
    title_menu(app)
    search_and_play(app)


driver.main(journey, FOLDER)
