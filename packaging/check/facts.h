#pragma once

#include <string>

namespace check {

// What a failure may depend on, a line each, UTF-8: the system, its code pages, screens, common
// controls, and what there is to play with.
std::string facts();

}  // namespace check
