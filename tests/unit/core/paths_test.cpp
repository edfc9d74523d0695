#include <gtest/gtest.h>

#include <map>

#include "core/existing_files.h"
#include "core/paths.h"

namespace tunovka {
namespace {

TEST(Paths, areTakenApart) {
    struct Row {
        std::wstring path, parent, name, drive;
    };
    for (const Row& row : std::vector<Row>{
             {L"C:\\pl\\a.mp3", L"C:\\pl", L"a.mp3", L"C:"},
             {L"c:\\a.mp3", L"c:\\", L"a.mp3", L"c:"},
             {L"C:\\", L"", L"", L"C:"},
             {L"C:", L"", L"", L"C:"},
             {L"C:a.mp3", L"C:", L"a.mp3", L"C:"},
             {L"C:\\x\\", L"C:\\", L"x", L"C:"},
             {L"D:\\\\c.mp3", L"D:\\", L"c.mp3", L"D:"},
             {L"C:\\x\\\\y", L"C:\\x", L"y", L"C:"},
             {L"C:/x/y.wav", L"C:/x", L"y.wav", L"C:"},
             {L"a.mp3", L"", L"a.mp3", L""},
             {L"\\a.mp3", L"\\", L"a.mp3", L""},
             {L"\\\\server\\hudba\\a.mp3", L"\\\\server\\hudba", L"a.mp3", L"\\\\server\\hudba"},
             {L"\\\\server\\hudba", L"", L"", L"\\\\server\\hudba"},
             {L"", L"", L"", L""},
         }) {
        EXPECT_EQ(parentFolder(row.path), row.parent) << testing::PrintToString(row.path);
        EXPECT_EQ(fileName(row.path), row.name) << testing::PrintToString(row.path);
        EXPECT_EQ(driveName(row.path), row.drive) << testing::PrintToString(row.path);
    }
}

TEST(Paths, extensionsAndBackslashes) {
    EXPECT_EQ(fileExtension(L"C:\\a.b\\MIX.M3U"), L"M3U");
    EXPECT_EQ(fileExtension(L"C:\\a.b\\mix"), L"");
    EXPECT_EQ(fileExtension(L"mix."), L"");
    EXPECT_EQ(withBackslash(L"C:\\x"), L"C:\\x\\");
    EXPECT_EQ(withBackslash(L"C:\\"), L"C:\\");
    EXPECT_EQ(withBackslash(L""), L"\\");
    EXPECT_EQ(afterLastBackslash(L"C:\\x\\a"), L"a");
    EXPECT_EQ(afterLastBackslash(L"C:\\x\\"), L"");
    EXPECT_EQ(afterLastBackslash(L"a/b"), L"a/b");
}

// A disk in memory that counts what it is asked.
class FakeDisk {
  public:
    std::map<std::wstring, ExistingFiles::Disk::Listing> folders;
    std::map<std::wstring, std::wstring> normal;  // path as written -> full path
    std::map<std::wstring, ExistingFiles::Disk::Stamp> stamps;
    bool answers = true;
    int listed = 0, asked = 0, roots = 0;

