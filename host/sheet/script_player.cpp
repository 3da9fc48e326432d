#include "host/sheet/script_player.h"

#include <algorithm>
#include <cmath>
#include <system_error>

#include "host/ppd/ppd_text.h"
#include "host/sheet/sheet_controls.h"
#include "platform/snapshot.h"
#include "src/resources/control_ids.h"

namespace tintwerk {

namespace {

constexpr std::string_view kFormTrayTable = "*UseFormTrayTable"; // an input slot that popups do not offer

ScriptPlayer* player = nullptr;

std::string LabelText(HWND page, int id)
{
    const HWND label = GetDlgItem(page, id);
    return label ? ", label " + Quoted(TextOfWindow(label)) : "";
}

} // namespace

std::vector<std::string_view> OfferedOptions(const PageControl& control, const CoreDriver& core)
{
    std::vector<std::string_view> options = core.Options(control.feature);
    if (control.popup == &kPopupTable[kPopupInputSlot]) std::erase(options, kFormTrayTable);
    return options;
}

ScriptPlayer::ScriptPlayer(PropertySheet& sheet, ScriptSettings settings)
    : sheet_(sheet), settings_(std::move(settings)), boxes_(settings_.confirmsQuestions, settings_.tell)
{
    player = this;
    timer_ = SetTimer(nullptr, 0, std::max(settings_.pace, UINT{1}), OnTimer);
    // The first step need not wait: this is taken when the sheet asks for its first message.
    PostMessageW(nullptr, WM_TIMER, timer_, reinterpret_cast<LPARAM>(OnTimer));
}

ScriptPlayer::~ScriptPlayer()
{
    KillTimer(nullptr, timer_);
    player = nullptr;
}

void CALLBACK ScriptPlayer::OnTimer(HWND, UINT, UINT_PTR, DWORD)
{
    if (player && !player->busy_) player->Tick();
}

// --- The run

void ScriptPlayer::Tick()
{
    const HWND window = sheet_.Window();
    if (!window || !IsWindowVisible(window) || closing_) return;
    if (!opened_) SetForegroundWindow(window);
    opened_ = true;
    busy_ = true;
    try {
        if (next_ < settings_.steps.size())
            Do(settings_.steps[next_++]);
        else
            Close(PSBTN_CANCEL);
    } catch (const Failed& failed) {
        problem_ =
            settings_.steps[next_ - 1].place + settings_.steps[next_ - 1].source + ": " + failed.reason;
    } catch (const std::exception& error) {
        problem_ = error.what();
    }
    if (!problem_.empty()) PressAndEnd(PSBTN_CANCEL);
    busy_ = false;
}

std::string ScriptPlayer::Run()
{
    const std::string notShown = sheet_.Run();
    if (!problem_.empty()) return problem_;
    if (!closing_)
        return opened_ ? "the sheet closed before the script was done"
                       : "the sheet did not open; are there windows on this display?";
    return notShown;
}

void ScriptPlayer::PressAndEnd(int button)
{
    closing_ = true;
    PostMessageW(sheet_.Window(), PSM_PRESSBUTTON, button, 0);
}

void ScriptPlayer::Close(int button)
{
    if (settings_.beforeClosing) settings_.beforeClosing(*this);
    PressAndEnd(button);
}

void ScriptPlayer::Do(const Step& step)
{
    switch (step.kind) {
    case StepKind::Page:
        ShowNamedPage(*PageFromText(step.subject));
        return;
    case StepKind::Set:
        return Set(step);
    case StepKind::Choose:
        return Choose(step);
    case StepKind::Check:
        return Check(step);
    case StepKind::Press:
        return Press(step);
    case StepKind::Show:
        return Show(step.subject);
    case StepKind::Screenshot:
        return TakePicture(step.subject);
    case StepKind::Tour:
        return Tour(step.subject);
    case StepKind::Apply:
        SendMessageW(sheet_.Window(), PSM_PRESSBUTTON, PSBTN_APPLYNOW, 0);
        return settings_.tell("Apply pressed");
    case StepKind::Ok:
        Close(PSBTN_OK);
        return settings_.tell("OK pressed");
    case StepKind::Cancel:
        Close(PSBTN_CANCEL);
        return settings_.tell("Cancel pressed");
    }
}

// --- Pages

HWND ScriptPlayer::ShowPage(int index)
{
    const HWND window = sheet_.Window();
    if (sheet_.CurrentPage() != index) SendMessageW(window, PSM_SETCURSEL, index, 0);
    if (sheet_.CurrentPage() != index) return nullptr;
    return reinterpret_cast<HWND>(SendMessageW(window, PSM_GETCURRENTPAGEHWND, 0, 0));
}

std::string ScriptPlayer::TabText(int index) const
{
    WCHAR text[128] = {};
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = 128;
    SendMessageW(sheet_.Tabs(), TCM_GETITEMW, index, reinterpret_cast<LPARAM>(&item));
    return Utf8FromWide(item.pszText ? item.pszText : TEXT(""));
}

HWND ScriptPlayer::ShowNamedPage(PageName name)
{
    std::string there;
    for (int i = 0; i < PageCount(); ++i) {
        const SheetPage& page = sheet_.Pages()[i];
        if (page.name == name) {
            if (const HWND window = ShowPage(i)) return window;
            throw Failed{"the page does not come to the front"};
        }
        if (page.name) there += (there.empty() ? "" : ", ") + std::string(TextOf(*page.name));
    }
    throw Failed{"this sheet has no page \"" + std::string(TextOf(name)) + "\" (it has " + there + ")"};
}

// What the user cannot reach, a script cannot either.
HWND ScriptPlayer::UsableControl(const PageControl& control)
{
    const HWND window = GetDlgItem(ShowNamedPage(control.page), control.id);
    const std::string where = "on the page " + std::string(TextOf(control.page));
    if (!window) throw Failed{"there is no such control " + where};
    if (!IsWindowVisible(window)) throw Failed{"the control is hidden " + where};
    if (!IsWindowEnabled(window)) throw Failed{"the control is disabled " + where};
    return window;
}

// --- Controls

void ScriptPlayer::Set(const Step& step)
{
    const PageControl& control = *ControlOfFeature(step.subject);
    const HWND window = UsableControl(control);
    if (control.slider)
        DragSlider(window, DecimalNumber<int>(step.value).value_or(0));
    else
        TypeInto(window, WideFromUtf8(step.value));
    Show(step.subject);
}

// Of a slider, number field or check box the value is the PPD's own.
void ScriptPlayer::Choose(const Step& step)
{
    const NumberFieldBinding* const rest = FieldOfRest(step.subject);
    const std::string shown = rest ? rest->keyword : step.subject;
    const PageControl* const control = ControlOfFeature(shown);
    const int value = DecimalNumber<int>(step.value).value_or(0);
    if (control && control->slider) {
        DragSlider(UsableControl(*control), PositionOf(*control->slider, value));
    } else if (control && control->number) {
        const NumberFieldBinding& field = *control->number;
        const HWND edit = UsableControl(*control);
        const double typed = DecimalNumber<double>(TextOfWindow(edit)).value_or(0);
        NumberParts parts = SplitNumber(field, static_cast<int>(std::lround(typed * field.divisor)));
        (rest ? parts.rest : parts.coarse) = value;
        TypeInto(edit, WideFromUtf8(Tenths(JoinNumber(field, parts), field.divisor)));
    } else if (control && control->checkBox) {
        const HWND box = UsableControl(*control);
        if (IsBoxChecked(box) != (value == 1)) Click(box);
    } else if (!ChooseInPopup(step) && !ChooseOptionItem(step)) {
        throw Failed{"no control of this sheet stands for " + step.subject};
    }
    Show(shown);
}

// The items of a popup carry the number of their option, counted from 1.
bool ScriptPlayer::ChooseInPopup(const Step& step)
{
    const PageControl* const control = ControlOfFeature(step.subject);
    if (!control || !control->popup) return false;
    const HWND combo = UsableControl(*control);
    const std::vector<ComboItem> items = ComboItems(combo);
    const std::vector<std::string_view> options = OfferedOptions(*control, sheet_.Session().Core());
    const auto option = std::ranges::find(options, step.value);
    const LPARAM number = option == options.end() ? 0 : option - options.begin() + 1;
    const auto item = std::ranges::find_if(
        items, [&](const ComboItem& each) { return number ? each.data == number : each.text == step.value; });
    if (item == items.end())
        throw Failed{"the popup does not offer " + step.value + " now; it offers " +
                     Joined(items, [](const ComboItem& each) { return Quoted(each.text); })};
    const int index = static_cast<int>(item - items.begin());
    PickComboItem(combo, index);
    const int shown = ComboSelection(combo);
    if (shown < 0 || ComboItems(combo)[shown].text != item->text)
        settings_.tell(step.subject + ": the choice was not taken");
    return true;
}

bool ScriptPlayer::ChooseOptionItem(const Step& step)
{
    for (int i = 0; i < PageCount(); ++i) {
        OptionItemsPage* const page = sheet_.Pages()[i].items;
        const Ppd& ppd = sheet_.Session().Core().Description();
        const int item = page ? page->FindItem(step.subject, ppd) : -1;
        if (item < 0) continue;
        if (!ShowPage(i)) throw Failed{"the page does not come to the front"};
        if (!page->Choose(item, page->FindOption(item, step.subject, step.value, ppd)))
            throw Failed{"the page does not offer " + step.value};
        return true;
    }
    return false;
}

void ScriptPlayer::Check(const Step& step)
{
    const HWND box = UsableControl(*ControlOfFeature(step.subject));
    if (IsBoxChecked(box) != (step.value == "on")) Click(box);
    Show(step.subject);
}

void ScriptPlayer::Press(const Step& step)
{
    const HWND page = ShowPage(std::max(sheet_.CurrentPage(), 0));
    const HWND button = page ? FindButton(page, step.subject) : nullptr;
    if (!button) throw Failed{"the page in front has no such button"};
    if (!IsWindowEnabled(button)) throw Failed{"the button is disabled"};
    const std::string text = TextOfWindow(button);
    Click(button);
    settings_.tell(Quoted(text) + " pressed");
}

// --- Telling

void ScriptPlayer::Show(const std::string& feature)
{
    const std::string state = StateOf(feature);
    if (state.empty()) throw Failed{"no control of this sheet stands for this feature"};
    settings_.tell(feature + ": " + state);
}

std::string ScriptPlayer::StateOf(const PageControl& control)
{
    const HWND page = ShowNamedPage(control.page);
    const HWND window = GetDlgItem(page, control.id);
    if (control.slider) {
        if (!window) return "no slider on this page";
        return "slider at " + std::to_string(SliderPosition(window)) +
               LabelText(page, control.slider->labelId);
    }
    if (control.number) return window ? "number " + TextOfWindow(window) : "no number field on this page";
    if (control.checkBox) {
        if (!window || !IsWindowVisible(window)) return "no check box on this page";
        return IsBoxChecked(window) ? "on" : "off";
    }
    if (!window) return "no popup on this page";
    const int selection = ComboSelection(window);
    if (selection < 0) return "nothing selected";
    const bool isSize = control.popup == &kPopupTable[kPopupPageSize];
    return "popup at " + Quoted(ComboItems(window)[selection].text) +
           (isSize ? LabelText(page, IDC_MAIN_SIZE_LABEL) : "");
}

std::string ScriptPlayer::StateOf(const std::string& feature)
{
    const NumberFieldBinding* const rest = FieldOfRest(feature);
    if (const PageControl* const control = ControlOfFeature(rest ? rest->keyword : feature))
        return StateOf(*control);
    for (const SheetPage& each : sheet_.Pages()) {
        const Ppd& ppd = sheet_.Session().Core().Description();
        const int item = each.items ? each.items->FindItem(feature, ppd) : -1;
        if (item < 0) continue;
        const LONG selected = each.items->Item(item).Sel;
        if (selected < 0 || selected >= each.items->OptionCount(item)) return "nothing selected";
        return "option item at " + Quoted(Utf8FromWide(each.items->OptionTextOf(item, selected)));
    }
    return {};
}

void ScriptPlayer::TakePicture(const std::filesystem::path& folder)
{
    const int current = sheet_.CurrentPage();
    if (current < 0 || current >= PageCount()) throw Failed{"no page is in front"};
    const SheetPage& page = sheet_.Pages()[current];
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw Failed{"the folder cannot be made: " + error.message()};
    const std::string name =
        page.name ? std::string(TextOf(*page.name)) : "page-" + std::to_string(current + 1);
    std::filesystem::path file = folder / (name + ".png");
    for (int copy = 2; std::ranges::find(pictures_, file) != pictures_.end(); ++copy)
        file = folder / (name + "-" + std::to_string(copy) + ".png");
    if (const std::string problem = SaveWindowPicture(sheet_.Window(), file); !problem.empty())
        throw Failed{problem};
    pictures_.push_back(file);
    settings_.tell("picture: " + Utf8FromPath(file));
}

void ScriptPlayer::Tour(const std::filesystem::path& folder)
{
    for (int i = 0; i < PageCount(); ++i) {
        if (!ShowPage(i)) throw Failed{"page " + std::to_string(i + 1) + " does not come to the front"};
        TakePicture(folder);
    }
}

} // namespace tintwerk
