#pragma once

#include <ostream>

namespace tunovka {

// What this test program holds. Counted one by one: the system's own counters of a process
// (GetGuiResources, GetProcessHandleCount) always give 0 under Wine.
struct Resources {
    int windows = 0;  // message-only ones too
    int menus = 0;
    int gdi = 0;      // device contexts, bitmaps (those of icons too), brushes, fonts, regions
    int handles = 0;  // but events and registry keys
    int threads = 0;
    int memory = 0;  // bytes that came from operator new, none of the system's own

    static Resources now();

    // Whether there is more than before of anything.
    bool exceeds(const Resources& before) const {
        return windows > before.windows || menus > before.menus || gdi > before.gdi ||
               handles > before.handles || threads > before.threads || memory > before.memory;
    }
};

inline std::ostream& operator<<(std::ostream& out, const Resources& it) {
    return out << it.windows << " windows, " << it.menus << " menus, " << it.gdi << " GDI objects, "
               << it.handles << " handles, " << it.threads << " threads, " << it.memory << " bytes";
}

}  // namespace tunovka
