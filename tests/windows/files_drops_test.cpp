// Files dropped onto the explorer's trees.
#include <gtest/gtest.h>

#include "core/com_object.h"
#include "support/file_menus.h"
#include "ui/frm_box.h"

namespace tunovka {
namespace {

// Of what a text offers, nothing but that in the system's code page, as older programs do.
class AnsiData final : public SingleComObject<IDataObject> {
  public:
    explicit AnsiData(const std::wstring& text) : text_(createTextData(text)) {}
    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override {
        return QueryGetData(format) == S_OK ? text_->GetData(format, medium) : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override {
        return format->cfFormat == CF_TEXT ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }

  private:
    const ComPtr<IDataObject> text_;
};

class Drops : public FileMenus {
  protected:
    void dropOnFolder(const std::wstring& text) {
        Drag drag(strom(), placeOf(strom(), other.path()), createTextData(text));
        EXPECT_EQ(drag.effect, DWORD{DROPEFFECT_COPY});
        EXPECT_EQ(strom().dropHighlight(), other.path());
        drag.drop();
        EXPECT_EQ(strom().dropHighlight(), L"");
    }
};

TEST_F(Drops, AFileOntoAFolderIsCopiedWhenThePersonAgrees) {
    const std::wstring song = folder.file(L"a.mp3", "song");
    show(L"a.mp3");
    explorer->txtsubor.setText(L"cut:x");
    person.answer({2, 0, 1});
    for (const std::size_t questions : {1, 2}) {
        dropOnFolder(song);
        ASSERT_TRUE(runUntil([&] { return person.seen.size() == questions; }));
        EXPECT_EQ(clipboard(), L"cut:x");
        EXPECT_TRUE(other.names().empty());
    }
    dropOnFolder(song);
    ASSERT_TRUE(runUntil([&] { return contentOf(other / L"a.mp3") == "song"; }));
    EXPECT_EQ(person.seen[0].title, L" Kopírovať súbor");
    EXPECT_EQ(person.seen[0].text,
              L"Chceš prekopírovať súbor '" + song + L"' do adresára " + other.path() + L" ?");
    EXPECT_EQ(contentOf(song), "song");
    EXPECT_EQ(clipboard(), L"");
}

TEST_F(Drops, AFileOntoTheContentsIsCopiedIntoTheShownFolder) {
    const std::wstring song = other.file(L"a.mp3", "song");
    show(L"");
    person.answer({1});
    dropOnContents(other / L"nie je.mp3");
    dropOnContents(other.path());
    dropOnContents(song);
    ASSERT_TRUE(runUntil([&] { return Tview().contains(L"a.mp3"); }));
    EXPECT_EQ(contentOf(folder / L"a.mp3"), "song");
    ASSERT_EQ(person.seen.size(), 1u);
    const std::wstring question =
        L"Naozaj chceš prekopírovať súbor '" + song + L"' do adresára '" + folder.path() + L"' ?";
    EXPECT_EQ(person.seen[0], (BoxRequest{L" Kopírovať súbor", question, L"ÁNO;NIE"}));
}

TEST_F(Drops, OnlyFoldersUnderThePointerAreWelcomeAndTheEdgeScrolls) {
    for (int i = 0; i < 60; ++i) folder.folder(L"p" + std::to_wstring(i));
    show(L"");
    const Size size = strom().clientSize();
    {
        const Drag nowhere(strom(), {size.width - 5, size.height / 2}, createTextData(L"a"));
        EXPECT_EQ(nowhere.effect, DWORD{DROPEFFECT_NONE});
    }
    strom().expand(folder.path());
    strom().ensureVisible(folder.path());
    const auto top = [&] { return GetScrollPos(strom().handle(), SB_VERT); };
    const int before = top();
    {
        Drag drag(strom(), {20, size.height - 3}, createTextData(L"a"));
        ASSERT_TRUE(runUntil([&] {
            drag.onto->DragOver(MK_LBUTTON, drag.place, &drag.effect);
            return top() > before + 3;
        }));
    }
    explorer->txtPath.setText(L"");
    const Drag unlisted(Tview(), {5, 5}, createTextData(L"a"));
    EXPECT_EQ(unlisted.effect, DWORD{DROPEFFECT_NONE});
}

TEST_F(Drops, NothingIsTakenWhileABoxIsOpen) {
    show(L"");
    DWORD effect = DROPEFFECT_COPY;
    postToLoop([&] {  // which is the box's by then
        const Drag drag(Tview(), {5, 200}, createTextData(folder.path()));
        effect = drag.effect;
    });
    ask(L"Otázka", L"?", L"ÁNO");
    EXPECT_EQ(effect, DWORD{DROPEFFECT_NONE});
}

TEST_F(Drops, AnsiTextIsTakenAndGivenAsWell) {
    IDataObject* const given = createTextData(L"žaba");
    FORMATETC format{CF_TEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM medium{};
    ASSERT_EQ(given->GetData(&format, &medium), S_OK);
    EXPECT_STREQ(static_cast<const char*>(GlobalLock(medium.hGlobal)),
                 "\x9E"
                 "aba");
    ReleaseStgMedium(&medium);
    given->Release();

    const std::wstring song = other.file(L"žaba.mp3", "song");
    show(L"");
    person.answer({1});
    Drag drag(Tview(), {5, 200}, new AnsiData(song));
    EXPECT_EQ(drag.effect, DWORD{DROPEFFECT_COPY});
    drag.drop();
    ASSERT_TRUE(runUntil([&] { return Tview().contains(L"žaba.mp3"); }));
    EXPECT_EQ(contentOf(folder / L"žaba.mp3"), "song");
}

}  // namespace
}  // namespace tunovka
