// The lines of a counter file, as bytes: how they are cut and what one says. Pure; the reader feeds it.
#pragma once

#include <optional>
#include <string_view>

#include "src/bindings/option_number.h"

namespace tintwerk {

inline constexpr size_t kInkPieceLength = 255; // a longer line continues as a new line

// Cuts text that arrives in chunks into lines and hands each to take(std::string_view), without its line end.
// The rules are those of a text file of the platform's runtime: CR LF ends a line as LF does, and a Ctrl-Z is
// the end of the text whatever follows it. Uses a fixed amount of memory and touches each byte a fixed number
// of times.
class InkLines
{
public:
    template <typename Take> void Feed(std::string_view chunk, Take&& take)
    {
        if (ended_) return;
        if (const size_t end = chunk.find(kCtrlZ); end != chunk.npos) {
            chunk = chunk.substr(0, end);
            ended_ = true;
        }
        while (!chunk.empty()) {
            const size_t line = chunk.find('\n');
            Append(chunk.substr(0, line), line != chunk.npos, take);
            if (line == chunk.npos) return;
            EndLine(take);
            chunk.remove_prefix(line + 1);
        }
    }

    // The text is over: a last line needs no line end.
    template <typename Take> void Finish(Take&& take)
    {
        if (heldReturn_) Push("\r", take);
        EndLine(take);
    }

private:
    static constexpr char kCtrlZ = 0x1A;

    // A carriage return at the end is text only if no line feed follows, so it waits.
    template <typename Take> void Append(std::string_view text, bool lineEnds, Take&& take)
    {
        if (text.empty()) return;
        if (heldReturn_) Push("\r", take);
        heldReturn_ = text.back() == '\r';
        if (heldReturn_) text.remove_suffix(1);
        if (lineEnds && used_ == 0 && text.size() <= kInkPieceLength) {
            if (!text.empty()) take(text); // no need to copy a line that lies whole in the chunk
            return;
        }
        Push(text, take);
    }

    template <typename Take> void Push(std::string_view text, Take&& take)
    {
        while (!text.empty()) {
            const size_t taken = text.copy(piece_ + used_, kInkPieceLength - used_);
            used_ += taken;
            text.remove_prefix(taken);
            if (used_ == kInkPieceLength) Flush(take);
        }
    }

    template <typename Take> void EndLine(Take&& take)
    {
        heldReturn_ = false;
        if (used_ > 0) Flush(take);
    }

    template <typename Take> void Flush(Take&& take)
    {
        take(std::string_view(piece_, used_));
        used_ = 0;
    }

    char piece_[kInkPieceLength]; // what is known of the current line
    size_t used_ = 0;
    bool heldReturn_ = false;
    bool ended_ = false;
};

// What a line says about one ink channel.
struct InkLine
{
    bool total;            // the total, else the last job
    std::string_view code; // as it stands in the line
    int value;
    bool operator==(const InkLine&) const = default;
};

// Nothing for headers, comments, lines without a number and everything else.
constexpr std::optional<InkLine> ParseInkLine(std::string_view line)
{
    constexpr std::string_view kTotal = "TotalInk_";
    constexpr std::string_view kLastJob = "LastInk_";

    size_t start = line.find(kTotal);
    const bool total = start != line.npos;
    if (!total) start = line.find(kLastJob);
    if (start == line.npos) return std::nullopt;
    line.remove_prefix(start + (total ? kTotal : kLastJob).size());

    const size_t equals = line.find('=');
    if (equals == line.npos) return std::nullopt;
    std::string_view number = line;
    number.remove_prefix(equals + 1);
    const std::optional<int> value = LeadingNumber(number);
    if (!value) return std::nullopt;

    const bool oneCharacter = line[1] == ' ' || line[1] == '=';
    return InkLine{total, line.substr(0, oneCharacter ? 1 : 2), *value};
}

} // namespace tintwerk
