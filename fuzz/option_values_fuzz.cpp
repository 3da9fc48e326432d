// Reading and writing one feature with any keyword, any buffer and any answer of the core driver.
#include <cstdlib>
#include <memory>

#include "fuzz/random_core.h"
#include "src/features/feature_access.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count)
{
    using namespace tintwerk;

    FuzzedDataProvider data(bytes, count);
    RandomCore core(data);
    SheetContext context{};
    context.core.helper = &core;
    const std::string feature = data.ConsumeRandomLengthString(600);
    const std::string option = data.ConsumeRandomLengthString(600);
    SetOption(context, feature.c_str(), option.c_str());

    int value = 77;
    getPPDOptionSV(context, feature.c_str(), &value, nullptr, 0);

    const int size = data.ConsumeIntegralInRange(1, 1100);
    const auto buffer = std::make_unique<char[]>(static_cast<std::size_t>(size));
    if (getPPDOptionSV(context, feature.c_str(), &value, buffer.get(), size) == S_OK && buffer[size - 1] != 0)
        std::abort();
    return 0;
}
