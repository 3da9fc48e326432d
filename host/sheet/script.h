// What a script does with an open sheet: steps in the order in which they were given. Made from command
// lines, played by ScriptPlayer.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/sheet/page_controls.h"

namespace tintwerk {

enum class StepKind
{
    Page,       // subject: page name
    Set,        // slider to a position, number field to a number
    Choose,     // option of a popup or of an option item
    Check,      // check box on or off
    Press,      // subject: text or number of a button
    Show,       // reports a feature's control
    Screenshot, // subject: folder
    Tour,       // a picture of every page; subject: folder
    Apply,
    Ok,
    Cancel,
};

struct Step
{
    StepKind kind;
    std::string subject; // PPD feature, page, button or folder
    std::string value;   // position, number, option keyword, "on" or "off"
    std::string source;  // as it was typed: "--set halvBrightness=2"
    std::string place;   // in a script file: "demo.steps:3: "
};

// The number of a number field's internal units: "45.5".
std::string Tenths(int value, int divisor);

// The step of a command line option such as ("set", "halvBrightness=2"), or in text what is wrong with it.
// Options that are no steps give an empty text.
std::variant<Step, std::string> ParseStep(std::string_view option, std::string_view value);

// The steps of a script: the words of the command line, one step a line, with or without the dashes; "#"
// begins a comment line. Returns an empty text, or what is wrong, with the name and the line.
std::string ParseScript(std::string_view text, const std::string& name, std::vector<Step>& steps);

} // namespace tintwerk
