// The rules by which tintwerk check judges a PPD: what the format asks for, and what the driver's pages will
// make of the file. Each is a row with a code, a severity, a sentence and a function.
#pragma once

#include <bitset>
#include <concepts>
#include <span>
#include <string>
#include <string_view>
#include <utility>
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

class PpdCheck;

struct Rule
{
    std::string_view code; // stable: people write it into scripts
    Severity severity;
    std::string_view sentence;     // what is wrong, for any file
    void (*find)(PpdCheck& check); // null: the reader or the trial of the pages tells it. Rows may share one
};

std::span<const Rule> Rules();
std::size_t NumberOf(const Rule& rule); // among them
const Rule* FindRule(std::string_view code);

// Which rows of the table are wanted.
using RuleChoice = std::bitset<128>;

struct Finding
{
    const Rule* rule;
    std::string file;
    unsigned line; // 1 for what concerns the file as a whole
    std::string feature, option;
    std::string text;
};

// Where a finding stands and what it concerns. `at` lies in the file; without one it is the file as a whole.
struct Place
{
    Place(const char* position = nullptr, std::string_view keyword = {}) : at(position), feature(keyword) {}
    Place(const PpdStatement& statement); // what that speaks of
    Place(const PpdFeature& one) : at(one.keyword.data()), feature(one.keyword) {}
    Place(const PpdFeature& one, const PpdOption& its);

    const char* at;
    std::string_view feature, option;
};

// One file under examination: what the rules look at, and what they found.
class PpdCheck
{
public:
    PpdCheck(const Ppd& description, const RuleChoice& choice) : ppd(description), choice_(choice) {}

    // Applies every rule that is wanted, and takes over what the reader said.
    std::vector<Finding> Run();

    // The parts of the text are strings and whole numbers.
    template <typename... Parts> void Tell(std::string_view code, const Place& place, const Parts&... parts)
    {
        std::string text;
        (Append(text, parts), ...);
        Add(code, place, std::move(text));
    }

    const Ppd& ppd;

private:
    static void Append(std::string& text, std::string_view part) { text += part; }
    template <std::integral Number> static void Append(std::string& text, Number number)
    {
        text += std::to_string(number);
    }
    void Add(std::string_view code, const Place& place, std::string text);

    RuleChoice choice_;
    std::vector<Finding> findings_;
};

// Adds a finding that stands outside any Ppd: a file that cannot be read, a page that does not open.
void AddFinding(std::vector<Finding>& findings, const RuleChoice& choice, std::string_view code,
                const PpdMessage& message);

// "a, b, c and 4 more".
std::string FirstOf(const std::vector<std::string>& texts, std::size_t most = 6);

// "1 file", "2 files".
std::string Counted(std::size_t count, std::string_view thing);

// The functions of the table's rows, by the file in which they stand.
void CheckHeader(PpdCheck& check); // check_format.cpp
void CheckRepeated(PpdCheck& check);
void CheckFeatures(PpdCheck& check);
void CheckStatements(PpdCheck& check);
void CheckSizes(PpdCheck& check); // check_sizes.cpp
void CheckCustomSize(PpdCheck& check);
void CheckFeatureNames(PpdCheck& check); // check_driver.cpp
void CheckControls(PpdCheck& check);
void CheckBorderless(PpdCheck& check);
void CheckScreenPrinting(PpdCheck& check);
void CheckLengths(PpdCheck& check);
void CheckConflicts(PpdCheck& check);
void CheckAdvancedPage(PpdCheck& check);
void CheckEmptyPopups(PpdCheck& check); // check_constraints.cpp

} // namespace tintwerk
