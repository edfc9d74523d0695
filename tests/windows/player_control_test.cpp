// The media control as an engine, against a stand-in whose class object this program registers.
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first: these need its types.
#include <ocidl.h>
#include <oleidl.h>

#include <map>
#include <mutex>
#include <set>

#include "core/com_object.h"
#include "player/media_control.h"
#include "support/player_watch.h"

namespace tunovka {
namespace {

using namespace media_control;

// What the test sets and what the controls did, on whichever thread they live.
struct Script {
    std::mutex lock;
    std::wstring calls;              // "1026=E:\a.mp3;2001;": member, value
    std::set<std::wstring> refused;  // calls that fail
    std::set<std::wstring> silent;   // files that open without events
    std::map<DISPID, std::wstring> answers;
    KernelHandle opens{CreateEventW(nullptr, TRUE, TRUE, nullptr)};  // every opening waits for it
    HWND window = nullptr;  // of the last control; WM_APP raises an event
    std::atomic<int> living = 0, hanging = 0;
    std::atomic<bool> active = false, connects = true;
} script;

#define NOT_NEEDED(name, ...)                              \
    HRESULT STDMETHODCALLTYPE name(__VA_ARGS__) override { \
        return E_NOTIMPL;                                  \
    }

class Control final
    : public ComObject<IOleObject, IConnectionPointContainer, IConnectionPoint, IDispatch> {
  public:
    Control() {
        ++script.living;
        window_ = SystemWindow(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE,
                                               nullptr, nullptr, nullptr));
        SetWindowLongPtrW(window_.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(window_.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
        script.window = window_.get();
    }
    ~Control() override { --script.living; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        *result = nullptr;
        if (iid == IID_IUnknown || iid == IID_IOleObject) return handOut<IOleObject>(result);
        if (iid == IID_IDispatch) return handOut<IDispatch>(result);
        if (iid == IID_IConnectionPointContainer && script.connects)
            return handOut<IConnectionPointContainer>(result);
        return E_NOINTERFACE;
    }

    // IOleObject
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, MSG*, IOleClientSite* site, LONG, HWND parent,
                                     LPCRECT) override {
        script.active = verb == OLEIVERB_INPLACEACTIVATE && site && !IsWindowVisible(parent);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD, DWORD* status) override {
        return *status = 0, S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override {
        return site_ = ComPtr<IOleClientSite>::shared(site), S_OK;
    }
    HRESULT STDMETHODCALLTYPE Close(DWORD) override { return S_OK; }
    NOT_NEEDED(GetClientSite, IOleClientSite**)
    NOT_NEEDED(SetHostNames, LPCOLESTR, LPCOLESTR)
    NOT_NEEDED(SetMoniker, DWORD, IMoniker*)
    NOT_NEEDED(GetMoniker, DWORD, DWORD, IMoniker**)
    NOT_NEEDED(InitFromData, IDataObject*, BOOL, DWORD)
    NOT_NEEDED(GetClipboardData, DWORD, IDataObject**)
    NOT_NEEDED(EnumVerbs, IEnumOLEVERB**)
    NOT_NEEDED(Update)
    NOT_NEEDED(IsUpToDate)
    NOT_NEEDED(GetUserClassID, CLSID*)
    NOT_NEEDED(GetUserType, DWORD, LPOLESTR*)
    NOT_NEEDED(SetExtent, DWORD, SIZEL*)
    NOT_NEEDED(GetExtent, DWORD, SIZEL*)
    NOT_NEEDED(Advise, IAdviseSink*, DWORD*)
    NOT_NEEDED(EnumAdvise, IEnumSTATDATA**)
    NOT_NEEDED(SetColorScheme, LOGPALETTE*)
    // The connection points
    NOT_NEEDED(EnumConnectionPoints, IEnumConnectionPoints**)
    NOT_NEEDED(GetConnectionInterface, IID*)
    NOT_NEEDED(GetConnectionPointContainer, IConnectionPointContainer**)
    NOT_NEEDED(EnumConnections, IEnumConnections**)
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override {
        if (iid != kEvents) return E_FAIL;
        return handOut<IConnectionPoint>(reinterpret_cast<void**>(point));
    }
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
        *cookie = 7;
        return sink->QueryInterface(kEvents, sink_.receiveVoid());
    }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD) override { return sink_.reset(), S_OK; }
    // IDispatch
    NOT_NEEDED(GetTypeInfoCount, UINT*)
    NOT_NEEDED(GetTypeInfo, UINT, LCID, ITypeInfo**)
    NOT_NEEDED(GetIDsOfNames, REFIID, LPOLESTR*, UINT, LCID, DISPID*)
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override {
        Variant argument;
        if (parameters->cArgs) VariantCopy(&argument, &parameters->rgvarg[0]);
        const std::wstring value = argument.toText();
        const bool opens = id == kFileName && !value.empty();
        if (opens) {
            ++script.hanging;
            WaitForSingleObject(script.opens.get(), INFINITE);
            --script.hanging;
        }
        {
            const std::scoped_lock lock(script.lock);
            if (result) {
                Variant answer(script.answers[id == kGetMediaInfoString ? std::stoi(value) : id]);
                std::swap<VARIANT>(*result, answer);
                return S_OK;
            }
            const std::wstring call =
                std::to_wstring(id) + (kind & DISPATCH_PROPERTYPUT ? L"=" + value : L"");
            script.calls += call + L";";
            if (script.refused.contains(call)) {
                exception->bstrDescription = SysAllocString(L"Odmietnuté.");
                return DISP_E_EXCEPTION;
            }
            if (script.silent.contains(value)) return S_OK;
        }
        if (opens) {
            raise(kOpenStateChange, 0, 1);
            raise(kOpenStateChange, 1, kOpen);
            raise(kNewStream);
        }
        if (opens || id == kPlay) raise(kPlayStateChange, 0, kPlaying);
        if (id == kPause) raise(kPlayStateChange, 0, kPaused);
        if (id == kStop) raise(kPlayStateChange, 0, kStopped);
        return S_OK;
    }

