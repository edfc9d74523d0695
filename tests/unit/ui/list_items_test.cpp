#include "ui/list_items.h"

#include <gtest/gtest.h>

#include "core/errors.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

// Sorts by the first letter alone, so that the tests see which rows count as equal.
std::string firstLetter(std::wstring_view text) {
    return text.empty() ? "" : std::string(1, static_cast<char>(text[0]));
}

ListItems filled(const std::vector<std::wstring>& texts) {
    ListItems items(firstLetter);
    for (const std::wstring& text : texts) items.add({.key = L"k" + text, .text = text});
    return items;
}

std::wstring texts(const ListItems& items) {
    std::wstring all;
    for (std::size_t i = 0; i < items.count(); ++i) {
        all += items.at(i).text + L" ";
        if (items.at(i).key.empty()) continue;
        EXPECT_EQ(items.find(items.at(i).key), i);
    }
    return all;
}

TEST(ListItems, keysAreUniqueAndFollowTheirRows) {
    ListItems items = filled({L"a", L"b", L"c"});
    items.add({.text = L"none"});
    items.add({.text = L"none"});
    EXPECT_EQ(items.find(L""), std::nullopt);
    EXPECT_EQ(errorOf([&] { items.add({.key = L"kb"}); }), kKeyNotUnique);
    EXPECT_EQ(errorOf([&] { items.addAll({{.key = L"new"}, {.key = L"ka"}}); }), kKeyNotUnique);
    EXPECT_EQ(errorOf([&] { items.setAll({{.key = L"x"}, {.key = L"x"}}); }), kKeyNotUnique);
    EXPECT_EQ(items.find(L"new"), std::nullopt);
    EXPECT_EQ(texts(items), L"a b c none none ");

    EXPECT_EQ(errorOf([&] { items.rename(L"ka", L"kb", L"?"); }), kKeyNotUnique);
    EXPECT_EQ(errorOf([&] { items.rename(L"gone", L"n", L"?"); }), kElementNotFound);
    items.rename(L"ka", L"kA", L"A");
    items.rename(L"kA", L"kA", L"AA");
    EXPECT_EQ(items.find(L"ka"), std::nullopt);
    EXPECT_EQ(texts(items), L"AA b c none none ");

    items.removeAt(3);
    EXPECT_EQ(items.remove({L"kc", L"gone", L"", L"kA", L"kc"}), 2u);
    EXPECT_EQ(texts(items), L"b none ");
    EXPECT_EQ(errorOf([&] { items.removeAt(2); }), kSubscriptOutOfRange);
    items.add({.key = L"kc", .text = L"c"});
    EXPECT_EQ(texts(items), L"b none c ");
}

TEST(ListItems, sortingIsStableBothWaysAndTakesNewRowsIn) {
    ListItems items = filled({L"b1", L"a1", L"b2", L"a2"});
    items.sort(SortOrder::Descending);
    EXPECT_EQ(texts(items), L"b1 b2 a1 a2 ");
    items.sort(SortOrder::Ascending);
    EXPECT_EQ(texts(items), L"a1 a2 b1 b2 ");
    EXPECT_EQ(items.add({.key = L"ka3", .text = L"a3"}), 2u);
    items.addAll({{.key = L"kc", .text = L"c"}, {.key = L"k0", .text = L"0"}});
    EXPECT_EQ(texts(items), L"0 a1 a2 a3 b1 b2 c ");
    ListItems refilled = filled({L"x"});
    refilled.sort(SortOrder::Descending);
    refilled.clear();
    refilled.addAll({{.text = L"d"}, {.text = L"e"}});
    EXPECT_EQ(texts(refilled), L"e d ");
    items.rename(L"k0", L"kb0", L"b0");
    items.move(0, 1);
    EXPECT_EQ(texts(items), L"a1 a2 a3 b1 b2 b0 c ");
    EXPECT_EQ(errorOf([&] { items.insert(0, {}); }), kInvalidCall);
    items.sort(SortOrder::None);
    items.insert(1, {.key = L"kz", .text = L"z"});
    EXPECT_EQ(texts(items), L"a1 z a2 a3 b1 b2 b0 c ");
    items.setAll({{.text = L"y"}, {.text = L"x"}});
    EXPECT_EQ(items.sortOrder(), SortOrder::None);
    EXPECT_EQ(texts(items), L"y x ");
}

TEST(ListItems, movingShiftsTheRowsBetween) {
    ListItems items = filled({L"a", L"b", L"c", L"d"});
    items.move(0, 2);
    EXPECT_EQ(texts(items), L"b c a d ");
    items.move(3, 0);
    EXPECT_EQ(texts(items), L"d b c a ");
    EXPECT_EQ(errorOf([&] { items.move(0, 4); }), kSubscriptOutOfRange);
}

TEST(ListItems, theMarkGoesWithItsRow) {
    ListItems items = filled({L"c", L"b", L"a"});
    items.setMark(0);
    items.sort(SortOrder::Ascending);
    EXPECT_EQ(items.mark(), 2u);
    items.remove({L"ka"});
    EXPECT_EQ(items.mark(), 1u);
    items.removeAt(1);
    EXPECT_EQ(items.mark(), std::nullopt);
    items.setMark(0);
    items.clear();
    EXPECT_EQ(items.mark(), std::nullopt);
}

TEST(ListItems, typedLettersAreFoundFromAPositionOn) {
    const ListItems items = filled({L"Alfa", L"beta", L"ALBA", L"al"});
    EXPECT_EQ(items.findText(L"al", 1, false), 2u);
    EXPECT_EQ(items.findText(L"ALF", 1, false), 0u);
    EXPECT_EQ(items.findText(L"AL", 0, true), 3u);
    EXPECT_EQ(items.findText(L"x", 0, false), std::nullopt);
    EXPECT_EQ(ListItems(firstLetter).findText(L"x", 0, false), std::nullopt);
}

}  // namespace
}  // namespace tunovka
