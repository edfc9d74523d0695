// The whole program in the hands of somebody who does anything: it goes on,
// and no file is lost to somebody who never agrees.
// TUNOVKA_SEED and TUNOVKA_STEPS, set by hand, lead to other and longer plays.
#include <gtest/gtest.h>
#include <windows.h>
// windows.h first: it needs its types.
#include <commctrl.h>

#include <random>

#include "endurance/ground.h"
#include "support/last_words.h"
#include "support/person.h"

namespace tunovka {
namespace {

// Clicks, types, drags, opens, answers and closes at random on all windows, by what is posted to
// them; the list of drives is left alone, so that it stays on its ground. The same seed leads to
// the same intentions.
class RandomHands {
  public:
    RandomHands(Ground& ground, unsigned seed, int steps)
        : ground_(ground), random_(seed), left_(steps) {
        timer_.onTick = [this] { step(); };
        timer_.setInterval(30);
    }
    bool done() const { return left_ <= 0; }

    Person person;  // answers what the hands lead to

  private:
    int dice(int sides) { return static_cast<int>(random_() % static_cast<unsigned>(sides)); }
    template <typename Type>
    const Type& oneOf(const std::vector<Type>& things) {
        return things[static_cast<std::size_t>(dice(static_cast<int>(things.size())))];
    }

    void step() {
        if (left_ <= 0) return leave();
        --left_;
        intend();
        if (const GUITHREADINFO state = stateOfThread(); state.flags & GUI_INMENUMODE) {
            for (int down = dice(6); down >= 0; --down) press(state.hwndMenuOwner, VK_DOWN);
            return press(state.hwndMenuOwner, oneOf<WORD>({VK_RIGHT, VK_RETURN, VK_ESCAPE}));
        }
        std::vector<HWND> places;
        for (const HWND top : WindowList::ofThisThread())
            if (IsWindowVisible(top) && IsWindowEnabled(top) && dynamic_cast<Form*>(windowOf(top)))
                for (const HWND place : WindowList::below(top)) {
                    const Window* const control = windowOf(place);
                    const bool closes = control && kClosing.contains(control->name());
                    if (control && IsWindowVisible(place) && IsWindowEnabled(place) &&
                        control->name() != L"Drive1" && (!closes || dice(20) == 0))
                        places.push_back(place);
                }
        if (!places.empty()) act(oneOf(places));
    }

    // What the person will answer to whatever opens next: never the first button, which agrees to
    // deleting and replacing.
    void intend() {
        person.answer({oneOf(std::vector{0, 2, 3})});
        person.saveAs({dice(4) ? ground_.path() + oneOf(kNames) : L""});
        person.type({oneOf(kNames)});
    }

    void act(HWND place) {
        RECT area{};
        GetClientRect(place, &area);
        // Trees and lists are filled from the top left.
        const LPARAM at = MAKELPARAM(dice(std::clamp<int>(area.right, 1, 180)),
                                     dice(std::clamp<int>(area.bottom, 1, 250)));
        const int way = dice(10);
        if (way < 3) return press(GetFocus(), oneOf(kKeys));
        const bool right = way == 3, twice = way > 7;
        PostMessageW(place, right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, MK_LBUTTON, at);
        if (way == 4) PostMessageW(place, WM_MOUSEMOVE, MK_LBUTTON, at + MAKELPARAM(dice(300), 40));
        PostMessageW(place, right ? WM_RBUTTONUP : WM_LBUTTONUP, 0, at);
        if (twice) PostMessageW(place, WM_LBUTTONDBLCLK, MK_LBUTTON, at);
        if (twice) PostMessageW(place, WM_LBUTTONUP, 0, at);
    }

    void leave() {
        person.answer({2});
        if (stateOfThread().flags & GUI_INMENUMODE) EndMenu();
        for (const HWND top : WindowList::ofThisThread())
            if (IsWindowVisible(top) && IsWindowEnabled(top))
                return static_cast<void>(PostMessageW(top, WM_CLOSE, 0, 0));
    }

    static void press(HWND window, WORD key) {
        if (!window) return;
        PostMessageW(window, WM_KEYDOWN, key, 1);
        PostMessageW(window, WM_KEYUP, key, 1);
    }

    const std::set<std::wstring> kClosing{L"Ikoniec", L"Tlacitko", L"IZavri", L"Iminim"};
    const std::vector<WORD> kKeys{VK_UP,     VK_DOWN, VK_LEFT,   VK_RIGHT, VK_HOME,  VK_END,
                                  VK_NEXT,   VK_F2,   VK_F5,     VK_TAB,   VK_SPACE, VK_APPS,
                                  VK_RETURN, VK_ADD,  VK_DELETE, 'P',      VK_ESCAPE};
    const std::vector<std::wstring> kNames{L"nový.m3u",
                                           L"nový.pls",
                                           L"nový.txt",
                                           L"nový.mp3",
                                           L"bez prípony",
                                           L"zlé:?*",
                                           L"con",
                                           L"  bodky...",
                                           L"niet\\x.m3u",
                                           L"plavba",
                                           L"Nová 歌",
                                           L"",
                                           std::wstring(300, L'x')};

    Ground& ground_;
    std::mt19937 random_;
    int left_;
    Timer timer_;
};

TEST(RandomHands, LoseNoFile) {
    const int seed = setting("TUNOVKA_SEED", 1), steps = setting("TUNOVKA_STEPS", 300);
    SCOPED_TRACE("TUNOVKA_SEED=" + std::to_string(seed) +
                 " TUNOVKA_STEPS=" + std::to_string(steps));
    Ground ground;
    for (RandomHands hands(ground, static_cast<unsigned>(seed), steps); !hands.done();) {
        LastWords::goesOn();
        startProgram(ground.path());
        runLoop();
    }
    EXPECT_EQ(ground.lost(), std::vector<std::wstring>());
}

}  // namespace
}  // namespace tunovka
