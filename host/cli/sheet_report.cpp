#include "host/cli/sheet_report.h"

#include <ostream>

#include "host/sheet/sheet_controls.h"

namespace tintwerk {

namespace {

Json DescribeControl(HWND control, const SheetPage& page)
{
    const int id = GetDlgCtrlID(control);
    const std::string kind = KindOfControl(control);
    Json json{{"id", id}, {"kind", kind}};
    if (const PageControl* const known = ControlOnPage(page.name, id);
        known && !known->PpdFeatureName().empty())
        json["feature"] = known->PpdFeatureName();
    json["enabled"] = IsWindowEnabled(control) != FALSE;
    if (kind == "slider") {
        json["minimum"] = SendMessageW(control, TBM_GETRANGEMIN, 0, 0);
        json["maximum"] = SendMessageW(control, TBM_GETRANGEMAX, 0, 0);
        json["position"] = SliderPosition(control);
    } else if (kind == "popup") {
        Json texts = Json::array();
        for (const ComboItem& item : ComboItems(control))
            texts.push_back(item.text);
        const int selection = ComboSelection(control);
        json["items"] = texts;
        json["selected"] = selection < 0 ? Json() : texts[static_cast<std::size_t>(selection)];
    } else {
        json["text"] = TextOfWindow(control);
    }
    if (kind == "check box" || kind == "radio button") json["checked"] = IsBoxChecked(control);
    return json;
}

Json CallCounts(const CallLog& calls)
{
    Json counts = Json::object();
    for (int i = 0; i < static_cast<int>(CoreMethod::Count); ++i) {
        const auto method = static_cast<CoreMethod>(i);
        if (calls.Count(method) > 0) counts[CoreMethodName(method)] = calls.Count(method);
    }
    return counts;
}

} // namespace

void SheetReport::Describe(ScriptPlayer& player)
{
    pages_ = Json::array();
    for (int i = 0; i < player.PageCount(); ++i) {
        const SheetPage& page = player.Sheet().Pages()[i];
        const HWND window = player.ShowPage(i);
        Json controls = Json::array();
        for (const HWND control : window ? ControlsOf(window) : std::vector<HWND>())
            controls.push_back(DescribeControl(control, page));
        pages_.push_back({{"name", page.name ? Json(TextOf(*page.name)) : Json()},
                          {"tab", player.TabText(i)},
                          {"dialog", page.dialog},
                          {"controls", std::move(controls)}});
    }
}

void SheetReport::Write(std::ostream& out, SheetKind kind, PrinterRun& printer, const std::string& problem)
{
    Json changes = Json::array(), selections = Json::object();
    for (const SelectionChange& change : printer.Changes())
        changes.push_back({{"feature", change.feature}, {"before", change.before}, {"after", change.after}});
    for (const auto& [feature, option] : printer.KeptSelections())
        selections[feature] = option;
    const auto [before, after] = printer.ApplyCounts();
    out << JsonText({{"command", kind == SheetKind::Preferences ? "preferences" : "properties"},
                     {"ppd", printer.Description().FileName()},
                     {"printer", Utf8FromWide(printer.Name())},
                     {"language", printer.IsGerman() ? "de" : "en"},
                     {"problem", problem},
                     {"steps", lines_},
                     {"pages", pages_},
                     {"applied", printer.Kept()},
                     {"selections_file", printer.Kept() ? Json(Utf8FromPath(printer.StoreFile())) : Json()},
                     {"changes", changes},
                     {"apply_count", {{"before", before}, {"after", after}}},
                     {"selections", selections},
                     {"call_counts", CallCounts(printer.Core().Calls())},
                     {"calls", printer.Core().Calls().Lines()}})
        << "\n";
}

} // namespace tintwerk
