#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "core/ansi.h"
#include "core/existing_files.h"
#include "core/rozneapi.h"
#include "core/system_windows.h"
#include "support/disk_faults.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

namespace fso = FileSystemObject;

// Whether one file is asked for or many.
TEST(ExistingFiles, AreFilesThatTheDiskHas) {
    ScratchFolder scratch;
    scratch.fill(
        {L"Dlhý názov piesne.mp3", L"песня.mp3", L"hudba\\", L"hudba\\a.mp3", L"hudba\\b.mp3\\"});
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

TEST(Ansi, GivesBackEveryByteAndRefusesWhatTheCodePageCannotHold) {
    if (GetACP() != 1250) GTEST_SKIP() << "the system's code page is another one";
    for (int byte = 1; byte < 256; ++byte) {
        const std::string bytes(1, static_cast<char>(byte));
        EXPECT_EQ(toAnsi(fromAnsi(bytes)), bytes) << byte;
    }
    EXPECT_EQ(toAnsi(L"ľščťžýáíé?"), "\xBE\x9A\xE8\x9D\x9E\xFD\xE1\xED\xE9?");
    // A letter with a "best fit", two alphabets, a pair of surrogates and a half of one.
    for (const wchar_t* text : {L"ñandú", L"π", L"песня", L"a😀b", L"\xD83D"})
        EXPECT_EQ(errorOf([&] { toAnsi(text); }), kInvalidCall);
    // Where the system's code page is UTF-8.
    EXPECT_EQ(fromCodePage(CP_UTF8, "\xC4\x8D\xE6\xAD\x8C.mp3"), L"č歌.mp3");
    EXPECT_EQ(fromCodePage(CP_UTF8, "\xE8\x61j.mp3"), L"čaj.mp3");
    EXPECT_EQ(toCodePage(CP_UTF8, L"č歌.mp3"), "\xC4\x8D\xE6\xAD\x8C.mp3");
    EXPECT_EQ(errorOf([] { toCodePage(CP_UTF8, L"\xD83D"); }), kInvalidCall);
}

void setFolderTime(const std::wstring& folder, std::uint64_t ticks) {
    const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    ASSERT_TRUE(setTimes(folder, &time));
}

TEST(ExistingFiles, TrustsTheTimesOfFoldersOnlyWhereTheyAreFine) {
    constexpr std::uint64_t kCoarse = 132'000'000'000'000'000, kFine = kCoarse + 7;
    ScratchFolder scratch;
    for (const std::uint64_t old : {kFine, kCoarse}) {
        const std::wstring name = std::to_wstring(old), folder = scratch.folder(name);
        setFolderTime(folder, old);
        ExistingFiles files;
        const auto contains = [&] {
            files.beginOperation();
            files.ask(folder + L"\\a.mp3");
            return files.answers({})->front();
        };
        EXPECT_FALSE(contains());
        scratch.file(name + L"\\a.mp3");
        EXPECT_TRUE(contains());  // created
        DeleteFileW((folder + L"\\a.mp3").c_str());
        EXPECT_FALSE(contains());
        setFolderTime(folder, old);
        EXPECT_FALSE(contains());
        // As on a disk that keeps no time of a folder's changes: seen where the time is coarse.
        scratch.file(name + L"\\a.mp3");
        setFolderTime(folder, old);
        EXPECT_EQ(contains(), old == kCoarse);
    }
}

TEST(RozneApi, FollowsLinksEachTargetOnce) {
    ScratchFolder scratch, outside;
    outside.file(L"vonku.mp3");
    scratch.fill({L"a\\", L"a\\1.mp3"});
    if (!makeLink(scratch / L"a\\kruh", scratch.path(), true)) GTEST_SKIP() << "no links here";
    ASSERT_TRUE(makeLink(scratch / L"von", outside.path(), true));
    ASSERT_TRUE(makeLink(scratch / L"von znova", outside.path(), true));
    ASSERT_TRUE(makeLink(scratch / L"a surodenec", scratch / L"a", true));
    std::vector<std::wstring> names;
    for (const std::wstring& file : RozneApi::CollectFiles(scratch.path()))
        names.push_back(fileName(file));
    std::ranges::sort(names);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"1.mp3", L"vonku.mp3"}));
}

}  // namespace
}  // namespace tunovka
