#include <gtest/gtest.h>
#include <windows.h>

#include "core/existing_files.h"
#include "core/system_windows.h"
#include "support/disk_faults.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

namespace fso = FileSystemObject;

// Whether one file is asked for or many.
TEST(ExistingFiles, AreFilesThatTheDiskHas) {
    ScratchFolder scratch;
    scratch.file(L"Dlhý názov piesne.mp3");
    scratch.file(L"песня.mp3");
    scratch.folder(L"hudba");
    scratch.file(L"hudba\\a.mp3");
    scratch.folder(L"hudba\\b.mp3");
    ExistingFiles files;
    const auto exists = [&](const std::wstring& path) {
        files.beginOperation();
        files.ask(path);
        files.ask(path);
        const std::vector<bool> answers = *files.answers({});
        EXPECT_EQ(answers, std::vector<bool>(2, fso::FileExists(path)))
            << testing::PrintToString(path);
        return answers.front();
    };
    const std::wstring shortName = shortNameOf(scratch / L"Dlhý názov piesne.mp3");
    for (const wchar_t* name :
         {L"DLHÝ NÁZOV PIESNE.MP3", shortName.c_str(), L"hudba\\..\\ПЕСНЯ.mp3", L"hudba//a.mp3",
          L"hudba\\\\A.mp3", L"hudba\\a.mp3. "})
        EXPECT_TRUE(exists(scratch / name)) << testing::PrintToString(name);
    for (const wchar_t* name : {L"", L"hudba", L"hudba\\b.mp3", L"hudba\\a.mp3\\", L"nie.mp3",
                                L"*.mp3", L"hudba\\?.mp3", L"nie je\\a.mp3", L"hudba\\a.mp3\\a.mp3",
                                L"hudba \\a.mp3", L"hudba.\\nie.mp3", L"nul", L"nul.mp3"})
        EXPECT_FALSE(exists(scratch / name)) << testing::PrintToString(name);
    for (const std::wstring& path : {std::wstring(), std::wstring(L"Q:\\a.mp3"),
                                     std::wstring(L"\\\\.\\nul"), scratch / std::wstring(300, L'a'),
                                     scratch / L"hudba\\a.mp3" + std::wstring(1, L'\0') + L".txt"})
        EXPECT_FALSE(exists(path));

    // Nobody can say what is in a folder that may not be listed: nothing of it is missing.
    const OddDisk disk([](DiskCall call, const std::wstring&, DWORD&) {
        const bool asks = call == DiskCall::List || call == DiskCall::Attributes;
        return asks ? DWORD{ERROR_ACCESS_DENIED} : DWORD{ERROR_SUCCESS};
    });
    files.beginOperation();
    files.ask(scratch / L"hudba\\a.mp3");
    EXPECT_TRUE(files.answers({})->front());
}

TEST(FileSystemObject, CopiesTimesAndAttributes) {
    ScratchFolder scratch;
    const std::wstring song = scratch.file(L"song.mp3", "new"),
                       copy = scratch.file(L"copy.mp3", "old");
    const FILETIME lastYear{0, 0x01D80000};
    setTimes(song, &lastYear);
    SetFileAttributesW(song.c_str(), FILE_ATTRIBUTE_HIDDEN);
    fso::copyFile(song, copy);
    EXPECT_TRUE(fso::attributes(copy) & FILE_ATTRIBUTE_HIDDEN);
    const FileDate was = fso::details(song).modified, is = fso::details(copy).modified;
    EXPECT_TRUE(is.year == was.year && is.day == was.day && is.month == was.month);
}