    ExistingFiles::Disk disk() {
        return {[this](const std::wstring& folder) -> std::optional<ExistingFiles::Disk::Listing> {
                    ++listed;
                    const auto found = folders.find(folder);
                    if (found == folders.end()) return std::nullopt;
                    return found->second;
                },
                [this](const std::wstring& folder) -> std::optional<ExistingFiles::Disk::Stamp> {
                    const auto found = stamps.find(folder);
                    if (found == stamps.end()) return std::nullopt;
                    return found->second;
                },
                [this](const std::wstring& path) {
                    ++asked;
                    return path == L"C:\\tajné\\a.mp3";
                },
                [this](const std::wstring& path) { return normal.at(path); },
                [this](const std::wstring&) {
                    ++roots;
                    return answers;
                }};
    }
};

TEST(ExistingFiles, listsEachFolderOnceAndComparesAsTheFileSystemDoes) {
    FakeDisk fake;
    fake.folders[L"C:\\Hudba"] = {L"Žaba.mp3\\ABA~1.MP3\\", true};
    ExistingFiles files(fake.disk());
    EXPECT_TRUE(files.contains(L"C:\\Hudba\\žABA.MP3"));
    EXPECT_TRUE(files.contains(L"C:\\Hudba\\aba~1.mp3"));
    EXPECT_TRUE(files.contains(L"C:\\hudba\\žaba.mp3"));
    EXPECT_FALSE(files.contains(L"C:\\Hudba\\nie.mp3"));
    EXPECT_EQ(fake.listed, 1);
    EXPECT_EQ(fake.asked, 0);
    EXPECT_EQ(fake.roots, 1);
}

TEST(ExistingFiles, asksForRealWhereTheListingDoesNotTellAll) {
    FakeDisk fake;
    fake.folders[L"C:\\čiastočné"] = {L"a.mp3\\", false};
    ExistingFiles files(fake.disk());
    EXPECT_TRUE(files.contains(L"C:\\tajné\\a.mp3"));  // cannot be listed
    EXPECT_FALSE(files.contains(L"C:\\tajné\\b.mp3"));
    EXPECT_EQ(fake.asked, 2);
    EXPECT_TRUE(files.contains(L"C:\\čiastočné\\a.mp3"));
    EXPECT_EQ(fake.asked, 2);
    EXPECT_FALSE(files.contains(L"C:\\čiastočné\\b.mp3"));
    EXPECT_EQ(fake.asked, 3);
}

TEST(ExistingFiles, normalisesBeforeItLooks) {
    FakeDisk fake;
    fake.folders[L"C:\\x"] = {L"a.mp3\\", true};
    for (const wchar_t* odd : {L"C:\\y\\..\\x\\a.mp3", L"C:\\\\x\\a.mp3", L"C:/x/a.mp3",
                               L"C:\\x\\.\\a.mp3", L"C:\\x\\a.mp3.", L"a.mp3", L"C:\\x \\a.mp3"})
        fake.normal[odd] = L"C:\\x\\a.mp3";
    ExistingFiles files(fake.disk());
    for (const auto& [odd, full] : fake.normal)
        EXPECT_TRUE(files.contains(odd)) << testing::PrintToString(odd);
    EXPECT_EQ(fake.listed, 1);
}

TEST(ExistingFiles, neverAsksForWhatCannotBeAFile) {
    FakeDisk fake;
    fake.folders[L"C:\\x"] = {L"a.mp3\\", true};
    ExistingFiles files(fake.disk());
    for (const std::wstring& path :
         {std::wstring(), std::wstring(L"C:\\x\\*.mp3"), std::wstring(L"C:\\x\\a.mp?"),
          std::wstring(L"C:\\x\\a.mp3\0b.mp3", 16)})
        EXPECT_FALSE(files.contains(path)) << testing::PrintToString(path);
    EXPECT_EQ(fake.listed + fake.asked, 0);
}

TEST(ExistingFiles, listsAnewOnlyWhatMayHaveChanged) {
    FakeDisk fake;
    fake.folders = {{L"C:\\same", {L"a.mp3\\", true}},
                    {L"C:\\changed", {L"a.mp3\\", true}},
                    {L"C:\\untold", {L"a.mp3\\", true}},
                    {L"C:\\partly", {L"", false}}};
    fake.stamps = {{L"C:\\same", {1, 1}}, {L"C:\\changed", {1, 1}}, {L"C:\\partly", {1, 1}}};
    ExistingFiles files(fake.disk());
    const auto found = [&] {
        std::string answers;
        for (const wchar_t* folder : {L"C:\\same", L"C:\\changed", L"C:\\untold", L"C:\\partly"})
            answers += files.contains(std::wstring(folder) + L"\\a.mp3") ? 'y' : 'n';
        return answers;
    };
    EXPECT_EQ(found(), "yyyn");
    for (auto& [folder, listing] : fake.folders) listing.files = L"b.mp3\\";
    fake.stamps[L"C:\\changed"] = {2, 1};
    EXPECT_EQ(found(), "yyyn");  // still the same operation
    EXPECT_EQ(fake.listed, 4);
    files.anew();
    EXPECT_EQ(found(), "ynnn");
    EXPECT_EQ(fake.listed, 7);
    EXPECT_EQ(fake.roots, 2);
}

TEST(ExistingFiles, asksADeadRootOnce) {
    FakeDisk fake;
    fake.answers = false;
    ExistingFiles files(fake.disk());
    EXPECT_FALSE(files.contains(L"X:\\a\\a.mp3"));
    EXPECT_FALSE(files.contains(L"X:\\b\\b.mp3"));
    EXPECT_EQ(fake.roots, 1);
    EXPECT_EQ(fake.listed + fake.asked, 0);
}

}  // namespace
}  // namespace tunovka
