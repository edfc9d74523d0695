#pragma once

#include <ostream>

namespace tunovka {

// What this test program holds. Counted one by one: the system's own counters of a process
// (GetGuiResources, GetProcessHandleCount) always give 0 under Wine.
struct Resources {
    int menus = 0;
    int gdi = 0;  // device contexts, bitmaps (those of icons too), brushes, fonts, regions
    int threads = 0;
    int memory = 0;  // bytes that came from operator new, none of the system's own

    static Resources now();

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
