// Takes the text of one PPD file apart into statements. Used by the PPD reader.
#pragma once

#include <string_view>

#include "host/ppd/ppd_statement.h"

namespace tintwerk {

class PpdScanner
{
public:
    // The text must outlive everything that the scanner gives.
    explicit PpdScanner(std::string_view text);

    // The next statement, comments and empty lines passed over; false at the end of the file.
    bool Next(PpdStatement& statement);

private:
    bool HasLoneReturns() const;
    const char* LineEnd(const char* at) const;
    std::string_view Taken(const char* start) const { return {start, static_cast<std::size_t>(at_ - start)}; }
    void Scan(PpdStatement& statement);
    void ScanValue(PpdStatement& statement);
    const char* BeforeStatement(const char* start, const char* valueEnd) const;

    const char* begin_;
    const char* end_;
    const char* at_;
    bool loneReturns_; // lines may end with a carriage return alone
};

} // namespace tintwerk
