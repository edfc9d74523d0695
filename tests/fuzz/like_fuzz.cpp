// like() against its definition: the first line is the pattern, the rest the text.
#include <optional>
#include <vector>

#include "core/text.h"
#include "fuzz/fuzz.h"
#include "support/error_of.h"

namespace tunovka::fuzz {
namespace {

// One step of a pattern: any run, or one character out of what `takes` allows.
struct Step {
    bool anyRun = false;
    bool anyOne = false;
    bool negated = false;
    std::vector<std::pair<wchar_t, wchar_t>> ranges;

    bool takes(wchar_t letter) const {
        if (anyOne) return true;
        bool within = false;
        for (const auto& [low, high] : ranges) within = within || (low <= letter && letter <= high);
        return within != negated;
    }
};

// The list between two brackets; nullopt for a range that runs backwards.
std::optional<Step> listStep(std::wstring_view list) {
    Step step;
    if (list.size() > 1 && list[0] == L'!') {
        step.negated = true;
        list.remove_prefix(1);
    }
    while (!list.empty()) {
        const bool isRange = list.size() > 2 && list[1] == L'-';
        step.ranges.emplace_back(list[0], isRange ? list[2] : list[0]);
        if (step.ranges.back().first > step.ranges.back().second) return std::nullopt;
        list.remove_prefix(isRange ? 3 : 1);
    }
    return step;
}

// nullopt for a faulty pattern.
std::optional<std::vector<Step>> stepsOf(std::wstring_view pattern) {
    std::vector<Step> steps;
    while (!pattern.empty()) {
        const wchar_t sign = pattern[0];
        std::size_t taken = 1;
        if (sign == L'[') {
            const std::size_t close = pattern.find(L']');
            if (close == pattern.npos) return std::nullopt;
            const auto step = listStep(pattern.substr(1, close - 1));
            if (!step) return std::nullopt;
            if (close > 1) steps.push_back(*step);  // "[]" stands for nothing
            taken = close + 1;
        } else if (sign == L'#') {
            steps.push_back({.ranges = {{L'0', L'9'}}});
        } else if (sign == L'*' || sign == L'?') {
            steps.push_back({.anyRun = sign == L'*', .anyOne = sign == L'?', .ranges = {}});
        } else {
            steps.push_back({.ranges = {{sign, sign}}});
        }
        pattern.remove_prefix(taken);
    }
    return steps;
}

// Which starts of the text the steps so far can have taken, step after step.
bool matches(std::wstring_view text, const std::vector<Step>& steps) {
    std::vector<bool> reached(text.size() + 1);
    reached[0] = true;
    for (const Step& step : steps) {
        std::vector<bool> next(text.size() + 1);
        for (std::size_t at = 0; at <= text.size(); ++at) {
            if (step.anyRun)
                next[at] = reached[at] || (at > 0 && next[at - 1]);
            else
                next[at] = at > 0 && reached[at - 1] && step.takes(text[at - 1]);
        }
        reached = std::move(next);
    }
    return reached[text.size()];
}

void run(std::string_view input) {
    const std::wstring pattern = wide(takeLine(input)), text = wide(input);
    const auto steps = stepsOf(pattern);
    bool answer = false;
    const int error = errorOf([&] { answer = like(text, pattern); });
    require(error == (steps ? 0 : kInvalidPattern), "exactly a faulty pattern is refused");
    if (steps) require(answer == matches(text, *steps), "like() answers as it is defined");
}

const Named kNamed("like", run);

}  // namespace
}  // namespace tunovka::fuzz
