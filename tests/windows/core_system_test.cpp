#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "core/ansi.h"
#include "core/existing_files.h"
#include "core/rozneapi.h"
#include "support/error_of.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

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
    scratch.folder(L"a");
    scratch.file(L"a\\1.mp3");
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
