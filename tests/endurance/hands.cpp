#include "endurance/hands.h"

#include <atomic>

namespace tunovka {
namespace {

std::atomic<unsigned> beats{0};

void CALLBACK beat(HWND, UINT, UINT_PTR, DWORD) {
    ++beats;
}

void sendKey(WORD key, WORD letter, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = letter;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}

}  // namespace

Pulse::Pulse() : timer_(SetTimer(nullptr, 0, USER_TIMER_MINIMUM, beat)) {}

Pulse::~Pulse() {
    KillTimer(nullptr, timer_);
}

// The first beat may have been under way already.
bool Pulse::awaitRest() {
    const unsigned from = beats;
    for (const DWORD start = GetTickCount(); beats - from < 2; Sleep(1))
        if (GetTickCount() - start > kPatience) return false;
    return true;
}

void Hands::rest() {
    if (!Pulse::awaitRest()) throw Hangs();
}

void Hands::moveTo(POINT at) {
    SetCursorPos(at.x, at.y);
    rest();
}

void Hands::button(DWORD flags, DWORD data) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = data;
    SendInput(1, &input, sizeof input);
}

void Hands::click(POINT at, int times) {
    moveTo(at);
    while (times-- > 0) button(MOUSEEVENTF_LEFTDOWN), button(MOUSEEVENTF_LEFTUP);
    rest();
}

void Hands::clickRight(POINT at) {
    moveTo(at);
    button(MOUSEEVENTF_RIGHTDOWN);
    button(MOUSEEVENTF_RIGHTUP);
    rest();
}

void Hands::drag(POINT from, POINT to) {
    constexpr int kSteps = 6;
    moveTo(from);
    button(MOUSEEVENTF_LEFTDOWN);
    rest();
    for (int step = 1; step <= kSteps; ++step)
        moveTo(
            {from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps});
    button(MOUSEEVENTF_LEFTUP);
    rest();
}

void Hands::turnWheel(POINT at, int notches) {
    moveTo(at);
    button(MOUSEEVENTF_WHEEL, static_cast<DWORD>(notches * WHEEL_DELTA));
    rest();
}

void Hands::press(WORD key, WORD held) {
    if (held) sendKey(held, 0, 0);
    sendKey(key, 0, 0);
    sendKey(key, 0, KEYEVENTF_KEYUP);
    if (held) sendKey(held, 0, KEYEVENTF_KEYUP);
    rest();
}

void Hands::type(const std::wstring& text) {
    for (const wchar_t letter : text) {
        sendKey(0, letter, KEYEVENTF_UNICODE);
        sendKey(0, letter, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
    }
    rest();
}

}  // namespace tunovka
