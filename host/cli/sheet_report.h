// The JSON report of a sheet: what stands on its pages, what was selected, what changed, what the plug-in
// asked the core driver. docs/json.md describes it.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "host/cli/json.h"
#include "host/cli/printer_run.h"
#include "host/sheet/property_sheet.h"
#include "host/sheet/script_player.h"

namespace tintwerk {

class SheetReport
{
public:
    void AddLine(const std::string& line) { lines_.push_back(line); }
    // Reads every page of the open sheet, brings each to the front.
    void Describe(ScriptPlayer& player);
    void Write(std::ostream& out, SheetKind kind, PrinterRun& printer, const std::string& problem);

private:
    Json pages_ = Json::array();
    std::vector<std::string> lines_;
};

} // namespace tintwerk
