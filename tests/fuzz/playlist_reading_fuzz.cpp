// The three readers on the text of any file, held against the line grammar written once more.
#include <optional>

#include "core/errors.h"
#include "core/text.h"
#include "editor/document.h"
#include "fuzz/fuzz.h"
#include "playlist/entry_key.h"
#include "playlist/line_grammar.h"

namespace tunovka::fuzz {
namespace {

using Lines = std::vector<std::wstring>;

const std::wstring kList = L"C:\\pl\\sub\\list.m3u", kFolder = L"C:\\pl\\sub\\";

// A line ends at LF, a CR right before it is dropped; a last LF gives no further line.
Lines linesOf(const std::wstring& text) {
    Lines lines = split(text, L'\n');
    for (std::size_t at = 0; at + 1 < lines.size(); ++at)
        if (!lines[at].empty() && lines[at].back() == L'\r') lines[at].pop_back();
    if (lines.back().empty()) lines.pop_back();
    return lines;
}

// Parts stand in a text, one behind the other.
bool holds(std::wstring_view text, std::initializer_list<std::wstring_view> parts) {
    for (const std::wstring_view part : parts) {
        const auto at = text.find(part);
        if (at == text.npos) return false;
        text.remove_prefix(at + part.size());
    }
    return true;
}

bool endsLikeMusic(const std::wstring& line, const std::wstring& dot) {
    return line.ends_with(dot + L"mp3") || line.ends_with(dot + L"wav") ||
           line.ends_with(dot + L"wma");
}

Lines entryLines(Lines lines) {
    std::erase_if(lines, [](const std::wstring& line) { return !endsLikeMusic(line, L"."); });
    return lines;
}

std::wstring withoutFile(const std::wstring& text) {
    const bool prefixed = lowerCased(text).starts_with(L"file") && holds(text, {L"="});
    return prefixed ? text.substr(text.find(L'=') + 1) : text;
}

std::wstring absolute(const std::wstring& text) {
    if (holds(text, {L":\\"})) return text;
    return (text.starts_with(L'\\') ? L"C:" : kFolder) + text;
}

std::wstring merged(const std::wstring& text) {
    const bool fromRoot = text.starts_with(L"..") && !holds(text, {L":\\"});
    return fromRoot ? L"C:\\" + text.substr(2) : absolute(text);
}

// Every entry line is a row, in the file's order.
void requireRows(const EditorDocument& document, const Lines& texts) {
    require(document.rows().size() == texts.size(), "every entry line is a row");
    for (int at = 0; at < static_cast<int>(texts.size()); ++at) {
        const std::wstring& key = document.rows()[at].key;
        require(key == entryKey(static_cast<std::int16_t>(at + 1), texts[at]),
                "rows are numbered and hold their lines in the file's order");
    }
}

void editorReads(const std::wstring& text, const Lines& entries) {
    EditorDocument document;
    FilesAsked none(false);
    document.load(kList, text, none);
    const Lines& asked = none.asked;
    require(document.mayBeSaved() == !entries.empty(), "a list with entries may be saved");
    if (entries.empty()) {
        require(document.rows().size() == 1 && document.rows()[0].name() == kNothingFound,
                "a list without entries says so");
        return;
    }
    requireRows(document, entries);
    require(asked.size() == entries.size(), "every entry's file is looked for");
    for (std::size_t at = 0; at < entries.size(); ++at) {
        const bool isPls = entries[at].starts_with(L"File");
        require(asked[at] == absolute(isPls ? withoutFile(entries[at]) : entries[at]),
                "the editor looks where the entry says");
        require(document.rows()[at].missing, "missing files are known");
    }
}

void mergeReads(const std::wstring& text, Lines entries) {
    EditorDocument document;
    document.openNew(L"nový playlist");
    FilesAsked all(true);
    const auto report = document.merge(kList, text, all);
    require(report && report->added == static_cast<int>(entries.size()) && report->invalid == 0,
            "the report counts every entry line");
    require(document.changed(), "a merge is a change");
    for (std::wstring& entry : entries) entry = merged(withoutFile(entry));
    requireRows(document, entries);
}

// What the explorer makes of a line; nullopt for none, `refused` for half a reference.
std::optional<std::wstring> explorerText(std::wstring line, bool& refused) {
    const std::wstring lower = lowerCased(line);
    if (lower.starts_with(L'<') && holds(lower, {L"<", L"ref", L"href", L"=", L">"}) &&
        lower.ends_with(L'>')) {
        const Lines parts = split(line, L'"');
        refused = parts.size() < 3;
        if (refused) return std::nullopt;
        line = parts[1];
    }
    return endsLikeMusic(line, L"") ? std::optional(line) : std::nullopt;
}

void explorerReads(const Lines& lines) {
    for (const std::wstring& line : lines) {
        bool refused = false;
        const auto expected = explorerText(line, refused);
        try {
            require(explorerEntryText(line) == expected && !refused, "the explorer's line rule");
        } catch (const RuntimeError& error) {
            require(refused && error.number == kInvalidCall, "only half a reference is refused");
        }
        if (!expected) continue;
        const std::wstring path = absolute(withoutFile(*expected));
        require(nodePath(playlistNodeKey(L"LIST~1.M3U", 1, *expected), kFolder) == path,
                "the node's key leads to the entry's file");
    }
}

}  // namespace

void run(std::string_view input) {
    const std::wstring text = wide(input);
    const Lines lines = linesOf(text), entries = entryLines(lines);
    editorReads(text, entries);
    mergeReads(text, entries);
    explorerReads(lines);
}

}  // namespace tunovka::fuzz
