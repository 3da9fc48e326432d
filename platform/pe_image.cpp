#include "platform/pe_image.h"

#include <algorithm>
#include <cstring>

namespace tintwerk {

namespace {

constexpr SIZE_T kExports = 0, kImports = 1, kResources = 2;
constexpr WORD kPe32Plus = 0x20B;
constexpr DWORD kSubdirectory = 0x80000000;
constexpr SIZE_T kMostEntries = 4096;

// A little-endian number at an offset, 0 where the bytes have ended.
template <typename Number> Number Read(PeImage::Bytes bytes, SIZE_T offset)
{
    Number number = 0;
    if (offset <= bytes.size() && bytes.size() - offset >= sizeof number)
        std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

PeImage::Bytes From(PeImage::Bytes bytes, SIZE_T offset)
{
    return offset < bytes.size() ? bytes.subspan(offset) : PeImage::Bytes{};
}

} // namespace

std::optional<PeImage> PeImage::Open(Bytes bytes)
{
    PeImage image(bytes);
    if (!image.ReadHeaders()) return std::nullopt;
    return image;
}

bool PeImage::ReadHeaders()
{
    const Bytes headers = From(bytes_, Read<DWORD>(bytes_, 0x3C));
    constexpr SIZE_T kOptional = 24;
    if (Read<WORD>(bytes_, 0) != 0x5A4D || Read<DWORD>(headers, 0) != 0x4550 ||
        Read<WORD>(headers, kOptional) != kPe32Plus)
        return false;
    characteristics_ = Read<WORD>(headers, kOptional + 70);
    const DWORD directories = std::min<DWORD>(Read<DWORD>(headers, kOptional + 108), 16);
    for (DWORD i = 0; i < directories; ++i)
        directories_.push_back(Read<DWORD>(headers, kOptional + 112 + std::size_t{8} * i));
    directories_.resize(16);

    const WORD sections = Read<WORD>(headers, 6);
    Bytes row = From(headers, kOptional + Read<WORD>(headers, 20));
    for (WORD i = 0; i < sections && row.size() >= 40; ++i, row = From(row, 40))
        sections_.push_back({Read<DWORD>(row, 12), Read<DWORD>(row, 16), Read<DWORD>(row, 20)});
    return true;
}

PeImage::Bytes PeImage::At(DWORD address) const
{
    for (const Section& section : sections_) {
        if (address < section.address || address - section.address >= section.size) continue;
        const DWORD within = address - section.address;
        const Bytes tail = From(bytes_, SIZE_T{section.offset} + within);
        return tail.first(std::min<SIZE_T>(tail.size(), section.size - within));
    }
    return {};
}

std::string PeImage::TextAt(DWORD address) const
{
    const Bytes bytes = At(address);
    return {bytes.begin(), std::ranges::find(bytes, BYTE{0})};
}

std::vector<std::string> PeImage::ImportedLibraries() const
{
    std::vector<std::string> names;
    Bytes row = At(directories_[kImports]);
    for (; Read<DWORD>(row, 12) && names.size() < kMostEntries; row = From(row, 20))
        names.push_back(TextAt(Read<DWORD>(row, 12)));
    return names;
}

std::vector<std::string> PeImage::ExportedNames() const
{
    std::vector<std::string> names;
    const Bytes directory = At(directories_[kExports]);
    const Bytes pointers = At(Read<DWORD>(directory, 32));
    const SIZE_T count = std::min<SIZE_T>(Read<DWORD>(directory, 24), kMostEntries);
    for (SIZE_T i = 0; i < count; ++i)
        names.push_back(TextAt(Read<DWORD>(pointers, 4 * i)));
    return names;
}

// The offset of an entry of a resource directory; 0 when there is none.
DWORD PeImage::ResourceEntry(Bytes directory, WORD id) const
{
    const WORD named = Read<WORD>(directory, 12);
    const WORD numbered = Read<WORD>(directory, 14);
    const SIZE_T first = id ? named : 0;
    for (SIZE_T i = first; i < SIZE_T{named} + numbered; ++i) {
        if (!id || Read<DWORD>(directory, 16 + 8 * i) == id) return Read<DWORD>(directory, 20 + 8 * i);
    }
    return 0;
}

PeImage::Bytes PeImage::Resource(WORD type, WORD name) const
{
    const Bytes root = At(directories_[kResources]);
    const DWORD names = ResourceEntry(root, type);
    const DWORD languages =
        names & kSubdirectory ? ResourceEntry(From(root, names & ~kSubdirectory), name) : 0;
    const DWORD leaf =
        languages & kSubdirectory ? ResourceEntry(From(root, languages & ~kSubdirectory), 0) : 0;
    if (!leaf || leaf & kSubdirectory) return {};
    const Bytes entry = From(root, leaf);
    const Bytes data = At(Read<DWORD>(entry, 0));
    const DWORD size = Read<DWORD>(entry, 4);
    return size <= data.size() ? data.first(size) : Bytes{};
}

} // namespace tintwerk
