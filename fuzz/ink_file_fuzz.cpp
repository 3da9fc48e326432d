// The counter file, whatever its bytes: its lines are cut alike however the bytes arrive, no line is longer
// than a piece, and what a line says comes from its own bytes.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "src/ink/ink_parsing.h"

namespace {

std::vector<std::string> Cut(std::string_view bytes, size_t chunk)
{
    std::vector<std::string> lines;
    const auto take = [&lines](std::string_view line) { lines.emplace_back(line); };
    tintwerk::InkLines cutter;
    for (size_t at = 0; at < bytes.size(); at += chunk)
        cutter.Feed(bytes.substr(at, chunk), take);
    cutter.Finish(take);
    return lines;
}

void Require(bool condition)
{
    if (!condition) std::abort();
}

} // namespace

// The first byte chooses how the rest arrives.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::vector<std::string> lines = Cut(bytes, 1 + data[0]);
    Require(lines == Cut(bytes, size));
    for (const std::string& line : lines) {
        Require(!line.empty() && line.size() <= tintwerk::kInkPieceLength);
        Require(line.find_first_of("\n\x1A") == line.npos);
        const auto said = tintwerk::ParseInkLine(line);
        if (!said) continue;
        Require(said->code.size() == 1 || said->code.size() == 2);
        Require(said->code.data() >= line.data() && said->code.data() < line.data() + line.size());
        Require(line.find(said->total ? "TotalInk_" : "LastInk_") != line.npos);
    }
    return 0;
}
