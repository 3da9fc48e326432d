// Keyword lists and pair lists of any bytes: every text that is handed out lies whole inside the bytes given,
// and the walk finds what a walk over a copy with its own terminators finds.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "src/features/keyword_list.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tintwerk;

    // Its own block, so that the sanitizer sees the first byte read beyond it.
    const std::unique_ptr<char[]> bytes(new char[size]);
    std::copy_n(data, size, bytes.get());

    std::vector<std::string> expected;
    const std::string text(bytes.get(), size);
    for (std::size_t at = 0; at < size;) {
        const std::size_t end = text.find('\0', at);
        if (end == text.npos || end == at) break;
        expected.push_back(text.substr(at, end - at));
        at = end + 1;
    }

    std::size_t count = 0;
    for (const char* keyword : KeywordList(bytes.get(), size))
        if (count == expected.size() || expected[count++] != keyword) std::abort();
    if (count != expected.size()) std::abort();

    count = 0;
    for (const auto [feature, option] : PairList(bytes.get(), size)) {
        if (count + 2 > expected.size()) std::abort();
        if (expected[count] != feature || expected[count + 1] != option) std::abort();
        count += 2;
    }
    if (expected.size() - count > 1) std::abort();
    return 0;
}
