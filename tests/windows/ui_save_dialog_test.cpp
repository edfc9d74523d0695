#include "ui/save_dialog.h"

#include <gtest/gtest.h>

#include "support/person.h"
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
    Person person;
    person.onDialog = [&](HWND) { EXPECT_FALSE(form.isEnabled() || other.isEnabled()); };
    person.saveAs({L"ďalší zoznam", L""});
    const std::wstring path =
        askSavePath(form, {.title = L"Uložiť ako playlist...",
                           .filter = L"playlist Winampu (*.m3u)|*.m3u|Textový súbor (*.txt)|*.txt",
                           .filterIndex = 2,
                           .folder = folder.path(),
                           .name = L"mix"});
    EXPECT_EQ(path, folder / L"ďalší zoznam");
    EXPECT_EQ(askSavePath(form, {.title = L"t", .filter = L"a|*.a", .name = L"not:a|name"}), L"");
    ASSERT_EQ(person.dialogs.size(), 2u);
    EXPECT_EQ(person.dialogs[0].title, L"Uložiť ako playlist...");
    EXPECT_EQ(person.dialogs[0].name, L"mix");
    EXPECT_EQ(person.dialogs[0].filter, 2);
    GetCurrentDirectoryW(MAX_PATH, after);
    EXPECT_STREQ(before, after);
    EXPECT_TRUE(form.isEnabled() && other.isEnabled());
}

}  // namespace
}  // namespace tunovka