TEST(FileSystemObject, WritesAFileWholeAndKeepsWhatItWas) {
    ScratchFolder scratch;
    const std::wstring file = scratch / L"песня 歌 ľščťžýáíé.mp3";  // no code page holds all of it
    fso::writeWhole(file, "old");
    EXPECT_EQ(fso::readAll(file), "old");
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_HIDDEN);
    fso::writeWhole(file, std::string(600000, 'n'));
    EXPECT_EQ(fso::readAll(file), std::string(600000, 'n'));
    EXPECT_TRUE(fso::attributes(file) & FILE_ATTRIBUTE_HIDDEN);

    makeReadOnly(file);
    EXPECT_EQ(errorOf([&] { fso::writeWhole(file, "x"); }), kPermissionDenied);
    EXPECT_EQ(errorOf([&] { fso::writeWhole(scratch.folder(L"f"), "x"); }), kPermissionDenied);
    EXPECT_EQ(errorOf([&] { fso::writeWhole(scratch / L"none\\x", "x"); }), kPathNotFound);
    for (const wchar_t* name : {L"", L"a<b", L"a:b", L"nul", L"com1.txt", L"a*b"})
        EXPECT_EQ(errorOf([&] { fso::writeWhole(*name ? scratch / name : L"", "x"); }),
                  kBadFileName)
            << name;
    EXPECT_EQ(errorOf([&] { fso::writeWhole(scratch / std::wstring(300, L'a'), "x"); }),
              kBadFileName);
    EXPECT_EQ(scratch.names().size(), 2u);
}

TEST(FileSystemObject, WritesThroughLinks) {
    ScratchFolder scratch, other;
    const std::wstring song = scratch.file(L"zoznam.m3u", "old");
    const std::wstring link = other / L"odkaz.m3u";
    if (!makeLink(link, song, false)) GTEST_SKIP() << "no links to files here";
    EXPECT_TRUE(fso::sameFile(link, song));
    fso::writeWhole(link, "new");
    EXPECT_EQ(fso::readAll(song), "new");
    EXPECT_TRUE(fso::sameFile(link, song));
    fso::copyFile(other.file(L"iny.m3u", "copy"), link);
    EXPECT_EQ(fso::readAll(song), "copy");
    EXPECT_EQ(errorOf([&] { fso::copyFile(song, link); }), kPermissionDenied);
    EXPECT_EQ(fso::details(link).size, 4u);
    EXPECT_EQ(scratch.names().size() + other.names().size(), 3u);
}

TEST(FileSystemObject, KnowsAFileBehindEverySpelling) {
    ScratchFolder scratch;
    const std::wstring song = scratch.file(L"dlhý názov piesne.mp3", "abc");
    const std::wstring twin = scratch.file(L"twin.mp3", "abc");
    EXPECT_TRUE(fso::sameFile(song, scratch / L"DLHÝ NÁZOV PIESNE.MP3"));
    EXPECT_TRUE(fso::sameFile(song, scratch / shortNameOf(song)));
    EXPECT_FALSE(fso::sameFile(song, twin));
    EXPECT_FALSE(fso::sameFile(song, scratch / L"none"));
    EXPECT_FALSE(fso::sameFile(L"", L""));
    ASSERT_TRUE(CreateHardLinkW((scratch / L"hard.mp3").c_str(), song.c_str(), nullptr));
    EXPECT_TRUE(fso::sameFile(song, scratch / L"hard.mp3"));
    EXPECT_EQ(errorOf([&] { fso::copyFile(song, scratch / L"hard.mp3"); }), kPermissionDenied);
    EXPECT_EQ(fso::readAll(song), "abc");
}

TEST(FileSystemObject, TakesPathsOfAnyLength) {
    ScratchFolder scratch;
    std::wstring folder = scratch.path();
    for (int depth = 0; depth < 4; ++depth) {
        folder += std::wstring(99, L'd') + L"\\";
        ASSERT_TRUE(CreateDirectoryW((L"\\\\?\\" + folder).c_str(), nullptr));
    }
    const std::wstring file = folder + L"..\\./" + std::wstring(99, L'd') + L"/a.mp3";
    ASSERT_GT(file.size(), 400u);
    EXPECT_TRUE(systemPath(file).starts_with(L"\\\\?\\")) << "not every system takes it otherwise";
    fso::writeWhole(file, "abc");
    fso::copyFile(file, folder + L"b.mp3");
    fso::moveFile(folder + L"b.mp3", folder + L"c.mp3");
    EXPECT_TRUE(fso::FileExists(folder + L"c.mp3"));
    EXPECT_EQ(fso::readAll(folder + L"c.mp3"), "abc");
    EXPECT_EQ(fso::details(file).size, 3u);
    EXPECT_TRUE(fso::sameFile(file, folder + L"a.mp3"));
    EXPECT_EQ(fso::listFolder(folder).size(), 2u);
    fso::deleteFile(file);
    EXPECT_FALSE(fso::FileExists(folder + L"a.mp3"));
}

}  // namespace
}  // namespace tunovka
