// The explorer's play sub-menu and the programs that it starts.
#include <gtest/gtest.h>

#include <cstring>

#include "support/file_menus.h"
#include "support/machine.h"

namespace tunovka {
namespace {

constexpr wchar_t kWindowsMediaPlayerKey[] = L"SOFTWARE\\Microsoft\\Multimedia\\WMPlayer";
constexpr wchar_t kMediaPlayer2Key[] = L"SOFTWARE\\Microsoft\\Multimedia\\MPlayer2";

class PlaySubmenu : public FileMenus {
  protected:
    bool isOn(const wchar_t* entry) const { return explorer->prehrat.isEnabled(entry); }
};

TEST_F(PlaySubmenu, OffersOnlyThePlayersThatAreThere) {
    folder.file(L"a.mp3");
    {
        const TestKey empty(HKEY_CURRENT_USER, L"Software\\winamp", nullptr, L"");
        show(L"a.mp3");
    }
    for (const wchar_t* entry : {L"prehraťtu", L"prehraťvprog", L"prehrat_v_programe"})
        EXPECT_TRUE(isOn(entry)) << entry;
    for (const wchar_t* entry : {L"prehratvoWinampe", L"prehraťvowmp", L"prehraťvmp2"}) {
        EXPECT_FALSE(isOn(entry)) << entry;
        choose(entry);  // does nothing
    }
    choose(L"prehraťvprog");  // the system knows no program for it
    EXPECT_TRUE(person.seen.empty());

    const TestKey found(HKEY_LOCAL_MACHINE, kMediaPlayer2Key, L"Player.Path", L"C:\\mplayer2.exe");
    explorer->playing.findPlayers();
    EXPECT_FALSE(isOn(L"prehraťvowmp"));
    EXPECT_TRUE(isOn(L"prehraťvmp2"));
}

TEST_F(PlaySubmenu, AProgramThatCannotBeStartedIsToldAndTheExplorerGoesOn) {
    const std::wstring gone = folder / L"niet.exe";
    const TestKey key(HKEY_LOCAL_MACHINE, kWindowsMediaPlayerKey, L"Player.Path", gone);
    folder.file(L"a.mp3");
    show(L"a.mp3");
    choose(L"prehraťvowmp");
    ASSERT_EQ(person.seen.size(), 1u);
    EXPECT_EQ(person.seen[0].title, L" CHYBA");
    EXPECT_EQ(person.seen[0].text,
              L"Program sa nepodarilo spustiť !\rChyba č. 53: Súbor sa nenašiel: " + gone);
    EXPECT_TRUE(explorer->isEnabled());
    EXPECT_FALSE(explorer->isClosing());
}

TEST_F(PlaySubmenu, AFileThatIsGoneIsToldInTwoWays) {
    const std::wstring file = folder.file(L"a.mp3");
    show(L"a.mp3");
    DeleteFileW(file.c_str());
    explorer->prehrat.choose(L"prehraťtu");
    explorer->prehrat.choose(L"prehrat_v_programe");
    explorer->prehrat.choose(L"prehraťvprog");  // no file, no program
    ASSERT_EQ(person.seen.size(), 2u);
    EXPECT_EQ(person.seen[0].text, L"Súbor sa v zadanom umiestnení nenacházda !!!");
    EXPECT_EQ(person.seen[1].text, L"Súbor sa v zadanom umiestnení nenacházda !");
}

// A copy of this test program stands for Winamp: see main.cpp.
TEST_F(PlaySubmenu, PlayersGetTheFileBetweenQuotationMarks) {
    folder.file(L"Яблоко 歌.wav");
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    const std::wstring program = folder / L"winamp.exe", record = folder / L"record";
    CopyFileW(self, program.c_str(), FALSE);
    SetEnvironmentVariableW(L"TUNOVKA_RECORD", record.c_str());
    const std::wstring place = folder.path().substr(0, folder.path().size() - 1);
    const TestKey key(HKEY_CURRENT_USER, L"Software\\winamp", nullptr, place);
    const TestKey kind(HKEY_CLASSES_ROOT, L".wav", nullptr, L"Pieseň");
    const TestKey open(HKEY_CLASSES_ROOT, L"Pieseň\\shell\\open\\command", nullptr,
                       program + L" \"%1\"");
    show(L"яблоко 歌.wav");
    person.answer({1});  // to what is told of a file that cannot be played
    const std::function<void()> ways[]{
        [&] { choose(L"prehratvoWinampe"); }, [&] { choose(L"prehraťvprog"); },
        [&] { explorer->player.mp.onNotification({MediaNotification::Kind::Error}); }};
    for (const auto& play : ways) {
        DeleteFileW(record.c_str());
        play();
        std::string bytes;
        ASSERT_TRUE(runUntil([&] { return !(bytes = contentOf(record)).empty(); }));
        std::wstring started(bytes.size() / sizeof(wchar_t), L'\0');
        std::memcpy(started.data(), bytes.data(), bytes.size());
        EXPECT_EQ(started, std::to_wstring(SW_SHOWNORMAL) + L"|" + program + L" \"" +
                               (folder / L"Яблоко 歌.wav") + L"\"");
    }
    SetEnvironmentVariableW(L"TUNOVKA_RECORD", nullptr);
}

}  // namespace
}  // namespace tunovka
