#include "host/ppd/ppd_scanner.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "host/ppd/ppd_text.h"

namespace tintwerk {

PpdScanner::PpdScanner(std::string name, std::string_view text)
    : name_(std::move(name)), begin_(text.data()), end_(text.data() + text.size()), at_(begin_),
      loneReturns_(HasLoneReturns()), counted_(begin_)
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

const char* PpdScanner::EndOfText() const
{
    const char* last = end_;
    while (last > begin_ && (IsLineEnd(last[-1]) || IsBlank(last[-1])))
        --last;
    return last;
}

PpdMessage PpdScanner::At(const char* position, std::string text)
{
    if (position < counted_) {
        counted_ = begin_;
        line_ = 1;
    }
    for (; counted_ < position; ++counted_) {
        if (*counted_ == '\n' || (*counted_ == '\r' && (counted_ + 1 == end_ || counted_[1] != '\n')))
            ++line_;
    }
    return {name_, line_, std::move(text)};
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
                statement.stray = true;
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
    ++start;
    const auto* close =
        static_cast<const char*>(std::memchr(start, '"', static_cast<std::size_t>(end_ - start)));
    CheckClosed(statement.at, close ? close : end_);
    if (!close) throw PpdFailure{At(start, "the value that begins here has no closing quote")};
    at_ = close;
    statement.value = Taken(start);
    at_ = LineEnd(close);
}

// A statement inside a value means that its closing quote was forgotten: say so where it is missed.
void PpdScanner::CheckClosed(const char* quote, const char* valueEnd)
{
    static constexpr std::string_view kSigns[] = {"*End",        "*OpenUI",        "*CloseUI",
                                                  "*JCLOpenUI",  "*JCLCloseUI",    "*OpenGroup",
                                                  "*CloseGroup", "*UIConstraints", "*Default"};
    for (const char* line = LineEnd(quote) + 1; line < valueEnd; line = LineEnd(line) + 1) {
        const std::string_view rest(line, static_cast<std::size_t>(valueEnd - line));
        const bool begins = std::any_of(std::begin(kSigns), std::end(kSigns),
                                        [rest](std::string_view sign) { return rest.starts_with(sign); });
        if (!begins) continue;
        const std::string_view shown(line,
                                     static_cast<std::size_t>(std::find_if(line, end_, IsLineEnd) - line));
        const std::string begun = std::to_string(At(quote, {}).line);
        throw PpdFailure{At(line, "closing quote expected before " + Quoted(shown) +
                                      " (the value begins at line " + begun + ")")};
    }
}

} // namespace tintwerk
