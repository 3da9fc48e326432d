// Opens the printing preferences of a PPD, shows every page, applies them without a change, and tells whether
// the selections stayed as they were. Used by tintwerk check --pages.
#pragma once

#include <string>
#include <vector>

#include "host/cli/printer_run.h"

namespace tintwerk {

struct PagesTrial
{
    std::string selections;               // "defaults" or "last options"
    std::string problem;                  // empty, or why the pages were not shown and applied
    int pages = 0;                        // that were shown
    std::vector<std::string> messages;    // boxes that came up by themselves
    std::vector<SelectionChange> changes; // that applying without a change made
};

// One trial with the PPD's defaults and one with the last option of every feature, as far as the PPD allows
// these together; the first that fails is told.
PagesTrial TryPages(const Ppd& ppd);

} // namespace tintwerk
