#include <gtest/gtest.h>

#include "core/counter16.h"
#include "core/errors.h"
#include "core/text.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

TEST(Like, matchesTheWholeTextCaseSensitively) {
    struct Row {
        std::wstring text, pattern;
        bool matches;
    };
    for (const Row& row : std::vector<Row>{
             {L"a.mp3", L"*.mp3", true},
             {L"a.MP3", L"*.mp3", false},
             {L"", L"", true},
             {L"a5c", L"a#c", true},
             {L"c", L"[a-c]", true},
             {L"d", L"[a-c]", false},
             {L"b", L"[!a-c]", false},
             {L"aXbXc", L"*X*c", true},
             {std::wstring(200'000, L'a'), L"*a*a*a*a*a*b", false},
         })
        EXPECT_EQ(like(row.text, row.pattern), row.matches) << testing::PrintToString(row.pattern);
    for (const wchar_t* faulty : {L"abc[d", L"y[", L"[c-a]"})
        EXPECT_EQ(errorOf([&] { like(L"", faulty); }), kInvalidPattern);
}

TEST(Numbers, groupedFormKeepsTheLiteralBlanks) {
    EXPECT_EQ(formatGrouped(0), L"  0");
    EXPECT_EQ(formatGrouped(1234), L" 1 234");
    EXPECT_EQ(formatGrouped(123'456'789), L"123 456 789");
    EXPECT_EQ(formatGrouped(5'000'000'000), L"5000 000 000");
}

TEST(Numbers, counterKeepsItsValueWhenItOverflows) {
    Counter16 counter(32'766);
    EXPECT_EQ(++counter, 32'767);
    EXPECT_EQ(errorOf([&] { ++counter; }), kOverflow);
    EXPECT_EQ(errorOf([&] { counter = -32'769; }), kOverflow);
    EXPECT_EQ(counter, 32'767);
}

TEST(Text, trimsSplitsAndChangesCaseBeyondAscii) {
    EXPECT_EQ(trimAtNul(std::wstring_view(L"ab\0c", 4)), L"ab");
    EXPECT_EQ(trimBlanks(L"  a b \t "), L"a b \t");
    EXPECT_EQ(split(L" ÁNO ;Zrušiť", L';'), (std::vector<std::wstring>{L" ÁNO ", L"Zrušiť"}));
    EXPECT_EQ(split(L"", L';'), std::vector<std::wstring>{L""});
    EXPECT_EQ(split(L"a;", L';'), (std::vector<std::wstring>{L"a", L""}));
    EXPECT_EQ(lowerCased(L"ŽLTÝ Kôň ŠŤASTNÝ Ĺ ΑΩ ЯЖ 1"), L"žltý kôň šťastný ĺ αω яж 1");
    EXPECT_EQ(upperCased(L"žltý kôň ľ ďaleko ü αω яж"), L"ŽLTÝ KÔŇ Ľ ĎALEKO Ü ΑΩ ЯЖ");
    EXPECT_EQ(sortKey(L"Abc"), sortKey(L"aBC"));
    EXPECT_LT(sortKey(L"ABC"), sortKey(L"abd"));
    EXPECT_LT(sortKey(std::wstring(500, L'a')), sortKey(std::wstring(500, L'b')));
}

}  // namespace
}  // namespace tunovka
