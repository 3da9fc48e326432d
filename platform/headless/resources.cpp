#include "platform/headless/resources.h"

#include <algorithm>
#include <cstring>

#include "platform/handles.h"

// Defined by the object that carries the compiled resources; null in programs without one.
extern "C" {
extern const BYTE tintwerk_resources_begin[] __attribute__((weak));
extern const BYTE tintwerk_resources_end[] __attribute__((weak));
}

namespace tintwerk::headless {

namespace {

constexpr std::size_t kSmallestHeader = 32;
constexpr WORD kNumberFollows = 0xFFFF;

template <typename Number> Number At(std::span<const BYTE> header, std::size_t offset)
{
    Number number;
    std::memcpy(&number, header.data() + offset, sizeof number);
    return number;
}

// The number in what the platform's functions take: MAKEINTRESOURCEW or "#123"; 0, which is no resource's,
// for a text.
WORD ResourceNumber(LPCWSTR id)
{
    if (IS_INTRESOURCE(id)) return LOWORD(reinterpret_cast<ULONG_PTR>(id));
    WORD number = 0;
    if (*id == u'#') {
        for (++id; *id >= u'0' && *id <= u'9'; ++id)
            number = static_cast<WORD>(number * 10 + (*id - u'0'));
    }
    return number;
}

} // namespace

std::vector<Resource> ParseResources(std::span<const BYTE> bytes)
{
    std::vector<Resource> resources;
    while (bytes.size() >= kSmallestHeader) {
        const std::size_t dataSize = At<DWORD>(bytes, 0);
        const std::size_t headerSize = At<DWORD>(bytes, 4);
        if (headerSize < kSmallestHeader || headerSize > bytes.size() || dataSize > bytes.size() - headerSize)
            break;
        const WORD type = At<WORD>(bytes, 10);
        const bool numbered = At<WORD>(bytes, 8) == kNumberFollows && At<WORD>(bytes, 12) == kNumberFollows;
        // The first entry of every file is an empty one of type 0.
        if (numbered && type != 0)
            resources.push_back({type, At<WORD>(bytes, 14), bytes.subspan(headerSize, dataSize)});
        bytes = bytes.subspan(std::min(bytes.size(), headerSize + ((dataSize + 3) & ~std::size_t{3})));
    }
    return resources;
}

const std::vector<Resource>& EmbeddedResources()
{
    static const std::vector<Resource>& resources = *new std::vector<Resource>(
        ParseResources(tintwerk_resources_begin ? std::span(tintwerk_resources_begin, tintwerk_resources_end)
                                                : std::span<const BYTE>()));
    return resources;
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

HRSRC FindResourceW(HMODULE, LPCWSTR name, LPCWSTR type)
{
    const WORD wanted = ResourceNumber(type), number = ResourceNumber(name);
    bool typeFound = false;
    for (const Resource& resource : EmbeddedResources()) {
        typeFound |= resource.type == wanted;
        if (resource.type == wanted && resource.name == number)
            return reinterpret_cast<HRSRC>(const_cast<Resource*>(&resource));
    }
    return tintwerk::Refuse<HRSRC>(typeFound                     ? ERROR_RESOURCE_NAME_NOT_FOUND
                                   : EmbeddedResources().empty() ? ERROR_RESOURCE_DATA_NOT_FOUND
                                                                 : ERROR_RESOURCE_TYPE_NOT_FOUND);
}

HGLOBAL LoadResource(HMODULE, HRSRC resource)
{
    return resource ? const_cast<BYTE*>(reinterpret_cast<const Resource*>(resource)->data.data()) : nullptr;
}

LPVOID LockResource(HGLOBAL data)
{
    return data;
}

DWORD SizeofResource(HMODULE, HRSRC resource)
{
    return resource ? static_cast<DWORD>(reinterpret_cast<const Resource*>(resource)->data.size()) : 0;
}
