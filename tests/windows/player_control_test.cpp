// The media control as an engine, against a stand-in whose class object this program registers.
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first: these need its types.
#include <ocidl.h>
#include <ole2.h>

#include <map>
#include <mutex>

#include "core/com_object.h"
#include "player/media_control.h"
#include "support/player_watch.h"

namespace tunovka {
namespace {

using namespace media_control;

struct Event {
    DISPID id;
    long was = 0, is = 0;
};
using Events = std::vector<Event>;
const Events kOpens{{kOpenStateChange, 0, 1},
                    {kOpenStateChange, 1, kOpen},
                    {kNewStream},
                    {kPlayStateChange, 0, kPlaying}};

// What the test sets and what the controls did, on whichever thread they live.
struct Script {
    std::mutex lock;
    std::wstring calls;                     // "1026=E:\a.mp3;2001;": member, value
    std::wstring refused;                   // the call that fails
    std::map<std::wstring, Events> events;  // of a call; a file opens unless it is told otherwise
    std::map<DISPID, std::wstring> answers;
    KernelHandle opens{CreateEventW(nullptr, TRUE, TRUE, nullptr)};  // every opening waits for it
    std::atomic<int> living = 0, hanging = 0;
    std::atomic<bool> connects = true;
} script;

#define NOT_NEEDED(name, ...)                              \
    HRESULT STDMETHODCALLTYPE name(__VA_ARGS__) override { \
        return E_NOTIMPL;                                  \
    }

// What a host asks of it beside the members that the program calls is answered by the system's
// default handler.
class Control final : public ComObject<IDispatch, IConnectionPointContainer, IConnectionPoint> {
  public:
    Control() {
        ++script.living;
        OleCreateDefaultHandler(CLSID_NULL, static_cast<IDispatch*>(this), IID_IUnknown,
                                handler_.receiveVoid());
    }
    ~Control() override {
        AddRef();  // the handler may still ask for its owner
        --script.living;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
        if (iid == IID_IUnknown || iid == IID_IDispatch) return handOut<IDispatch>(result);
        if (iid == IID_IConnectionPointContainer && script.connects)
            return handOut<IConnectionPointContainer>(result);
        return handler_->QueryInterface(iid, result);
    }

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
        std::unique_lock lock(script.lock);
        if (result) {
            Variant answer(script.answers[id == kGetMediaInfoString ? std::stoi(value) : id]);
            std::swap<VARIANT>(*result, answer);
            return S_OK;
        }
        const bool puts = kind & DISPATCH_PROPERTYPUT;
        const std::wstring call = std::to_wstring(id) + (puts ? L"=" + value : L"");
        script.calls += call + L";";
        if (script.refused == call) {
            exception->bstrDescription = SysAllocString(L"Odmietnuté.");
            return DISP_E_EXCEPTION;
        }
        const Events events = opens && !script.events.contains(call) ? kOpens : script.events[call];
        lock.unlock();
        for (const Event& event : events) {
            Variant arguments[2]{Variant(event.is), Variant(event.was)};  // the last one first
            DISPPARAMS both{arguments, nullptr, 2, 0};
            if (sink_) sink_->Invoke(event.id, IID_NULL, 0, DISPATCH_METHOD, &both, {}, {}, {});
        }
        return S_OK;
    }

  private:
    ComPtr<IUnknown> handler_;
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
    MediaControlTest() {
        script.calls = script.refused = L"";
        script.answers = {{kDuration, L"61,5"},
                          {kCurrentPosition, L"2"},
                          {kTitle, L"Ľúbezná"},
                          {kAuthor, L"Žofia"}};
        script.events = {{L"2001", {{kPlayStateChange, 0, kPlaying}}},
                         {L"2002", {{kPlayStateChange, 0, kPaused}}},
                         {L"2003", {{kPlayStateChange, 0, kStopped}}},
                         {L"1027=61", {{kEndOfStream}}}};
    }
    void TearDown() override {
        SetEvent(script.opens.get());
        player_.destroy();
        EXPECT_TRUE(runUntil([] { return script.living == 0; })) << "no reference is kept";
    }
    static std::wstring calls() {
        const std::scoped_lock lock(script.lock);
        return std::exchange(script.calls, {});
    }

    WatchedPlayer player_{createThere};
};

TEST_F(MediaControlTest, playsAFileUnseen) {
    player_->setVolume(-1500);
    player_->setFileName(L"E:\\Ľudové\\ľubezná.wma");
    ASSERT_TRUE(player_.untilTold(L"0-2 "));
    const HWND host = FindWindowW(L"AtlAxWin", nullptr);
    EXPECT_TRUE(host && !IsWindowVisible(host));
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
    player_->setCurrentPosition(61);
    ASSERT_TRUE(player_.untilTold(L"end "));
    EXPECT_EQ(player_.told(), L"new 0-2 2-1 1-2 2-0 new 0-2 2-0 end ");
}

TEST_F(MediaControlTest, theEndOfAnEntryIsNotTheEndOfTheList) {
    script.events[L"2023"] = {{kEndOfStream},
                              {kPlayStateChange, kPlaying, kStopped},
                              {kOpenStateChange, kOpen, 1},
                              {kOpenStateChange, 1, kOpen},
                              {kPlayStateChange, kStopped, kPlaying}};
    player_->setFileName(L"E:\\zoznam.m3u");
    ASSERT_TRUE(player_.untilTold(L"0-2 "));
    player_->Next();
    ASSERT_TRUE(player_.untilTold(L"new "));
    player_->setCurrentPosition(61);  // the end of the last one: nothing follows
    ASSERT_TRUE(player_.untilTold(L"end "));
    EXPECT_EQ(player_.told(), L"new 0-2 new 2-0 end ");
}

TEST_F(MediaControlTest, aFailureIsToldOnceAndNeverAsSuccess) {
    script.answers[kErrorCode] = L"0";
    script.events[L"1026=E:\\a.mp3"] = {{kError}, {kError}};
    script.refused = L"1026=E:\\b.mp3";
    for (const auto& [file, text] : {std::pair{L"E:\\a.mp3", L" Neznáma chyba (0x00000000) "},
                                     {L"E:\\b.mp3", L"Odmietnuté."}}) {
        player_->setFileName(file);
        ASSERT_TRUE(player_.untilTold(L"error "));
        EXPECT_EQ(player_->ErrorDescription(), text);
        EXPECT_EQ(player_.told(), L"error ");
    }
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
