#include "host/cli/pages_trial.h"

#include "host/cli/printer_entry.h"
#include "host/cli/watchdog.h"
#include "host/sheet/script_player.h"

namespace tintwerk {

namespace {

constexpr int kTrialSeconds = 60;

void ShowAndApply(ScriptPlayer& player, PagesTrial& trial)
{
    for (int page = 0; page < player.PageCount(); ++page) {
        if (!player.ShowPage(page)) {
            trial.problem = "the page " + player.TabText(page) + " does not come to the front";
            return;
        }
        ++trial.pages;
    }
    SendMessageW(player.Sheet().Window(), PSM_PRESSBUTTON, PSBTN_APPLYNOW, 0);
}

PagesTrial TryWith(const Ppd& ppd, std::string_view described, Selections selections)
{
    PagesTrial trial;
    trial.selections = described;
    CoreDriver core(ppd, selections);
    const SelectedOptions before = core.AllSelected();
    const WideString name = WideFromUtf8(ppd.PrinterName());
    const SpooledPrinter printer(ppd, {name, name, ppd.FileName()});
    {
        PluginSession session(core, selections);
        trial.problem = session.Start();
        if (!trial.problem.empty()) return trial;
        int applied = 0;
        PropertySheet sheet(session, SheetKind::Preferences, name, printer.Handle(), false,
                            [&] { ++applied; });
        ScriptSettings settings;
        settings.pace = 1;
        settings.tell = [&trial](const std::string& line) { trial.messages.push_back(line); };
        settings.beforeClosing = [&trial](ScriptPlayer& player) { ShowAndApply(player, trial); };
        ScriptPlayer player(sheet, std::move(settings));
        const std::string notShown = player.Run();
        if (trial.problem.empty()) trial.problem = notShown;
        if (trial.problem.empty() && applied == 0) trial.problem = "no page was applied";
        session.KeepPrivateDevmode();
    }
    trial.changes = ChangesBetween(before, core.AllSelected());
    // What the next opening would read.
    Selections kept = Selections::FromText("selections", selections.Text());
    for (SelectionChange& lost : ChangesBetween(core.AllSelected(), CoreDriver(ppd, kept).AllSelected()))
        trial.changes.push_back(std::move(lost));
    return trial;
}

// What a user may have chosen: the last option of every feature that goes with those chosen before.
Selections LastOptions(const Ppd& ppd)
{
    Selections selections;
    CoreDriver core(ppd, selections);
    std::size_t conflicts = core.Conflicts();
    for (const PpdFeature& feature : ppd.Features()) {
        if (feature.options.size() < 2 || feature.keyword == "halvGuiMode") continue; // it may hide pages
        const std::string before(core.Selected(feature.keyword));
        core.Select(feature.keyword, feature.options.back().keyword);
        if (const std::size_t now = core.Conflicts(); now > conflicts)
            core.Select(feature.keyword, before);
        else
            conflicts = now;
    }
    return selections;
}

} // namespace

PagesTrial TryPages(const Ppd& ppd)
{
    const Watchdog watchdog(kTrialSeconds, ppd.FileName() + ": the pages took longer than " +
                                               std::to_string(kTrialSeconds) + " s; the run was ended");
    PagesTrial trial = TryWith(ppd, "defaults", {});
    if (!trial.problem.empty() || !trial.changes.empty()) return trial;
    return TryWith(ppd, "last options", LastOptions(ppd));
}

} // namespace tintwerk
