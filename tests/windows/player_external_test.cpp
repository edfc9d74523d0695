// Files handed to other programs: to a stand-in that writes down how it was started.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "core/rozneapi.h"
#include "player/external_players.h"
#include "support/error_of.h"
#include "support/external_program.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

TEST(ExternalPlayers, getTheFileBetweenQuotationMarksAndTheirOwnPathWithout) {
    const ScratchFolder folder;
    const Recorder plain(folder / L"prehravac.exe");
    for (const wchar_t* name :
         {L"a.mp3", L"dve slová.mp3", L"Žltý kôň ľúbi.wma", L"Яблоко 歌.wav"}) {
        playInProgram(plain.path(), folder / name);
        EXPECT_EQ(plain.started(), kNormal + plain.path() + L" \"" + (folder / name) + L"\"");
    }
    folder.folder(L"Môj priečinok 歌");
    const Recorder blanks(folder / L"Môj priečinok 歌\\môj prehrávač.exe");
    playInProgram(blanks.path(), folder / L"a b.mp3");
    // The system itself puts a program between quotation marks when it had to find its blanks' end.
    std::wstring started = blanks.started();
    const std::wstring quoted = L"\"" + blanks.path() + L"\"";
    if (const auto at = started.find(quoted); at != started.npos)
        started.replace(at, quoted.size(), blanks.path());
    EXPECT_EQ(started, kNormal + blanks.path() + L" \"" + (folder / L"a b.mp3") + L"\"");
}

TEST(ExternalPlayers, aProgramThatCannotBeStartedIsNamed) {
    const ScratchFolder folder;
    const std::wstring text = folder.file(L"nie program.exe", "text");
    for (const std::wstring& program :
         {folder / L"niet.exe", text, std::wstring(L"Q:\\x\\y.exe")}) {
        try {
            playInProgram(program, folder / L"a.mp3");
            ADD_FAILURE() << "started";
        } catch (const RuntimeError& error) {
            EXPECT_NE(error.description.find(program), std::wstring::npos);
        }
    }
    EXPECT_NE(errorOf([] { playInProgram(L"", std::wstring(40000, L'a')); }), 0);
}

// The system's own helper stands in the current folder for the length of the test.
TEST(ExternalPlayers, openWithPassesThePathAsItIs) {
    const ScratchFolder folder;
    const Recorder helper(folder / L"rundll32.exe");
    wchar_t former[MAX_PATH] = L"";
    GetCurrentDirectoryW(MAX_PATH, former);
    SetCurrentDirectoryW(folder.path().c_str());
    openWith(L"E:\\Ľudové piesne\\歌.mp3");
    const std::wstring started = helper.started();
    SetCurrentDirectoryW(former);
    EXPECT_EQ(started,
              kMinimized + L"rundll32.exe shell32.dll, OpenAs_RunDLL E:\\Ľudové piesne\\歌.mp3");
}

TEST(ExternalPlayers, areFoundInTheRegistryAndStarted) {
    const ScratchFolder folder;
    EXPECT_EQ(ExternalPlayers::find().winamp, L"");
    {
        const TestKey empty(HKEY_CURRENT_USER, L"Software\\winamp", nullptr, L"");
        EXPECT_EQ(ExternalPlayers::find().winamp, L"") << "no program without a folder";
    }
    const Recorder winamp(folder / L"winamp.exe");
    const std::wstring winampFolder = folder.path().substr(0, folder.path().size() - 1);
    const TestKey first(HKEY_CURRENT_USER, L"Software\\winamp", nullptr, winampFolder);
    const TestKey second(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Multimedia\\WMPlayer",
                         L"Player.Path", L"C:\\Program Files\\wmplayer.exe");
    const TestKey third(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Multimedia\\MPlayer2",
                        L"Player.Path", L"C:\\mplayer2.exe");
    const ExternalPlayers players = ExternalPlayers::find();
    EXPECT_EQ(players.windowsMediaPlayer, L"C:\\Program Files\\wmplayer.exe");
    EXPECT_EQ(players.mediaPlayer2, L"C:\\mplayer2.exe");
    playInProgram(players.winamp, L"E:\\á b.mp3");
    EXPECT_EQ(winamp.started(), kNormal + winamp.path() + L" \"E:\\á b.mp3\"");
}

TEST(ExternalPlayers, theDefaultProgramOfAFileIsFoundAndStarted) {
    const ScratchFolder folder;
    const Recorder player(folder / L"prehravac.exe");
    const std::wstring file = folder.file(L"pieseň 歌.vrtilko");
    EXPECT_EQ(RozneApi::FindAssociatedProgram(file), L"");
    const TestKey kind(HKEY_LOCAL_MACHINE, L"Software\\Classes\\.vrtilko", nullptr,
                       L"vrtilko.zvuk");
    const TestKey classRoot(HKEY_LOCAL_MACHINE, L"Software\\Classes\\vrtilko.zvuk", nullptr,
                            L"Zvuk");
    const TestKey command(HKEY_LOCAL_MACHINE,
                          L"Software\\Classes\\vrtilko.zvuk\\shell\\open\\command", nullptr,
                          L"\"" + player.path() + L"\" \"%1\"");
    const std::wstring program = RozneApi::FindAssociatedProgram(file);
    ASSERT_EQ(CompareStringOrdinal(program.c_str(), -1, player.path().c_str(), -1, TRUE),
              CSTR_EQUAL)
        << testing::PrintToString(program);
    playInProgram(program, file);
    EXPECT_EQ(player.started(), kNormal + program + L" \"" + file + L"\"");
}

}  // namespace
}  // namespace tunovka
