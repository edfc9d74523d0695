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
#include "support/disk_faults.h"
#include "support/person.h"
#include "support/player_watch.h"
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
        const std::string song = contentOf(folder_ / L"ľúbezná.wma");
        folder_.file(L"zlý.wav", noise(200'000));
        folder_.file(L"zlý.wma", song.substr(0, 6000) + noise(20'000));
        folder_.file(L"krátky.wma", song.substr(0, song.size() / 3));
        folder_.file(L"zlý.pls", "File1=zl\xFD.wav\r\nFile2=nic.wma\r\nFile3=zl\xFD.wma\r\n");
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
    // Files that are set and replaced in quick succession, good and broken ones.
    void replaceWhatPlays() {
        for (int i = 0; i < 24; ++i) {
            static constexpr const wchar_t* kNames[] = {
                L"a.wav",       L"zlý.wav", L"čerešňový sad.mp3", L"krátky.wma", L"nic.mp3",
                L"Vitajte.m3u", L"zlý.wma", L"ľúbezná.wma",       L"zlý.pls"};
            explorer.player.play(ground.path() + kNames[i % std::size(kNames)]);
            runUntil([] { return false; }, static_cast<DWORD>(i * 7 % 51));
        }
        explorer.player.mp.release();
    }
    // A long command gives up what no disk answers, and the disk comes back.
    void giveUp() {
        Silence silence(L"E:");
        DiskQuestions<bool> questions;
        for (int i = 0; i < 4; ++i) questions.put([&] { return silence.hold(L"E:\\a"), true; });
        EXPECT_FALSE(questions.next(LoopHooks{yieldToEvents, [] { return true; }}));
        silence.end();
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
        search();
        edit();
        inform();
        play();
        replaceWhatPlays();
        for (int i = 0; i < 50; ++i) giveUp();
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

}  // namespace
}  // namespace tunovka
