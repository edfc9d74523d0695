"""What is handed out, made and tried the way a person gets it: the zip file and the installer are
the same bytes every time, the program starts from both, and the uninstaller takes away exactly what
the installer brought."""

import os
import shutil
import subprocess
import sys
import time
import zipfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "journeys"))
import driver  # noqa: E402
from driver import BUILD, TOP, check, wait_until  # noqa: E402

PLACE = BUILD / "package-test"
USER = BUILD / "stage/96/prefix/drive_c/users/tester"
INSTALLED = USER / "AppData/Local/Programs/Tunovka"
SHORTCUT = USER / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Tunovka.lnk"
KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Tunovka"


def wine(*words):
    """Runs a Windows program to its end; gives back its exit code and output."""
    done = subprocess.run([TOP / "tools/wine-run", *words], stdin=subprocess.DEVNULL, timeout=120,
                          stdout=subprocess.PIPE)
    return done.returncode, done.stdout.decode("cp1250", "replace")


def files_in(folder):
    return {path.relative_to(folder).as_posix(): path.read_bytes()
            for path in folder.rglob("*") if path.is_file()}


def make(program, version, name, settings, *build):
    """Makes the packages from a copy of the program; gives back the paths of installer and zip."""
    copy, folder = PLACE / name / program.name, PLACE / name / "made"
    copy.parent.mkdir(parents=True)
    shutil.copyfile(program, copy)
    subprocess.run([TOP / "tools/make-package", copy, version, folder, *build], check=True,
                   stdin=subprocess.DEVNULL, env=dict(os.environ, **settings))
    made = sorted(path for path in folder.iterdir() if "check" not in path.name)
    check([path.name for path in made] == [f"Tunovka-{version}-setup.exe", f"Tunovka-{version}.zip"],
          f"what is made: {made}")
    return made


def try_making_again(program, version, first):
    """Later, elsewhere and with other settings: what is made is the same."""
    wait_until(lambda: time.time() > first[0].stat().st_mtime + 2, 5, "another time")
    for one, other in zip(first, make(program, version, "two",
                                      {"TZ": "Pacific/Auckland", "LC_ALL": "C"})):
        check(one.read_bytes() == other.read_bytes(), f"{one.name} differs when it is made again")


def try_program(program, probe, folder, meanwhile=lambda app: None):
    """Starts it with `folder` as drive E:, sees that it lists that, closes it."""
    app = driver.App(program, probe, folder)
    try:
        app.control("Tview").item("vitajte.m3u", 20)
        meanwhile(app)
        check(app.close_main() == 0, "the program ends well")
    except Exception:
        app.screenshot("failed-package")
        raise
    finally:
        app.stop()


def try_zip(path, program, probe, version):
    with zipfile.ZipFile(path) as archive:
        archive.extractall(PLACE)
    top = PLACE / f"Tunovka-{version}"
    unpacked = files_in(top)
    check(unpacked["tunovka.exe"] == program.read_bytes(), "the program in the zip file")
    samples = files_in(TOP / "samples")
    check({name[8:]: data for name, data in unpacked.items() if name.startswith("samples/")} ==
          samples, "the samples in the zip file")
    for name in "readme.txt", "citaj-ma.txt":
        check(f"Tunovka {version}\r\n" in unpacked[name].decode("utf-8-sig"), f"{name}'s version")
    try_program(top / "tunovka.exe", probe, top / "samples")
    return unpacked


def try_check(path, version):
    """What tries the program on another computer: unpacked and started, it reports."""
    with zipfile.ZipFile(path) as archive:
        archive.extractall(PLACE)
    top = PLACE / f"Tunovka-{version}-check"
    code, _ = wine(top / "bin/check.exe", "unit_playlist")
    report = (top / "report.txt").read_text(encoding="utf-8")
    check(code == 0 and "\n0 programs failed" in report, f"the check ends well: {report}")
    for words in f"Tunovka {version}\n", "\nWindows: ", "\nCode pages: ANSI 1250", "[  PASSED  ] ":
        check(words in report, f"{words!r} in the report: {report}")


def forget_installation():
    """What an earlier, failed run may have left."""
    shutil.rmtree(INSTALLED, ignore_errors=True)
    SHORTCUT.unlink(missing_ok=True)
    wine("reg", "delete", KEY, "/f")


def try_installer(setup, packed, version):
    check(wine(setup, "/S")[0] == 0, "the installer ends well")
    installed = files_in(INSTALLED)
    check(installed.pop("uninstall.exe", None), "an uninstaller")
    check(installed == packed, "the installer brings what the zip file holds")
    check(b"Programs\\Tunovka\\tunovka.exe" in SHORTCUT.read_bytes(),
          "the start-menu entry leads to the program")
    entry = wine("reg", "query", KEY)[1]
    check(f"REG_SZ    {version}" in entry and "uninstall.exe" in entry, f"the entry: {entry}")


def try_running(setup, probe):
    """Neither the installer nor the uninstaller touches a program that runs."""
    def refused(app):
        before = files_in(INSTALLED)
        check(wine(setup, "/S")[0] == 1, "the installer refuses to replace a running program")
        # Told where it stands, an uninstaller does not go on in a copy of itself.
        where = "C:\\" + str(INSTALLED.relative_to(USER.parents[1])).replace("/", "\\")
        check(wine(INSTALLED / "uninstall.exe", "/S", f"_?={where}")[0] == 1,
              "the uninstaller refuses to remove a running program")
        check(files_in(INSTALLED) == before, "what is installed is left alone")
    try_program(INSTALLED / "tunovka.exe", probe, INSTALLED / "samples", refused)


def try_uninstaller(setup):
    """The person has changed one sample, and put a file and a playlist of theirs beside."""
    theirs = {"moje.txt": b"x", "samples/moje.m3u": b"a.mp3\r\n", "samples/Vitajte.m3u": b"b.mp3\r\n"}
    for name, data in theirs.items():
        (INSTALLED / name).write_bytes(data)
    check(wine(setup, "/S")[0] == 0, "installing once more")
    for name, data in theirs.items():
        check((INSTALLED / name).read_bytes() == data, f"{name} is left alone by installing")

    check(wine(INSTALLED / "uninstall.exe", "/S")[0] == 0, "the uninstaller ends well")
    wait_until(lambda: files_in(INSTALLED) == theirs, 20, "only the person's files left")
    # The uninstaller goes on in a copy of itself; the entry goes last.
    wait_until(lambda: wine("reg", "query", KEY)[0] != 0, 20, "the entry gone")
    check(not SHORTCUT.exists(), "the start-menu entry is gone")
    check(sorted(path.name for path in INSTALLED.rglob("*") if path.is_dir()) == ["samples"],
          "empty folders are gone")

    shutil.rmtree(INSTALLED)
    check(wine(setup, "/S")[0] == 0, "installing into nothing")
    check(wine(INSTALLED / "uninstall.exe", "/S")[0] == 0, "the uninstaller ends well")
    wait_until(lambda: not INSTALLED.exists(), 20, "the folder gone")


def main(program, probe, version):
    shutil.rmtree(PLACE, ignore_errors=True)
    subprocess.run([TOP / "tools/stage", "start", "96"], check=True, stdout=subprocess.DEVNULL)
    forget_installation()
    made = setup, archive = make(program, version, "one", {}, BUILD / "windows")
    try_check(PLACE / "one/made" / f"Tunovka-{version}-check.zip", version)
    packed = try_zip(archive, program, probe, version)
    try_making_again(program, version, made)
    try_installer(setup, packed, version)
    try_running(setup, probe)
    try_uninstaller(setup)


if __name__ == "__main__":
    main(Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3])
