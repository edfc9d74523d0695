// The file information window on real windows and files.
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first: it needs its types.
#include <winioctl.h>

#include "core/errors.h"
#include "core/file_system.h"
#include "core/id3v1.h"
#include "files/frm_info.h"
#include "support/error_of.h"
#include "support/person.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

std::string padded(std::string text, std::size_t width, char padding) {
    text.resize(width, padding);
    return text;
}

// A tag in code page 1250, padded by NULs or by blanks.
std::string tagBytes(char padding = '\0') {
    return "TAG" +
           padded(
               "\xC8"
               "ere\x9A\xF2ov\xFD sad",
               30, padding) +
           padded("  Hracia skrinka", 30, padding) + padded("Z\xE1hrada", 30, padding) +
           padded("99", 4, padding) + padded("Kvitne v apr\xEDli", 30, padding) + '\x11';
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
    static bool tagIsEmpty(const frminfo& window) {
        return window.lbltitul.text().empty() && window.lblautor.text().empty() &&
               window.lblalbum.text().empty() && window.lblrok.text().empty() &&
               window.lblpoznamka.text().empty();
    }

    ScratchFolder scratch;
    Person person;

  private:
    std::vector<std::unique_ptr<frminfo>> windows_;
};

TEST_F(InfoWindow, ShowsAllThatIsKnownOfAFile) {
    const std::wstring path =
        scratch.file(L"Čerešňový sad 歌.mp3", std::string(1536 - 128, 'x') + tagBytes());
    const SYSTEMTIME created{2003, 7, 0, 5, 12}, modified{2011, 11, 0, 23, 12};
    {
        FILETIME first, second;
        SystemTimeToFileTime(&created, &first);
        SystemTimeToFileTime(&modified, &second);
        const FileHandle file(CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr,
                                          OPEN_EXISTING, 0, nullptr));
        SetFileTime(file.get(), &first, &second, &second);
    }
    FileSystemObject::setAttributes(path, FILE_ATTRIBUTE_READONLY);
    const frminfo& window = open(path);
    EXPECT_EQ(window.lblPath.text(), path);
    EXPECT_EQ(window.lblvelkosť.text(), L"1,5 kB ( 1 536 bajtov)");
    EXPECT_EQ(window.lbldatzmena.text(), L"23.11.2011");
    EXPECT_EQ(window.lbldatotvor.text(), L"23.11.2011");
    EXPECT_NE(window.lbldatvyt.text(), L"");  // not every system lets it be set
    EXPECT_EQ(window.lblznak.text(), L"len na čítanie\r\n");
    EXPECT_EQ(window.lbltitul.text(), L"Čerešňový sad");
    EXPECT_EQ(window.lblautor.text(), L"Hracia skrinka");
    EXPECT_EQ(window.lblalbum.text(), L"Záhrada");
    EXPECT_EQ(window.lblrok.text(), L"99");
    EXPECT_EQ(window.lblpoznamka.text(), L"Kvitne v apríli");
    EXPECT_FALSE(window.lblvystraha.isVisible());
    EXPECT_EQ(window.Timer1.interval(), 0u);
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(InfoWindow, TakesFilesTooShortForATagWithoutANotice) {
    const std::wstring none = scratch.file(L"0.mp3", "");
    const std::wstring shorter = scratch.file(L"127.mp3", tagBytes().substr(1));
    EXPECT_EQ(errorOf([&] { MultiMedialny::ReadId3v1(none); }), kBadRecordNumber);
    EXPECT_EQ(errorOf([&] { MultiMedialny::ReadId3v1(shorter); }), kBadRecordNumber);
    for (const std::wstring& path : {none, shorter}) {
        const frminfo& window = open(path);
        EXPECT_TRUE(tagIsEmpty(window)) << path;
        EXPECT_NE(window.lbldatzmena.text(), L"");
        EXPECT_FALSE(window.lblvystraha.isVisible());
    }
    EXPECT_EQ(open(none).lblvelkosť.text(), L"0 kB (  0 bajtov)");
    EXPECT_EQ(open(scratch.file(L"128.mp3", tagBytes(' '))).lbltitul.text(), L"Čerešňový sad");
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(InfoWindow, KeepsWhatCanBeReadOfALockedFileAndTellsTheRest) {
    const std::wstring path = scratch.file(L"zamknutý.mp3", tagBytes());
    const FileHandle lock(
        CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    const frminfo& window = open(path);
    EXPECT_EQ(window.lblPath.text(), path);
    EXPECT_EQ(window.lblvelkosť.text(), L"0,12 kB (  128 bajtov)");
    EXPECT_NE(window.lbldatzmena.text(), L"");
    EXPECT_TRUE(tagIsEmpty(window));
    ASSERT_TRUE(runUntil([&] { return !person.seen.empty(); }));
    EXPECT_EQ(person.seen[0], (BoxRequest{L" CHYBA",
                                          L"Nie je možné načítať všetky informácie o súbore.\r"
                                          L"Chyba č. 70: Permission denied",
                                          L"Rozumiem ..."}));
}

TEST_F(InfoWindow, WarnsWhenTheFileDisappearsMeanwhile) {
    for (int step = 1; step <= 3; ++step) {  // before the details and twice before the tag
        const std::wstring path = scratch.file(L"chvíľkový.mp3", tagBytes());
        int reads = 0;
        FileSystemObject::setFault([&](DiskStep what, const std::wstring&) {
            if (what == DiskStep::Read && ++reads == step) DeleteFileW(path.c_str());
        });
        const frminfo& window = open(path);
        FileSystemObject::setFault({});
        EXPECT_EQ(reads, step);
        EXPECT_EQ(window.lblPath.text(), path);
        EXPECT_TRUE(window.lblvystraha.isVisible());
        EXPECT_EQ(window.lblvelkosť.text().empty(), step == 1);
    }
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(InfoWindow, CountsTheBytesOfAFileOverFourGigabytes) {
    const std::wstring path = scratch.file(L"veľký.mp3", "");
    {
        const FileHandle file(
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        DWORD count = 0;
        DeviceIoControl(file.get(), FSCTL_SET_SPARSE, nullptr, 0, nullptr, 0, &count, nullptr);
        LARGE_INTEGER place;
        place.QuadPart = 5'000'000'000 - 128;
        ASSERT_TRUE(SetFilePointerEx(file.get(), place, nullptr, FILE_BEGIN));
        const std::string tag = tagBytes();
        ASSERT_TRUE(WriteFile(file.get(), tag.data(), 128, &count, nullptr));
    }
    const frminfo& window = open(path);
    EXPECT_EQ(window.lblvelkosť.text(), L"4768,37 MB (5000 000 000 bajtov)");
    EXPECT_EQ(window.lbltitul.text(), L"Čerešňový sad");
}

TEST_F(InfoWindow, TheWarningBlinksUntilTheWindowCloses) {
    frminfo& window = open(L"chyba");
    EXPECT_EQ(window.lblvystraha.text(), L"Súbor neexistuje");
    EXPECT_EQ(window.Timer1.interval(), 300u);
    EXPECT_EQ(window.lblPath.text(), L"");
    EXPECT_TRUE(window.lblvystraha.isVisible());
    EXPECT_TRUE(runUntil([&] { return !window.lblvystraha.isVisible(); }));
    EXPECT_TRUE(runUntil([&] { return window.lblvystraha.isVisible(); }));
    pressAndRelease(window.Tlacitko);
    EXPECT_TRUE(window.isClosing());
    EXPECT_EQ(window.Timer1.interval(), 0u);

    const frminfo& missing = open(scratch / L"nie je.mp3");
    EXPECT_EQ(missing.lblPath.text(), scratch / L"nie je.mp3");
    EXPECT_TRUE(missing.lblvystraha.isVisible());
    EXPECT_EQ(missing.lblvelkosť.text(), L"");
}

TEST_F(InfoWindow, ShowsALongPathWholeAndWithinTheWindow) {
    std::wstring path = L"C:\\";
    for (int i = 0; i < 3; ++i) path += L"Ľúbezné pesničky a ďalšie nahrávky z večierkov\\";
    path += std::wstring(110, L'm') + L".mp3";
    const frminfo& window = open(path);
    EXPECT_EQ(window.lblPath.text(), path);
    const auto lines = SendMessageW(window.lblPath.handle(), EM_GETLINECOUNT, 0, 0);
    EXPECT_GT(lines, 3);
    EXPECT_EQ(window.lblPath.bounds().height, lines * Skin::fontHeight(window.dpi()));
    EXPECT_LT(window.lblPath.bounds().bottom(), window.lblvelkosť.bounds().y);
    EXPECT_LT(window.lblpoznamka.bounds().bottom(), window.clientSize().height);

    std::wstring deep = L"C:";
    while (deep.size() < 5000) deep += L"\\večierok";
    const frminfo& endless = open(deep);
    EXPECT_EQ(endless.lblPath.text(), deep);
    EXPECT_LT(endless.clientSize().height, GetSystemMetrics(SM_CYSCREEN) / 2);
}

}  // namespace
}  // namespace tunovka
