#include <gtest/gtest.h>

#include "core/text.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

TEST(Numbers, countsHaveSixteenBits) {
    for (const int count : {-32'768, 32'767}) EXPECT_EQ(count16(count), count);
    for (const int count : {-32'769, 32'768, 65'536})
        EXPECT_EQ(errorOf([&] { count16(count); }), kOverflow);
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
