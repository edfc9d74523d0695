#include <gtest/gtest.h>

#include "core/counter16.h"
#include "core/errors.h"
#include "core/text.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

TEST(Like, matchesTheWholeTextCaseSensitively) {
    for (const auto& [text, pattern] : std::vector<std::pair<std::wstring, std::wstring>>{
             {L"a.mp3", L"*.mp3"},
             {L"", L""},
             {L"", L"[]"},
             {L"ab", L"a[]b"},
             {L"File1=x", L"File*=*"},
             {L"a5c", L"a#c"},
             {L"c", L"[a-c]"},
             {L"axc", L"a?c"},
             {L"-", L"[-a]"},
             {L"-", L"[a-]"},
             {L"!", L"[!]"},
             {L"x!", L"x[a!]"},
             {L"?", L"[*?\\/:;]"},
             {L"]", L"]"},
             {L"a]", L"[a]]"},
             {L"aXbXc", L"*X*c"},
         })
        EXPECT_TRUE(like(text, pattern))
            << testing::PrintToString(text) << " " << testing::PrintToString(pattern);
    for (const auto& [text, pattern] : std::vector<std::pair<std::wstring, std::wstring>>{
             {L"a.MP3", L"*.mp3"},
             {L"a.mp3 ", L"*.mp3"},
             {L"axc", L"a#c"},
             {L"d", L"[a-c]"},
             {L"b", L"[!a-c]"},
             {L"a", L"[!]"},
             {L"file1=x", L"File*=*"},
         })
        EXPECT_FALSE(like(text, pattern))
            << testing::PrintToString(text) << " " << testing::PrintToString(pattern);
}

TEST(Like, refusesAFaultyPatternWhateverTheTextIs) {
    EXPECT_EQ(errorOf([] { like(L"", L"abc[d"); }), kInvalidPattern);
    EXPECT_EQ(errorOf([] { like(L"x", L"y["); }), kInvalidPattern);
    EXPECT_EQ(errorOf([] { like(L"b", L"[c-a]"); }), kInvalidPattern);
}

TEST(Like, staysFastOnHostileInput) {
    const std::wstring text(200'000, L'a');
    EXPECT_FALSE(like(text, L"*a*a*a*a*a*a*a*a*b"));
    EXPECT_TRUE(like(text + L"b", L"*a*a*a*a*a*a*a*a*b"));
}

TEST(Numbers, groupedFormKeepsTheLiteralBlanks) {
    EXPECT_EQ(formatGrouped(0), L"  0");
    EXPECT_EQ(formatGrouped(5), L"  5");
    EXPECT_EQ(formatGrouped(1234), L" 1 234");
    EXPECT_EQ(formatGrouped(1'048'576), L"1 048 576");
    EXPECT_EQ(formatGrouped(123'456'789), L"123 456 789");
    EXPECT_EQ(formatGrouped(5'000'000'000), L"5000 000 000");
}

TEST(Numbers, roundToTheEvenNeighbour) {
    EXPECT_EQ(roundHalfEven(0.5), 0);
    EXPECT_EQ(roundHalfEven(1.5), 2);
    EXPECT_EQ(roundHalfEven(10.6), 11);
    EXPECT_EQ(roundHalfEven(-2.5), -2);
    EXPECT_EQ(errorOf([] { roundHalfEven(1e300); }), kOverflow);
    EXPECT_EQ(errorOf([] { roundHalfEven(0.0 / 0.0 * 1); }), kOverflow);
}

TEST(Numbers, counterKeepsItsValueWhenItOverflows) {
    Counter16 counter(32'766);
    EXPECT_EQ(++counter, 32'767);
    EXPECT_EQ(errorOf([&] { ++counter; }), kOverflow);
    EXPECT_EQ(counter, 32'767);
    EXPECT_EQ(errorOf([&] { counter = -32'769; }), kOverflow);
    EXPECT_EQ(counter, 32'767);
}

TEST(Text, trimsAndSplits) {
    EXPECT_EQ(trimAtNul(std::wstring_view(L"\0abc", 4)), L"");
    EXPECT_EQ(trimAtNul(std::wstring_view(L"ab\0c", 4)), L"ab");
    EXPECT_EQ(trimAtNul(L"abc"), L"abc");
    EXPECT_EQ(trimBlanks(L"  a b \t "), L"a b \t");
    EXPECT_EQ(trimBlanks(L"   "), L"");
    EXPECT_EQ(split(L" ÁNO ;Zrušiť", L';'), (std::vector<std::wstring>{L" ÁNO ", L"Zrušiť"}));
    EXPECT_EQ(split(L"", L';'), std::vector<std::wstring>{L""});
    EXPECT_EQ(split(L"a;", L';'), (std::vector<std::wstring>{L"a", L""}));
}

TEST(Text, changesCaseBeyondAscii) {
    EXPECT_EQ(lowerCased(L"ŽLTÝ Kôň ŠŤASTNÝ Ĺ ΑΩ ЯЖ 1"), L"žltý kôň šťastný ĺ αω яж 1");
    EXPECT_EQ(upperCased(L"žltý kôň ľ ďaleko ü αω яж"), L"ŽLTÝ KÔŇ Ľ ĎALEKO Ü ΑΩ ЯЖ");
    EXPECT_EQ(upperCased(std::wstring_view(L"a\0b", 3)), std::wstring(L"A\0B", 3));
    EXPECT_EQ(lowerCased(L""), L"");
}

TEST(Text, sortKeysIgnoreCase) {
    EXPECT_EQ(sortKey(L"Abc"), sortKey(L"aBC"));
    EXPECT_LT(sortKey(L"ABC"), sortKey(L"abd"));
    EXPECT_LT(sortKey(L""), sortKey(L"a"));
    EXPECT_LT(sortKey(std::wstring(500, L'a')), sortKey(std::wstring(500, L'b')));
}

}  // namespace
}  // namespace tunovka
