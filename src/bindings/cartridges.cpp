#include "src/bindings/cartridges.h"

#include <string_view>

namespace tintwerk {

const CartridgeColor* FindCartridgeColor(const WCHAR* code)
{
    const std::basic_string_view<WCHAR> wanted(code);
    for (const CartridgeColor& color : kCartridgeColorTable) {
        if (color.index < 0) break;
        if (wanted == color.code) return &color;
    }
    return nullptr;
}

} // namespace tintwerk
