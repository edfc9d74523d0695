#include "ui/save_dialog.h"

#include <gtest/gtest.h>

#include "support/dialog_answers.h"
#include "support/scratch_folder.h"
#include "ui/form.h"
#include "ui/timer.h"

namespace tunovka {
namespace {

class PlainForm : public Form {
  public:
    explicit PlainForm(const wchar_t* name)
        : Form(FormArgs{.name = name, .caption = name, .size = {200, 100}}) {
        show();
    }
};

TEST(SaveDialog, showsWhatItWasGivenAndReturnsTheNameAsTyped) {
    const ScratchFolder folder;
    PlainForm form(L"frmtest"), other(L"frmother");
    wchar_t before[MAX_PATH], after[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, before);
    const Answering answering(form.handle(), [&](HWND dialog) {
        EXPECT_EQ(itemText(dialog, kNameBox), L"mix");
        EXPECT_EQ(SendDlgItemMessageW(dialog, kFilterBox, CB_GETCURSEL, 0, 0), 1);
        wchar_t title[64] = L"";
        GetWindowTextW(dialog, title, 64);
        EXPECT_STREQ(title, L"Uložiť ako playlist...");
        EXPECT_FALSE(form.isEnabled());
        EXPECT_FALSE(other.isEnabled());
        SetDlgItemTextW(dialog, kNameBox, L"ďalší zoznam");
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    });
    const std::wstring path =
        askSavePath(form, {.title = L"Uložiť ako playlist...",
                           .filter = L"playlist Winampu (*.m3u)|*.m3u|Textový súbor (*.txt)|*.txt",
                           .filterIndex = 2,
                           .folder = folder.path(),
                           .name = L"mix"});
    EXPECT_EQ(path, folder / L"ďalší zoznam");
    GetCurrentDirectoryW(MAX_PATH, after);
    EXPECT_STREQ(before, after);
    EXPECT_TRUE(form.isEnabled());
    EXPECT_TRUE(other.isEnabled());
}

TEST(SaveDialog, cancellingGivesNothing) {
    PlainForm form(L"frmtest");
    const Answering answering(form.handle(),
                              [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
    EXPECT_EQ(askSavePath(form, {.title = L"t", .filter = L"a|*.a", .name = L"not:a|name"}), L"");
}

TEST(SaveDialog, asksBeforeAFileIsReplaced) {
    const ScratchFolder folder;
    const std::wstring path = folder.file(L"stary.m3u");
    PlainForm form(L"frmtest");
    int questions = 0;
    HWND question = nullptr;
    Timer refusing;
    refusing.onTick = [&] {
        const HWND dialog = dialogOf(form.handle());
        question = dialog ? dialogOf(dialog) : nullptr;
        if (!question) return;
        // No the first time, so that the dialog stays; then yes.
        PostMessageW(question, WM_COMMAND, ++questions == 1 ? IDNO : IDYES, 0);
        if (questions == 1) PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    };
    const Answering answering(form.handle(), [&](HWND dialog) {
        SetDlgItemTextW(dialog, kNameBox, L"stary.m3u");
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        refusing.setInterval(50);
    });
    EXPECT_EQ(askSavePath(form, {.title = L"t", .filter = L"m|*.m3u", .folder = folder.path()}),
              path);
    EXPECT_GE(questions, 2);
}

}  // namespace
}  // namespace tunovka
