// What the user has chosen for one printer: selected options and the plug-in's private DEVMODE part, kept in
// a readable text file. The core driver changes it; the host's commands load and save it.
//
//     # Selections of Tintwerk X12
//     PageSize=A4
//     halvBrightness=10
//     PrivateDevmode=18000000564c4148...
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/ppd/ppd.h"

namespace tintwerk {

class Selections
{
public:
    // A file that does not exist is empty; one that cannot be read is a std::runtime_error, since
    // what it holds would be lost by the next save. What makes no sense is told by Warnings().
    static Selections Load(const std::filesystem::path& file);
    // From what stands in the file of that name, and back.
    static Selections FromText(const std::string& name, std::string_view text);
    std::string Text() const;

    // Writes a new file beside the old one and puts it in its place, so that a crash leaves one of the two
    // whole. False with the reason when that fails; the old file is then as it was.
    bool Save(const std::filesystem::path& file, std::string& error) const;

    // The option chosen for a feature; null when there is none. Lasts until the next change.
    const std::string* Find(std::string_view feature) const;
    // All of them, in the file's order; the views last until the next change.
    std::vector<std::pair<std::string_view, std::string_view>> Chosen() const;
    void Set(std::string_view feature, std::string_view option);
    void Remove(std::string_view feature);

    // Empty: never stored.
    const std::vector<unsigned char>& PrivateDevmode() const { return privateDevmode_; }
    void SetPrivateDevmode(const void* bytes, std::size_t size);

    const std::vector<PpdMessage>& Warnings() const { return warnings_; }

private:
    struct Line
    {
        std::string feature; // empty: a comment, or something else to be kept as it stands
        std::string text;    // the option, or the whole line
    };

    std::vector<Line> lines_;
    std::vector<unsigned char> privateDevmode_;
    std::vector<PpdMessage> warnings_;
};

// The name of a printer's selections file: the printer's name with everything replaced that a file name
// cannot hold.
std::string SelectionsFileName(std::string_view printer);

} // namespace tintwerk
