#pragma once

#include <string>
#include <vector>

#include "ui/program_links.h"

namespace tunovka {

// The program around a window, which remembers what it is told.
struct Program : ProgramLinks {
    void tellExplorer(const std::wstring& command) override { told.push_back(command); }
    std::wstring shownFolder() const override { return folder; }
    std::wstring folderToSearch() const override { return searched; }
    void openEditor(const std::wstring& command) override { told.push_back(L"edit:" + command); }
    void showInformation(const std::wstring& command) override {
        told.push_back(L"info:" + command);
    }

    std::wstring folder, searched;
    std::vector<std::wstring> told;
};

}  // namespace tunovka
