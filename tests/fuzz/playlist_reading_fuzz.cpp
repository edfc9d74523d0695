// The three readers on the text of any file: none fails, and no entry is lost, moved or made up.
#include "core/errors.h"
#include "core/text.h"
#include "editor/document.h"
#include "fuzz/fuzz.h"
#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"

namespace tunovka::fuzz {
namespace {

using Lines = std::vector<std::wstring>;

const std::wstring kList = L"C:\\pl\\sub\\list.m3u";

// A line ends at LF, a CR right before it is dropped; a last LF gives no further line.
Lines linesOf(const std::wstring& text) {
    Lines lines = split(text, L'\n');
    for (std::size_t at = 0; at + 1 < lines.size(); ++at)
        if (lines[at].ends_with(L'\r')) lines[at].pop_back();
    if (lines.back().empty()) lines.pop_back();
    return lines;
}

bool isEntry(const std::wstring& line) {
    return line.ends_with(L".mp3") || line.ends_with(L".wav") || line.ends_with(L".wma");
}

void editorReads(const std::wstring& text, const Lines& entries) {
    EditorDocument document;
    FilesAsked none(false);
    document.load(kList, text, none);
    require(document.mayBeSaved() == !entries.empty(), "a list with entries may be saved");
    require(none.asked.size() == entries.size(), "every entry's file is looked for");
    if (entries.empty()) {
        require(document.rows().size() == 1 && document.rows()[0].name() == kNothingFound,
                "a list without entries says so");
        return;
    }
    require(document.rows().size() == entries.size(), "every entry line is a row");
    for (std::size_t at = 0; at < entries.size(); ++at) {
        require(document.rows()[at].key == entryKey(static_cast<std::int16_t>(at + 1), entries[at]),
                "rows are numbered and hold their lines in the file's order");
        require(document.rows()[at].missing, "missing files are known");
    }
}

void mergeReads(const std::wstring& text, const Lines& entries) {
    EditorDocument document;
    document.openNew(L"nový playlist");
    FilesAsked all(true);
    const auto report = document.merge(kList, text, all);
    require(report && report->added == static_cast<int>(entries.size()) && report->invalid == 0,
            "the report counts every entry line");
    require(document.changed(), "a merge is a change");
    require(document.rows().size() == entries.size(), "every entry line is a row");
}

void explorerReads(const Lines& lines) {
    for (const std::wstring& line : lines) {
        try {
            const auto entry = explorerEntryText(line);
            require(!entry || line.find(*entry) != line.npos, "what is shown stands in the line");
        } catch (const RuntimeError& error) {
            require(error.number == kInvalidCall, "only half a reference is refused");
        }
    }
}

}  // namespace

void run(std::string_view input) {
    const std::wstring text = wide(input);
    const Lines lines = linesOf(text);
    Lines entries = lines;
    std::erase_if(entries, [](const std::wstring& line) { return !isEntry(line); });
    editorReads(text, entries);
    mergeReads(text, entries);
    explorerReads(lines);
}

}  // namespace tunovka::fuzz
