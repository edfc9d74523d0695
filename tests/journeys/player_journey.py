"""What the player's buttons and strips do to the sound."""

import array
import math
import wave

import driver
from driver import check, wait_until

LOUD = 0.5


def tone(path, *parts):
    """A WAV file of plain tones, each (hertz, seconds)."""
    rate = 22050
    samples = array.array("h", (int(32767 * LOUD * math.sin(2 * math.pi * hertz * i / rate))
                                for hertz, seconds in parts for i in range(seconds * rate)))
    with wave.open(str(path), "wb") as file:
        file.setparams((1, 2, rate, 0, "NONE", ""))
        file.writeframes(samples.tobytes())


def collection():
    folder = driver.collection("player")
    tone(folder / "skok.wav", (440, 20), (880, 20))
    for number, hertz in enumerate((500, 700, 900), 1):
        tone(folder / f"{number}.wav", (hertz, 20))
    (folder / "tri.m3u").write_bytes(b"1.wav\r\nchyba.wav\r\n2.wav\r\n3.wav\r\n")
    return folder


def hears(app, hertz):
    """Waits for that tone; a hundredth off is another one."""
    wait_until(lambda: abs(app.pitch() - hertz) < hertz / 100, 10, f"a {hertz} Hz tone")


def journey(app):
    contents = app.control("Tview")
    play, stop, pause, following = [app.control(f"Image{i}") for i in (1, 2, 3, 5)]
    volume, progress = app.control("PicHlas"), app.control("PicProgres")

    # A double click plays, at the right pitch.
    volume.click(down=0.0)
    contents.item("skok.wav").double_click()
    hears(app, 440)
    elapsed, length = app.control("lblušielčas"), app.control("lblčas")
    wait_until(lambda: length.text == "0:40 min", 5, "the length")

    # The volume strip: 4,000 hundredths of a decibel from top to bottom.
    loud = app.level()
    volume.click()
    wait_until(lambda: abs(loud - app.level() - 20) < 1.5, 5, "a sound 20 dB softer")
    volume.click(down=0.0)
    wait_until(lambda: abs(loud - app.level()) < 1.5, 5, "the loud sound again")

    # Seeking lands in the other half of the file.
    progress.click(across=0.75)
    hears(app, 880)
    wait_until(lambda: elapsed.text >= "0:30 min", 5, "the time of the place sought")

    # Pause is silence, and play goes on from there.
    pause.click()
    wait_until(lambda: app.level(0.25) < -90, 5, "silence after pause")
    check(elapsed.text >= "0:30 min", "pause keeps the time")
    play.click()
    hears(app, 880)

    # Stop is silence and empty labels.
    stop.click()
    wait_until(lambda: app.level(0.25) < -90, 5, "silence after stop")
    check((elapsed.text, length.text, app.control("lblnapis").text) == ("", "", ""),
          "stop empties the labels")

    # A playlist is stepped through; an entry without a file is passed over.
    contents.item("tri.m3u").click()
    play.click()
    hears(app, 500)
    volume.click()
    following.click()
    hears(app, 700)
    check(app.level() < loud - 15, "the next song is as soft")
    volume.click(down=0.0)
    progress.click(across=0.98)
    hears(app, 900)


if __name__ == "__main__":
    driver.main(journey, collection())
