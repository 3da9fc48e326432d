// Numbers in option keywords: any text reads as the runtime's own decimal reader reads it, kept within 32
// bits. Numbers typed into a number field: within the field's range, and the same again once written back.
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "src/bindings/option_number.h"
#include "src/pages/number_text.h"

namespace {

bool ReadNumber(const std::string& text, int* value)
{
    *value = 0;
    if (text.find("-off") != text.npos) return true;
    if (text.find("-on") != text.npos) {
        *value = 1;
        return true;
    }
    char* end = nullptr;
    const long long number = std::strtoll(text.c_str(), &end, 10); // ends at the ends of 64 bits
    if (end == text.c_str()) return false;
    *value = static_cast<int>(std::clamp<long long>(number, INT_MIN, INT_MAX));
    return true;
}

void CheckNumberFields(const std::string& typed)
{
    using namespace tintwerk;
    const std::basic_string<WCHAR> text(typed.begin(), typed.end());
    for (const NumberFieldBinding& field : kNumberFieldTable) {
        const std::optional<int> value = ReadNumber(text, field);
        if (!value) continue;
        if (*value < field.minimum || *value > field.maximum) std::abort();
        if (ReadNumber(FormatNumber(*value, field).units, field) != value) std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string text(bytes.c_str()); // ends at the first zero
    CheckNumberFields(text);
    int expected = 77;
    const bool read = ReadNumber(text, &expected);
    if (tintwerk::OptionNumber(text) != (read ? std::optional(expected) : std::nullopt)) std::abort();
    return 0;
}
