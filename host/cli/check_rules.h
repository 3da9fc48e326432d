// What the driver's pages will make of a PPD: everything that an author of PPDs should know before a user
// sees it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/ppd/ppd.h"

namespace tintwerk {

enum class Severity
{
    Error,   // a user will run into it
    Warning, // most likely not what was meant
    Note,    // how the driver takes it
};

std::string_view TextOf(Severity severity);

struct Finding
{
    Severity severity;
    std::string feature; // where to look in the file; empty: the file as a whole
    std::string option;
    std::string text;
    unsigned line = 0; // 0: not known
};

std::vector<Finding> CheckPpd(const Ppd& ppd);

// Fills in the lines of findings from the file's text.
void LocateFindings(std::string_view text, std::vector<Finding>& findings);

} // namespace tintwerk
