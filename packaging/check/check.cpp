// check [PREFIX]: runs the test programs and benchmarks that lie beside it (those whose names begin
// with PREFIX) in a folder of their own below the person's temporary folder, which is drives E: and
// T: meanwhile, and writes report.txt into the folder above: what this computer is, the result of
// each test, what the failed ones said, and the benchmarks' figures. Everything else stays as it
// is. Exit code: how many programs failed.
#include <windows.h>
// windows.h first: it needs its types.
#include <shellapi.h>
#include <stdio.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "facts.h"

namespace check {
namespace {

constexpr DWORD kLongestRun = 30 * 60 * 1000;  // ms of one program
constexpr std::size_t kLinesOfAFailure = 40;

std::wstring folderOf(const std::wstring& path) {
    return path.substr(0, path.rfind(L'\\', path.size() - 2) + 1);
}

std::wstring ownPath() {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
}

// What the test programs of the folder run themselves, and the one that runs now.
constexpr std::wstring_view kNoTests[] = {L"check.exe", L"tunovka.exe", L"bench_bare.exe"};

// The test programs of a folder in the order of their names.
std::vector<std::wstring> programs(const std::wstring& folder, const std::wstring& prefix) {
    std::vector<std::wstring> found;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((folder + L"*.exe").c_str(), &entry);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &entry)) {
        const std::wstring name = entry.cFileName;
        if (name.starts_with(prefix) && std::ranges::count(kNoTests, name) == 0)
            found.push_back(name);
    }
    if (search != INVALID_HANDLE_VALUE) FindClose(search);
    std::ranges::sort(found);
    return found;
}

// A folder that is gone, with all that is in it, at the end.
class Place {
  public:
    Place() {
        wchar_t temporary[MAX_PATH + 1] = L"";
        GetTempPathW(MAX_PATH + 1, temporary);
        path_ = temporary + (L"Tunovka-check-" + std::to_wstring(GetCurrentProcessId()) + L"\\");
        CreateDirectoryW(path_.c_str(), nullptr);
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place() {
        SetCurrentDirectoryW(folderOf(path_).c_str());
        std::wstring doubleEnded = path_.substr(0, path_.size() - 1) + L'\0';
        SHFILEOPSTRUCTW remove{};
        remove.wFunc = FO_DELETE;
        remove.pFrom = doubleEnded.c_str();
        remove.fFlags = FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT;
        SHFileOperationW(&remove);
    }
    const std::wstring& path() const { return path_; }  // ends in "\"

  private:
    std::wstring path_;
};

// A drive letter that shows a folder for as long as this lives; none where the letter is taken, or
// where the system takes the definition and shows nothing there, as Wine does. A drive that
// somebody has lent for the check, and says so by TUNOVKA_LENT_DRIVES, is used as it is.
class Drive {
  public:
    Drive(wchar_t letter, const std::wstring& folder) : name_{letter, L':'} {
        if (GetLogicalDrives() & 1u << (letter - L'A')) {
            isThere_ = _wgetenv(L"TUNOVKA_LENT_DRIVES") && answers();
            return;
        }
        folder_ = folder.substr(0, folder.size() - 1);
        CreateDirectoryW(folder_.c_str(), nullptr);
        isThere_ = DefineDosDeviceW(0, name_.c_str(), folder_.c_str()) && answers();
    }
    Drive(const Drive&) = delete;
    Drive& operator=(const Drive&) = delete;
    ~Drive() {
        if (!folder_.empty())
            DefineDosDeviceW(DDD_REMOVE_DEFINITION | DDD_EXACT_MATCH_ON_REMOVE, name_.c_str(),
                             folder_.c_str());
    }
    bool isThere() const { return isThere_; }

