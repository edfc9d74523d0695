#pragma once

#include <cstdlib>
#include <string>

#include "app/frm_prieskumnik.h"
#include "core/loop.h"
#include "core/multimedialny.h"
#include "ui/box.h"

namespace tunovka {

// Opens the explorer on a folder, as the program's start does.
inline frmPrieskumnik& startProgram(const std::wstring& folder) {
    installFailureNotice();
    MultiMedialny::InitSharedTables();
    frmPrieskumnik& explorer = Forms::load<frmPrieskumnik>();
    explorer.load();
    explorer.folders.strom.select(folder);
    explorer.contents.ListFolderContents(folder);
    return explorer;
}

// A number that the person who starts the test may set in the environment.
inline int setting(const char* name, int otherwise) {
    const char* const text = std::getenv(name);
    return text ? std::atoi(text) : otherwise;
}

}  // namespace tunovka
