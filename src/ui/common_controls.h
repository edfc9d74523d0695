#pragma once

#include <windows.h>

#include <commctrl.h>

namespace tunovka {

// The common controls library, looked up when the first control or picture list is made: loading
// it is a good part of a program's start, and the first picture of the explorer needs none of it.
namespace CommonControls {

// Makes the classes of its controls known.
void prepare();

HIMAGELIST createImageList(int width, int height, UINT flags, int count);
void destroyImageList(HIMAGELIST list);
// Adds a picture at the end; false when it cannot.
bool addIcon(HIMAGELIST list, HICON icon);

}  // namespace CommonControls
}  // namespace tunovka
