#include "host/sheet/script.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <vector>

#include "host/ppd/ppd_text.h"

namespace tintwerk {

namespace {

// Empty when the slider can stand at the position.
std::string SliderProblem(const ControlBinding& slider, std::string_view value)
{
    const std::optional<int> position = DecimalNumber<int>(value);
    if (position && *position >= slider.minimum && *position <= slider.maximum) return {};
    std::string text =
        "the slider runs from " + std::to_string(slider.minimum) + " to " + std::to_string(slider.maximum) +
        " (PPD values " + std::to_string(PpdValue(slider, slider.minimum)) + " to " +
        std::to_string(PpdValue(slider, slider.maximum)) + " in steps of " + std::to_string(slider.step);
    if (slider.doublesAboveMiddle) text += ", above the middle of " + std::to_string(2 * slider.step);
    return text + ")";
}

std::string NumberProblem(const NumberFieldBinding& field, std::string_view value)
{
    const std::optional<double> number = DecimalNumber<double>(value);
    if (number && *number * field.divisor >= field.minimum && *number * field.divisor <= field.maximum)
        return {};
    return "the number field takes " + Tenths(field.minimum, field.divisor) + " to " +
           Tenths(field.maximum, field.divisor);
}

// Empty when the value is among these, which ascend; else which they are, and those beside it.
std::string ValueProblem(const std::vector<int>& values, std::string_view text)
{
    const std::optional<int> value = DecimalNumber<int>(text);
    const auto above = std::ranges::lower_bound(values, value.value_or(values.front()));
    if (value && above != values.end() && *above == *value) return {};
    std::string problem =
        "the PPD values run from " + std::to_string(values.front()) + " to " + std::to_string(values.back());
    if (!value) return problem;
    if (above == values.end()) return problem + "; the nearest is " + std::to_string(values.back());
    if (above == values.begin()) return problem + "; the nearest is " + std::to_string(values.front());
    return problem + "; the nearest are " + std::to_string(*std::prev(above)) + " and " +
           std::to_string(*above);
}

std::vector<int> ValuesFrom(int first, int last, int step)
{
    std::vector<int> values;
    for (int value = first; value <= last; value += step)
        values.push_back(value);
    return values;
}

std::string ChooseProblem(const Step& step)
{
    if (step.value.empty()) return "an option keyword is missing after \"=\"";
    if (const NumberFieldBinding* const rest = FieldOfRest(step.subject))
        return ValueProblem(ValuesFrom(0, rest->coarseStep * rest->divisor - 1, 1), step.value);
    const PageControl* const control = ControlOfFeature(step.subject);
    if (control && control->slider) {
        std::vector<int> values = ValuesFrom(control->slider->minimum, control->slider->maximum, 1);
        for (int& each : values)
            each = PpdValue(*control->slider, each);
        return ValueProblem(values, step.value);
    }
    if (control && control->number) {
        const NumberFieldBinding& field = *control->number;
        return ValueProblem(
            ValuesFrom(field.minimum / field.divisor, field.maximum / field.divisor, field.coarseStep),
            step.value);
    }
    if (!control || !control->checkBox) return {};
    if (!IsPpdFeature(*control->checkBox))
        return "no PPD feature has this name (--check works the check box)";
    return step.value == "0" || step.value == "1" ? "" : "a check box has the PPD values 0 and 1";
}

std::string SetProblem(const Step& step)
{
    const PageControl* const control = ControlOfFeature(step.subject);
    if (control && control->slider) return SliderProblem(*control->slider, step.value);
    if (control && control->number) return NumberProblem(*control->number, step.value);
    return "no slider or number field stands for this feature (--choose selects options, --check works check "
           "boxes)";
}

std::string CheckProblem(const Step& step)
{
    const PageControl* const control = ControlOfFeature(step.subject);
    if (!control || !control->checkBox) return "no check box stands for this feature";
    return step.value == "on" || step.value == "off" ? "" : "a check box is \"on\" or \"off\"";
}

std::string PageProblem(const Step& step)
{
    return PageFromText(step.subject) ? "" : "the pages are " + PageNamesForPeople();
}

std::string SubjectProblem(const Step& step)
{
    return step.subject.empty() ? "its value is missing" : "";
}

struct StepOption
{
    std::string_view option;
    StepKind kind;
    bool needsEquals;                    // "Feature=Value"
    std::string (*problem)(const Step&); // what is wrong with its words; null where it has none
};

constexpr std::array<StepOption, 11> kStepOptions{{
    {"page", StepKind::Page, false, PageProblem},
    {"set", StepKind::Set, true, SetProblem},
    {"choose", StepKind::Choose, true, ChooseProblem},
    {"check", StepKind::Check, false, CheckProblem},
    {"press", StepKind::Press, false, SubjectProblem},
    {"show", StepKind::Show, false, SubjectProblem},
    {"screenshot", StepKind::Screenshot, false, SubjectProblem},
    {"tour", StepKind::Tour, false, SubjectProblem},
    {"apply", StepKind::Apply, false, nullptr},
    {"ok", StepKind::Ok, false, nullptr},
    {"cancel", StepKind::Cancel, false, nullptr},
}};

} // namespace

std::string Tenths(int value, int divisor)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", static_cast<double>(value) / divisor);
    return text;
}

std::variant<Step, std::string> ParseStep(std::string_view option, std::string_view value)
{
    const auto row = std::ranges::find(kStepOptions, option, &StepOption::option);
    if (row == kStepOptions.end()) return std::string();

    Step step{row->kind, std::string(value), "", "--" + std::string(option), ""};
    if (!value.empty()) step.source += " " + std::string(value);
    const std::size_t equals = value.find('=');
    if (row->needsEquals && (equals == std::string_view::npos || equals == 0))
        return step.source + ": \"Feature=Value\" expected";
    if (row->needsEquals || (row->kind == StepKind::Check && equals != std::string_view::npos)) {
        step.subject = value.substr(0, equals);
        step.value = value.substr(equals + 1);
    } else if (row->kind == StepKind::Check) {
        step.value = "on";
    }
    const bool asFeature = row->needsEquals || row->kind == StepKind::Check || row->kind == StepKind::Show;
    if (asFeature && step.subject.starts_with('*')) step.subject.erase(0, 1);
    const std::string problem = row->problem ? row->problem(step) : "";
    if (!problem.empty()) return step.source + ": " + problem;
    return step;
}

std::string ParseScript(std::string_view text, const std::string& name, std::vector<Step>& steps)
{
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = Trim(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.starts_with('#')) continue;
        if (line.starts_with("--")) line.remove_prefix(2);
        const std::string_view word = NextWord(line);
        std::variant<Step, std::string> parsed = ParseStep(word, Trim(line));
        const std::string place = name + ":" + std::to_string(number) + ": ";
        if (auto* const step = std::get_if<Step>(&parsed)) {
            step->place = place;
            steps.push_back(std::move(*step));
            continue;
        }
        const std::string& problem = std::get<std::string>(parsed);
        return place + (problem.empty() ? Quoted(word) + " is no step" : problem);
    }
    return {};
}

} // namespace tintwerk
