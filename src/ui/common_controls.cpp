#include "ui/common_controls.h"

#include "core/late_function.h"

namespace tunovka::CommonControls {
namespace {

constexpr wchar_t kLibrary[] = L"comctl32.dll";

}  // namespace

void prepare() {
    static const bool ready = [] {
        const LateFunction<decltype(InitCommonControlsEx)> prepare(kLibrary,
                                                                   "InitCommonControlsEx");
        const INITCOMMONCONTROLSEX classes{
            sizeof classes,
            ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
        return prepare && prepare(&classes);
    }();
    (void)ready;
}

HIMAGELIST createImageList(int width, int height, UINT flags, int count) {
    static const LateFunction<decltype(ImageList_Create)> create(kLibrary, "ImageList_Create");
    return create ? create(width, height, flags, count, 0) : nullptr;
}

void destroyImageList(HIMAGELIST list) {
    static const LateFunction<decltype(ImageList_Destroy)> destroy(kLibrary, "ImageList_Destroy");
    if (list && destroy) destroy(list);
}

bool addIcon(HIMAGELIST list, HICON icon) {
    static const LateFunction<decltype(ImageList_ReplaceIcon)> replace(kLibrary,
                                                                       "ImageList_ReplaceIcon");
    return list && replace && replace(list, -1, icon) >= 0;
}

}  // namespace tunovka::CommonControls
