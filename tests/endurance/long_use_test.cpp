// What an hour brings, again and again without its pauses: songs, searches, playlists, files.
// Nothing may be left of it. TUNOVKA_LONG_USE tells how often, by hand.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <deque>
#include <iostream>
#include <memory>

#include "app/frm_prieskumnik.h"
#include "core/disk_questions.h"
#include "core/handle.h"
#include "core/loop.h"
#include "editor/frm_plejlist.h"
#include "endurance/resources.h"
#include "search/frm_hladanie.h"
#include "support/last_words.h"
#include "support/person.h"
#include "support/scratch_folder.h"
#include "ui/form.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

// Opens the explorer on a folder, as the program's start does.
frmPrieskumnik& startProgram(const std::wstring& folder) {
    installFailureNotice();
    MultiMedialny::InitSharedTables();
    frmPrieskumnik& explorer = Forms::load<frmPrieskumnik>();
    explorer.load();
    explorer.folders.strom.select(folder);
    explorer.contents.ListFolderContents(folder);
    return explorer;
}

// Brings the workers that are kept for questions to disks: how many a use needs at once depends on
// how busy the machine is.
void bringDiskWorkers() {
    const KernelHandle go(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const std::function wait = [&go] { return WaitForSingleObject(go.get(), INFINITE); };
    std::deque<DiskQuestions<DWORD>> askers(8);
    for (auto& asker : askers) asker.put(wait);
    SetEvent(go.get());
    for (auto& asker : askers) asker.next(std::wstring());
}

// A number that the person who starts the test may set in the environment.
int setting(const char* name, int otherwise) {
    const char* const text = std::getenv(name);
    return text ? std::atoi(text) : otherwise;
}

// A small collection in a folder of drive E:.
class Ground {
  public:
    Ground() {
        copy(samplesFolder(), L"");
        std::string many;
        for (int i = 0; i < 500; ++i)
            many += i % 3 ? "a.wav\r\n" : "niet" + std::to_string(i) + ".mp3\r\n";
        folder_.file(L"a.wav", contentOf(samplesFolder() + L"Skúšky\\Ladička 440 Hz.wav") + "x");
        folder_.file(L"veľa.m3u", many);
    }
    const std::wstring& path() const { return folder_.path(); }  // ends in "\"

  private:
    void copy(const std::wstring& from, const std::wstring& to) {
        for (const FolderEntry& entry : FileSystemObject::listFolder(from + to)) {
            if (!entry.isFolder()) {
                folder_.file(to + entry.name, contentOf(from + to + entry.name));
                continue;
            }
            folder_.folder(to + entry.name);
            copy(from, to + entry.name + L"\\");
        }
    }

    ScratchFolder folder_{L"E:\\"};
};

template <typename Window>
Window* opened() {
    for (Form* form : Forms::loaded())
        if (auto* window = dynamic_cast<Window*>(form)) return window;
    return nullptr;
}

class LongUse : public testing::Test {
  protected:
    ~LongUse() override {
        Forms::unloadAll();
        runLoop();
    }

    void select(const wchar_t* key) {
        explorer.contents.Tview.select(key);
        explorer.contents.Tview.onSelectionByKey();
    }
    void choose(const wchar_t* key, const wchar_t* entry) {
        select(key);
        explorer.prehrat.choose(entry);
    }

    void play() {
        MediaPlayer& mp = explorer.player.mp;
        // The label of the time, told by a timer, has no window before its first text.
        const auto heard = [&] {
            return mp.CurrentPosition() > 0 && !explorer.player.lblušielčas.text().empty();
        };
        for (const wchar_t* name :
             {L"a.wav", L"čerešňový sad.mp3", L"ľúbezná.wma", L"Vitajte.m3u"}) {
            explorer.player.play(ground.path() + name);
            ASSERT_TRUE(runUntil(heard)) << name;
            mp.Pause();
            mp.Play();
            mp.setCurrentPosition(mp.Duration() / 2);
            mp.Next();
        }
        mp.release();
    }
    void search() {
        explorer.menuprestrom.choose(L"prehladaj_adresar");
        auto* const window = opened<frmhladanie>();
        ASSERT_TRUE(window);
        ASSERT_TRUE(runUntil([&] { return !window->isBusy() && window->Lview.count() > 5; }));
        window->menu1.choose(L"zostupne");
        window->unload();
        ASSERT_TRUE(runUntil([&] { return !Forms::find(L"frmhladanie"); }));
    }
    frmplejlist& openEditor() {
        choose(L"veľa.m3u", L"editovat_playlist");
        return *opened<frmplejlist>();
    }
    void edit() {
        frmplejlist& window = openEditor();
        for (const wchar_t* entry : {L"zoradit_zostupne", L"neradit", L"odstranit_polozku"})
            window.menu1.choose(entry);
        window.Lview_OLEDragDrop(ground.path() + L"a.wav", {}, {});
        person.answer({2});  // no saving on closing
        EXPECT_TRUE(window.unload());
    }
    void inform() {
        person.closeForms(L"frminfo");
        choose(L"čerešňový sad.mp3", L"info_o_subore");
    }
    void save() {
        frmplejlist& window = openEditor();
        person.answer({1, 1});  // relative links, the notice
        person.saveAs({ground.path() + L"uložený.m3u"});
        window.menu1.choose(L"ulozit_ako_plejlist");
        EXPECT_TRUE(window.unload());
    }
    void careForFiles() {
        choose(L"a.wav", L"kopirovat_subor");
        person.saveAs({ground.path() + L"kópia.wav"});
        choose(L"a.wav", L"vlozit_subor");
        person.type({L"nová"});
        choose(L"kópia.wav", L"premenovat_subor");
        person.answer({1});
        choose(L"nová.wav", L"zmazat_subor");
        EXPECT_FALSE(explorer.contents.Tview.contains(L"nová.wav"));
    }

    Ground ground;
    Person person;
    frmPrieskumnik& explorer = startProgram(ground.path());
};

TEST_F(LongUse, LeavesEverythingWhereItWas) {
    const auto use = [&] {
        LastWords::goesOn();
        search();
        edit();
        inform();
        play();
        save();
        careForFiles();
        settle();
        person.seen = {};
        person.dialogs = {};
        person.inputs = {};
    };
    const int times = setting("TUNOVKA_LONG_USE", 3);
    bringDiskWorkers();
    for (int i = 0; i < 2; ++i) use();  // brings what is made once
    const Resources before = Resources::now();
    for (int i = 0; i < times && !HasFailure(); ++i) use();
    // The system's own threads, which sound and questions to the shell call up, end after a while.
    Resources after;
    EXPECT_TRUE(runUntil([&] { return !(after = Resources::now()).exceeds(before); }))
        << before << "\n"
        << after;
    std::cout << times << " times: " << before << " -> " << after << std::endl;
}

struct Menu : handle_kinds::NullIsNone<HMENU> {
    static void close(HMENU menu) { DestroyMenu(menu); }
};

// Something of each kind: 2 windows, a menu, a brush, 2 handles beside the event's, a thread.
struct Takings {
    static HWND window(DWORD style, HWND parent) {
        return CreateWindowW(L"STATIC", L"", style, 0, 0, 9, 9, parent, nullptr, nullptr, nullptr);
    }
    static DWORD WINAPI awaitEvent(void* event) { return WaitForSingleObject(event, INFINITE); }
    ~Takings() {
        SetEvent(event.get());
        WaitForSingleObject(thread.get(), INFINITE);
    }
    SystemWindow top{window(WS_POPUP, nullptr)}, unseen{window(0, HWND_MESSAGE)};
    Handle<Menu> menu{CreatePopupMenu()};
    Handle<handle_kinds::Gdi<HBRUSH>> brush{CreateSolidBrush(0x123456)};
    FileHandle file{locked(samplesFolder() + L"Vitajte.m3u", FILE_SHARE_READ)};
    KernelHandle event{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    KernelHandle thread{CreateThread(nullptr, 0, awaitEvent, event.get(), 0, nullptr)};
    std::unique_ptr<char[]> memory{new char[100]};
};

// The counts on which the long use relies.
TEST(Resources, SeesEachKind) {
    const Takings first;  // brings what the system itself makes once, as does the end of another
    { const Takings ended; }
    Resources::now();
    const Resources before = Resources::now();
    {
        const Takings takings;
        const Resources now = Resources::now();
        EXPECT_EQ(now.windows, before.windows + 2);
        EXPECT_EQ(now.menus, before.menus + 1);
        EXPECT_GE(now.gdi, before.gdi + 1);
        EXPECT_EQ(now.handles, before.handles + 2);
        EXPECT_EQ(now.threads, before.threads + 1);
        EXPECT_EQ(now.memory, before.memory + 100);
        EXPECT_TRUE(now.exceeds(before));
    }
    EXPECT_FALSE(Resources::now().exceeds(before)) << before << " -> " << Resources::now();
}

}  // namespace
}  // namespace tunovka