  private:
    bool answers() const {
        return GetFileAttributesW((name_ + L'\\').c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    std::wstring name_, folder_;
    bool isThere_ = false;
};

// The drive that a program works on, by its letter; 0 for one that needs none.
wchar_t driveOf(const std::wstring& program) {
    if (program == L"windows_tests.exe" || program == L"endurance.exe") return L'E';
    return program == L"bench.exe" ? L'T' : L'\0';
}

// Runs a program to its end with both outputs in a file; its exit code, or what kept it from one.
DWORD run(const std::wstring& program, const std::wstring& arguments, const std::wstring& log) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const HANDLE output = CreateFileW(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                      CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = start.hStdError = output;
    PROCESS_INFORMATION process{};
    std::wstring line = L'"' + program + L"\" " + arguments;
    DWORD code = ERROR_FILE_NOT_FOUND;
    if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                       &start, &process)) {
        if (WaitForSingleObject(process.hProcess, kLongestRun) == WAIT_TIMEOUT)
            TerminateProcess(process.hProcess, WAIT_TIMEOUT);
        WaitForSingleObject(process.hProcess, INFINITE);
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    CloseHandle(output);
    return code;
}

std::vector<std::string> linesOf(const std::wstring& path) {
    std::vector<std::string> lines(1);
    if (FILE* file = _wfopen(path.c_str(), L"rb")) {
        for (int byte; (byte = fgetc(file)) != EOF;) {
            if (byte == '\n')
                lines.emplace_back();
            else if (byte != '\r')
                lines.back() += static_cast<char>(byte);
        }
        fclose(file);
    }
    return lines;
}

// Of a test program's output: a line for each test, and before a failed one the last of what it
// said. A program that tells no tests (a benchmark) is told whole.
std::string shortened(const std::vector<std::string>& output) {
    std::string text;
    std::vector<std::string> said;
    for (const std::string& line : output) {
        const bool starts = line.starts_with("[ RUN");
        const bool ends = line.starts_with("[       OK") || line.starts_with("[  SKIPPED");
        const bool fails = line.starts_with("[  FAILED");
        if (starts) said = {line};
        if (ends) said.clear();
        if (starts || line.empty() || line.starts_with("[---")) continue;
        if (!ends && !fails && !line.starts_with("[===") && !line.starts_with("[  PASSED")) {
            said.push_back(line);
            continue;
        }
        const std::size_t from = said.size() - std::min(said.size(), kLinesOfAFailure);
        for (std::size_t i = from; i < said.size(); ++i) text += said[i] + "\r\n";
        said.clear();
        text += line + "\r\n";
    }
    for (const std::string& line : said) text += line + "\r\n";
    return text;
}

// With which arguments a program is run, one after the other: the benchmarks each in a process of
// their own, because memory that one leaves free would hide what the next one takes.
std::vector<std::wstring> argumentsOf(const std::wstring& program, const std::wstring& log) {
    if (!program.ends_with(L"\\bench.exe")) return {L""};
    run(program, L"", log);  // tells their names
    std::vector<std::wstring> names;
    for (const std::string& name : linesOf(log))
        if (!name.empty()) names.emplace_back(name.begin(), name.end());  // ASCII
    return names;
}

void append(const std::wstring& report, const std::string& text) {
    if (FILE* file = _wfopen(report.c_str(), L"ab")) {
        fwrite(text.data(), 1, text.size(), file);
        fclose(file);
    }
    fwrite(text.data(), 1, text.size(), stdout);
    fflush(stdout);
}

int checkAll(const std::wstring& prefix) {
    const std::wstring bin = folderOf(ownPath()), report = folderOf(bin) + L"report.txt";
    DeleteFileW(report.c_str());
    const Place place;
    SetEnvironmentVariableW(L"TEMP", place.path().c_str());
    SetEnvironmentVariableW(L"TMP", place.path().c_str());
    SetCurrentDirectoryW(place.path().c_str());

    const Drive e(L'E', place.path() + L"e\\"), t(L'T', place.path() + L"t\\");

    append(report, "Tunovka " CHECK_VERSION "\r\n" + facts());
    int failed = 0;
    for (const std::wstring& program : programs(bin, prefix)) {
        const std::string name(program.begin(), program.end());  // ASCII
        append(report, "\r\n== " + name + "\r\n");
        const wchar_t drive = driveOf(program);
        if ((drive == L'E' && !e.isThere()) || (drive == L'T' && !t.isThere())) {
            append(report, std::string("skipped: it needs the drive letter ") +
                               static_cast<char>(drive) + ":, which is not to be had here\r\n");
            continue;
        }
        const std::wstring log = place.path() + program + L".log";
        for (const std::wstring& arguments : argumentsOf(bin + program, log)) {
            const DWORD code = run(bin + program, arguments, log);
            append(report, shortened(linesOf(log)) + "exit code " + std::to_string(code) + "\r\n");
            if (code) ++failed;
        }
    }
    append(report, "\r\n" + std::to_string(failed) + " programs failed\r\n");
    return failed;
}

}  // namespace
}  // namespace check

int wmain(int count, wchar_t** arguments) {
    return check::checkAll(count > 1 ? arguments[1] : L"");
}
