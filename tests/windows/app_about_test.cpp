// The about window.
#include <gtest/gtest.h>
#include <windows.h>

#include "app/frm_o_programe.h"
#include "support/box_answers.h"

namespace tunovka {
namespace {

// The version that this program file carries, "1.2.3".
std::wstring fileVersion() {
    const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(VS_VERSION_INFO), RT_VERSION);
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(nullptr, found)));
    // The fixed part follows the block's head: three words, the key and its padding.
    const auto* info = reinterpret_cast<const VS_FIXEDFILEINFO*>(bytes + 40);
    EXPECT_EQ(info->dwSignature, 0xFEEF04BDu);
    return std::to_wstring(HIWORD(info->dwProductVersionMS)) + L"." +
           std::to_wstring(LOWORD(info->dwProductVersionMS)) + L"." +
           std::to_wstring(HIWORD(info->dwProductVersionLS));
}

TEST(About, ShowsTheVersionOfTheProgramFileWithNothingCutOff) {
    frmOprograme window(nullptr);
    EXPECT_EQ(window.lblnazov.text(), L"Tunovka");
    EXPECT_EQ(window.lblverzia.text(), L"Verzia " + fileVersion());
    EXPECT_FALSE(window.lblslogan.text().empty());
    for (const Label* label : {&window.lblnazov, &window.lblverzia, &window.lblslogan}) {
        EXPECT_GE(label->bounds().width, label->measured().width) << label->name();
        EXPECT_GE(label->bounds().height, label->measured().height) << label->name();
        EXPECT_LT(label->bounds().right(), window.clientSize().width) << label->name();
    }
    EXPECT_GT(window.PicLogo.bounds().width, 0);
}

TEST(About, ClosesOnItsPictureAndOnEscape) {
    frmOprograme pressed(nullptr);
    pressed.show();
    pressAndRelease(pressed.Tlacitko, WM_RBUTTONDOWN, WM_RBUTTONUP);
    EXPECT_FALSE(pressed.isClosing());
    pressAndRelease(pressed.Tlacitko);
    EXPECT_TRUE(pressed.isClosing());

    frmOprograme escaped(nullptr);
    Timer presser;
    presser.onTick = [&] {
        if (!GetFocus() || GetAncestor(GetFocus(), GA_ROOT) != escaped.handle()) return;
        presser.setInterval(0);
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0);
    };
    presser.setInterval(10);
    escaped.showModal();
    EXPECT_TRUE(escaped.isClosing());
}

}  // namespace
}  // namespace tunovka
