// The file information window on real windows and files.
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first: it needs its types.
#include <winioctl.h>

#include "core/ansi.h"
#include "files/frm_info.h"
#include "support/person.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

// A tag in code page 1250, padded by NULs or by blanks.
std::string tagBytes(char padding = '\0') {
    const auto padded = [&](std::string text, std::size_t width) {
        text.resize(width, padding);
        return text;
    };
    return "TAG" + padded(toAnsi(L"Čerešňový sad"), 30) + padded("  Hracia skrinka", 30) +
           padded(toAnsi(L"Záhrada"), 30) + padded("99", 4) +
           padded(toAnsi(L"Kvitne v apríli"), 30) + '\x11';
}

class InfoWindow : public testing::Test {
  protected:
    // Fills a new window and lets it run on the screen, not modally.
    frminfo& open(const std::wstring& request) {
        windows_.push_back(std::make_unique<frminfo>(nullptr));
        windows_.back()->txtodkaz.setText(request);
        windows_.back()->show();
        return *windows_.back();
    }
    static std::wstring tagOf(const frminfo& it) {
        return it.lbltitul.text() + L"|" + it.lblautor.text() + L"|" + it.lblalbum.text() + L"|" +
               it.lblrok.text() + L"|" + it.lblpoznamka.text();
    }

    ScratchFolder scratch;
    Person person;

  private:
    std::vector<std::unique_ptr<frminfo>> windows_;
};

TEST_F(InfoWindow, ShowsAllThatIsKnownOfAFile) {
    const std::wstring path =
        scratch.file(L"Čerešňový sad 歌.mp3", std::string(1536 - 128, 'x') + tagBytes());
    {
        // Half past midnight, summer time or not: in Greenwich it is the day before.
        const auto at = [](WORD year, WORD month, WORD day) {
            const SYSTEMTIME local{year, month, 0, day, 0, 30};
            SYSTEMTIME universal{};
            FILETIME time{};
            TzSpecificLocalTimeToSystemTime(nullptr, &local, &universal);
            SystemTimeToFileTime(&universal, &time);
            return time;
        };
        const FILETIME changed = at(2011, 11, 23), read = at(2012, 7, 24);
        setTimes(path, &changed, &read);
    }
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_HIDDEN);
    const frminfo& window = open(path);
    EXPECT_EQ(window.lblPath.text(), path);
    EXPECT_EQ(window.lblvelkosť.text(), L"1,5 kB ( 1 536 bajtov)");
    EXPECT_EQ(window.lbldatzmena.text(), L"23.11.2011");
    EXPECT_EQ(window.lbldatotvor.text(), L"24.7.2012");
    EXPECT_NE(window.lbldatvyt.text(), L"");  // not every system lets it be set
    EXPECT_EQ(window.lblznak.text(), L"skrytý súbor\r\n");
    EXPECT_EQ(tagOf(window), L"Čerešňový sad|Hracia skrinka|Záhrada|99|Kvitne v apríli");
    EXPECT_FALSE(window.lblvystraha.isVisible());
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(InfoWindow, TakesFilesOfAnyLengthWithoutANotice) {
    const std::wstring none = scratch.file(L"0.mp3", "");
    const std::wstring shorter = scratch.file(L"127.mp3", tagBytes().substr(1));
    for (const std::wstring& path : {none, shorter}) {
        const frminfo& window = open(path);
        EXPECT_EQ(tagOf(window), L"||||");
        EXPECT_NE(window.lbldatzmena.text(), L"");
    }
    EXPECT_EQ(open(none).lblvelkosť.text(), L"0 kB (  0 bajtov)");
    EXPECT_EQ(open(scratch.file(L"128.mp3", tagBytes(' '))).lbltitul.text(), L"Čerešňový sad");

    const std::wstring large = scratch.file(L"veľký.mp3", "");
    {
        const FileHandle file = opened(large, GENERIC_WRITE);
        DWORD count = 0;
        DeviceIoControl(file.get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &count, nullptr);
        LARGE_INTEGER place;
        place.QuadPart = 5'000'000'000 - 128;
        ASSERT_TRUE(SetFilePointerEx(file.get(), place, nullptr, FILE_BEGIN));
        ASSERT_TRUE(WriteFile(file.get(), tagBytes().data(), 128, &count, nullptr));
    }
    EXPECT_EQ(open(large).lblvelkosť.text(), L"4768,37 MB (5000 000 000 bajtov)");
    EXPECT_EQ(open(large).lbltitul.text(), L"Čerešňový sad");
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(InfoWindow, KeepsWhatCanBeReadOfALockedFileAndTellsTheRest) {
    const std::wstring path = scratch.file(L"zamknutý.mp3", tagBytes());
    const FileHandle lock = locked(path);
    const frminfo& window = open(path);
    EXPECT_EQ(window.lblvelkosť.text(), L"0,12 kB (  128 bajtov)");
    EXPECT_NE(window.lbldatzmena.text(), L"");
    EXPECT_EQ(tagOf(window), L"||||");
    ASSERT_TRUE(runUntil([&] { return !person.seen.empty(); }));
    EXPECT_EQ(person.seen[0].text,
              L"Nie je možné načítať všetky informácie o súbore.\rChyba č. 70: "
              L"Súbor používa iný program. Zavri ho v ňom a skús to znova");
}

TEST_F(InfoWindow, TheWarningBlinksUntilTheWindowCloses) {
    frminfo& window = open(L"chyba");
    EXPECT_EQ(window.lblvystraha.text(), L"Súbor neexistuje");
    EXPECT_EQ(window.Timer1.interval(), 300u);
    EXPECT_TRUE(runUntil([&] { return !window.lblvystraha.isVisible(); }));
    EXPECT_TRUE(runUntil([&] { return window.lblvystraha.isVisible(); }));
    pressAndRelease(control(window, L"Tlacitko"));
    EXPECT_TRUE(window.isClosing());
    EXPECT_EQ(window.Timer1.interval(), 0u);

    const frminfo& missing = open(scratch / L"nie je.mp3");
    EXPECT_EQ(missing.lblPath.text(), scratch / L"nie je.mp3");
    EXPECT_TRUE(missing.lblvystraha.isVisible());
    EXPECT_EQ(missing.lblvelkosť.text(), L"");
}

}  // namespace
}  // namespace tunovka
