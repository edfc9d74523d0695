// The counts on which the other tests rely.
#include "endurance/resources.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>

#include "core/handle.h"
#include "support/scratch_folder.h"

namespace tunovka {
namespace {

HWND makeWindow(DWORD style, HWND parent) {
    return CreateWindowW(L"STATIC", L"", style, 0, 0, 9, 9, parent, nullptr, nullptr, nullptr);
}

DWORD WINAPI awaitEvent(void* event) {
    return WaitForSingleObject(event, INFINITE);
}

// Something of each kind: 3 windows, a menu, a brush, a region, 2 handles beside the event's, a
// thread.
struct Takings {
    ~Takings() {
        SetEvent(event.get());
        WaitForSingleObject(thread.get(), INFINITE);
    }
    SystemWindow window{makeWindow(WS_POPUP, nullptr)};
    SystemWindow child{makeWindow(WS_CHILD, window.get())};
    SystemWindow unseen{makeWindow(0, HWND_MESSAGE)};
    MenuHandle menu{CreatePopupMenu()};
    Brush brush{CreateSolidBrush(0x123456)};
    Region region{CreateRectRgn(0, 0, 1, 1)};
    FileHandle file{CreateFileW((samplesFolder() + L"Vitajte.m3u").c_str(), GENERIC_READ,
                                FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr)};
    KernelHandle event{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    KernelHandle thread{CreateThread(nullptr, 0, awaitEvent, event.get(), 0, nullptr)};
    std::unique_ptr<char[]> memory{new char[100]};
};

TEST(ResourcesTest, SeesEachKind) {
    const Takings first;  // brings what the system itself makes once, as does the end of another
    { const Takings ended; }
    Resources::now();
    const Resources before = Resources::now();
    {
        const Takings takings;
        const Resources now = Resources::now();
        EXPECT_EQ(now.windows, before.windows + 3);
        EXPECT_EQ(now.menus, before.menus + 1);
        EXPECT_GE(now.gdi, before.gdi + 2);
        EXPECT_EQ(now.handles, before.handles + 2);
        EXPECT_EQ(now.threads, before.threads + 1);
        EXPECT_EQ(now.memory, before.memory + 100);
    }
    EXPECT_FALSE(Resources::now().exceeds(before, 0)) << before << " -> " << Resources::now();
}

}  // namespace
}  // namespace tunovka
