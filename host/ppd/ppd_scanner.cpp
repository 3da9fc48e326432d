#include "host/ppd/ppd_scanner.h"

#include <algorithm>
#include <cstring>

#include "host/ppd/ppd_text.h"

namespace tintwerk {

namespace {

// Whether a line inside a value is a statement, so that the value's closing quote was forgotten. PostScript
// has no operator that begins with an asterisk.
bool BeginsStatement(std::string_view line)
{
    if (line.size() < 2 || line[0] != '*') return false;
    const char first = line[1];
    const bool letter = (first >= 'A' && first <= 'Z') || (first >= 'a' && first <= 'z');
    return letter && (line.starts_with("*End") || line.find(':') != line.npos);
}

} // namespace

PpdScanner::PpdScanner(std::string_view text)
    : begin_(text.data()), end_(text.data() + text.size()), at_(begin_), loneReturns_(HasLoneReturns())
{
}

bool PpdScanner::HasLoneReturns() const
{
    for (const char* at = begin_; at < end_; ++at) {
        at = static_cast<const char*>(std::memchr(at, '\r', static_cast<std::size_t>(end_ - at)));
        if (!at) return false;
        if (at + 1 == end_ || at[1] != '\n') return true;
    }
    return false;
}

const char* PpdScanner::LineEnd(const char* at) const
{
    if (loneReturns_) return std::find_if(at, end_, IsLineEnd);
    const void* found = at < end_ ? std::memchr(at, '\n', static_cast<std::size_t>(end_ - at)) : nullptr;
    return found ? static_cast<const char*>(found) : end_;
}

bool PpdScanner::Next(PpdStatement& statement)
{
    while (at_ < end_) {
        if (IsLineEnd(*at_) || IsBlank(*at_)) {
            ++at_;
        } else if (*at_ == '*' && at_ + 1 < end_ && at_[1] == '%') {
            at_ = LineEnd(at_);
        } else {
            statement = {};
            statement.at = at_;
            if (*at_ == '*') {
                Scan(statement);
            } else {
                statement.keyword = PpdKeyword::Stray;
                at_ = LineEnd(at_);
                statement.value = Trim(Taken(statement.at).substr(0, 40));
            }
            return true;
        }
    }
    return false;
}

void PpdScanner::Scan(PpdStatement& statement)
{
    const char* start = ++at_;
    while (at_ < end_ && !IsBlank(*at_) && !IsLineEnd(*at_) && *at_ != ':' && *at_ != '/')
        ++at_;
    statement.main = Taken(start);
    while (at_ < end_ && IsBlank(*at_))
        ++at_;
    start = at_;
    while (at_ < end_ && *at_ != ':' && *at_ != '/' && !IsLineEnd(*at_))
        ++at_;
    statement.option = Trim(Taken(start));
    if (at_ < end_ && *at_ == '/') {
        start = ++at_;
        while (at_ < end_ && *at_ != ':' && !IsLineEnd(*at_))
            ++at_;
        statement.text = Taken(start);
        statement.hasText = true;
    }
    if (at_ < end_ && *at_ == ':') ScanValue(statement);
}

void PpdScanner::ScanValue(PpdStatement& statement)
{
    statement.hasValue = true;
    ++at_;
    while (at_ < end_ && IsBlank(*at_))
        ++at_;
    const char* start = at_;
    if (at_ == end_ || *at_ != '"') {
        at_ = LineEnd(at_);
        statement.value = Trim(Taken(start));
        return;
    }
    // A quoted value may span lines; what follows it on its last line says nothing.
    statement.quoted = true;
    ++start;
    const auto* const close =
        static_cast<const char*>(std::memchr(start, '"', static_cast<std::size_t>(end_ - start)));
    at_ = BeforeStatement(start, close ? close : end_);
    statement.unclosed = at_ != nullptr || !close;
    if (!at_) at_ = close ? close : LineEnd(start);
    statement.value = statement.unclosed ? Trim(Taken(start)) : Taken(start);
    at_ = LineEnd(at_);
}

// The end of the line before the first statement within a value; null when there is none.
const char* PpdScanner::BeforeStatement(const char* start, const char* valueEnd) const
{
    for (const char* end = LineEnd(start); end < valueEnd;) {
        const char* const line = end + 1;
        const char* const next = LineEnd(line);
        if (BeginsStatement({line, static_cast<std::size_t>(next - line)})) return end;
        end = next;
    }
    return nullptr;
}

} // namespace tintwerk
