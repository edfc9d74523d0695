// What an hour brings, again and again without its pauses: songs, searches, playlists, files.
// Nothing may be left of it. TUNOVKA_LONG_USE tells how often at the most, by hand.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <iostream>

#include "app/frm_prieskumnik.h"
#include "core/disk_questions.h"
#include "editor/frm_plejlist.h"
#include "endurance/resources.h"
#include "search/frm_hladanie.h"
#include "support/disk_faults.h"
#include "support/player_watch.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

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

class LongUse : public testing::Test {
  protected:
    LongUse() {
        const std::wstring tones = samplesFolder() + L"Skúšky\\";
        const std::string song = contentOf(tones + L"Tón 659 Hz.wma");
        folder.file(L"a.wav", tone(4));
        folder.file(L"b.mp3", contentOf(tones + L"Tón 523 Hz.mp3"));
        folder.file(L"c.wma", song);
        folder.file(L"d.m3u", "nic.mp3\r\na.wav\r\nb.mp3\r\n");
        folder.file(L"noise.wav", noise(200'000));
        folder.file(L"noise.wma", song.substr(0, 6000) + noise(20'000));
        folder.file(L"third.wma", song.substr(0, song.size() / 3));
        folder.file(L"noise.pls", "File1=noise.wav\r\nFile2=nic.wma\r\nFile3=noise.wma\r\n");
        std::string many;
        for (int i = 0; i < 500; ++i)
            many += i % 3 ? "a.wav\r\n" : "nic" + std::to_string(i) + ".mp3\r\n";
        folder.file(L"many.m3u", many);

        installFailureNotice();
        explorer = &Forms::load<frmPrieskumnik>();
        explorer->load();
        explorer->folders.strom.select(folder.path());
        explorer->contents.ListFolderContents(folder.path());
    }
    ~LongUse() override {
        Forms::unloadAll();
        runLoop();
    }

    void choose(const wchar_t* key, const wchar_t* entry) {
        explorer->contents.Tview.select(key);
        explorer->contents.Tview.onSelectionByKey();
        explorer->prehrat.choose(entry);
    }
    void play() {
        MediaPlayer& mp = explorer->player.mp;
        // The label of the time, told by a timer, has no window before its first text.
        const auto heard = [&] {
            return mp.CurrentPosition() > 0 && !explorer->player.lblušielčas.text().empty();
        };
        for (const wchar_t* name : {L"a.wav", L"b.mp3", L"c.wma", L"d.m3u"}) {
            explorer->player.play(folder / name);
            ASSERT_TRUE(runUntil(heard)) << name;
            mp.Pause();
            mp.Play();
            mp.setCurrentPosition(mp.Duration() / 2);
            mp.Next();
        }
        // Replaced in quick succession, good and broken ones.
        for (int i = 0; i < 24; ++i) {
            static constexpr const wchar_t* kNames[] = {L"a.wav",     L"noise.wav", L"b.mp3",
                                                        L"third.wma", L"nic.mp3",   L"d.m3u",
                                                        L"noise.wma", L"c.wma",     L"noise.pls"};
            explorer->player.play(folder / kNames[i % std::size(kNames)]);
            runUntil([] { return false; }, static_cast<DWORD>(i * 7 % 51));
        }
        mp.release();
    }
    void search() {
        explorer->menuprestrom.choose(L"prehladaj_adresar");
        auto& window = dynamic_cast<frmhladanie&>(*Forms::find(L"frmhladanie"));
        ASSERT_TRUE(runUntil([&] { return !window.isBusy() && window.Lview.count() > 5; }));
        window.menu1.choose(L"zostupne");
        window.unload();
        ASSERT_TRUE(runUntil([&] { return !Forms::find(L"frmhladanie"); }));
    }
    void edit() {
        choose(L"many.m3u", L"editovat_playlist");
        auto& window = dynamic_cast<frmplejlist&>(*Forms::loaded().back());
        for (const wchar_t* entry : {L"zoradit_zostupne", L"neradit", L"odstranit_polozku"})
            window.menu1.choose(entry);
        person.answer({1, 1});  // relative links, the notice
        person.saveAs({folder / L"saved.m3u"});
        window.menu1.choose(L"ulozit_ako_plejlist");
        EXPECT_TRUE(window.unload());
    }
    void careForFiles() {
        person.closeForms(L"frminfo");
        choose(L"b.mp3", L"info_o_subore");
        choose(L"a.wav", L"kopirovat_subor");
        person.saveAs({folder / L"copy.wav"});
        choose(L"a.wav", L"vlozit_subor");
        person.type({L"new"});
        choose(L"copy.wav", L"premenovat_subor");
        person.answer({1});
        choose(L"new.wav", L"zmazat_subor");
        EXPECT_FALSE(explorer->contents.Tview.contains(L"new.wav"));
    }
    // A long command gives up what no disk answers, and the disk comes back.
    void giveUp() {
        Silence silence(L"E:");
        DiskQuestions<bool> questions;
        for (int i = 0; i < 4; ++i) questions.put([&] { return silence.hold(L"E:\\a"), true; });
        EXPECT_FALSE(questions.next(LoopHooks{yieldToEvents, [] { return true; }}));
        silence.end();
    }
    void use() {
        for (int i = 0; i < 50; ++i) giveUp();
        search();
        edit();
        play();
        careForFiles();
        letTimersTick();
        person.seen = {};
        person.dialogs = {};
        person.inputs = {};
    }

    ScratchFolder folder{L"E:\\"};
    Person person;
    frmPrieskumnik* explorer;
};

TEST_F(LongUse, LeavesEverythingWhereItWas) {
    const char* const asked = std::getenv("TUNOVKA_LONG_USE");
    const int times = asked ? std::atoi(asked) : 3;
    bringDiskWorkers();
    for (int i = 0; i < 2; ++i) use();  // brings what is made once
    Resources before = Resources::now();
    // Something may still be made late, and once; a leak comes each time. The system's own threads,
    // which sound and questions to the shell call up, end after a while.
    bool grows = true;
    for (int i = 0; i < times && grows && !HasFailure(); ++i) {
        use();
        Resources after;
        grows = !runUntil([&] { return !(after = Resources::now()).exceeds(before); }, 10000);
        std::cout << before << " -> " << after << std::endl;
        before = after;
    }
    EXPECT_FALSE(grows);
}

}  // namespace
}  // namespace tunovka
