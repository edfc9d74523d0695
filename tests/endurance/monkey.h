#pragma once

#include <windows.h>

#include <cstdlib>
#include <deque>
#include <random>
#include <string>
#include <vector>

#include "endurance/ground.h"
#include "endurance/hands.h"

namespace tunovka {

// Somebody who clicks, types, drags, opens and closes at random on all windows of one thread, from
// another thread. The same seed leads to the same intentions; where they lead depends on the
// windows that are there. It never touches the list of drives, so that it stays on its ground.
class Monkey {
  public:
    Monkey(DWORD thread, Ground& ground, unsigned seed, int steps);

    // Plays until all steps are done or no window is left. Raises Hangs, as leave() does.
    void play();
    int stepsLeft() const { return left_; }

    // Closes what is open the way a person does, until no window is left; false when one stays.
    bool leave();

    // What it did last, a line each.
    std::string lastDoings() const;

  private:
    struct Place {
        HWND window;
        POINT point;
    };

    int dice(int sides) { return static_cast<int>(random_() % static_cast<unsigned>(sides)); }
    template <typename Type>
    const Type& oneOf(const std::vector<Type>& things) {
        return things[static_cast<std::size_t>(dice(static_cast<int>(things.size())))];
    }

    void step();
    void chooseFromMenu();
    void answerSystemDialog(HWND dialog);
    void answerBox(HWND box, int button);
    void nameSomething();
    void useMouse(HWND window);
    void useKeys();
    void pressOnControl(HWND form, const std::wstring& name);
    Place anyPlace(HWND window);
    std::wstring anyName();
    void did(const std::string& what);

    DWORD thread_;
    Ground& ground_;
    std::mt19937 random_;
    int left_;
    Hands hands_;
    const bool loud_ = std::getenv("TUNOVKA_MONKEY_LOUD") != nullptr;
    std::deque<std::string> doings_;
    HWND lastDialog_ = nullptr;
    int tries_ = 0;  // at the system's dialog that is open
};

}  // namespace tunovka
