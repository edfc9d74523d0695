#pragma once

#include <string>

namespace tunovka {

// A time in seconds as "1:05 min" or "1 h 2:05 min"; what is no time above zero is "0:00 min".
std::wstring timeText(double seconds);

}  // namespace tunovka
