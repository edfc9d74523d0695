#pragma once

#include <windows.h>

#include "files/fsoakcie.h"
#include "support/person.h"
#include "support/scratch_folder.h"

namespace tunovka {

// What an explorer is to the file operations, with a person who chooses `chosenFolder` and
// remembers what was asked and told.
struct FileStage {
    TextBox txtsubor, txtodkaz;
    std::wstring chosenFolder;
    std::vector<std::wstring> prompts, closed;
    Person person;

    FSOakcie::Explorer explorer{
        .txtsubor = txtsubor,
        .txtodkaz = txtodkaz,
        .pickFolder =
            [this](std::wstring_view prompt) {
                prompts.emplace_back(prompt);
                return chosenFolder;
            },
        .carry =
            [this](const std::wstring&, const FSOakcie::Explorer::Work& work) {
                return work(
                    {.closeFile = [this](const std::wstring& path) { closed.push_back(path); }});
            },
    };

    // Every operation that does not fail writes its command: a text of before does not stay.
    static constexpr wchar_t kBefore[] = L"before";

    // Runs an operation with these answers to its questions.
    void run(int operation, const std::wstring& source, const std::wstring& destination = {}) {
        txtodkaz.setText(kBefore);
        FSOakcie::carryOut(explorer, operation, source, destination);
    }
    const std::wstring& command() const { return txtodkaz.text(); }
};

}  // namespace tunovka
