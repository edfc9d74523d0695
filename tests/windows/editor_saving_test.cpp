// What an editor writes: the bytes read back, targets that refuse, the close prompt.
#include <gtest/gtest.h>

#include "core/ansi.h"
#include "support/editor_stage.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

namespace fso = FileSystemObject;

class EditorSaving : public EditorStage {
  protected:
    EditorSaving() {
        folder.folder(L"sub");
        folder.file(L"sub\\d.mp3");
        program.folder = folder.path();
    }

    void saveAs(const std::wstring& name) {
        person.saveAs({folder / name});
        choose(L"ulozit_ako_plejlist");
    }
    std::string saved(const std::wstring& name) {
        saveAs(name);
        return contentOf(folder / name);
    }
};

TEST_F(EditorSaving, WritesTheLinksThatTheAnswerSaysAndTellsTheShownFolder) {
    open(L"a.mp3\r\nnie.mp3\r\nsub\\d.mp3\r\n");
    const std::wstring a = folder / L"a.mp3", d = folder / L"sub\\d.mp3";
    expect({1, 1, 0, 1});
    EXPECT_EQ(saved(L"sub\\out.pls"), "[playlist]\r\nFile1=.." + toAnsi(a.substr(2)) +
                                          "\r\nFile2=d.mp3\r\nNumberOfEntries=2\r\n");
    EXPECT_EQ(program.told, Texts{});  // that folder is not shown
    EXPECT_EQ(saved(L"out.PLS"), toAnsi(a + L"\r\n" + d + L"\r\n"));
    EXPECT_EQ(program.told, Texts{L"obnoviť"});
    EXPECT_EQ(person.seen.size(), 4u);
}

TEST_F(EditorSaving, TheDialogStartsFromThePlaylist) {
    open(L"a.mp3\r\n", L"mix.pls");
    program.folder = folder / L"sub\\";
    expect({1, 1});
    person.saveAs({L"mix"});
    choose(L"ulozit_ako_plejlist");
    EXPECT_EQ(contentOf(folder / L"mix"), "a.mp3\r\n");  // beside the playlist
    ASSERT_EQ(person.dialogs.size(), 1u);
    EXPECT_EQ(person.dialogs[0].title, L"Uložiť playlist");
    EXPECT_EQ(person.dialogs[0].name, L"mix");
    EXPECT_EQ(person.dialogs[0].filter, 2);
    EXPECT_EQ(view().lblplejlist.text(), folder / L"mix.pls");

    window->txtodkaz.setText(L"nový playlist");
    choose(L"ulozit_ako_plejlist");
    ASSERT_EQ(person.dialogs.size(), 2u);
    EXPECT_EQ(person.dialogs[1].name, L"");
    EXPECT_EQ(person.dialogs[1].filter, 1);
    EXPECT_EQ(person.seen.size(), 2u);  // a cancelled dialog asks and tells nothing
}

// The list stays to be saved again.
TEST_F(EditorSaving, AFailureIsToldAndReplacesNothing) {
    installFailureNotice();
    open(L"a.mp3\r\nb.wav\r\n", L"old.m3u");
    const std::wstring target = folder / L"old.m3u", before = L"a.mp3\r\nb.wav\r\n";
    pressKey(VK_DELETE);
    const auto failsWith = [&](const std::wstring& notice) {
        expect({1, 1});
        person.replaced = 0;
        guarded([&] { saveAs(L"old.m3u"); });
        ASSERT_TRUE(runUntil([&] { return person.seen.size() == 2; }));
        EXPECT_EQ(person.replaced, 1);
        EXPECT_EQ(person.seen[1].title, L" CHYBA");
        EXPECT_TRUE(person.seen[1].text.starts_with(notice)) << person.seen[1].text.c_str();
        EXPECT_EQ(contentOf(target), std::string(before.begin(), before.end()));
        EXPECT_TRUE(editor().document.changed());
        EXPECT_FALSE(window->isBusy());
    };
    makeReadOnly(target);
    failsWith(L"Chyba č. 70: Prístup bol odmietnutý.");
    SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
    {
        const FileHandle lock = locked(target, FILE_SHARE_READ);
        failsWith(L"Chyba č. 70: Súbor používa iný program.");
    }
    drop(folder.file(L"\x6F22.mp3"));
    failsWith(L"Chyba č. 5: Kódová stránka");
    pressKey(VK_DELETE);
    expect({1, 1});
    EXPECT_EQ(saved(L"old.m3u"), "b.wav\r\n");
    EXPECT_FALSE(editor().document.changed());
}

TEST_F(EditorSaving, ClosingTheWindowMidwayWritesNothing) {
    openLong(30'000);
    pressKey(VK_DELETE);
    expect({2, 2});  // absolute links; no saving on closing
    // As soon as the writing lets events run.
    const When writing([&] { return !person.seen.empty() && !openForm(L"frmBox"); },
                       [&] { EXPECT_TRUE(window->unload()); }, 1);
    saveAs(L"out.m3u");
    EXPECT_TRUE(writing.happened());
    EXPECT_FALSE(fso::FileExists(folder / L"out.m3u"));
    EXPECT_EQ(person.seen.size(), 2u);
}

TEST_F(EditorSaving, ClosingAsksOnlyAboutChangesAndItsFirstAnswerSavesNothing) {
    open(L"b.wav\r\na.mp3\r\n");
    choose(L"zoradit_vzostupne");
    EXPECT_TRUE(window->unload());

    open(L"a.mp3\r\nb.wav\r\n");
    pressKey(VK_DELETE);
    expect({3, 0, 1});
    EXPECT_FALSE(window->unload());
    EXPECT_FALSE(window->unload());
    EXPECT_TRUE(editor().document.changed());
    EXPECT_TRUE(window->unload());
    EXPECT_EQ(person.seen.size(), 3u);
    // That answer reads like a saving one and is none; this is meant.
    EXPECT_EQ(person.dialogs.size(), 0u);
    EXPECT_EQ(contentOf(folder / L"list.m3u"), "a.mp3\r\nb.wav\r\n");

    renew();
    window->txtodkaz.setText(L"nový playlist");
    drop(folder / L"a.mp3");
    person.saveAs({folder / L"never.m3u"});
    expect({1});
    EXPECT_TRUE(window->unload());
    ASSERT_EQ(person.dialogs.size(), 1u);
    EXPECT_EQ(person.dialogs[0].title, L"Uložiť playlist");
    EXPECT_FALSE(fso::FileExists(folder / L"never.m3u"));
}

// Another program may still keep the session: nothing is closed or asked before it really ends.
TEST_F(EditorSaving, ChangesKeepTheSessionAndNothingIsAsked) {
    open(L"a.mp3\r\nb.wav\r\n");
    const auto mayEnd = [&] { return SendMessageW(window->handle(), WM_QUERYENDSESSION, 0, 0); };
    EXPECT_TRUE(mayEnd());
    pressKey(VK_DELETE);
    EXPECT_FALSE(mayEnd());
    SendMessageW(window->handle(), WM_ENDSESSION, FALSE, 0);
    EXPECT_FALSE(window->isClosing());
    SendMessageW(window->handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_TRUE(window->isClosing());
    EXPECT_TRUE(person.seen.empty());
}

}  // namespace
}  // namespace tunovka
