#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

// A fuzz target holds promises of the program against any bytes. libFuzzer looks for bytes that
// break one (libfuzzer_entry.cpp, one program a target); the checked-in corpus is tried by a test
// on every system (corpus_test.cpp, all targets in one program).
namespace tunovka::fuzz {

using Target = void (*)(std::string_view input);

// The targets of this program by their names, which are those of their corpus folders.
std::map<std::string, Target>& targets();

// Names a target: one of these in each target's file.
struct Named {
    Named(const std::string& name, Target target) { targets()[name] = target; }
};

// A promise that does not hold. Nothing catches it under libFuzzer, which so keeps the input.
struct Broken : std::logic_error {
    using logic_error::logic_error;
};

inline void require(bool holds, const char* promise) {
    if (!holds) throw Broken(promise);
}

// Bytes as text: ASCII as it is, the upper half as letters that matter somewhere: with and without
// two cases, parts of a surrogate pair, marks that look like separators.
std::wstring wide(std::string_view bytes);

// The first line of the rest of an input, without its line end; the rest goes on behind it.
std::string_view takeLine(std::string_view& rest);

}  // namespace tunovka::fuzz
