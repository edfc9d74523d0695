// The explorer's play sub-menu and the programs that it starts.
#include <gtest/gtest.h>

#include <cstring>

#include "player/external_players.h"
#include "support/beside_program.h"
#include "support/error_of.h"
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
    EXPECT_TRUE(isOn(L"prehraťtu"));
    EXPECT_TRUE(isOn(L"prehraťvprog"));
    EXPECT_TRUE(isOn(L"prehrat_v_programe"));
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
    const std::wstring text = L"Súbor sa v zadanom umiestnení nenacházda ";
    EXPECT_EQ(person.seen[0], (BoxRequest{L" CHYBA", text + L"!!!", L"No čo už ..."}));
    EXPECT_EQ(person.seen[1], (BoxRequest{L" CHYBA", text + L"!", L"No čo už ..."}));
}

// A program that writes down how it was started, copied to a path.
class Recorder {
  public:
    explicit Recorder(const std::wstring& path) : path_(path) {
        CopyFileW(besideThisProgram(L"command_line_recorder.exe").c_str(), path.c_str(), FALSE);
    }

    const std::wstring& path() const { return path_; }

    // "show mode|command line", "" when it was not started.
    std::wstring started() const {
        const std::wstring record = path_ + L".txt";
        if (!runUntil([&] { return FileSystemObject::FileExists(record); })) return {};
        const std::string bytes = FileSystemObject::readAll(record);
        DeleteFileW(record.c_str());
        std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
        std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
        return text;
    }

  private:
    std::wstring path_;
};

const std::wstring kNormal = std::to_wstring(SW_SHOWNORMAL) + L"|";

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

}  // namespace
}  // namespace tunovka
