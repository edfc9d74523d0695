#include "endurance/resources.h"

#include <windows.h>
// windows.h first: these need its types.
#include <malloc.h>
#include <tlhelp32.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "core/handle.h"
#include "support/machine.h"
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

// Menus and GDI objects are known by the low word of their handle, menus by every second one.
template <typename Type, typename IsOne>
int countLowWords(IsOne isOne, UINT_PTR step = 1) {
    int count = 0;
    for (UINT_PTR word = 0; word < 0x10000; word += step)
        count += isOne(reinterpret_cast<Type>(word)) != 0;
    return count;
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
    it.menus = countLowWords<HMENU>(IsMenu, 2);
    it.gdi = countLowWords<HGDIOBJ>(GetObjectType);
    it.threads = countThreads();
    it.memory = memoryInUse;
    return it;
}

}  // namespace tunovka
