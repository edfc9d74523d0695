#pragma once

#include <windows.h>
// windows.h first: these need its types.
#include <malloc.h>
#include <tlhelp32.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <ostream>

#include "core/handle.h"
#include "ui/skin.h"

// What this test program holds, counted one by one: the system's own counters of a process
// (GetGuiResources, GetProcessHandleCount) always give 0 under Wine.

static std::atomic<int> memoryInUse = 0;

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

struct Resources {
    int menus = 0;
    int gdi = 0;  // device contexts, bitmaps (those of icons too), brushes, fonts, regions
    int threads = 0;
    int memory = 0;  // bytes that came from operator new, none of the system's own

    static Resources now() {
        Skin::forgetBitmaps();  // how many are kept depends on what was drawn last
        // Menus and GDI objects are known by the low word of their handle, menus by every second.
        Resources it;
        for (UINT_PTR word = 0; word < 0x10000; ++word) {
            it.menus += word % 2 == 0 && IsMenu(reinterpret_cast<HMENU>(word));
            it.gdi += GetObjectType(reinterpret_cast<HGDIOBJ>(word)) != 0;
        }
        const FileHandle list(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
        THREADENTRY32 entry{.dwSize = sizeof entry};
        for (BOOL more = Thread32First(list.get(), &entry); more;
             more = Thread32Next(list.get(), &entry))
            it.threads += entry.th32OwnerProcessID == GetCurrentProcessId();
        it.memory = memoryInUse;
        return it;
    }

    // Whether there is more than before of anything.
    bool exceeds(const Resources& before) const {
        return menus > before.menus || gdi > before.gdi || threads > before.threads ||
               memory > before.memory;
    }
};

inline std::ostream& operator<<(std::ostream& out, const Resources& it) {
    return out << it.menus << " menus, " << it.gdi << " GDI objects, " << it.threads << " threads, "
               << it.memory << " bytes";
}

}  // namespace tunovka
