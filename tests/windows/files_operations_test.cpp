// The file operations on real files, with the person's answers.
#include <gtest/gtest.h>

#include "core/errors.h"
#include "core/paths.h"
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
    // Nothing happens without a source or for other numbers.
    for (const int number : {-1, 0, 6, 7, 9, 32767}) run(number, song);
    for (int number = 1; number <= 8; ++number) run(number, L"");
    EXPECT_EQ(command(), kBefore);
    EXPECT_EQ(txtsubor.text(), L"cut:" + song);
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
    letGo.clear();
    run(kMoveIntoFolder, song);
    EXPECT_EQ(contentOf(to / L"pieseň.mp3"), "new");
    EXPECT_FALSE(FileSystemObject::FileExists(song));
    EXPECT_EQ(command(), kRefresh);
    EXPECT_EQ(prompts.at(1), L"Určite adresár, kam sa súbor presunie.");
    EXPECT_EQ(letGo, (std::vector{song, to / L"pieseň.mp3"}));
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
    EXPECT_TRUE(letGo.empty());
    run(kDelete, song);
    EXPECT_FALSE(FileSystemObject::FileExists(song));
    EXPECT_EQ(command(), kRefresh);
    EXPECT_EQ(txtsubor.text(), L"");
    EXPECT_EQ(letGo, std::vector{song});
    EXPECT_EQ(
        person.seen.at(0),
        (BoxRequest{L" Vymazať súbor", L"Naozaj chceš nenávratne odstrániť súbor '" + song + L"' ?",
                    L"ÁNO;NIE"}));
}

// However the destination is spelt.
TEST_F(Operations, AFileThatIsItsOwnDestinationStays) {
    const std::wstring link = to / L"odkaz";
    const bool linked = makeLink(link, from.path().substr(0, from.path().size() - 1), true);
    const std::wstring twin = from / L"dvojča.mp3";
    ASSERT_TRUE(CreateHardLinkW(twin.c_str(), song.c_str(), nullptr));
    std::vector<std::wstring> spellings{song, from / L"PIESEŇ.MP3", from / L".\\pieseň.mp3",
                                        L"\\\\?\\" + song, twin};
    if (linked) spellings.push_back(link + L"\\pieseň.mp3");
    makeReadOnly(song);
    for (const std::wstring& destination : spellings) {
        for (const std::wstring& clipboard : {L"copy:" + song, L"cut:" + song}) {
            txtsubor.setText(clipboard);
            run(kTransfer, song, destination);
            expectFailure(kPermissionDenied, clipboard);
            EXPECT_EQ(contentOf(song), "new");
            EXPECT_TRUE(isReadOnly(song));
        }
    }
    for (const std::wstring& folder : {from.path(), linked ? link : from.path()}) {
        chosenFolder = folder;
        for (const int number : {kCopyIntoFolder, kMoveIntoFolder}) {
            txtsubor.setText(L"copy:x");
            run(number, song);
            expectFailure(kPermissionDenied, L"copy:x");
            EXPECT_EQ(contentOf(song), "new");
            EXPECT_TRUE(isReadOnly(song));
        }
    }
    EXPECT_EQ(from.names().size(), 2u);
}

TEST_F(Operations, BadPathsAreToldAndTouchNothing) {
    struct Case {
        std::wstring source, destination;
        int error;
    };
    const std::wstring longName = std::wstring(300, L'x') + L".mp3";
    const Case cases[] = {
        {from / L"preč.mp3", to / L"a.mp3", kFileNotFound},
        {from / L"preč\\a.mp3", to / L"a.mp3", kPathNotFound},
        {from.path() + L"*.mp3", to / L"a.mp3", kBadFileName},
        {L"slová\r\nz iného programu", to / L"a.mp3", kBadFileName},
        {to.folder(L"priečinok"), to / L"a.mp3", kFileNotFound},
        {song, to / L"preč\\a.mp3", kPathNotFound},
        {song, to / L"NUL", kBadFileName},
        {song, to / longName, kBadFileName},
        {song, to / L"a\"b.mp3", kBadFileName},
        {song, to / L"a.mp3:prúd", kBadFileName},
        {song, to / L"priečinok", kPermissionDenied},
        {song, L"\\\\niet-takého-počítača\\x\\a.mp3", kPathNotFound},
    };
    for (const Case& bad : cases) {
        for (const std::wstring& clipboard : {L"copy:" + bad.source, L"cut:" + bad.source}) {
            txtsubor.setText(clipboard);
            run(kTransfer, bad.source, bad.destination);
            SCOPED_TRACE(std::string(bad.destination.begin(), bad.destination.end()));
            expectFailure(bad.error, clipboard);
        }
    }
    person.answer({1});
    run(kDelete, from / L"preč.mp3");
    expectFailure(kFileNotFound, txtsubor.text());
    EXPECT_EQ(contentOf(song), "new");
    EXPECT_EQ(from.names(), std::vector<std::wstring>{L"pieseň.mp3"});
    EXPECT_EQ(to.names(), std::vector<std::wstring>{L"priečinok"});
}

TEST_F(Operations, TheQuestionBeforeOverwritingIsKept) {
    makeReadOnly(song);
    person.answer({2, 0, 1});
    EXPECT_FALSE(FSOakcie::prepareFile(song, false));
    EXPECT_FALSE(FSOakcie::prepareFile(song, false));
    EXPECT_TRUE(isReadOnly(song));
    EXPECT_TRUE(FSOakcie::prepareFile(song, false));
    EXPECT_FALSE(isReadOnly(song));
    EXPECT_EQ(person.seen.at(0),
              (BoxRequest{L" Prepísať súbor",
                          L"Súbor s takýmto názvom už v zadanom umiestnení existuje, chceš "
                          L"prepísať existujúci súbor ?",
                          L"ÁNO;NIE"}));
    EXPECT_TRUE(FSOakcie::prepareFile(from / L"preč.mp3", false));
    EXPECT_EQ(person.seen.size(), 3u);
}

}  // namespace
}  // namespace tunovka
