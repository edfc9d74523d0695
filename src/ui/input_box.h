#pragma once

#include <cstddef>
#include <string>

namespace tunovka {

class Form;

// A question that is answered by typing one line.
struct InputRequest {
    std::wstring title;
    std::wstring prompt;
    std::wstring answer;  // what stands in the field at first
    std::size_t selected =
        0;  // letters at its start that are selected, so that typing replaces them
};

// Asks modally over a form. Returns the text as typed, "" when the person cancels.
std::wstring askForText(const Form& owner, const InputRequest& request);

}  // namespace tunovka
