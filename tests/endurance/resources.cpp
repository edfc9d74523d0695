#include "endurance/resources.h"

#include <windows.h>
// windows.h first: these need its types.
#include <malloc.h>
#include <tlhelp32.h>
#include <winternl.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>
#include <vector>

#include "core/handle.h"
#include "ui/skin.h"

namespace {
std::atomic<int> memoryInUse{0};
}

// The program's containers, texts and objects all come from here.
void* operator new(std::size_t size) {
    void* const memory = std::malloc(size ? size : 1);
    if (!memory) throw std::bad_alloc();
    memoryInUse += static_cast<int>(_msize(memory));
    return memory;
}

void operator delete(void* memory) noexcept {
    if (memory) memoryInUse -= static_cast<int>(_msize(memory));
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace tunovka {
namespace {

BOOL CALLBACK countWindow(HWND window, LPARAM count) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId()) return TRUE;
    ++*reinterpret_cast<int*>(count);
    if (!(GetWindowLongW(window, GWL_STYLE) & WS_CHILD))
        EnumChildWindows(window, countWindow, count);
    return TRUE;
}

int countWindows() {
    int count = 0;
    EnumWindows(countWindow, reinterpret_cast<LPARAM>(&count));
    HWND unseen = nullptr;
    while ((unseen = FindWindowExW(HWND_MESSAGE, unseen, nullptr, nullptr)))
        countWindow(unseen, reinterpret_cast<LPARAM>(&count));
    return count;
}

// Menus and GDI objects are known by the low word of their handle, menus by every second one.
template <typename Type, typename IsOne>
int countLowWords(IsOne isOne, UINT_PTR step = 1) {
    int count = 0;
    for (UINT_PTR word = 0; word < 0x10000; word += step)
        count += isOne(reinterpret_cast<Type>(word)) != 0;
    return count;
}

// The longer form: the shorter one cuts a handle's value to 16 bits, which long playing exceeds.
struct HandleEntry {
    PVOID object;
    ULONG_PTR process, value;
    ACCESS_MASK access;
    USHORT creator, type;
    ULONG attributes, reserved;
};

std::vector<HandleEntry> handlesOfThisProcess() {
    constexpr auto kHandles = static_cast<SYSTEM_INFORMATION_CLASS>(64);
    std::vector<ULONG> answer(1 << 16);
    ULONG size = 0;
    while (NtQuerySystemInformation(kHandles, answer.data(),
                                    static_cast<ULONG>(answer.size() * sizeof(ULONG)), &size) < 0)
        answer.resize(answer.size() * 2);
    const auto* const entries = reinterpret_cast<const HandleEntry*>(answer.data() + 2);
    std::vector<HandleEntry> own(entries, entries + answer[0]);
    std::erase_if(own,
                  [](const HandleEntry& entry) { return entry.process != GetCurrentProcessId(); });
    return own;
}

// All but events and registry keys: a graph that is built for a sound file and released at once
// costs 79 of them under Wine, and the program holds none longer than a question takes.
int countHandles() {
    const KernelHandle event(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    RegistryKey key;
    RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software", 0, KEY_READ, key.receive());
    const std::vector<HandleEntry> handles = handlesOfThisProcess();
    const auto typeOf = [&](const void* handle) {
        for (const HandleEntry& entry : handles)
            if (entry.value == reinterpret_cast<UINT_PTR>(handle)) return entry.type;
        return USHORT{0};
    };
    const USHORT eventType = typeOf(event.get()), keyType = typeOf(key.get());
    return static_cast<int>(std::ranges::count_if(handles, [&](const HandleEntry& entry) {
        return entry.type != eventType && entry.type != keyType;
    }));
}

int countThreads() {
    const FileHandle list(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    int count = 0;
    for (BOOL more = Thread32First(list.get(), &entry); more;
         more = Thread32Next(list.get(), &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    return count;
}

}  // namespace

Resources Resources::now() {
    Skin::forgetBitmaps();  // how many are kept depends on what was drawn last
    Resources it;
    it.windows = countWindows();
    it.menus = countLowWords<HMENU>(IsMenu, 2);
    it.gdi = countLowWords<HGDIOBJ>(GetObjectType);
    it.handles = countHandles();
    it.threads = countThreads();
    it.memory = memoryInUse;
    return it;
}

}  // namespace tunovka
