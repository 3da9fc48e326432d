// Reads Windows modules from their bytes: sections, resources, imports, exports. The headless layer takes
// version information from modules on disk through it, and the tests look at the DLL that was built. Whatever
// the bytes say, nothing outside them is read.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/win32.h"

namespace tintwerk {

class PeImage
{
public:
    using Bytes = std::span<const BYTE>;

    // The bytes stay the caller's and must outlive the image. Nothing when they are no 64-bit module.
    static std::optional<PeImage> Open(Bytes bytes);

    WORD DllCharacteristics() const { return characteristics_; }
    std::vector<std::string> ImportedLibraries() const;
    std::vector<std::string> ExportedNames() const;
    // The resource of a type and name given by numbers, in its first language; name 0 takes the first. Empty
    // when there is none.
    Bytes Resource(WORD type, WORD name) const;

private:
    struct Section
    {
        DWORD address;
        DWORD size;
        DWORD offset;
    };

    explicit PeImage(Bytes bytes) : bytes_(bytes) {}
    bool ReadHeaders();
    Bytes At(DWORD address) const; // from there to the end of its section
    std::string TextAt(DWORD address) const;
    DWORD ResourceEntry(Bytes directory, WORD id) const;

    Bytes bytes_;
    WORD characteristics_ = 0;
    std::vector<Section> sections_;
    std::vector<DWORD> directories_; // addresses
};

} // namespace tintwerk
