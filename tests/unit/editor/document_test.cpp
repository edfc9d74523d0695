#include "editor/document.h"

#include <gtest/gtest.h>

#include <set>

#include "editor/texts.h"
#include "playlist/entry_key.h"
#include "support/error_of.h"

namespace tunovka {
namespace {

using Texts = std::vector<std::wstring>;

class EditorDocumentTest : public testing::Test {
  protected:
    EditorDocument document;
    std::set<std::wstring> files{L"C:\\pl\\a.mp3", L"C:\\pl\\b.wav", L"C:\\pl\\c.wma",
                                 L"D:\\x.mp3"};

    FileExistsTest exists() {
        return [this](const std::wstring& path) { return files.contains(path); };
    }
    void load(std::wstring_view text) {
        ASSERT_TRUE(document.load(L"C:\\pl\\list.m3u", text, exists()));
    }
    bool sort(SortOrder order, const LoopHooks& hooks = {}) { return document.sort(order, hooks); }
    Texts names() const {
        Texts result;
        for (const PlaylistEntry& entry : document.rows()) result.push_back(entry.name());
        return result;
    }
    std::vector<int> numbers() const {
        std::vector<int> result;
        for (const PlaylistEntry& entry : document.rows())
            result.push_back(entryNumberOf(entry.key));
        return result;
    }
    std::wstring keyAt(std::size_t position) const { return document.rows()[position].key; }
};

TEST_F(EditorDocumentTest, readsEntriesAsWrittenAndMarksTheMissing) {
    load(L"#EXTM3U\r\na.mp3\r\nFile1=b.wav\nfile2=c.wma\nD:\\x.mp3\nA.MP3\n..\\nie.mp3");
    EXPECT_EQ(names(), (Texts{L"a.mp3", L"File1=b.wav", L"file2=c.wma", L"x.mp3", L"nie.mp3"}));
    EXPECT_EQ(keyAt(4), L"položka:5súbor=..\\nie.mp3");
    std::vector<bool> missing;
    for (const PlaylistEntry& entry : document.rows()) missing.push_back(entry.missing);
    EXPECT_EQ(missing, (std::vector<bool>{false, false, true, false, true}));
    EXPECT_EQ(document.loadOrder().size(), 5u);
    EXPECT_EQ(document.resolve(1, exists()), L"C:\\pl\\b.wav");
    EXPECT_EQ(document.resolve(2, exists()), L"");
    EXPECT_FALSE(document.changed());
    EXPECT_TRUE(document.mayBeSaved());
}

TEST_F(EditorDocumentTest, aPlaylistWithoutEntriesShowsTheKeylessRow) {
    load(L"[playlist]\r\nNumberOfEntries=0\r\n");
    EXPECT_EQ(names(), Texts{std::wstring(kNothingFound)});
    EXPECT_EQ(countLabel(document.rows().size()), L"Počet odkazov v playliste: 1");
    EXPECT_FALSE(document.mayBeSaved());
    EXPECT_TRUE(document.loadOrder().empty());
    EXPECT_EQ(errorOf([&] { document.holds(L"D:\\x.mp3"); }), kInvalidCall);
    EXPECT_EQ(errorOf([&] { document.add(L"D:\\x.mp3"); }), kInvalidCall);
    EXPECT_EQ(errorOf([&] { document.merge(L"C:\\pl\\o.m3u", L"a.mp3", exists()); }), kInvalidCall);
    EXPECT_EQ(document.rows().size(), 1u);
    EXPECT_FALSE(document.changed());
    EXPECT_EQ(document.duplicates(exists()), Texts{});
    EXPECT_EQ(document.invalidLinks(exists()), Texts{});
    document.restoreLoadOrder(exists());
    EXPECT_EQ(document.rows().size(), 1u);
    EXPECT_TRUE(document.removeAt(0));
    EXPECT_FALSE(document.mayBeSaved());
    EXPECT_EQ(document.add(L"D:\\x.mp3"), 0u);
    EXPECT_TRUE(document.mayBeSaved());
}

TEST_F(EditorDocumentTest, aNewPlaylistTakesFiles) {
    ASSERT_TRUE(document.openNew(kNewPlaylist));
    EXPECT_TRUE(document.mayBeSaved());
    EXPECT_FALSE(document.changed());
    EXPECT_EQ(document.holds(L"D:\\x.mp3"), false);
    EXPECT_EQ(document.add(L"D:\\x.mp3"), 0u);
    EXPECT_EQ(keyAt(0), L"položka:1súbor=D:\\x.mp3");
    EXPECT_TRUE(document.changed());
    EXPECT_EQ(document.holds(L"D:\\x.mp3"), true);
    EXPECT_EQ(document.holds(L"d:\\x.mp3"), false);
    EXPECT_EQ(document.add(L"D:\\x.mp3"), 1u);
    EXPECT_EQ(numbers(), (std::vector<int>{1, 2}));
    document.markSaved();
    EXPECT_FALSE(document.changed());
}

TEST_F(EditorDocumentTest, numbersAreNeverGivenTwice) {
    load(L"a.mp3\nb.wav\nc.wma");
    document.removeAt(2);
    document.add(L"D:\\x.mp3");
    EXPECT_EQ(numbers(), (std::vector<int>{1, 2, 4}));
    document.removeAt(2);
    document.merge(L"C:\\pl\\o.m3u", L"c.wma", exists());
    EXPECT_EQ(numbers(), (std::vector<int>{1, 2, 5}));
}

TEST_F(EditorDocumentTest, mergeMakesPathsAbsoluteAndCounts) {
    load(L"a.mp3");
    files.insert(L"D:\\\\c.mp3");
    files.insert(L"D:\\a\\b\\z.mp3");
    const auto report = document.merge(L"D:\\a\\b\\o.pls",
                                       L"[playlist]\nfile1=..\\c.mp3\nFile2=z.mp3\nnie.mp3\n"
                                       L"NumberOfEntries=3\n",
                                       exists());
    ASSERT_TRUE(report);
    EXPECT_EQ(report->added, 3);
    EXPECT_EQ(report->invalid, 1);
    EXPECT_EQ(keyAt(1), L"položka:2súbor=D:\\\\c.mp3");
    EXPECT_EQ(keyAt(2), L"položka:3súbor=D:\\a\\b\\z.mp3");
    EXPECT_TRUE(document.rows()[3].missing);
    EXPECT_EQ(document.loadOrder(), (std::vector<std::int16_t>{1, 2, 3, 4}));
}

TEST_F(EditorDocumentTest, sortingIsStableBothWaysAndNoChange) {
    load(L"b.wav\na.mp3\nD:\\a.mp3\nc.wma");
    sort(SortOrder::Ascending);
    EXPECT_EQ(numbers(), (std::vector<int>{2, 3, 1, 4}));
    sort(SortOrder::Descending);
    EXPECT_EQ(numbers(), (std::vector<int>{4, 1, 2, 3}));
    EXPECT_FALSE(document.changed());
    EXPECT_EQ(document.move(keyAt(0), 1), std::nullopt);

    EXPECT_EQ(document.add(L"D:\\bb.mp3"), 1u);  // takes its sorted place
    document.merge(L"D:\\o.m3u", L"a.mp3\nd.mp3", exists());
    EXPECT_EQ(numbers(), (std::vector<int>{7, 4, 5, 1, 2, 3, 6}));

    document.restoreLoadOrder(exists());
    EXPECT_EQ(numbers(), (std::vector<int>{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(document.sortOrder(), SortOrder::None);
}

TEST_F(EditorDocumentTest, movingRewritesTheLoadOrder) {
    load(L"a.mp3\nb.wav\nc.wma\nD:\\x.mp3");
    EXPECT_EQ(document.move(keyAt(0), 2), 2u);
    EXPECT_EQ(numbers(), (std::vector<int>{2, 3, 1, 4}));
    EXPECT_EQ(document.move(keyAt(3), 0), 0u);
    EXPECT_EQ(numbers(), (std::vector<int>{4, 2, 3, 1}));
    EXPECT_TRUE(document.changed());
    document.markSaved();
    EXPECT_EQ(document.move(keyAt(1), 1), std::nullopt);
    EXPECT_EQ(document.move(L"položka:99súbor=z.mp3", 1), std::nullopt);
    EXPECT_EQ(document.move(L"", 1), std::nullopt);
    EXPECT_EQ(document.move(keyAt(0), 4), std::nullopt);
    EXPECT_FALSE(document.changed());
    document.removeAt(1);
    sort(SortOrder::Ascending);
    files.erase(L"D:\\x.mp3");
    document.restoreLoadOrder(exists());
    EXPECT_EQ(numbers(), (std::vector<int>{4, 3, 1}));
    EXPECT_EQ(document.loadOrder().size(), 3u);
    EXPECT_TRUE(document.rows()[0].missing);  // found out anew
}

TEST_F(EditorDocumentTest, duplicatesAreLaterRowsOfTheSamePath) {
    load(L"a.mp3\nnie.mp3\nC:\\pl\\a.mp3\nnie.mp3\n\\pl\\a.mp3\nC:\\pl\\A.mp3\n..\\pl\\a.mp3");
    files.insert(L"C:\\pl\\A.mp3");
    files.insert(L"C:\\pl\\..\\pl\\a.mp3");
    const auto found = document.duplicates(exists());
    EXPECT_EQ(found, (Texts{keyAt(2), keyAt(4)}));
    EXPECT_FALSE(document.changed());
    EXPECT_EQ(document.remove(*found), 2u);
    EXPECT_EQ(numbers(), (std::vector<int>{1, 2, 4, 6, 7}));
    EXPECT_EQ(document.loadOrder().size(), 7u);  // forgotten when the order is restored
    EXPECT_TRUE(document.changed());

    const auto invalid = document.invalidLinks(exists());
    EXPECT_EQ(document.remove(*invalid), 2u);
    EXPECT_EQ(numbers(), (std::vector<int>{1, 6, 7}));
    document.restoreLoadOrder(exists());
    EXPECT_EQ(document.loadOrder().size(), 3u);
}

TEST_F(EditorDocumentTest, savesWhatExistsInDisplayOrder) {
    load(L"c.wma\nnie.mp3\na.mp3\nFile1=b.wav");
    sort(SortOrder::Descending);
    EXPECT_EQ(document.pathsToSave(exists()),
              (Texts{L"C:\\pl\\b.wav", L"C:\\pl\\c.wma", L"C:\\pl\\a.mp3"}));
}

TEST_F(EditorDocumentTest, refusesCommandsWhileBusy) {
    load(L"a.mp3\nb.wav\na.mp3");
    int looked = 0;
    const LoopHooks hooks{[&] {
        ++looked;
        EXPECT_TRUE(document.busy());
        const auto rows = names();
        EXPECT_FALSE(document.load(L"C:\\o.m3u", L"x.mp3", exists()));
        EXPECT_FALSE(document.openNew(kNewPlaylist));
        EXPECT_FALSE(document.clear(L"C:\\o.m3u"));
        EXPECT_FALSE(document.add(L"D:\\x.mp3"));
        EXPECT_FALSE(document.holds(L"D:\\x.mp3"));
        EXPECT_FALSE(document.merge(L"C:\\o.m3u", L"x.mp3", exists()));
        EXPECT_FALSE(document.move(keyAt(0), document.rows().size() - 1));
        EXPECT_FALSE(document.removeAt(0));
        EXPECT_EQ(document.remove({keyAt(0)}), 0u);
        EXPECT_FALSE(document.duplicates(exists()));
        EXPECT_FALSE(document.invalidLinks(exists()));
        EXPECT_FALSE(document.restoreLoadOrder(exists()));
        sort(SortOrder::Descending);
        EXPECT_EQ(names(), rows);
    }};
    document.holds(L"D:\\x.mp3", hooks);
    document.duplicates(exists(), hooks);
    document.invalidLinks(exists(), hooks);
    document.restoreLoadOrder(exists(), hooks);
    document.pathsToSave(exists(), hooks);
    sort(SortOrder::Ascending, hooks);
    EXPECT_EQ(looked, 18);
    document.merge(L"C:\\pl\\o.m3u", L"c.wma\nnie.mp3", exists(), hooks);
    document.load(L"C:\\pl\\list.m3u", L"c.wma", exists(), hooks);
    EXPECT_EQ(looked, 21);
    EXPECT_FALSE(document.busy());
    EXPECT_TRUE(document.removeAt(0));
}

TEST_F(EditorDocumentTest, aCancelledCommandKeepsWhatIsWhole) {
    int left = 0;
    const LoopHooks hooks{{}, [&] { return --left < 0; }};
    left = 1;
    EXPECT_TRUE(document.load(L"C:\\pl\\list.m3u", L"a.mp3\nb.wav\nc.wma", exists(), hooks));
    EXPECT_EQ(names(), (Texts{L"a.mp3", L"b.wav"}));
    EXPECT_FALSE(document.mayBeSaved());

    left = 0;
    EXPECT_FALSE(document.merge(L"C:\\pl\\o.m3u", L"#\na.mp3", exists(), hooks));
    EXPECT_FALSE(document.changed());
    left = 1;
    EXPECT_FALSE(document.merge(L"C:\\pl\\o.m3u", L"#\na.mp3\nb.wav", exists(), hooks));
    EXPECT_TRUE(document.changed());
    EXPECT_EQ(document.rows().size(), 3u);

    sort(SortOrder::Descending);
    const auto rows = names();
    left = 1;
    document.restoreLoadOrder(exists(), hooks);
    EXPECT_EQ(names(), rows);
    EXPECT_EQ(document.sortOrder(), SortOrder::Descending);
    EXPECT_EQ(document.loadOrder().size(), 3u);
    left = 1;
    EXPECT_FALSE(document.duplicates(exists(), hooks));
    left = 1;
    EXPECT_FALSE(document.pathsToSave(exists(), hooks));
    left = 1;
    EXPECT_FALSE(sort(SortOrder::Ascending, hooks));
    EXPECT_EQ(names(), rows);
    EXPECT_EQ(document.sortOrder(), SortOrder::Descending);
    EXPECT_FALSE(document.busy());
}

TEST_F(EditorDocumentTest, numbersEndAt32767AndWhatWasReadStays) {
    std::wstring text;
    for (int i = 0; i < 32'768; ++i) text += L"a.mp3\n";
    const auto everything = [](const std::wstring&) { return true; };
    EXPECT_EQ(errorOf([&] { document.load(L"C:\\pl\\l.m3u", text, everything); }), kOverflow);
    EXPECT_EQ(document.rows().size(), 32'767u);
    EXPECT_FALSE(document.mayBeSaved());
    EXPECT_FALSE(document.busy());

    EXPECT_EQ(document.duplicates(everything)->size(), 32'766u);
    EXPECT_EQ(document.remove(*document.duplicates(everything)), 32'766u);
    document.markSaved();
    EXPECT_EQ(errorOf([&] { document.add(L"D:\\x.mp3"); }), kOverflow);
    EXPECT_EQ(errorOf([&] { document.merge(L"C:\\o.m3u", L"a.mp3", everything); }), kOverflow);
    EXPECT_EQ(document.rows().size(), 1u);
    EXPECT_FALSE(document.changed());

    load(L"a.mp3");
    text.resize(32'766 * 6);
    EXPECT_EQ(document.merge(L"C:\\o.m3u", text, everything)->added, 32'766);
    load(L"a.mp3");
    sort(SortOrder::Ascending);
    EXPECT_EQ(errorOf([&] { document.merge(L"C:\\o.m3u", text + L"b.mp3\nc.mp3", everything); }),
              kOverflow);
    EXPECT_TRUE(document.changed());
    EXPECT_EQ(document.rows().size(), 32'767u);
}

}  // namespace
}  // namespace tunovka
