#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "core/id3v1.h"
#include "core/paths.h"
#include "core/text.h"
#include "editor/document.h"
#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"
#include "playlist/line_reader.h"
#include "playlist/write.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

// Foreign bytes, put together from the pieces that the readers look for.
class HostileText {
  public:
    explicit HostileText(unsigned seed) : random_(seed) {}

    std::wstring next() {
        static const std::wstring_view pieces[] = {
            L"\n",     L"\r\n", L"\r",     std::wstring_view(L"\0", 1),
            L"<ref ",  L"href", L"=",      L"\"",
            L">",      L"..",   L"\\",     L"/",
            L"C:",     L":\\",  L".mp3",   L"mp3",
            L".WMA",   L".wav", L"File",   L"fiLe",
            L"[",      L"]",    L"[!a-z]", L"*",
            L"?",      L"#",    L"súbor=", L"položka:",
            L"id=",    L"pl=",  L" ",      L"ž",
            L"\xFFFD", L"a"};
        std::wstring text;
        for (unsigned i = random_() % 60; i > 0; --i) text += pieces[random_() % std::size(pieces)];
        return text;
    }

  private:
    std::mt19937 random_;
};

int allowedError(int number) {
    return number == 0 || number == kInvalidCall ? 0 : number;
}

TEST(HostileText, everyReaderHoldsItsPromises) {
    HostileText source(5);
    for (int round = 0; round < 3'000; ++round) {
        const std::wstring text = source.next();
        std::size_t lines = 0, entries = 0;
        WideLineReader reader(text);
        for (std::wstring_view line; reader.next(line); ++lines) {
            ASSERT_EQ(line.find(L'\n'), line.npos);
            entries += isPlaylistEntryLine(line);
            ASSERT_EQ(allowedError(errorOf([&] { explorerEntryText(line); })), 0);
            const std::wstring key = entryKey(7, line);
            ASSERT_EQ(entryNumberOf(key), 7);
            ASSERT_EQ(entryTextOf(key), line);
            ASSERT_EQ(entryDisplayName(key).find(L'\\'), std::wstring::npos);
            ASSERT_LT(parentFolder(line).size(), line.size() + 1);
            ASSERT_FALSE(relativeEntryText(L"C:\\x", line).empty() && !fileName(line).empty());
            const int patternError = errorOf([&] { like(text, line); });
            ASSERT_TRUE(patternError == 0 || patternError == kInvalidPattern);
        }
        const auto lineEnds = static_cast<std::size_t>(std::ranges::count(text, L'\n'));
        ASSERT_EQ(lines, lineEnds + (!text.empty() && !text.ends_with(L'\n')));

        EditorDocument document;
        const FileExistsTest sometimes = [](const std::wstring& path) { return path.size() % 2; };
        document.load(L"C:\\x\\l.m3u", text, sometimes);
        ASSERT_EQ(document.loadOrder().size(), entries);
        if (entries == 0) document.removeAt(0);
        ASSERT_EQ(document.merge(L"D:\\y\\l.m3u", text, sometimes)->added,
                  static_cast<int>(entries));
        std::set<std::wstring> keys;
        for (const EditorEntry& entry : document.entries()) keys.insert(entry.key);
        ASSERT_EQ(keys.size(), 2 * entries);
    }
}

TEST(HostileText, tagReaderTakesAnyBytes) {
    std::mt19937 random(9);
    for (int round = 0; round < 2'000; ++round) {
        std::string bytes(random() % 300, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        if (bytes.size() >= 128 && round % 2) bytes.replace(bytes.size() - 128, 3, "TAG");
        const auto tag = MultiMedialny::parseId3v1(bytes);
        ASSERT_EQ(tag.has_value(),
                  bytes.size() >= 128 && bytes.compare(bytes.size() - 128, 3, "TAG") == 0);
        if (tag) {
            ASSERT_EQ(tag->Comment.data() + tag->Comment.size() + 1, bytes.data() + bytes.size());
        }
    }
}

}  // namespace
}  // namespace tunovka
