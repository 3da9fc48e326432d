// How tintwerk check tells its findings: as text for people, as JSON, and as SARIF for editors and build
// servers. All three are written file by file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/cli/check_rules.h"
#include "host/cli/pages_trial.h"

namespace tintwerk {

struct CheckedFile
{
    std::string file;
    std::vector<Finding> findings;
    std::optional<PagesTrial> pages; // when they were to be tried and the PPD could be read
};

struct ReportStyle
{
    enum class Format
    {
        Text,
        Json,
        Sarif
    };
    Format format = Format::Text;
    bool notes = false;    // are shown; JSON has them always
    bool quiet = false;    // only what fails the check, and no summary
    bool strict = false;   // warnings fail it too
    bool coloured = false; // text alone
};

class CheckReport
{
public:
    explicit CheckReport(const ReportStyle& style) : style_(style) {}

    // What comes before, for and behind all files.
    std::string Begin() const;
    std::string OfFile(const CheckedFile& checked);
    std::string End() const;

    std::size_t Count(Severity severity) const { return counts_[static_cast<std::size_t>(severity)]; }

private:
    bool Shows(const Finding& finding) const;

    ReportStyle style_;
    std::size_t files_ = 0;
    std::size_t counts_[3] = {};
    bool any_ = false; // a row of the list stands there
};

} // namespace tintwerk