  private:
    void raise(DISPID event, long first = 0, long second = 0) {
        Variant arguments[2]{Variant(second), Variant(first)};  // the last one first
        DISPPARAMS parameters{arguments, nullptr, 2, 0};
        if (sink_)
            sink_->Invoke(event, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                          nullptr);
    }
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM event, LPARAM states) {
        if (message != WM_APP) return DefWindowProcW(window, message, event, states);
        reinterpret_cast<Control*>(GetWindowLongPtrW(window, GWLP_USERDATA))
            ->raise(static_cast<DISPID>(event), LOWORD(states), HIWORD(states));
        return 0;
    }

    SystemWindow window_;
    ComPtr<IOleClientSite> site_;
    ComPtr<IDispatch> sink_;
};

class Factory final : public SingleComObject<IClassFactory> {
  public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** result) override {
        return ComPtr<Control>(new Control)->QueryInterface(iid, result);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

// What the program does, on a thread for which the class is registered.
std::unique_ptr<MediaEngine> createThere() {
    CLSID kind;
    CLSIDFromString(kClass, &kind);
    DWORD cookie = 0;
    const ComPtr<Factory> factory(new Factory);
    CoRegisterClassObject(kind, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie);
    auto engine = createMediaEngine();
    CoRevokeClassObject(cookie);
    return engine;
}

class MediaControlTest : public testing::Test {
  protected:
    void SetUp() override {
        script.calls.clear();
        script.refused.clear();
        script.silent.clear();
        script.answers = {
            {kDuration, L"61,5"}, {kCurrentPosition, L"2"}, {8, L"Ľúbezná"}, {9, L"Žofia"}};
    }
    void TearDown() override {
        SetEvent(script.opens.get());
        player_.destroy();
        EXPECT_TRUE(runUntil([] { return script.living == 0; })) << "no reference is kept";
    }
    static void raise(DISPID event, int first = 0, int second = 0) {
        SendMessageW(script.window, WM_APP, static_cast<WPARAM>(event), MAKELPARAM(first, second));
    }
    static std::wstring calls() {
        const std::scoped_lock lock(script.lock);
        return std::exchange(script.calls, {});
    }
    static bool untilCalled(const std::wstring& call) {
        return runUntil([&] {
            const std::scoped_lock lock(script.lock);
            return script.calls.find(call + L";") != std::wstring::npos;
        });
    }

    WatchedPlayer player_{createThere};
};

TEST_F(MediaControlTest, playsAFileUnseen) {
    player_->setVolume(-1500);
    player_->setFileName(L"E:\\Ľudové\\ľubezná.wma");
    ASSERT_TRUE(player_.untilTold(L"0-2 "));
    EXPECT_TRUE(script.active);
    EXPECT_EQ(calls(), L"1017=-1;19=-1500;1026=E:\\Ľudové\\ľubezná.wma;");
    EXPECT_EQ(player_->details(), (ClipDetails{L"Ľúbezná", L"Žofia"}));
    EXPECT_EQ(player_->Duration(), 61.5);
    player_->setCurrentPosition(30);
    player_->Pause();
    ASSERT_TRUE(player_.untilTold(L"2-1 "));
    player_->Play();
    ASSERT_TRUE(player_.untilTold(L"1-2 "));
    player_->Stop();
    ASSERT_TRUE(player_.untilTold(L"2-0 "));
    EXPECT_EQ(calls(), L"1027=30;2002;2001;2003;1026=;") << "a stopped file is closed";
    player_->Play();
    ASSERT_TRUE(player_.untilTold(L"0-2 "));
    raise(kEndOfStream);
    ASSERT_TRUE(player_.untilTold(L"end "));
    EXPECT_EQ(player_.told(), L"new 0-2 2-1 1-2 2-0 new 0-2 2-0 end ");
}

TEST_F(MediaControlTest, theEndOfAnEntryIsNotTheEndOfTheList) {
    player_->setFileName(L"E:\\zoznam.m3u");
    ASSERT_TRUE(player_.untilTold(L"0-2 "));
    player_->Next();
    ASSERT_TRUE(untilCalled(L"2023"));
    raise(kEndOfStream);
    raise(kPlayStateChange, 2, 0);
    raise(kOpenStateChange, 6, 1);
    raise(kOpenStateChange, 1, 6);
    raise(kPlayStateChange, 0, 2);
    ASSERT_TRUE(player_.untilTold(L"new "));
    raise(kEndOfStream);  // of the last one: nothing follows
    ASSERT_TRUE(player_.untilTold(L"end "));
    EXPECT_EQ(player_.told(), L"new 0-2 new 2-0 end ");
}

TEST_F(MediaControlTest, aFailureIsToldOnceAndNeverAsSuccess) {
    script.silent = {L"E:\\a.mp3"};
    script.answers[kErrorCode] = L"0";
    player_->setFileName(L"E:\\a.mp3");
    ASSERT_TRUE(untilCalled(L"1026=E:\\a.mp3"));
    raise(kError);
    raise(kError);
    ASSERT_TRUE(player_.untilTold(L"error "));
    EXPECT_EQ(player_->ErrorDescription(), L" Neznáma chyba (0x00000000) ");
    script.refused = {L"1026=E:\\b.mp3"};
    player_->setFileName(L"E:\\b.mp3");
    ASSERT_TRUE(player_.untilTold(L"error "));
    EXPECT_EQ(player_->ErrorDescription(), L"Odmietnuté.");
    EXPECT_EQ(player_.told(), L"error error ");
}

// The control opens within the call that sets the file.
TEST_F(MediaControlTest, openingsThatHangHoldNobodyUp) {
    constexpr int kFiles = 10;
    ResetEvent(script.opens.get());
    DWORD blocked = 0;
    for (int file = 0; file < kFiles; ++file) {
        ASSERT_TRUE(runUntil([&] { return script.hanging == file; }));
        const DWORD start = GetTickCount();
        player_->setFileName(L"E:\\" + std::to_wstring(file) + L".mp3");
        blocked += GetTickCount() - start;
    }
    EXPECT_LE(blocked, 1000u);
    ASSERT_TRUE(runUntil([] { return script.hanging == kFiles; })) << "each hangs";
    const DWORD start = GetTickCount();
    player_->release();
    EXPECT_LE(GetTickCount() - start, 2000u) << "they do not add up";
    player_->setFileName(L"E:\\a.mp3");
    player_->Pause();
    SetEvent(script.opens.get());
    ASSERT_TRUE(player_.untilTold(L"0-1 ")) << "remembered while it was opening";
    EXPECT_EQ(player_.told(), L"new 0-1 ");
    ASSERT_TRUE(runUntil([] { return script.living == 1; })) << "they end once they may";
}

TEST_F(MediaControlTest, isChosenOnlyWhereItWorks) {
    EXPECT_TRUE(createThere()->takesLists());
    script.connects = false;
    EXPECT_FALSE(createThere()->takesLists());
    script.connects = true;
    EXPECT_FALSE(createMediaEngine()->takesLists()) << "not registered";
}

}  // namespace
}  // namespace tunovka
