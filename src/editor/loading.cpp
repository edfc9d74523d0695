// Reading a playlist into an editor.

#include "core/ansi.h"
#include "core/file_system.h"
#include "editor/editor.h"

namespace tunovka {

void loadPlaylistFile(Editor& editor, const std::wstring& path) {
    const std::wstring text = fromAnsi(FileSystemObject::readAll(path));
    editor.document.load(path, text, editor.files.anew(), editor.hooks());
    if (editor.form.isClosing()) return;
    if (editor.document.mayBeSaved()) editor.view.select(0);
}

}  // namespace tunovka
