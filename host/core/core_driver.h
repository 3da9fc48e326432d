// The core driver stand-in: answers a user interface plug-in from a PPD and a printer's selections through
// the two helper interfaces that the PostScript core driver publishes. Used by the host's sheets and commands
// and by tests.
//
//     CoreDriver core(*ppd, selections);
//     plugin->PublishDriverInterface(core.Helper());
//     parameters.poemuiobj = core.CoreObject();
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/core/call_log.h"
#include "host/core/selections.h"
#include "host/ppd/ppd.h"
#include "host/ppd/wide_text.h"
#include "platform/coredriver.h"

namespace tintwerk {

struct CoreModel; // the PPD's lists as they are handed out (core_model.h)
class CoreHelper; // the COM object behind both interfaces (core_helper.h)

// Every feature with its selected option.
using SelectedOptions = std::vector<std::pair<std::string, std::string>>;

struct SelectionChange
{
    std::string feature, before, after;
};
// Of the same printer at two times.
std::vector<SelectionChange> ChangesBetween(const SelectedOptions& before, const SelectedOptions& after);

class CoreDriver
{
public:
    // Both must outlive the driver. Selections that the PPD does not know are left alone and told by
    // Refused().
    CoreDriver(const Ppd& ppd, Selections& selections);
    ~CoreDriver();
    CoreDriver(const CoreDriver&) = delete;
    CoreDriver& operator=(const CoreDriver&) = delete;

    // What the plug-in passes back with every call; no other value is accepted.
    POEMUIOBJ CoreObject() const;
    // For PublishDriverInterface; not counted for the caller. Gives IPrintCoreUI2 and IPrintCoreHelperPS. A
    // plug-in that holds it longer than this object gets E_UNEXPECTED from every method.
    IUnknown* Helper() const;

    const Ppd& Description() const { return ppd_; }
    CallLog& Calls() { return calls_; }
    // Selections of the file that name no feature or option of the PPD: "halvGloss=7: no such option".
    const std::vector<std::string>& Refused() const { return refused_; }

    // What SetOptions would not take, in order: "halvGloss=7".
    const std::vector<std::string>& RefusedSettings() const { return refusedSettings_; }

    // The features as a plug-in sees them: those of the PPD, then the driver's own ("%Orientation").
    std::vector<std::string_view> Features() const;
    std::vector<std::string_view> Options(std::string_view feature) const; // empty: no such feature
    // The selected option; empty when there is no such feature.
    std::string_view Selected(std::string_view feature) const;
    SelectedOptions AllSelected() const;
    // Selects as SetOptions with KEEP_CONFLICT does; false when there is no such feature or option.
    bool Select(std::string_view feature, std::string_view option);
    // How many constraints the selections break now.
    std::size_t Conflicts() const;

    // A DEVMODE with the current selections: the public part, the core driver's own section, then the
    // plug-in's bytes. The vector's first element is the first byte of a DEVMODEW.
    std::vector<BYTE> MakeDevmode(PCWSTR device, std::span<const BYTE> pluginPart) const;

private:
    friend class CoreHelper;

    const Ppd& ppd_;
    Selections& selections_;
    std::unique_ptr<CoreModel> model_;
    std::vector<std::size_t> selected_; // by feature
    std::vector<std::string> refused_;
    std::vector<std::string> refusedSettings_;
    CallLog calls_;
    CoreHelper* helper_;
};

} // namespace tintwerk
