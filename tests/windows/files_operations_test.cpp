// The file operations on real files, with the person's answers.
#include <gtest/gtest.h>

#include "support/error_of.h"
#include "support/file_stage.h"

namespace tunovka {
namespace {

constexpr wchar_t kRefresh[] = L"obnoviť";

class Operations : public testing::Test, protected FileStage {
  protected:
    // The last box is the notice of a failure with that number, and nothing but it was touched.
    void expectFailure(int number, const std::wstring& clipboard) {
        ASSERT_FALSE(person.seen.empty());
        const BoxRequest& notice = person.seen.back();
        EXPECT_EQ(notice.title, L" CHYBA");
        EXPECT_EQ(notice.buttons, L"Rozumiem ...");
        const std::wstring start = L"Došlo k neočakávanej chybe (č. " + std::to_wstring(number) +
                                   L")\rVýpis správy chyby:\r";
        EXPECT_TRUE(notice.text.starts_with(start) && notice.text.size() > start.size());
        EXPECT_EQ(command(), kBefore);
        EXPECT_EQ(txtsubor.text(), clipboard);
    }

    ScratchFolder from, to;
    const std::wstring song = from.file(L"pieseň.mp3", "new");
};

TEST_F(Operations, TheClipboardHoldsOneCopiedOrCutFile) {
    run(kCopyToClipboard, song);
    EXPECT_EQ(txtsubor.text(), L"copy:" + song);
    run(kCutToClipboard, song);
    EXPECT_EQ(txtsubor.text(), L"cut:" + song);
    EXPECT_EQ(command(), L"");
    EXPECT_EQ(contentOf(song), "new");
    EXPECT_TRUE(prompts.empty() && person.seen.empty());
}

TEST_F(Operations, CopyIntoFolderReplacesSilentlyAndEmptiesTheClipboard) {
    txtsubor.setText(L"copy:x");
    to.file(L"pieseň.mp3", "old");
    chosenFolder = to.path();
    chosenFolder.pop_back();
    run(kCopyIntoFolder, song);
    EXPECT_EQ(contentOf(to / L"pieseň.mp3"), "new");
    EXPECT_EQ(contentOf(song), "new");
    EXPECT_EQ(txtsubor.text(), L"");
    EXPECT_EQ(command(), kRefresh);
    EXPECT_EQ(prompts.at(0), L"Určite adresár, kam sa súbor prekopíruje.");
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(Operations, AReadOnlyFileIsReplacedByMovingAlone) {
    makeReadOnly(to.file(L"pieseň.mp3", "old"));
    chosenFolder = to.path();
    run(kCopyIntoFolder, song);
    expectFailure(kPermissionDenied, L"");
    EXPECT_EQ(contentOf(to / L"pieseň.mp3"), "old");
    EXPECT_TRUE(isReadOnly(to / L"pieseň.mp3"));
    closed.clear();
    run(kMoveIntoFolder, song);
    EXPECT_EQ(contentOf(to / L"pieseň.mp3"), "new");
    EXPECT_FALSE(FileSystemObject::FileExists(song));
    EXPECT_EQ(command(), kRefresh);
    EXPECT_EQ(prompts.at(1), L"Určite adresár, kam sa súbor presunie.");
    EXPECT_EQ(closed, (std::vector{song, to / L"pieseň.mp3"}));
    EXPECT_EQ(person.seen.size(), 1u);
}

// A file that may not be changed is not one that may be once it is copied.
TEST_F(Operations, ACopyOfAReadOnlyFileIsReadOnly) {
    makeReadOnly(song);
    chosenFolder = to.path();
    run(kCopyIntoFolder, song);
    EXPECT_TRUE(isReadOnly(to / L"pieseň.mp3"));
    for (const std::wstring clipboard : {L"copy:", L"cut:"}) {
        txtsubor.setText(clipboard + song);
        run(kTransfer, song, to / L"druhá.mp3");
        EXPECT_EQ(contentOf(to / L"druhá.mp3"), "new");
        EXPECT_TRUE(isReadOnly(to / L"druhá.mp3")) << clipboard;
    }
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(Operations, ACancelledFolderLeavesTheClipboardAndSendsAnEmptyCommand) {
    txtsubor.setText(L"cut:x");
    for (const int number : {kCopyIntoFolder, kMoveIntoFolder, kTransfer}) {
        run(number, song);
        EXPECT_EQ(command(), L"");
        EXPECT_EQ(txtsubor.text(), L"cut:x");
    }
    EXPECT_EQ(contentOf(song), "new");
}

TEST_F(Operations, DeletingAsksAndTakesReadOnlyFiles) {
    txtsubor.setText(L"copy:x");
    makeReadOnly(song);
    person.answer({2, 0, 1});
    for (int refusal = 0; refusal < 2; ++refusal) {
        run(kDelete, song);
        EXPECT_TRUE(isReadOnly(song));
        EXPECT_EQ(command(), L"");
        EXPECT_EQ(txtsubor.text(), L"copy:x");
    }
    EXPECT_TRUE(closed.empty());
    run(kDelete, song);
    EXPECT_FALSE(FileSystemObject::FileExists(song));
    EXPECT_EQ(command(), kRefresh);
    EXPECT_EQ(txtsubor.text(), L"");
    EXPECT_EQ(closed, std::vector{song});
}

// However the destination is spelt; nor does it lose its read-only bit.
TEST_F(Operations, AFileThatIsItsOwnDestinationStays) {
    const std::wstring link = to / L"odkaz", twin = from / L"dvojča.mp3";
    const bool linked = makeLink(link, from.path().substr(0, from.path().size() - 1), true);
    ASSERT_TRUE(CreateHardLinkW(twin.c_str(), song.c_str(), nullptr));
    makeReadOnly(song);
    const auto refused = [&](int operation, const std::wstring& clipboard,
                             const std::wstring& destination) {
        txtsubor.setText(clipboard);
        run(operation, song, destination);
        expectFailure(kPermissionDenied, clipboard);
        EXPECT_EQ(contentOf(song), "new");
        EXPECT_TRUE(isReadOnly(song));
    };
    for (const std::wstring& destination :
         {song, from / L"PIESEŇ.MP3", L"\\\\?\\" + song, twin, from / shortNameOf(song),
          linked ? link + L"\\pieseň.mp3" : song}) {
        refused(kTransfer, L"copy:" + song, destination);
        refused(kTransfer, L"cut:" + song, destination);
    }
    for (const std::wstring& folder : {from.path(), linked ? link : from.path()}) {
        chosenFolder = folder;
        refused(kCopyIntoFolder, L"copy:x", {});
        refused(kMoveIntoFolder, L"copy:x", {});
    }
    EXPECT_EQ(from.names().size(), 2u);
}

TEST_F(Operations, BadPathsAreToldAndTouchNothing) {
    struct Case {
        std::wstring source, destination;
        int error;
    };
    const Case cases[] = {
        {from / L"preč.mp3", to / L"a.mp3", kFileNotFound},
        {L"slová\r\nz iného programu", to / L"a.mp3", kBadFileName},
        {to.folder(L"priečinok"), to / L"a.mp3", kFileNotFound},
        {song, to / L"preč\\a.mp3", kPathNotFound},
        {song, to / std::wstring(300, L'x'), kBadFileName},
        {song, to / L"a.mp3:prúd", kBadFileName},
        {song, to / L"priečinok", kPermissionDenied},
        {song, L"\\\\niet-takého-počítača\\x\\a.mp3", kPathNotFound},
    };
    for (const Case& bad : cases) {
        for (const std::wstring& clipboard : {L"copy:" + bad.source, L"cut:" + bad.source}) {
            txtsubor.setText(clipboard);
            run(kTransfer, bad.source, bad.destination);
            SCOPED_TRACE(testing::PrintToString(bad.destination));
            expectFailure(bad.error, clipboard);
        }
    }
    EXPECT_EQ(contentOf(song), "new");
    EXPECT_EQ(to.names(), std::vector<std::wstring>{L"priečinok"});
}

}  // namespace
}  // namespace tunovka
