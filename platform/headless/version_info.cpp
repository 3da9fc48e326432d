// Version information of the headless platform: finds the version resource of a file and looks values up in
// it.
#include <algorithm>
#include <cstring>
#include <span>
#include <string>

#include "platform/headless/hookable.h"
#include "platform/headless/resources.h"
#include "platform/headless/wide.h"
#include "platform/pe_image.h"
#include "platform/whole_file.h"

using namespace tintwerk::headless;
using tintwerk::PeImage;

namespace {

using Bytes = std::span<const BYTE>;
using View = std::basic_string_view<WCHAR>;

constexpr WORD kVersionType = 16;
constexpr char kPluginFile[] = "/PSTWUI.DLL";

std::vector<BYTE> VersionResource(LPCWSTR path)
{
    const std::string file = NativePath(Narrow(path ? path : u""));
    const std::vector<BYTE> bytes = tintwerk::ReadWholeFile(file.c_str());
    Bytes found;
    if (const auto image = PeImage::Open(bytes)) {
        found = image->Resource(kVersionType, 0);
    } else {
        const std::size_t suffix = sizeof kPluginFile - 1;
        const bool plugin = bytes.empty() && file.size() >= suffix &&
                            lstrcmpiA(file.c_str() + file.size() - suffix, kPluginFile) == 0;
        const std::vector<Resource> resources = plugin ? EmbeddedResources() : ParseResources(bytes);
        const auto at = std::ranges::find(resources, kVersionType, &Resource::type);
        if (at != resources.end()) found = at->data;
    }
    if (found.empty()) SetLastError(bytes.empty() ? ERROR_FILE_NOT_FOUND : ERROR_RESOURCE_DATA_NOT_FOUND);
    return {found.begin(), found.end()};
}

DWORD VersionSize(LPCWSTR path, LPDWORD ignored)
{
    if (ignored) *ignored = 0;
    return static_cast<DWORD>(VersionResource(path).size());
}

BOOL VersionData(LPCWSTR path, DWORD, DWORD size, LPVOID data)
{
    const std::vector<BYTE> resource = VersionResource(path);
    if (resource.empty() || !data) return FALSE;
    const std::size_t copied = std::min<std::size_t>(size, resource.size());
    std::memcpy(data, resource.data(), copied);
    // The block tells its own length, which a caller with a small buffer must be able to rely on.
    const WORD length = static_cast<WORD>(std::min<std::size_t>(copied, resource[0] | resource[1] << 8));
    if (copied >= sizeof length) std::memcpy(data, &length, sizeof length);
    return TRUE;
}

Hookable<VersionSize> getVersionSize{"GetFileVersionInfoSizeW"};
Hookable<VersionData> getVersionData{"GetFileVersionInfoW"};

WORD Word(Bytes bytes, std::size_t offset)
{
    return bytes.size() >= offset + 2 ? static_cast<WORD>(bytes[offset] | bytes[offset + 1] << 8) : WORD{0};
}

constexpr std::size_t Aligned(std::size_t offset)
{
    return (offset + 3) & ~std::size_t{3};
}

// One block of a version resource: length, length of the value, kind of the value, key, value, blocks within.
struct Block
{
    Bytes bytes; // of the whole block
    std::size_t keyEnd = 6;
    std::size_t value = 0; // offset
    UINT valueLength = 0;  // in bytes, or characters of a text
    bool text = false;

    explicit Block(Bytes from) : bytes(from.first(std::min<std::size_t>(from.size(), Word(from, 0))))
    {
        valueLength = Word(bytes, 2);
        text = Word(bytes, 4) == 1;
        while (Word(bytes, keyEnd))
            keyEnd += 2;
        value = std::min(Aligned(keyEnd + 2), bytes.size());
        const std::size_t room = bytes.size() - value;
        valueLength = static_cast<UINT>(std::min<std::size_t>(valueLength, text ? room / 2 : room));
    }

    View Key() const { return {reinterpret_cast<const WCHAR*>(bytes.data() + 6), (keyEnd - 6) / 2}; }
    std::size_t ValueBytes() const { return text ? std::size_t{2} * valueLength : valueLength; }

    bool FindChild(View key, Block& child) const
    {
        for (std::size_t at = Aligned(value + ValueBytes()); at + 6 <= bytes.size();) {
            const Block candidate(bytes.subspan(at));
            if (candidate.bytes.size() < 6) return false;
            const View name = candidate.Key();
            if (CompareStringOrdinal(name.data(), static_cast<int>(name.size()), key.data(),
                                     static_cast<int>(key.size()), TRUE) == CSTR_EQUAL) {
                child = candidate;
                return true;
            }
            at += Aligned(candidate.bytes.size());
        }
        return false;
    }
};

BOOL QueryBlock(LPCVOID data, LPCWSTR subBlock, LPVOID* value, PUINT length)
{
    const auto* const bytes = static_cast<const BYTE*>(data);
    if (!bytes) return FALSE;
    Block block(Bytes(bytes, static_cast<std::size_t>(bytes[0] | bytes[1] << 8)));
    for (View path(subBlock ? subBlock : u""); !path.empty();) {
        const View key = path.substr(0, path.find(u'\\'));
        path.remove_prefix(std::min(path.size(), key.size() + 1));
        if (!key.empty() && !block.FindChild(key, block)) {
            if (length) *length = 0;
            SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
            return FALSE;
        }
    }
    *value = const_cast<BYTE*>(block.bytes.data()) + block.value;
    if (length) *length = block.valueLength;
    return TRUE;
}

Hookable<QueryBlock> queryBlock{"VerQueryValueW"};

} // namespace

DWORD GetFileVersionInfoSizeW(LPCWSTR path, LPDWORD ignored)
{
    return getVersionSize(path, ignored);
}
BOOL GetFileVersionInfoW(LPCWSTR path, DWORD ignored, DWORD size, LPVOID data)
{
    return getVersionData(path, ignored, size, data);
}

BOOL VerQueryValueW(LPCVOID block, LPCWSTR subBlock, LPVOID* value, PUINT length)
{
    return queryBlock(block, subBlock, value, length);
}
