#include "host/sheet/recorder.h"

#include <utility>

#include "host/sheet/script_player.h"
#include "host/sheet/sheet_controls.h"

namespace tintwerk {

namespace {

// The option that a popup's item stands for; its text where there is none.
std::string OptionOfItem(const PageControl& control, const CoreDriver& core, const ComboItem& item)
{
    const std::vector<std::string_view> options = OfferedOptions(control, core);
    const bool known = item.data > 0 && static_cast<std::size_t>(item.data) <= options.size();
    return known ? std::string(options[static_cast<std::size_t>(item.data) - 1]) : item.text;
}

// The step that brings a control to where it stands; empty for a popup that selects nothing.
std::string StepOf(const PageControl& control, HWND window, const CoreDriver& core)
{
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

std::string StepOf(const OptionItemsPage& page, OptionItemsPage::Choice choice, const CoreDriver& core)
{
    const Ppd& ppd = core.Description();
    for (const std::string_view feature : core.Features()) {
        if (page.FindItem(feature, ppd) != choice.item) continue;
        for (const std::string_view option : core.Options(feature)) {
            if (page.FindOption(choice.item, feature, option, ppd) == choice.option)
                return "--choose " + std::string(feature) + "=" + std::string(option);
        }
    }
    return {};
}

} // namespace

Recorder::Recorder(PropertySheet& sheet, std::function<void(const std::string&)> write)
    : sheet_(sheet), write_(std::move(write))
{
    sheet.Watch([this](const SheetPage& page, UINT message, WPARAM wParam, LPARAM lParam) {
        const HWND sender = reinterpret_cast<HWND>(lParam);
        if (message == WM_COMMAND) {
            OnCommand(page, LOWORD(wParam), HIWORD(wParam), sender);
        } else if (message == WM_NOTIFY) {
            OnNotify(page, *reinterpret_cast<const NMHDR*>(lParam));
        } else if ((message == WM_HSCROLL || message == WM_VSCROLL) && sender) {
            const PageControl* const control = ControlOnPage(page.name, GetDlgCtrlID(sender));
            if (control && control->slider) Hold(*control, sender);
        }
    });
}

Recorder::~Recorder()
{
    sheet_.Watch({});
    if (applied_) write_("--ok");
}

void Recorder::OnCommand(const SheetPage& page, int id, int code, HWND sender)
{
    const CoreDriver& core = sheet_.Session().Core();
    if (page.items) {
        if (const auto choice = page.items->ChoiceAt(id, code)) Write(StepOf(*page.items, *choice, core));
        return;
    }
    const PageControl* const control = ControlOnPage(page.name, id);
    if (!control) {
        if (code == BN_CLICKED && sender && FindButton(page.window, std::to_string(id)) == sender)
            Write("--press " + std::to_string(id));
        return;
    }
    const std::string step = StepOf(*control, sender, core);
    if (control->number) {
        if (code == EN_SETFOCUS) atFirst_ = step;
        if (code == EN_KILLFOCUS && step != std::exchange(atFirst_, {}))
            Hold(*control, sender); // the page puts right what was typed
    } else if (code == CBN_DROPDOWN) {
        atFirst_ = step;
    } else if (code == CBN_CLOSEUP) { // not every list takes back what was looked at
        if (step != std::exchange(atFirst_, {})) Hold(*control, sender);
    } else if (code == BN_CLICKED || code == CBN_SELENDOK ||
               (code == CBN_SELCHANGE && !SendMessageW(sender, CB_GETDROPPEDSTATE, 0, 0))) {
        Write(step);
    }
}

void Recorder::OnNotify(const SheetPage& page, const NMHDR& notification)
{
    switch (notification.code) {
    case UDN_DELTAPOS:
        for (const PageControl& control : PageControls()) {
            if (control.page == page.name && control.number &&
                control.number->spinId == static_cast<int>(notification.idFrom))
                Hold(control, GetDlgItem(page.window, control.id));
        }
        break;
    case PSN_SETACTIVE:
        if (front_ && front_ != page.window && page.name) Write("--page " + std::string(TextOf(*page.name)));
        front_ = page.window;
        break;
    case PSN_KILLACTIVE: // a page goes to the back, or all are about to be applied
        WriteHeld();
        applies_ = false;
        break;
    case PSN_APPLY:
        if (std::exchange(applies_, true)) break;
        WriteHeld();
        if (std::exchange(applied_, true)) write_("--apply");
        last_.clear();
        break;
    default:
        break;
    }
}

void Recorder::Hold(const PageControl& control, HWND window)
{
    if (held_ != &control) WriteHeld();
    held_ = &control;
    heldWindow_ = window;
}

void Recorder::WriteHeld()
{
    if (const PageControl* const control = std::exchange(held_, nullptr))
        Write(StepOf(*control, heldWindow_, sheet_.Session().Core()));
}

// A popup tells of one choice twice.
void Recorder::Write(const std::string& step)
{
    WriteHeld();
    if (step.empty() || (step == last_ && !step.starts_with("--press"))) return;
    if (std::exchange(applied_, false)) write_("--apply");
    write_(last_ = step);
}

} // namespace tintwerk
