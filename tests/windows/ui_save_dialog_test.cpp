#include "ui/save_dialog.h"

#include <gtest/gtest.h>

#include "support/dialog_answers.h"
#include "support/scratch_folder.h"
#include "ui/form.h"

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

}  // namespace
}  // namespace tunovka
