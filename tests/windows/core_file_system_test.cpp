#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "core/drives.h"
#include "core/errors.h"
#include "core/existing_files.h"
#include "core/file_system.h"
#include "core/handle.h"
#include "support/error_of.h"
#include "support/machine.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

namespace fso = FileSystemObject;

const std::wstring kForeign = L"песня 歌 ľščťžýáíé.mp3";  // no code page holds all of it

TEST(FileSystemObject, TellsFilesFromFoldersAndFromNothing) {
    ScratchFolder scratch;
    const std::wstring file = scratch.file(L"pieseň.mp3");
    const std::wstring folder = scratch.folder(L"hudba");

    EXPECT_TRUE(fso::FileExists(file));
    EXPECT_TRUE(fso::FileExists(scratch / L"PIESEŇ.MP3"));
    EXPECT_TRUE(fso::FileExists(scratch / L"hudba/..//pieseň.mp3"));
    EXPECT_TRUE(fso::FolderExists(folder));
    EXPECT_TRUE(fso::FolderExists(folder + L"\\"));
    EXPECT_FALSE(fso::FolderExists(file));

    const std::wstring nul = file + std::wstring(1, L'\0') + L".txt";
    for (const std::wstring& none :
         {std::wstring(), folder, file + L"\\", scratch / L"*.mp3", scratch / L"pie?eň.mp3",
          scratch / L"nul", scratch / L"nul.mp3", scratch / L"nie\\je.mp3", nul,
          scratch / std::wstring(300, L'a')})
        EXPECT_FALSE(fso::FileExists(none)) << none.size();
}

TEST(FileSystemObject, ReadsWholeAndInParts) {
    ScratchFolder scratch;
    std::string content(700000, 'a');
    content[699999] = 'z';
    const std::wstring file = scratch.file(kForeign, content);
    EXPECT_EQ(fso::readAll(file), content);
    EXPECT_EQ(fso::readPart(file, 699998, 10), "az");
    EXPECT_EQ(fso::readPart(file, 700001, 10), "");
    EXPECT_EQ(fso::readAll(scratch.file(L"empty", "")), "");
    EXPECT_EQ(errorOf([&] { fso::readAll(scratch / L"none"); }), kFileNotFound);
    EXPECT_EQ(errorOf([&] { fso::readAll(scratch / L"none\\none"); }), kPathNotFound);
    EXPECT_EQ(errorOf([&] { fso::readAll(scratch.path()); }), kFileNotFound);
}

TEST(FileSystemObject, WritesAFileWholeAndKeepsWhatItWas) {
    ScratchFolder scratch;
    const std::wstring file = scratch / kForeign;
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

TEST(FileSystemObject, TakesPathsOfAnyLength) {
    ScratchFolder scratch;
    std::wstring folder = scratch.path();
    for (int depth = 0; depth < 4; ++depth) {
        folder += std::wstring(99, L'd') + L"\\";
        ASSERT_TRUE(CreateDirectoryW((L"\\\\?\\" + folder).c_str(), nullptr));
    }
    const std::wstring file = folder + L"..\\./" + std::wstring(99, L'd') + L"/a.mp3";
    ASSERT_GT(file.size(), 400u);
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

TEST(FileSystemObject, CopiesAndReplacesButNeverOntoItself) {
    ScratchFolder scratch;
    const std::wstring song = scratch.file(L"song.mp3", "new");
    scratch.folder(L"to");
    scratch.file(L"to\\song.mp3", "old");
    {
        const FILETIME lastYear{0, 0x01D80000};
        const FileHandle file(CreateFileW(song.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr,
                                          OPEN_EXISTING, 0, nullptr));
        SetFileTime(file.get(), nullptr, nullptr, &lastYear);
    }
    SetFileAttributesW(song.c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_TRUE(fso::copyFile(song, scratch / L"to\\"));
    EXPECT_EQ(fso::readAll(scratch / L"to\\song.mp3"), "new");
    EXPECT_TRUE(fso::attributes(scratch / L"to\\song.mp3") & FILE_ATTRIBUTE_HIDDEN);
    const FileDate was = fso::details(song).modified;
    const FileDate is = fso::details(scratch / L"to\\song.mp3").modified;
    EXPECT_TRUE(is.year == was.year && is.day == was.day && is.second == was.second);

    for (const wchar_t* self : {L"song.mp3", L"SONG.MP3", L"to\\..\\song.mp3", L""})
        EXPECT_EQ(errorOf([&] { fso::copyFile(song, scratch / self); }), kPermissionDenied) << self;
    EXPECT_EQ(errorOf([&] { fso::copyFile(song, scratch / L"to"); }), kPermissionDenied);
    EXPECT_EQ(errorOf([&] { fso::copyFile(scratch / L"none", scratch / L"x"); }), kFileNotFound);
    EXPECT_EQ(errorOf([&] { fso::copyFile(scratch / L"to", scratch / L"x"); }), kFileNotFound);
    EXPECT_EQ(errorOf([&] { fso::copyFile(song, scratch / L"none\\x"); }), kPathNotFound);
    makeReadOnly(scratch / L"to\\song.mp3");
    EXPECT_EQ(errorOf([&] { fso::copyFile(song, scratch / L"to\\"); }), kPermissionDenied);
    EXPECT_EQ(fso::readAll(song), "new");
    EXPECT_EQ(scratch.names().size(), 2u);
}

TEST(FileSystemObject, KnowsAFileBehindEverySpelling) {
    ScratchFolder scratch;
    const std::wstring song = scratch.file(L"dlhý názov piesne.mp3", "abc");
    const std::wstring twin = scratch.file(L"twin.mp3", "abc");
    EXPECT_TRUE(fso::sameFile(song, scratch / L"DLHÝ NÁZOV PIESNE.MP3"));
    EXPECT_TRUE(fso::sameFile(song, scratch / fso::shortName(song)));
    EXPECT_FALSE(fso::sameFile(song, twin));
    EXPECT_FALSE(fso::sameFile(song, scratch / L"none"));
    EXPECT_FALSE(fso::sameFile(L"", L""));
    ASSERT_TRUE(CreateHardLinkW((scratch / L"hard.mp3").c_str(), song.c_str(), nullptr));
    EXPECT_TRUE(fso::sameFile(song, scratch / L"hard.mp3"));
    EXPECT_EQ(errorOf([&] { fso::copyFile(song, scratch / L"hard.mp3"); }), kPermissionDenied);
    EXPECT_EQ(fso::readAll(song), "abc");
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

}  // namespace
}  // namespace tunovka
