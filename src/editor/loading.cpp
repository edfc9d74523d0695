// Reading a playlist into an editor.

#include "core/ansi.h"
#include "core/file_system.h"
#include "editor/editor.h"

namespace tunovka {

void loadPlaylistFile(Editor& editor, const std::wstring& path) {
    const std::wstring text = fromAnsi(FileSystemObject::readAll(path));
    try {
        editor.document.load(path, text, editor.files.anew(), editor.hooks());
    } catch (...) {
        editor.view.showRows();  // what was read before the error
        throw;
    }
    if (editor.form.isClosing()) return;
    editor.view.showRows();
    if (editor.document.mayBeSaved()) editor.view.select(0);
}

}  // namespace tunovka
