#pragma once

#include <objidl.h>

#include <string>

namespace tunovka {

// A text as a data object, in the formats CF_UNICODETEXT and CF_TEXT (the system's ANSI code page;
// characters that it cannot hold become the system's replacement there). The caller releases it.
IDataObject* createTextData(const std::wstring& text);

// True when a data object offers a text.
bool hasText(IDataObject* data);

// The text of a data object, the Unicode form preferred; false when there is none.
bool textOf(IDataObject* data, std::wstring& text);

}  // namespace tunovka
