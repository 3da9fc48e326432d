#include "host/sheet/recorder.h"

#include <algorithm>

#include "host/sheet/script_player.h"
#include "host/sheet/sheet_controls.h"

namespace tintwerk {

namespace {

Recorder* recorder = nullptr;

// The option that a popup's item stands for; its text where there is none.
std::string OptionOfItem(const PageControl& control, const CoreDriver& core, const ComboItem& item)
{
    const std::vector<std::string_view> options = OfferedOptions(control, core);
    const bool known = item.data > 0 && static_cast<std::size_t>(item.data) <= options.size();
    return known ? std::string(options[static_cast<std::size_t>(item.data) - 1]) : item.text;
}

// The step that brings a control to where it stands; empty while it cannot be used.
std::string StepOf(const PageControl& control, HWND window, const CoreDriver& core)
{
    if (!window || !IsWindowVisible(window) || !IsWindowEnabled(window)) return {};
    const std::string feature(control.feature);
    if (control.slider) return "--set " + feature + "=" + std::to_string(SliderPosition(window));
    if (control.number) return "--set " + feature + "=" + TextOfWindow(window);
    if (control.checkBox) return "--check " + feature + (IsBoxChecked(window) ? "=on" : "=off");
    const int selection = ComboSelection(window);
    if (selection < 0) return {};
    const ComboItem item = ComboItems(window)[static_cast<std::size_t>(selection)];
    return "--choose " + (feature.empty() ? control.popup->name : feature) + "=" +
           OptionOfItem(control, core, item);
}

} // namespace

Recorder::Recorder(PropertySheet& sheet, std::function<void(const std::string&)> write, UINT pace)
    : sheet_(sheet), write_(std::move(write))
{
    recorder = this;
    timer_ = SetTimer(nullptr, 0, pace, OnTimer);
}

Recorder::~Recorder()
{
    KillTimer(nullptr, timer_);
    recorder = nullptr;
    if (applied_) write_("--ok");
}

void CALLBACK Recorder::OnTimer(HWND, UINT, UINT_PTR, DWORD)
{
    if (recorder) recorder->Watch();
}

void Recorder::OnApplied()
{
    WriteChanges(true);
    applied_ = true;
}

void Recorder::Watch()
{
    const int page = sheet_.CurrentPage();
    if (page < 0) return;
    if (std::exchange(applied_, false)) write_("--apply");
    if (page == page_) return WriteChanges(false);
    if (window_) WriteChanges(true);
    page_ = page;
    window_ = reinterpret_cast<HWND>(SendMessageW(sheet_.Window(), PSM_GETCURRENTPAGEHWND, 0, 0));
    states_ = StatesOfPage();
}

// What changed under the user's hand brings other changes with it; when played back it does so again.
void Recorder::WriteChanges(bool typingEnds)
{
    if (!window_ || !IsWindow(window_)) return;
    const HWND focus = GetFocus();
    States now = StatesOfPage();
    std::vector<const Seen*> changed;
    for (auto& [key, seen] : now) {
        const auto before = states_.find(key);
        // A control that can be used from now on stands where it stood.
        if (before == states_.end() || before->second.step.empty() || before->second.step == seen.step)
            continue;
        if (!typingEnds && seen.control && seen.control == focus && KindOfControl(focus) == "edit box")
            seen.step = before->second.step; // half a number
        else
            changed.push_back(&seen);
    }
    const auto byHand =
        std::ranges::find_if(changed, [&](const Seen* seen) { return seen->control == focus; });
    for (const Seen* const seen : changed) {
        if (!seen->step.empty() && (!focus || byHand == changed.end() || *byHand == seen)) write_(seen->step);
    }
    states_ = std::move(now);
}

Recorder::States Recorder::StatesOfPage() const
{
    States states;
    if (sheet_.Pages()[static_cast<std::size_t>(page_)].items)
        AddItems(states);
    else
        AddControls(states);
    return states;
}

void Recorder::AddControls(States& states) const
{
    const std::optional<PageName> page = sheet_.Pages()[static_cast<std::size_t>(page_)].name;
    for (const PageControl& control : PageControls()) {
        if (control.page != page) continue;
        const HWND window = GetDlgItem(window_, control.id);
        states[std::to_string(control.id)] = {window, StepOf(control, window, sheet_.Session().Core())};
    }
}

void Recorder::AddItems(States& states) const
{
    const OptionItemsPage& page = *sheet_.Pages()[static_cast<std::size_t>(page_)].items;
    const CoreDriver& core = sheet_.Session().Core();
    for (const std::string_view feature : core.Features()) {
        const PpdFeature* const known = core.Description().Find(feature);
        const int item = page.FindItem(feature, known);
        if (item < 0) continue;
        for (const std::string_view option : core.Options(feature)) {
            if (page.FindOption(item, option, known) == page.Item(item).Sel)
                states[std::to_string(item)] = {nullptr, "--choose " + std::string(feature) + "=" +
                                                             std::string(option)};
        }
    }
}

} // namespace tintwerk
