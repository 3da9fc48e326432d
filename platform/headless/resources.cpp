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

// Reads the header of one entry field by field.
class ResourceReader
{
public:
    explicit ResourceReader(std::span<const BYTE> bytes) : bytes_(bytes) {}

    template <typename Number> Number Take()
    {
        Number number = 0;
        if (bytes_.size() - at_ < sizeof number) {
            at_ = bytes_.size();
            return 0;
        }
        std::memcpy(&number, bytes_.data() + at_, sizeof number);
        at_ += sizeof number;
        return number;
    }

    ResourceId TakeId()
    {
        ResourceId id;
        WCHAR c = Take<WORD>();
        if (c == 0xFFFF) {
            id.number = Take<WORD>();
            return id;
        }
        for (; c; c = Take<WORD>())
            id.text += c;
        return ResourceId::From(id.text.c_str());
    }

private:
    std::span<const BYTE> bytes_;
    std::size_t at_ = 0;
};

WCHAR UpperCase(WCHAR c)
{
    return c >= u'a' && c <= u'z' ? static_cast<WCHAR>(c - 32) : c;
}

} // namespace

ResourceId ResourceId::From(LPCWSTR id)
{
    ResourceId result;
    if (IS_INTRESOURCE(id)) {
        result.number = LOWORD(reinterpret_cast<ULONG_PTR>(id));
    } else if (*id == u'#') {
        for (++id; *id >= u'0' && *id <= u'9'; ++id)
            result.number = static_cast<WORD>(result.number * 10 + (*id - u'0'));
    } else {
        result.text = id;
        std::ranges::transform(result.text, result.text.begin(), UpperCase);
    }
    return result;
}

std::vector<Resource> ParseResources(std::span<const BYTE> bytes)
{
    std::vector<Resource> resources;
    while (bytes.size() >= 32) {
        ResourceReader reader(bytes);
        const std::size_t dataSize = reader.Take<DWORD>();
        const std::size_t headerSize = reader.Take<DWORD>();
        if (headerSize < 32 || headerSize > bytes.size() || dataSize > bytes.size() - headerSize) break;
        ResourceReader header(bytes.first(headerSize));
        header.Take<ULONGLONG>();
        Resource resource;
        resource.type = header.TakeId();
        resource.name = header.TakeId();
        resource.data = bytes.subspan(headerSize, dataSize);
        // The first entry of every file is an empty one of type 0.
        if (resource.type != ResourceId{}) resources.push_back(std::move(resource));
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

const Resource* FindResourceIn(const std::vector<Resource>& resources, const ResourceId& type,
                               const ResourceId& name)
{
    bool typeFound = false;
    for (const Resource& resource : resources) {
        typeFound |= resource.type == type;
        if (resource.type == type && resource.name == name) return &resource;
    }
    return Fail<const Resource*>(typeFound           ? ERROR_RESOURCE_NAME_NOT_FOUND
                                 : resources.empty() ? ERROR_RESOURCE_DATA_NOT_FOUND
                                                     : ERROR_RESOURCE_TYPE_NOT_FOUND);
}

} // namespace tintwerk::headless

using namespace tintwerk::headless;

HRSRC FindResourceW(HMODULE, LPCWSTR name, LPCWSTR type)
{
    const Resource* resource =
        FindResourceIn(EmbeddedResources(), ResourceId::From(type), ResourceId::From(name));
    return reinterpret_cast<HRSRC>(const_cast<Resource*>(resource));
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
