// The playlist editor over disks that never answer or refuse to be looked at.
#include <gtest/gtest.h>

#include <atomic>

#include "core/errors.h"
#include "support/disk_faults.h"
#include "support/editor_stage.h"

namespace tunovka {
namespace {

class EditorOfDisks : public EditorStage {
  protected:
    OddDisk disk;
};

TEST_F(EditorOfDisks, SaysThatAFileIsDeniedAndNeitherPlaysNorCallsItMissing) {
    open(L"a.mp3\r\nb.wav\r\nnone.mp3\r\n");
    disk.become([](DiskCall call, const std::wstring& path, DWORD&) {
        const bool refused = call == DiskCall::Attributes && path.ends_with(L"a.mp3");
        return refused ? DWORD{ERROR_ACCESS_DENIED} : DWORD{ERROR_SUCCESS};
    });
    window->select(1);
    window->select(0);
    const std::wstring denied = errorDescription(kPermissionDenied);
    EXPECT_EQ(view().lblbar.text(), denied);
    for (const wchar_t* entry : {L"prehrat", L"info_o_subore"}) {
        expect({1});
        choose(entry);
        ASSERT_EQ(person.seen.size(), 1u) << entry;
        EXPECT_EQ(person.seen[0].text, denied);
    }
    EXPECT_TRUE(program.told.empty());
    window->select(2);
    choose(L"info_o_subore");
    EXPECT_EQ(program.told, Texts{L"info:chyba"});
}

// Each question of a long command is the one during which the window closes.
TEST_F(EditorOfDisks, ClosesWhileAnyQuestionOfACommandIsPending) {
    folder.folder(L"d");
    for (const wchar_t* name : {L"d\\a.mp3", L"d\\b.mp3"}) folder.file(name);
    folder.file(L"more.m3u", "d\\b.mp3\r\na.mp3\r\n");
    const std::wstring home = folder.path().substr(0, folder.path().size() - 1);
    const std::vector<std::pair<const wchar_t*, std::function<void()>>> commands{
        {L"load", [&] { window->txtodkaz.setText(folder / L"more.m3u"); }},
        {L"merge", [&] { drop(folder / L"more.m3u"); }},
        {L"invalid", [&] { choose(L"odstranit_neplatne_odkazy"); }},
        {L"duplicates", [&] { choose(L"odstranit_duplicitu"); }},
        {L"restore", [&] { choose(L"neradit"); }},
        {L"save", [&] { choose(L"ulozit_ako_plejlist"); }},
    };
    for (const auto& [name, command] : commands) {
        int pending = 0;
        for (bool met = true; met; ++pending) {
            met = false;
            // Folders that were written to a moment ago are asked again.
            for (const wchar_t* name : {L"new", L"d\\new"}) DeleteFileW(folder.file(name).c_str());
            open(L"d\\a.mp3\r\nb.wav\r\nnone.mp3\r\n");
            if (name == std::wstring(L"load")) renew();
            person.saveAs({folder / L"saved.m3u"});
            expect({1, 1, 1});
            Silence silence(home);
            std::atomic<int> left = pending;
            disk.become([&](DiskCall call, const std::wstring& path, DWORD&) {
                // A single question is one about a file's attributes.
                const bool isSingle = call == DiskCall::Attributes && !path.ends_with(L'\\');
                if (path.starts_with(home) && !isSingle && left-- == 0) silence.hold(path);
                return DWORD{ERROR_SUCCESS};
            });
            Timer timer;
            timer.onTick = [&] {
                if (silence.held() == 0 || met) return;
                met = true;
                PostMessageW(window->handle(), WM_CLOSE, 0, 0);
            };
            timer.setInterval(5);
            const DWORD start = GetTickCount();
            command();
            EXPECT_LT(GetTickCount() - start, 3000u) << name << pending;
            EXPECT_TRUE(runUntil([&] { return window->isClosing() == met; })) << name << pending;
            timer.setInterval(0);
            silence.end();
            disk.become({});
        }
        EXPECT_GT(pending, 1) << name;
    }
}

}  // namespace
}  // namespace tunovka
