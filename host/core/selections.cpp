#include "host/core/selections.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <stdexcept>

#include "host/ppd/ppd_text.h"
#include "host/ppd/wide_text.h"
#include "platform/whole_file.h"

namespace tintwerk {
namespace {

constexpr std::string_view kPrivateDevmode = "PrivateDevmode";
constexpr std::size_t kMaxPrivateBytes = std::size_t{64} * 1024;

std::string HexOf(const std::vector<unsigned char>& bytes)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

} // namespace

Selections Selections::Load(const std::filesystem::path& file)
{
    const std::string name = Utf8FromPath(file);
    std::string text;
    if (!ReadWhole(file, text)) throw std::runtime_error(name + ": the selections cannot be read");
    return FromText(name, text);
}

Selections Selections::FromText(const std::string& name, std::string_view text)
{
    Selections read;
    for (unsigned number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = Trim(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));

        const std::size_t equals = line.find('=');
        const std::string_view feature = Trim(line.substr(0, equals));
        const auto warn = [&](const std::string& what) { read.warnings_.push_back({name, number, what}); };
        if (line.empty() || line.front() == '#') {
            read.lines_.push_back({{}, std::string(line)});
        } else if (equals == std::string_view::npos || feature.empty()) {
            warn("\"Feature=Option\" expected, not " + Quoted(line));
            read.lines_.push_back({{}, std::string(line)});
        } else if (feature != kPrivateDevmode) {
            if (read.Find(feature)) warn(Quoted(feature) + " a second time; the last one counts");
            read.Set(feature, Trim(line.substr(equals + 1)));
        } else if (const auto bytes = BytesOfHex(line.substr(equals + 1));
                   bytes && bytes->size() <= kMaxPrivateBytes) {
            read.SetPrivateDevmode(bytes->data(), bytes->size());
        } else {
            warn("an even number of hexadecimal digits expected after \"PrivateDevmode=\"");
        }
    }
    return read;
}

std::string Selections::Text() const
{
    std::string text;
    for (const Line& line : lines_) {
        if (!line.feature.empty()) text.append(line.feature).append(1, '=');
        text.append(line.text).append(1, '\n');
    }
    if (!privateDevmode_.empty())
        text.append(kPrivateDevmode).append(1, '=').append(HexOf(privateDevmode_)).append(1, '\n');
    return text;
}

bool Selections::Save(const std::filesystem::path& file, std::string& error) const
{
    std::error_code code;
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path(), code);
    std::filesystem::path fresh = file;
    fresh += ".new";
    if (!WriteWhole(fresh, Text())) {
        error = Utf8FromPath(fresh) + ": cannot be written";
        return false;
    }
    if (!PutInPlace(fresh, file)) {
        error = Utf8FromPath(file) + ": cannot be replaced";
        std::filesystem::remove(fresh, code);
        return false;
    }
    return true;
}

const std::string* Selections::Find(std::string_view feature) const
{
    const auto line = std::ranges::find(lines_, feature, &Line::feature);
    return line == lines_.end() || feature.empty() ? nullptr : &line->text;
}

std::vector<std::pair<std::string_view, std::string_view>> Selections::Chosen() const
{
    std::vector<std::pair<std::string_view, std::string_view>> chosen;
    for (const Line& line : lines_) {
        if (!line.feature.empty()) chosen.emplace_back(line.feature, line.text);
    }
    return chosen;
}

void Selections::Set(std::string_view feature, std::string_view option)
{
    const auto line = std::ranges::find(lines_, feature, &Line::feature);
    if (line != lines_.end() && !feature.empty())
        line->text = option;
    else
        lines_.push_back({std::string(feature), std::string(option)});
}

void Selections::Remove(std::string_view feature)
{
    std::erase_if(lines_, [=](const Line& line) { return !feature.empty() && line.feature == feature; });
}

void Selections::SetPrivateDevmode(const void* bytes, std::size_t size)
{
    const auto* first = static_cast<const unsigned char*>(bytes);
    privateDevmode_.assign(first, first + size);
}

std::string SelectionsFileName(std::string_view printer)
{
    std::string name;
    for (const char c : printer) {
        const bool safe = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                          c == '-' || c == '_' || c == ' ' || c == '.';
        if (name.size() < 80) name += safe ? c : '_';
    }
    // A full stop or a blank at an end means something else, or is cut, to one file system or another.
    const auto atEnd = [](char& c) {
        if (c == '.' || c == ' ') c = '_';
    };
    if (!name.empty()) {
        atEnd(name.front());
        atEnd(name.back());
    }
    if (name == printer && !name.empty()) return name + ".selections";
    // Two printers whose names differ in replaced characters alone keep their own files.
    char suffix[16];
    std::snprintf(suffix, sizeof suffix, "-%08x", static_cast<unsigned>(StableHash(printer)));
    return name + suffix + ".selections";
}

} // namespace tintwerk
