#include "ui/list_model.h"

#include <gtest/gtest.h>

#include "support/error_of.h"
#include "support/test_rows.h"

namespace tunovka {
namespace {

// Keys and names in display order. Every row must be found by its key.
std::wstring shown(const TestRows& rows) {
    std::wstring all;
    for (std::size_t i = 0; i < rows.count(); ++i) {
        const TestRow& row = rows.rows()[i];
        all += row.key + row.text + L" ";
        EXPECT_EQ(rows.find(row.key), row.key.empty() ? std::nullopt : std::optional(i));
    }
    return all;
}

// Where the rows of before a change have gone, as the model tells it: "2 - 0" and so on.
class Told {
  public:
    explicit Told(TestRows& rows) : rows_(rows) {
        rows.onChange = [this](const ListChange& change) {
            for (std::size_t i = 0; change && i < before_; ++i) {
                const auto now = change(i);
                text_ += (now ? std::to_wstring(*now) : L"-") + L" ";
            }
            if (!change) text_ += L"new ";
            before_ = rows_.count();
        };
    }
    std::wstring taken() { return std::exchange(text_, {}); }

  private:
    TestRows& rows_;
    std::size_t before_ = rows_.count();
    std::wstring text_;
};

TEST(ListModel, SortsBothWaysKeepsEqualNamesInTheirOrderAndTakesNewRowsIn) {
    TestRows rows({{L"1", L"b"}, {L"2", L"A"}, {L"3", L"B"}, {L"4", L"a"}});
    Told told(rows);
    rows.sort(SortOrder::Descending);
    EXPECT_EQ(shown(rows), L"1b 3B 2A 4a ");
    EXPECT_EQ(told.taken(), L"0 2 1 3 ");
    rows.sort(SortOrder::Ascending);
    EXPECT_EQ(shown(rows), L"2A 4a 1b 3B ");
    told.taken();
    rows.add({L"5", L"a"});
    EXPECT_EQ(shown(rows), L"2A 4a 5a 1b 3B ");
    EXPECT_EQ(told.taken(), L"0 1 3 4 ");
    rows.setRows({{L"6", L"y"}, {L"7", L"x"}});
    EXPECT_EQ(shown(rows), L"7x 6y ");
    rows.sort(SortOrder::None);
    rows.add({L"8", L"a"});
    EXPECT_EQ(shown(rows), L"7x 6y 8a ");
}

TEST(ListModel, ACancelledSortLeavesEverything) {
    TestRows rows({{L"1", L"b"}, {L"2", L"a"}});
    Told told(rows);
    int left = 1;
    EXPECT_FALSE(rows.sort(SortOrder::Ascending, {.cancelled = [&] { return --left < 0; }}));
    EXPECT_EQ(shown(rows), L"1b 2a ");
    EXPECT_EQ(rows.sortOrder(), SortOrder::None);
    EXPECT_EQ(told.taken(), L"");
}

TEST(ListModel, TellsWhereMovedAndRemovedRowsHaveGone) {
    TestRows rows({{L"1"}, {L"2"}, {L"3"}, {L"4"}, {L""}});
    Told told(rows);
    rows.move(0, 2);
    EXPECT_EQ(shown(rows), L"2 3 1 4  ");
    EXPECT_EQ(told.taken(), L"2 0 1 3 4 ");
    rows.move(3, 0);
    EXPECT_EQ(shown(rows), L"4 2 3 1  ");
    EXPECT_EQ(told.taken(), L"1 2 3 0 4 ");
    EXPECT_EQ(rows.remove({L"3", L"gone", L"", L"4", L"3"}), 2u);
    EXPECT_EQ(shown(rows), L"2 1  ");
    EXPECT_EQ(told.taken(), L"- 0 - 1 2 ");
    rows.removeAt(2);
    EXPECT_EQ(told.taken(), L"0 1 - ");
    rows.setRows({});
    EXPECT_EQ(told.taken(), L"new ");
    EXPECT_THROW(rows.row(0), std::out_of_range);
}

TEST(ListModel, TypedLettersAreFoundFromAPositionOn) {
    const TestRows rows({{L"", L"Alfa"}, {L"", L"beta"}, {L"", L"ALBA"}, {L"", L"al"}});
    EXPECT_EQ(rows.findName(L"al", 1, false), 2u);
    EXPECT_EQ(rows.findName(L"ALF", 1, false), 0u);
    EXPECT_EQ(rows.findName(L"AL", 0, true), 3u);
    EXPECT_EQ(rows.findName(L"x", 0, false), std::nullopt);
    EXPECT_EQ(TestRows().findName(L"x", 0, false), std::nullopt);
}

}  // namespace
}  // namespace tunovka
