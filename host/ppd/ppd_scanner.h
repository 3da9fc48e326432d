// Takes the text of one PPD file apart into statements and knows the line of everything in it. Used by the
// PPD reader.
#pragma once

#include <string>
#include <string_view>

#include "host/ppd/ppd.h"

namespace tintwerk {

// Thrown where a file cannot be read on; caught by ReadPpd.
struct PpdFailure
{
    PpdMessage message;
};

// *main option/text: value
struct PpdStatement
{
    const char* at = nullptr; // its asterisk
    std::string_view main, option, text, value;
    bool hasText = false, hasValue = false;
    bool stray = false; // no statement: `value` is the beginning of a line without an asterisk
};

class PpdScanner
{
public:
    // The text must outlive the scanner and everything it gives.
    PpdScanner(std::string name, std::string_view text);

    // The next statement, comments and empty lines passed over; false at the end of the file.
    bool Next(PpdStatement& statement);

    const std::string& Name() const { return name_; }
    bool Holds(const char* position) const { return position >= begin_ && position <= end_; }
    const char* EndOfText() const; // behind the last character that is no blank
    // A message about a position of the text. Cheap when positions come in order.
    PpdMessage At(const char* position, std::string text);

private:
    bool HasLoneReturns() const;
    const char* LineEnd(const char* at) const;
    std::string_view Taken(const char* start) const { return {start, static_cast<std::size_t>(at_ - start)}; }
    void Scan(PpdStatement& statement);
    void ScanValue(PpdStatement& statement);
    void CheckClosed(const char* quote, const char* valueEnd);

    std::string name_;
    const char* begin_;
    const char* end_;
    const char* at_;
    bool loneReturns_;    // lines may end with a carriage return alone
    const char* counted_; // where line counting stands, and the line there
    unsigned line_ = 1;
};

} // namespace tintwerk
