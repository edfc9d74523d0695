// The keyed tree on the system's control.
#include <gtest/gtest.h>

#include "core/errors.h"
#include "support/error_of.h"
#include "ui/form.h"
#include "ui/tree_view.h"

namespace tunovka {
namespace {

class Stage : public Form {
  public:
    Stage()
        : Form({.name = L"frmStage", .caption = L"", .size = {300, 300}}),
          tree({.name = L"strom", .text = L"Strom", .parent = this}) {
        tree.setBounds({0, 0, 300, 300});
        show();
    }
    TreeView tree;
};

class Tree : public testing::Test {
  protected:
    Stage stage;
    TreeView& tree = stage.tree;
};

TEST_F(Tree, KnowsNodesByKeyBothWays) {
    tree.add({.key = L"a", .text = L"Á"});
    tree.add({.parentKey = L"a", .key = L"a1", .text = L"prvá", .foreground = 255, .bold = true});
    tree.add({.parentKey = L"a", .key = L"a2", .text = L"druhá"});
    tree.add({.key = L"b", .text = L"B"});
    EXPECT_EQ(tree.count(), 4u);
    EXPECT_EQ(tree.firstRoot(), L"a");
    EXPECT_EQ(tree.firstChild(L"a"), L"a1");
    EXPECT_EQ(tree.nextSibling(L"a1"), L"a2");
    EXPECT_EQ(tree.nextSibling(L"a2"), L"");
    EXPECT_EQ(tree.text(L"a1"), L"prvá");
    EXPECT_EQ(tree.foreground(L"a1"), 255u);
    tree.select(L"a2");
    EXPECT_EQ(tree.selectedKey(), L"a2");
    const Rect area = tree.nodeArea(L"a2");
    EXPECT_EQ(tree.nodeAt({area.x + 2, area.y + 2}), L"a2");
    tree.sortChildren(L"a");
    EXPECT_EQ(tree.firstChild(L"a"), L"a2");
}

TEST_F(Tree, RefusesBadKeysAndStaysWhole) {
    tree.add({.key = L"a", .text = L"a"});
    EXPECT_EQ(errorOf([&] { tree.add({.key = L"a", .text = L"znova"}); }), kKeyNotUnique);
    EXPECT_EQ(errorOf([&] { tree.add({.key = L"", .text = L"bez kľúča"}); }), kInvalidCall);
    EXPECT_EQ(errorOf([&] { tree.add({.parentKey = L"x", .key = L"y"}); }), kElementNotFound);
    EXPECT_EQ(errorOf([&] { tree.remove(L"x"); }), kElementNotFound);
    EXPECT_EQ(tree.count(), 1u);
    EXPECT_EQ(tree.text(L"a"), L"a");
    tree.add({.key = L"b", .text = L"b"});
    EXPECT_EQ(errorOf([&] { tree.rename(L"b", L"a", L"a"); }), kKeyNotUnique);
    tree.rename(L"b", L"c", L"C");
    EXPECT_EQ(tree.text(L"c"), L"C");
    EXPECT_FALSE(tree.contains(L"b"));
}

TEST_F(Tree, RemovingForgetsAllBelow) {
    tree.add({.key = L"a", .text = L"a"});
    tree.add({.parentKey = L"a", .key = L"b", .text = L"b"});
    tree.add({.parentKey = L"b", .key = L"c", .text = L"c"});
    tree.select(L"c");
    tree.remove(L"b");
    EXPECT_EQ(tree.count(), 1u);
    tree.add({.parentKey = L"a", .key = L"c", .text = L"znova"});
    EXPECT_EQ(tree.text(L"c"), L"znova");
    tree.clear();
    EXPECT_EQ(tree.count(), 0u);
    EXPECT_EQ(tree.selectedKey(), L"");
    EXPECT_EQ(tree.firstRoot(), L"");
}

TEST_F(Tree, TellsEveryPressReleaseAndDoubleClick) {
    tree.add({.key = L"a", .text = L"a"});
    tree.add({.key = L"b", .text = L"b"});
    std::wstring told;
    tree.onMouseDown = [&](MouseButton button, Point) {
        told += (button == MouseButton::Left ? L"L" : L"R") + tree.selectedKey();
    };
    tree.onMouseUp = [&](MouseButton, Point) { told += L"u"; };
    tree.onNodeClick = [&](const std::wstring& key) { told += L"c" + key; };
    tree.onDoubleClick = [&] { told += L"2"; };
    const auto at = [&](const std::wstring& key) {
        const Rect area = tree.nodeArea(key);
        return MAKELPARAM(area.x + 3, area.y + 3);
    };
    SendMessageW(tree.handle(), WM_RBUTTONDOWN, MK_RBUTTON, at(L"b"));
    SendMessageW(tree.handle(), WM_RBUTTONUP, 0, at(L"b"));
    EXPECT_EQ(told, L"Rbu");
    told.clear();
    SendMessageW(tree.handle(), WM_LBUTTONDOWN, MK_LBUTTON, at(L"a"));
    SendMessageW(tree.handle(), WM_LBUTTONUP, 0, at(L"a"));
    SendMessageW(tree.handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, at(L"a"));
    SendMessageW(tree.handle(), WM_LBUTTONUP, 0, at(L"a"));
    EXPECT_EQ(told,
              L"Lauca"
              L"La2");
}

TEST_F(Tree, KeepsEnterFromTheForm) {
    std::vector<WORD> keys;
    tree.onKeyDown = [&](WORD key) { return keys.push_back(key), key == VK_RETURN; };
    MSG message{.hwnd = tree.handle(), .message = WM_KEYDOWN, .wParam = VK_RETURN};
    if (!IsDialogMessageW(stage.handle(), &message)) DispatchMessageW(&message);
    EXPECT_EQ(keys, std::vector<WORD>{VK_RETURN});
}

}  // namespace
}  // namespace tunovka
